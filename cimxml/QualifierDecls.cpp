// TQualifierDecls: an open-addressed table of the declarations found, keyed by views of names.
#include "cimxml/QualifierDecls.h"

#include "core/Text.h"

namespace NQRN20 {

TQualifierDecls& TQualifierDecls::operator=(const TQualifierDecls&) {
    m_slots.clear();
    m_names.clear();
    m_count = 0;
    return *this;
}

// Names match regardless of letter case, as the namespace's do, so that every spelling of a
// name finds the one slot of its declaration.
inline size_t TQualifierDecls::Probe(const std::vector<TSlot>& slots, std::string_view name) {
    const size_t mask = slots.size() - 1;
    for (size_t i = THashNoCase()(name) & mask;; i = (i + 1) & mask) {
        if (!slots[i].m_declaration || TEqualNoCase()(slots[i].m_name, name)) {
            return i;
        }
    }
}

boost::shared_ptr<ICIMQualifierDecl> TQualifierDecls::Find(ICIMNamespace& cimNamespace,
                                                           std::string_view name) {
    if (!m_slots.empty()) {
        const TSlot& slot = m_slots[Probe(m_slots, name)];
        if (slot.m_declaration) {
            return slot.m_declaration;
        }
    }
    boost::shared_ptr<ICIMQualifierDecl> declaration =
        cimNamespace.GetQualifierDecl(std::string(name), TCIMOptions());
    if (declaration) {
        Keep(name, declaration);
    }
    return declaration;
}

void TQualifierDecls::Keep(std::string_view name,
                           const boost::shared_ptr<ICIMQualifierDecl>& declaration) {
    if (2 * (m_count + 1) > m_slots.size()) {
        std::vector<TSlot> slots(m_slots.empty() ? 128 : 2 * m_slots.size());
        for (TSlot& slot : m_slots) {
            if (slot.m_declaration) {
                slots[Probe(slots, slot.m_name)] = std::move(slot);
            }
        }
        m_slots.swap(slots);
    }
    const std::string& kept = m_names.emplace_back(name);
    m_slots[Probe(m_slots, kept)] = TSlot{kept, declaration};
    ++m_count;
}

} // namespace NQRN20
