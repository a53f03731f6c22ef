// A core logger for tests: records each line with its level while it is installed.
#pragma once

#include "core/Core.h"

#include <string>
#include <vector>

namespace NQRN20 {

class TLogRecorder : public ILogger {
public:
    TLogRecorder() { TRootObject::SetCoreLogger(this); }
    ~TLogRecorder() override { TRootObject::SetCoreLogger(nullptr); }
    TLogRecorder(const TLogRecorder&) = delete;
    TLogRecorder& operator=(const TLogRecorder&) = delete;

    void Log(uint32_t level, const std::string& text) override {
        m_lines.push_back(std::to_string(level) + " " + text);
    }

    // The lines so far, one a line, for comparisons that show a diff.
    std::string Text() const {
        std::string text;
        for (const std::string& line : m_lines) {
            text += line + "\n";
        }
        return text;
    }

    std::vector<std::string> m_lines;
};

} // namespace NQRN20
