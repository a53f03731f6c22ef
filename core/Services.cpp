// The core logger, the file-size service and the parser flag.
#include "core/Services.h"

#include "core/Status.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>
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
// Recursive, so that a logger may log or install another logger from inside Log.
std::recursive_mutex g_logMutex;
ILogger* g_coreLogger = nullptr; // guarded by g_logMutex
thread_local ILogger* t_threadLogger = nullptr;
std::atomic<bool> g_qrnParser{false};

// Passes each line to the installed logger under the lock.
class TSerialLogger : public ILogger {
public:
    void Log(uint32_t level, const std::string& text) override {
        const std::lock_guard<std::recursive_mutex> lock(g_logMutex);
        (g_coreLogger != nullptr ? g_coreLogger : &g_stderrLogger)->Log(level, text);
    }
};

TSerialLogger g_serialLogger;

} // namespace

ILogger::~ILogger() = default;

ILogger* TRootObject::GetCoreLogger() {
    return t_threadLogger != nullptr ? t_threadLogger : &g_serialLogger;
}

void TRootObject::SetCoreLogger(ILogger* log) {
    const std::lock_guard<std::recursive_mutex> lock(g_logMutex);
    g_coreLogger = log;
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
