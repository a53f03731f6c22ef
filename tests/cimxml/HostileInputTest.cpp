// Hostile documents: huge, deep, repetitive or at the limits of every type. Each must end with
// the exact error expected, in time that grows with the input and no more.
#include "support/SchemaCases.h"
#include "support/SmallStack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

namespace NQRN20 {
namespace {

std::string Repeat(const std::string& text, size_t times) {
    std::string repeated;
    repeated.reserve(text.size() * times);
    for (size_t i = 0; i < times; ++i) {
        repeated += text;
    }
    return repeated;
}

// The log's first line and its number of lines.
std::pair<std::string, size_t> Summarise(const std::string& log) {
    return {log.substr(0, log.find('\n')), size_t(std::count(log.begin(), log.end(), '\n'))};
}

TEST(HostileInput, RejectsDeepNestingAtTheLimitOnASmallStack) {
    for (const size_t depth : {size_t(100000), size_t(1000000)}) {
        SCOPED_TRACE(depth);
        TParseResult deep{};
        ASSERT_TRUE(RunOnSmallStack([&] {
            deep = ParseDocument(TMemoryNamespace::Create(),
                                 Repeat("<CIM>", depth) + Repeat("</CIM>", depth));
        }));
        EXPECT_EQ(uint32_t(kQRNStatusParseError), deep.m_status);
        EXPECT_EQ(kLine + "Unexpected element cim", Summarise(deep.m_log).first);
    }
}

// Truncated documents are the tokenizer's to report, and end like any other syntax error here.
TEST(HostileInput, EndsEachHugeOrRepetitiveDocumentAsExpected) {
    std::string attributes;
    for (int i = 0; i < 1000000; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
    }
    const struct {
        const char* m_title;
        std::string m_document;
        std::string m_firstLine;
        size_t m_lines;
        uint32_t m_status;
    } cases[] = {
        {"a start tag with a million attributes", "<CIM" + attributes + "/>", "", 0, 0},
        // Every one keeps its own line number: the last is on line 1000001.
        {"a million sibling errors, one a line", InDeclGroup(Repeat("\n<VALUE.OBJECT/>", 1000000)),
         "3 CIM-XML Parser line 2:CIM element syntax error", 1000000, 0},
        {"a character reference of a million digits",
         "<CIM>&#" + std::string(1000000, '9') + ";</CIM>", kLine + "Invalid character reference",
         1, kQRNStatusParseError},
        {"100 MB of text", "<CIM>" + std::string(100000000, 'x') + "</CIM>", "", 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_title);
        const TParseResult parsed = ParseDocument(TMemoryNamespace::Create(), c.m_document);
        EXPECT_EQ(std::make_pair(c.m_firstLine, c.m_lines), Summarise(parsed.m_log));
        EXPECT_EQ(c.m_status, parsed.m_status);
        if (c.m_lines == 1000000) {
            EXPECT_NE(std::string::npos,
                      parsed.m_log.find("line 1000001:CIM element syntax error\n"));
        }
    }
}

// A VALUE.OBJECT holding one element, given as its tag's name and attributes, and its content.
std::string Object(const std::string& element, const std::string& content) {
    return "<VALUE.OBJECT><" + element + ">" + content + "</" +
           element.substr(0, element.find(' ')) + "></VALUE.OBJECT>";
}

TEST(HostileInput, LoadsLargeValuesAndLongChainsWithoutWorkPerMissingElement) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    std::string chain = Object("CLASS NAME='C0'", "<PROPERTY.ARRAY NAME='Big' TYPE='uint8' "
                                                  "ARRAYSIZE='4294967295'/><PROPERTY.ARRAY "
                                                  "NAME='Many' TYPE='uint32'/>");
    for (int i = 1; i < 100000; ++i) {
        chain += Object("CLASS NAME='C" + std::to_string(i) + "' SUPERCLASS='C" +
                            std::to_string(i - 1) + "'",
                        "");
    }
    const TParseResult schema = ParseDocument(cimNamespace, InDeclGroup(chain));
    EXPECT_EQ("", schema.m_log);
    EXPECT_EQ(100000u, schema.m_classes.size());
    const TParseResult instances = ParseDocument(
        cimNamespace, InDeclGroup(Object("INSTANCE CLASSNAME='C99999'",
                                         "<PROPERTY.ARRAY NAME='Many' TYPE='uint32'><VALUE.ARRAY>" +
                                             Repeat("<VALUE>4294967295</VALUE>", 1000000) +
                                             "</VALUE.ARRAY></PROPERTY.ARRAY>")));
    EXPECT_EQ("", instances.m_log);
    ASSERT_EQ(1u, instances.m_instances.size());
    ICIMInstance& instance = *instances.m_instances[0];
    EXPECT_EQ(
        1000000u,
        instance.GetProperty("Many", TCIMOptions())->GetValue(TCIMOptions()).GetElements().size());
    EXPECT_EQ("uint8[] null count 4294967295",
              DescribeValue(instance.GetProperty("Big", TCIMOptions())->GetValue(TCIMOptions())));
}

// Each is reported with its text trimmed, and stored as a null that still has its type.
TEST(HostileInput, StoresValuesOutsideTheirTypeAsNullsOfThatType) {
    // Pairs of a type and a text that does not fit it.
    std::istringstream cases(
        "uint8 256 uint8 -1 sint8 128 sint8 -129 uint16 65536 sint16 32768 sint16 -32769 "
        "uint32 4294967296 sint32 2147483648 sint32 -2147483649 uint64 18446744073709551616 "
        "uint64 abc sint64 9223372036854775808 sint64 -9223372036854775809 boolean yes "
        "char16 ab real32 1e39");
    std::string properties, values, log, nulls;
    size_t count = 0;
    for (std::string type, text; cases >> type >> text; ++count) {
        const std::string property =
            "<PROPERTY NAME='P" + std::to_string(count) + "' TYPE='" + type + "'";
        properties += property + "/>";
        values += property + "><VALUE> " + text + "\t</VALUE></PROPERTY>";
        log += kLine + "Invalid value '" + text + "' for type " + type + "\n";
        nulls += type + " null\n";
    }
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    ParseDocument(cimNamespace, InDeclGroup(Object("CLASS NAME='T_Ranges'", properties)));
    const TParseResult parsed =
        ParseDocument(cimNamespace, InDeclGroup(Object("INSTANCE CLASSNAME='T_Ranges'", values)));
    EXPECT_EQ(log, parsed.m_log);
    ASSERT_EQ(1u, parsed.m_instances.size());
    std::string stored;
    for (const auto& property :
         All<ICIMProperty>(*parsed.m_instances[0], &ICIMInstance::EnumProperties)) {
        stored += DescribeValue(property->GetValue(TCIMOptions())) + "\n";
    }
    EXPECT_EQ(nulls, stored);
}

} // namespace
} // namespace NQRN20
