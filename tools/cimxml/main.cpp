// cimxml: loads CIM-XML files into one in-memory namespace and shows what they hold, as a
// summary, as MOF or as one clean CIM-XML document.
#include "populator/NamespacePopulator.h"
#include "tools/cimxml/MofWriter.h"
#include "tools/cimxml/SchemaView.h"
#include "tools/cimxml/XmlWriter.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace NQRN20;

const char kVersion[] = "cimxml 0.1.0";
const char kUsage[] =
    "usage: cimxml [OPTIONS] FILE... [--instances FILE...]\n"
    "Loads the files in order into one namespace: schema files (qualifier declarations and\n"
    "classes) first, then the instance files after --instances. Plain and gzip files alike.\n"
    "\n"
    "  --mof        write the namespace as MOF instead of the summary\n"
    "  --xml        write the namespace as one CIM-XML declaration document instead\n"
    "  --strict     exit with 1 when any error line was logged\n"
    "  --help       show this text\n"
    "  --version    show the version\n"
    "\n"
    "Error lines go to standard error, each prefixed with the file being loaded.\n"
    "Exit status: 0 loaded, 1 a file failed (or an error line under --strict), 2 usage.\n";
const uint32_t kErrorLevel = 3;

enum EOutput { kSummary, kMof, kXml };

struct TOptions {
    EOutput m_output = kSummary;
    bool m_strict = false;
    std::vector<std::string> m_schemaFiles;
    std::vector<std::string> m_instanceFiles;
};

// Every line the core logs goes to standard error, prefixed with the file being loaded.
class TFileLogger : public ILogger {
public:
    void Log(uint32_t level, const std::string& text) override {
        std::fprintf(stderr, "%s: %s\n", m_file.c_str(), text.c_str());
        m_errors += level == kErrorLevel;
    }

    std::string m_file;
    size_t m_errors = 0;
};

struct TFileResult {
    std::string m_path;
    uint64_t m_bytes = 0;
    double m_seconds = 0;
    size_t m_objects = 0;
    const char* m_kind = "";
    size_t m_errors = 0;
};

// Parses the command line; returns false, having said why, for a usage error.
bool ParseOptions(int argc, char** argv, TOptions& options, int& exitCode) {
    bool instances = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--help" || argument == "--version") {
            std::fputs(argument == "--help" ? kUsage : kVersion, stdout);
            std::fputs(argument == "--help" ? "" : "\n", stdout);
            exitCode = 0;
            return false;
        } else if (argument == "--mof") {
            options.m_output = kMof;
        } else if (argument == "--xml") {
            options.m_output = kXml;
        } else if (argument == "--strict") {
            options.m_strict = true;
        } else if (argument == "--instances") {
            instances = true;
        } else if (argument.compare(0, 2, "--") == 0 && argument.size() > 2) {
            std::fprintf(stderr, "cimxml: unknown option %s\n%s", argument.c_str(), kUsage);
            exitCode = 2;
            return false;
        } else {
            (instances ? options.m_instanceFiles : options.m_schemaFiles).push_back(argument);
        }
    }
    if (options.m_schemaFiles.empty() && options.m_instanceFiles.empty()) {
        std::fputs(kUsage, stderr);
        exitCode = 2;
        return false;
    }
    return true;
}

// Loads one file; a failure is reported with its status and leaves the result without objects.
bool LoadFile(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const std::string& path,
              bool instances, TFileLogger& logger, TFileResult& result) {
    logger.m_file = path;
    logger.m_errors = 0;
    result.m_path = path;
    result.m_kind = instances ? "instances" : "classes";
    std::error_code error;
    result.m_bytes = std::filesystem::file_size(path, error);
    const auto start = std::chrono::steady_clock::now();
    bool loaded = true;
    try {
        result.m_objects =
            instances ? TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path).size()
                      : TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path).size();
    } catch (const TQRNException& failure) {
        std::fprintf(stderr, "%s: failed with status %u (%s)\n", path.c_str(),
                     unsigned(failure.GetStatus()), failure.what());
        loaded = false;
    }
    result.m_seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    result.m_errors = logger.m_errors;
    return loaded;
}

void PrintSummary(ICIMNamespace& cimNamespace, const std::vector<TFileResult>& results) {
    for (const TFileResult& result : results) {
        std::printf("%s: %llu bytes, %.3f ms, %.1f MB/s, %zu %s, %zu error lines\n",
                    result.m_path.c_str(), static_cast<unsigned long long>(result.m_bytes),
                    result.m_seconds * 1e3,
                    result.m_seconds > 0 ? result.m_bytes / result.m_seconds / 1e6 : 0.0,
                    result.m_objects, result.m_kind, result.m_errors);
    }
    std::printf("namespace %s: %zu qualifier declarations, %zu classes, %zu instances\n",
                cimNamespace.GetName(TCIMOptions()).c_str(),
                NSchemaView::QualifierDecls(cimNamespace).size(),
                NSchemaView::Classes(cimNamespace).size(),
                NSchemaView::Instances(cimNamespace).size());
}

} // namespace

int main(int argc, char** argv) {
    TOptions options;
    int exitCode = 0;
    if (!ParseOptions(argc, argv, options, exitCode)) {
        return exitCode;
    }
    TFileLogger logger;
    TRootObject::SetCoreLogger(&logger);
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    std::vector<TFileResult> results;
    bool failed = false;
    size_t errors = 0;
    for (const bool instances : {false, true}) {
        for (const std::string& path :
             instances ? options.m_instanceFiles : options.m_schemaFiles) {
            results.emplace_back();
            failed |= !LoadFile(cimNamespace, path, instances, logger, results.back());
            errors += results.back().m_errors;
        }
    }
    TRootObject::SetCoreLogger(nullptr);
    switch (options.m_output) {
    case kMof:
        NMof::WriteNamespace(*cimNamespace, std::cout);
        break;
    case kXml:
        NXmlWriter::WriteCimXml(*cimNamespace, std::cout);
        break;
    case kSummary:
        PrintSummary(*cimNamespace, results);
    }
    std::cout.flush();
    return failed || (options.m_strict && errors > 0) ? 1 : 0;
}
