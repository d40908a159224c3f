// qeltable3x.cpp: the definition of one table of the legacy database.
#include <qelprop4/qeltable3x.h>

#include "column_search.h"

#include <utility>

CQelTable3X::CQelTable3X(unsigned long oid)
{
    m_data.oid = oid;
}

CQelTable3X::CQelTable3X(const CQelTable3X& other) = default;

CQelTable3X::CQelTable3X(CQelTable3X&& other) noexcept = default;

const CQelTable3X& CQelTable3X::operator=(const CQelTable3X& other)
{
    if (this != &other) {
        SData copy(other.m_data);
        m_data = std::move(copy);
    }
    return *this;
}

const CQelTable3X& CQelTable3X::operator=(CQelTable3X&& other) noexcept
{
    if (this != &other)
        m_data = std::move(other.m_data);
    return *this;
}

CQelTable3X::~CQelTable3X() = default;

bool CQelTable3X::GetColumn(unsigned long columnOid, SQelColumn& out) const
{
    return qel::CopyColumn(columnOid, m_data.columns, out);
}

bool CQelTable3X::GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                                std::vector<SQelPropColumnData>::const_iterator& it) const
{
    return CQelTable::GetColumnData(columnOid, record, it);
}

bool CQelTable3X::GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                                std::vector<SQelPropColumnData>::iterator& it) const
{
    return CQelTable::GetColumnData(columnOid, record, it);
}
