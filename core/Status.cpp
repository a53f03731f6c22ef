// Texts of the status codes.
#include "core/Status.h"

namespace NQRN20 {

const char* TQRNStatusCode::TranslateStatusCode() const {
    switch (m_code) {
    case kQRNStatusOK:
        return "success";
    case kQRNStatusNoMemory:
        return "out of memory";
    case kQRNStatusInvalidProperty:
        return "invalid property or value";
    case kQRNStatusParseError:
        return "parse error";
    case kQRNStatusFileError:
        return "file error";
    case kQRNStatusNotFound:
        return "not found";
    case kQRNStatusAlreadyExists:
        return "already exists";
    case kQRNStatusInvalidDateTime:
        return "invalid date-time";
    case kQRNStatusNotGzip:
        return "not a gzip file";
    case kQRNStatusGzipRead:
        return "gzip read error";
    case kQRNStatusInvalidFormat:
        return "invalid format";
    case kQRNStatusInvalidValue:
        return "invalid value text";
    case kQRNStatusInvalidType:
        return "invalid type";
    case kQRNStatusTypeMismatch:
        return "type mismatch";
    case kQRNStatusInvalidArgument:
        return "invalid argument";
    case kQRNStatusReadOnly:
        return "object is committed and read-only";
    case kQRNStatusNotCommitted:
        return "object is not committed";
    default:
        return "unknown status";
    }
}

} // namespace NQRN20
