// A program that uses the installed headers and libraries the way an application does: it loads
// a small document with the parser and the loaders, and defines Boost's assertion handlers
// itself, which the library must leave to it.
#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"
#include "populator/NamespacePopulator.h"
#include "tokenizer/XmlParser.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace boost {

void assertion_failed_msg(char const* expr, char const*, char const*, char const*, long) {
    std::fprintf(stderr, "consumer's own handler: %s\n", expr);
    std::abort();
}

void assertion_failed(char const* expr, char const* function, char const* file, long line) {
    assertion_failed_msg(expr, nullptr, function, file, line);
}

} // namespace boost

namespace {

class TCounter : public NQRN20::TXmlParser {
public:
    int m_elements = 0;
    std::string m_text;

    void StartElement(const char*, NQRN20::TAttributeMap&) override { ++m_elements; }
    void EndElement(const char*) override {}
    void processingInstruction(const char*, const char*) override {}
    void characters(const char* text, uint32_t length) override { m_text.append(text, length); }
    void notationDecl(const char*, const char*, const char*) override {}
    void FatalError(const char*) override {
        throw NQRN20::TQRNException(NQRN20::kQRNStatusParseError);
    }
};

int Fail(const std::string& what) {
    std::fprintf(stderr, "consumer: %s\n", what.c_str());
    return 1;
}

} // namespace

int main() {
    using namespace NQRN20;
    char document[] = "<?xml version=\"1.0\"?><CIM><VALUE>a &amp; b</VALUE></CIM>";
    TCounter counter;
    counter.Parse(document);
    if (counter.m_elements != 2 || counter.m_text != "a & b") {
        return Fail("unexpected tokens: " + std::to_string(counter.m_elements) + ", '" +
                    counter.m_text + "'");
    }

    const std::string path = "consumer-schema.xml";
    std::ofstream(path) << "<CIM><DECLARATION><DECLGROUP><VALUE.OBJECT><CLASS NAME=\"EX_A\"/>"
                           "</VALUE.OBJECT></DECLGROUP></DECLARATION></CIM>";
    const boost::shared_ptr<ICIMNamespace> ns = TMemoryNamespace::Create();
    TLoadReport report;
    const auto classes = TNamespacePopulator::PopulateFromXMLFile(ns, path, report);
    TCIMXMLParser parser(ns);
    std::remove(path.c_str());
    if (classes.size() != 1 || report.m_tally.m_classes != 1 || !report.Complete()) {
        return Fail("unexpected load of " + std::to_string(classes.size()) + " classes");
    }
    std::puts("consumer: ok");
    return 0;
}
