// TMofLoader: the entry point that compiles a MOF file, and the files it includes, into a
// namespace.
#include "mof/MofLoader.h"

#include "mof/MofCompiler.h"
#include "mof/MofLexer.h"
#include "populator/DocumentReader.h"

#include <zlib.h>

#include <cctype>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace NQRN20 {

namespace {

// Enough of a file to see past the blank lines it may open with.
const size_t kHeadLength = size_t(1) << 16;

struct TGzipCloser {
    void operator()(gzFile file) const { gzclose(file); }
};

} // namespace

void TMofLoader::PopulateFromMOFFile(boost::shared_ptr<ICIMNamespace> ns, std::string path,
                                     TLoadReport& report) {
    report = TLoadReport();
    report.m_path = path;
    const TLoadTimer timer(report.m_seconds);
    const TDocumentBuffer document = ReadReportedDocument(path, report);
    TMofCompiler compiler(std::move(ns), report);
    compiler.Compile(document.m_bytes.get(), document.m_length, path);
}

void TMofLoader::PopulateFromMOFText(boost::shared_ptr<ICIMNamespace> ns, const char* text,
                                     size_t length, const std::string& path, TLoadReport& report) {
    report = TLoadReport();
    report.m_path = path;
    report.m_fileBytes = report.m_documentBytes = length;
    const TLoadTimer timer(report.m_seconds);
    TMofCompiler compiler(std::move(ns), report);
    compiler.Compile(text, length, path);
}

// XML cannot start with a comment of MOF's kinds, so text that does is MOF even where the
// comment runs past what was read; an XML declaration or element starts with '<', after a
// byte order mark where one is written.
bool TMofLoader::IsMof(const char* text, size_t length) {
    const size_t mark = sizeof TMofLexer::kByteOrderMark - 1;
    const bool marked = length >= mark && std::memcmp(text, TMofLexer::kByteOrderMark, mark) == 0;
    const char* at = text + (marked ? mark : 0);
    const char* const end = text + length;
    while (at < end && std::isspace(static_cast<unsigned char>(*at))) {
        ++at;
    }
    return at < end && *at != '<';
}

// A pipe read here would lose what was read to the load after, so only files are looked into.
bool TMofLoader::IsMofFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return false;
    }
    const std::unique_ptr<gzFile_s, TGzipCloser> file(gzopen(path.c_str(), "rb"));
    if (!file) {
        return false;
    }
    std::vector<char> head(kHeadLength);
    const int read = gzread(file.get(), head.data(), unsigned(head.size()));
    return read > 0 && IsMof(head.data(), size_t(read));
}

} // namespace NQRN20
