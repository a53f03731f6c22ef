// TMemoryNamespace: the factory of the in-memory CIM namespace.
#pragma once

#include "core/Interfaces.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace NQRN20 {

// The in-memory namespace keeps everything committed to it for its lifetime.
//
// Objects are built, then committed: classes, declarations, qualifier declarations and instances
// become visible to lookups and enumerations only after their Commit, and are read-only from then
// on (further changes throw kQRNStatusReadOnly). An object under construction belongs to the one
// thread building it; committed objects may be read from any thread. The namespace's own tables
// are guarded, so several loaders may fill one namespace at once.
//
// Values never own model objects: references and referenced classes are held weakly, so the
// namespace and what it holds never form a cycle.
class TMemoryNamespace {
public:
    static boost::shared_ptr<ICIMNamespace> Create(const std::string& name = "root/cimv2");
};

} // namespace NQRN20
