// Tests of the cimxml command, run as a process on real files.
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace NQRN20 {
namespace {

const std::string kExamples = XMLPARSER_EXAMPLES_DIR;
const std::string kSchema = kExamples + "/schema.xml";
const std::string kInstances = kExamples + "/instances.xml";
const std::string kReviewedMof = std::string(XMLPARSER_TESTS_DIR) + "/tools/examples.mof";

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

struct TRun {
    int m_exitCode;
    std::string m_out;
    std::string m_err;
};

// Runs a bash script in which $CIMXML is the tool; standard input is empty unless the script
// says otherwise.
TRun RunScript(const std::string& script) {
    TTempDir dir;
    dir.Write("script", "CIMXML=" + std::string(CIMXML_TOOL) + "\n" + script + "\n");
    const std::string command = "bash " + dir.Path("script") + " >" + dir.Path("out") + " 2>" +
                                dir.Path("err") + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(dir.Path("out")),
            ReadText(dir.Path("err"))};
}

TRun RunTool(const std::string& arguments) {
    return RunScript("$CIMXML " + arguments);
}

// The summary's lines, with the timings, which vary, cut out.
std::string WithoutTimings(std::string summary) {
    for (size_t at = summary.find(" bytes, "); at != std::string::npos;
         at = summary.find(" bytes, ", at + 1)) {
        summary.erase(at + 7, summary.find(" MB/s, ", at) + 6 - (at + 7));
    }
    return summary;
}

TEST(CimxmlTool, SummarisesEachFileAndWhatTheNamespaceHolds) {
    TTempDir dir;
    const std::string packed = dir.WriteGzip("again.xml.gz", ReadText(kSchema));
    const TRun run =
        RunTool(kSchema + " " + packed + " --instances " + kInstances + " " + kInstances);
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(kSchema +
                  ": 7679 bytes, added 11 qualifier declarations, 5 classes, 0 instances; "
                  "0 error lines\n" +
                  packed +
                  ": 7679 bytes, added 0 qualifier declarations, 0 classes, 0 instances; "
                  "11 duplicate qualifier declarations ignored: Abstract, Association, "
                  "Description, ...; 5 duplicate classes ignored: EX_ManagedElement, EX_System, "
                  "EX_Disk, ...; 0 error lines\n" +
                  kInstances +
                  ": 3359 bytes, added 0 qualifier declarations, 0 classes, 5 instances; "
                  "0 error lines\n" +
                  kInstances +
                  ": 3359 bytes, added 0 qualifier declarations, 0 classes, 0 instances; "
                  "5 duplicate instances ignored: EX_System.Name=\"host01.example.net\", "
                  "EX_Disk.DeviceID=\"disk0\", EX_SolidStateDisk.DeviceID=\"nvme0\", ...; "
                  "0 error lines\n"
                  "namespace root/cimv2: 11 qualifier declarations, 5 classes, 5 instances\n",
              WithoutTimings(run.m_out));
}

TEST(CimxmlTool, WritesTheExamplesAsTheReviewedMof) {
    const TRun run = RunTool("--mof " + kSchema + " --instances " + kInstances);
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(ReadText(kReviewedMof), run.m_out);
}

// MOF is told by its first character, anywhere a file is given, gzip or not; its errors carry
// a column and the included file they are in.
TEST(CimxmlTool, ReadsMofFilesWhereverAFileIsGiven) {
    TTempDir dir;
    const TRun original = RunTool("--xml " + kSchema + " --instances " + kInstances);
    const TRun fromMof = RunTool("--xml " + kReviewedMof);
    EXPECT_EQ("", fromMof.m_err);
    EXPECT_EQ(original.m_out, fromMof.m_out);
    const std::string ext =
        dir.WriteGzip("ext.gz", "// an extension\ninstance of EX_System { Name = \"h2\"; };\n");
    const TRun mixed = RunTool(kSchema + " --instances " + ext + " " + kInstances);
    EXPECT_EQ(0, mixed.m_exitCode);
    EXPECT_NE(std::string::npos, mixed.m_out.find("5 classes, 6 instances"));
    dir.Write("inner.mof", "class X : Nowhere { };");
    const std::string outer =
        dir.Write("outer.mof", "#pragma include (\"inner.mof\")\n  class { };");
    const TRun bad = RunTool(outer);
    EXPECT_EQ(1, bad.m_exitCode);
    EXPECT_EQ(dir.Path("inner.mof") + ":1:11: error: unknown superclass Nowhere of class X\n" +
                  outer + ":2:9: error: expected a class name but found '{'\n",
              bad.m_err);
}

// Exit 0 only for a clean run, 1 for a failure, 2 for a wrong command line (diff: 0 the same,
// 1 different, 2 trouble); every failure says what and where on standard error. What diff,
// tree and show print, on the examples and on a changed copy.
TEST(CimxmlTool, ExitsWithZeroOnlyWhenEverythingLoadedAndWasWrittenAndPrintsWhatItIsAsked) {
    TTempDir dir;
    const std::string bad = dir.Write("bad.xml", "<CIM>\n<DECLARATION><FOO/></DECLARATION></CIM>");
    const std::string broken = dir.Write("broken.xml", "<CIM><DECLARATION></CIM>");
    const std::string unknown = dir.Write(
        "unknown.xml", "<CIM><DECLARATION><DECLGROUP><VALUE.OBJECT>\n<CLASS NAME=\"A\">\n"
                       "<QUALIFIER NAME=\"Abstract\" TYPE=\"boolean\"><VALUE>true</VALUE>"
                       "</QUALIFIER></CLASS></VALUE.OBJECT></DECLGROUP></DECLARATION></CIM>");
    const std::string upper = dir.WriteGzip("upper.xml.GZ", ReadText(kSchema));
    const std::string plain = dir.Write("plain.gz.xml", ReadText(kSchema));
    std::filesystem::create_directory(dir.Path("dir.gz.d"));
    const std::string inDir = dir.Write("dir.gz.d/s.xml", ReadText(kSchema));
    const std::string missing = dir.Path("missing.xml");
    const std::string cannotWrite = "cimxml: error writing standard output: ";
    const std::string tryHelp = "Try 'cimxml --help' for more information.\n";
    // The examples with a property added and a method's description changed, for diff.
    std::string changed = ReadText(kSchema);
    changed.replace(changed.find("; returns 0 on success"), 22, "");
    changed.insert(changed.find("<PROPERTY NAME=\"Removable\""),
                   "<PROPERTY NAME=\"Hotplug\" TYPE=\"boolean\"/>");
    const std::string other = dir.Write("changed.xml", changed);
    const std::string noClass = "cimxml: error: no class or qualifier declaration EX_Nope\n";
    const struct {
        std::string m_script;
        int m_exitCode;
        std::string m_err;
        std::string m_out = "*"; // exactly this, or, ending in *, starting with what precedes it
    } cases[] = {
        {"$CIMXML " + kSchema, 0, ""},
        {"$CIMXML " + upper + " && $CIMXML " + plain + " && $CIMXML " + inDir, 0, ""},
        {"$CIMXML - <" + upper, 0, ""},
        {"$CIMXML " + kSchema + " --instances <(cat " + kInstances + ")", 0, ""},
        {"$CIMXML --strict " + kSchema, 0, ""},
        {"$CIMXML " + missing, 1, missing + ": cannot read: No such file or directory\n"},
        {"$CIMXML " + kSchema + " --instances " + missing, 1,
         missing + ": cannot read: No such file or directory\n"},
        {"$CIMXML " + kSchema + " --instances " + dir.Path("dir.gz.d"), 1,
         dir.Path("dir.gz.d") + ": cannot read: Is a directory\n"},
        {"$CIMXML " + bad, 1, bad + ":2: error: Unexpected element FOO\n"},
        {"$CIMXML " + unknown, 1, unknown + ":3: error: Couldn't find qualifier Abstract\n"},
        {"$CIMXML " + broken, 1,
         broken + ":1: error: Start and end element names don't match\n" + broken +
             ": error: parsing stopped at line 1\n"},
        {"$CIMXML --xml " + kSchema + " >/dev/full", 1, cannotWrite + "No space left on device\n"},
        {"$CIMXML --mof " + kSchema + " >&-", 1, cannotWrite + "Bad file descriptor\n"},
        // The reader is gone before the tool has its input, let alone writes.
        {"trap '' PIPE; { sleep 0.3; cat " + kSchema +
             "; } | $CIMXML --mof - | (exec 0<&-); "
             "exit ${PIPESTATUS[1]}",
         1, cannotWrite + "Broken pipe\n"},
        // Standard input and pipes are read whole, then loaded as the MOF or CIM-XML they hold.
        {"gzip -c " + kReviewedMof + " | $CIMXML --mof - | cmp - " + kReviewedMof, 0, ""},
        {"$CIMXML " + kSchema + " --instances <(cat " + kReviewedMof + ")", 0, ""},
        {"echo 'class X : Nowhere { };' | $CIMXML -", 1,
         "<stdin>:1:11: error: unknown superclass Nowhere of class X\n"},
        {"$CIMXML --help", 0, "", "usage: cimxml*"},
        {"$CIMXML -h", 0, "", "usage: cimxml*"},
        {"$CIMXML --version", 0, "", "cimxml *"},
        {"$CIMXML", 2, "cimxml: no input files\n" + tryHelp},
        {"$CIMXML --", 2, "cimxml: no input files\n" + tryHelp},
        {"$CIMXML --frobnicate x.xml", 2, "cimxml: unknown option '--frobnicate'\n" + tryHelp},
        {"$CIMXML --mof --xml x.xml", 2,
         "cimxml: --mof and --xml cannot be used together\n" + tryHelp},
        {"$CIMXML x.xml --instances", 2,
         "cimxml: --instances needs at least one file after it\n" + tryHelp},
        {"$CIMXML - -", 2, "cimxml: standard input can be read only once\n" + tryHelp},
        {"$CIMXML --format yaml x.xml", 2,
         "cimxml: --format is text or json, not 'yaml'\n" + tryHelp},
        {"$CIMXML diff x.xml", 2, "cimxml: diff compares two files: OLD and NEW\n" + tryHelp},
        {"$CIMXML diff --old x.xml y.xml z.xml", 2,
         "cimxml: give diff's files either as OLD NEW or after --old and --new\n" + tryHelp},
        {"$CIMXML tree A B x.xml", 2, "cimxml: tree takes one class\n" + tryHelp},
        {"$CIMXML show x.xml", 2,
         "cimxml: show needs the name of a class or qualifier declaration\n" + tryHelp},
        {"$CIMXML tree --mof x.xml", 2,
         "cimxml: --mof and --xml are only for the plain form\n" + tryHelp},
        {"$CIMXML diff " + kSchema + " " + kSchema, 0, "", ""},
        {"$CIMXML diff " + kSchema + " " + other, 1, "",
         "Class EX_Disk:\n  properties added: Hotplug\n  method Eject:\n    qualifier "
         "Description: \"Ejects the media; returns 0 on success.\" -> \"Ejects the media.\"\n"},
        {"$CIMXML diff --format json --old " + kSchema + " --new " + kSchema, 0, "", "{}\n"},
        {"$CIMXML diff " + kSchema + " " + bad, 2, bad + ":2: error: Unexpected element FOO\n", ""},
        {"$CIMXML diff " + kSchema + " " + kSchema + " --instances " + kInstances + " " + missing,
         2, missing + ": cannot read: No such file or directory\n", ""},
        {"$CIMXML tree " + kSchema, 0, "",
         "EX_ManagedElement\n  EX_Disk\n    EX_SolidStateDisk\n  EX_System\nEX_SystemDisk\n"},
        {"$CIMXML tree --format json EX_DISK " + kSchema, 0, "",
         "{\n  \"EX_Disk\": {\n    \"EX_SolidStateDisk\": {}\n  }\n}\n"},
        {"$CIMXML tree EX_Nope " + kSchema, 1, "cimxml: error: no class EX_Nope in the namespace\n",
         ""},
        {"$CIMXML show key EX_Nope " + kSchema, 1, noClass,
         "Qualifier Key : boolean = false,\n    Scope(property, reference),\n"
         "    Flavor(DisableOverride, ToSubclass);\n\n"},
        {"$CIMXML show --format json EX_SystemDisk " + kSchema, 0, "",
         "{\n  \"name\": \"EX_SystemDisk\",\n  \"qualifiers\": {\n    \"Association\": true\n"
         "  },\n  \"properties\": {\n    \"System\": {\n      \"type\": \"reference\",\n      "
         "\"reference_class\": \"EX_System\",\n      \"qualifiers\": {\n        \"Key\": true\n"
         "      }\n    },\n    \"Disk\": {\n      \"type\": \"reference\",\n      "
         "\"reference_class\": \"EX_Disk\",\n      \"qualifiers\": {\n        \"Key\": true\n"
         "      }\n    }\n  }\n}\n"},
        {"$CIMXML show --format json Key EX_Nope " + kSchema, 1, noClass,
         "[\n  {\n    \"name\": \"Key\",\n    \"type\": \"boolean\",\n    \"default\": false,\n"
         "    \"scope\": [\n      \"property\",\n      \"reference\"\n    ],\n    \"flavors\": [\n"
         "      \"DisableOverride\",\n      \"ToSubclass\"\n    ]\n  }\n]\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_script);
        const TRun run = RunScript(c.m_script);
        EXPECT_EQ(c.m_exitCode, run.m_exitCode);
        EXPECT_EQ(c.m_err, run.m_err);
        if (c.m_out.back() == '*') {
            EXPECT_EQ(0u, run.m_out.rfind(c.m_out.substr(0, c.m_out.size() - 1), 0)) << run.m_out;
        } else {
            EXPECT_EQ(c.m_out, run.m_out);
        }
    }
}

// Scripts read the summary as JSON: each file's report, then the namespace's counts.
TEST(CimxmlTool, SummarisesAsJsonForScripts) {
    TTempDir dir;
    const std::string bad = dir.Write("bad.xml", "<CIM>\n<DECLARATION><FOO/></DECLARATION></CIM>");
    const TRun run = RunTool("--format json " + bad);
    EXPECT_EQ(1, run.m_exitCode);
    EXPECT_EQ(bad + ":2: error: Unexpected element FOO\n", run.m_err);
    std::string out = run.m_out;
    const size_t seconds = out.find("\"seconds\": ") + 11;
    out.erase(seconds, out.find(',', seconds) - seconds);
    EXPECT_EQ("{\n  \"files\": [\n    {\n      \"file\": \"" + bad +
                  "\",\n      \"bytes\": 45,\n      \"seconds\": ,\n      \"added\": {\n"
                  "        \"qualifier_declarations\": 0,\n        \"classes\": 0,\n"
                  "        \"instances\": 0\n      },\n      \"errors\": [\n        {\n"
                  "          \"line\": 2,\n          \"message\": \"Unexpected element FOO\"\n"
                  "        }\n      ]\n    }\n  ],\n  \"namespace\": {\n    \"name\": "
                  "\"root/cimv2\",\n    \"qualifier_declarations\": 0,\n    \"classes\": 0,\n"
                  "    \"instances\": 0\n  }\n}\n",
              out);
}

size_t CountLinesStartingWith(const std::string& text, const std::string& start) {
    size_t count = 0;
    for (size_t at = 0; at != std::string::npos;
         at = text.find('\n', at), at += at != std::string::npos) {
        count += text.compare(at, start.size(), start) == 0;
    }
    return count;
}

TEST(CimxmlTool, WritesTheDmtfSchemaAsMofThatReadsBackTheSame) {
    const std::string dmtf = std::string(XMLPARSER_SHARED_DIR) + "/corpus/dmtf/";
    if (!std::ifstream(dmtf + "cim_schema.xml").is_open()) {
        GTEST_SKIP() << dmtf << " is absent";
    }
    const TRun run =
        RunTool("--mof " + dmtf + "cim_schema.xml.gz --instances " + dmtf + "instances.xml");
    EXPECT_EQ(0, run.m_exitCode);
    EXPECT_EQ("", run.m_err);
    EXPECT_EQ(70u, CountLinesStartingWith(run.m_out, "Qualifier "));
    EXPECT_EQ(1631u, CountLinesStartingWith(run.m_out, "class "));
    EXPECT_EQ(3924u, CountLinesStartingWith(run.m_out, "instance of "));
    // Read back, the MOF gives the CIM-XML the originals give, to the byte.
    TTempDir dir;
    const TRun fromMof = RunTool("--xml " + dir.Write("all.mof", run.m_out));
    EXPECT_EQ("", fromMof.m_err);
    EXPECT_TRUE(
        fromMof.m_out ==
        RunTool("--xml " + dmtf + "cim_schema.xml --instances " + dmtf + "instances.xml").m_out);
}

} // namespace
} // namespace NQRN20
