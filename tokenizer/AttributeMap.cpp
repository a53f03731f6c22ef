// TAttributeMap: lookup by binary search over the name order, and entries that keep their storage.
#include "tokenizer/AttributeMap.h"

#include <algorithm>
#include <cstring>

namespace NQRN20 {

namespace {

// Up to this many attributes a new one is placed by walking back from the last; a tag with more,
// which only a hostile document writes, takes the binary search, lest it cost the square.
const std::size_t kWalkedBack = 8;

// Byte-wise, as std::string compares. Attribute names mostly differ in their first letter.
int Compare(const std::string& a, const char* b, std::size_t length) {
    if (!a.empty() && length != 0 && a[0] != b[0]) {
        return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]) ? -1 : 1;
    }
    const int common = std::memcmp(a.data(), b, std::min(a.size(), length));
    if (common != 0) {
        return common;
    }
    return a.size() < length ? -1 : (a.size() > length ? 1 : 0);
}

// Attribute strings are mostly refilled with text that fits where they are: sizing the string and
// copying into it costs less than the general assignment.
void Fill(std::string& out, const char* begin, const char* end) {
    out.resize(std::size_t(end - begin));
    if (!out.empty()) {
        std::memcpy(&out[0], begin, out.size());
    }
}

// Fills the string unless it holds the text already.
void Refill(std::string& out, const char* begin, const char* end) {
    const std::size_t size = std::size_t(end - begin);
    if (out.size() != size || std::memcmp(out.data(), begin, size) != 0) {
        Fill(out, begin, end);
    }
}

} // namespace

TAttributeMap::TAttributeMap(std::initializer_list<value_type> entries) {
    for (const value_type& entry : entries) {
        insert(entry);
    }
}

TAttributeMap::iterator TAttributeMap::find(const std::string& name) {
    const size_type rank = LowerBound(name.data(), name.size());
    return IsAt(rank, name.data(), name.size()) ? iterator(this, rank) : end();
}

TAttributeMap::const_iterator TAttributeMap::find(const std::string& name) const {
    const size_type rank = LowerBound(name.data(), name.size());
    return IsAt(rank, name.data(), name.size()) ? const_iterator(this, rank) : end();
}

std::pair<TAttributeMap::iterator, bool> TAttributeMap::insert(const value_type& entry) {
    const size_type rank = LowerBound(entry.first.data(), entry.first.size());
    if (IsAt(rank, entry.first.data(), entry.first.size())) {
        return {iterator(this, rank), false};
    }
    Add(rank) = entry;
    return {iterator(this, rank), true};
}

std::string& TAttributeMap::operator[](const std::string& name) {
    const size_type rank = LowerBound(name.data(), name.size());
    if (IsAt(rank, name.data(), name.size())) {
        return m_entries[m_order[rank]].second;
    }
    value_type& entry = Add(rank);
    entry.first = name;
    entry.second.clear();
    return entry.second;
}

// The last entry added moves into the erased one's place, so that the entries present stay at the
// front; the erased one's storage goes to the cleared ones.
TAttributeMap::size_type TAttributeMap::erase(const std::string& name) {
    const size_type rank = LowerBound(name.data(), name.size());
    if (!IsAt(rank, name.data(), name.size())) {
        return 0;
    }
    const uint32_t position = m_order[rank];
    const uint32_t last = static_cast<uint32_t>(m_order.size() - 1);
    m_order.erase(m_order.begin() + std::ptrdiff_t(rank));
    if (position != last) {
        std::swap(m_entries[position], m_entries[last]);
        *std::find(m_order.begin(), m_order.end(), last) = position;
    }
    return 1;
}

bool TAttributeMap::Insert(const char* name, const char* nameEnd, const char* value,
                           const char* valueEnd) {
    const size_type length = size_type(nameEnd - name);
    size_type rank = m_order.size();
    if (rank > kWalkedBack) {
        rank = LowerBound(name, length);
        if (IsAt(rank, name, length)) {
            return false;
        }
    } else {
        // A tag mostly has a few attributes: walking back from the last in name order places a
        // name in as many comparisons as a binary search would take, without its overhead.
        for (; rank > 0; --rank) {
            const int order = Compare(m_entries[m_order[rank - 1]].first, name, length);
            if (order == 0) {
                return false;
            }
            if (order < 0) {
                break;
            }
        }
    }
    value_type& entry = Add(rank);
    // Tags of one kind come in runs and spell their attributes in one order, so the entry mostly
    // holds this very name already from the tag before, and often the value too.
    Refill(entry.first, name, nameEnd);
    Refill(entry.second, value, valueEnd);
    return true;
}

bool TAttributeMap::operator==(const TAttributeMap& other) const {
    return size() == other.size() && std::equal(begin(), end(), other.begin());
}

TAttributeMap::size_type TAttributeMap::LowerBound(const char* name, size_type length) const {
    const auto rank =
        std::lower_bound(m_order.begin(), m_order.end(), 0, [&](uint32_t position, int) {
            return Compare(m_entries[position].first, name, length) < 0;
        });
    return size_type(rank - m_order.begin());
}

bool TAttributeMap::IsAt(size_type rank, const char* name, size_type length) const {
    return rank < m_order.size() && Compare(m_entries[m_order[rank]].first, name, length) == 0;
}

TAttributeMap::value_type& TAttributeMap::Add(size_type rank) {
    const uint32_t position = static_cast<uint32_t>(m_order.size());
    if (position == m_entries.size()) {
        m_entries.emplace_back();
    }
    m_order.insert(m_order.begin() + std::ptrdiff_t(rank), position);
    return m_entries[position];
}

} // namespace NQRN20
