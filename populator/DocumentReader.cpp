// Reading a whole document file into one zero-terminated buffer, plain or gzip.
#include "populator/DocumentReader.h"

#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"

#include <sys/mman.h>
#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <new>

namespace NQRN20 {

namespace {

// A gzip member starts with the magic and the number of its only compression method, deflate.
const unsigned char kGzipMagic[2] = {0x1F, 0x8B};
const unsigned char kDeflate = 8;

enum EContent { kPlainContent, kGzipContent, kNotGzipContent };

struct TFileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
struct TGzipCloser {
    void operator()(gzFile file) const { gzclose(file); }
};

[[noreturn]] void Fail(uint32_t status) {
    throw TQRNException(status);
}

// A fresh process pays for every new page of the buffer when the read first touches it; where
// the system grants huge pages on request, asking for them turns each 512 of those page faults
// into one. Only the whole huge pages inside the block are advised; the block stays the caller's.
void AdviseHugePages(char* block, size_t size) {
#ifdef MADV_HUGEPAGE
    const uintptr_t kHugePage = uintptr_t(2) << 20;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(block) + kHugePage - 1) & ~(kHugePage - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(block) + size) & ~(kHugePage - 1);
    if (begin < end) {
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
#else
    (void)block;
    (void)size;
#endif
}

// One block for the document and the zero byte after it.
boost::shared_array<char> Allocate(uint32_t length) {
    char* block = new (std::nothrow) char[size_t(length) + 1];
    if (block == nullptr) {
        Fail(kQRNStatusNoMemory);
    }
    AdviseHugePages(block, size_t(length) + 1);
    return boost::shared_array<char>(block);
}

TDocumentBuffer ReadPlain(const std::string& path, uint64_t size) {
    const uint32_t length = DocumentReadLength(size);
    boost::shared_array<char> buffer = Allocate(length);
    const std::unique_ptr<std::FILE, TFileCloser> file(std::fopen(path.c_str(), "r"));
    if (!file) {
        Fail(kQRNStatusFileError);
    }
    const size_t read = std::fread(buffer.get(), 1, length, file.get());
    if (std::ferror(file.get())) {
        Fail(kQRNStatusFileError);
    }
    buffer[read] = 0;
    return {buffer, read};
}

// What a file's first bytes say it holds, whatever it is called. A file too short to tell is
// plain; one that has the magic but another method is no gzip the reader knows.
EContent ContentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    unsigned char head[3] = {};
    stream.read(reinterpret_cast<char*>(head), sizeof head);
    const std::streamsize read = stream.gcount();
    if (read < 2 || head[0] != kGzipMagic[0] || head[1] != kGzipMagic[1]) {
        return kPlainContent;
    }
    return read < 3 || head[2] == kDeflate ? kGzipContent : kNotGzipContent;
}

// The uncompressed length that the trailer records (modulo 2^32).
uint32_t ReadGzipLength(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        Fail(kQRNStatusFileError);
    }
    unsigned char trailer[4];
    if (!stream.seekg(-4, std::ios::end) ||
        !stream.read(reinterpret_cast<char*>(trailer), sizeof trailer)) {
        Fail(kQRNStatusFileError);
    }
    return uint32_t(trailer[0]) | uint32_t(trailer[1]) << 8 | uint32_t(trailer[2]) << 16 |
           uint32_t(trailer[3]) << 24;
}

TDocumentBuffer ReadGzip(const std::string& path) {
    const uint32_t length = DocumentReadLength(ReadGzipLength(path));
    boost::shared_array<char> buffer = Allocate(length);
    const std::unique_ptr<gzFile_s, TGzipCloser> file(gzopen(path.c_str(), "rb"));
    if (!file) {
        Fail(kQRNStatusFileError);
    }
    const int read = gzread(file.get(), buffer.get(), length);
    if (read < 1) {
        Fail(kQRNStatusGzipRead);
    }
    buffer[read] = 0;
    return {buffer, size_t(read)};
}

} // namespace

uint32_t DocumentReadLength(uint64_t size) {
    return size <= TCIMXMLParser::kMaxSpecificationDocumentSize ? uint32_t(size)
                                                                : kPartialDocumentLength;
}

TDocumentBuffer ReadDocument(const std::string& path, uint64_t size) {
    switch (ContentOf(path)) {
    case kGzipContent:
        return ReadGzip(path);
    case kNotGzipContent:
        Fail(kQRNStatusNotGzip);
    default:
        return ReadPlain(path, size);
    }
}

} // namespace NQRN20
