// dump.h: a whole property database as one text.
#pragma once

#include "show_value.h"

#include <qelplat4/utf16.h>
#include <qelprop4/qelpropdb.h>

#include <string>

namespace qeltest {

/// One record, "Power=40 Colour='red'"; null values are left out.
template <class Table>
std::string ShowRecord(const Table& table, const std::vector<SQelPropColumnData>& record)
{
    std::string text;
    for (const SQelPropColumnData& data : record) {
        typename Table::SQelColumn column;
        if (data.value.IsNull())
            continue;
        text += table.GetColumn(data.columnOid, column) ? " " + qel::ToUtf8(column.name) : " ?";
        text += "=" + Show(data.value);
    }
    return text;
}

/// Every table, a line each with its name, followed by its records as they are listed without sorting, two
/// blanks and the oid in front: "Lamps\n  1 Power=40\n". A code other than 10001 stands in the place of what
/// it kept away.
template <class Table, class Database>
std::string DumpAs(Database& db)
{
    std::vector<unsigned long> tableOids;
    unsigned int code = db.GetTables(tableOids);
    std::string text = code == qel::kSuccess ? "" : std::to_string(code) + "\n";
    for (const unsigned long tableOid : tableOids) {
        Table table(tableOid);
        code = db.GetTable(table);
        text += (code == qel::kSuccess ? qel::ToUtf8(table.Properties().name) : std::to_string(code)) + "\n";
        std::vector<unsigned long> recordOids;
        code = db.GetRecordOids(tableOid, recordOids, nullptr);
        text += code == qel::kSuccess ? "" : "  " + std::to_string(code) + "\n";
        for (const unsigned long recordOid : recordOids) {
            std::vector<SQelPropColumnData> record;
            code = db.GetRecord(tableOid, recordOid, record);
            text += "  " + std::to_string(recordOid) +
                    (code == qel::kSuccess ? ShowRecord(table, record) : " " + std::to_string(code)) + "\n";
        }
    }
    return text;
}

inline std::string Dump(CQelPropDB& db)
{
    return DumpAs<CQelTable>(db);
}

/// Every table with oid and description, and its columns with all their fields, a line each; fields at their
/// defaults are left out: "1 Lamps 'for the house'\n  1 Power type 2 order 1\n".
std::string DumpDefinitions(CQelPropDB& db);

} // namespace qeltest
