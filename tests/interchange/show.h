// show.h: what a file holds, as text that is the same on every system.
#pragma once

#include "content.h"

#include <iostream>
#include <string>
#include <vector>

namespace interchange {

/// A run of bytes as its size and its checksum.
std::string HashOf(const void* data, std::size_t size);
/// Text between quotation marks, after a blank.
std::string Quoted(const std::wstring& text);
/// The bytes that a value is stored as; long ones as their hash.
std::string ShowValue(const CQelProperty& value);
/// Every row of every table of an SQLite file, as the engine finds it: numbers and texts as they stand, blobs
/// as hashes.
void ShowRows(const std::wstring& path);

/// The logical content of either database: tables, columns and records with all that they hold.
template <class Table, class Database>
void ShowContent(Database& db)
{
    std::vector<unsigned long> tableOids;
    Check(db.GetTables(tableOids), "GetTables");
    for (const unsigned long tableOid : tableOids) {
        Table table(tableOid);
        Check(db.GetTable(table), "GetTable");
        std::cout << "table " << tableOid << Quoted(table.Properties().name)
                  << Quoted(table.Properties().description) << "\n";
        for (const auto& column : table.Columns())
            std::cout << "column " << column.oid << " type " << column.type << Quoted(column.name)
                      << Quoted(column.description) << " to " << column.refTable << "." << column.refColumn
                      << " default " << ShowValue(column.defaultValue) << " hint " << column.displayHint
                      << Quoted(column.format) << Quoted(column.currency) << " place " << column.displayOrder
                      << "\n";
        std::vector<unsigned long> recordOids;
        Check(db.GetRecordOids(tableOid, recordOids, nullptr), "GetRecordOids");
        for (const unsigned long recordOid : recordOids) {
            std::vector<SQelPropColumnData> record;
            Check(db.GetRecord(tableOid, recordOid, record), "GetRecord");
            std::cout << "record " << recordOid << "\n";
            for (const SQelPropColumnData& data : record)
                std::cout << "  " << data.columnOid << " " << ShowValue(data.value) << "\n";
        }
    }
}

} // namespace interchange
