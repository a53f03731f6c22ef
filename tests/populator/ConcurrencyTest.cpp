// Tests of loads that run at once into one namespace, and of reads during them. A program of
// its own, so that the ThreadSanitizer build can run it alone.
#include "populator/NamespacePopulator.h"

#include "support/LogRecorder.h"
#include "support/ParseDocument.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace NQRN20 {
namespace {

const int kLoaders = 3;

// The bundled examples' schema and instances, and the DMTF's where the corpus is present.
typedef std::array<std::string, 2> TDocuments;

std::vector<TDocuments> DocumentPairs() {
    const std::string dmtf = XMLPARSER_SHARED_DIR "/corpus/dmtf/";
    std::vector<TDocuments> pairs = {
        {XMLPARSER_EXAMPLES_DIR "/schema.xml", XMLPARSER_EXAMPLES_DIR "/instances.xml"}};
    if (std::filesystem::exists(dmtf + "cim_schema.xml")) {
        pairs.push_back({dmtf + "cim_schema.xml", dmtf + "instances.xml"});
    }
    return pairs;
}

typedef std::array<size_t, 3> TCounts;

// What one thread loads alone, which the loads at once must match; nothing is logged.
TCounts LoadedAlone(const TDocuments& documents) {
    TLogRecorder log;
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const size_t classes =
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, documents[0]).size();
    const size_t instances =
        TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, documents[1]).size();
    const TCounts counts = CountObjects(*cimNamespace);
    EXPECT_EQ(classes, counts[1]);
    EXPECT_EQ(instances, counts[2]);
    EXPECT_EQ("", log.Text());
    return counts;
}

// Runs the load in kLoaders threads at once, each with its own report.
std::vector<TLoadReport> LoadAtOnce(const std::function<void(TLoadReport&)>& load) {
    std::vector<TLoadReport> reports(kLoaders);
    std::vector<std::thread> threads;
    for (TLoadReport& report : reports) {
        threads.emplace_back([&load, &report] { load(report); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return reports;
}

typedef TCIMXMLParser::TTally TTally;
const size_t TTally::*const kCommitted[] = {&TTally::m_qualifierDecls, &TTally::m_classes,
                                            &TTally::m_instances};
std::vector<std::string> TTally::*const kDuplicates[] = {
    &TTally::m_duplicateQualifierDecls, &TTally::m_duplicateClasses, &TTally::m_duplicateInstances};

// Each load commits an object or finds it committed by another: every object of the kind is
// counted once as committed and kLoaders - 1 times as a duplicate.
void ExpectEachObjectCommittedOnce(const std::vector<TLoadReport>& reports, size_t kind,
                                   size_t inDocument) {
    size_t committedInAll = 0;
    for (const TLoadReport& report : reports) {
        EXPECT_TRUE(report.Complete()) << report.m_failure;
        EXPECT_EQ(0u, report.CountErrors()) << report.m_log.front().m_text;
        EXPECT_EQ(inDocument,
                  report.m_tally.*kCommitted[kind] + (report.m_tally.*kDuplicates[kind]).size());
        committedInAll += report.m_tally.*kCommitted[kind];
    }
    EXPECT_EQ(inDocument, committedInAll) << kind;
}

// Reads every instance and its values until told to stop, counting the passes that saw fewer.
void ReadUntil(ICIMNamespace& cimNamespace, const std::atomic<bool>& stop,
               std::atomic<size_t>& shrinks, std::atomic<size_t>& passes) {
    size_t before = 0;
    do {
        std::vector<boost::shared_ptr<ICIMInstance>> instances;
        cimNamespace.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), {});
        shrinks += instances.size() < before;
        before = instances.size();
        for (const auto& instance : instances) {
            std::vector<boost::shared_ptr<ICIMProperty>> properties;
            instance->EnumProperties(TAddToVectorCallback<ICIMProperty>(properties), {});
            for (const auto& property : properties) {
                property->GetValue({}).ToString();
            }
        }
        ++passes;
    } while (!stop);
}

// Several threads load the schema, then its instances while another reads them.
TEST(ConcurrentLoads, CommitEachObjectOnceAndLetReadersSeeTheInstancesOnlyGrow) {
    for (const TDocuments& documents : DocumentPairs()) {
        SCOPED_TRACE(documents[0]);
        const TCounts expected = LoadedAlone(documents);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        const std::vector<TLoadReport> schemaReports = LoadAtOnce([&](TLoadReport& report) {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, documents[0], report);
        });
        std::atomic<bool> stop{false};
        std::atomic<size_t> shrinks{0};
        std::atomic<size_t> passes{0};
        std::thread reader([&] { ReadUntil(*cimNamespace, stop, shrinks, passes); });
        const std::vector<TLoadReport> instanceReports = LoadAtOnce([&](TLoadReport& report) {
            TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, documents[1], report);
        });
        stop = true;
        reader.join();
        EXPECT_EQ(expected, CountObjects(*cimNamespace));
        EXPECT_EQ(0u, shrinks);
        EXPECT_LT(0u, passes);
        for (size_t kind = 0; kind < expected.size(); ++kind) {
            ExpectEachObjectCommittedOnce(kind < 2 ? schemaReports : instanceReports, kind,
                                          expected[kind]);
        }
    }
}

// The installed logger is not thread-safe; the library calls it one line at a time, and each
// load's report holds its own lines alone.
TEST(ConcurrentLoads, GiveTheLoggerOneLineAtATimeAndEachReportItsOwnLines) {
    TTempDir dir;
    std::vector<std::string> paths;
    std::map<std::string, std::string> expected;
    for (int i = 0; i < kLoaders; ++i) {
        const std::string name = "errors" + std::to_string(i) + ".xml";
        std::string document = "<CIM><DECLARATION><DECLGROUP>\n";
        for (int line = 2; line < 102; ++line) {
            const std::string at = std::to_string(line);
            document += "<VALUE.OBJECT><CLASS NAME='C" + at + "' SUPERCLASS='Z" +
                        std::to_string(i) + "'/></VALUE.OBJECT>\n";
            expected[dir.Path(name)] +=
                at + " Couldn't find class Z" + std::to_string(i) + "\n" + at +
                " CIM element holds no object: its class or instance was not created\n";
        }
        paths.push_back(dir.Write(name, document + "</DECLGROUP></DECLARATION></CIM>"));
    }
    TLogRecorder log;
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    std::atomic<size_t> next{0};
    for (const TLoadReport& report : LoadAtOnce([&](TLoadReport& report) {
             TNamespacePopulator::PopulateFromXMLFile(cimNamespace, paths[next++], report);
         })) {
        std::string lines;
        for (const TLoadLogEntry& entry : report.m_log) {
            lines += std::to_string(entry.m_line) + " " + entry.m_message + "\n";
        }
        EXPECT_EQ(expected[report.m_path], lines);
    }
    EXPECT_EQ(200u * kLoaders, log.m_lines.size());
}

} // namespace
} // namespace NQRN20
