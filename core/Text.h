// Text helpers of the core: case-insensitive (ASCII) CIM names and XML white space.
#pragma once

#include <string>

namespace NQRN20 {

inline char LowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string LowerAscii(std::string text) {
    for (char& c : text) {
        c = LowerAscii(c);
    }
    return text;
}

inline bool EqualNoCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::string::size_type i = 0; i < a.size(); ++i) {
        if (LowerAscii(a[i]) != LowerAscii(b[i])) {
            return false;
        }
    }
    return true;
}

inline bool IsXmlSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Document text is often pretty-printed, so values arrive padded with XML white space.
inline std::string TrimXmlSpace(const std::string& text) {
    std::string::size_type begin = 0;
    std::string::size_type end = text.size();
    while (begin < end && IsXmlSpace(text[begin])) {
        ++begin;
    }
    while (end > begin && IsXmlSpace(text[end - 1])) {
        --end;
    }
    return text.substr(begin, end - begin);
}

// Orders names as their lowercase forms would be ordered, for maps keyed by CIM names.
struct TLessNoCase {
    bool operator()(const std::string& a, const std::string& b) const {
        const std::string::size_type n = a.size() < b.size() ? a.size() : b.size();
        for (std::string::size_type i = 0; i < n; ++i) {
            const unsigned char x = static_cast<unsigned char>(LowerAscii(a[i]));
            const unsigned char y = static_cast<unsigned char>(LowerAscii(b[i]));
            if (x != y) {
                return x < y;
            }
        }
        return a.size() < b.size();
    }
};

} // namespace NQRN20
