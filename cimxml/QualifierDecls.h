// TQualifierDecls: the qualifier declarations one load has found in its namespace.
#pragma once

#include "core/Interfaces.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace NQRN20 {

// A schema names a few dozen declarations some tens of thousands of times, and each lookup in
// the namespace takes its lock. A committed declaration is never replaced, so one found stays
// right for the whole load; a name not found is asked again every time, since another load may
// declare it meanwhile. A view of the document serves as the name to look up.
class TQualifierDecls {
public:
    TQualifierDecls() = default;
    // A copy starts empty, as the slots view the names their own object keeps.
    TQualifierDecls(const TQualifierDecls&) {}
    TQualifierDecls& operator=(const TQualifierDecls&);

    // The declaration of the name, as the namespace's GetQualifierDecl gives it or throws.
    boost::shared_ptr<ICIMQualifierDecl> Find(ICIMNamespace& cimNamespace, std::string_view name);

private:
    struct TSlot {
        std::string_view m_name;
        boost::shared_ptr<ICIMQualifierDecl> m_declaration; // empty for a free slot
    };

    // The slot of the name, or the free one where it would go; the slots are at most half full.
    static size_t Probe(const std::vector<TSlot>& slots, std::string_view name);
    void Keep(std::string_view name, const boost::shared_ptr<ICIMQualifierDecl>& declaration);

    // The names' texts; a deque, so that each stays where it is as others are added.
    std::deque<std::string> m_names;
    // A power of two in size once a declaration is kept.
    std::vector<TSlot> m_slots;
    size_t m_count = 0;
};

} // namespace NQRN20
