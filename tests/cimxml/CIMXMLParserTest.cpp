// Tests of TCIMXMLParser's dispatch and error report, its copies, and its readings of booleans and
// counts.
#include "cimxml/CIMXMLParser.h"

#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace NQRN20 {
namespace {

TEST(TCIMXMLParser, LogsEachRejectedElementWithTheLineOfItsTagAndStopsOnlyAtASyntaxError) {
    const struct {
        const char* m_document;
        std::string m_log; // then "status N" when Parse threw
    } cases[] = {
        {"<CIM/>", ""},
        {"<cim></cim>", ""},
        {"<Cim CIMVERSION='9.9'/>", ""},
        // The children of a rejected root are offered to the bottom state again.
        {"<FOO><CIM/></FOO>", kLine + "Unexpected element foo\n"},
        // A start tag's errors carry the line of the '>' that closes it.
        {"<?xml version='1.0'?>\n<CIM\n CIMVERSION='2.0'>\n<FOO\n/>\n</CIM>",
         "3 CIM-XML Parser line 5:Unexpected element foo\n"},
        // The end of a rejected child pops its parent; the stack can then run empty.
        {"<CIM><FOO/></CIM>", kLine + "Unexpected element foo\n"},
        {"<CIM><X><Y/></X></CIM>",
         kLine + "Unexpected element x\n" + kLine + "Unexpected element y\n" + kLine +
             "Unexpected element outside the document: cim; it and what follows are ignored\n"},
        // Only the first element past the end says so.
        {"<A><B/><C/></A>",
         kLine + "Unexpected element a\n" + kLine + "Unexpected element b\n" + kLine +
             "Unexpected element outside the document: c; it and what follows are ignored\n"},
        {"<CIM>\n\n&bad;</CIM>", "3 CIM-XML Parser line 3:Unknown entity reference\nstatus " +
                                     std::to_string(kQRNStatusParseError) + "\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_document);
        const TParseResult parsed = ParseDocument(TMemoryNamespace::Create(), c.m_document);
        const std::string status = "status " + std::to_string(parsed.m_status) + "\n";
        EXPECT_EQ(c.m_log, parsed.m_log + (parsed.m_status == 0 ? "" : status));
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
    const std::pair<std::string, bool> cases[] = {
        {"true", true},  {" true", true}, {"\n\ttrue", true}, {"trueish", true}, {"false", false},
        {"TRUE", false}, {"1", false},    {"", false},        {"tru", false},
    };
    for (auto [text, value] : cases) {
        EXPECT_EQ(value, TCIMXMLParser::ConvertBool(text)) << '"' << text << '"';
    }
}

TEST(TCIMXMLParser, ConvertUnsignedIntReadsADecimalNumberAsStreamInputDoes) {
    const std::pair<std::string, uint32_t> cases[] = {
        {"42", 42},          {" 7", 7}, {"+5", 5},   {"12abc", 12},     {"4294967295", 4294967295u},
        {"-1", 4294967295u}, {"-0", 0}, {"0x10", 0}, {"4294967296", 0}, {"99999999999999999999", 0},
        {"abc", 0},          {"", 0},   {"-", 0},
    };
    TCIMXMLParser parser(TMemoryNamespace::Create());
    for (auto [text, value] : cases) {
        EXPECT_EQ(value, parser.ConvertUnsignedInt(text)) << '"' << text << '"';
    }
}

} // namespace
} // namespace NQRN20
