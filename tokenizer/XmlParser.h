// TXmlParser: a non-validating XML scanner that works in place over a zero-terminated buffer.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace NQRN20 {

// Attribute names (lowercased) to their values exactly as written between the quotes.
typedef std::map<std::string, std::string> TAttributeMap;

// Scans one document in a single forward pass and reports what it finds through the virtual
// callbacks. The buffer must be writable and end with a zero byte: names, values and text runs
// are handed out as zero-terminated strings by putting a zero byte after them for the length of
// the call. Errors go to FatalError with fixed messages; a derived class decides whether that
// throws. Where FatalError returns, the scan still ends cleanly and never reads past the zero.
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

    void Parse(char* buffer);
    // The 1-based line of the current position, counting the document's own line feeds.
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

    // Pieces of ParseElement and ParseCharData, kept apart so that each stays short.
    bool NotifyStart(const char* name, TAttributeMap& attributes, bool* valueRejected);
    bool ParseContent(const char* name, size_t nameLength, bool result, bool valueRejected);
    bool ParseEndTag(const char* name, size_t nameLength);
    bool ScanAttributeValue(char quote);
    bool ScanValueReference();
    void ScanNamedReference(char first);
    void ScanNumericReference();
    bool SkipPast(const char* terminator);
    uint32_t CountLineFeeds(const char* from, const char* to) const;
    TAttributeMap::node_type TakeAttributeNode();
    void RecycleAttributes(TAttributeMap& attributes);

    // Map nodes of start tags already reported, reused for later attributes so that neither a
    // node nor its strings are allocated again. A copy of the parser starts without any.
    class TSpareNodes {
    public:
        TSpareNodes() = default;
        TSpareNodes(const TSpareNodes&) {}
        TSpareNodes& operator=(const TSpareNodes&) { return *this; }

        std::vector<TAttributeMap::node_type> m_nodes;
    };

    uint32_t m_depth;
    // Line feeds that an open element's name terminator hides from GetCurLine's count.
    std::vector<const char*> m_hiddenLineFeeds;
    // GetCurLine counts on from its last answer when the position has only moved forward.
    const char* m_pLineMark;
    uint32_t m_lineAtMark;
    TSpareNodes m_spareNodes;
};

} // namespace NQRN20
