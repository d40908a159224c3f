// record_rows.h: records as rows of chosen columns.
#pragma once

#include "names/names.h"
#include "output/row_writer.h"

#include <map>
#include <utility>

namespace tool {

/// Which columns of a table are shown, and how a record becomes a row of them.
class CRecordRows
{
public:
    /// The columns that --columns names; without it the record's oid and all columns in display order.
    CRecordRows(const CContext& context, const CNames& names, const CQelTable& table);

    /// Lets references be shown by the column that theirs names, "@3 Volvo"; for tables that people read.
    /// @param file  outlives the rows
    void ShowReferences(CPropertyFile& file) { m_file = &file; }

    /// Column names, "@oid" for the record's own.
    std::vector<std::string> Headings() const;
    /// @param record  as the file gives it: one value per column
    CRow Row(unsigned long oid, const CRecord& record);

private:
    CQelProperty Shown(const CQelTable::SQelColumn& column, const CQelProperty& value);

    CPropertyFile* m_file = nullptr;                                         // null where references are oids
    std::map<std::pair<unsigned long, unsigned long>, CQelProperty> m_shown; // by column and record
    std::vector<CQelTable::SQelColumn> m_columns;                            // oid 0 for the record's own
};

} // namespace tool
