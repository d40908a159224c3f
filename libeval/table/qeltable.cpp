// qeltable.cpp: the definition of one table.
#include <qelprop4/qeltable.h>

#include "column_search.h"

#include <utility>

CQelTable::CQelTable(unsigned long oid)
{
    m_data.oid = oid;
}

CQelTable::CQelTable(const CQelTable& other) = default;

CQelTable::CQelTable(CQelTable&& other) noexcept = default;

// Assigning part by part would tear the table when memory runs out half-way.
const CQelTable& CQelTable::operator=(const CQelTable& other)
{
    if (this != &other) {
        SData copy(other.m_data);
        m_data = std::move(copy);
    }
    return *this;
}

const CQelTable& CQelTable::operator=(CQelTable&& other) noexcept
{
    if (this != &other)
        m_data = std::move(other.m_data);
    return *this;
}

CQelTable::~CQelTable() = default;

bool CQelTable::GetColumn(unsigned long columnOid, SQelColumn& out) const
{
    return qel::CopyColumn(columnOid, m_data.columns, out);
}

bool CQelTable::GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::const_iterator& it)
{
    // Unlike below, the iterator of an empty record is left alone: hosts count on either.
    return !record.empty() && qel::FindColumnData(columnOid, record, it);
}

bool CQelTable::GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::iterator& it)
{
    return qel::FindColumnData(columnOid, record, it);
}
