// column_search.h: the look-ups that the table definitions of both databases share.
#pragma once

namespace qel {

/// Copies the first column with this oid to `out`.
/// @return false, leaving `out`, when there is none
template <class Columns, class Column>
bool CopyColumn(unsigned long columnOid, const Columns& columns, Column& out)
{
    for (const auto& column : columns) {
        if (column.oid == columnOid) {
            out = column;
            return true;
        }
    }
    return false;
}

/// Finds the first element of a record that belongs to a column.
/// @param it  out: the element, or the record's end
template <class Record, class Iterator>
bool FindColumnData(unsigned long columnOid, Record& record, Iterator& it)
{
    for (it = record.begin(); it != record.end(); ++it) {
        if (it->columnOid == columnOid)
            return true;
    }
    return false;
}

} // namespace qel
