// reference_watch.cpp: asks the file once for what many records refer to.
#include "reference_watch.h"

namespace tool {

CReferenceWatch::CReferenceWatch(CPropertyFile& file, const CQelTable& table) : m_file(file)
{
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        if (column.type == CQelProperty::eReference && column.refTable != 0)
            m_tables[column.oid] = column.refTable;
    }
}

bool CReferenceWatch::IsThere(const TTarget& target)
{
    constexpr std::size_t kMost = 4096; // memory must not grow with the file
    if (m_present.count(target) != 0)
        return true;
    if (!m_file.HasRecord(target.first, target.second))
        return false;
    if (m_present.size() == kMost)
        m_present.clear();
    m_present.insert(target);
    return true;
}

void CReferenceWatch::See(const CRecord& record)
{
    if (m_tables.empty())
        return;
    for (const SQelPropColumnData& data : record) {
        const auto column = m_tables.find(data.columnOid);
        if (column == m_tables.end() || data.value.GetType() != CQelProperty::eReference)
            continue;
        const TTarget target{column->second, data.value.Data().uValue.nULong};
        if (!IsThere(target))
            ++m_missing[target];
    }
}

unsigned long long CReferenceWatch::Dangling()
{
    unsigned long long count = 0;
    for (const auto& [target, references] : m_missing)
        count += m_file.HasRecord(target.first, target.second) ? 0 : references;
    return count;
}

} // namespace tool
