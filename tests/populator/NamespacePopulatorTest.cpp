// Tests of the file loaders on real plain and gzip files in a temporary folder, damaged ones too.
#include "populator/NamespacePopulator.h"
#include "populator/DocumentReader.h"

#include "support/LogRecorder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace NQRN20 {
namespace {

// A document the parser reads to its end, leaving one log line that proves it was parsed.
const char kDocument[] = "<?xml version='1.0'?>\n<CIM>\n<PROBE/>\n</CIM>\n";
const char kParsed[] = "3 CIM-XML Parser line 3:Unexpected element probe\n";

// The two loaders, each also with a report, which must change nothing else.
enum ELoader { kClassLoader, kInstanceLoader, kReportingClassLoader, kReportingInstanceLoader };

// The status of the exception that reached the caller, 0 when none did, then the lines logged.
std::string Load(int loader, const std::string& path) {
    TLogRecorder log;
    TLoadReport report;
    const boost::shared_ptr<ICIMNamespace> ns = TMemoryNamespace::Create();
    uint32_t status = 0;
    try {
        EXPECT_EQ(0u, loader == kClassLoader
                          ? TNamespacePopulator::PopulateFromXMLFile(ns, path).size()
                      : loader == kInstanceLoader
                          ? TNamespacePopulator::PopulateFromRegXMLFile(ns, path).size()
                      : loader == kReportingClassLoader
                          ? TNamespacePopulator::PopulateFromXMLFile(ns, path, report).size()
                          : TNamespacePopulator::PopulateFromRegXMLFile(ns, path, report).size());
    } catch (const TQRNException& error) {
        status = error.GetStatus();
    }
    // The report's own logger is gone again.
    EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(nullptr));
    return std::to_string(status) + "\n" + log.Text();
}

std::string Gzip(const std::string& content) {
    TTempDir dir;
    std::ifstream file(dir.WriteGzip("x.gz", content), std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

std::string Failure(const std::string& path) {
    return "0 Previous error was while parsing file '" + path + "'\n";
}

// The first bytes decide, not the name. What the loaders refuse by its encoding only shows by
// the length they read. None hangs or allocates what a forged trailer pretends the file holds.
TEST(TNamespacePopulator, ReadsFilesByTheirFirstBytesAndEndsDamagedOnesInADocumentedStatus) {
    const std::string packed = Gzip(kDocument);
    const std::string unsized = packed.substr(0, packed.size() - 4);
    const struct {
        const char* m_name;
        std::string m_content;
        uint32_t m_status;
        const char* m_error; // the parser's line and message, for a parse error
    } cases[] = {
        {"classes.xml", kDocument, 0, ""},
        {"classes.gz.xml", packed, 0, ""},
        {"plain.xml.gz", kDocument, 0, ""},
        {"latin1.xml.gz",
         Gzip("<?xml version='1.0' encoding='latin1'?>\n<CIM>\n<PROBE x='\xE9'/>\n</CIM>\n"), 0,
         ""},
        // The last member's trailer sizes the read, which runs on across the members.
        {"two-members.xml.gz", packed + Gzip(std::string(200, ' ')), 0, ""},
        {"empty-member.xml.gz", Gzip(""), kQRNStatusGzipRead, ""},
        // zlib checks the trailer it reads against what it inflated, and refuses a forged one.
        {"forged-small.xml.gz", unsized + std::string("\x0A\0\0\0", 4), kQRNStatusGzipRead, ""},
        {"forged-huge.xml.gz", unsized + "\xFF\xFF\xFF\xFF", kQRNStatusGzipRead, ""},
        {"two-bytes.xml.gz", "\x1F\x8B", kQRNStatusFileError, ""},
        {"stored.xml.gz", std::string("\x1F\x8B\x01\x00", 4), kQRNStatusNotGzip, ""},
        {"empty.xml", "", kQRNStatusParseError, "1:Unexpected character before prolog"},
        {"zero.xml", std::string("<CIM>\n\0</CIM>", 13), kQRNStatusParseError,
         "2:Unexpected character where element expected"},
        // What inflates before the cut is parsed: a part of the first line.
        {"truncated.xml.gz", packed.substr(0, packed.size() / 2), kQRNStatusParseError,
         "1:Unterminated XML declaration"},
        {"utf16.xml", std::string("\0<\0?\0x\0m\0l", 10), kQRNStatusParseError,
         "1:Unsupported encoding 'UTF-16BE'"},
        {"utf32.xml.gz", Gzip(std::string("\0\0\0<\0\0\0?", 8)), kQRNStatusParseError,
         "1:Unsupported encoding 'UTF-32BE'"},
    };
    TTempDir dir;
    for (int loader = kClassLoader; loader <= kReportingInstanceLoader; ++loader) {
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(c.m_name) + " " + std::to_string(loader));
            const std::string path = dir.Path(c.m_name);
            EXPECT_EQ(std::to_string(c.m_status) + "\n" +
                          (c.m_status == 0 ? kParsed
                           : c.m_status != kQRNStatusParseError
                               ? ""
                               : "3 CIM-XML Parser line " + std::string(c.m_error) + "\n" +
                                     Failure(path)),
                      Load(loader, dir.Write(c.m_name, c.m_content)));
        }
    }
}

// Only the instance loader without a report passes quietly on a path whose size it cannot have.
TEST(TNamespacePopulator, FailsWithStatus11OnAFileItCannotReadUnlessLoadingInstancesWithoutReport) {
    TTempDir dir;
    const std::string locked = dir.Write("locked.xml", kDocument);
    ASSERT_EQ(0, chmod(locked.c_str(), 0));
    std::vector<std::string> paths = {dir.Path("missing.xml"), dir.Path("")};
    if (!std::ifstream(locked).is_open()) { // some users read files whatever their permissions
        paths.push_back(locked);
    }
    for (const std::string& path : paths) {
        for (int loader = kClassLoader; loader <= kReportingInstanceLoader; ++loader) {
            SCOPED_TRACE(path + " " + std::to_string(loader));
            EXPECT_EQ(loader == kInstanceLoader && path != locked ? "0\n" : "11\n",
                      Load(loader, path));
        }
    }
}

TEST(TNamespacePopulator, ReadsDocumentsOverTheLimitOnlyInPart) {
    EXPECT_EQ(0u, DocumentReadLength(0));
    EXPECT_EQ(524288000u, DocumentReadLength(524288000));
    EXPECT_EQ(104857600u, DocumentReadLength(524288001));
    EXPECT_EQ(104857600u, DocumentReadLength(uint64_t(1) << 40));
}

// The report as text, one fact a line, for comparisons that show a diff.
std::string Describe(const TLoadReport& report) {
    const TCIMXMLParser::TTally& tally = report.m_tally;
    std::string text = "bytes " + std::to_string(report.m_fileBytes) + " " +
                       std::to_string(report.m_documentBytes) + "\nadded " +
                       std::to_string(tally.m_qualifierDecls) + " " +
                       std::to_string(tally.m_classes) + " " + std::to_string(tally.m_instances) +
                       "\n";
    for (const auto* names : {&tally.m_duplicateQualifierDecls, &tally.m_duplicateClasses,
                              &tally.m_duplicateInstances}) {
        for (const std::string& name : *names) {
            text += "duplicate " + name + "\n";
        }
    }
    for (const TLoadLogEntry& entry : report.m_log) {
        text += std::to_string(entry.m_level) + " line " + std::to_string(entry.m_line) + ": " +
                entry.m_message + "\n";
    }
    if (!report.Complete()) {
        text += "failed " + std::to_string(report.m_status) + ": " + report.m_failure + "\n";
    }
    return text;
}

const char kSchema[] =
    "<CIM><DECLARATION><DECLGROUP>\n"
    "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
    "</QUALIFIER.DECLARATION>\n"
    "<VALUE.OBJECT><CLASS NAME='A'><PROPERTY NAME='Id' TYPE='string'>"
    "<QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE></QUALIFIER></PROPERTY></CLASS>"
    "</VALUE.OBJECT>\n"
    "<VALUE.OBJECT><INSTANCE CLASSNAME='A'><PROPERTY NAME='Id' TYPE='string'><VALUE>x</VALUE>"
    "</PROPERTY></INSTANCE></VALUE.OBJECT>\n"
    "</DECLGROUP></DECLARATION></CIM>\n";

// The files load in turn into one namespace, so that later ones find the earlier ones' objects.
TEST(TNamespacePopulator, ReportsWhatEachLoadReadAddedAndLogged) {
    TTempDir dir;
    const std::string packed = dir.WriteGzip("schema.xml.gz", kSchema);
    const std::string packedSize = std::to_string(std::filesystem::file_size(packed));
    const std::string size = std::to_string(sizeof kSchema - 1);
    // Sparse: the part read ends in zeros, so the root element is cut short.
    const std::string huge = dir.Write("huge.xml", "<CIM>");
    ASSERT_EQ(0, truncate(huge.c_str(), 524288001));
    const std::string fifo = dir.Path("fifo.xml");
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    std::thread writer([&fifo] { std::ofstream(fifo, std::ios::binary) << kSchema; });
    const struct {
        std::string m_path;
        std::string m_report;
    } cases[] = {
        {packed, "bytes " + packedSize + " " + size + "\nadded 1 1 1\n"},
        {fifo, "bytes " + size + " " + size +
                   "\nadded 0 0 0\nduplicate Key\nduplicate A\nduplicate A.Id=\"x\"\n"},
        {huge, "bytes 524288001 104857600\nadded 0 0 0\n3 line 1: Unexpected character where "
               "element expected\n0 line 0: Previous error was while parsing file '" +
                   huge +
                   "'\nfailed 9: the document is too large: only its first 104857600 "
                   "bytes were read; parsing stopped at line 1\n"},
        {dir.Write("method7.xml.gz", "\x1F\x8B\x07"),
         "bytes 3 0\nadded 0 0 0\nfailed 29: gzip data compressed by a method other than "
         "deflate\n"},
    };
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TLogRecorder log;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_path);
        TLoadReport report;
        try {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, c.m_path, report);
        } catch (const TQRNException& error) {
            EXPECT_EQ(report.m_status, uint32_t(error.GetStatus()));
        }
        EXPECT_EQ(c.m_report, Describe(report));
        EXPECT_EQ(c.m_path, report.m_path);
    }
    writer.join();
}

} // namespace
} // namespace NQRN20
