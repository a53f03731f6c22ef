// TAttributeMap: the attributes of one start tag, names to values in name order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace NQRN20 {

// Attribute names (lowercased) to their values exactly as written between the quotes, ordered by
// byte-wise comparison of the names, with the interface of an ordered map. A start tag has a few
// attributes, and the tokenizer refills one map for every tag: the entries sit in an array in the
// order they were added, where a cleared entry keeps its strings' storage for the next tag, and a
// list of their positions gives the name order. As in a sorted array, adding or erasing an entry
// invalidates the iterators.
class TAttributeMap {
public:
    typedef std::string key_type;
    typedef std::string mapped_type;
    typedef std::pair<std::string, std::string> value_type;
    typedef std::size_t size_type;

    // Walks the entries in name order.
    template <class TMap, class TEntry>
    class TIterator {
    public:
        typedef std::bidirectional_iterator_tag iterator_category;
        typedef TAttributeMap::value_type value_type;
        typedef std::ptrdiff_t difference_type;
        typedef TEntry* pointer;
        typedef TEntry& reference;

        TIterator() = default;
        TIterator(TMap* map, size_type rank) : m_map(map), m_rank(rank) {}
        // An iterator converts to a const_iterator.
        template <class TOtherMap, class TOtherEntry>
        TIterator(const TIterator<TOtherMap, TOtherEntry>& other)
            : m_map(other.m_map), m_rank(other.m_rank) {}

        reference operator*() const { return m_map->m_entries[m_map->m_order[m_rank]]; }
        pointer operator->() const { return &**this; }
        TIterator& operator++() {
            ++m_rank;
            return *this;
        }
        TIterator operator++(int) { return TIterator(m_map, m_rank++); }
        TIterator& operator--() {
            --m_rank;
            return *this;
        }
        TIterator operator--(int) { return TIterator(m_map, m_rank--); }
        bool operator==(const TIterator& other) const { return m_rank == other.m_rank; }
        bool operator!=(const TIterator& other) const { return m_rank != other.m_rank; }

    private:
        template <class, class>
        friend class TIterator;
        friend class TAttributeMap;

        TMap* m_map = nullptr;
        size_type m_rank = 0;
    };
    typedef TIterator<TAttributeMap, value_type> iterator;
    typedef TIterator<const TAttributeMap, const value_type> const_iterator;

    TAttributeMap() = default;
    TAttributeMap(std::initializer_list<value_type> entries);

    iterator begin() { return iterator(this, 0); }
    iterator end() { return iterator(this, size()); }
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, size()); }
    size_type size() const { return m_order.size(); }
    bool empty() const { return m_order.empty(); }

    iterator find(const std::string& name);
    const_iterator find(const std::string& name) const;
    size_type count(const std::string& name) const { return find(name) != end() ? 1 : 0; }
    // Adds the entry unless its name is present; the iterator points to the entry of that name.
    std::pair<iterator, bool> insert(const value_type& entry);
    // The entry of the name, added with an empty value when absent.
    std::string& operator[](const std::string& name);
    size_type erase(const std::string& name);
    // Keeps the strings' storage for the entries added next.
    void clear() { m_order.clear(); }

    // Adds an entry made from the characters in [name, nameEnd) and [value, valueEnd), in the
    // storage of a cleared entry where there is one; false, adding nothing, when the name is
    // present.
    bool Insert(const char* name, const char* nameEnd, const char* value, const char* valueEnd);

    // Same entries: the storage kept for later entries does not count.
    bool operator==(const TAttributeMap& other) const;
    bool operator!=(const TAttributeMap& other) const { return !(*this == other); }

private:
    // The rank at which the name stands, or would stand.
    size_type LowerBound(const char* name, size_type length) const;
    bool IsAt(size_type rank, const char* name, size_type length) const;
    // Appends an entry (reusing a cleared one) and gives it the rank; returns the entry.
    value_type& Add(size_type rank);

    // The entries added, in the order they were added, then the cleared ones.
    std::vector<value_type> m_entries;
    // The positions in m_entries of the entries present, in name order.
    std::vector<uint32_t> m_order;
};

} // namespace NQRN20
