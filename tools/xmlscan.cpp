// xmlscan: runs the tokenizer over XML files and reports what it saw and the first error.
#include "tokenizer/XmlParser.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct TScanError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class TScanner : public NQRN20::TXmlParser {
public:
    uint64_t m_elements = 0;
    uint64_t m_attributes = 0;
    uint64_t m_textBytes = 0;
    uint32_t m_depth = 0;
    uint32_t m_maxDepth = 0;

    void StartElement(const char*, NQRN20::TAttributeMap& attributes) override {
        ++m_elements;
        m_attributes += attributes.size();
        if (++m_depth > m_maxDepth) {
            m_maxDepth = m_depth;
        }
    }
    void EndElement(const char*) override { --m_depth; }
    void processingInstruction(const char*, const char*) override {}
    void characters(const char*, uint32_t length) override { m_textBytes += length; }
    void notationDecl(const char*, const char*, const char*) override {}
    void FatalError(const char* message) override {
        throw TScanError("line " + std::to_string(GetCurLine()) + ": " + message);
    }
};

int Scan(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "%s: cannot open\n", path);
        return 1;
    }
    std::vector<char> buffer((std::istreambuf_iterator<char>(file)),
                             std::istreambuf_iterator<char>());
    const size_t size = buffer.size();
    buffer.push_back(0);

    TScanner scanner;
    const auto start = std::chrono::steady_clock::now();
    int status = 0;
    try {
        scanner.Parse(buffer.data());
    } catch (const TScanError& error) {
        std::fprintf(stderr, "%s: %s\n", path, error.what());
        status = 1;
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%s: %zu bytes, %llu elements, %llu attributes, %llu text bytes, depth %u, "
                "%.3f ms\n",
                path, size, static_cast<unsigned long long>(scanner.m_elements),
                static_cast<unsigned long long>(scanner.m_attributes),
                static_cast<unsigned long long>(scanner.m_textBytes), scanner.m_maxDepth,
                seconds.count() * 1e3);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FILE...\n", argv[0]);
        return 2;
    }
    int status = 0;
    for (int i = 1; i < argc; ++i) {
        status |= Scan(argv[i]);
    }
    return status;
}
