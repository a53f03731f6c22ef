// Reading a whole document file into one zero-terminated buffer, plain or gzip.
#pragma once

#include <boost/shared_array.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace NQRN20 {

// Documents above this size are read only up to it.
constexpr uint32_t kPartialDocumentLength = 104857600;

// How many bytes of a document of the given size are read.
uint32_t DocumentReadLength(uint64_t size);

// A document read whole: its bytes, then a zero byte.
struct TDocumentBuffer {
    boost::shared_array<char> m_bytes;
    size_t m_length;
};

// Reads the document at the path into a new buffer with a zero byte after the data. A file that
// starts as gzip does is inflated, whatever its name, its length taken from the gzip trailer;
// otherwise the size given is the file's. Throws TQRNException: 4 no memory, 11 file error,
// 29 gzip magic without deflate, 30 nothing inflated.
TDocumentBuffer ReadDocument(const std::string& path, uint64_t size);

} // namespace NQRN20
