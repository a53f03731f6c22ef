// Text helpers of the core: case-insensitive (ASCII) CIM names and XML white space.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
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

// Two texts of the given size. Most names arrive in the spelling they were declared with, so a
// plain comparison settles most calls before the letter case is looked at.
inline bool EqualNoCase(const char* a, const char* b, std::size_t size) {
    if (std::memcmp(a, b, size) == 0) {
        return true;
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (LowerAscii(a[i]) != LowerAscii(b[i])) {
            return false;
        }
    }
    return true;
}

inline bool EqualNoCase(const std::string& a, const std::string& b) {
    return a.size() == b.size() && EqualNoCase(a.data(), b.data(), a.size());
}

// The same against a literal, without making a string of it first.
inline bool EqualNoCase(const std::string& a, const char* b) {
    const std::size_t size = std::strlen(b);
    return a.size() == size && EqualNoCase(a.data(), b, size);
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

// Hashes names so that names equal but for letter case hash alike, for tables keyed by CIM
// names: a lookup then reads the name once instead of comparing it along a tree path of similar
// names. Eight bytes are mixed at a time, each with its 0x20 bit set, which is all that tells an
// ASCII capital from its small letter.
struct THashNoCase {
    size_t operator()(const std::string& text) const {
        const uint64_t kCaseBits = 0x2020202020202020ull;
        uint64_t hash = text.size();
        std::string::size_type i = 0;
        for (; i + 8 <= text.size(); i += 8) {
            uint64_t word;
            std::memcpy(&word, text.data() + i, 8);
            hash = (hash ^ (word | kCaseBits)) * 0x9E3779B97F4A7C15ull;
        }
        if (i < text.size()) {
            uint64_t word = 0;
            std::memcpy(&word, text.data() + i, text.size() - i);
            hash = (hash ^ (word | kCaseBits)) * 0x9E3779B97F4A7C15ull;
        }
        return static_cast<size_t>(hash ^ (hash >> 29));
    }
};

} // namespace NQRN20
