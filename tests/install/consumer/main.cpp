// Parses a small document with the installed tokenizer and checks what it saw.
#include "core/Core.h"
#include "tokenizer/XmlParser.h"

#include <cstdio>
#include <cstring>
#include <string>

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

} // namespace

int main() {
    char document[] = "<?xml version=\"1.0\"?><CIM><VALUE>a &amp; b</VALUE></CIM>";
    TCounter counter;
    counter.Parse(document);
    if (counter.m_elements != 2 || counter.m_text != "a & b") {
        std::fprintf(stderr, "unexpected parse: %d elements, text '%s'\n", counter.m_elements,
                     counter.m_text.c_str());
        return 1;
    }
    std::puts("consumer: ok");
    return 0;
}
