// Fuzzes the file loaders on real files. The first byte chooses how the rest is written: plain,
// as gzip, as gzip whose size trailer is forged from the next four bytes, or as two gzip
// members; whether the class or the instance loader reads it; and whether it fills a report,
// reading the file as it is or through a pipe.
#include "fuzz/FuzzSupport.h"
#include "populator/NamespacePopulator.h"

#include <zlib.h>

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using namespace NQRN20;

enum EShape { kPlain, kGzip, kForgedTrailer, kTwoMembers };

std::string Gzip(const uint8_t* data, size_t size) {
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, uLong(size)) + 32, '\0');
    stream.next_in = const_cast<Bytef*>(data);
    stream.avail_in = uInt(size);
    stream.next_out = reinterpret_cast<Bytef*>(&packed[0]);
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string Shape(EShape shape, const uint8_t* data, size_t size) {
    switch (shape) {
    case kPlain:
        return std::string(reinterpret_cast<const char*>(data), size);
    case kGzip:
        return Gzip(data, size);
    case kForgedTrailer: {
        if (size < 4) {
            return Gzip(data, size);
        }
        std::string packed = Gzip(data + 4, size - 4);
        packed.replace(packed.size() - 4, 4, reinterpret_cast<const char*>(data), 4);
        return packed;
    }
    case kTwoMembers:
        return Gzip(data, size / 2) + Gzip(data + size / 2, size - size / 2);
    }
    return std::string();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const EShape shape = EShape(data[0] & 3);
    const bool instances = (data[0] & 4) != 0;
    const std::string content = Shape(shape, data + 1, size - 1);
    // The loaders tell gzip by its first bytes, so every shape goes in a file of the same name.
    char path[] = "/tmp/xmlparser-fuzz-XXXXXX";
    const int fd = mkstemp(path);
    if (fd < 0 || write(fd, content.data(), content.size()) != ssize_t(content.size())) {
        std::abort();
    }
    close(fd);
    TQuietLogger logger;
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const bool report = (data[0] & 8) != 0;
    int pipeEnds[2] = {-1, -1};
    std::thread writer;
    std::string loaded = path;
    if (report && (data[0] & 16) != 0) {
        // A write to a pipe the loader closed must fail, not end the process.
        signal(SIGPIPE, SIG_IGN);
        if (pipe(pipeEnds) != 0) {
            std::abort();
        }
        loaded = "/dev/fd/" + std::to_string(pipeEnds[0]);
        writer = std::thread([&content, &pipeEnds] {
            for (size_t done = 0; done < content.size();) {
                const ssize_t wrote =
                    write(pipeEnds[1], content.data() + done, content.size() - done);
                if (wrote <= 0) {
                    break;
                }
                done += size_t(wrote);
            }
            close(pipeEnds[1]);
        });
    }
    TLoadReport loadReport;
    try {
        if (instances) {
            report ? TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, loaded, loadReport)
                   : TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, loaded);
        } else {
            report ? TNamespacePopulator::PopulateFromXMLFile(cimNamespace, loaded, loadReport)
                   : TNamespacePopulator::PopulateFromXMLFile(cimNamespace, loaded);
        }
    } catch (const TQRNException&) {
    }
    if (writer.joinable()) {
        // The loader stops reading at its limit; the rest of the pipe is no one's.
        close(pipeEnds[0]);
        writer.join();
    }
    unlink(path);
    return 0;
}
