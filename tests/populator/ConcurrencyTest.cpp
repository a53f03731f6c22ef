// Tests of loads that run at once into one namespace, and of reads during them. A program of
// its own, so that the ThreadSanitizer build can run it alone.
#include "populator/NamespacePopulator.h"

#include "support/LogRecorder.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace NQRN20 {
namespace {

namespace fs = std::filesystem;

const int kLoaders = 3;

struct TDocuments {
    std::string m_schema;
    std::string m_instances;
};

// The bundled examples always; the DMTF schema and its instances where the corpus is present.
std::vector<TDocuments> DocumentPairs() {
    const fs::path examples(XMLPARSER_EXAMPLES_DIR);
    std::vector<TDocuments> pairs = {
        {(examples / "schema.xml").string(), (examples / "instances.xml").string()}};
    const fs::path dmtf = fs::path(XMLPARSER_SHARED_DIR) / "corpus" / "dmtf";
    if (fs::exists(dmtf / "cim_schema.xml")) {
        pairs.push_back({(dmtf / "cim_schema.xml").string(), (dmtf / "instances.xml").string()});
    }
    return pairs;
}

// What a namespace holds, in a form that compares across namespaces filled in another order.
struct TContents {
    std::set<std::string> m_qualifierDecls;
    std::set<std::string> m_classes;
    std::map<std::string, size_t> m_instancesPerClass;

    bool operator==(const TContents& other) const {
        return m_qualifierDecls == other.m_qualifierDecls && m_classes == other.m_classes &&
               m_instancesPerClass == other.m_instancesPerClass;
    }
};

TContents ContentsOf(ICIMNamespace& cimNamespace) {
    TContents contents;
    std::vector<boost::shared_ptr<ICIMQualifierDecl>> declarations;
    cimNamespace.EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(declarations), {});
    for (const auto& declaration : declarations) {
        contents.m_qualifierDecls.insert(declaration->GetName({}));
    }
    std::vector<boost::shared_ptr<ICIMClass>> classes;
    cimNamespace.EnumClasses(TAddToVectorCallback<ICIMClass>(classes), {});
    for (const auto& cimClass : classes) {
        contents.m_classes.insert(cimClass->GetName({}));
    }
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    cimNamespace.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), {});
    for (const auto& instance : instances) {
        ++contents.m_instancesPerClass[instance->GetClass({})->GetName({})];
    }
    return contents;
}

size_t InstanceCount(const TContents& contents) {
    size_t count = 0;
    for (const auto& entry : contents.m_instancesPerClass) {
        count += entry.second;
    }
    return count;
}

// The namespace one thread makes of the documents, which the concurrent loads must match.
TContents LoadedAlone(const TDocuments& documents) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TNamespacePopulator::PopulateFromXMLFile(cimNamespace, documents.m_schema);
    TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, documents.m_instances);
    return ContentsOf(*cimNamespace);
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

// Each load either commits an object or finds it committed by another: every object of the
// document is counted once as committed and kLoaders - 1 times as a duplicate.
void ExpectEachObjectCommittedOnce(const std::vector<TLoadReport>& reports,
                                   size_t TCIMXMLParser::TTally::*committed,
                                   std::vector<std::string> TCIMXMLParser::TTally::*duplicates,
                                   size_t inDocument) {
    size_t committedInAll = 0;
    for (const TLoadReport& report : reports) {
        EXPECT_TRUE(report.Complete()) << report.m_failure;
        EXPECT_EQ(0u, report.CountErrors()) << report.m_log.front().m_text;
        EXPECT_EQ(inDocument, report.m_tally.*committed + (report.m_tally.*duplicates).size());
        committedInAll += report.m_tally.*committed;
    }
    EXPECT_EQ(inDocument, committedInAll);
}

TEST(ConcurrentLoads, OfOneSchemaIntoOneNamespaceCommitEachDeclarationOnce) {
    for (const TDocuments& documents : DocumentPairs()) {
        SCOPED_TRACE(documents.m_schema);
        TContents expected = LoadedAlone(documents);
        expected.m_instancesPerClass.clear();
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        const std::vector<TLoadReport> reports = LoadAtOnce([&](TLoadReport& report) {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, documents.m_schema, report);
        });
        EXPECT_TRUE(expected == ContentsOf(*cimNamespace));
        ExpectEachObjectCommittedOnce(reports, &TCIMXMLParser::TTally::m_qualifierDecls,
                                      &TCIMXMLParser::TTally::m_duplicateQualifierDecls,
                                      expected.m_qualifierDecls.size());
        ExpectEachObjectCommittedOnce(reports, &TCIMXMLParser::TTally::m_classes,
                                      &TCIMXMLParser::TTally::m_duplicateClasses,
                                      expected.m_classes.size());
    }
}

// Reads every instance the namespace holds, each property's value with it, until told to stop;
// counts the passes in which the instances seen were fewer than in the pass before.
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

TEST(ConcurrentLoads, OfInstancesLeaveEveryInstanceOnceAndReadersSeeThemGrow) {
    for (const TDocuments& documents : DocumentPairs()) {
        SCOPED_TRACE(documents.m_instances);
        const TContents expected = LoadedAlone(documents);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, documents.m_schema);
        std::atomic<bool> stop{false};
        std::atomic<size_t> shrinks{0};
        std::atomic<size_t> passes{0};
        std::thread reader([&] { ReadUntil(*cimNamespace, stop, shrinks, passes); });
        const std::vector<TLoadReport> reports = LoadAtOnce([&](TLoadReport& report) {
            TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, documents.m_instances,
                                                        report);
        });
        stop = true;
        reader.join();
        EXPECT_TRUE(expected == ContentsOf(*cimNamespace));
        EXPECT_EQ(0u, shrinks);
        EXPECT_LT(0u, passes);
        ExpectEachObjectCommittedOnce(reports, &TCIMXMLParser::TTally::m_instances,
                                      &TCIMXMLParser::TTally::m_duplicateInstances,
                                      InstanceCount(expected));
    }
}

std::vector<std::string> Messages(const TLoadReport& report) {
    std::vector<std::string> messages;
    for (const TLoadLogEntry& entry : report.m_log) {
        messages.push_back(std::to_string(entry.m_line) + " " + entry.m_message);
    }
    return messages;
}

// The installed logger is not thread-safe; the library calls it one line at a time, and each
// load's report holds its own lines alone, as when the document is loaded by itself.
TEST(ConcurrentLoads, GiveTheLoggerOneLineAtATimeAndEachReportItsOwnLines) {
    TTempDir dir;
    std::vector<std::string> paths;
    for (int i = 0; i < kLoaders; ++i) {
        std::string document = "<CIM><DECLARATION><DECLGROUP>\n";
        for (int line = 0; line < 100; ++line) {
            document += "<VALUE.OBJECT><CLASS NAME='C" + std::to_string(line) + "' SUPERCLASS='Z" +
                        std::to_string(i) + "'/></VALUE.OBJECT>\n";
        }
        paths.push_back(dir.Write("errors" + std::to_string(i) + ".xml",
                                  document + "</DECLGROUP></DECLARATION></CIM>"));
    }
    TLogRecorder log;
    std::map<std::string, std::vector<std::string>> alone;
    for (const std::string& path : paths) {
        TLoadReport report;
        TNamespacePopulator::PopulateFromXMLFile(TMemoryNamespace::Create(), path, report);
        alone[path] = Messages(report);
    }
    log.m_lines.clear();
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    std::atomic<size_t> next{0};
    const std::vector<TLoadReport> reports = LoadAtOnce([&](TLoadReport& report) {
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, paths[next++], report);
    });
    size_t lines = 0;
    for (const TLoadReport& report : reports) {
        EXPECT_EQ(alone[report.m_path], Messages(report)) << report.m_path;
        lines += report.m_log.size();
    }
    EXPECT_EQ(200u * kLoaders, lines);
    EXPECT_EQ(lines, log.m_lines.size());
}

} // namespace
} // namespace NQRN20
