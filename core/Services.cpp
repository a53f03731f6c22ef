// The core logger, the file-size service, the parser flag and the Boost assertion handlers.
#include "core/Services.h"

#include "core/Status.h"

#include <boost/assert.hpp>

#include <atomic>
#include <cstdio>
#include <cstdlib>
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

// A failed check in a shared handle means an empty handle was dereferenced or a broken invariant
// was found; going on would be undefined behaviour and Boost declares those operations noexcept,
// so an exception could not leave them anyway. The handlers therefore log and abort.
namespace boost {

void assertion_failed_msg(char const* expr, char const* msg, char const* function, char const* file,
                          long line) {
    NQRN20::TRootObject::GetCoreLogger()->Log(
        0, std::string("Assertion failed: ") + expr + (msg ? std::string(" (") + msg + ")" : "") +
               " in " + function + " at " + file + ":" + std::to_string(line));
    std::abort();
}

void assertion_failed(char const* expr, char const* function, char const* file, long line) {
    assertion_failed_msg(expr, nullptr, function, file, line);
}

} // namespace boost
