// cimxml: loads CIM-XML files into one in-memory namespace and shows what they hold, as a
// summary, as MOF or as one clean CIM-XML document.
#include "populator/NamespacePopulator.h"
#include "tools/cimxml/MofWriter.h"
#include "tools/cimxml/SchemaView.h"
#include "tools/cimxml/XmlWriter.h"

#include <getopt.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace NQRN20;

const char kVersion[] = "cimxml 0.1.0\n";
const char kUsage[] =
    "usage: cimxml [OPTIONS] FILE... [--instances FILE...]\n"
    "Loads the files in order into one namespace: schema files (qualifier declarations and\n"
    "classes) first, then the instance files after --instances. Plain and gzip files alike;\n"
    "- reads standard input.\n"
    "\n"
    "  --mof          write the namespace as MOF instead of the summary\n"
    "  --xml          write the namespace as one CIM-XML declaration document instead\n"
    "  --instances    the files after it hold instances\n"
    "  --strict       accepted for older scripts: every error already fails the run\n"
    "  -h, --help     show this text\n"
    "  --version      show the version\n"
    "  --             end of the options: every argument after it is a file\n"
    "\n"
    "Errors go to standard error as FILE:LINE: error: TEXT.\n"
    "Exit status: 0 every file loaded whole without an error and the output was written,\n"
    "1 otherwise, 2 a wrong command line.\n";
const char kTryHelp[] = "Try 'cimxml --help' for more information.\n";
const char kStdinPath[] = "/dev/stdin";
const char kStdinName[] = "<stdin>";
// Duplicates named in a summary line before the rest are only counted.
const size_t kDuplicatesNamed = 3;

enum EOutput { kSummary, kMof, kXml };

struct TInput {
    std::string m_path;
    bool m_instances;
};

struct TOptions {
    EOutput m_output = kSummary;
    std::vector<TInput> m_inputs;
};

// The core's lines reach the user through the load reports; nothing else logs.
class TQuietLogger : public ILogger {
public:
    void Log(uint32_t, const std::string&) override {}
};

int Usage(const std::string& problem) {
    std::fprintf(stderr, "cimxml: %s\n%s", problem.c_str(), kTryHelp);
    return 2;
}

enum : int { kOptionMof = 256, kOptionXml, kOptionInstances, kOptionStrict, kOptionVersion };

// Parses the command line into the options. Returns -1 to go on, else the exit status, having
// answered --help or --version or said what is wrong.
int ParseOptions(int argc, char** argv, TOptions& options) {
    static const option kLongOptions[] = {
        {"mof", no_argument, nullptr, kOptionMof},
        {"xml", no_argument, nullptr, kOptionXml},
        {"instances", no_argument, nullptr, kOptionInstances},
        {"strict", no_argument, nullptr, kOptionStrict},
        {"help", no_argument, nullptr, 'h'},
        {"version", no_argument, nullptr, kOptionVersion},
        {nullptr, 0, nullptr, 0},
    };
    bool instances = false;
    bool mof = false;
    bool xml = false;
    opterr = 0;
    // "-" keeps the files in their places among the options, since --instances divides them.
    for (int option; (option = getopt_long(argc, argv, "-h", kLongOptions, nullptr)) != -1;) {
        switch (option) {
        case 1:
            options.m_inputs.push_back({optarg, instances});
            break;
        case kOptionMof:
            mof = true;
            break;
        case kOptionXml:
            xml = true;
            break;
        case kOptionInstances:
            instances = true;
            break;
        case kOptionStrict:
            break;
        case 'h':
            return std::fputs(kUsage, stdout) < 0 ? 1 : 0;
        case kOptionVersion:
            return std::fputs(kVersion, stdout) < 0 ? 1 : 0;
        default:
            return Usage("unknown option '" + std::string(argv[optind - 1]) + "'");
        }
    }
    for (int i = optind; i < argc; ++i) {
        options.m_inputs.push_back({argv[i], instances});
    }
    if (mof && xml) {
        return Usage("--mof and --xml cannot be used together");
    }
    options.m_output = mof ? kMof : xml ? kXml : kSummary;
    if (options.m_inputs.empty()) {
        return Usage("no input files");
    }
    if (instances && !options.m_inputs.back().m_instances) {
        return Usage("--instances needs at least one file after it");
    }
    size_t stdinCount = 0;
    for (const TInput& input : options.m_inputs) {
        stdinCount += input.m_path == "-";
    }
    return stdinCount > 1 ? Usage("standard input can be read only once") : -1;
}

std::string Counted(size_t count, const char* singular, const char* plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

// "2 duplicate classes ignored: CIM_A, CIM_B", or nothing when there are none.
std::string DuplicatesText(const std::vector<std::string>& names, const char* singular,
                           const char* plural) {
    if (names.empty()) {
        return "";
    }
    std::string text = "; " + Counted(names.size(), singular, plural) + " ignored: ";
    for (size_t i = 0; i < names.size() && i < kDuplicatesNamed; ++i) {
        text += (i > 0 ? ", " : "") + names[i];
    }
    return text + (names.size() > kDuplicatesNamed ? ", ..." : "");
}

void PrintSummaryLine(const std::string& name, const TLoadReport& report) {
    const TCIMXMLParser::TTally& tally = report.m_tally;
    const double rate = report.m_seconds > 0 ? report.m_documentBytes / report.m_seconds / 1e6 : 0;
    std::printf(
        "%s: %llu bytes, %.3f ms, %.1f MB/s, added %s, %s, %s%s%s%s; %s\n", name.c_str(),
        static_cast<unsigned long long>(report.m_documentBytes), report.m_seconds * 1e3, rate,
        Counted(tally.m_qualifierDecls, "qualifier declaration", "qualifier declarations").c_str(),
        Counted(tally.m_classes, "class", "classes").c_str(),
        Counted(tally.m_instances, "instance", "instances").c_str(),
        DuplicatesText(tally.m_duplicateQualifierDecls, "duplicate qualifier declaration",
                       "duplicate qualifier declarations")
            .c_str(),
        DuplicatesText(tally.m_duplicateClasses, "duplicate class", "duplicate classes").c_str(),
        DuplicatesText(tally.m_duplicateInstances, "duplicate instance", "duplicate instances")
            .c_str(),
        Counted(report.CountErrors(), "error line", "error lines").c_str());
}

// One line per error the load logged, then why it stopped, if it did.
void PrintDiagnostics(const std::string& name, const TLoadReport& report) {
    for (const TLoadLogEntry& entry : report.m_log) {
        if (entry.m_level == 0) {
            continue; // the closing line of a failed parse: the failure below says it better
        }
        const char* kind = entry.m_level >= TLoadReport::kErrorLevel ? "error" : "warning";
        if (entry.m_line > 0) {
            std::fprintf(stderr, "%s:%u: %s: %s\n", name.c_str(), unsigned(entry.m_line), kind,
                         entry.m_message.c_str());
        } else {
            std::fprintf(stderr, "%s: %s: %s\n", name.c_str(), kind, entry.m_message.c_str());
        }
    }
    if (!report.Complete()) {
        std::fprintf(stderr, "%s: error: %s\n", name.c_str(), report.m_failure.c_str());
    }
}

// Loads one file and says how it went. Returns whether it loaded whole, without an error.
bool LoadFile(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const TInput& input,
              bool summary) {
    const bool isStdin = input.m_path == "-";
    const std::string path = isStdin ? kStdinPath : input.m_path;
    const std::string name = isStdin ? kStdinName : input.m_path;
    TLoadReport report;
    try {
        if (input.m_instances) {
            TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path, report);
        } else {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path, report);
        }
    } catch (const TQRNException&) {
        if (report.m_status != kQRNStatusParseError) {
            std::fprintf(stderr, "%s: cannot read: %s\n", name.c_str(), report.m_failure.c_str());
            return false;
        }
    }
    PrintDiagnostics(name, report);
    if (summary) {
        PrintSummaryLine(name, report);
    }
    return report.Complete() && report.CountErrors() == 0;
}

void PrintNamespaceLine(ICIMNamespace& cimNamespace) {
    std::printf(
        "namespace %s: %s, %s, %s\n", cimNamespace.GetName(TCIMOptions()).c_str(),
        Counted(NSchemaView::QualifierDecls(cimNamespace).size(), "qualifier declaration",
                "qualifier declarations")
            .c_str(),
        Counted(NSchemaView::Classes(cimNamespace).size(), "class", "classes").c_str(),
        Counted(NSchemaView::Instances(cimNamespace).size(), "instance", "instances").c_str());
}

// Everything written reaches the file, or the run fails saying why: a full disk, a closed pipe
// (where SIGPIPE is ignored) and a closed descriptor all surface here at the latest.
bool FinishOutput() {
    std::cout.flush();
    const bool written = std::cout.good() && std::fflush(stdout) == 0 && !std::ferror(stdout);
    const int error = errno;
    if (std::fclose(stdout) == 0 && written) {
        return true;
    }
    std::fprintf(stderr, "cimxml: error writing standard output: %s\n",
                 std::strerror(written ? errno : error));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    TOptions options;
    const int usage = ParseOptions(argc, argv, options);
    if (usage >= 0) {
        return usage;
    }
    TQuietLogger quiet;
    TRootObject::SetCoreLogger(&quiet);
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    bool clean = true;
    for (const bool instances : {false, true}) {
        for (const TInput& input : options.m_inputs) {
            if (input.m_instances == instances) {
                clean &= LoadFile(cimNamespace, input, options.m_output == kSummary);
            }
        }
    }
    switch (options.m_output) {
    case kMof:
        NMof::WriteNamespace(*cimNamespace, std::cout);
        break;
    case kXml:
        NXmlWriter::WriteCimXml(*cimNamespace, std::cout);
        break;
    case kSummary:
        PrintNamespaceLine(*cimNamespace);
    }
    clean &= FinishOutput();
    TRootObject::SetCoreLogger(nullptr);
    return clean ? 0 : 1;
}
