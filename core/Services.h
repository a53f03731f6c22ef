// Process-wide services of the core: the log sink and the operating-system helpers.
#pragma once

#include <cstdint>
#include <string>

namespace NQRN20 {

class ILogger {
public:
    virtual ~ILogger();
    virtual void Log(uint32_t level, const std::string& text) = 0;
};

class TRootObject {
public:
    // Never null. The default logger writes each text as one line to stderr.
    static ILogger* GetCoreLogger();
    // The caller keeps the logger alive while it is installed; nullptr restores the default.
    static void SetCoreLogger(ILogger* log);
    // Installs a logger that GetCoreLogger gives on the calling thread only, ahead of the
    // process-wide one, so that a load can hear its own lines while other threads log on;
    // nullptr removes it. Returns the one it replaces.
    static ILogger* SetThreadLogger(ILogger* log);
};

class TOSSpecific {
public:
    // Throws TQRNException(kQRNStatusFileError) when the path cannot be examined or is not a
    // regular file (a directory, FIFO or device has no meaningful size to read).
    static uint64_t GetFileSize(std::string path);
    static void setQRNParser(bool on);
    static bool getQRNParser();
};

} // namespace NQRN20
