// xmlbench: measures the tokenizer and the loaders against the reference XML parsers on the same
// documents in one run, and prints one table of medians and ratios.
#include "Anchors.h"
#include "Counting.h"
#include "Growth.h"
#include "Harness.h"
#include "MofSpeed.h"

#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"
#include "populator/NamespacePopulator.h"
#include "tokenizer/XmlParser.h"

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace NBench;
using namespace NQRN20;
namespace fs = std::filesystem;

const char kUsage[] =
    "usage: xmlbench [--json FILE] [--runs N] [--min-time SECONDS] [--only NAME,...] "
    "[DOCUMENT...]\n"
    "Documents that declare classes are schemas; the others are loaded after all schemas.\n"
    "A DOCUMENT.gz beside a document is measured too. Default: the DMTF schema and instances\n"
    "of the shared corpus, or the bundled examples when the corpus is absent. --only limits the\n"
    "run to the measurements named (memchr, expat, libxml2, pugixml, gzread, tokenizer, dispatch,\n"
    "\"parse into namespace\", \"load file\", \"load file.gz\", one-shot, growth, mof).\n";
// Re-executes the program to load the documents once in a fresh process.
const char kOneShotFlag[] = "--one-shot";
const char kSchemaKind[] = "schema";
const char kInstancesKind[] = "instances";
const int kOneShotRuns = 3;

// The measurements. Every row of the table is also given as a ratio to each of the first five.
const char kMemchr[] = "memchr";
const char kExpat[] = "expat";
const char kLibxml2[] = "libxml2";
const char kPugixml[] = "pugixml";
const char kGzread[] = "gzread";
const char kTokenizer[] = "tokenizer";
const char kDispatch[] = "dispatch";
const char kParse[] = "parse into namespace";
const char kLoad[] = "load file";
const char kLoadGzip[] = "load file.gz";
const char kOneShot[] = "one-shot";
const char kMof[] = "mof";
const char kGrowth[] = "growth";

// The interpreter's floor: every element is dispatched to the top state, which pushes a state
// for it that its end pops, as the CIM-XML states do, but nothing is read or built.
class TDispatchOnlyState : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string&,
                      TAttributeMap& attributes) override {
        parser.PushState(new (parser) TDispatchOnlyState(), attributes);
    }
};

struct TDocument {
    fs::path m_path;
    std::string m_name;
    bool m_schema = false;
    std::vector<char> m_text; // with the zero byte after it
    size_t Size() const { return m_text.size() - 1; }
    fs::path GzipPath() const { return m_path.string() + ".gz"; }
};

std::vector<char> ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "xmlbench: cannot read %s\n", path.c_str());
        std::exit(1);
    }
    std::vector<char> text((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
    text.push_back(0);
    return text;
}

// Schemas first, each kind in the order given.
std::vector<TDocument> ReadDocuments(const std::vector<std::string>& paths) {
    std::vector<TDocument> schemas;
    std::vector<TDocument> others;
    for (const std::string& path : paths) {
        TDocument document;
        document.m_path = path;
        document.m_name = document.m_path.filename().string();
        document.m_text = ReadFile(path);
        document.m_schema = std::strstr(document.m_text.data(), "<CLASS ") != nullptr;
        (document.m_schema ? schemas : others).push_back(std::move(document));
    }
    schemas.insert(schemas.end(), std::make_move_iterator(others.begin()),
                   std::make_move_iterator(others.end()));
    return schemas;
}

std::vector<std::string> DefaultPaths() {
    const fs::path corpus = fs::path(XMLPARSER_SHARED_DIR) / "corpus" / "dmtf";
    if (fs::exists(corpus / "cim_schema.xml") && fs::exists(corpus / "instances.xml")) {
        return {(corpus / "cim_schema.xml").string(), (corpus / "instances.xml").string()};
    }
    const fs::path examples(XMLPARSER_EXAMPLES_DIR);
    return {(examples / "schema.xml").string(), (examples / "instances.xml").string()};
}

// A fresh namespace holding the schemas that come before the document. Documents are told apart
// by path, since the list may be a copy of the one the document came from.
boost::shared_ptr<ICIMNamespace> NamespaceFor(const std::vector<TDocument>& documents,
                                              const TDocument& document) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    for (const TDocument& schema : documents) {
        if (schema.m_path == document.m_path || !schema.m_schema) {
            break;
        }
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, schema.m_path.string());
    }
    return cimNamespace;
}

// Whether parsing the document adds every class and instance it holds to the namespace: one that
// already holds them would reject them all, and time that instead.
bool ParseAddsObjects(const boost::shared_ptr<ICIMNamespace>& cimNamespace, char* text) {
    size_t classes = 0;
    const auto count = [&classes](boost::shared_ptr<ICIMClass>) { return ++classes != 0; };
    cimNamespace->EnumClasses(count, TCIMOptions());
    const size_t before = classes;
    TCIMXMLParser parser(cimNamespace);
    parser.Parse(text);
    classes = 0;
    cimNamespace->EnumClasses(count, TCIMOptions());
    const size_t collected = parser.GetClassesCollected().size();
    return classes - before == collected && collected + parser.GetInstancesCollected().size() > 0;
}

// Loads every document into a new namespace, as a user's program would.
boost::shared_ptr<ICIMNamespace> LoadAll(const std::vector<TDocument>& documents) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    for (const TDocument& document : documents) {
        if (document.m_schema) {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, document.m_path.string());
        } else {
            TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, document.m_path.string());
        }
    }
    return cimNamespace;
}

uint64_t PeakResidentKib() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, 6, "VmHWM:") == 0) {
            return std::strtoull(line.c_str() + 6, nullptr, 10);
        }
    }
    return 0;
}

// The child's side: the arguments are pairs of a kind ("schema" or "instances") and a path. The
// files are read only through the loaders; prints the time and the peak resident memory.
int RunOneShot(const std::vector<std::string>& arguments) {
    TCountingLogger logger;
    TRootObject::SetCoreLogger(&logger);
    std::vector<TDocument> documents;
    for (size_t i = 0; i + 1 < arguments.size(); i += 2) {
        TDocument document;
        document.m_schema = arguments[i] == kSchemaKind;
        document.m_path = arguments[i + 1];
        documents.push_back(document);
    }
    const auto start = std::chrono::steady_clock::now();
    const boost::shared_ptr<ICIMNamespace> loaded = LoadAll(documents);
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%.6f %llu\n", seconds, static_cast<unsigned long long>(PeakResidentKib()));
    return 0;
}

struct TOneShot {
    double m_seconds = 0;
    uint64_t m_peakKib = 0;
};

std::vector<char*> ArgumentVector(std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    return argv;
}

// Runs the loads in a fresh process: this program again.
TOneShot SpawnOneShot(const std::vector<TDocument>& documents) {
    std::vector<std::string> arguments{"xmlbench", kOneShotFlag};
    for (const TDocument& document : documents) {
        arguments.push_back(document.m_schema ? kSchemaKind : kInstancesKind);
        arguments.push_back(document.m_path.string());
    }
    std::vector<char*> argv = ArgumentVector(arguments);
    int channel[2];
    if (pipe(channel) != 0) {
        return {};
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(channel[1], STDOUT_FILENO);
        close(channel[0]);
        close(channel[1]);
        execv("/proc/self/exe", argv.data());
        _exit(127);
    }
    close(channel[1]);
    std::string output;
    char chunk[256];
    for (ssize_t read; (read = ::read(channel[0], chunk, sizeof chunk)) > 0;) {
        output.append(chunk, size_t(read));
    }
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    TOneShot result;
    unsigned long long peak = 0;
    if (std::sscanf(output.c_str(), "%lf %llu", &result.m_seconds, &peak) != 2) {
        std::fprintf(stderr, "xmlbench: the one-shot load failed\n");
    }
    result.m_peakKib = peak;
    return result;
}

// The seconds the cimxml tool takes, from its start to its exit, to load the documents and
// print its summary; 0 when it fails.
double SpawnCimxml(const std::vector<TDocument>& documents) {
    std::vector<std::string> arguments{"cimxml"};
    bool instances = false;
    for (const TDocument& document : documents) {
        if (!document.m_schema && !instances) {
            arguments.push_back("--instances");
            instances = true;
        }
        arguments.push_back(document.m_path.string());
    }
    std::vector<char*> argv = ArgumentVector(arguments);
    // Spawned rather than forked: a fork would first copy the page tables of this process, which
    // holds every document and namespace of the run, and the tool would be charged for that.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int spawned =
        posix_spawn(&child, XMLPARSER_CIMXML_TOOL, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (spawned != 0 || waitpid(child, &status, 0) != child) {
        std::fprintf(stderr, "xmlbench: cannot run cimxml\n");
        return 0;
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "xmlbench: cimxml failed\n");
        return 0;
    }
    return seconds;
}

class TBench {
public:
    TBench(std::vector<TDocument> documents, TTiming timing, std::string only)
        : m_documents(std::move(documents)), m_timing(timing), m_only(std::move(only)) {}

    void MeasureDocument(const TDocument& document);
    const std::vector<TResult>& Results() const { return m_results; }
    uint64_t LoggedLines() const { return m_logger.m_lines; }
    const std::string& FirstLogged() const { return m_logger.m_first; }

private:
    void Add(const std::string& name, const TWorkload& workload);
    void RunInterleaved(const TDocument& document);
    void Check(bool ok, const TDocument& document, const char* name);

    std::vector<TDocument> m_documents;
    TTiming m_timing;
    std::string m_only;
    std::vector<TResult> m_results;
    TCountingLogger m_logger;
    // The measurements of the current document, run one after the other in every round.
    std::vector<std::pair<std::string, TWorkload>> m_pending;
};

// Whether the comma-separated list names the measurement; an empty list names all of them.
bool Selected(const std::string& list, const std::string& name) {
    return list.empty() || ("," + list + ",").find("," + name + ",") != std::string::npos;
}

void TBench::Add(const std::string& name, const TWorkload& workload) {
    if (Selected(m_only, name)) {
        m_pending.push_back({name, workload});
    }
}

// Each round takes one run of every measurement, all of them in turns over the same seconds, so
// that a machine whose speed drifts slows all of them alike, and the ratios stay fair.
void TBench::RunInterleaved(const TDocument& document) {
    std::vector<const TWorkload*> workloads;
    for (const auto& pending : m_pending) {
        WarmUp(pending.second);
        workloads.push_back(&pending.second);
    }
    std::vector<std::vector<double>> runs(m_pending.size());
    for (int round = 0; round < m_timing.m_runs; ++round) {
        std::fprintf(stderr, "  %s: round %d of %d\n", document.m_name.c_str(), round + 1,
                     m_timing.m_runs);
        const std::vector<double> throughputs =
            MeasureRunsTogether(workloads, document.Size(), m_timing.m_minSeconds);
        for (size_t i = 0; i < m_pending.size(); ++i) {
            runs[i].push_back(throughputs[i]);
        }
    }
    for (size_t i = 0; i < m_pending.size(); ++i) {
        TResult result;
        result.m_document = document.m_name;
        result.m_name = m_pending[i].first;
        result.m_bytes = document.Size();
        result.m_runs = runs[i];
        result.m_median = Median(runs[i]);
        m_results.push_back(result);
    }
    m_pending.clear();
}

void TBench::Check(bool ok, const TDocument& document, const char* name) {
    if (!ok) {
        std::fprintf(stderr, "xmlbench: %s failed on %s\n", name, document.m_name.c_str());
    }
}

void TBench::MeasureDocument(const TDocument& document) {
    TRootObject::SetCoreLogger(&m_logger);
    const size_t size = document.Size();
    std::vector<char> work(document.m_text.size());
    const auto copy = [&] { std::memcpy(work.data(), document.m_text.data(), work.size()); };
    uint64_t sink = 0;

    copy();
    Check(CountLessThan(work.data(), size) > 0, document, kMemchr);
    Add(kMemchr, {copy, [&] { sink += CountLessThan(work.data(), size); }, {}});
    Check(ParseExpat(work.data(), size) > 0, document, kExpat);
    Add(kExpat, {copy, [&] { sink += ParseExpat(work.data(), size); }, {}});
    Check(ParseLibxml2Sax(work.data(), size) > 0, document, kLibxml2);
    Add(kLibxml2, {copy, [&] { sink += ParseLibxml2Sax(work.data(), size); }, {}});
    Check(ParsePugixmlInPlace(work.data(), size) > 0, document, kPugixml);
    Add(kPugixml, {copy, [&] { sink += ParsePugixmlInPlace(work.data(), size); }, {}});
    const std::string gzipPath = document.GzipPath().string();
    const bool gzip = fs::exists(gzipPath);
    if (gzip) {
        Check(ReadGzip(gzipPath, work.data(), size) == size, document, kGzread);
        Add(kGzread, {{}, [&] { sink += ReadGzip(gzipPath, work.data(), size); }, {}});
    }

    const auto tokenize = [&] {
        TCountingTokenizer tokenizer;
        tokenizer.Parse(work.data());
        sink += tokenizer.m_count;
        return !tokenizer.m_failed;
    };
    copy();
    Check(tokenize(), document, kTokenizer);
    Add(kTokenizer, {copy, tokenize, {}});
    const auto dispatch = [&] {
        TCIMXMLParser parser(TMemoryNamespace::Create());
        TAttributeMap none;
        parser.PushState(new (parser) TDispatchOnlyState(), none);
        parser.Parse(work.data());
    };
    Add(kDispatch, {copy, dispatch, {}});

    boost::shared_ptr<ICIMNamespace> cimNamespace;
    const auto fresh = [&] {
        copy();
        cimNamespace = NamespaceFor(m_documents, document);
    };
    const auto release = [&] { cimNamespace.reset(); };
    const auto parse = [&] {
        TCIMXMLParser parser(cimNamespace);
        parser.Parse(work.data());
        sink += parser.GetClassesCollected().size() + parser.GetInstancesCollected().size();
    };
    fresh();
    Check(ParseAddsObjects(cimNamespace, work.data()), document, kParse);
    release();
    Add(kParse, {fresh, parse, release});

    const auto load = [&](const std::string& path) {
        if (document.m_schema) {
            sink += TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path).size();
        } else {
            sink += TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, path).size();
        }
    };
    const std::string plainPath = document.m_path.string();
    Add(kLoad, {fresh, [&] { load(plainPath); }, release});
    if (gzip) {
        Add(kLoadGzip, {fresh, [&] { load(gzipPath); }, release});
    }
    RunInterleaved(document);
    if (sink == 0) {
        std::fprintf(stderr, "xmlbench: nothing was seen\n");
    }
    TRootObject::SetCoreLogger(nullptr);
}

// Adds the check of a ratio, unless one of its figures was not measured.
void AddRatio(std::vector<TCheck>& checks, const std::string& what, double ratio, double limit,
              bool atLeast) {
    if (ratio > 0) {
        checks.push_back({what, ratio, limit, atLeast});
    }
}

std::vector<TCheck> Targets(const std::vector<TResult>& results,
                            const std::vector<TDocument>& documents, const TOneShot& oneShot) {
    std::vector<TCheck> checks;
    uint64_t plainBytes = 0;
    for (const TDocument& document : documents) {
        const std::string& name = document.m_name;
        plainBytes += document.Size();
        AddRatio(checks, name + ": tokenizer / libxml2 SAX2",
                 RatioOf(results, name, kTokenizer, kLibxml2), 1.0, true);
        AddRatio(checks, name + ": tokenizer / expat", RatioOf(results, name, kTokenizer, kExpat),
                 2.5, true);
        AddRatio(checks, name + ": parse into namespace / expat",
                 RatioOf(results, name, kParse, kExpat), 2.0, true);
        // In times per byte: the .gz load against inflating plus the plain load.
        const double gzread = Find(results, name, kGzread);
        const double load = Find(results, name, kLoad);
        const double gzipLoad = Find(results, name, kLoadGzip);
        if (gzread > 0 && load > 0 && gzipLoad > 0) {
            AddRatio(checks, name + ".gz load time / (gzread + plain load)",
                     (1 / gzipLoad) / (1 / gzread + 1 / load), 1.05, false);
        }
    }
    if (oneShot.m_peakKib > 0) {
        checks.push_back({"peak resident MB of one whole load (fresh process)",
                          double(oneShot.m_peakKib) * 1024 / 1e6, 2 * double(plainBytes) / 1e6 + 10,
                          false});
    }
    return checks;
}

// One whole load of every document in a fresh process, beside the same loads in a warm one.
struct TFreshFigures {
    double m_documentsMb = 0;
    double m_loadMbps = 0;   // the library's loads, timed inside the fresh process
    double m_cimxmlMbps = 0; // the cimxml tool, from its start to its exit
    double m_warmMbps = 0;   // the loads of the files in this process, one after the other
    uint64_t m_peakKib = 0;
};

TFreshFigures FreshFigures(const std::vector<TDocument>& documents,
                           const std::vector<TResult>& results, const TOneShot& oneShot,
                           double cimxmlSeconds) {
    TFreshFigures figures;
    double warmSeconds = 0;
    for (const TDocument& document : documents) {
        figures.m_documentsMb += double(document.Size()) / 1e6;
        const double load = Find(results, document.m_name, kLoad);
        warmSeconds += load > 0 ? double(document.Size()) / 1e6 / load : 0;
    }
    const auto rate = [&](double seconds) {
        return seconds > 0 ? figures.m_documentsMb / seconds : 0;
    };
    figures.m_loadMbps = rate(oneShot.m_seconds);
    figures.m_cimxmlMbps = rate(cimxmlSeconds);
    figures.m_warmMbps = rate(warmSeconds);
    figures.m_peakKib = oneShot.m_peakKib;
    return figures;
}

void PrintFresh(const TFreshFigures& figures) {
    std::printf("\nall %.1f MB of documents loaded into one namespace (median of %d):\n",
                figures.m_documentsMb, kOneShotRuns);
    std::printf("  %-48s %6.0f MB/s, peak resident %.1f MB\n",
                "one-shot, library loads in a fresh process", figures.m_loadMbps,
                double(figures.m_peakKib) * 1024 / 1e6);
    std::printf("  %-48s %6.0f MB/s\n", "one-shot, cimxml from start to exit",
                figures.m_cimxmlMbps);
    std::printf("  %-48s %6.0f MB/s\n", "warm, load file in this process", figures.m_warmMbps);
}

struct TOptions {
    std::string m_json;
    std::string m_only;
    TTiming m_timing;
    std::vector<std::string> m_paths;
};

bool ParseOptions(int argc, char** argv, TOptions& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--json" && hasValue) {
            options.m_json = argv[++i];
        } else if (argument == "--only" && hasValue) {
            options.m_only = argv[++i];
        } else if (argument == "--runs" && hasValue) {
            options.m_timing.m_runs = std::atoi(argv[++i]);
        } else if (argument == "--min-time" && hasValue) {
            options.m_timing.m_minSeconds = std::atof(argv[++i]);
        } else if (argument.compare(0, 2, "--") == 0) {
            return false;
        } else {
            options.m_paths.push_back(argument);
        }
    }
    if (options.m_paths.empty()) {
        options.m_paths = DefaultPaths();
    }
    return options.m_timing.m_runs > 0 && options.m_timing.m_minSeconds >= 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], kOneShotFlag) == 0) {
        return RunOneShot(std::vector<std::string>(argv + 2, argv + argc));
    }
    TOptions options;
    if (!ParseOptions(argc, argv, options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    // Freed memory stays in the process, so that repeated runs measure parsing rather than the
    // kernel handing out fresh pages. The one-shot load above runs without this.
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);

    std::vector<TDocument> documents = ReadDocuments(options.m_paths);
    TBench bench(documents, options.m_timing, options.m_only);
    for (const TDocument& document : documents) {
        bench.MeasureDocument(document);
    }
    TOneShot oneShot;
    std::vector<double> oneShotSeconds;
    std::vector<double> cimxmlSeconds;
    for (int run = 0; run < kOneShotRuns && Selected(options.m_only, kOneShot); ++run) {
        const TOneShot result = SpawnOneShot(documents);
        oneShotSeconds.push_back(result.m_seconds);
        oneShot.m_peakKib = std::max(oneShot.m_peakKib, result.m_peakKib);
        cimxmlSeconds.push_back(SpawnCimxml(documents));
    }
    oneShot.m_seconds = Median(oneShotSeconds);
    const std::vector<TGrowth> growth = Selected(options.m_only, kGrowth)
                                            ? MeasureGrowth(options.m_timing)
                                            : std::vector<TGrowth>();
    const std::vector<TGrowth> mofGrowth =
        Selected(options.m_only, kMof) ? std::vector<TGrowth>{MeasureMofGrowth(options.m_timing)}
                                       : std::vector<TGrowth>();

    const std::vector<std::string> references{kMemchr, kExpat, kLibxml2, kPugixml, kGzread};
    const std::vector<TResult>& results = bench.Results();
    std::printf("median of %d runs of >= %.2f s each; MB/s of uncompressed document (10^6 "
                "bytes); /X is the ratio to X on the same document\n\n",
                options.m_timing.m_runs, options.m_timing.m_minSeconds);
    PrintTable(results, references);
    const TFreshFigures fresh = FreshFigures(documents, results, oneShot, Median(cimxmlSeconds));
    if (oneShot.m_peakKib > 0) {
        PrintFresh(fresh);
    }
    PrintGrowth("generated documents", growth);
    std::vector<TMofSpeed> mofSpeeds;
    for (const TDocument& document : documents) {
        if (document.m_schema && Selected(options.m_only, kMof)) {
            mofSpeeds.push_back(MeasureMofSpeed(document.m_path.string(), options.m_timing));
            PrintMofSpeed(mofSpeeds.back());
        }
    }
    PrintGrowth("generated schemas as MOF", mofGrowth);
    if (bench.LoggedLines() > 0) {
        std::printf("the loads logged %llu lines, the first: %s\n",
                    static_cast<unsigned long long>(bench.LoggedLines()),
                    bench.FirstLogged().c_str());
    }
    std::printf("\ntargets:\n");
    std::vector<TCheck> checks = Targets(results, documents, oneShot);
    AddRatio(checks, "one-shot cimxml of all documents, MB/s", fresh.m_cimxmlMbps, 250, true);
    AddGrowthChecks(growth, checks);
    AddGrowthChecks(mofGrowth, checks);
    for (const TMofSpeed& speed : mofSpeeds) {
        AddRatio(checks, speed.m_schema + " as MOF: compile / load CIM-XML, MB/s",
                 speed.m_xmlMbps > 0 ? speed.m_mofMbps / speed.m_xmlMbps : 0, 1.0, true);
    }
    PrintChecks(checks);
    if (!options.m_json.empty()) {
        std::vector<std::pair<std::string, double>> figures{
            {"one_shot_mbps", fresh.m_loadMbps},
            {"one_shot_seconds", oneShot.m_seconds},
            {"cimxml_one_shot_mbps", fresh.m_cimxmlMbps},
            {"warm_load_mbps", fresh.m_warmMbps},
            {"peak_resident_mb", double(oneShot.m_peakKib) * 1024 / 1e6},
            {"documents_mb", fresh.m_documentsMb}};
        for (const std::vector<TGrowth>* rows : {&growth, &mofGrowth}) {
            for (const TGrowth& row : *rows) {
                figures.push_back({row.m_what + " at " + row.m_small, row.m_smallCost});
                figures.push_back({row.m_what + " at " + row.m_large, row.m_largeCost});
            }
        }
        WriteJson(options.m_json, results, references, checks, figures);
    }
    ReleaseAnchors();
    return 0;
}
