// record_reader.cpp: reading stored values into records.
#include "record_reader.h"

#include "../value/encoding.h"

namespace qel {
namespace {

void CheckValue(CQelSQLite::CStatement& row, int position)
{
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (row.GetBytes(position, data, size))
        CheckStored(data, size);
}

// Leaves nothing of the value that was there before, not even a currency symbol.
void ResetValue(CQelProperty& value)
{
    value.SetNull();
    if (!value.Data().sCurrencySymbol.empty())
        value.SetCurrencySymbol(std::wstring());
}

} // namespace

void ResetRecord(const CQelTable& table, TRecord& record)
{
    const std::vector<CQelTable::SQelColumn>& columns = table.Columns();
    if (record.size() != columns.size()) {
        record.clear();
        record.resize(columns.size());
    } else {
        for (SQelPropColumnData& data : record)
            ResetValue(data.value);
    }
    for (std::size_t i = 0; i < columns.size(); ++i)
        record[i].columnOid = columns[i].oid;
}

SQelPropColumnData* CElementFinder::Find(TRecord& record, long long columnOid)
{
    // Oids of a table's columns differ, so that any element found is the first one.
    for (std::size_t tried = 0; tried < record.size(); ++tried, ++m_next) {
        if (m_next >= record.size())
            m_next = 0;
        if (static_cast<long long>(record[m_next].columnOid) == columnOid)
            return &record[m_next++];
    }
    return nullptr;
}

bool ReadValue(CQelSQLite::CStatement& row, int position, CQelProperty& value)
{
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (!row.GetBytes(position, data, size)) {
        ResetValue(value);
        return false;
    }
    DecodeFrom(data, size, value);
    return true;
}

CRecordReader::CRecordReader(CQelSQLite* db, const CQelTable& table) : m_table(table), m_rows(db)
{
    m_rows.Prepare(L"SELECT data,coid from qeltpd WHERE toid = ?1 AND foid = ?2 ORDER by coid ASC");
    m_rows.BindInt(1, static_cast<long long>(table.Properties().oid));
}

// Calls `take` with every element that has a row, the row being the current one.
template <class Take>
void CRecordReader::ForEachValue(unsigned long recordOid, TRecord& record, const Take& take)
{
    m_rows.Reset();
    m_rows.BindInt(2, static_cast<long long>(recordOid));
    CElementFinder elements;
    while (m_rows.Step() == kRow) {
        if (SQelPropColumnData* element = elements.Find(record, m_rows.GetInt(1)))
            take(*element);
    }
}

void CRecordReader::Read(unsigned long recordOid, TRecord& record)
{
    ResetRecord(m_table, record);
    if (IsOid(recordOid))
        ForEachValue(recordOid, record,
                     [&](SQelPropColumnData& element) { ReadValue(m_rows, 0, element.value); });
}

void CRecordReader::ReadWanted(unsigned long recordOid, const std::vector<bool>& wanted, TRecord& record)
{
    ForEachValue(recordOid, record, [&](SQelPropColumnData& element) {
        if (wanted[static_cast<std::size_t>(&element - record.data())])
            ReadValue(m_rows, 0, element.value);
        else
            CheckValue(m_rows, 0);
    });
}

} // namespace qel
