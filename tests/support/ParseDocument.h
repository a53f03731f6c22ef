// Parses a CIM-XML document held in a string into a namespace, for tests of the parse states.
#pragma once

#include "cimxml/CIMXMLParser.h"
#include "support/LogRecorder.h"

#include <array>
#include <string>
#include <vector>

namespace NQRN20 {

struct TParseResult {
    std::string m_log; // every line logged, "level text", one a line
    uint32_t m_status; // of the exception that left Parse, 0 when none did
    std::vector<boost::shared_ptr<ICIMClass>> m_classes;
    std::vector<boost::shared_ptr<ICIMInstance>> m_instances;
};

// How the parser's log lines for line 1 begin.
const std::string kLine = "3 CIM-XML Parser line 1:";

enum EMode { kDefaultMode, kQX518Mode };

inline TParseResult ParseDocument(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                                  const std::string& document, EMode mode = kDefaultMode) {
    TLogRecorder log;
    TCIMXMLParser parser(cimNamespace);
    if (mode == kQX518Mode) {
        parser.SetQX518Mode();
    }
    std::vector<char> buffer(document.begin(), document.end());
    buffer.push_back(0);
    uint32_t status = 0;
    try {
        parser.Parse(buffer.data());
    } catch (const TQRNException& error) {
        status = error.GetStatus();
    }
    return {log.Text(), status, parser.GetClassesCollected(), parser.GetInstancesCollected()};
}

// How many qualifier declarations, classes and instances the namespace holds, in that order.
inline std::array<size_t, 3> CountObjects(ICIMNamespace& cimNamespace) {
    std::vector<boost::shared_ptr<ICIMQualifierDecl>> declarations;
    std::vector<boost::shared_ptr<ICIMClass>> classes;
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    cimNamespace.EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(declarations), {});
    cimNamespace.EnumClasses(TAddToVectorCallback<ICIMClass>(classes), {});
    cimNamespace.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), {});
    return {declarations.size(), classes.size(), instances.size()};
}

// Wraps objects in the document and declaration group every schema or instance file has.
inline std::string InDeclGroup(const std::string& content) {
    return "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><DECLARATION><DECLGROUP>" + content +
           "</DECLGROUP></DECLARATION></CIM>";
}

} // namespace NQRN20
