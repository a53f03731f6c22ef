// Growth: time per byte across generated document sizes, and time per error across error counts.
#include "Growth.h"

#include "Counting.h"
#include "Generated.h"

#include "cimxml/CIMXMLParser.h"
#include "core/MemoryNamespace.h"

#include <cstdio>
#include <cstring>

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

// Nanoseconds per unit of the median run, where units is what one run processes.
double CostOf(const TWorkload& workload, const TBuffer& buffer, double units,
              const TTiming& timing) {
    const double mbps = Median(Measure(workload, buffer.m_text.size(), timing));
    return mbps > 0 ? double(buffer.m_text.size()) / (mbps * 1e6) / units * 1e9 : 0;
}

double TokenizerCost(TBuffer& buffer, const TTiming& timing) {
    const auto run = [&] {
        TCountingTokenizer tokenizer;
        tokenizer.Parse(buffer.m_work.data());
    };
    return CostOf({[&] { buffer.Refresh(); }, run, {}}, buffer, double(buffer.m_text.size()),
                  timing);
}

// The whole parse into a fresh namespace, which is freed outside the timed region.
double ParseCost(TBuffer& buffer, double units, const TTiming& timing) {
    boost::shared_ptr<ICIMNamespace> cimNamespace;
    const auto prepare = [&] {
        buffer.Refresh();
        cimNamespace = TMemoryNamespace::Create();
    };
    const auto run = [&] {
        TCIMXMLParser parser(cimNamespace);
        parser.Parse(buffer.m_work.data());
    };
    return CostOf({prepare, run, [&] { cimNamespace.reset(); }}, buffer, units, timing);
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
        growth.push_back({"tokenizer, ns per byte", "1 MB", "64 MB", TokenizerCost(small, timing),
                          TokenizerCost(large, timing)});
        growth.push_back({"parse into namespace, ns per byte", "1 MB", "64 MB",
                          ParseCost(small, double(small.m_text.size()), timing),
                          ParseCost(large, double(large.m_text.size()), timing)});
    }
    std::fprintf(stderr, "  documents with 10^4 and 10^5 errors\n");
    TBuffer few(GenerateErrors(kFewErrors));
    TBuffer many(GenerateErrors(kManyErrors));
    growth.push_back({"parse with errors, ns per error", "10^4", "10^5",
                      ParseCost(few, double(kFewErrors), timing),
                      ParseCost(many, double(kManyErrors), timing)});
    if (logger.m_lines == 0) {
        std::fprintf(stderr, "xmlbench: the documents with errors logged nothing\n");
    }
    TRootObject::SetCoreLogger(nullptr);
    return growth;
}

void PrintGrowth(const std::vector<TGrowth>& growth) {
    std::printf("\n%-36s %8s %10s %8s %10s %7s\n", "generated documents", "small", "cost", "large",
                "cost", "ratio");
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
