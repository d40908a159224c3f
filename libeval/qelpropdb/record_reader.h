// record_reader.h: reading stored values into records.
#pragma once

#include "frame.h"

namespace qel {

/// Makes `record` hold one null element per column, in the table's order; keeps memory that fits.
void ResetRecord(const CQelTable& table, TRecord& record);

/// Finds the elements of one record by the column oids of rows, which come in ascending order.
class CElementFinder
{
public:
    /// @return the first element of this column; null when there is none
    SQelPropColumnData* Find(TRecord& record, long long columnOid);

private:
    std::size_t m_next = 0; // columns are mostly in ascending order, too
};

/// Replaces a value by the one that a row's column holds; a damaged one is thrown as 10011.
/// @return false, with the value null, when the row has no bytes
bool ReadValue(CQelSQLite::CStatement& row, int position, CQelProperty& value);

/// Reads records of one table with one statement. Failures are thrown.
class CRecordReader
{
public:
    /// @param table  must outlive the reader
    CRecordReader(CQelSQLite* db, const CQelTable& table);

    /// @param record  replaced; all null when nothing is stored
    void Read(unsigned long recordOid, TRecord& record);
    /// Reads some values of a record and tests the bytes of the others, which is all that a listing needs.
    /// @param wanted  by position, whether the value is read
    /// @param record  as ResetRecord made it; the values wanted are taken out of it between two records
    void ReadWanted(unsigned long recordOid, const std::vector<bool>& wanted, TRecord& record);

private:
    template <class Take>
    void ForEachValue(unsigned long recordOid, TRecord& record, const Take& take);

    const CQelTable& m_table;
    CQelSQLite::CStatement m_rows;
};

} // namespace qel
