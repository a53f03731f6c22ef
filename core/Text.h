// Text helpers of the core: case-insensitive (ASCII) CIM names and XML white space.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace NQRN20 {

inline char LowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// The bytes of a word with their ASCII capitals lowered. A byte's bit 7 marks where it is at
// least 'A', then where it is above 'Z'; bytes from 0x80 up are left alone, and no sum carries
// into the next byte.
inline uint64_t LowerAsciiWord(uint64_t word) {
    const uint64_t kOnes = 0x0101010101010101ull;
    const uint64_t low = word & (0x7F * kOnes);
    const uint64_t atLeastA = low + (0x80 - 'A') * kOnes;
    const uint64_t aboveZ = low + (0x80 - 'Z' - 1) * kOnes;
    const uint64_t capitals = atLeastA & ~aboveZ & ~word & (0x80 * kOnes);
    return word | (capitals >> 2);
}

template <class T>
T LoadWord(const char* at) {
    T word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

template <class T>
void StoreLowered(char* at, T word) {
    word = static_cast<T>(LowerAsciiWord(word));
    std::memcpy(at, &word, sizeof word);
}

// Copies the bytes with their ASCII capitals lowered, a word at a time: names are short, but
// every element has one. From and to may be the same place. Lowering twice changes nothing, so
// the last word may overlap the one before; it is loaded before anything is stored, since a load
// that overlaps an earlier store only in part waits until that store has reached the cache.
inline void LowerAsciiCopy(const char* from, std::size_t length, char* to) {
    if (length >= 8) {
        const uint64_t last = LoadWord<uint64_t>(from + length - 8);
        for (std::size_t i = 0; i + 8 < length; i += 8) {
            StoreLowered(to + i, LoadWord<uint64_t>(from + i));
        }
        StoreLowered(to + length - 8, last);
    } else if (length >= 4) {
        const uint32_t first = LoadWord<uint32_t>(from);
        const uint32_t last = LoadWord<uint32_t>(from + length - 4);
        StoreLowered(to, first);
        StoreLowered(to + length - 4, last);
    } else {
        for (std::size_t i = 0; i < length; ++i) {
            to[i] = LowerAscii(from[i]);
        }
    }
}

inline void LowerAscii(char* text, std::size_t length) {
    LowerAsciiCopy(text, length, text);
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
    size_t operator()(std::string_view text) const { return (*this)(text.data(), text.size()); }
    size_t operator()(const char* p, std::size_t size) const {
        uint64_t hash = size;
        const auto mix = [&hash](uint64_t word) {
            hash = (hash ^ (word | 0x2020202020202020ull)) * 0x9E3779B97F4A7C15ull;
        };
        // The last word overlaps the one before rather than being copied byte by byte.
        if (size >= 8) {
            for (std::size_t i = 0; i + 8 < size; i += 8) {
                mix(LoadWord<uint64_t>(p + i));
            }
            mix(LoadWord<uint64_t>(p + size - 8));
        } else if (size >= 4) {
            mix(uint64_t(LoadWord<uint32_t>(p)) << 32 | LoadWord<uint32_t>(p + size - 4));
        } else {
            uint64_t word = 0;
            for (std::size_t i = 0; i < size; ++i) {
                word = word << 8 | static_cast<unsigned char>(p[i]);
            }
            mix(word);
        }
        // Tables index by the low bits, and a product's low bits see only the words' low bytes:
        // the high half is folded down, so that names differing at their end spread as well.
        hash ^= hash >> 33;
        hash *= 0xFF51AFD7ED558CCDull;
        return static_cast<size_t>(hash ^ (hash >> 33));
    }
};

// Equality to go with THashNoCase, for tables keyed by views of names.
struct TEqualNoCase {
    bool operator()(std::string_view a, std::string_view b) const {
        return a.size() == b.size() && EqualNoCase(a.data(), b.data(), a.size());
    }
};

} // namespace NQRN20
