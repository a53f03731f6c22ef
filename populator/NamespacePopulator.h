// TNamespacePopulator: the entry points that load a CIM-XML file into a namespace.
#pragma once

#include "core/Core.h"
#include "populator/LoadReport.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace NQRN20 {

// Each call reads the whole file (gzip when its first bytes say so), parses it into
// the namespace and returns what the document defined, in document order. Errors in the
// document are logged with their line; a syntax error or a file error reaches the caller as
// TQRNException, after a log line naming the file when the parse failed.
class TNamespacePopulator {
public:
    // A schema file: qualifier declarations and classes. Returns the classes.
    static std::vector<boost::shared_ptr<ICIMClass>>
    PopulateFromXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path);

    // An instance file. Returns the instances; a path whose size cannot be had gives an empty
    // result quietly.
    static std::vector<boost::shared_ptr<ICIMInstance>>
    PopulateFromRegXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path);

    // The same two loads, each also filling the report, which starts afresh: the sizes, the
    // time, what the document defined, every line logged on this thread meanwhile (passed on
    // to the logger as well) and, for a load that failed, why. They also read files whose size
    // cannot be had in advance, such as pipes, and so report a missing file as any other.
    static std::vector<boost::shared_ptr<ICIMClass>>
    PopulateFromXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path, TLoadReport& report);
    static std::vector<boost::shared_ptr<ICIMInstance>>
    PopulateFromRegXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path,
                           TLoadReport& report);
};

} // namespace NQRN20
