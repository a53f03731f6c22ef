// The benchmark's timing loop, medians, and the printed table and JSON file.
#include "Harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>

namespace NBench {

namespace {

double Ratio(double value, double reference) {
    return reference > 0 ? value / reference : 0;
}

std::string Quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    return out + '"';
}

} // namespace

namespace {

// A run in progress: its timed time and iterations so far.
struct TRun {
    double m_timed = 0;
    uint64_t m_iterations = 0;
};

// Repeats the workload until the run's timed time reaches the given mark, at least once.
void RunUntil(const TWorkload& workload, TRun& run, double mark) {
    using TClock = std::chrono::steady_clock;
    do {
        if (workload.m_prepare) {
            workload.m_prepare();
        }
        const TClock::time_point start = TClock::now();
        workload.m_run();
        run.m_timed += std::chrono::duration<double>(TClock::now() - start).count();
        if (workload.m_finish) {
            workload.m_finish();
        }
        ++run.m_iterations;
    } while (run.m_timed < mark);
}

} // namespace

void WarmUp(const TWorkload& workload) {
    TRun run;
    RunUntil(workload, run, 0);
}

std::vector<double> MeasureRunsTogether(const std::vector<const TWorkload*>& workloads,
                                        uint64_t bytes, double minSeconds) {
    // Short enough that the workloads take turns many times within a run.
    const double kSlice = 0.02;
    std::vector<TRun> runs(workloads.size());
    for (double mark = kSlice;; mark += kSlice) {
        bool done = true;
        for (size_t i = 0; i < workloads.size(); ++i) {
            if (runs[i].m_timed < minSeconds) {
                RunUntil(*workloads[i], runs[i], std::min(mark, minSeconds));
                done = done && runs[i].m_timed >= minSeconds;
            }
        }
        if (done) {
            break;
        }
    }
    std::vector<double> throughputs;
    for (const TRun& run : runs) {
        throughputs.push_back(double(bytes) * double(run.m_iterations) / run.m_timed / 1e6);
    }
    return throughputs;
}

double Median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double Find(const std::vector<TResult>& results, const std::string& document,
            const std::string& name) {
    const TResult* result = FindResult(results, document, name);
    return result != nullptr ? result->m_median : 0;
}

const TResult* FindResult(const std::vector<TResult>& results, const std::string& document,
                          const std::string& name) {
    for (const TResult& result : results) {
        if (result.m_document == document && result.m_name == name) {
            return &result;
        }
    }
    return nullptr;
}

double RatioOf(const TResult& value, const TResult& reference) {
    if (value.m_runs.size() != reference.m_runs.size()) {
        return Ratio(value.m_median, reference.m_median);
    }
    std::vector<double> ratios;
    for (size_t round = 0; round < value.m_runs.size(); ++round) {
        ratios.push_back(Ratio(value.m_runs[round], reference.m_runs[round]));
    }
    return Median(ratios);
}

double RatioOf(const std::vector<TResult>& results, const std::string& document,
               const std::string& name, const std::string& reference) {
    const TResult* value = FindResult(results, document, name);
    const TResult* base = FindResult(results, document, reference);
    return value != nullptr && base != nullptr ? RatioOf(*value, *base) : 0;
}

void PrintTable(const std::vector<TResult>& results, const std::vector<std::string>& references) {
    std::printf("%-16s %-34s %9s", "document", "measurement", "MB/s");
    for (const std::string& reference : references) {
        std::printf(" %9.9s", ("/" + reference).c_str());
    }
    std::printf("\n");
    std::string previous;
    for (const TResult& result : results) {
        if (!previous.empty() && result.m_document != previous) {
            std::printf("\n");
        }
        previous = result.m_document;
        std::printf("%-16.16s %-34.34s %9.0f", result.m_document.c_str(), result.m_name.c_str(),
                    result.m_median);
        for (const std::string& reference : references) {
            const TResult* base = FindResult(results, result.m_document, reference);
            if (base != nullptr) {
                std::printf(" %9.2f", RatioOf(result, *base));
            } else {
                std::printf(" %9s", "-");
            }
        }
        std::printf("\n");
    }
}

void PrintChecks(const std::vector<TCheck>& checks) {
    for (const TCheck& check : checks) {
        std::printf("%-4s %-70s %8.2f %s %.2f\n", check.Holds() ? "ok" : "MISS",
                    check.m_what.c_str(), check.m_value,
                    check.m_atLeast ? ">=" : "<=", check.m_limit);
    }
}

void WriteJson(const std::string& path, const std::vector<TResult>& results,
               const std::vector<std::string>& references, const std::vector<TCheck>& checks,
               const std::vector<std::pair<std::string, double>>& figures) {
    std::ofstream out(path);
    out << "{\n  \"results\": [\n";
    for (size_t i = 0; i < results.size(); ++i) {
        const TResult& result = results[i];
        out << "    {\"document\": " << Quoted(result.m_document)
            << ", \"measurement\": " << Quoted(result.m_name) << ", \"bytes\": " << result.m_bytes
            << ", \"median_mbps\": " << result.m_median << ", \"runs_mbps\": [";
        for (size_t run = 0; run < result.m_runs.size(); ++run) {
            out << (run ? ", " : "") << result.m_runs[run];
        }
        out << "], \"ratios\": {";
        bool first = true;
        for (const std::string& reference : references) {
            const TResult* base = FindResult(results, result.m_document, reference);
            if (base != nullptr) {
                out << (first ? "" : ", ") << Quoted(reference) << ": " << RatioOf(result, *base);
                first = false;
            }
        }
        out << "}}" << (i + 1 < results.size() ? "," : "") << "\n";
    }
    out << "  ],\n  \"figures\": {";
    for (size_t i = 0; i < figures.size(); ++i) {
        out << (i ? ", " : "") << Quoted(figures[i].first) << ": " << figures[i].second;
    }
    out << "},\n  \"targets\": [\n";
    for (size_t i = 0; i < checks.size(); ++i) {
        const TCheck& check = checks[i];
        out << "    {\"target\": " << Quoted(check.m_what) << ", \"value\": " << check.m_value
            << ", \"limit\": " << check.m_limit
            << ", \"at_least\": " << (check.m_atLeast ? "true" : "false")
            << ", \"holds\": " << (check.Holds() ? "true" : "false") << "}"
            << (i + 1 < checks.size() ? "," : "") << "\n";
    }
    out << "  ]\n}\n";
}

} // namespace NBench
