// The class hierarchy of a namespace, as indented text or as nested JSON objects.
#pragma once

#include "core/Core.h"

#include <ostream>
#include <string>

namespace NQRN20 {
namespace NSchemaTree {

enum EFormat { kText, kJson };

// Every class under its superclass, children in the order of their names without regard to
// case: in text one a line, indented by two blanks a level; in JSON {"A": {"B": {}}}. With a
// root, only that class and what derives from it. Returns false, having written nothing, when
// the namespace holds no class of the root's name. Deep hierarchies cost no stack.
bool Write(ICIMNamespace& cimNamespace, const std::string& root, EFormat format, std::ostream& out);

} // namespace NSchemaTree
} // namespace NQRN20
