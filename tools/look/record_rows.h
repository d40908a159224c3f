// record_rows.h: records as rows of chosen columns.
#pragma once

#include "names/names.h"
#include "output/row_writer.h"

namespace tool {

/// Which columns of a table are shown, and how a record becomes a row of them.
class CRecordRows
{
public:
    /// The columns that --columns names; without it the record's oid and all columns in display order.
    CRecordRows(const CContext& context, const CNames& names, const CQelTable& table);

    /// Column names, "@oid" for the record's own.
    std::vector<std::string> Headings() const;
    /// @param record  as the file gives it: one value per column
    CRow Row(unsigned long oid, const CRecord& record) const;

private:
    std::vector<CQelTable::SQelColumn> m_columns; // oid 0 for the record's own
};

} // namespace tool
