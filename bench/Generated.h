// Generated documents for the scaling and error-count measurements.
#pragma once

#include <cstddef>
#include <string>

namespace NBench {

// A class document of at least the given size, shaped like the DMTF schema: a few qualifier
// declarations, then classes with described properties, array defaults, references and methods,
// one element a line. Superclass chains stay short, so the work per class does not grow with the
// document.
std::string GenerateSchema(size_t bytes);

// A declaration group holding the given number of empty value objects, one a line: each is an
// error that is logged and absorbed, and parsing goes on.
std::string GenerateErrors(size_t errors);

} // namespace NBench
