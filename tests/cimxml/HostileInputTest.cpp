// Hostile documents: huge, deep, repetitive or at the limits of every type. Each must end with
// the exact error expected, in time that grows with the input and no more.
#include "support/ParseDocument.h"
#include "support/SmallStack.h"

#include <gtest/gtest.h>

#include <string>

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
struct TSummary {
    std::string m_first;
    size_t m_lines;
};

TSummary Summarise(const std::string& log) {
    const size_t end = log.find('\n');
    size_t lines = 0;
    for (const char c : log) {
        lines += c == '\n';
    }
    return {end == std::string::npos ? log : log.substr(0, end), lines};
}

const char kKey[] = "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
                    "</QUALIFIER.DECLARATION>";

struct TDeepParse {
    size_t m_depth;
    TParseResult m_result;
};

void* ParseDeep(void* argument) {
    TDeepParse* deep = static_cast<TDeepParse*>(argument);
    deep->m_result = ParseDocument(TMemoryNamespace::Create(), Repeat("<CIM>", deep->m_depth) +
                                                                   Repeat("</CIM>", deep->m_depth));
    return nullptr;
}

TEST(HostileInput, RejectsDeepNestingAtTheLimitOnASmallStack) {
    for (const size_t depth : {size_t(100000), size_t(1000000)}) {
        SCOPED_TRACE(depth);
        TDeepParse deep{depth, {}};
        ASSERT_TRUE(RunOnSmallStack(ParseDeep, &deep));
        EXPECT_EQ(uint32_t(kQRNStatusParseError), deep.m_result.m_status);
        EXPECT_EQ("3 CIM-XML Parser line 1:Unexpected element cim",
                  Summarise(deep.m_result.m_log).m_first);
    }
}

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
        {"a duplicate attribute", "<CIM A='1' a='2'/>",
         "3 CIM-XML Parser line 1:Attribute appears twice", 1, kQRNStatusParseError},
        // Every one keeps its own line number: the last is on line 1000001.
        {"a million sibling errors, one a line", InDeclGroup(Repeat("\n<VALUE.OBJECT/>", 1000000)),
         "3 CIM-XML Parser line 2:CIM element syntax error", 1000000, 0},
        {"a character reference of a million digits",
         "<CIM>&#" + std::string(1000000, '9') + ";</CIM>",
         "3 CIM-XML Parser line 1:Invalid character reference", 1, kQRNStatusParseError},
        {"100 MB of text", "<CIM>" + std::string(100000000, 'x') + "</CIM>", "", 0, 0},
        {"the end of the input inside a tag", "<CIM><DECLARATION",
         "3 CIM-XML Parser line 1:Unexpected character before end of element", 1,
         kQRNStatusParseError},
        {"inside an attribute value", "<CIM A='1",
         "3 CIM-XML Parser line 1:End of input inside an attribute value", 1, kQRNStatusParseError},
        {"inside a character reference", "<CIM>&#12",
         "3 CIM-XML Parser line 1:End of input inside a character reference", 1,
         kQRNStatusParseError},
        {"inside a named reference", "<CIM>&am", "3 CIM-XML Parser line 1:Unknown entity reference",
         1, kQRNStatusParseError},
        {"inside a comment", "<CIM><!-- c", "3 CIM-XML Parser line 1:Unterminated comment", 1,
         kQRNStatusParseError},
        {"inside a processing instruction", "<CIM><?p x",
         "3 CIM-XML Parser line 1:Unterminated processing instruction", 1, kQRNStatusParseError},
        {"inside a CDATA section", "<CIM><![CDATA[x",
         "3 CIM-XML Parser line 1:Unterminated CDATA section", 1, kQRNStatusParseError},
        {"inside the prolog", "<?xml version='1.0'",
         "3 CIM-XML Parser line 1:Unterminated XML declaration", 1, kQRNStatusParseError},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_title);
        const TParseResult parsed = ParseDocument(TMemoryNamespace::Create(), c.m_document);
        const TSummary summary = Summarise(parsed.m_log);
        EXPECT_EQ(c.m_firstLine, summary.m_first);
        EXPECT_EQ(c.m_lines, summary.m_lines);
        EXPECT_EQ(c.m_status, parsed.m_status);
        if (c.m_lines == 1000000) {
            EXPECT_NE(std::string::npos,
                      parsed.m_log.find("line 1000001:CIM element syntax error\n"));
        }
    }
}

std::string InstanceOf(const std::string& className, const std::string& properties) {
    return "<VALUE.OBJECT><INSTANCE CLASSNAME='" + className + "'>" + properties +
           "</INSTANCE></VALUE.OBJECT>";
}

TEST(HostileInput, LoadsLargeValuesAndLongChainsWithoutWorkPerMissingElement) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    std::string chain = "<VALUE.OBJECT><CLASS NAME='C0'><PROPERTY.ARRAY NAME='Big' TYPE='uint8' "
                        "ARRAYSIZE='4294967295'/><PROPERTY.ARRAY NAME='Many' TYPE='uint32'/>"
                        "</CLASS></VALUE.OBJECT>";
    for (int i = 1; i < 100000; ++i) {
        chain += "<VALUE.OBJECT><CLASS NAME='C" + std::to_string(i) + "' SUPERCLASS='C" +
                 std::to_string(i - 1) + "'/></VALUE.OBJECT>";
    }
    const TParseResult schema = ParseDocument(cimNamespace, InDeclGroup(kKey + chain));
    EXPECT_EQ("", schema.m_log);
    EXPECT_EQ(100000u, schema.m_classes.size());
    const TParseResult instances = ParseDocument(
        cimNamespace,
        InDeclGroup(InstanceOf("C99999", "<PROPERTY.ARRAY NAME='Many' TYPE='uint32'><VALUE.ARRAY>" +
                                             Repeat("<VALUE>4294967295</VALUE>", 1000000) +
                                             "</VALUE.ARRAY></PROPERTY.ARRAY>")));
    EXPECT_EQ("", instances.m_log);
    ASSERT_EQ(1u, instances.m_instances.size());
    const auto& instance = instances.m_instances[0];
    EXPECT_EQ(
        1000000u,
        instance->GetProperty("Many", TCIMOptions())->GetValue(TCIMOptions()).GetElements().size());
    const TCIMValue& big = instance->GetProperty("Big", TCIMOptions())->GetValue(TCIMOptions());
    EXPECT_TRUE(big.IsNull());
    EXPECT_EQ(4294967295u, big.GetCount());
}

TEST(HostileInput, StoresOutOfRangeIntegersOfEveryTypeAsNull) {
    const char* const types[][3] = {
        {"uint8", "256", "-1"},
        {"sint8", "128", "-129"},
        {"uint16", "65536", "-1"},
        {"sint16", "32768", "-32769"},
        {"uint32", "4294967296", "-1"},
        {"sint32", "2147483648", "-2147483649"},
        {"uint64", "18446744073709551616", "-1"},
        {"sint64", "9223372036854775808", "-9223372036854775809"},
    };
    std::string properties;
    std::string values;
    std::string log;
    for (const auto& type : types) {
        for (int bound = 1; bound <= 2; ++bound) {
            const std::string name = std::string(type[0]) + "_" + std::to_string(bound);
            properties += "<PROPERTY NAME='" + name + "' TYPE='" + type[0] + "'/>";
            values += "<PROPERTY NAME='" + name + "' TYPE='" + type[0] + "'><VALUE>" + type[bound] +
                      "</VALUE></PROPERTY>";
            log += std::string("3 CIM-XML Parser line 1:Invalid value '") + type[bound] +
                   "' for type " + type[0] + "\n";
        }
    }
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    ParseDocument(cimNamespace,
                  InValueObjects({"<CLASS NAME='T_Ranges'>" + properties + "</CLASS>"}));
    const TParseResult parsed =
        ParseDocument(cimNamespace, InDeclGroup(InstanceOf("T_Ranges", values)));
    EXPECT_EQ(log, parsed.m_log);
    ASSERT_EQ(1u, parsed.m_instances.size());
    std::vector<boost::shared_ptr<ICIMProperty>> stored;
    parsed.m_instances[0]->EnumProperties(TAddToVectorCallback<ICIMProperty>(stored),
                                          TCIMOptions());
    ASSERT_EQ(16u, stored.size());
    for (const auto& property : stored) {
        const TCIMValue& value = property->GetValue(TCIMOptions());
        EXPECT_TRUE(value.IsNull()) << property->GetName(TCIMOptions());
        EXPECT_EQ(property->GetType(TCIMOptions()), value.GetType());
    }
}

} // namespace
} // namespace NQRN20
