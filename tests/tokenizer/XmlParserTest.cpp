// Tests of TXmlParser: each case is a small document and the exact callbacks it must produce.
#include "tokenizer/XmlParser.h"

#include "support/SmallStack.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace NQRN20 {
namespace {

enum EErrors { kErrorsThrow, kErrorsReturn };

struct TStop {};

// Records every callback as one line, after its line number when asked. An attribute
// reject='format' or reject='value' makes StartElement reject its tag the way the CIM-XML
// interpreter does.
class TRecorder : public TXmlParser {
public:
    explicit TRecorder(EErrors errors, bool lines = false) : m_errors(errors), m_lines(lines) {}

    std::string m_events; // one a line

    void StartElement(const char* name, TAttributeMap& attributes) override {
        std::string event = std::string("start ") + name;
        for (const auto& attribute : attributes) {
            event += " " + attribute.first + "='" + attribute.second + "'";
        }
        Record(event);
        const auto reject = attributes.find("reject");
        if (reject != attributes.end()) {
            attributes[reject->second == "format" ? "throwExInvalidFormat" : "throwExInvalidValue"];
        }
    }
    void EndElement(const char* name) override { Record(std::string("end ") + name); }
    void processingInstruction(const char* target, const char* data) override {
        Record(std::string("pi ") + target + " " + data);
    }
    void characters(const char* text, uint32_t length) override {
        std::string escaped;
        for (const unsigned char c : std::string(text, length)) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", c);
            escaped += c == '\n' ? "\\n" : c < 0x20 || c >= 0x7F ? hex : std::string(1, char(c));
        }
        Record("text '" + escaped + "'");
    }
    void notationDecl(const char*, const char*, const char*) override { Record("notation"); }
    void FatalError(const char* message) override {
        m_events += "error " + std::to_string(GetCurLine()) + ": " + message + "\n";
        if (m_errors == kErrorsThrow) {
            throw TStop();
        }
    }

private:
    void Record(const std::string& event) {
        m_events += (m_lines ? std::to_string(GetCurLine()) + " " : "") + event + "\n";
    }

    EErrors m_errors;
    bool m_lines;
};

// Parses a copy of the document in a buffer of exactly its size plus the zero byte, so that the
// address sanitizer catches any read past the end, and checks that every temporary terminator
// was put back.
std::string Scan(const std::string& document, EErrors errors = kErrorsThrow, bool lines = false) {
    std::unique_ptr<char[]> buffer(new char[document.size() + 1]);
    std::memcpy(buffer.get(), document.c_str(), document.size() + 1);
    TRecorder recorder(errors, lines);
    try {
        // Only a length shows the zero bytes of a wide document.
        if (document.find('\0') == std::string::npos) {
            recorder.Parse(buffer.get());
        } else {
            recorder.Parse(buffer.get(), document.size());
        }
    } catch (const TStop&) {
    }
    EXPECT_EQ(std::strlen(document.c_str()), std::strlen(buffer.get())) << "a terminator was left";
    return recorder.m_events;
}

struct TCase {
    std::string m_document;
    const char* m_events; // separated by '|'
};

void RunCases(const std::vector<TCase>& cases, EErrors errors = kErrorsThrow, bool lines = false) {
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.m_document);
        std::string expected = std::string(c.m_events) + "|";
        std::replace(expected.begin(), expected.end(), '|', '\n');
        EXPECT_EQ(expected, Scan(c.m_document, errors, lines));
    }
}

const char kSample[] = "<?xml version='1.0'?>\n<!-- sample -->\n"
                       "<A Name='n' b='1 &lt; 2'><?pi x?>t&amp;u&#x41;<B/>\n</A>\n";

TEST(TXmlParser, ScansThePrologAndWhatFollowsTheRootElement) {
    RunCases({
        {kSample, "start A b='1 &lt; 2' name='n'|pi TBD TBD|text 't'|text '&'|text 'u'|"
                  "text 'A'|start B|end B|text '\\n'|end A"},
        {"\n<A/>", "error 2: Unexpected character before prolog"},
        {"<!-- c --><A/>", "error 1: Invalid element/attribute name"},
        {"<?xml?><!doctype CIM><CIM/>", "error 1: Unexpected character in doctypedecl"},
        {"<?xml?><!DOCTYPE a><!DOCTYPE b><a/>", "error 1: Invalid element/attribute name"},
        {"<?xml?><!DOCTYPE a [<!ELEMENT a ANY>]><a/>",
         "error 1: Unexpected character before element"},
        {"<?xml version='1.0'", "error 1: Unterminated XML declaration"},
        {"<?xml?><!DOCTYPE a", "error 1: Unterminated document type declaration"},
        {"<?xml?><!-- c", "error 1: Unterminated comment"},
        {"<?xml?><?p", "error 1: Unterminated processing instruction"},
        {"<?xml?>", "error 1: Unexpected character before element"},
        {"<A/> <!-- c --> <?p?>\n", "start A|end A|pi TBD TBD"},
        {"<A/>\n</A>", "start A|end A|error 2: Unexpected content after the root element"},
    });
}

TEST(TXmlParser, ScansNamesTagsAndAttributes) {
    RunCases({
        {"<:a.b-c_d:e9></:a.b-c_d:e9>", "start :a.b-c_d:e9|end :a.b-c_d:e9"},
        {"<1a/>", "error 1: Invalid element/attribute name"},
        {"<A", "error 1: Unexpected character before end of element"},
        {"<A x='1'y='2'/>", "error 1: Unexpected character before end of element"},
        {"<A\tX='1'\r\nY=\"2\"></A >", "start A x='1' y='2'|end A"},
        {"<A NAME='x' name='y'/>", "error 1: Attribute appears twice"},
        {"<A NAME='x' name='x' nAmE=\"x\"/>", "start A name='x'|end A"},
        {"<A x=1/>", "error 1: Unexpected character after equals of attribute name"},
        {"<A x='a<b'/>", "error 1: Unexpected character(<) in attribute value"},
        {"<A x='&Amp;&lt;&GT;&quot;&apos;'/>", "start A x='&Amp;&lt;&GT;&quot;&apos;'|end A"},
        {"<A x='&amp", "error 1: Unexpected character(&) in attribute value"},
        {"<A %x='1'/>", "error 1: Unexpected character before end of element"},
        {"<A></a>", "start A|error 1: Start and end element names don't match"},
        {"<A></AB>", "start A|error 1: Start and end element names don't match"},
        {"<A></A x>", "start A|error 1: Unexpected character before end of element"},
        {"<A><", "start A|error 1: Invalid element/attribute name"},
        // Every tag's map is refilled from the last one's: nothing of one may show in the next.
        {"<A long='a value longer than any short string' b='2'><B/><C c='3'/></A>",
         "start A b='2' long='a value longer than any short string'|start B|end B|"
         "start C c='3'|end C|end A"},
    });
}

// The scans classify bytes through tables: bytes that end one kind of run must stay ordinary in
// the others, and bytes above 0x7F are ordinary everywhere but in names.
TEST(TXmlParser, EndsEachRunOnlyAtItsOwnBytes) {
    RunCases({
        {"<A>\xC3\xA9'\"=/>\x7F\xFF</A>", "start A|text '\\xC3\\xA9'\"=/>\\x7F\\xFF'|end A"},
        {"<A x='\xFF>/=\"' y=\"'\xC3\"/>", "start A x='\xFF>/=\"' y=''\xC3'|end A"},
        {"<A x\xC3='1'/>", "error 1: Unexpected character between attribute name and value"},
        {"<A\vx='1'/>", "error 1: Unexpected character before end of element"},
        {"<A x='1\">", "error 1: End of input inside an attribute value"},
    });
}

TEST(TXmlParser, DeliversTextReferencesAndLineEndsInOrder) {
    RunCases({
        {"<A>&#xfg;</A>", "start A|error 1: Unknown entity reference"},
        {"<A>&aPoS;&apox;</A>", "start A|text '''|error 1: Unknown entity reference"},
        {"<A><![CDATA[]]><![CDATA[<&]]]></A>", "start A|text '<&]'|end A"},
        {"<A><![CDATA[x", "start A|error 1: Unterminated CDATA section"},
        {"<A><!DOCTYPE x></A>", "start A|error 1: Unexpected markup in element content"},
        {"<A><!-- c -- d --><?p?>x</A>", "start A|pi TBD TBD|text 'x'|end A"},
        {"<A><!-- unterminated </A>", "start A|error 1: Unterminated comment"},
        {"<A><?unterminated </A>", "start A|error 1: Unterminated processing instruction"},
        {"<A>x<%y%></A>", "start A|text 'x'|error 1: Invalid XML '<%' characters encountered"},
        {"<A x='a\r\nb\rc' y='\r'/>", "start A x='a\nb\nc' y='\n'|end A"},
        {"<A><![CDATA[a\r\nb]]></A>", "start A|text 'a'|text '\\n'|text 'b'|end A"},
        {"<A>&#13;&#xD;\r</A>", "start A|text '\\x0D'|text '\\x0D'|text '\\n'|end A"},
        {"<A>caf&#233;&#x20AC;&#x1F600;&#x10FFFF;</A>",
         "start A|text 'caf'|text '\\xC3\\xA9'|text '\\xE2\\x82\\xAC'|"
         "text '\\xF0\\x9F\\x98\\x80'|text '\\xF4\\x8F\\xBF\\xBF'|end A"},
        {"<A>&#0;</A>", "start A|error 1: Invalid character reference"},
        {"<A>&#xD800;</A>", "start A|error 1: Invalid character reference"},
        {"<A>&#x110000;</A>", "start A|error 1: Invalid character reference"},
        {"<A>&#99999999999999999999;</A>", "start A|error 1: Invalid character reference"},
    });
}

TEST(TXmlParser, ReadsUtf8AsciiAndLatin1AndRefusesOtherEncodings) {
    RunCases({
        {"<?xml version='1.0' encoding='UTF-8'?><A>\xC3\xA9</A>",
         "start A|text '\\xC3\\xA9'|end A"},
        {"\xEF\xBB\xBF<?xml version=\"1.0\" encoding = \"us-ascii\" ?><A/>", "start A|end A"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><A x='\xE9'>caf\xE9</A>",
         "start A x='\xC3\xA9'|text 'caf\\xC3\\xA9'|end A"},
        {"<?xml version='1.0' encoding='Latin1'?><A>plain</A>", "start A|text 'plain'|end A"},
        {"<?xml version='1.0' encoding='Shift_JIS'?><A/>",
         "error 1: Unsupported encoding 'Shift_JIS'"},
        {"\xFF\xFE<", "error 1: Unsupported encoding 'UTF-16LE'"},
        {"\xFE\xFF", "error 1: Unsupported encoding 'UTF-16BE'"},
        {std::string("<\0?\0", 4), "error 1: Unsupported encoding 'UTF-16LE'"},
        {std::string("\0\0\xFE\xFF", 4), "error 1: Unsupported encoding 'UTF-32BE'"},
        {std::string("\xFF\xFE\0\0", 4), "error 1: Unsupported encoding 'UTF-32LE'"},
        {std::string("<\0\0\0", 4), "error 1: Unsupported encoding 'UTF-32LE'"},
    });
}

// A derived class may point the scan at buffers of its own between calls.
TEST(TXmlParser, CountsLinesInWhicheverBufferADerivedClassPointsAt) {
    struct TLines : TRecorder {
        TLines() : TRecorder(kErrorsThrow) {}
        uint32_t At(char* s, size_t at) { return m_pStart = s, m_pCur = s + at, GetCurLine(); }
    } lines;
    char first[] = "a\nb\nc\nd";
    char second[] = "x\ny";
    EXPECT_EQ(4u, lines.At(first, 6));
    EXPECT_EQ(2u, lines.At(second, 2));
    EXPECT_EQ(1u, lines.At(second, 0));
    EXPECT_EQ(3u, lines.At(first + 2, 4));
    EXPECT_EQ(2u, lines.At(first, 2));
}

TEST(TXmlParser, ReadsTheRejectionsThatStartElementWritesIntoTheAttributeMap) {
    RunCases({
        // A rejected root child is still scanned to its end; the rest of the root is then
        // left over after it.
        {"<R><A reject='format'><B/></A><C/></R>",
         "start R|start A reject='format'|start B|end B|end A|"
         "error 1: Unexpected content after the root element"},
        // One level deeper, the next end tag belongs to the element that stopped.
        {"<R><P><A reject='format'/><B/></P></R>",
         "start R|start P|start A reject='format'|end A|start B|end B|"
         "error 1: Start and end element names don't match"},
        // A refused value's end tag goes unreported.
        {"<R><VALUE reject='value'>x</VALUE></R>",
         "start R|start VALUE reject='value'|text 'x'|end R"},
        {"<R><VALUE reject='value'/></R>", "start R|start VALUE reject='value'|end VALUE|end R"},
    });
}

TEST(TXmlParser, GoesOnAfterEachErrorWhenFatalErrorReturns) {
    RunCases(
        {
            {"", "error 1: Unexpected character before prolog|"
                 "error 1: Unexpected character before element"},
            {"<A x='1' X='2' y='3'><B x='4'/><C/></A>",
             "error 1: Attribute appears twice|start A x='1' y='3'|start B x='4'|end B|start C|"
             "end C|end A"},
            {"<A>a&b</A>", "start A|text 'a'|error 1: Unknown entity reference|end A"},
            {"<A>&q<B/></A>", "start A|error 1: Unknown entity reference|text 'B/>'|end A"},
            {"<A>&#;5;</A>", "start A|error 1: Invalid hex character|text '\\x05'|end A"},
            {"<A>&#1a2;</A>", "start A|error 1: Unknown entity reference|text '\\x0C'|end A"},
            {"<A>&#12", "start A|error 1: End of input inside a character reference|"
                        "error 1: Unexpected character where element expected"},
            {"<A x='1", "error 1: End of input inside an attribute value|"
                        "error 1: Unexpected character before end of element"},
            // The scan resumes where the failed end tag stopped, one element further out.
            {"<R><Q><A></B><C/></Q></R>",
             "start R|start Q|start A|error 1: Start and end element names don't match|"
             "text '>'|start C|end C|error 1: Start and end element names don't match"},
            {"<?xml?><%x%><A/>", "error 1: Invalid XML '<%' characters encountered|"
                                 "error 1: Invalid element/attribute name"},
        },
        kErrorsReturn);
}

TEST(TXmlParser, CountsLinesByLineFeedsAtTheDocumentedPositions) {
    RunCases(
        {
            {"<A>\r\r<B\r/>\r</A>",
             "1 start A|1 text '\\n'|1 text '\\n'|1 start B|1 end B|1 text '\\n'|1 end A"},
            // A line feed under an element name's terminator still counts.
            {"<A\n>x\n<B\n/>&amp;\n</A\n>",
             "2 start A|3 text 'x\\n'|4 start B|4 end B|4 text '&'|5 text '\\n'|6 end A"},
            {"<?xml?>\n\n<A>\n\n&bad;</A>",
             "3 start A|5 text '\\n\\n'|error 5: Unknown entity reference"},
        },
        kErrorsThrow, true);
}

std::string Nested(size_t depth) {
    std::string open;
    std::string close;
    for (size_t i = 0; i < depth; ++i) {
        open += "<a>";
        close += "</a>";
    }
    return open + close;
}

TEST(TXmlParser, AcceptsTheMaximumNestingAndRefusesOneMore) {
    EXPECT_EQ(std::string::npos, Scan(Nested(TXmlParser::kMaxElementDepth)).find("error"));
    EXPECT_NE(
        std::string::npos,
        Scan(Nested(TXmlParser::kMaxElementDepth + 1)).find("error 1: Element nesting too deep\n"));
}

TEST(TXmlParser, ParsesAVeryDeepDocumentOnASmallStackInBothErrorModes) {
    for (EErrors errors : {kErrorsThrow, kErrorsReturn}) {
        std::string events;
        ASSERT_TRUE(RunOnSmallStack([&] { events = Scan(Nested(100000), errors); }));
        EXPECT_NE(std::string::npos, events.find("error 1: Element nesting too deep\n"));
    }
}

// The scan leaves the buffer as it found it, but for the attribute names, which it lowers.
TEST(TXmlParser, LeavesOnlyAttributeNamesLoweredInTheBuffer) {
    std::string buffer = "<A Name='V' oThEr=\"X\">Te&amp;xt\r\n<B ID='1'/></A>";
    TRecorder(kErrorsThrow).Parse(&buffer[0]);
    EXPECT_EQ("<A name='V' other=\"X\">Te&amp;xt\r\n<B id='1'/></A>", buffer);
}

// Text and attribute values are scanned many bytes at a time. Placed so that its zero byte is
// the last byte before a page nobody may read, a document of any length, cut anywhere, must scan
// as it does elsewhere: a scan that read across into that page would crash.
TEST(TXmlParser, NeverReadsPastThePageThatHoldsTheZeroByte) {
    const size_t page = size_t(sysconf(_SC_PAGESIZE));
    char* pages = static_cast<char*>(
        mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(MAP_FAILED, pages);
    ASSERT_EQ(0, mprotect(pages + page, page, PROT_NONE));
    for (size_t length = 0; length < 40; ++length) {
        const std::string run(length, 'x');
        const std::string document = "<A a='" + run + "' b=\"" + run + "\">" + run + "</A>";
        for (size_t cut = 0; cut <= document.size(); ++cut) {
            const std::string prefix = document.substr(0, cut);
            SCOPED_TRACE(prefix);
            char* buffer = pages + page - prefix.size() - 1;
            std::memcpy(buffer, prefix.c_str(), prefix.size() + 1);
            TRecorder recorder(kErrorsReturn);
            recorder.Parse(buffer);
            EXPECT_EQ(Scan(prefix, kErrorsReturn), recorder.m_events);
        }
    }
    munmap(pages, 2 * page);
}

std::string ReadExample(const char* name) {
    std::ifstream file(std::string(XMLPARSER_EXAMPLES_DIR) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// A document cut short anywhere before the end of its root element must be reported, and must
// not crash or read past its end in either error mode.
TEST(TXmlParser, ReportsEveryPrefixOfADocumentAsAnError) {
    for (const std::string& sample :
         {std::string(kSample), ReadExample("schema.xml"), ReadExample("instances.xml")}) {
        ASSERT_EQ(std::string::npos, Scan(sample).find("error "));
        const size_t rootEnd = sample.rfind('>') + 1;
        for (size_t length = 0; length < rootEnd; ++length) {
            const std::string prefix = sample.substr(0, length);
            SCOPED_TRACE(prefix);
            EXPECT_NE(std::string::npos, Scan(prefix, kErrorsThrow).find("error "));
            EXPECT_NE(std::string::npos, Scan(prefix, kErrorsReturn).find("error "));
        }
    }
}

} // namespace
} // namespace NQRN20
