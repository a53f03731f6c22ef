// Growth: time per byte across generated document sizes, and time per error across error counts.
#include "Growth.h"

#include "Counting.h"
#include "Generated.h"

#include "cimxml/CIMXMLParser.h"
#include "core/MemoryNamespace.h"

#include <cstdio>
#include <cstring>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace NBench {

namespace {

using namespace NQRN20;

const size_t kSmallDocument = size_t(1) << 20;
const size_t kLargeDocument = size_t(64) << 20;
const size_t kFewErrors = 10000;
const size_t kManyErrors = 100000;
const double kGrowthLimit = 1.2;

// A document and the buffer each timed run scans, refreshed before every run.
struct TBuffer {
    explicit TBuffer(std::string text) : m_text(std::move(text)), m_work(m_text.size() + 1) {}
    void Refresh() { std::memcpy(m_work.data(), m_text.c_str(), m_work.size()); }

    std::string m_text;
    std::vector<char> m_work;
};

// Runs the measurement in a child forked for it and gives its figure, or 0 when the child failed.
// Every child starts from the same heap, so what one measurement frees cannot shape the next.
double InChild(const std::function<double()>& measure) {
    int channel[2];
    if (pipe(channel) != 0) {
        return 0;
    }
    const pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        const double figure = measure();
        const bool written = write(channel[1], &figure, sizeof figure) == ssize_t(sizeof figure);
        _exit(written ? 0 : 1);
    }
    close(channel[1]);
    double figure = 0;
    if (child < 0 || read(channel[0], &figure, sizeof figure) != ssize_t(sizeof figure)) {
        std::fprintf(stderr, "xmlbench: a measurement in a child process failed\n");
        figure = 0;
    }
    close(channel[0]);
    if (child > 0) {
        waitpid(child, nullptr, 0);
    }
    return figure;
}

} // namespace

// Each round times both in turns, so that the machine's drift does not fall on one of them only.
// Apart, each round runs each in a child of its own: workloads that build namespaces leave the
// heap in a state the other's runs would inherit, and a 1 MB parse ran a third faster in memory
// that a 64 MB one had just freed.
std::pair<double, double> CostsOf(const TWorkload& small, double smallUnits, const TWorkload& large,
                                  double largeUnits, bool together, const TTiming& timing) {
    // Microseconds per run: with one byte per run, the throughputs are runs per microsecond.
    const auto measure = [&timing](const std::vector<const TWorkload*>& workloads) {
        std::vector<double> times;
        for (const double rate : MeasureRunsTogether(workloads, 1, timing.m_minSeconds)) {
            times.push_back(1e3 / rate);
        }
        return times;
    };
    const auto alone = [&measure](const TWorkload& workload) {
        return InChild([&] {
            WarmUp(workload);
            return measure({&workload}).front();
        });
    };
    std::vector<double> smallTimes;
    std::vector<double> largeTimes;
    if (together) {
        WarmUp(small);
        WarmUp(large);
    }
    for (int round = 0; round < timing.m_runs; ++round) {
        const std::vector<double> times =
            together ? measure({&small, &large}) : std::vector<double>{alone(small), alone(large)};
        smallTimes.push_back(times[0]);
        largeTimes.push_back(times[1]);
    }
    return {Median(smallTimes) / smallUnits, Median(largeTimes) / largeUnits};
}

namespace {

TWorkload TokenizerWorkload(TBuffer& buffer) {
    const auto run = [&buffer] {
        TCountingTokenizer tokenizer;
        tokenizer.Parse(buffer.m_work.data());
    };
    return {[&buffer] { buffer.Refresh(); }, run, {}};
}

// The whole parse into a fresh namespace, which is freed outside the timed region.
TWorkload ParseWorkload(TBuffer& buffer, boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    const auto prepare = [&buffer, &cimNamespace] {
        buffer.Refresh();
        cimNamespace = TMemoryNamespace::Create();
    };
    const auto run = [&buffer, &cimNamespace] {
        TCIMXMLParser parser(cimNamespace);
        parser.Parse(buffer.m_work.data());
    };
    return {prepare, run, [&cimNamespace] { cimNamespace.reset(); }};
}

TGrowth ParseGrowth(const std::string& what, const std::string& smallName, TBuffer& small,
                    double smallUnits, const std::string& largeName, TBuffer& large,
                    double largeUnits, bool together, const TTiming& timing) {
    boost::shared_ptr<ICIMNamespace> smallNamespace;
    boost::shared_ptr<ICIMNamespace> largeNamespace;
    const std::pair<double, double> costs =
        CostsOf(ParseWorkload(small, smallNamespace), smallUnits,
                ParseWorkload(large, largeNamespace), largeUnits, together, timing);
    return {what, smallName, largeName, costs.first, costs.second};
}

} // namespace

std::vector<TGrowth> MeasureGrowth(const TTiming& timing) {
    TCountingLogger logger;
    TRootObject::SetCoreLogger(&logger);
    std::vector<TGrowth> growth;
    {
        std::fprintf(stderr, "  generated schemas of 1 and 64 MB\n");
        TBuffer small(GenerateSchema(kSmallDocument));
        TBuffer large(GenerateSchema(kLargeDocument));
        const double smallBytes = double(small.m_text.size());
        const double largeBytes = double(large.m_text.size());
        const std::pair<double, double> tokenizer =
            CostsOf(TokenizerWorkload(small), smallBytes, TokenizerWorkload(large), largeBytes,
                    true, timing);
        growth.push_back(
            {"tokenizer, ns per byte", "1 MB", "64 MB", tokenizer.first, tokenizer.second});
        growth.push_back(ParseGrowth("parse into namespace, ns per byte", "1 MB", small, smallBytes,
                                     "64 MB", large, largeBytes, false, timing));
    }
    std::fprintf(stderr, "  documents with 10^4 and 10^5 errors\n");
    TBuffer few(GenerateErrors(kFewErrors));
    TBuffer many(GenerateErrors(kManyErrors));
    growth.push_back(ParseGrowth("parse with errors, ns per error", "10^4", few, double(kFewErrors),
                                 "10^5", many, double(kManyErrors), true, timing));
    if (logger.m_lines == 0) {
        std::fprintf(stderr, "xmlbench: the documents with errors logged nothing\n");
    }
    TRootObject::SetCoreLogger(nullptr);
    return growth;
}

void PrintGrowth(const std::string& title, const std::vector<TGrowth>& growth) {
    if (growth.empty()) {
        return;
    }
    std::printf("\n%-36s %8s %10s %8s %10s %7s\n", title.c_str(), "small", "cost", "large", "cost",
                "ratio");
    for (const TGrowth& row : growth) {
        std::printf("%-36s %8s %10.2f %8s %10.2f %7.2f\n", row.m_what.c_str(), row.m_small.c_str(),
                    row.m_smallCost, row.m_large.c_str(), row.m_largeCost, row.Ratio());
    }
}

void AddGrowthChecks(const std::vector<TGrowth>& growth, std::vector<TCheck>& checks) {
    for (const TGrowth& row : growth) {
        if (row.m_smallCost > 0 && row.m_largeCost > 0) {
            checks.push_back({row.m_what + ", " + row.m_large + " / " + row.m_small, row.Ratio(),
                              kGrowthLimit, false});
        }
    }
}

} // namespace NBench
