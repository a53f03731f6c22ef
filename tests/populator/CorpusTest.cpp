// Loads the real CIM-XML of the shared corpus end to end: the published per-class DMTF files and
// the requests, responses and rejected shapes of other projects, each as recorded.
#include "populator/NamespacePopulator.h"

#include "support/LogRecorder.h"
#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace NQRN20 {
namespace {

namespace fs = std::filesystem;

const fs::path kCorpus = fs::path(XMLPARSER_SHARED_DIR) / "corpus";
const fs::path kSchema = kCorpus / "dmtf" / "cim_schema.xml";

// The documents of a folder, not its subfolders, in name order: the corpus's loading order.
std::vector<fs::path> Documents(const fs::path& folder) {
    std::vector<fs::path> documents;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            documents.push_back(entry.path());
        }
    }
    std::sort(documents.begin(), documents.end());
    return documents;
}

std::string ReadText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

// One entry per document: the status or the classes returned, the instances then held, and each
// line logged, without the corpus's own path so that the record holds wherever the corpus lies.
std::string LoadOutcome(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                        const fs::path& document) {
    const std::string relative = fs::relative(document, kCorpus).string();
    TLogRecorder log;
    std::string outcome = relative + ":";
    try {
        const auto classes = TNamespacePopulator::PopulateFromXMLFile(cimNamespace, document);
        outcome += " classes " + std::to_string(classes.size());
    } catch (const TQRNException& error) {
        outcome += " status " + std::to_string(error.GetStatus());
    }
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    cimNamespace->EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), TCIMOptions());
    outcome += ", instances " + std::to_string(instances.size()) + "\n";
    for (std::string line : log.m_lines) {
        const size_t path = line.find(document.string());
        if (path != std::string::npos) {
            line.replace(path, document.string().size(), relative);
        }
        outcome += "    " + line + "\n";
    }
    return outcome;
}

// Each document loads, in turn, into a namespace that holds what their instances need; the
// outcomes are compared with the reviewed record beside this test, so that a change in behaviour
// shows in review. XMLPARSER_UPDATE_OUTCOMES=1 rewrites the record.
TEST(TNamespacePopulator, LoadsEachDocumentOfOtherProjectsAsRecorded) {
    if (!fs::exists(kSchema)) {
        GTEST_SKIP() << kSchema << " is absent";
    }
    // The DMTF qualifier declarations: the head of the schema, closed after the last of them.
    const std::string schema = ReadText(kSchema);
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    EXPECT_EQ("", ParseDocument(cimNamespace, schema.substr(0, schema.find("<VALUE.OBJECT>")) +
                                                  "</DECLGROUP></DECLARATION></CIM>")
                      .m_log);
    TNamespacePopulator::PopulateFromXMLFile(
        cimNamespace, (kCorpus / "peers" / "peg-wetest-static-PG_TestPropertyTypes.xml").string());
    std::string outcomes;
    for (const fs::path& folder : {kCorpus / "peers", kCorpus / "peers" / "other"}) {
        for (const fs::path& document : Documents(folder)) {
            outcomes += LoadOutcome(cimNamespace, document);
        }
    }
    const fs::path record = fs::path(XMLPARSER_TESTS_DIR) / "populator" / "corpus_outcomes.txt";
    if (std::getenv("XMLPARSER_UPDATE_OUTCOMES") != nullptr) {
        std::ofstream(record, std::ios::binary) << outcomes;
    }
    EXPECT_EQ(ReadText(record), outcomes);
}

} // namespace
} // namespace NQRN20
