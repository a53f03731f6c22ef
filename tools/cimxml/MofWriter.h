// Writes the contents of a namespace as MOF: qualifier declarations, classes with superclasses
// first, then instances.
#pragma once

#include "core/Core.h"

#include <ostream>
#include <string>

namespace NQRN20 {
namespace NMof {

// A string literal: quoted, with quotes, backslashes and control characters escaped.
std::string QuoteString(const std::string& text);

// The literal of any value: NULL, true, 42, 1.5, 'c', "text", a quoted date-time or object
// path, or an array of those in braces.
std::string Literal(const TCIMValue& value);

void WriteNamespace(ICIMNamespace& cimNamespace, std::ostream& out);

} // namespace NMof
} // namespace NQRN20
