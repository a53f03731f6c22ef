// cimxml: loads CIM-XML files into in-memory namespaces and shows what they hold (a summary,
// MOF, CIM-XML, the class tree, single classes) or what changed between two of them.
#include "mof/MofLoader.h"
#include "populator/DocumentReader.h"
#include "populator/NamespacePopulator.h"
#include "tools/cimxml/Description.h"
#include "tools/cimxml/Json.h"
#include "tools/cimxml/MofWriter.h"
#include "tools/cimxml/SchemaDiff.h"
#include "tools/cimxml/SchemaTree.h"
#include "tools/cimxml/SchemaView.h"
#include "tools/cimxml/XmlWriter.h"

#include <getopt.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace NQRN20;

const char kVersion[] = "cimxml 0.1.0\n";
const char kUsage[] =
    "usage: cimxml [OPTIONS] FILE... [--instances FILE...]\n"
    "       cimxml diff [OPTIONS] OLD NEW [--instances OLD NEW]\n"
    "       cimxml diff [OPTIONS] --old FILE... --new FILE... [--instances --old FILE...]\n"
    "       cimxml tree [OPTIONS] [CLASS] FILE... [--instances FILE...]\n"
    "       cimxml show [OPTIONS] NAME... FILE... [--instances FILE...]\n"
    "Loads the files in order into one namespace: schema files (qualifier declarations and\n"
    "classes) first, then the instance files after --instances. CIM-XML or MOF (a file whose\n"
    "first character that is not blank is not '<'), plain or gzip; - reads standard input.\n"
    "Without a command, prints a summary of each file and of the namespace. diff loads two\n"
    "namespaces and prints what changed from OLD to NEW; tree prints the class hierarchy, or\n"
    "CLASS and its subclasses; show prints the classes or qualifier declarations named. A\n"
    "CLASS or NAME is a CIM name that is not also a file's name.\n"
    "\n"
    "  --format F     text (the default) or json\n"
    "  --mof          write the namespace as MOF instead of the summary\n"
    "  --xml          write the namespace as one CIM-XML declaration document instead\n"
    "  --instances    the files after it hold instances\n"
    "  --old FILE     diff: a file of the old namespace (repeat for several)\n"
    "  --new FILE     diff: a file of the new namespace (repeat for several)\n"
    "  --inherited    show: add the members each class inherits\n"
    "  --strict       accepted for older scripts: every error already fails the run\n"
    "  -h, --help     show this text\n"
    "  --version      show the version\n"
    "  --             end of the options: every argument after it is a file\n"
    "\n"
    "Errors go to standard error as FILE:LINE: error: TEXT.\n"
    "Exit status: 0 every file loaded whole without an error and the output was written,\n"
    "1 otherwise, 2 a wrong command line. diff: 0 no difference, 1 differences, 2 trouble.\n";
const char kTryHelp[] = "Try 'cimxml --help' for more information.\n";
const char kStdinPath[] = "/dev/stdin";
const char kStdinName[] = "<stdin>";
// Duplicates named in a summary line before the rest are only counted.
const size_t kDuplicatesNamed = 3;

enum ECommand { kLoad, kDiff, kTree, kShow };
enum EOutput { kSummary, kMof, kXml };

const struct {
    const char* m_name;
    ECommand m_command;
} kCommands[] = {{"diff", kDiff}, {"tree", kTree}, {"show", kShow}};

struct TInput {
    std::string m_path;
    bool m_instances;
};
typedef std::vector<TInput> TInputs;

struct TOptions {
    ECommand m_command = kLoad;
    EOutput m_output = kSummary;
    bool m_json = false;
    bool m_inherited = false;
    TInputs m_inputs;
    // diff: the two sides.
    TInputs m_old;
    TInputs m_new;
    // tree: the root, if any; show: what to show.
    std::vector<std::string> m_names;
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

enum : int {
    kOptionMof = 256,
    kOptionXml,
    kOptionInstances,
    kOptionStrict,
    kOptionVersion,
    kOptionFormat,
    kOptionOld,
    kOptionNew,
    kOptionInherited
};

// A CIM name (letters, digits, underscores, not a digit first) that is not a file's name.
bool IsName(const std::string& argument) {
    if (argument.empty() || std::isdigit(static_cast<unsigned char>(argument[0]))) {
        return false;
    }
    for (const char c : argument) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') {
            return false;
        }
    }
    return ::access(argument.c_str(), F_OK) != 0;
}

// What the options say beyond the inputs, checked once they are all read.
struct TSeen {
    bool m_instances = false;
    bool m_mof = false;
    bool m_xml = false;
    bool m_inherited = false;
    bool m_sides = false;
    std::vector<TInput> m_files; // diff's files given without --old or --new
};

// A file or, for tree and show before any --, a name.
void AddArgument(TOptions& options, TSeen& seen, const std::string& argument, bool file) {
    if (!file && (options.m_command == kTree || options.m_command == kShow) && IsName(argument)) {
        options.m_names.push_back(argument);
    } else if (options.m_command == kDiff) {
        seen.m_files.push_back({argument, seen.m_instances});
    } else {
        options.m_inputs.push_back({argument, seen.m_instances});
    }
}

// diff OLD NEW [--instances OLD NEW]: each pair gives one file to each side.
int AssignDiffSides(TOptions& options, const TSeen& seen) {
    if (seen.m_sides && !seen.m_files.empty()) {
        return Usage("give diff's files either as OLD NEW or after --old and --new");
    }
    for (const bool instances : {false, true}) {
        std::vector<TInput> pair;
        for (const TInput& input : seen.m_files) {
            if (input.m_instances == instances) {
                pair.push_back(input);
            }
        }
        if (pair.size() != 0 && pair.size() != 2) {
            return Usage("diff compares two files: OLD and NEW");
        }
        if (pair.size() == 2) {
            options.m_old.push_back(pair[0]);
            options.m_new.push_back(pair[1]);
        }
    }
    if (options.m_old.empty() || options.m_new.empty()) {
        return Usage("diff needs an old and a new file");
    }
    return -1;
}

// What no command takes, or only another one does.
int CheckCombinations(const TOptions& options, const TSeen& seen) {
    const bool load = options.m_command == kLoad;
    if ((seen.m_mof || seen.m_xml) && !load) {
        return Usage("--mof and --xml are only for the plain form");
    }
    if (seen.m_mof && seen.m_xml) {
        return Usage("--mof and --xml cannot be used together");
    }
    if ((seen.m_mof || seen.m_xml) && options.m_json) {
        return Usage("--format json is for the summary, not for --mof or --xml");
    }
    if (seen.m_sides && options.m_command != kDiff) {
        return Usage("--old and --new are only for diff");
    }
    if (seen.m_inherited && options.m_command != kShow) {
        return Usage("--inherited is only for show");
    }
    if (options.m_command == kTree && options.m_names.size() > 1) {
        return Usage("tree takes one class");
    }
    if (options.m_command == kShow && options.m_names.empty()) {
        return Usage("show needs the name of a class or qualifier declaration");
    }
    return -1;
}

int CheckInputs(const TOptions& options, const TSeen& seen) {
    TInputs all = options.m_inputs;
    all.insert(all.end(), options.m_old.begin(), options.m_old.end());
    all.insert(all.end(), options.m_new.begin(), options.m_new.end());
    if (all.empty()) {
        return Usage("no input files");
    }
    if (seen.m_instances && !all.back().m_instances) {
        return Usage("--instances needs at least one file after it");
    }
    size_t stdinCount = 0;
    for (const TInput& input : all) {
        stdinCount += input.m_path == "-";
    }
    return stdinCount > 1 ? Usage("standard input can be read only once") : -1;
}

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
        {"format", required_argument, nullptr, kOptionFormat},
        {"old", required_argument, nullptr, kOptionOld},
        {"new", required_argument, nullptr, kOptionNew},
        {"inherited", no_argument, nullptr, kOptionInherited},
        {nullptr, 0, nullptr, 0},
    };
    for (const auto& command : kCommands) {
        if (argc > 1 && std::strcmp(argv[1], command.m_name) == 0) {
            options.m_command = command.m_command;
            --argc;
            ++argv;
        }
    }
    TSeen seen;
    opterr = 0;
    // "-" keeps the files in their places among the options, since --instances divides them.
    for (int option; (option = getopt_long(argc, argv, "-h", kLongOptions, nullptr)) != -1;) {
        switch (option) {
        case 1:
            AddArgument(options, seen, optarg, false);
            break;
        case kOptionMof:
            seen.m_mof = true;
            break;
        case kOptionXml:
            seen.m_xml = true;
            break;
        case kOptionInstances:
            seen.m_instances = true;
            break;
        case kOptionStrict:
            break;
        case kOptionFormat:
            if (std::strcmp(optarg, "json") != 0 && std::strcmp(optarg, "text") != 0) {
                return Usage("--format is text or json, not '" + std::string(optarg) + "'");
            }
            options.m_json = std::strcmp(optarg, "json") == 0;
            break;
        case kOptionOld:
        case kOptionNew:
            seen.m_sides = true;
            (option == kOptionOld ? options.m_old : options.m_new)
                .push_back({optarg, seen.m_instances});
            break;
        case kOptionInherited:
            seen.m_inherited = true;
            break;
        case 'h':
            return std::fputs(kUsage, stdout) < 0 ? 1 : 0;
        case kOptionVersion:
            return std::fputs(kVersion, stdout) < 0 ? 1 : 0;
        case ':':
            return Usage("option '" + std::string(argv[optind - 1]) + "' needs a value");
        default:
            return Usage("unknown option '" + std::string(argv[optind - 1]) + "'");
        }
    }
    for (int i = optind; i < argc; ++i) {
        AddArgument(options, seen, argv[i], true);
    }
    options.m_output = seen.m_mof ? kMof : seen.m_xml ? kXml : kSummary;
    options.m_inherited = seen.m_inherited;
    int status = CheckCombinations(options, seen);
    if (status < 0 && options.m_command == kDiff) {
        status = AssignDiffSides(options, seen);
    }
    return status < 0 ? CheckInputs(options, seen) : status;
}

std::string Counted(size_t count, const char* singular, const char* plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

// A quarter of a load's time in a fresh process goes to faulting in, one 4 KiB page at a time,
// the memory that the namespace's objects take. Growing the heap once by a block that the system
// may back with huge pages turns some 512 of those faults into one. Nothing is asked where the heap
// does not grow by moving the program break (another allocator, a sanitizer, valgrind).
void ReserveHugePageHeap() {
#ifdef MADV_HUGEPAGE
    const size_t kHugePage = size_t(2) << 20;
    const size_t kReserve = size_t(64) << 20;
    // Kept, so that the heap also keeps that much when memory is freed at its top.
    mallopt(M_TOP_PAD, int(kReserve));
    const uintptr_t before = reinterpret_cast<uintptr_t>(sbrk(0));
    // Below the size that malloc maps on its own: it grows the heap to serve this.
    std::vector<void*> blocks;
    for (int i = 0; i < 4 && reinterpret_cast<uintptr_t>(sbrk(0)) == before; ++i) {
        blocks.push_back(malloc(64 << 10));
    }
    const uintptr_t after = reinterpret_cast<uintptr_t>(sbrk(0));
    for (void* block : blocks) {
        free(block);
    }
    const uintptr_t begin = (before + kHugePage - 1) & ~(kHugePage - 1);
    const uintptr_t end = after & ~(kHugePage - 1);
    if (after - before >= kReserve && begin < end) {
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
#endif
}

// A namespace that lives until the process ends: the exit hands its memory back at once, where
// freeing it would visit each of its objects, which takes a twentieth of a whole load.
boost::shared_ptr<ICIMNamespace> KeptNamespace() {
    static auto* const kept = new std::vector<boost::shared_ptr<ICIMNamespace>>();
    kept->push_back(TMemoryNamespace::Create());
    return kept->back();
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
        const std::string& file = entry.m_file.empty() ? name : entry.m_file;
        if (entry.m_column > 0) {
            std::fprintf(stderr, "%s:%u:%u: %s: %s\n", file.c_str(), unsigned(entry.m_line),
                         unsigned(entry.m_column), kind, entry.m_message.c_str());
        } else if (entry.m_line > 0) {
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

// The report of one file for --format json: what it added, its errors, why it stopped.
TJson ReportJson(const std::string& name, const TLoadReport& report) {
    const TCIMXMLParser::TTally& tally = report.m_tally;
    TJson file = TJson::Object();
    file.Append("file", name);
    file.Append("bytes", TJson::Number(uint64_t(report.m_documentBytes)));
    file.Append("seconds", TJson::Number(report.m_seconds));
    TJson added = TJson::Object();
    added.Append("qualifier_declarations", TJson::Number(uint64_t(tally.m_qualifierDecls)));
    added.Append("classes", TJson::Number(uint64_t(tally.m_classes)));
    added.Append("instances", TJson::Number(uint64_t(tally.m_instances)));
    file.Append("added", std::move(added));
    TJson duplicates = TJson::Object();
    for (const auto& kind :
         {std::make_pair("qualifier_declarations", &tally.m_duplicateQualifierDecls),
          std::make_pair("classes", &tally.m_duplicateClasses),
          std::make_pair("instances", &tally.m_duplicateInstances)}) {
        TJson names = TJson::Array();
        for (const std::string& duplicate : *kind.second) {
            names.Push(duplicate);
        }
        if (!names.Empty()) {
            duplicates.Append(kind.first, std::move(names));
        }
    }
    if (!duplicates.Empty()) {
        file.Append("duplicates", std::move(duplicates));
    }
    TJson errors = TJson::Array();
    for (const TLoadLogEntry& entry : report.m_log) {
        if (entry.m_level >= TLoadReport::kErrorLevel) {
            TJson error = TJson::Object();
            error.Append("line", TJson::Number(uint64_t(entry.m_line)));
            // Only MOF places an error in a column and in another file; CIM-XML keeps its form.
            if (entry.m_column > 0) {
                error.Append("column", TJson::Number(uint64_t(entry.m_column)));
            }
            if (!entry.m_file.empty()) {
                error.Append("file", entry.m_file);
            }
            error.Append("message", entry.m_message);
            errors.Push(std::move(error));
        }
    }
    file.Append("errors", std::move(errors));
    if (!report.Complete()) {
        file.Append("failure", report.m_failure);
    }
    return file;
}

// How one file went: its report, and whether it could be opened at all.
struct TFileLoad {
    std::string m_name;
    TLoadReport m_report;
    bool m_readable = true;

    bool Clean() const { return m_readable && m_report.Complete() && m_report.CountErrors() == 0; }
};

void LoadXmlFile(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const std::string& path,
                 bool instances, TLoadReport& report) {
    if (instances) {
        TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path, report);
    } else {
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path, report);
    }
}

// A temporary file that is removed with its holder.
struct TTemporaryFile {
    std::string m_path;
    ~TTemporaryFile() {
        if (!m_path.empty()) {
            std::remove(m_path.c_str());
        }
    }
};

// A document read whole: MOF is compiled from the text, with includes taken from the current
// folder; CIM-XML is loaded from a temporary copy.
void LoadReadDocument(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                      const TDocumentBuffer& document, bool instances, TLoadReport& report) {
    const char* const text = document.m_bytes.get();
    TTemporaryFile copy;
    if (TMofLoader::IsMof(text, document.m_length)) {
        TMofLoader::PopulateFromMOFText(cimNamespace, text, document.m_length, "", report);
    } else {
        std::string pattern = (std::filesystem::temp_directory_path() / "cimxml-XXXXXX").string();
        const int descriptor = ::mkstemp(pattern.data());
        copy.m_path = descriptor >= 0 ? pattern : "";
        const bool written = descriptor >= 0 && ::write(descriptor, text, document.m_length) ==
                                                    ssize_t(document.m_length);
        if (descriptor < 0 || ::close(descriptor) != 0 || !written) {
            report.m_failure = std::string("no temporary copy: ") + std::strerror(errno);
            throw TQRNException(kQRNStatusFileError);
        }
        LoadXmlFile(cimNamespace, copy.m_path, instances, report);
    }
}

// Standard input and pipes can be read only once, so they are read whole before what they hold
// is known. A document cut for its size says so, whatever the load then says.
void LoadWhole(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const std::string& path,
               bool instances, TLoadReport& report) {
    const TDocumentBuffer document = ReadReportedDocument(path, report);
    const std::string cut = report.m_failure;
    const auto sayCut = [&] {
        if (!cut.empty()) {
            report.m_failure = report.m_failure.empty() ? cut : cut + "; " + report.m_failure;
        }
    };
    try {
        LoadReadDocument(cimNamespace, document, instances, report);
    } catch (const TQRNException&) {
        sayCut();
        throw;
    }
    sayCut();
}

// Loads one file, with its errors on standard error.
TFileLoad LoadFile(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const TInput& input) {
    const bool isStdin = input.m_path == "-";
    TFileLoad load;
    load.m_name = isStdin ? kStdinName : input.m_path;
    std::error_code notRegular;
    try {
        if (isStdin || !std::filesystem::is_regular_file(input.m_path, notRegular)) {
            LoadWhole(cimNamespace, isStdin ? kStdinPath : input.m_path, input.m_instances,
                      load.m_report);
        } else if (TMofLoader::IsMofFile(input.m_path)) {
            TMofLoader::PopulateFromMOFFile(cimNamespace, input.m_path, load.m_report);
        } else {
            LoadXmlFile(cimNamespace, input.m_path, input.m_instances, load.m_report);
        }
    } catch (const TQRNException&) {
        if (load.m_report.m_status != kQRNStatusParseError) {
            std::fprintf(stderr, "%s: cannot read: %s\n", load.m_name.c_str(),
                         load.m_report.m_failure.c_str());
            load.m_readable = false;
            return load;
        }
    }
    PrintDiagnostics(load.m_name, load.m_report);
    return load;
}

// Loads the schema files, then the instance files, each in the order given.
std::vector<TFileLoad> LoadAll(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                               const TInputs& inputs) {
    std::vector<TFileLoad> loads;
    for (const bool instances : {false, true}) {
        for (const TInput& input : inputs) {
            if (input.m_instances == instances) {
                loads.push_back(LoadFile(cimNamespace, input));
            }
        }
    }
    return loads;
}

bool AllClean(const std::vector<TFileLoad>& loads) {
    bool clean = true;
    for (const TFileLoad& load : loads) {
        clean &= load.Clean();
    }
    return clean;
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

void WriteSummary(ICIMNamespace& cimNamespace, const std::vector<TFileLoad>& loads, bool json) {
    const size_t qualifierDecls = NSchemaView::QualifierDecls(cimNamespace).size();
    const size_t classes = NSchemaView::Classes(cimNamespace).size();
    const size_t instances = NSchemaView::Instances(cimNamespace).size();
    const std::string& name = cimNamespace.GetName(TCIMOptions());
    if (!json) {
        for (const TFileLoad& load : loads) {
            if (load.m_readable) {
                PrintSummaryLine(load.m_name, load.m_report);
            }
        }
        std::printf(
            "namespace %s: %s, %s, %s\n", name.c_str(),
            Counted(qualifierDecls, "qualifier declaration", "qualifier declarations").c_str(),
            Counted(classes, "class", "classes").c_str(),
            Counted(instances, "instance", "instances").c_str());
        return;
    }
    TJson files = TJson::Array();
    for (const TFileLoad& load : loads) {
        files.Push(ReportJson(load.m_name, load.m_report));
    }
    TJson counts = TJson::Object();
    counts.Append("name", name);
    counts.Append("qualifier_declarations", TJson::Number(uint64_t(qualifierDecls)));
    counts.Append("classes", TJson::Number(uint64_t(classes)));
    counts.Append("instances", TJson::Number(uint64_t(instances)));
    TJson summary = TJson::Object();
    summary.Append("files", std::move(files));
    summary.Append("namespace", std::move(counts));
    summary.Write(std::cout);
    std::cout << '\n';
}

// The plain form: a summary, MOF or CIM-XML of one namespace.
int RunLoad(const TOptions& options) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = KeptNamespace();
    const std::vector<TFileLoad> loads = LoadAll(cimNamespace, options.m_inputs);
    switch (options.m_output) {
    case kMof:
        NMof::WriteNamespace(*cimNamespace, std::cout);
        break;
    case kXml:
        NXmlWriter::WriteCimXml(*cimNamespace, std::cout);
        break;
    case kSummary:
        WriteSummary(*cimNamespace, loads, options.m_json);
    }
    const bool written = FinishOutput();
    return AllClean(loads) && written ? 0 : 1;
}

// As diff(1): 0 for no difference, 1 for differences, 2 when a side did not load cleanly.
int RunDiff(const TOptions& options) {
    const boost::shared_ptr<ICIMNamespace> oldNamespace = KeptNamespace();
    const boost::shared_ptr<ICIMNamespace> newNamespace = KeptNamespace();
    const bool oldClean = AllClean(LoadAll(oldNamespace, options.m_old));
    if (!AllClean(LoadAll(newNamespace, options.m_new)) || !oldClean) {
        FinishOutput();
        return 2;
    }
    const TJson difference = NSchemaDiff::Compare(*oldNamespace, *newNamespace);
    if (options.m_json) {
        difference.Write(std::cout);
        std::cout << '\n';
    } else {
        NSchemaDiff::WriteText(difference, std::cout);
    }
    if (!FinishOutput()) {
        return 2;
    }
    return difference.Empty() ? 0 : 1;
}

int RunTree(const TOptions& options) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = KeptNamespace();
    bool clean = AllClean(LoadAll(cimNamespace, options.m_inputs));
    const std::string root = options.m_names.empty() ? "" : options.m_names.front();
    if (!NSchemaTree::Write(*cimNamespace, root,
                            options.m_json ? NSchemaTree::kJson : NSchemaTree::kText, std::cout)) {
        std::fprintf(stderr, "cimxml: error: no class %s in the namespace\n", root.c_str());
        clean = false;
    }
    clean &= FinishOutput();
    return clean ? 0 : 1;
}

// The element of that name, or an empty handle when the namespace holds none.
template <typename TGet>
auto FindNamed(TGet get) -> decltype(get()) {
    try {
        return get();
    } catch (const TQRNException& error) {
        if (error.GetStatus() != kQRNStatusNotFound) {
            throw;
        }
        return {};
    }
}

// Each name as MOF, or as JSON: an object for one name, an array for several.
int RunShow(const TOptions& options) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = KeptNamespace();
    bool clean = AllClean(LoadAll(cimNamespace, options.m_inputs));
    TJson shown = TJson::Array();
    for (const std::string& name : options.m_names) {
        const auto cimClass =
            FindNamed([&] { return cimNamespace->GetClass(name, TCIMOptions()); });
        const auto declaration = cimClass ? nullptr : FindNamed([&] {
            return cimNamespace->GetQualifierDecl(name, TCIMOptions());
        });
        if (!cimClass && !declaration) {
            std::fprintf(stderr, "cimxml: error: no class or qualifier declaration %s\n",
                         name.c_str());
            clean = false;
        } else if (options.m_json) {
            shown.Push(cimClass ? NDescription::Class(*cimClass, options.m_inherited)
                                : NDescription::QualifierDecl(*declaration));
        } else {
            if (cimClass) {
                NMof::WriteClass(*cimNamespace, *cimClass, std::cout, options.m_inherited);
            } else {
                NMof::WriteQualifierDecl(*declaration, std::cout);
            }
        }
    }
    if (options.m_json && !shown.Empty()) {
        (options.m_names.size() == 1 ? shown.Members().front().second : shown).Write(std::cout);
        std::cout << '\n';
    }
    clean &= FinishOutput();
    return clean ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    TOptions options;
    const int usage = ParseOptions(argc, argv, options);
    if (usage >= 0) {
        return usage;
    }
    ReserveHugePageHeap();
    TQuietLogger quiet;
    TRootObject::SetCoreLogger(&quiet);
    int status = 0;
    switch (options.m_command) {
    case kLoad:
        status = RunLoad(options);
        break;
    case kDiff:
        status = RunDiff(options);
        break;
    case kTree:
        status = RunTree(options);
        break;
    case kShow:
        status = RunShow(options);
    }
    TRootObject::SetCoreLogger(nullptr);
    return status;
}
