// Writes the contents of a namespace as MOF: qualifier declarations, classes with superclasses
// first, then instances.
#pragma once

#include "core/Core.h"

#include <ostream>
#include <string>
#include <vector>

namespace NQRN20 {
namespace NMof {

// A string literal: quoted, with quotes, backslashes and control characters escaped.
std::string QuoteString(const std::string& text);

// The literal of any value: NULL, true, 42, 1.5, 'c', "text", a quoted date-time or object
// path, or an array of those in braces.
std::string Literal(const TCIMValue& value);

// MOF's words for the scope bits ("any" for all of them) and for the flavor bits, set or clear.
std::vector<std::string> ScopeKeywords(uint32_t scope);
std::vector<std::string> FlavorKeywords(uint32_t flavor);

void WriteQualifierDecl(ICIMQualifierDecl& declaration, std::ostream& out);
// The class as it states itself: its own and overriding members; with inherited, every member,
// each inherited one after a comment naming the class that states it.
void WriteClass(ICIMNamespace& cimNamespace, ICIMClass& cimClass, std::ostream& out,
                bool inherited = false);
void WriteNamespace(ICIMNamespace& cimNamespace, std::ostream& out);

} // namespace NMof
} // namespace NQRN20
