// record_order.h: the order of a sorted record listing, for both databases.
#pragma once

#include <qelprop4/propdbtypes.h>

#include <cstddef>
#include <vector>

namespace qel {

/// One sort key, found in the table.
struct SSortKey
{
    std::size_t position; ///< of the value in a record
    bool ascending;
};

/// Replaces the column oid of every sort item by the column's position in the table; an oid that the table
/// lacks becomes position 0.
template <class SortItem, class Column>
std::vector<SSortKey> FindSortKeys(const std::vector<SortItem>& items, const std::vector<Column>& columns)
{
    std::vector<SSortKey> keys;
    keys.reserve(items.size());
    for (const SortItem& item : items) {
        std::size_t position = 0;
        while (position < columns.size() && columns[position].oid != item.column)
            ++position;
        keys.push_back({position < columns.size() ? position : 0, item.ascending});
    }
    return keys;
}

/// Collects records and gives their oids in the order of the sort keys.
///
/// Only the values that are sorted by are kept. A key is passed over where its position lies outside one of
/// the two records or the two values are equal; at the first other key an ascending one asks whether the
/// first value is less, a descending one whether it is not. That is no strict weak order where values are
/// unordered, so the sort is one that does not rely on it. Records equal in every key come in no
/// particular order. Not copied; one listing each.
class CRecordOrder
{
public:
    explicit CRecordOrder(const std::vector<SSortKey>& keys);
    CRecordOrder(const CRecordOrder&) = delete;
    CRecordOrder& operator=(const CRecordOrder&) = delete;

    /// Takes one record.
    /// @param record  the values that are sorted by are moved out of it
    void Add(unsigned long recordOid, std::vector<SQelPropColumnData>& record);
    /// Sorts what was added.
    /// @param oids  out: replaced by the record oids; empty when there are no keys
    void List(std::vector<unsigned long>& oids);

private:
    // Keys of one position share the value, which can be moved only once.
    struct SKey
    {
        std::size_t position;
        std::size_t slot;
        bool ascending;
    };

    struct SEntry
    {
        unsigned long recordOid;
        std::size_t recordSize;
        const CQelProperty* values; // one a slot
    };

    std::vector<CQelProperty>& RoomForValues();
    bool IsBefore(const SEntry& a, const SEntry& b) const;

    std::vector<SKey> m_keys;
    std::vector<std::size_t> m_positions; // one a slot, all different
    std::vector<SEntry> m_entries;
    std::vector<std::vector<CQelProperty>> m_blocks; // none outgrows its memory, so that values never move
};

} // namespace qel
