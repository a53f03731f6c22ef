// Tests of MOF files: includes, gzip, and files that cannot be read.
#include "mof/MofCompiler.h"
#include "mof/MofSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

struct TLoaded {
    boost::shared_ptr<ICIMNamespace> m_space = TMemoryNamespace::Create();
    TLoadReport m_report;
};

TLoaded LoadMof(const std::string& path) {
    TLogRecorder quiet;
    TLoaded loaded;
    TMofLoader::PopulateFromMOFFile(loaded.m_space, path, loaded.m_report);
    return loaded;
}

TEST(TMofLoader, IncludesFilesRelativeToTheIncludingFile) {
    const TTempDir dir;
    std::filesystem::create_directory(dir.Path("sub"));
    dir.Write("sub/a.mof", "#pragma include (\"b.mof\")\nclass T_A : T_B { };");
    dir.Write("sub/b.mof", "class T_B { };");
    dir.WriteGzip("top.mof", "#pragma include (\"sub/a.mof\")");
    const TLoaded loaded = LoadMof(dir.Path("top.mof"));
    EXPECT_EQ("", DescribeLog(loaded.m_report));
    EXPECT_EQ(2u, loaded.m_report.m_tally.m_classes);
}

// Each error names the included file it is in, and costs nothing of the including one.
TEST(TMofLoader, ReportsCyclesMissingFilesAndErrorsInIncludedFiles) {
    const TTempDir dir;
    const std::string a = dir.Write("a.mof", "#pragma include (\"b.mof\")\nclass T_A { };");
    const std::string b = dir.Write("b.mof", "#pragma include (\"a.mof\")\n"
                                             "#pragma include (\"none.mof\")\nclass T_B : X { };");
    const TLoaded loaded = LoadMof(a);
    EXPECT_EQ(b + ":1:18: include cycle: " + a + "\n" + b + ":2:18: cannot read included file " +
                  dir.Path("none.mof") + ": No such file or directory\n" + b +
                  ":3:13: unknown superclass X of class T_B\n",
              DescribeLog(loaded.m_report));
    EXPECT_EQ(1u, loaded.m_report.m_tally.m_classes);
}

// A chain longer than the limit stops at the limit, with the rest of each file still read.
TEST(TMofLoader, StopsIncludesNestedTooDeep) {
    const TTempDir dir;
    const uint32_t files = TMofCompiler::kMaxIncludeDepth + 2;
    for (uint32_t i = 0; i < files; ++i) {
        dir.Write(std::to_string(i) + ".mof", "#pragma include (\"" + std::to_string(i + 1) +
                                                  ".mof\")\nclass T_" + std::to_string(i) +
                                                  " { };");
    }
    const TLoaded loaded = LoadMof(dir.Path("0.mof"));
    ASSERT_EQ(1u, loaded.m_report.m_log.size());
    EXPECT_NE(std::string::npos, loaded.m_report.m_log[0].m_message.find("includes nest too deep"));
    EXPECT_EQ(TMofCompiler::kMaxIncludeDepth, loaded.m_report.m_tally.m_classes);
}

TEST(TMofLoader, ThrowsForAFileThatCannotBeRead) {
    TLoadReport report;
    EXPECT_THROW(
        TMofLoader::PopulateFromMOFFile(TMemoryNamespace::Create(), "/nonexistent/a.mof", report),
        TQRNException);
    EXPECT_FALSE(report.Complete());
}

} // namespace
} // namespace NQRN20
