// TMofLoader: the entry point that compiles a MOF file, and the files it includes, into a
// namespace.
#pragma once

#include "core/Core.h"
#include "populator/LoadReport.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>

namespace NQRN20 {

class TMofLoader {
public:
    // Reads the whole file (gzip when its first bytes say so) and compiles it into the
    // namespace, filling the report, which starts afresh: the sizes, the time, what was
    // committed, and every error and warning with its file, line and column. Errors in the text
    // each cost their declaration and are not thrown; a file that cannot be read throws
    // TQRNException, with the reason in the report.
    static void PopulateFromMOFFile(boost::shared_ptr<ICIMNamespace> ns, std::string path,
                                    TLoadReport& report);

    // The same for a document already read, such as standard input, of the length given and
    // followed by a zero byte; the path names it and places what it includes.
    static void PopulateFromMOFText(boost::shared_ptr<ICIMNamespace> ns, const char* text,
                                    size_t length, const std::string& path, TLoadReport& report);

    // Whether a document is MOF rather than CIM-XML: its first character that is not blank is
    // not '<'. A comment starts with '/', so a MOF file that opens with one is told by that.
    static bool IsMof(const char* text, size_t length);
    // The same for the start of a regular file, inflated where it is gzip. Anything else, such
    // as a pipe, and a file that cannot be read are not MOF: their reader reports why.
    static bool IsMofFile(const std::string& path);
};

} // namespace NQRN20
