// Tests of the core services: logger installation, file sizes, the parser flag.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace NQRN20 {
namespace {

using test::StatusOf;

class TRecordingLogger : public ILogger {
public:
    void Log(uint32_t level, const std::string& text) override {
        m_lines.push_back(std::to_string(level) + " " + text);
    }
    std::vector<std::string> m_lines;
};

TEST(TRootObject, InstalledLoggerReceivesLinesUntilTheDefaultIsRestored) {
    ILogger* const standard = TRootObject::GetCoreLogger();
    ASSERT_NE(nullptr, standard);
    TRecordingLogger recorder;
    TRootObject::SetCoreLogger(&recorder);
    TRootObject::GetCoreLogger()->Log(3, "first");
    TRootObject::SetCoreLogger(nullptr);
    EXPECT_EQ(standard, TRootObject::GetCoreLogger());
    EXPECT_EQ(std::vector<std::string>{"3 first"}, recorder.m_lines);
}

TEST(TRootObject, ThreadLoggerHidesTheProcessWideOneOnItsOwnThreadOnly) {
    TRecordingLogger process;
    TRecordingLogger thread;
    TRootObject::SetCoreLogger(&process);
    EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(&thread));
    TRootObject::GetCoreLogger()->Log(3, "here");
    std::thread([] { TRootObject::GetCoreLogger()->Log(3, "elsewhere"); }).join();
    EXPECT_EQ(&thread, TRootObject::SetThreadLogger(nullptr));
    TRootObject::GetCoreLogger()->Log(0, "after");
    TRootObject::SetCoreLogger(nullptr);
    EXPECT_EQ(std::vector<std::string>{"3 here"}, thread.m_lines);
    EXPECT_EQ((std::vector<std::string>{"3 elsewhere", "0 after"}), process.m_lines);
}

TEST(TOSSpecific, GetFileSizeGivesRegularFileSizesAndRefusesEverythingElse) {
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("qrncore-size-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    std::ofstream(dir / "five") << "12345";
    std::ofstream(dir / "empty");
    ASSERT_EQ(0, ::mkfifo((dir / "fifo").c_str(), 0600));

    EXPECT_EQ(5u, TOSSpecific::GetFileSize((dir / "five").string()));
    EXPECT_EQ(0u, TOSSpecific::GetFileSize((dir / "empty").string()));
    for (const std::string& path :
         {dir.string(), (dir / "fifo").string(), (dir / "missing").string(), std::string(""),
          std::string("/dev/null")}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(kQRNStatusFileError, StatusOf([&] { TOSSpecific::GetFileSize(path); }));
    }
    std::filesystem::remove_all(dir);
}

} // namespace
} // namespace NQRN20
