// Fuzzes the tokenizer alone. The first byte chooses whether FatalError throws, as it does in
// the library, or returns, which the tokenizer must survive just as well.
#include "fuzz/FuzzSupport.h"
#include "tokenizer/XmlParser.h"

namespace {

using namespace NQRN20;

struct TStop {};

class TNullParser : public TXmlParser {
public:
    explicit TNullParser(bool throwOnError) : m_throwOnError(throwOnError) {}
    void StartElement(const char*, TAttributeMap&) override {}
    void EndElement(const char*) override {}
    void processingInstruction(const char*, const char*) override {}
    void characters(const char*, uint32_t) override {}
    void notationDecl(const char*, const char*, const char*) override {}
    void FatalError(const char*) override {
        GetCurLine();
        if (m_throwOnError) {
            throw TStop();
        }
    }

private:
    bool m_throwOnError;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::unique_ptr<char[]> buffer = ExactCopy(data + 1, size - 1);
    TNullParser parser((data[0] & 1) != 0);
    try {
        parser.Parse(buffer.get(), size - 1);
    } catch (const TStop&) {
    }
    return 0;
}
