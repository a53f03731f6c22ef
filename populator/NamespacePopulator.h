// TNamespacePopulator: the entry points that load a CIM-XML file into a namespace.
#pragma once

#include "core/Core.h"

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
};

} // namespace NQRN20
