// Files that are not what they claim: each ends in a documented status or a parse error, without
// hanging or allocating what the file pretends to hold.
#include "populator/NamespacePopulator.h"

#include "support/LogRecorder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <string>

namespace NQRN20 {
namespace {

const char kDocument[] = "<?xml version='1.0'?>\n<CIM>\n<DECLARATION><DECLGROUP/></DECLARATION>\n"
                         "</CIM>\n";

std::string Gzip(const std::string& content) {
    TTempDir dir;
    std::ifstream file(dir.WriteGzip("x.gz", content), std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

// The status that reached the caller of the class loader, or 0.
uint32_t LoadStatus(const std::string& path) {
    TLogRecorder log;
    try {
        TNamespacePopulator::PopulateFromXMLFile(TMemoryNamespace::Create(), path);
    } catch (const TQRNException& error) {
        return error.GetStatus();
    }
    return 0;
}

TEST(TNamespacePopulator, RefusesPathsThatAreNotRegularFiles) {
    TTempDir dir;
    const std::string fifo = dir.Path("fifo.xml");
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    for (const std::string& path : {dir.Path(""), fifo, std::string("/dev/zero"),
                                    std::string("/dev/null"), dir.Path("fifo.xml.gz")}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(uint32_t(kQRNStatusFileError), LoadStatus(path));
        TLogRecorder log;
        EXPECT_TRUE(
            TNamespacePopulator::PopulateFromRegXMLFile(TMemoryNamespace::Create(), path).empty());
    }
}

TEST(TNamespacePopulator, EndsDamagedGzipFilesInADocumentedStatus) {
    TTempDir dir;
    const std::string packed = Gzip(kDocument);
    std::string forgedSmall = packed;
    forgedSmall[forgedSmall.size() - 4] = 10;
    forgedSmall.replace(forgedSmall.size() - 3, 3, std::string(3, '\0'));
    std::string forgedHuge = packed;
    forgedHuge.replace(forgedHuge.size() - 4, 4, "\xFF\xFF\xFF\xFF");
    const struct {
        const char* m_name;
        std::string m_content;
        uint32_t m_status;
    } cases[] = {
        {"whole.xml.gz", packed, 0},
        // zlib checks the trailer it reads against what it inflated, and refuses a forged one.
        {"forged-small.xml.gz", forgedSmall, kQRNStatusGzipRead},
        {"forged-huge.xml.gz", forgedHuge, kQRNStatusGzipRead},
        // What inflates before the cut is parsed, and ends inside the root element.
        {"truncated.xml.gz", packed.substr(0, packed.size() / 2), kQRNStatusParseError},
        // The last member's trailer sizes the read, which runs on across the members.
        {"two-members.xml.gz", Gzip(kDocument) + Gzip(std::string(200, ' ')), 0},
        // The first bytes decide, not the name: a plain file is a plain document.
        {"plain.xml.gz", kDocument, 0},
        {"empty.xml.gz", "", kQRNStatusParseError},
        {"stored.xml.gz", std::string("\x1F\x8B\x01\x00", 4), kQRNStatusNotGzip},
        {"two-bytes.xml.gz", "\x1F\x8B", kQRNStatusFileError},
        {"three-bytes.xml.gz", "\x1F\x8B\x08", kQRNStatusFileError},
        {"empty-member.xml.gz", Gzip(""), kQRNStatusGzipRead},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_name);
        EXPECT_EQ(c.m_status, LoadStatus(dir.Write(c.m_name, c.m_content)));
    }
}

// A file that holds less than its size said by the time it is read (as one that shrank does,
// or a kernel attribute file, which reports a whole page): only what was read is parsed.
TEST(TNamespacePopulator, ParsesOnlyWhatAFileShorterThanItsSizeHolds) {
    const std::string path = "/sys/kernel/mm/transparent_hugepage/enabled";
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < 64) {
        GTEST_SKIP() << "no file here reads shorter than its size";
    }
    EXPECT_EQ(uint32_t(kQRNStatusParseError), LoadStatus(path));
}

TEST(TNamespacePopulator, StopsAtAZeroByteInsideTheDocument) {
    TTempDir dir;
    const std::string path = dir.Write("zero.xml", std::string("<CIM>\n\0</CIM>", 13));
    EXPECT_EQ(uint32_t(kQRNStatusParseError), LoadStatus(path));
}

} // namespace
} // namespace NQRN20
