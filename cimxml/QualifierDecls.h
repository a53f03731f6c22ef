// TQualifierDecls: the qualifier declarations one load has found in its namespace.
#pragma once

#include "core/Interfaces.h"

#include <boost/shared_ptr.hpp>

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace NQRN20 {

// A schema names a few dozen declarations some tens of thousands of times, and each lookup in
// the namespace takes its lock. A committed declaration is never replaced, so one found stays
// right for the whole load; a name not found is asked again every time, since another load may
// declare it meanwhile. Names are looked up as written, so a view of the document serves.
class TQualifierDecls {
public:
    // The declaration of the name, as the namespace's GetQualifierDecl gives it or throws.
    boost::shared_ptr<ICIMQualifierDecl> Find(ICIMNamespace& cimNamespace, std::string_view name) {
        const auto found = m_found.find(name);
        if (found != m_found.end()) {
            return found->second;
        }
        boost::shared_ptr<ICIMQualifierDecl> declaration =
            cimNamespace.GetQualifierDecl(std::string(name), TCIMOptions());
        if (declaration) {
            m_found.emplace(m_names.emplace_back(name), declaration);
        }
        return declaration;
    }

private:
    // The keys' texts; a deque, so that each stays where it is as others are added.
    std::deque<std::string> m_names;
    std::unordered_map<std::string_view, boost::shared_ptr<ICIMQualifierDecl>> m_found;
};

} // namespace NQRN20
