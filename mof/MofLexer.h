// TMofLexer: splits MOF text into tokens, with the line and column each starts at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace NQRN20 {

// A token's text is a view: into the document for names, numbers, punctuation and strings
// written without escapes, which stay valid as long as the document; into the lexer's own
// buffer for strings with escapes and for errors, which the next token may overwrite.
struct TMofToken {
    enum EKind {
        kEnd,
        kIdentifier, // also keywords: the parser tells them apart, ignoring letter case
        kAlias,      // $name, without the dollar
        kString,     // one quoted string, escapes resolved
        kChar,       // one quoted character, escapes resolved
        kInteger,    // the literal as written, sign included
        kReal,
        kPunct, // one of ( ) [ ] { } , ; : = #
        kError  // a text that is no token; m_text says why
    };
    EKind m_kind = kEnd;
    // The text is the lexer's buffer: a string's that must outlast the next token is copied.
    // Errors are not marked, as none is kept past its token.
    bool m_transient = false;
    std::string_view m_text;
    uint32_t m_line = 1;
    uint32_t m_column = 1;

    bool Is(char punct) const { return m_kind == kPunct && m_text[0] == punct; }
};

// Reads a zero-terminated buffer that the caller keeps alive; never reads past the terminator.
class TMofLexer {
public:
    // Starts UTF-8 text in some editors; it is skipped.
    static constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

    TMofLexer(const char* text, size_t length);
    // Reads the next token into the one given, which the parser keeps: filled in place, no token
    // is copied.
    void Next(TMofToken& token);

private:
    bool SkipBlockComment();
    void Start(TMofToken& token, TMofToken::EKind kind) const;
    void Advance();
    void Quoted(TMofToken& token, char quote);
    void SkipPlain(char quote);
    bool Escape();
    void Number(TMofToken& token);
    void Word(TMofToken& token, TMofToken::EKind kind);

    const char* m_at;
    const char* m_end;
    uint32_t m_line = 1;
    const char* m_lineStart;
    // The resolved text of a string with escapes, or an error's words; reused by every token.
    std::string m_buffer;
};

} // namespace NQRN20
