// The reference parsers: memchr, expat, libxml2's SAX2 parser, pugixml in place, zlib's gzread.
#include "Anchors.h"

#include <expat.h>
#include <libxml/parser.h>
#include <pugixml.hpp>
#include <zlib.h>

#include <climits>
#include <cstring>

namespace NBench {

namespace {

struct TCounts {
    uint64_t m_starts = 0;
    uint64_t m_ends = 0;
    uint64_t m_textBytes = 0;
    uint64_t Total() const { return m_starts + m_ends + m_textBytes; }
};

void XMLCALL ExpatStart(void* user, const XML_Char*, const XML_Char**) {
    ++static_cast<TCounts*>(user)->m_starts;
}
void XMLCALL ExpatEnd(void* user, const XML_Char*) {
    ++static_cast<TCounts*>(user)->m_ends;
}
void XMLCALL ExpatText(void* user, const XML_Char*, int length) {
    static_cast<TCounts*>(user)->m_textBytes += uint64_t(length);
}

void SaxStart(void* user, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**, int,
              int, const xmlChar**) {
    ++static_cast<TCounts*>(user)->m_starts;
}
void SaxEnd(void* user, const xmlChar*, const xmlChar*, const xmlChar*) {
    ++static_cast<TCounts*>(user)->m_ends;
}
void SaxText(void* user, const xmlChar*, int length) {
    static_cast<TCounts*>(user)->m_textBytes += uint64_t(length);
}

} // namespace

uint64_t CountLessThan(const char* buffer, size_t size) {
    uint64_t count = 0;
    const char* end = buffer + size;
    for (const char* p = buffer;
         (p = static_cast<const char*>(std::memchr(p, '<', size_t(end - p)))); ++p) {
        ++count;
    }
    return count;
}

uint64_t ParseExpat(const char* buffer, size_t size) {
    TCounts counts;
    const XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &counts);
    XML_SetElementHandler(parser, ExpatStart, ExpatEnd);
    XML_SetCharacterDataHandler(parser, ExpatText);
    const bool ok = XML_Parse(parser, buffer, int(size), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return ok ? counts.Total() : 0;
}

uint64_t ParseLibxml2Sax(const char* buffer, size_t size) {
    TCounts counts;
    xmlSAXHandler handler;
    std::memset(&handler, 0, sizeof handler);
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = SaxStart;
    handler.endElementNs = SaxEnd;
    handler.characters = SaxText;
    const bool ok = xmlSAXUserParseMemory(&handler, &counts, buffer, int(size)) == 0;
    return ok ? counts.Total() : 0;
}

uint64_t ParsePugixmlInPlace(char* buffer, size_t size) {
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer_inplace(buffer, size);
    return result ? uint64_t(document.first_child().type()) + size : 0;
}

uint64_t ReadGzip(const std::string& path, char* buffer, size_t size) {
    const gzFile file = gzopen(path.c_str(), "rb");
    if (file == nullptr) {
        return 0;
    }
    const int read = gzread(file, buffer, unsigned(size < INT_MAX ? size : INT_MAX));
    gzclose(file);
    return read > 0 ? uint64_t(read) : 0;
}

void ReleaseAnchors() {
    xmlCleanupParser();
}

} // namespace NBench
