// Tests of the core services: logger installation, file sizes, the parser flag, assertions.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <boost/shared_ptr.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
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

TEST(BoostAssertionHandler, LogsAndAbortsWhenAnEmptyHandleIsUsed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The empty name gives an empty handle.
    const boost::shared_ptr<ICIMClass> empty = TMemoryNamespace::Create()->GetClass("", {});
    EXPECT_DEATH(empty->GetName({}), "Assertion failed: px != 0");
}

} // namespace
} // namespace NQRN20
