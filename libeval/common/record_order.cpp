// record_order.cpp: the comparison of a sorted record listing and the values that it needs.
#include "record_order.h"

#include "guarded_sort.h"

#include <algorithm>

namespace qel {
namespace {

constexpr std::size_t kEntriesPerBlock = 1024;

} // namespace

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
    std::vector<CQelProperty>& values = RoomForValues();
    const std::size_t first = values.size();
    for (const std::size_t position : m_positions) {
        if (position < record.size())
            values.push_back(std::move(record[position].value));
        else
            values.emplace_back();
    }
    m_entries.push_back({recordOid, record.size(), values.data() + first});
}

// The block that takes the values of the next entry without moving those that it holds.
std::vector<CQelProperty>& CRecordOrder::RoomForValues()
{
    if (m_blocks.empty() || m_blocks.back().capacity() - m_blocks.back().size() < m_positions.size()) {
        m_blocks.emplace_back();
        m_blocks.back().reserve(kEntriesPerBlock * m_positions.size());
    }
    return m_blocks.back();
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
        const CQelProperty& left = a.values[key.slot];
        const CQelProperty& right = b.values[key.slot];
        // No value is less than one that it equals, so that half of the answers take one comparison.
        if (left < right)
            return key.ascending;
        if (!(left == right))
            return !key.ascending;
    }
    return false;
}

} // namespace qel
