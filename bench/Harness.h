// The benchmark's timing loop, its results and their table and JSON forms.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace NBench {

// One operation to time. Prepare and Finish run outside the timed region, before and after
// every iteration (a fresh copy of the buffer, a fresh namespace, freeing what was built).
struct TWorkload {
    std::function<void()> m_prepare;
    std::function<void()> m_run;
    std::function<void()> m_finish;
};

struct TTiming {
    double m_minSeconds = 0.5; // timed time per run
    int m_runs = 5;
};

// One untimed run: a workload's first run pays for growing the heap and for the first touches of
// its memory, which the targets, measured in a warm process, leave out.
void WarmUp(const TWorkload& workload);

// One run of each workload, taken together: they repeat in turns, a short slice of time each,
// until each has its minimum. A machine whose speed drifts then slows all of them alike.
std::vector<double> MeasureRunsTogether(const std::vector<const TWorkload*>& workloads,
                                        uint64_t bytes, double minSeconds);

double Median(std::vector<double> values);

struct TResult {
    std::string m_document;
    std::string m_name;
    uint64_t m_bytes = 0;
    std::vector<double> m_runs; // MB/s
    double m_median = 0;        // MB/s
};

// A target of the issue, checked against the results.
struct TCheck {
    std::string m_what;
    double m_value = 0;
    double m_limit = 0;
    bool m_atLeast = true; // the value must reach the limit, or else stay at or below it
    bool Holds() const { return m_atLeast ? m_value >= m_limit : m_value <= m_limit; }
};

// The results of one document as rows: throughput and its ratio to each reference.
void PrintTable(const std::vector<TResult>& results, const std::vector<std::string>& references);
void PrintChecks(const std::vector<TCheck>& checks);
void WriteJson(const std::string& path, const std::vector<TResult>& results,
               const std::vector<std::string>& references, const std::vector<TCheck>& checks,
               const std::vector<std::pair<std::string, double>>& figures);

const TResult* FindResult(const std::vector<TResult>& results, const std::string& document,
                          const std::string& name);
// The ratio of two measurements of one document. Measured in the same rounds, it is the median
// of the ratios within each round, so that the machine's drift between rounds cancels out;
// otherwise the ratio of the medians.
double RatioOf(const TResult& value, const TResult& reference);
// The same by names; 0 when either was not measured.
double RatioOf(const std::vector<TResult>& results, const std::string& document,
               const std::string& name, const std::string& reference);
// The median of the named measurement of the document, or 0 when it was not made.
double Find(const std::vector<TResult>& results, const std::string& document,
            const std::string& name);

} // namespace NBench
