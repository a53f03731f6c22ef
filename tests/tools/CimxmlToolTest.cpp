// Tests of the cimxml command, run as a process on real files.
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace NQRN20 {
namespace {

const std::string kExamples = XMLPARSER_EXAMPLES_DIR;
const std::string kSchema = kExamples + "/schema.xml";
const std::string kInstances = kExamples + "/instances.xml";

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

struct TRun {
    int m_exitCode;
    std::string m_out;
    std::string m_err;
};

TRun RunTool(const std::string& arguments) {
    TTempDir dir;
    const std::string command = std::string(CIMXML_TOOL) + " " + arguments + " >" +
                                dir.Path("out") + " 2>" + dir.Path("err") + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(dir.Path("out")),
            ReadText(dir.Path("err"))};
}

// The summary's lines, with the timings, which vary, cut out.
std::string WithoutTimings(std::string summary) {
    for (size_t at = summary.find(" bytes, "); at != std::string::npos;
         at = summary.find(" bytes, ", at + 1)) {
        const size_t end = summary.find(" MB/s, ", at);
        summary.erase(at + 7, end + 6 - (at + 7));
    }
    return summary;
}

TEST(CimxmlTool, SummarisesEachFileAndWhatTheNamespaceHolds) {
    const TRun run = RunTool(kSchema + " --instances " + kInstances);
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(kSchema + ": 7679 bytes, 5 classes, 0 error lines\n" + kInstances +
                  ": 3359 bytes, 5 instances, 0 error lines\n"
                  "namespace root/cimv2: 11 qualifier declarations, 5 classes, 5 instances\n",
              WithoutTimings(run.m_out));
}

TEST(CimxmlTool, WritesTheExamplesAsTheReviewedMof) {
    const TRun run = RunTool("--mof " + kSchema + " --instances " + kInstances);
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(ReadText(std::string(XMLPARSER_TESTS_DIR) + "/tools/examples.mof"), run.m_out);
}

// What --xml writes loads back into the same content: the same MOF, byte for byte.
TEST(CimxmlTool, WritesTheExamplesAsCimXmlThatLoadsBackTheSame) {
    TTempDir dir;
    const TRun xml = RunTool("--xml " + kSchema + " --instances " + kInstances);
    EXPECT_EQ(0, xml.m_exitCode);
    const std::string written = dir.Write("written.xml", xml.m_out);
    const TRun mof = RunTool("--mof --strict " + written);
    EXPECT_EQ(0, mof.m_exitCode);
    EXPECT_EQ("", mof.m_err);
    EXPECT_EQ(ReadText(std::string(XMLPARSER_TESTS_DIR) + "/tools/examples.mof"), mof.m_out);
}

TEST(CimxmlTool, PrefixesEachErrorLineWithItsFileAndExitsAsItsOptionsSay) {
    TTempDir dir;
    const std::string bad = dir.Write("bad.xml", "<CIM>\n<DECLARATION><FOO/></DECLARATION></CIM>");
    const std::string broken = dir.Write("broken.xml", "<CIM><DECLARATION></CIM>");
    const std::string packed = dir.WriteGzip("schema.xml.gz", ReadText(kSchema));
    const std::string missing = dir.Path("missing.xml");
    const struct {
        std::string m_arguments;
        int m_exitCode;
        std::string m_err;
    } cases[] = {
        {bad, 0, bad + ": CIM-XML Parser line 2:Unexpected element foo\n"},
        {"--strict " + bad, 1, bad + ": CIM-XML Parser line 2:Unexpected element foo\n"},
        {"--strict " + packed, 0, ""},
        {broken, 1,
         broken + ": CIM-XML Parser line 1:Start and end element names don't match\n" + broken +
             ": Previous error was while parsing file '" + broken + "'\n" + broken +
             ": failed with status 9 (parse error)\n"},
        {missing, 1, missing + ": failed with status 11 (file error)\n"},
        {"--instances " + missing, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_arguments);
        const TRun run = RunTool(c.m_arguments);
        EXPECT_EQ(c.m_exitCode, run.m_exitCode);
        EXPECT_EQ(c.m_err, run.m_err);
    }
}

TEST(CimxmlTool, AnswersHelpAndVersionAndRefusesAWrongCommandLine) {
    const struct {
        const char* m_arguments;
        int m_exitCode;
        const char* m_outStart;
        const char* m_errStart;
    } cases[] = {
        {"--help", 0, "usage: cimxml", ""},
        {"--version", 0, "cimxml ", ""},
        {"", 2, "", "usage: cimxml"},
        {"--frobnicate x.xml", 2, "", "cimxml: unknown option --frobnicate"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_arguments);
        const TRun run = RunTool(c.m_arguments);
        EXPECT_EQ(c.m_exitCode, run.m_exitCode);
        EXPECT_EQ(0u, run.m_out.rfind(c.m_outStart, 0)) << run.m_out;
        EXPECT_EQ(0u, run.m_err.rfind(c.m_errStart, 0)) << run.m_err;
    }
}

size_t CountLinesStartingWith(const std::string& text, const std::string& start) {
    size_t count = 0;
    for (size_t at = 0; at != std::string::npos;
         at = text.find('\n', at), at += at != std::string::npos) {
        count += text.compare(at, start.size(), start) == 0;
    }
    return count;
}

TEST(CimxmlTool, WritesOneDeclarationPerClassAndInstanceOfTheDmtfSchema) {
    const std::string dmtf = std::string(XMLPARSER_SHARED_DIR) + "/corpus/dmtf/";
    if (!std::ifstream(dmtf + "cim_schema.xml").is_open()) {
        GTEST_SKIP() << dmtf << " is absent";
    }
    const TRun run = RunTool("--mof --strict " + dmtf + "cim_schema.xml.gz --instances " + dmtf +
                             "instances.xml");
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(70u, CountLinesStartingWith(run.m_out, "Qualifier "));
    EXPECT_EQ(1631u, CountLinesStartingWith(run.m_out, "class "));
    EXPECT_EQ(3924u, CountLinesStartingWith(run.m_out, "instance of "));
}

} // namespace
} // namespace NQRN20
