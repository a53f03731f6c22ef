// Reading a whole document file into one zero-terminated buffer, plain or gzip.
#include "populator/DocumentReader.h"

#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"

#include <sys/mman.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <vector>

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

const char kNoMemory[] = "not enough memory for the document";
const char kNotDeflate[] = "gzip data compressed by a method other than deflate";
const char kNothingInflated[] = "no data could be inflated";
const size_t kStreamChunk = size_t(1) << 16;
// A stream is read, and inflated, up to one byte past the largest document read whole: enough to
// tell that it is larger.
const size_t kStreamLimit = size_t(TCIMXMLParser::kMaxSpecificationDocumentSize) + 1;

[[noreturn]] void Fail(uint32_t status, const std::string& reason) {
    throw TDocumentReadError(status, reason);
}

// The system's words for the last failed call.
[[noreturn]] void FailWithErrno(uint32_t status) {
    Fail(status, std::strerror(errno != 0 ? errno : EIO));
}

struct TInflateEnd {
    void operator()(z_stream* stream) const { inflateEnd(stream); }
};

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

// One block for the document, the zero byte after it and the tokenizer's read-ahead.
boost::shared_array<char> Allocate(uint32_t length) {
    const size_t size = size_t(length) + 1 + TXmlParser::kReadAhead;
    char* block = new (std::nothrow) char[size];
    if (block == nullptr) {
        Fail(kQRNStatusNoMemory, kNoMemory);
    }
    AdviseHugePages(block, size);
    return boost::shared_array<char>(block);
}

// Zeroes the block from the end of the document read into it of at most that length.
void Terminate(const boost::shared_array<char>& block, size_t read, uint32_t length) {
    std::memset(&block[read], 0, size_t(length) + 1 + TXmlParser::kReadAhead - read);
}

TDocumentBuffer ReadPlain(const std::string& path, uint64_t size) {
    const uint32_t length = DocumentReadLength(size);
    boost::shared_array<char> buffer = Allocate(length);
    const std::unique_ptr<std::FILE, TFileCloser> file(std::fopen(path.c_str(), "r"));
    if (!file) {
        FailWithErrno(kQRNStatusFileError);
    }
    const size_t read = std::fread(buffer.get(), 1, length, file.get());
    if (std::ferror(file.get())) {
        FailWithErrno(kQRNStatusFileError);
    }
    Terminate(buffer, read, length);
    return {buffer, read, length < size};
}

// What a document's first bytes say it holds, whatever its file is called. A document too short
// to tell is plain; one that has the magic but another method is no gzip the reader knows.
EContent ContentOf(const unsigned char* head, size_t size) {
    if (size < 2 || head[0] != kGzipMagic[0] || head[1] != kGzipMagic[1]) {
        return kPlainContent;
    }
    return size < 3 || head[2] == kDeflate ? kGzipContent : kNotGzipContent;
}

EContent ContentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    unsigned char head[3] = {};
    stream.read(reinterpret_cast<char*>(head), sizeof head);
    return ContentOf(head, size_t(stream.gcount()));
}

// The uncompressed length that the trailer records (modulo 2^32).
uint32_t ReadGzipLength(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        FailWithErrno(kQRNStatusFileError);
    }
    unsigned char trailer[4];
    if (!stream.seekg(-4, std::ios::end) ||
        !stream.read(reinterpret_cast<char*>(trailer), sizeof trailer)) {
        Fail(kQRNStatusFileError, "the gzip data ends before its trailer");
    }
    return uint32_t(trailer[0]) | uint32_t(trailer[1]) << 8 | uint32_t(trailer[2]) << 16 |
           uint32_t(trailer[3]) << 24;
}

TDocumentBuffer ReadGzip(const std::string& path) {
    const uint32_t whole = ReadGzipLength(path);
    const uint32_t length = DocumentReadLength(whole);
    boost::shared_array<char> buffer = Allocate(length);
    const std::unique_ptr<gzFile_s, TGzipCloser> file(gzopen(path.c_str(), "rb"));
    if (!file) {
        FailWithErrno(kQRNStatusFileError);
    }
    const int read = gzread(file.get(), buffer.get(), length);
    if (read < 1) {
        int code = Z_OK;
        const char* message = gzerror(file.get(), &code);
        Fail(kQRNStatusGzipRead, code != Z_OK && *message != 0 ? message : kNothingInflated);
    }
    Terminate(buffer, size_t(read), length);
    return {buffer, size_t(read), length < whole};
}

// A whole stream, up to the limit.
std::vector<char> ReadStream(const std::string& path) {
    const std::unique_ptr<std::FILE, TFileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        FailWithErrno(kQRNStatusFileError);
    }
    std::vector<char> bytes;
    while (bytes.size() < kStreamLimit && !std::feof(file.get())) {
        const size_t used = bytes.size();
        bytes.resize(std::min(kStreamLimit, used + kStreamChunk));
        bytes.resize(used + std::fread(&bytes[used], 1, bytes.size() - used, file.get()));
        if (std::ferror(file.get())) {
            FailWithErrno(kQRNStatusFileError);
        }
    }
    return bytes;
}

// Inflates every gzip member of the bytes, up to the limit.
// Data cut short gives what came before the cut, as gzread does for a file.
std::vector<char> Inflate(std::vector<char>& packed) {
    z_stream stream{};
    if (inflateInit2(&stream, 16 + MAX_WBITS) != Z_OK) {
        Fail(kQRNStatusNoMemory, kNoMemory);
    }
    const std::unique_ptr<z_stream, TInflateEnd> end(&stream);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = uInt(packed.size());
    std::vector<char> bytes;
    while (bytes.size() < kStreamLimit) {
        const size_t used = bytes.size();
        bytes.resize(std::min(kStreamLimit, std::max(2 * used, kStreamChunk)));
        stream.next_out = reinterpret_cast<Bytef*>(&bytes[used]);
        stream.avail_out = uInt(bytes.size() - used);
        const int result = inflate(&stream, Z_NO_FLUSH);
        bytes.resize(bytes.size() - stream.avail_out);
        if (result == Z_STREAM_END && stream.avail_in > 0) {
            inflateReset(&stream);
        } else if (result != Z_OK) {
            break;
        }
    }
    if (bytes.empty()) {
        Fail(kQRNStatusGzipRead, stream.msg != nullptr ? stream.msg : kNothingInflated);
    }
    return bytes;
}

// The bytes of a stream as a document buffer, cut as a file of that size would be.
TDocumentBuffer ToDocument(const std::vector<char>& bytes) {
    const uint32_t length = DocumentReadLength(bytes.size());
    boost::shared_array<char> buffer = Allocate(length);
    std::copy(bytes.begin(), bytes.begin() + length, buffer.get());
    Terminate(buffer, length, length);
    return {buffer, length, length < bytes.size()};
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
        Fail(kQRNStatusNotGzip, kNotDeflate);
    default:
        return ReadPlain(path, size);
    }
}

TDocumentBuffer ReadAnyDocument(const std::string& path, uint64_t& fileBytes) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (error) {
        Fail(kQRNStatusFileError, error.message());
    }
    if (std::filesystem::is_directory(status)) {
        Fail(kQRNStatusFileError, std::strerror(EISDIR));
    }
    if (std::filesystem::is_regular_file(status)) {
        fileBytes = std::filesystem::file_size(path, error);
        if (error) {
            Fail(kQRNStatusFileError, error.message());
        }
        return ReadDocument(path, fileBytes);
    }
    std::vector<char> bytes = ReadStream(path);
    fileBytes = bytes.size();
    switch (ContentOf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size())) {
    case kGzipContent:
        return ToDocument(Inflate(bytes));
    case kNotGzipContent:
        Fail(kQRNStatusNotGzip, kNotDeflate);
    default:
        return ToDocument(bytes);
    }
}

TDocumentBuffer ReadReportedDocument(const std::string& path, TLoadReport& report) {
    TDocumentBuffer document;
    try {
        document = ReadAnyDocument(path, report.m_fileBytes);
    } catch (const TDocumentReadError& error) {
        report.m_status = error.GetStatus();
        report.m_failure = error.GetReason();
        throw;
    }
    report.m_documentBytes = document.m_length;
    if (document.m_partial) {
        report.m_failure = "the document is too large: only its first " +
                           std::to_string(document.m_length) + " bytes were read";
    }
    return document;
}

} // namespace NQRN20
