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

// Where the library's lines go. Calls to the installed logger are serialised: lines logged on
// several threads at once reach it one at a time, under one lock held only for the call, so a
// logger need not be thread-safe. It may log, or install another logger, from inside Log.
class TRootObject {
public:
    // Never null: the calling thread's logger where one is installed, else a gate to the
    // installed logger. The default logger writes each text as one line to stderr.
    static ILogger* GetCoreLogger();
    // The caller keeps the logger alive while it is installed; nullptr restores the default.
    // Returns once no call to the logger it replaces is in progress on another thread.
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
