// TMofLexer: splits MOF text into tokens, with the line and column each starts at.
#include "mof/MofLexer.h"

#include <cctype>
#include <cstring>

namespace NQRN20 {

namespace {

const char kPunctuation[] = "()[]{},;:=#";
const char kUnclosedComment[] = "comment not closed";
const char kUnclosedString[] = "string not closed on its line";
const char kUnclosedChar[] = "character literal not closed";
const char kBadEscape[] = "unknown escape \\";
const char kNoHexDigits[] = "\\x without hexadecimal digits";
const char kUnexpected[] = "unexpected character '";
// A \x escape names one 16-bit character: at most four digits.
const int kMaxHexDigits = 4;

bool IsNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameChar(char c) {
    return IsNameStart(c) || std::isdigit(static_cast<unsigned char>(c));
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

TMofToken TMofLexer::Start(TMofToken::EKind kind) const {
    TMofToken token;
    token.m_kind = kind;
    token.m_line = m_line;
    token.m_column = uint32_t(m_at - m_lineStart) + 1;
    return token;
}

void TMofLexer::Advance() {
    if (*m_at == '\n') {
        ++m_line;
        m_lineStart = m_at + 1;
    }
    ++m_at;
}

// A comment left open is reported where it starts, through the token given.
void TMofLexer::SkipBlankAndComments(TMofToken& error) {
    while (m_at < m_end) {
        if (std::isspace(static_cast<unsigned char>(*m_at))) {
            Advance();
        } else if (m_at[0] == '/' && m_at[1] == '/') {
            while (m_at < m_end && *m_at != '\n') {
                ++m_at;
            }
        } else if (m_at[0] == '/' && m_at[1] == '*') {
            error = Start(TMofToken::kError);
            m_at += 2;
            while (m_at < m_end && !(m_at[0] == '*' && m_at[1] == '/')) {
                Advance();
            }
            if (m_at >= m_end) {
                error.m_text = kUnclosedComment;
                return;
            }
            m_at += 2;
        } else {
            return;
        }
    }
}

TMofToken TMofLexer::Next() {
    TMofToken error;
    SkipBlankAndComments(error);
    if (!error.m_text.empty()) {
        return error;
    }
    if (m_at >= m_end) {
        return Start(TMofToken::kEnd);
    }
    const char c = *m_at;
    if (c == '"' || c == '\'') {
        return Quoted(c);
    }
    if (c == '$') {
        return Word(TMofToken::kAlias);
    }
    if (IsNameStart(c)) {
        return Word(TMofToken::kIdentifier);
    }
    if (std::isdigit(static_cast<unsigned char>(c)) || c == '+' || c == '-' || c == '.') {
        return Number();
    }
    TMofToken token = Start(TMofToken::kPunct);
    token.m_text = std::string(1, c);
    if (c == 0 || std::strchr(kPunctuation, c) == nullptr) {
        token.m_kind = TMofToken::kError;
        token.m_text = kUnexpected + token.m_text + "'";
    }
    ++m_at;
    return token;
}

TMofToken TMofLexer::Word(TMofToken::EKind kind) {
    TMofToken token = Start(kind);
    m_at += kind == TMofToken::kAlias ? 1 : 0; // the dollar is not part of the name
    const char* from = m_at;
    while (m_at < m_end && IsNameChar(*m_at)) {
        ++m_at;
    }
    token.m_text.assign(from, m_at);
    return token;
}

// The literal's whole spelling: its kind and value are worked out where its type is known, so
// that "-INF" and "0x1F" come here too. An exponent's sign belongs to the number.
TMofToken TMofLexer::Number() {
    TMofToken token = Start(TMofToken::kInteger);
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
    token.m_text.assign(from, m_at);
    return token;
}

TMofToken TMofLexer::Quoted(char quote) {
    TMofToken token = Start(quote == '"' ? TMofToken::kString : TMofToken::kChar);
    ++m_at;
    std::string why;
    while (m_at < m_end && *m_at != quote && *m_at != '\n') {
        // The plain run up to the next quote, backslash or line end goes in at once.
        const char* from = m_at;
        while (m_at < m_end && *m_at != quote && *m_at != '\\' && *m_at != '\n') {
            ++m_at;
        }
        token.m_text.append(from, m_at);
        if (m_at < m_end && *m_at == '\\' && !Escape(token.m_text, why)) {
            token.m_kind = TMofToken::kError;
            token.m_text = why;
            return token;
        }
    }
    if (m_at >= m_end || *m_at != quote) {
        token.m_kind = TMofToken::kError;
        token.m_text = quote == '"' ? kUnclosedString : kUnclosedChar;
        return token;
    }
    ++m_at;
    return token;
}

// One escape after its backslash, appended as UTF-8.
bool TMofLexer::Escape(std::string& out, std::string& why) {
    static const char kFrom[] = "btnfr\"'\\";
    static const char kTo[] = "\b\t\n\f\r\"'\\";
    const char c = m_at + 1 < m_end ? m_at[1] : 0;
    m_at += 2;
    for (int i = 0; kFrom[i] != 0; ++i) {
        if (c == kFrom[i]) {
            out += kTo[i];
            return true;
        }
    }
    if (c != 'x' && c != 'X') {
        why = kBadEscape + std::string(1, c);
        m_at -= c == 0 || c == '\n' ? 1 : 0;
        return false;
    }
    unsigned code = 0;
    int digits = 0;
    while (digits < kMaxHexDigits && m_at < m_end &&
           std::isxdigit(static_cast<unsigned char>(*m_at))) {
        const char d = char(std::tolower(static_cast<unsigned char>(*m_at++)));
        code = code * 16 + unsigned(d <= '9' ? d - '0' : d - 'a' + 10);
        ++digits;
    }
    if (digits == 0) {
        why = kNoHexDigits;
        return false;
    }
    AppendUtf8(out, code);
    return true;
}

} // namespace NQRN20
