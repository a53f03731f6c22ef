// Growth: time per byte across generated document sizes, and time per error across error counts.
#pragma once

#include "Harness.h"

#include <string>
#include <utility>
#include <vector>

namespace NBench {

// One measurement at a small and a large size, in nanoseconds per unit.
struct TGrowth {
    std::string m_what;
    std::string m_small; // the sizes, as printed
    std::string m_large;
    double m_smallCost = 0;
    double m_largeCost = 0;
    double Ratio() const { return m_smallCost > 0 ? m_largeCost / m_smallCost : 0; }
};

// Measures the tokenizer and the whole parse on generated schemas of 1 MB and 64 MB, and the
// whole parse of documents with 10^4 and 10^5 errors.
std::vector<TGrowth> MeasureGrowth(const TTiming& timing);

// The medians of the small and the large workload's runs, in nanoseconds per unit, where units
// is what one run of each processes. Together, the two share each round's seconds; apart, each
// round runs each in a child process of its own, for workloads that build namespaces.
std::pair<double, double> CostsOf(const TWorkload& small, double smallUnits, const TWorkload& large,
                                  double largeUnits, bool together, const TTiming& timing);

// The rows under the title; nothing where none was measured.
void PrintGrowth(const std::string& title, const std::vector<TGrowth>& growth);

// The larger size must cost at most 1.2 times as much per unit as the smaller one.
void AddGrowthChecks(const std::vector<TGrowth>& growth, std::vector<TCheck>& checks);

} // namespace NBench
