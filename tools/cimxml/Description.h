// What schema elements and instances say, as JSON: what `show` prints and what `diff` compares.
#pragma once

#include "core/Core.h"
#include "tools/cimxml/Json.h"

#include <string>

namespace NQRN20 {
namespace NDescription {

// Strings, char16, date-times and references as strings; numbers and booleans as themselves;
// null as null; arrays as arrays of those.
TJson Value(const TCIMValue& value);

// {"name", "type", "array" (arrays only: their size, 0 for any), "default" (when not null),
// "scope" (MOF's words, or ["any"]), "flavors" (MOF's words for the set bits)}
TJson QualifierDecl(ICIMQualifierDecl& declaration);

// {"name", "superclass" (when there is one), "qualifiers", "properties", "methods"}, each of the
// last three an object by name, present when not empty. A property holds "type", "array",
// "reference_class", "embedded_object" and "default" where they apply, and its "qualifiers"; a
// method "type", "qualifiers" and "parameters", each parameter as a property without default.
// As the class states itself: its own and overriding members with the qualifiers it gives them;
// with inherited, every member, those declared above naming their class in "class_origin".
TJson Class(ICIMClass& cimClass, bool inherited = false);

// The class and key values that name an instance: EX_Disk.DeviceID="disk0",Slot=2; keys in
// the order of their names. Folded, the class and key names are lowercased, as they compare.
std::string InstanceName(ICIMInstance& instance, bool folded = false);

} // namespace NDescription
} // namespace NQRN20
