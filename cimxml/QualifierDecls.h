// TQualifierDecls: the qualifier declarations one load has found in its namespace.
#pragma once

#include "core/Interfaces.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <unordered_map>

namespace NQRN20 {

// A schema names a few dozen declarations some tens of thousands of times, and each lookup in
// the namespace takes its lock. A committed declaration is never replaced, so one found stays
// right for the whole load; a name not found is asked again every time, since another load may
// declare it meanwhile.
class TQualifierDecls {
public:
    // The declaration of the name, as the namespace's GetQualifierDecl gives it or throws.
    boost::shared_ptr<ICIMQualifierDecl> Find(ICIMNamespace& cimNamespace,
                                              const std::string& name) {
        const auto found = m_found.find(name);
        if (found != m_found.end()) {
            return found->second;
        }
        boost::shared_ptr<ICIMQualifierDecl> declaration =
            cimNamespace.GetQualifierDecl(name, TCIMOptions());
        if (declaration) {
            m_found.emplace(name, declaration);
        }
        return declaration;
    }

private:
    std::unordered_map<std::string, boost::shared_ptr<ICIMQualifierDecl>> m_found;
};

} // namespace NQRN20
