// Tests of TCIMXMLParser's dispatch and error report, its copies, and its readings of booleans and
// counts.
#include "cimxml/CIMXMLParser.h"

#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace NQRN20 {
namespace {

TEST(TCIMXMLParser, LogsEachRejectedElementWithTheLineOfItsTagAndStopsOnlyAtASyntaxError) {
    const struct {
        const char* m_document;
        const char* m_log;
        uint32_t m_status;
    } cases[] = {
        {"<CIM/>", "", 0},
        {"<cim></cim>", "", 0},
        {"<Cim CIMVERSION='9.9'/>", "", 0},
        // The children of a rejected root are offered to the bottom state again.
        {"<FOO><CIM/></FOO>", "3 CIM-XML Parser line 1:Unexpected element foo\n", 0},
        // A start tag's errors carry the line of the '>' that closes it.
        {"<?xml version='1.0'?>\n<CIM\n CIMVERSION='2.0'>\n<FOO\n/>\n</CIM>",
         "3 CIM-XML Parser line 5:Unexpected element foo\n", 0},
        // The end of a rejected child pops its parent; the stack can then run empty.
        {"<CIM><FOO/></CIM>", "3 CIM-XML Parser line 1:Unexpected element foo\n", 0},
        {"<CIM><X><Y/></X></CIM>",
         "3 CIM-XML Parser line 1:Unexpected element x\n"
         "3 CIM-XML Parser line 1:Unexpected element y\n"
         "3 CIM-XML Parser line 1:Unexpected element outside the document: cim; it and what "
         "follows are ignored\n",
         0},
        // Only the first element past the end says so.
        {"<A><B/><C/></A>",
         "3 CIM-XML Parser line 1:Unexpected element a\n"
         "3 CIM-XML Parser line 1:Unexpected element b\n"
         "3 CIM-XML Parser line 1:Unexpected element outside the document: c; it and what follows "
         "are ignored\n",
         0},
        {"<CIM>\n\n&bad;</CIM>", "3 CIM-XML Parser line 3:Unknown entity reference\n",
         kQRNStatusParseError},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_document);
        const TParseResult parsed = ParseDocument(TMemoryNamespace::Create(), c.m_document);
        EXPECT_EQ(c.m_log, parsed.m_log);
        EXPECT_EQ(c.m_status, parsed.m_status);
    }
}

// States live in their parser's pool; a copy shares them, so the pool must last as long as the
// last state, whichever parser holds it. The sanitizer build catches a pool that goes too soon.
TEST(TCIMXMLParser, KeepsStatesSharedWithACopyAliveAfterTheOriginalIsGone) {
    TLogRecorder log;
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    auto original = std::make_unique<TCIMXMLParser>(cimNamespace);
    TAttributeMap attributes;
    original->StartElement("CIM", attributes);
    TCIMXMLParser copy(*original);
    TCIMXMLParser assigned(cimNamespace);
    assigned.StartElement("CIM", attributes);
    assigned = *original;
    original.reset();
    copy.EndElement("CIM");
    copy.StartElement("CIM", attributes);
    assigned.EndElement("CIM");
    assigned.EndElement("CIM");
    EXPECT_EQ("", log.Text());
}

TEST(TCIMXMLParser, ConvertBoolReadsTheWordsAsStreamInputDoes) {
    const struct {
        const char* m_text;
        bool m_value;
    } cases[] = {
        {"true", true},  {" true", true}, {"\n\ttrue", true}, {"trueish", true}, {"false", false},
        {"TRUE", false}, {"1", false},    {"", false},        {"tru", false},
    };
    for (const auto& c : cases) {
        std::string text = c.m_text;
        EXPECT_EQ(c.m_value, TCIMXMLParser::ConvertBool(text)) << '"' << c.m_text << '"';
    }
}

TEST(TCIMXMLParser, ConvertUnsignedIntReadsADecimalNumberAsStreamInputDoes) {
    const struct {
        const char* m_text;
        uint32_t m_value;
    } cases[] = {
        {"42", 42},          {" 7", 7}, {"+5", 5},   {"12abc", 12},     {"4294967295", 4294967295u},
        {"-1", 4294967295u}, {"-0", 0}, {"0x10", 0}, {"4294967296", 0}, {"99999999999999999999", 0},
        {"abc", 0},          {"", 0},   {"-", 0},
    };
    TCIMXMLParser parser(TMemoryNamespace::Create());
    for (const auto& c : cases) {
        std::string text = c.m_text;
        EXPECT_EQ(c.m_value, parser.ConvertUnsignedInt(text)) << '"' << c.m_text << '"';
    }
}

} // namespace
} // namespace NQRN20
