// The core logger, the file-size service and the parser flag.
#include "core/Services.h"

#include "core/Status.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace NQRN20 {

namespace {

class TStderrLogger : public ILogger {
public:
    void Log(uint32_t, const std::string& text) override {
        // One write per line, so lines from several threads do not interleave.
        const std::string line = text + '\n';
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
};

TStderrLogger g_stderrLogger;
std::atomic<ILogger*> g_coreLogger{nullptr};
thread_local ILogger* t_threadLogger = nullptr;
std::atomic<bool> g_qrnParser{false};

} // namespace

ILogger::~ILogger() = default;

ILogger* TRootObject::GetCoreLogger() {
    if (t_threadLogger != nullptr) {
        return t_threadLogger;
    }
    ILogger* log = g_coreLogger.load(std::memory_order_acquire);
    return log ? log : &g_stderrLogger;
}

void TRootObject::SetCoreLogger(ILogger* log) {
    g_coreLogger.store(log, std::memory_order_release);
}

ILogger* TRootObject::SetThreadLogger(ILogger* log) {
    ILogger* const replaced = t_threadLogger;
    t_threadLogger = log;
    return replaced;
}

uint64_t TOSSpecific::GetFileSize(std::string path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (error || !std::filesystem::is_regular_file(status)) {
        throw TQRNException(kQRNStatusFileError);
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) {
        throw TQRNException(kQRNStatusFileError);
    }
    return size;
}

void TOSSpecific::setQRNParser(bool on) {
    g_qrnParser.store(on);
}

bool TOSSpecific::getQRNParser() {
    return g_qrnParser.load();
}

} // namespace NQRN20
