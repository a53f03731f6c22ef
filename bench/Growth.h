// Growth: time per byte across generated document sizes, and time per error across error counts.
#pragma once

#include "Harness.h"

#include <string>
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

// The rows under their heading; nothing where none was measured.
void PrintGrowth(const std::vector<TGrowth>& growth);

// The larger size must cost at most 1.2 times as much per unit as the smaller one.
void AddGrowthChecks(const std::vector<TGrowth>& growth, std::vector<TCheck>& checks);

} // namespace NBench
