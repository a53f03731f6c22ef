// TXmlParser: a non-validating XML scanner that works in place over a zero-terminated buffer.
#pragma once

#include "tokenizer/AttributeMap.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace NQRN20 {

// Scans one document in a single forward pass and reports what it finds through the virtual
// callbacks. The buffer must be writable and end with a zero byte: names, values and text runs
// are handed out as zero-terminated strings by putting a zero byte after them for the length of
// the call. Errors go to FatalError with fixed messages; a derived class decides whether that
// throws. Where FatalError returns, the scan still ends cleanly and never reads past the zero.
// Text reaches the callbacks as XML defines it: UTF-8, line ends as line feeds, references
// replaced; a Latin-1 document is converted to UTF-8 first, other encodings are refused.
class TXmlParser {
public:
    // Real CIM-XML nests below 30; the cap keeps the recursive scan's stack use bounded.
    static const uint32_t kMaxElementDepth = 256;

    TXmlParser();
    TXmlParser(const TXmlParser& other);
    TXmlParser& operator=(const TXmlParser& other);
    virtual ~TXmlParser();

    virtual void StartElement(const char* name, TAttributeMap& attributes) = 0;
    virtual void EndElement(const char* name) = 0;
    virtual void processingInstruction(const char* target, const char* data) = 0;
    virtual void characters(const char* text, uint32_t length) = 0;
    virtual void notationDecl(const char* name, const char* publicId, const char* systemId) = 0;
    virtual void FatalError(const char* message) = 0;

    // Text is scanned sixteen bytes at a time, so the scan may read up to this many bytes past
    // the zero, though never into another page: harmless, but memory checkers such as valgrind
    // report it unless the buffer goes on that far, zero-filled. The loaders' buffers do.
    static const size_t kReadAhead = 15;

    void Parse(char* buffer);
    // The same, for a buffer whose length is known: its first bytes are looked at even where they
    // are zero, so that a UTF-16 or UTF-32 document is refused rather than taken for empty.
    void Parse(char* buffer, size_t length);
    // The 1-based line of the current position, counting the document's own line feeds from
    // m_pStart, whatever a derived class did to m_pStart and m_pCur since the last call.
    uint32_t GetCurLine();

protected:
    char GetChar();
    char PeekChar();
    void UngetChar();
    bool SkipWhitespace();
    bool ValidateName();

    virtual bool ParseJSSP();
    virtual bool ParseCharData();
    virtual TAttributeMap GetAttributeNValue();

    char* m_pStart;
    char* m_pCur;

private:
    bool ParseProlog();
    bool ParseXMLDecl();
    bool ParseMisc();
    bool SkipComment();
    bool ParseProcessingInstruction();
    bool ParseDocTypeDecl();
    bool ParseNotationDecl();
    bool ParseElement();

    struct TOpenElement;

    // Every error the scan finds goes through here, so that the end of the document knows
    // whether one was reported. Kept out of line, off the scanning paths.
    [[gnu::cold, gnu::noinline]] void Fail(const char* message);
    // Points the scan at the document, past a byte order mark, or at its UTF-8 form; false,
    // after the report, for an encoding the scan cannot read.
    bool Decode(char* buffer, size_t visible);

    // Pieces of ParseElement and ParseCharData, kept apart so that each stays short.
    bool NotifyStart(const char* name, TAttributeMap& attributes, bool* valueRejected);
    bool ParseContent(const char* name, size_t nameLength, bool result, bool valueRejected);
    bool ParseEndTag(const char* name, size_t nameLength);
    bool ParseMarkupInContent();
    bool CallParseJSSP();
    bool ScanAttributeValue(char quote, bool* carriageReturn);
    bool ScanValueReference();
    void ScanNamedReference(char first);
    void ScanNumericReference();
    bool ScanCData();
    void DeliverText(char* begin, char* end);
    bool SkipPast(const char* terminator);
    uint32_t CountLineFeeds(const char* from, const char* to) const;
    void RecycleAttributes(TAttributeMap& attributes);
    void SettleAttribute(TAttributeMap& attributes, const std::string& name, const char* value,
                         const char* valueEnd, bool added);

    // The attribute map of the last start tag that had attributes, cleared, so that the next
    // tag's attributes fill its strings instead of allocating their own. A copy of the parser
    // starts without one.
    class TSpareMap {
    public:
        TSpareMap() = default;
        TSpareMap(const TSpareMap&) {}
        TSpareMap& operator=(const TSpareMap&) { return *this; }

        TAttributeMap m_map;
        // The map is out, with the tag being reported.
        bool m_lent = false;
    };

    uint32_t m_depth;
    // Line feeds that an open element's name terminator hides from GetCurLine's count.
    std::vector<const char*> m_hiddenLineFeeds;
    // GetCurLine counts on from its last answer, where that was in the same buffer.
    const char* m_pLineBuffer;
    const char* m_pLineMark;
    uint32_t m_lineAtMark;
    // The UTF-8 form of a Latin-1 document, shared with copies of the parser that scan it.
    std::shared_ptr<std::string> m_decoded;
    // The errors reported during this parse.
    uint32_t m_reported;
    TSpareMap m_spareMap;
};

} // namespace NQRN20
