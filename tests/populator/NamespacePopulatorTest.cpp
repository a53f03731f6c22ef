// Tests of the file loaders on real plain and gzip files in a temporary folder.
#include "populator/NamespacePopulator.h"
#include "populator/DocumentReader.h"

#include "support/LogRecorder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace NQRN20 {
namespace {

// A document the parser reads to its end, leaving one log line that proves it was parsed.
const char kDocument[] = "<?xml version='1.0'?>\n<CIM>\n<PROBE/>\n</CIM>\n";
const char kDocumentLog[] = "3 CIM-XML Parser line 3:Unexpected element probe\n";

// The two loaders, each also with a report, which must change nothing else.
enum ELoader { kClassLoader, kInstanceLoader, kReportingClassLoader, kReportingInstanceLoader };
const ELoader kLoaders[] = {kClassLoader, kInstanceLoader, kReportingClassLoader,
                            kReportingInstanceLoader};

struct TLoaded {
    std::string m_log;
    uint32_t m_status; // of the exception that reached the caller, 0 when none did
};

size_t LoadInto(ELoader loader, const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                const std::string& path, TLoadReport& report) {
    switch (loader) {
    case kClassLoader:
        return TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path).size();
    case kInstanceLoader:
        return TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path).size();
    case kReportingClassLoader:
        return TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path, report).size();
    default:
        return TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path, report).size();
    }
}

TLoaded Load(ELoader loader, const std::string& path) {
    TLogRecorder log;
    TLoadReport report;
    uint32_t status = 0;
    try {
        EXPECT_EQ(0u, LoadInto(loader, TMemoryNamespace::Create(), path, report));
    } catch (const TQRNException& error) {
        status = error.GetStatus();
    }
    // The report's own logger is gone again.
    EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(nullptr));
    return {log.Text(), status};
}

// An ASCII text in UTF-16 or UTF-32, big-endian and without a byte order mark: each character
// after its zero bytes.
std::string Wide(const std::string& text, size_t width) {
    std::string wide;
    for (const char c : text) {
        wide += std::string(width - 1, '\0') + c;
    }
    return wide;
}

std::string Failure(const std::string& path) {
    return "0 Previous error was while parsing file '" + path + "'\n";
}

// Also what the loaders refuse by its encoding, which only the length they read shows.
TEST(TNamespacePopulator, ReadsPlainAndGzipFilesByTheirFirstBytes) {
    TTempDir dir;
    const std::string plain = dir.Write("classes.xml", kDocument);
    const std::string gzip = dir.WriteGzip("classes.xml.gz", kDocument);
    const std::string gzipInside = dir.WriteGzip("classes.gz.xml", kDocument);
    const std::string gzipUpper = dir.WriteGzip("classes.xml.GZ", kDocument);
    const std::string plainAsGzip = dir.Write("plain.gz.xml", kDocument);
    const std::string emptyGzip = dir.WriteGzip("empty.xml.gz", "");
    const std::string emptyPlain = dir.Write("empty.xml", "");
    const std::string broken = dir.WriteGzip("broken.xml.gz", "<CIM>\n<A x='1' x='2'/></CIM>");
    const std::string stub = dir.Write("stub.xml.gz", "\x1F\x8B");
    const std::string latin1 = dir.WriteGzip(
        "latin1.xml.gz", std::string("<?xml version='1.0' encoding='latin1'?>\n<CIM>\n"
                                     "<PROBE x='\xE9'/>\n</CIM>\n"));
    const std::string utf16 = dir.Write("utf16.xml", Wide(kDocument, 2));
    const std::string utf32 = dir.WriteGzip("utf32.xml.gz", Wide(kDocument, 4));
    const struct {
        std::string m_path;
        TLoaded m_loaded;
    } cases[] = {
        {plain, {kDocumentLog, 0}},
        {gzip, {kDocumentLog, 0}},
        {gzipInside, {kDocumentLog, 0}},
        {gzipUpper, {kDocumentLog, 0}},
        {plainAsGzip, {kDocumentLog, 0}},
        {emptyGzip, {"", kQRNStatusGzipRead}},
        {stub, {"", kQRNStatusFileError}},
        {emptyPlain,
         {"3 CIM-XML Parser line 1:Unexpected character before prolog\n" + Failure(emptyPlain),
          kQRNStatusParseError}},
        {broken,
         {"3 CIM-XML Parser line 2:Attribute appears twice\n" + Failure(broken),
          kQRNStatusParseError}},
        {latin1, {kDocumentLog, 0}},
        {utf16,
         {"3 CIM-XML Parser line 1:Unsupported encoding 'UTF-16BE'\n" + Failure(utf16),
          kQRNStatusParseError}},
        {utf32,
         {"3 CIM-XML Parser line 1:Unsupported encoding 'UTF-32BE'\n" + Failure(utf32),
          kQRNStatusParseError}},
    };
    for (ELoader loader : kLoaders) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.m_path);
            const TLoaded loaded = Load(loader, c.m_path);
            EXPECT_EQ(c.m_loaded.m_log, loaded.m_log);
            EXPECT_EQ(c.m_loaded.m_status, loaded.m_status);
        }
    }
}

// Only the instance loader without a report returns nothing, quietly, for such a path.
TEST(TNamespacePopulator, PassesOnAPathItCannotExamineUnlessLoadingInstancesWithoutAReport) {
    TTempDir dir;
    for (const std::string& path : {dir.Path("missing.xml"), dir.Path("")}) {
        for (ELoader loader : kLoaders) {
            SCOPED_TRACE(path + " " + std::to_string(loader));
            const TLoaded loaded = Load(loader, path);
            EXPECT_EQ(loader == kInstanceLoader ? 0u : uint32_t(kQRNStatusFileError),
                      loaded.m_status);
            EXPECT_EQ("", loaded.m_log);
        }
    }
}

TEST(TNamespacePopulator, FailsWithStatus11WhenAnExaminableFileCannotBeOpened) {
    TTempDir dir;
    const std::string path = dir.Write("locked.xml", kDocument);
    ASSERT_EQ(0, chmod(path.c_str(), 0));
    if (std::ifstream(path).is_open()) {
        GTEST_SKIP() << "this user reads files regardless of their permissions";
    }
    for (ELoader loader : kLoaders) {
        EXPECT_EQ(uint32_t(kQRNStatusFileError), Load(loader, path).m_status);
    }
}

TEST(TNamespacePopulator, ReadsDocumentsOverTheLimitOnlyInPart) {
    const struct {
        uint64_t m_size;
        uint32_t m_length;
    } cases[] = {
        {0, 0},
        {524288000, 524288000},
        {524288001, 104857600},
        {uint64_t(1) << 40, 104857600},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.m_length, DocumentReadLength(c.m_size)) << c.m_size;
    }
}

TEST(TNamespacePopulator, ParsesTheReadPartOfAnOversizedSparseFile) {
    TTempDir dir;
    const std::string path = dir.Write("huge.xml", "<CIM>");
    ASSERT_EQ(0, truncate(path.c_str(), 524288001));
    // The part read ends in the sparse zeros, so the root element is cut short.
    const TLoaded loaded = Load(kClassLoader, path);
    EXPECT_EQ(uint32_t(kQRNStatusParseError), loaded.m_status);
    EXPECT_EQ("3 CIM-XML Parser line 1:Unexpected character where element expected\n" +
                  Failure(path),
              loaded.m_log);
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
    const std::string size = std::to_string(std::strlen(kSchema));
    const std::string errors = dir.Write(
        "errors.xml", "<CIM><DECLARATION><DECLGROUP>\n<VALUE.OBJECT><CLASS NAME='B' "
                      "SUPERCLASS='Z'/></VALUE.OBJECT>\n<Probe/></DECLGROUP></DECLARATION></CIM>");
    const std::string broken = dir.Write("broken.xml", "<CIM>\n<A x='1' x='2'/></CIM>");
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
        {errors, "bytes 132 132\nadded 0 0 0\n3 line 2: Couldn't find class Z\n"
                 "3 line 2: CIM element holds no object: its class or instance was not "
                 "created\n3 line 3: Unexpected element Probe\n"},
        {broken, "bytes 28 28\nadded 0 0 0\n3 line 2: Attribute appears twice\n"
                 "0 line 0: Previous error was while parsing file '" +
                     broken + "'\nfailed 9: parsing stopped at line 2\n"},
        {dir.Path("missing.xml"), "bytes 0 0\nadded 0 0 0\nfailed 11: No such file or directory\n"},
        {dir.Path(""), "bytes 0 0\nadded 0 0 0\nfailed 11: Is a directory\n"},
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
