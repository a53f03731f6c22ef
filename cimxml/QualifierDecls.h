// TQualifierDecls: the qualifier declarations one load has found in its namespace.
#pragma once

#include "core/Interfaces.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace NQRN20 {

// A schema names a few dozen declarations some tens of thousands of times, and each lookup in
// the namespace takes its lock. A committed declaration is never replaced, so one found stays
// right for the whole load; a name not found is asked again every time, since another load may
// declare it meanwhile. Names are looked up as written, so a view of the document serves.
class TQualifierDecls {
public:
    TQualifierDecls() = default;
    // A copy starts empty, as the slots view the names their own object keeps.
    TQualifierDecls(const TQualifierDecls&) {}
    TQualifierDecls& operator=(const TQualifierDecls&) {
        m_slots.clear();
        m_names.clear();
        m_count = 0;
        return *this;
    }

    // The declaration of the name, as the namespace's GetQualifierDecl gives it or throws.
    boost::shared_ptr<ICIMQualifierDecl> Find(ICIMNamespace& cimNamespace, std::string_view name) {
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

private:
    struct TSlot {
        std::string_view m_name;
        boost::shared_ptr<ICIMQualifierDecl> m_declaration; // empty for a free slot
    };

    // Eight bytes at a time, each mixed in by a multiply: names are short, and every byte
    // counts, so that no family of names can pile up in one run of slots.
    static size_t Hash(std::string_view name) {
        const uint64_t kMultiplier = 0x9E3779B97F4A7C15u;
        uint64_t hash = name.size();
        size_t at = 0;
        for (; at + sizeof(uint64_t) <= name.size(); at += sizeof(uint64_t)) {
            uint64_t word;
            std::memcpy(&word, name.data() + at, sizeof word);
            hash = (hash ^ word) * kMultiplier;
        }
        uint64_t tail = 0;
        if (at < name.size()) {
            std::memcpy(&tail, name.data() + at, name.size() - at);
        }
        return size_t(((hash ^ tail) * kMultiplier) >> 32);
    }
    // The slot of the name, or the free one where it would go; the slots are at most half full.
    static size_t Probe(const std::vector<TSlot>& slots, std::string_view name) {
        const size_t mask = slots.size() - 1;
        for (size_t i = Hash(name) & mask;; i = (i + 1) & mask) {
            if (!slots[i].m_declaration || slots[i].m_name == name) {
                return i;
            }
        }
    }
    void Keep(std::string_view name, const boost::shared_ptr<ICIMQualifierDecl>& declaration) {
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

    // The names' texts; a deque, so that each stays where it is as others are added.
    std::deque<std::string> m_names;
    // A power of two in size once a declaration is kept.
    std::vector<TSlot> m_slots;
    size_t m_count = 0;
};

} // namespace NQRN20
