// TMofLexer: splits MOF text into tokens, with the line and column each starts at.
#include "mof/MofLexer.h"

#include <array>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace NQRN20 {

namespace {

constexpr char kPunctuation[] = "()[]{},;:=#";
const char kUnclosedComment[] = "comment not closed";
const char kUnclosedString[] = "string not closed on its line";
const char kUnclosedChar[] = "character literal not closed";
const char kBadEscape[] = "unknown escape \\";
const char kNoHexDigits[] = "\\x without hexadecimal digits";
const char kUnexpected[] = "unexpected character '";
// A \x escape names one 16-bit character: at most four digits.
const int kMaxHexDigits = 4;

// What each byte can be, as the C locale classes it; one look-up per byte.
enum : uint8_t { kSpace = 1, kNameStart = 2, kDigit = 4, kHexLetter = 8, kPunctuator = 16 };

constexpr std::array<uint8_t, 256> MakeClasses() {
    std::array<uint8_t, 256> classes{};
    for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        classes[uint8_t(c)] = kSpace;
    }
    for (int c = 0; c < 26; ++c) {
        classes['a' + c] = classes['A' + c] = c < 6 ? kNameStart | kHexLetter : kNameStart;
    }
    classes['_'] = kNameStart;
    for (int c = '0'; c <= '9'; ++c) {
        classes[c] = kDigit;
    }
    for (int c = 0x80; c < 0x100; ++c) {
        classes[c] = kNameStart;
    }
    for (const char* c = kPunctuation; *c != 0; ++c) {
        classes[uint8_t(*c)] = kPunctuator;
    }
    return classes;
}

constexpr std::array<uint8_t, 256> kClasses = MakeClasses();

bool Has(char c, uint8_t classes) {
    return (kClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

bool IsNameChar(char c) {
    return Has(c, kNameStart | kDigit);
}

void Fail(TMofToken& token, std::string_view why) {
    token.m_kind = TMofToken::kError;
    token.m_text = why;
}

// The UTF-8 bytes of a 16-bit code point.
void AppendUtf8(std::string& out, unsigned code) {
    if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | code >> 6);
        out += char(0x80 | (code & 0x3F));
    } else {
        out += char(0xE0 | code >> 12);
        out += char(0x80 | (code >> 6 & 0x3F));
        out += char(0x80 | (code & 0x3F));
    }
}

} // namespace

TMofLexer::TMofLexer(const char* text, size_t length)
    : m_at(text), m_end(text + length), m_lineStart(text) {
    const size_t mark = sizeof kByteOrderMark - 1;
    if (length >= mark && std::memcmp(text, kByteOrderMark, mark) == 0) {
        m_at += mark;
        m_lineStart = m_at;
    }
}

void TMofLexer::Start(TMofToken& token, TMofToken::EKind kind) const {
    token.m_kind = kind;
    token.m_transient = false;
    token.m_text = {};
    token.m_line = m_line;
    token.m_column = uint32_t(m_at - m_lineStart) + 1;
}

void TMofLexer::Advance() {
    if (*m_at == '\n') {
        ++m_line;
        m_lineStart = m_at + 1;
    }
    ++m_at;
}

// From just after the "/*" to just after the "*/"; false for a comment left open.
bool TMofLexer::SkipBlockComment() {
    while (m_at < m_end && !(m_at[0] == '*' && m_at[1] == '/')) {
        Advance();
    }
    if (m_at >= m_end) {
        return false;
    }
    m_at += 2;
    return true;
}

// The token after the blanks and comments; a comment left open is reported where it starts.
void TMofLexer::Next(TMofToken& token) {
    while (m_at < m_end) {
        // Blanks between tokens and indentation are most of the text outside strings; the
        // terminator ends the run.
        while (*m_at == ' ') {
            ++m_at;
        }
        if (m_at == m_end) {
            break;
        }
        if (Has(*m_at, kSpace)) {
            Advance();
        } else if (m_at[0] == '/' && m_at[1] == '/') {
            while (m_at < m_end && *m_at != '\n') {
                ++m_at;
            }
        } else if (m_at[0] == '/' && m_at[1] == '*') {
            Start(token, TMofToken::kError);
            m_at += 2;
            if (!SkipBlockComment()) {
                Fail(token, kUnclosedComment);
                return;
            }
        } else {
            break;
        }
    }
    if (m_at >= m_end) {
        Start(token, TMofToken::kEnd);
        return;
    }
    const char c = *m_at;
    if (Has(c, kNameStart)) {
        Word(token, TMofToken::kIdentifier);
    } else if (Has(c, kPunctuator)) {
        Start(token, TMofToken::kPunct);
        token.m_text = std::string_view(m_at++, 1);
    } else if (c == '"' || c == '\'') {
        Quoted(token, c);
    } else if (c == '$') {
        Word(token, TMofToken::kAlias);
    } else if (Has(c, kDigit) || c == '+' || c == '-' || c == '.') {
        Number(token);
    } else {
        m_buffer.assign(kUnexpected);
        m_buffer += c;
        m_buffer += '\'';
        Start(token, TMofToken::kError);
        Fail(token, m_buffer);
        ++m_at;
    }
}

void TMofLexer::Word(TMofToken& token, TMofToken::EKind kind) {
    Start(token, kind);
    m_at += kind == TMofToken::kAlias ? 1 : 0; // the dollar is not part of the name
    const char* from = m_at;
    // The terminator is no name character.
    while (IsNameChar(*m_at)) {
        ++m_at;
    }
    token.m_text = std::string_view(from, size_t(m_at - from));
}

// The literal's whole spelling: its kind and value are worked out where its type is known, so
// that "-INF" and "0x1F" come here too. An exponent's sign belongs to the number.
void TMofLexer::Number(TMofToken& token) {
    Start(token, TMofToken::kInteger);
    const char* from = m_at;
    if (*m_at == '+' || *m_at == '-') {
        ++m_at;
    }
    bool hex = false;
    while (m_at < m_end && (IsNameChar(*m_at) || *m_at == '.')) {
        hex |= *m_at == 'x' || *m_at == 'X';
        const bool exponent = !hex && (*m_at == 'e' || *m_at == 'E');
        token.m_kind = *m_at == '.' || exponent ? TMofToken::kReal : token.m_kind;
        ++m_at;
        if (exponent && (*m_at == '+' || *m_at == '-')) {
            ++m_at;
        }
    }
    token.m_text = std::string_view(from, size_t(m_at - from));
}

// Moves to the next quote, backslash or line end, or to the end of the text. Strings are most
// of a schema, so they are scanned sixteen bytes at a time where the processor can, as long as
// sixteen bytes are left before the end, and the rest byte by byte.
void TMofLexer::SkipPlain(char quote) {
#if defined(__SSE2__)
    const __m128i quotes = _mm_set1_epi8(quote);
    const __m128i backslashes = _mm_set1_epi8('\\');
    const __m128i lineEnds = _mm_set1_epi8('\n');
    while (m_end - m_at >= 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(m_at));
        const __m128i stops = _mm_or_si128(
            _mm_or_si128(_mm_cmpeq_epi8(chunk, quotes), _mm_cmpeq_epi8(chunk, backslashes)),
            _mm_cmpeq_epi8(chunk, lineEnds));
        const int hits = _mm_movemask_epi8(stops);
        if (hits != 0) {
            m_at += __builtin_ctz(unsigned(hits));
            return;
        }
        m_at += 16;
    }
#endif
    while (m_at < m_end && *m_at != quote && *m_at != '\\' && *m_at != '\n') {
        ++m_at;
    }
}

// A string without escapes is the document's own text; one with them is resolved into the
// buffer, from its first backslash on.
void TMofLexer::Quoted(TMofToken& token, char quote) {
    Start(token, quote == '"' ? TMofToken::kString : TMofToken::kChar);
    ++m_at;
    const char* from = m_at;
    SkipPlain(quote);
    token.m_text = std::string_view(from, size_t(m_at - from));
    if (m_at < m_end && *m_at == '\\') {
        m_buffer.assign(from, m_at);
        while (m_at < m_end && *m_at != quote && *m_at != '\n') {
            if (*m_at == '\\') {
                if (!Escape()) {
                    Fail(token, m_buffer);
                    return;
                }
                continue;
            }
            // The plain run up to the next quote, backslash or line end goes in at once.
            const char* run = m_at;
            SkipPlain(quote);
            m_buffer.append(run, m_at);
        }
        token.m_text = m_buffer;
        token.m_transient = true;
    }
    if (m_at >= m_end || *m_at != quote) {
        Fail(token, quote == '"' ? kUnclosedString : kUnclosedChar);
        return;
    }
    ++m_at;
}

// One escape after its backslash, appended to the buffer as UTF-8. False for one that is
// none, with the buffer saying why.
bool TMofLexer::Escape() {
    static const char kFrom[] = "btnfr\"'\\";
    static const char kTo[] = "\b\t\n\f\r\"'\\";
    const char c = m_at + 1 < m_end ? m_at[1] : 0;
    // A backslash before the line's or the text's end leaves that end to close the string.
    m_at += c == 0 || c == '\n' ? 1 : 2;
    for (int i = 0; kFrom[i] != 0; ++i) {
        if (c == kFrom[i]) {
            m_buffer += kTo[i];
            return true;
        }
    }
    if (c != 'x' && c != 'X') {
        m_buffer.assign(kBadEscape);
        m_buffer += c;
        return false;
    }
    unsigned code = 0;
    int digits = 0;
    while (digits < kMaxHexDigits && m_at < m_end && Has(*m_at, kDigit | kHexLetter)) {
        const char d = *m_at++;
        code = code * 16 + unsigned(Has(d, kDigit) ? d - '0' : (d | 0x20) - 'a' + 10);
        ++digits;
    }
    if (digits == 0) {
        m_buffer.assign(kNoHexDigits);
        return false;
    }
    AppendUtf8(m_buffer, code);
    return true;
}

} // namespace NQRN20
