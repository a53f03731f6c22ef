// Tests of the file loaders on real plain and gzip files in a temporary folder.
#include "populator/NamespacePopulator.h"
#include "populator/DocumentReader.h"

#include "support/LogRecorder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <string>

namespace NQRN20 {
namespace {

// A document the parser reads to its end, leaving one log line that proves it was parsed.
const char kDocument[] = "<?xml version='1.0'?>\n<CIM>\n<PROBE/>\n</CIM>\n";
const char kDocumentLog[] = "3 CIM-XML Parser line 3:Unexpected element probe\n";

enum ELoader { kClassLoader, kInstanceLoader };

struct TLoaded {
    std::string m_log;
    uint32_t m_status; // of the exception that reached the caller, 0 when none did
};

TLoaded Load(ELoader loader, const std::string& path) {
    TLogRecorder log;
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    uint32_t status = 0;
    try {
        if (loader == kClassLoader) {
            EXPECT_TRUE(TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path).empty());
        } else {
            EXPECT_TRUE(TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path).empty());
        }
    } catch (const TQRNException& error) {
        status = error.GetStatus();
    }
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
    for (ELoader loader : {kClassLoader, kInstanceLoader}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.m_path);
            const TLoaded loaded = Load(loader, c.m_path);
            EXPECT_EQ(c.m_loaded.m_log, loaded.m_log);
            EXPECT_EQ(c.m_loaded.m_status, loaded.m_status);
        }
    }
}

TEST(TNamespacePopulator, PassesOnAPathItCannotExamineOnlyForClassFiles) {
    TTempDir dir;
    for (const std::string& path : {dir.Path("missing.xml"), dir.Path("")}) {
        SCOPED_TRACE(path);
        const TLoaded classes = Load(kClassLoader, path);
        EXPECT_EQ(uint32_t(kQRNStatusFileError), classes.m_status);
        EXPECT_EQ("", classes.m_log);
        const TLoaded instances = Load(kInstanceLoader, path);
        EXPECT_EQ(0u, instances.m_status);
        EXPECT_EQ("", instances.m_log);
    }
}

TEST(TNamespacePopulator, FailsWithStatus11WhenAnExaminableFileCannotBeOpened) {
    TTempDir dir;
    const std::string path = dir.Write("locked.xml", kDocument);
    ASSERT_EQ(0, chmod(path.c_str(), 0));
    if (std::ifstream(path).is_open()) {
        GTEST_SKIP() << "this user reads files regardless of their permissions";
    }
    EXPECT_EQ(uint32_t(kQRNStatusFileError), Load(kClassLoader, path).m_status);
    EXPECT_EQ(uint32_t(kQRNStatusFileError), Load(kInstanceLoader, path).m_status);
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

} // namespace
} // namespace NQRN20
