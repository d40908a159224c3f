// catalogue_reader.cpp: tables and columns as the database holds them.
#include "catalogue_reader.h"

#include "../value/encoding.h"

#include <algorithm>
#include <limits>

namespace qel {
namespace {

constexpr const wchar_t* kSelectTables = L"SELECT oid,tname,tdesc FROM qeltpt";
constexpr const wchar_t* kSelectColumns =
    L"SELECT oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo FROM qeltpc WHERE toid = ?1";

// A number that other hands wrote too large stays the largest, rather than become a small one.
int ToInt(long long number)
{
    return static_cast<int>(
        std::clamp<long long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

CCatalogueReader::CCatalogueReader(CQelSQLite* db, CDovLogfile* log)
    : m_log(log), m_tableRows(db), m_columnRows(db)
{}

unsigned int CCatalogueReader::Read(TCatalogue& tables)
{
    m_columnRows.Prepare(kSelectColumns);
    m_tableRows.Prepare(kSelectTables);
    while (m_tableRows.Step() == kRow) {
        const long long oid = m_tableRows.GetInt(0);
        if (!IsStoredOid(oid)) {
            ++m_skipped;
            continue;
        }
        CQelTable table(static_cast<unsigned long>(oid));
        CQelTable::SData& data = table.Properties();
        data.name = m_tableRows.GetString(1).Text();
        data.description = m_tableRows.GetString(2).Text();
        data.flag = true;
        ReadColumns(data);
        tables.emplace(data.oid, std::move(table));
    }
    WarnOfSkippedRows(m_log, m_skipped, QEL_SITE);
    return m_code;
}

void CCatalogueReader::ReadColumns(CQelTable::SData& table)
{
    m_columnRows.Reset();
    m_columnRows.BindInt(1, static_cast<long long>(table.oid));
    while (m_columnRows.Step() == kRow) {
        const long long oid = m_columnRows.GetInt(0);
        if (!IsStoredOid(oid)) {
            ++m_skipped;
            continue;
        }
        if (table.columns.empty())
            table.columns.reserve(m_likelyColumns);
        CQelTable::SQelColumn& column = table.columns.emplace_back();
        column.oid = static_cast<unsigned long>(oid);
        ReadColumn(column);
    }
    m_likelyColumns = table.columns.size(); // tables of one file are often alike
    if (table.columns.capacity() > 2 * m_likelyColumns)
        table.columns.shrink_to_fit();
}

void CCatalogueReader::ReadColumn(CQelTable::SQelColumn& column)
{
    column.type = static_cast<CQelProperty::EType>(ToInt(m_columnRows.GetInt(1)));
    column.name = m_columnRows.GetString(2).Text();
    column.description = m_columnRows.GetString(3).Text();
    column.refTable = ReadReference(4);
    column.refColumn = ReadReference(5);
    ReadDefault(column.defaultValue);
    column.displayHint = static_cast<unsigned int>(m_columnRows.GetInt(7));
    column.format = m_columnRows.GetString(8).Text();
    column.currency = m_columnRows.GetString(9).Text();
    column.displayOrder = ToInt(m_columnRows.GetInt(10));
}

// One damaged default must not keep a host from all its tables.
void CCatalogueReader::ReadDefault(CQelProperty& value)
{
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (!m_columnRows.GetBytes(6, data, size))
        return;
    const unsigned int code = RunOperation(m_log, QEL_SITE, [&] {
        DecodeFrom(data, size, value);
        return kSuccess;
    });
    if (code == kSuccess)
        return;
    if (code != kEndOfStream)
        Raise(code, QEL_SITE);
    value = CQelProperty();
    m_code = code;
}

// An oid that names nothing is held as none.
unsigned long CCatalogueReader::ReadReference(int position)
{
    const long long oid = m_columnRows.GetInt(position);
    return IsStoredOid(oid) ? static_cast<unsigned long>(oid) : 0;
}

} // namespace qel
