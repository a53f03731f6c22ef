// The two loading entry points: read the file, parse it, return what was collected.
#include "populator/NamespacePopulator.h"

#include "cimxml/CIMXMLParser.h"
#include "populator/DocumentReader.h"

namespace NQRN20 {

namespace {

const uint32_t kFileLogLevel = 0;

// Parses the whole buffer; a failed parse is logged with the file's path, and its status passed
// on in a new exception.
void ParseDocument(TCIMXMLParser& parser, const TDocumentBuffer& document,
                   const std::string& path) {
    try {
        parser.Parse(document.m_bytes.get(), document.m_length);
    } catch (const TQRNException& error) {
        TRootObject::GetCoreLogger()->Log(kFileLogLevel,
                                          "Previous error was while parsing file '" + path + "'");
        throw TQRNException(error.GetStatus());
    }
}

} // namespace

std::vector<boost::shared_ptr<ICIMClass>>
TNamespacePopulator::PopulateFromXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path) {
    const uint64_t size = TOSSpecific::GetFileSize(path);
    const TDocumentBuffer document = ReadDocument(path, size);
    TCIMXMLParser parser(ns);
    ParseDocument(parser, document, path);
    return parser.GetClassesCollected();
}

std::vector<boost::shared_ptr<ICIMInstance>>
TNamespacePopulator::PopulateFromRegXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path) {
    uint64_t size = 0;
    try {
        size = TOSSpecific::GetFileSize(path);
    } catch (const TQRNException&) {
        return {};
    }
    const TDocumentBuffer document = ReadDocument(path, size);
    TCIMXMLParser parser(ns);
    ParseDocument(parser, document, path);
    return parser.GetInstancesCollected();
}

} // namespace NQRN20
