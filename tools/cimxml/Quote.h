// QuoteEscaped: a string literal as JSON and MOF both write it, backslash escapes and all.
#pragma once

#include <cstdio>
#include <string>

namespace NQRN20 {

// Quotes the text, escaping quotes, backslashes, line ends and tabs as C does; other control
// characters go through controlFormat ("\\u%04x" for JSON, "\\x%02X" for MOF).
inline std::string QuoteEscaped(const std::string& text, const char* controlFormat) {
    std::string quoted = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\t':
            quoted += "\\t";
            break;
        case '\r':
            quoted += "\\r";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, controlFormat, unsigned(c));
                quoted += escaped;
            } else {
                quoted += c;
            }
        }
    }
    return quoted + '"';
}

} // namespace NQRN20
