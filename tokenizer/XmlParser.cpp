// The scanning loop of TXmlParser: prolog, elements, attributes, character data and references.
#include "tokenizer/XmlParser.h"

#include "core/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace NQRN20 {

namespace {

const char kBeforeProlog[] = "Unexpected character before prolog";
const char kInDocTypeDecl[] = "Unexpected character in doctypedecl";
const char kInvalidName[] = "Invalid element/attribute name";
const char kJSSP[] = "Invalid XML '<%' characters encountered";
const char kBeforeElement[] = "Unexpected character before element";
const char kBeforeEndOfElement[] = "Unexpected character before end of element";
const char kWhereElementExpected[] = "Unexpected character where element expected";
const char kNamesDontMatch[] = "Start and end element names don't match";
const char kBeforeEquals[] = "Unexpected character between attribute name and value";
const char kAfterEquals[] = "Unexpected character after equals of attribute name";
const char kLessThanInValue[] = "Unexpected character(<) in attribute value";
const char kAmpersandInValue[] = "Unexpected character(&) in attribute value";
const char kAttributeTwice[] = "Attribute appears twice";
const char kUnknownEntity[] = "Unknown entity reference";
const char kInvalidHex[] = "Invalid hex character";
const char kValueUnterminated[] = "End of input inside an attribute value";
const char kReferenceUnterminated[] = "End of input inside a character reference";
const char kTooDeep[] = "Element nesting too deep";
const char kInvalidCharacterReference[] = "Invalid character reference";
const char kUnterminatedXmlDecl[] = "Unterminated XML declaration";
const char kUnterminatedDocType[] = "Unterminated document type declaration";
const char kUnterminatedComment[] = "Unterminated comment";
const char kUnterminatedPI[] = "Unterminated processing instruction";
const char kUnterminatedCData[] = "Unterminated CDATA section";
const char kMarkupInContent[] = "Unexpected markup in element content";
const char kAfterRoot[] = "Unexpected content after the root element";
const char kUnsupportedEncoding[] = "Unsupported encoding ";

const char kCDataStart[] = "<![CDATA[";
const char kCDataEnd[] = "]]>";
const char kCommentStart[] = "<!--";
const char kByteOrderMark[] = "\xEF\xBB\xBF";
// Delivered for each line end: CR LF and a lone CR read as one line feed.
const char kLineFeed[] = "\n";
// Character references stand for code points up to this one, but for the surrogates.
const uint32_t kLastCodePoint = 0x10FFFF;

// Pseudo-attributes through which StartElement rejects the tag it was given.
const char kRejectFormat[] = "throwExInvalidFormat";
const char kRejectValue[] = "throwExInvalidValue";
// The only element whose end callback a rejected value suppresses.
const char kValueElement[] = "VALUE";
// Targets and data of processing instructions and notations are not extracted.
const char kNotExtracted[] = "TBD";

struct TEntity {
    const char* m_name; // lower case, with its ';'
    char m_character;
};
const TEntity kEntities[] = {
    {"amp;", '&'}, {"apos;", '\''}, {"gt;", '>'}, {"lt;", '<'}, {"quot;", '"'},
};
// The order in which an attribute value's reference is compared.
const char* const kValueEntities[] = {"gt;", "lt;", "amp;", "apos;", "quot;"};

constexpr bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// What each byte is to the scans, one bit a question, so that a scan tests one table entry per
// byte instead of a chain of comparisons.
enum EByteClass : uint8_t {
    kSpace = 1,
    kNameStart = 2,
    kNameChar = 4,
};

struct TByteClasses {
    uint8_t m_bits[256];
};

constexpr TByteClasses MakeByteClasses() {
    TByteClasses classes{};
    for (int i = 0; i < 256; ++i) {
        const char c = char(i);
        uint8_t bits = 0;
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            bits |= kSpace;
        }
        if (IsLetter(c) || c == '_' || c == ':') {
            bits |= kNameStart | kNameChar;
        }
        if (IsDigit(c) || c == '.' || c == '-') {
            bits |= kNameChar;
        }
        classes.m_bits[i] = bits;
    }
    return classes;
}

constexpr TByteClasses kByteClasses = MakeByteClasses();

inline bool Is(char c, uint8_t bits) {
    return (kByteClasses.m_bits[static_cast<unsigned char>(c)] & bits) != 0;
}

// The bytes besides the zero that end a scan.
template <size_t N>
struct TStops {
    char m_bytes[N];

    bool Contain(char byte) const {
        bool found = byte == 0;
        for (size_t i = 0; i < N; ++i) {
            found |= byte == m_bytes[i];
        }
        return found;
    }
};

// The first byte at or after p that is the zero or one of the stops. Text and attribute values
// are most of a document, so they are scanned sixteen bytes at a time where the processor can.
// A load never leaves the page of the bytes it must read, so reading a little past the zero is
// harmless, but the address sanitizer would take it for an overflow.
#if defined(__SSE2__)
template <size_t N>
__attribute__((no_sanitize("address"))) char* SkipUntilAny(char* p, const TStops<N>& stops) {
    __m128i wanted[N];
    for (size_t i = 0; i < N; ++i) {
        wanted[i] = _mm_set1_epi8(stops.m_bytes[i]);
    }
    const __m128i zero = _mm_setzero_si128();
    const auto found = [&](__m128i chunk) {
        __m128i hits = _mm_cmpeq_epi8(chunk, zero);
        for (size_t i = 0; i < N; ++i) {
            hits = _mm_or_si128(hits, _mm_cmpeq_epi8(chunk, wanted[i]));
        }
        return _mm_movemask_epi8(hits);
    };
    const uintptr_t kPage = 4096;
    const uintptr_t kChunk = 16;
    uintptr_t at = reinterpret_cast<uintptr_t>(p);
    if (at % kPage <= kPage - kChunk) {
        // Most runs are short: one unaligned load inside p's page settles them.
        const int hits = found(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        if (hits != 0) {
            return p + __builtin_ctz(unsigned(hits));
        }
        at = (at + kChunk) & ~(kChunk - 1);
    } else {
        for (; at % kChunk != 0; ++at) {
            if (stops.Contain(*reinterpret_cast<const char*>(at))) {
                return reinterpret_cast<char*>(at);
            }
        }
    }
    for (;; at += kChunk) {
        const int hits = found(_mm_load_si128(reinterpret_cast<const __m128i*>(at)));
        if (hits != 0) {
            return reinterpret_cast<char*>(at) + __builtin_ctz(unsigned(hits));
        }
    }
}
#else
template <size_t N>
char* SkipUntilAny(char* p, const TStops<N>& stops) {
    while (!stops.Contain(*p)) {
        ++p;
    }
    return p;
}
#endif

inline char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

// The digit's value in the base, or -1 when it is not a digit of it.
int DigitValue(char c, unsigned base) {
    if (IsDigit(c)) {
        return c - '0';
    }
    c = Lower(c);
    return base == 16 && c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// CR LF and a lone CR become one line feed each, in place.
void NormalizeLineEnds(std::string& text) {
    size_t to = 0;
    for (size_t from = 0; from < text.size(); ++from) {
        const char c = text[from];
        if (c == '\r' && from + 1 < text.size() && text[from + 1] == '\n') {
            continue;
        }
        text[to++] = c == '\r' ? '\n' : c;
    }
    text.resize(to);
}

// The code point's UTF-8 bytes; returns their count.
size_t EncodeUtf8(uint32_t code, char* out) {
    if (code < 0x80) {
        out[0] = char(code);
        return 1;
    }
    const size_t count = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    static const unsigned char kLead[] = {0, 0, 0xC0, 0xE0, 0xF0};
    for (size_t i = count - 1; i > 0; --i) {
        out[i] = char(0x80 | (code & 0x3F));
        code >>= 6;
    }
    out[0] = char(kLead[count] | code);
    return count;
}

// The encoding a document's first bytes show where the scan cannot read it, or null. A document
// of unknown length shows only its bytes before the first zero.
const char* WideEncoding(const char* bytes, size_t visible) {
    static const struct {
        const char* m_bytes;
        size_t m_size;
        const char* m_name;
    } kWide[] = {
        {"\0\0\xFE\xFF", 4, "UTF-32BE"}, {"\xFF\xFE\0\0", 4, "UTF-32LE"},
        {"\0\0\0<", 4, "UTF-32BE"},      {"<\0\0\0", 4, "UTF-32LE"},
        {"\xFE\xFF", 2, "UTF-16BE"},     {"\xFF\xFE", 2, "UTF-16LE"},
        {"\0<\0?", 4, "UTF-16BE"},       {"<\0?\0", 4, "UTF-16LE"},
    };
    for (const auto& wide : kWide) {
        if (visible >= wide.m_size && std::memcmp(bytes, wide.m_bytes, wide.m_size) == 0) {
            return wide.m_name;
        }
    }
    return nullptr;
}

// The encoding an XML declaration at the start names, as written; empty where none is named.
std::string DeclaredEncoding(const char* text) {
    if (std::strncmp(text, "<?xml", 5) != 0 || !IsXmlSpace(text[5])) {
        return std::string();
    }
    const char* end = std::strstr(text, "?>");
    const std::string declaration(text, end == nullptr ? text : end);
    size_t at = declaration.find("encoding");
    if (at == std::string::npos) {
        return std::string();
    }
    at = declaration.find_first_not_of(" \t\r\n", at + 8);
    if (at == std::string::npos || declaration[at] != '=') {
        return std::string();
    }
    at = declaration.find_first_not_of(" \t\r\n", at + 1);
    if (at == std::string::npos || (declaration[at] != '"' && declaration[at] != '\'')) {
        return std::string();
    }
    const size_t close = declaration.find(declaration[at], at + 1);
    return close == std::string::npos ? std::string() : declaration.substr(at + 1, close - at - 1);
}

bool IsOneOf(const std::string& lowered, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (lowered == name) {
            return true;
        }
    }
    return false;
}

// The UTF-8 form of a Latin-1 text: each byte is the code point of its character.
std::string Latin1ToUtf8(const char* text) {
    std::string utf8;
    utf8.reserve(std::strlen(text) + 64 + TXmlParser::kReadAhead);
    for (const char* p = text; *p != 0; ++p) {
        char bytes[4];
        utf8.append(bytes, EncodeUtf8(static_cast<unsigned char>(*p), bytes));
    }
    // The scan ends at the first zero; the rest is for its read-ahead.
    utf8.append(TXmlParser::kReadAhead, '\0');
    return utf8;
}

bool HasHighByte(const char* text) {
    for (const char* p = text; *p != 0; ++p) {
        if (static_cast<unsigned char>(*p) >= 0x80) {
            return true;
        }
    }
    return false;
}

// Puts a zero byte in place for the duration of a callback, so that the text before it is a
// zero-terminated string; restores the byte also when the callback throws.
class TTerminator {
public:
    explicit TTerminator(char* at) : m_at(at), m_saved(*at) { *at = 0; }
    ~TTerminator() { *m_at = m_saved; }
    TTerminator(const TTerminator&) = delete;
    TTerminator& operator=(const TTerminator&) = delete;

private:
    char* m_at;
    char m_saved;
};

} // namespace

// One open element: counts its depth and, once its start tag is complete, keeps its name
// zero-terminated until the element ends, also when a callback throws.
struct TXmlParser::TOpenElement {
    TOpenElement(TXmlParser& parser, const char* name, char* nameEnd)
        : m_parser(parser), m_name(name), m_nameEnd(nameEnd), m_saved(0), m_terminated(false) {
        ++m_parser.m_depth;
    }
    ~TOpenElement() {
        --m_parser.m_depth;
        if (m_terminated) {
            *m_nameEnd = m_saved;
            if (m_saved == '\n') {
                m_parser.m_hiddenLineFeeds.pop_back();
            }
        }
    }
    TOpenElement(const TOpenElement&) = delete;
    TOpenElement& operator=(const TOpenElement&) = delete;

    void TerminateName() {
        m_saved = *m_nameEnd;
        *m_nameEnd = 0;
        m_terminated = true;
        if (m_saved == '\n') {
            m_parser.m_hiddenLineFeeds.push_back(m_nameEnd);
        }
    }
    size_t NameLength() const { return size_t(m_nameEnd - m_name); }

    TXmlParser& m_parser;
    const char* m_name;
    char* m_nameEnd;
    char m_saved;
    bool m_terminated;
};

TXmlParser::TXmlParser()
    : m_pStart(nullptr), m_pCur(nullptr), m_depth(0), m_pLineBuffer(nullptr), m_pLineMark(nullptr),
      m_lineAtMark(1), m_reported(0) {}

TXmlParser::TXmlParser(const TXmlParser& other) = default;

TXmlParser& TXmlParser::operator=(const TXmlParser& other) = default;

TXmlParser::~TXmlParser() = default;

void TXmlParser::Parse(char* buffer) {
    // Enough to tell the encodings apart by their first bytes, as far as they are not zero.
    const size_t kSniffed = 4;
    Parse(buffer, buffer == nullptr ? 0 : strnlen(buffer, kSniffed));
}

// document: prolog element Misc*  - anything else after the root element is reported
void TXmlParser::Parse(char* buffer, size_t length) {
    m_pStart = m_pCur = buffer;
    m_depth = 0;
    m_hiddenLineFeeds.clear();
    m_decoded.reset();
    m_reported = 0;
    m_pLineBuffer = nullptr;
    if (buffer == nullptr) {
        Fail(kBeforeProlog);
        return;
    }
    if (!Decode(buffer, length)) {
        return;
    }
    ParseProlog();
    ParseElement();
    while (ParseMisc()) {
    }
    if (*m_pCur != 0 && m_reported == 0) {
        Fail(kAfterRoot);
    }
}

// A byte order mark is skipped; UTF-8 and ASCII are read as they are, Latin-1 in its UTF-8 form.
bool TXmlParser::Decode(char* buffer, size_t visible) {
    if (const char* wide = WideEncoding(buffer, visible)) {
        Fail((std::string(kUnsupportedEncoding) + "'" + wide + "'").c_str());
        return false;
    }
    if (std::strncmp(buffer, kByteOrderMark, 3) == 0) {
        m_pCur = buffer + 3;
    }
    const std::string declared = DeclaredEncoding(m_pCur);
    const std::string lowered = LowerAscii(declared);
    if (declared.empty() || IsOneOf(lowered, {"utf-8", "utf8", "us-ascii", "ascii"})) {
        return true;
    }
    if (!IsOneOf(lowered, {"iso-8859-1", "iso8859-1", "iso_8859-1", "iso_8859-1:1987", "latin1",
                           "latin-1", "l1", "iso-ir-100", "ibm819", "cp819", "csisolatin1"})) {
        Fail((std::string(kUnsupportedEncoding) + "'" + declared + "'").c_str());
        return false;
    }
    if (HasHighByte(m_pCur)) {
        m_decoded = std::make_shared<std::string>(Latin1ToUtf8(m_pCur));
        m_pStart = m_pCur = &(*m_decoded)[0];
    }
    return true;
}

void TXmlParser::Fail(const char* message) {
    ++m_reported;
    FatalError(message);
}

uint32_t TXmlParser::GetCurLine() {
    if (m_pCur == nullptr || m_pStart == nullptr || m_pCur < m_pStart) {
        return 1;
    }
    // A derived class may have pointed the scan at another buffer, or anywhere in this one.
    if (m_pLineBuffer != m_pStart || m_pLineMark < m_pStart) {
        m_pLineBuffer = m_pLineMark = m_pStart;
        m_lineAtMark = 1;
    }
    if (m_pCur >= m_pLineMark) {
        m_lineAtMark += CountLineFeeds(m_pLineMark, m_pCur);
    } else {
        m_lineAtMark -= CountLineFeeds(m_pCur, m_pLineMark);
    }
    m_pLineMark = m_pCur;
    return m_lineAtMark;
}

// Every line feed of the document in [from, to) is either in the buffer or hidden under the
// zero byte that ends an open element's name.
uint32_t TXmlParser::CountLineFeeds(const char* from, const char* to) const {
    uint32_t count = 0;
    for (const char* p = from; (p = static_cast<const char*>(std::memchr(p, '\n', size_t(to - p))));
         ++p) {
        ++count;
    }
    for (auto it = m_hiddenLineFeeds.rbegin(); it != m_hiddenLineFeeds.rend() && *it >= from;
         ++it) {
        count += *it < to;
    }
    return count;
}

char TXmlParser::GetChar() {
    const char c = *m_pCur;
    if (c != 0) {
        ++m_pCur;
    }
    return c;
}

char TXmlParser::PeekChar() {
    return *m_pCur;
}

void TXmlParser::UngetChar() {
    --m_pCur;
}

// The scans work on a local pointer: a store to m_pCur could alias the bytes read through it,
// which would make the compiler reload it after every step.
bool TXmlParser::SkipWhitespace() {
    char* p = m_pCur;
    while (Is(*p, kSpace)) {
        ++p;
    }
    const bool skipped = p != m_pCur;
    m_pCur = p;
    return skipped;
}

bool TXmlParser::ValidateName() {
    char* p = m_pCur;
    if (*p == 0) {
        Fail(kInvalidName);
        return false;
    }
    if (!Is(*p, kNameStart)) {
        m_pCur = p + 1;
        Fail(kInvalidName);
        return false;
    }
    ++p;
    while (Is(*p, kNameChar)) {
        ++p;
    }
    m_pCur = p;
    return true;
}

// Moves past the first occurrence of the terminator, or stays put when there is none.
bool TXmlParser::SkipPast(const char* terminator) {
    const char* found = std::strstr(m_pCur, terminator);
    if (found == nullptr) {
        return false;
    }
    m_pCur += (found - m_pCur) + std::strlen(terminator);
    return true;
}

// prolog: '<?' XMLDecl Misc* (doctypedecl Misc*)?  - or nothing before the root element
bool TXmlParser::ParseProlog() {
    char* start = m_pCur;
    if (GetChar() != '<') {
        Fail(kBeforeProlog);
        return false;
    }
    const bool declared = GetChar() == '?';
    m_pCur = start;
    if (!declared) {
        return false;
    }
    if (!ParseXMLDecl()) {
        Fail(kUnterminatedXmlDecl);
    }
    while (ParseMisc()) {
    }
    char* markup = m_pCur;
    const bool docType = GetChar() == '<' && GetChar() == '!';
    m_pCur = markup;
    if (docType) {
        ParseDocTypeDecl();
        while (ParseMisc()) {
        }
    }
    return true;
}

// XMLDecl: '<?' ... '?>'  - its content is not examined
bool TXmlParser::ParseXMLDecl() {
    return SkipPast("?>");
}

// Misc: S | Comment | PI | '<%' block  - one item at a time
bool TXmlParser::ParseMisc() {
    char* start = m_pCur;
    if (GetChar() != '<') {
        m_pCur = start;
        return SkipWhitespace() && *m_pCur != 0;
    }
    const char second = GetChar();
    const bool comment = second == '!' && GetChar() == '-';
    m_pCur = start;
    switch (second) {
    case '!':
        if (comment && !SkipComment()) {
            Fail(kUnterminatedComment);
            return false;
        }
        return comment;
    case '?':
        if (!ParseProcessingInstruction()) {
            Fail(kUnterminatedPI);
            return false;
        }
        return true;
    case '%':
        return CallParseJSSP();
    default:
        return false;
    }
}

// Comment: '<!--' ... '-->'
bool TXmlParser::SkipComment() {
    char* start = m_pCur;
    for (const char* expected = "<!--"; *expected != 0; ++expected) {
        if (GetChar() != *expected) {
            m_pCur = start;
            return false;
        }
    }
    return SkipPast("-->");
}

// PI: '<?' ... '?>'
bool TXmlParser::ParseProcessingInstruction() {
    if (!SkipPast("?>")) {
        return false;
    }
    processingInstruction(kNotExtracted, kNotExtracted);
    return true;
}

// doctypedecl: '<!DOCTYPE' ... '>'  - no internal subset
bool TXmlParser::ParseDocTypeDecl() {
    for (const char* expected = "<!DOCTYPE"; *expected != 0; ++expected) {
        if (GetChar() != *expected) {
            Fail(kInDocTypeDecl);
            return false;
        }
    }
    if (!SkipPast(">")) {
        Fail(kUnterminatedDocType);
        return false;
    }
    SkipWhitespace();
    return true;
}

// NotationDecl: ... '>'
bool TXmlParser::ParseNotationDecl() {
    if (!SkipPast(">")) {
        return false;
    }
    notationDecl(kNotExtracted, kNotExtracted, kNotExtracted);
    return true;
}

bool TXmlParser::ParseJSSP() {
    Fail(kJSSP);
    return false;
}

// A derived class's ParseJSSP may refuse a block without a word; the scan then reports it.
bool TXmlParser::CallParseJSSP() {
    const uint32_t reported = m_reported;
    if (ParseJSSP()) {
        return true;
    }
    if (m_reported == reported) {
        Fail(kJSSP);
    }
    return false;
}

// element: '<' Name (S Attribute)* S? ('/>' | '>' content ETag)
bool TXmlParser::ParseElement() {
    if (m_depth >= kMaxElementDepth) {
        Fail(kTooDeep);
        return false;
    }
    if (GetChar() != '<') {
        Fail(kBeforeElement);
        return false;
    }
    const char* name = m_pCur;
    if (!ValidateName()) {
        return false;
    }
    TOpenElement element(*this, name, m_pCur);
    TAttributeMap attributes = GetAttributeNValue();
    char close = GetChar();
    const bool empty = close == '/';
    if (empty) {
        close = GetChar();
    }
    if (close != '>') {
        Fail(kBeforeEndOfElement);
        return false;
    }
    element.TerminateName();
    bool valueRejected = false;
    const bool result = NotifyStart(name, attributes, &valueRejected);
    RecycleAttributes(attributes);
    if (empty) {
        EndElement(name);
        return result;
    }
    return ParseContent(name, element.NameLength(), result, valueRejected);
}

// Calls StartElement and reads back the pseudo-attribute it may have added to reject the tag.
bool TXmlParser::NotifyStart(const char* name, TAttributeMap& attributes, bool* valueRejected) {
    const size_t before = attributes.size();
    StartElement(name, attributes);
    bool result = true;
    if (attributes.size() == before + 1 && attributes.erase(kRejectFormat) == 1) {
        result = false;
    }
    if (attributes.size() == before + 1 && attributes.erase(kRejectValue) == 1) {
        *valueRejected = true;
    }
    return result;
}

// content: (CharData | Reference | PI | Comment | '<%' block | element)* ETag
// A child whose parse fails ends this element at once, without its end tag or EndElement.
bool TXmlParser::ParseContent(const char* name, size_t nameLength, bool result,
                              bool valueRejected) {
    for (;;) {
        ParseCharData();
        char* markup = m_pCur;
        if (GetChar() != '<') {
            Fail(kWhereElementExpected);
            return false;
        }
        const char second = GetChar();
        if (second == '/') {
            if (!ParseEndTag(name, nameLength)) {
                return false;
            }
            if (!valueRejected || std::strcmp(name, kValueElement) != 0) {
                EndElement(name);
            }
            return result;
        }
        m_pCur = markup;
        switch (second) {
        case '?':
            if (!ParseProcessingInstruction()) {
                Fail(kUnterminatedPI);
                return false;
            }
            break;
        case '!':
            if (!ParseMarkupInContent()) {
                return false;
            }
            break;
        case '%':
            if (!CallParseJSSP()) {
                return false;
            }
            break;
        default:
            if (!ParseElement()) {
                return result;
            }
        }
    }
}

// Comment | CDSect  - any other '<!' markup has no place in content
bool TXmlParser::ParseMarkupInContent() {
    if (std::strncmp(m_pCur, kCommentStart, 4) == 0) {
        if (!SkipComment()) {
            Fail(kUnterminatedComment);
            return false;
        }
        return true;
    }
    if (std::strncmp(m_pCur, kCDataStart, 9) == 0) {
        return ScanCData();
    }
    Fail(kMarkupInContent);
    return false;
}

// CDSect: '<![CDATA[' text ']]>'  - the text as written, but for its line ends
bool TXmlParser::ScanCData() {
    char* text = m_pCur + 9;
    char* end = std::strstr(text, kCDataEnd);
    if (end == nullptr) {
        m_pCur = text;
        Fail(kUnterminatedCData);
        return false;
    }
    DeliverText(text, end);
    m_pCur = end + 3;
    return true;
}

// Delivers [begin, end) a run at a time, with each line end as a line feed of its own.
void TXmlParser::DeliverText(char* begin, char* end) {
    while (begin != end) {
        char* cr = static_cast<char*>(std::memchr(begin, '\r', size_t(end - begin)));
        char* runEnd = cr == nullptr ? end : cr;
        if (runEnd != begin) {
            m_pCur = runEnd;
            TTerminator terminator(runEnd);
            characters(begin, uint32_t(runEnd - begin));
        }
        if (cr == nullptr) {
            return;
        }
        begin = cr + 1 != end && cr[1] == '\n' ? cr + 2 : cr + 1;
        m_pCur = begin;
        characters(kLineFeed, 1);
    }
}

// ETag: '</' Name S? '>'  - called after the '</'
// An end tag mostly repeats its start tag's name, which is valid: a match needs no other check.
bool TXmlParser::ParseEndTag(const char* name, size_t nameLength) {
    const char* endName = m_pCur;
    size_t same = 0;
    while (same < nameLength && endName[same] == name[same]) {
        ++same;
    }
    if (same == nameLength && !Is(endName[same], kNameChar)) {
        m_pCur += same;
    } else if (!ValidateName()) {
        return false;
    } else {
        Fail(kNamesDontMatch);
        return false;
    }
    SkipWhitespace();
    if (GetChar() != '>') {
        Fail(kBeforeEndOfElement);
        return false;
    }
    return true;
}

// Attribute: Name S? '=' S? ('"' value '"' | "'" value "'")  - names lowered, values raw
TAttributeMap TXmlParser::GetAttributeNValue() {
    // Most tags have no attributes: those leave the spare map where it is.
    if (!SkipWhitespace()) {
        return TAttributeMap();
    }
    TAttributeMap attributes = std::move(m_spareMap.m_map);
    m_spareMap.m_lent = true;
    for (;;) {
        const char next = PeekChar();
        if (next == '/' || next == '%' || next == '>') {
            return attributes;
        }
        char* name = m_pCur;
        if (!ValidateName()) {
            return attributes;
        }
        char* nameEnd = m_pCur;
        SkipWhitespace();
        if (GetChar() != '=') {
            Fail(kBeforeEquals);
            return attributes;
        }
        SkipWhitespace();
        const char quote = GetChar();
        if (quote != '\'' && quote != '"') {
            Fail(kAfterEquals);
            return attributes;
        }
        const char* value = m_pCur;
        bool carriageReturn = false;
        if (!ScanAttributeValue(quote, &carriageReturn)) {
            return attributes;
        }
        // Attribute names stay lowered in the buffer too.
        LowerAscii(name, size_t(nameEnd - name));
        const bool added = attributes.Insert(name, nameEnd, value, m_pCur - 1);
        if (!added || carriageReturn) {
            SettleAttribute(attributes, std::string(name, nameEnd), value, m_pCur - 1, added);
        }
        if (!SkipWhitespace()) {
            return attributes;
        }
    }
}

// An attribute just added gets its line ends as line feeds. One that was there already is
// refused unless it has the same value: servers write some attributes twice, in two spellings.
void TXmlParser::SettleAttribute(TAttributeMap& attributes, const std::string& name,
                                 const char* value, const char* valueEnd, bool added) {
    std::string& present = attributes.find(name)->second;
    if (added) {
        NormalizeLineEnds(present);
        return;
    }
    std::string repeated(value, valueEnd);
    NormalizeLineEnds(repeated);
    if (present != repeated) {
        Fail(kAttributeTwice);
    }
}

// Once StartElement has seen them, the attributes are not needed: their strings serve the next
// tags.
void TXmlParser::RecycleAttributes(TAttributeMap& attributes) {
    if (m_spareMap.m_lent) {
        attributes.clear();
        m_spareMap.m_map = std::move(attributes);
        m_spareMap.m_lent = false;
    }
}

// Moves past the closing quote; false, after the report, for a value that cannot be accepted.
bool TXmlParser::ScanAttributeValue(char quote, bool* carriageReturn) {
    for (;;) {
        char* p = SkipUntilAny(m_pCur, TStops<4>{{quote, '<', '&', '\r'}});
        const char c = *p;
        m_pCur = c == 0 ? p : p + 1;
        if (c == quote) {
            return true;
        }
        if (c == '\r') {
            *carriageReturn = true;
            continue;
        }
        if (c == 0) {
            Fail(kValueUnterminated);
            return false;
        }
        if (c == '<') {
            Fail(kLessThanInValue);
            return false;
        }
        // What is left is an '&'.
        if (!ScanValueReference()) {
            Fail(kAmpersandInValue);
            return false;
        }
    }
}

// A named reference stays in the value as written; anything else is given back and refused.
bool TXmlParser::ScanValueReference() {
    char* start = m_pCur;
    char text[11];
    size_t length = 0;
    while (length < 10) {
        const char c = GetChar();
        text[length++] = Lower(c);
        if (c == ';' || c == 0) {
            break;
        }
    }
    text[length] = 0;
    for (const char* entity : kValueEntities) {
        if (std::strcmp(text, entity) == 0) {
            return true;
        }
    }
    m_pCur = start;
    return false;
}

// CharData and Reference up to the next '<' or the end of the input.
bool TXmlParser::ParseCharData() {
    bool delivered = false;
    for (;;) {
        char* run = m_pCur;
        m_pCur = SkipUntilAny(run, TStops<3>{{'<', '&', '\r'}});
        if (m_pCur != run) {
            TTerminator terminator(m_pCur);
            characters(run, uint32_t(m_pCur - run));
            delivered = true;
        }
        if (*m_pCur == '\r') {
            m_pCur += m_pCur[1] == '\n' ? 2 : 1;
            characters(kLineFeed, 1);
            delivered = true;
            continue;
        }
        if (*m_pCur != '&') {
            return delivered;
        }
        ++m_pCur;
        delivered = true;
        const char first = Lower(GetChar());
        if (first == '#') {
            ScanNumericReference();
        } else {
            ScanNamedReference(first);
        }
    }
}

// EntityRef: '&' ('amp' | 'apos' | 'gt' | 'lt' | 'quot') ';'  - in any letter case
// The entities are sorted, so those that begin with the characters read so far stand together:
// a character that does not continue the match moves it on to the next of them ("amp", "apos").
void TXmlParser::ScanNamedReference(char first) {
    const TEntity* match =
        std::find_if(std::begin(kEntities), std::end(kEntities),
                     [first](const TEntity& entity) { return entity.m_name[0] == first; });
    for (size_t length = 1; match != std::end(kEntities) && match->m_name[length] != 0; ++length) {
        const char next = Lower(GetChar());
        while (match != std::end(kEntities) && match->m_name[length] != next) {
            const TEntity* following = match + 1;
            match = following != std::end(kEntities) &&
                            std::strncmp(following->m_name, match->m_name, length) == 0
                        ? following
                        : std::end(kEntities);
        }
    }
    if (match == std::end(kEntities)) {
        Fail(kUnknownEntity);
        return;
    }
    const char replacement[2] = {match->m_character, 0};
    characters(replacement, 1);
}

// CharRef: '&#' [0-9]+ ';' | '&#x' [0-9a-fA-F]+ ';'  - the character's UTF-8 bytes
void TXmlParser::ScanNumericReference() {
    uint32_t base = 10;
    if (Lower(PeekChar()) == 'x') {
        GetChar();
        base = 16;
    }
    uint32_t value = 0;
    for (uint32_t read = 0;; ++read) {
        const char c = GetChar();
        const int digit = DigitValue(c, base);
        if (digit >= 0) {
            // Past the last code point the value need only stay past it.
            value = std::min(value * base + uint32_t(digit), kLastCodePoint + 1);
        } else if (c == 0) {
            Fail(kReferenceUnterminated);
            return;
        } else if (c != ';') {
            Fail(kUnknownEntity);
        } else if (read == 0) {
            Fail(kInvalidHex);
        } else if (value == 0 || (value >= 0xD800 && value <= 0xDFFF) || value > kLastCodePoint) {
            Fail(kInvalidCharacterReference);
            return;
        } else {
            char character[5] = {};
            characters(character, uint32_t(EncodeUtf8(value, character)));
            return;
        }
    }
}

} // namespace NQRN20
