// Callback sinks that count what they are given, so that the timed work is never skipped.
#pragma once

#include "core/Core.h"
#include "tokenizer/XmlParser.h"

#include <cstdint>
#include <string>

namespace NBench {

// Counts the log lines and keeps the first.
class TCountingLogger : public NQRN20::ILogger {
public:
    void Log(uint32_t, const std::string& text) override {
        if (m_lines++ == 0) {
            m_first = text;
        }
    }
    uint64_t m_lines = 0;
    std::string m_first;
};

// The tokenizer with callbacks that only count.
class TCountingTokenizer : public NQRN20::TXmlParser {
public:
    void StartElement(const char*, NQRN20::TAttributeMap& attributes) override {
        m_count += 1 + attributes.size();
    }
    void EndElement(const char*) override { ++m_count; }
    void processingInstruction(const char*, const char*) override {}
    void characters(const char*, uint32_t length) override { m_count += length; }
    void notationDecl(const char*, const char*, const char*) override {}
    void FatalError(const char*) override { m_failed = true; }
    uint64_t m_count = 0;
    bool m_failed = false;
};

} // namespace NBench
