// Reading a whole document file into one zero-terminated buffer, plain or gzip.
#pragma once

#include "core/Status.h"
#include "populator/LoadReport.h"

#include <boost/shared_array.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace NQRN20 {

// Documents above this size are read only up to it.
constexpr uint32_t kPartialDocumentLength = 104857600;

// How many bytes of a document of the given size are read.
uint32_t DocumentReadLength(uint64_t size);

// A document read whole, or its first part where it is too large: its bytes, then a zero byte.
struct TDocumentBuffer {
    boost::shared_array<char> m_bytes;
    size_t m_length;
    bool m_partial;
};

// A failure to read a document, with the reason in words: the system's for a file that cannot
// be opened or read, zlib's for gzip data it refuses.
class TDocumentReadError : public TQRNException {
public:
    TDocumentReadError(uint32_t status, std::string reason)
        : TQRNException(status), m_reason(std::move(reason)) {}
    const std::string& GetReason() const { return m_reason; }

private:
    std::string m_reason;
};

// Reads the regular file at the path into a new buffer with a zero byte after the data. A file
// that starts as gzip does is inflated, whatever its name, its length taken from the gzip
// trailer; otherwise the size given is the file's. Throws TDocumentReadError: 4 no memory,
// 11 file error, 29 gzip magic without deflate, 30 nothing inflated.
TDocumentBuffer ReadDocument(const std::string& path, uint64_t size);

// Reads any file that can be read, pipes and terminals included, whose size need not be known
// in advance; gzip is told and inflated as ReadDocument does, every member of it. Gives the
// number of bytes the file held. Throws as ReadDocument does, and 11 for a directory.
TDocumentBuffer ReadAnyDocument(const std::string& path, uint64_t& fileBytes);

// ReadAnyDocument for a load with a report: the sizes go into it, and why the file could not be
// read, or was read only in part, as its failure. Throws as ReadAnyDocument does.
TDocumentBuffer ReadReportedDocument(const std::string& path, TLoadReport& report);

} // namespace NQRN20
