// record_order.cpp: the comparison of a sorted record listing and the values that it needs.
#include "record_order.h"

#include "guarded_sort.h"

#include <algorithm>

namespace qel {

CRecordOrder::CRecordOrder(const std::vector<SSortKey>& keys)
{
    m_keys.reserve(keys.size());
    for (const SSortKey& key : keys) {
        const auto found = std::find(m_positions.begin(), m_positions.end(), key.position);
        const auto slot = static_cast<std::size_t>(found - m_positions.begin());
        if (found == m_positions.end())
            m_positions.push_back(key.position);
        m_keys.push_back({key.position, slot, key.ascending});
    }
}

void CRecordOrder::Add(unsigned long recordOid, std::vector<SQelPropColumnData>& record)
{
    m_entries.push_back({recordOid, record.size(), m_values.size()});
    for (const std::size_t position : m_positions) {
        if (position < record.size())
            m_values.push_back(std::move(record[position].value));
        else
            m_values.emplace_back();
    }
}

void CRecordOrder::List(std::vector<unsigned long>& oids)
{
    oids.clear();
    if (m_keys.empty())
        return;
    GuardedSort(m_entries, [this](const SEntry& a, const SEntry& b) { return IsBefore(a, b); });
    oids.reserve(m_entries.size());
    for (const SEntry& entry : m_entries)
        oids.push_back(entry.recordOid);
}

bool CRecordOrder::IsBefore(const SEntry& a, const SEntry& b) const
{
    const std::size_t common = std::min(a.recordSize, b.recordSize);
    for (const SKey& key : m_keys) {
        if (key.position >= common)
            continue;
        const CQelProperty& left = m_values[a.firstValue + key.slot];
        const CQelProperty& right = m_values[b.firstValue + key.slot];
        // No value is less than one that it equals, so that half of the answers take one comparison.
        if (left < right)
            return key.ascending;
        if (!(left == right))
            return !key.ascending;
    }
    return false;
}

} // namespace qel
