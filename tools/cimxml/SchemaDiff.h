// What changed between two namespaces: as JSON for scripts and as a changelog for people.
#pragma once

#include "core/Core.h"
#include "tools/cimxml/Json.h"

#include <ostream>

namespace NQRN20 {
namespace NSchemaDiff {

// Compares the qualifier declarations and the classes, each as it states itself, and the
// instances by their class and key values; names without regard to case. Gives
//   {"qualifier_declarations": CHANGES, "classes": CHANGES, "instances": {"added", "removed"}}
// where CHANGES is {"added": [names], "removed": [names], "changed": {name: RECORD}} and a
// RECORD holds, for each field that differs, {"old": value, "new": value}, or for the named
// members (qualifiers, properties, methods, parameters) their CHANGES. A changed qualifier
// holds {"old", "new"}. Lists are sorted without regard to case, names spelled as the side they
// come from spells them (the new one for changes), and only what differs is present: two equal
// namespaces give {}.
TJson Compare(ICIMNamespace& oldNamespace, ICIMNamespace& newNamespace);

// The comparison as a changelog grouped by class; deprecations are called out and long values
// shortened. Nothing for no difference.
void WriteText(const TJson& difference, std::ostream& out);

} // namespace NSchemaDiff
} // namespace NQRN20
