// model.h: the property database as a few maps, for random operations to be compared with.
#pragma once

#include "lamps.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace qeltest {

/// What a database must hold and answer. Values are kept as Show gives them.
class CModel
{
public:
    struct SColumn
    {
        std::wstring name;
        int type = 1;
        int order = 0;
    };
    struct STable
    {
        std::wstring name;
        std::map<unsigned long, SColumn> columns;
    };
    using TRow = std::map<unsigned long, std::string>;

    unsigned int AddTable(const CQelTable& table, unsigned long& oid)
    {
        const CQelTable::SData& data = table.Properties();
        oid = data.oid;
        if (!IsValid(data.name))
            return 17502;
        if (HasName(data.name))
            return 17503;
        if (oid != 0 && tables.count(oid) != 0)
            return 10001; // nothing stored
        if (oid == 0)
            oid = tables.empty() ? 1 : tables.rbegin()->first + 1;
        STable& added = tables[oid];
        added.name = data.name;
        for (const CQelTable::SQelColumn& column : data.columns)
            added.columns[NextColumn()] = {column.name, column.type, column.displayOrder};
        return 10001;
    }

    unsigned int RemoveTable(unsigned long oid)
    {
        if (tables.count(oid) == 0)
            return 10020;
        tables.erase(oid);
        records.erase(oid);
        return 10001;
    }

    unsigned int RenameTable(unsigned long oid, const std::wstring& name)
    {
        if (HasName(name))
            return 17503;
        if (!IsValid(name))
            return 17502;
        if (tables.count(oid) != 0)
            tables[oid].name = name;
        return 10001;
    }

    unsigned int AddColumn(unsigned long table, const CQelTable::SQelColumn& column)
    {
        if (!IsValid(column.name))
            return 17502;
        if (tables.count(table) == 0)
            return 10020;
        if (HasColumnName(table, column.name))
            return 17503;
        if (column.oid != 0 && OwnerOf(column.oid) != 0)
            return 17319;
        int order = column.displayOrder;
        if (order == 9999) {
            order = 0;
            for (const auto& [oid, other] : tables[table].columns)
                order = oid == tables[table].columns.begin()->first ? other.order + 1
                                                                    : std::max(order, other.order + 1);
        }
        const unsigned long oid = column.oid != 0 ? column.oid : NextColumn();
        tables[table].columns[oid] = {column.name, column.type, order};
        return 10001;
    }

    unsigned int RemoveColumn(unsigned long table, unsigned long column)
    {
        if (tables.count(table) != 0)
            tables[table].columns.erase(column);
        TakeValuesOf(table, column);
        return 10001;
    }

    unsigned int ModifyColumn(unsigned long table, const CQelTable::SQelColumn& column)
    {
        if (tables.count(table) == 0 || tables[table].columns.count(column.oid) == 0)
            return 10020;
        SColumn& stored = tables[table].columns[column.oid];
        if (stored.type != column.type && !records[table].empty())
            return 17506;
        stored = {column.name, column.type, column.displayOrder};
        return 10001;
    }

    unsigned int RenameColumn(unsigned long table, unsigned long column, const std::wstring& name)
    {
        if (!IsValid(name))
            return 17502;
        if (tables.count(table) == 0)
            return 10020;
        if (HasColumnName(table, name))
            return 17503;
        if (tables[table].columns.count(column) == 0)
            return 10020;
        tables[table].columns[column].name = name;
        return 10001;
    }

    unsigned int Swap(unsigned long table, unsigned long first, unsigned long second)
    {
        if (tables.count(table) == 0 || first == second || tables[table].columns.count(first) == 0 ||
            tables[table].columns.count(second) == 0)
            return 10020;
        std::swap(tables[table].columns[first].order, tables[table].columns[second].order);
        return 10001;
    }

    unsigned int AddRecord(unsigned long table, unsigned long& record, const TRecord& values)
    {
        if (tables.count(table) == 0)
            return 10020;
        for (const SQelPropColumnData& data : values) {
            if (data.columnOid == 0)
                continue;
            if (record == 0)
                record = records[table].empty() ? 1 : records[table].rbegin()->first + 1;
            records[table][record][data.columnOid] = Show(data.value);
        }
        return 10001;
    }

    void RemoveRecord(unsigned long table, unsigned long record) { records[table].erase(record); }

    /// What attaching repairs.
    void Repair()
    {
        for (auto& [oid, table] : tables) {
            int largest = -1;
            for (const auto& [columnOid, column] : table.columns)
                largest = std::max(largest, column.order);
            bool seen = false;
            for (auto& [columnOid, column] : table.columns) {
                if (column.order == 0 && seen)
                    column.order = ++largest;
                seen = seen || column.order == 0;
            }
        }
    }

    std::string Record(unsigned long table, unsigned long record)
    {
        if (tables.count(table) == 0)
            return "10020";
        std::string text;
        for (const auto& [oid, column] : tables[table].columns) {
            const auto row = records[table].find(record);
            const bool stored = row != records[table].end() && row->second.count(oid) != 0;
            text +=
                (text.empty() ? "" : " ") + std::to_string(oid) + "=" + (stored ? row->second.at(oid) : "-");
        }
        return text;
    }

    std::string Definitions() const
    {
        std::string text;
        for (const auto& [oid, table] : tables) {
            text += std::to_string(oid) + " " + qel::ToUtf8(table.name) + "\n";
            for (const auto& [columnOid, column] : table.columns)
                text += "  " + std::to_string(columnOid) + " " + qel::ToUtf8(column.name) + " type " +
                        std::to_string(column.type) +
                        (column.order == 0 ? "" : " order " + std::to_string(column.order)) + "\n";
        }
        return text;
    }

    std::map<unsigned long, STable> tables;
    std::map<unsigned long, std::map<unsigned long, TRow>> records;

private:
    static bool IsValid(const std::wstring& name)
    {
        return name.find(L' ') == std::wstring::npos && !name.empty();
    }

    bool HasName(const std::wstring& name) const
    {
        return std::any_of(tables.begin(), tables.end(),
                           [&](const auto& entry) { return entry.second.name == name; });
    }

    bool HasColumnName(unsigned long table, const std::wstring& name) const
    {
        const auto& columns = tables.at(table).columns;
        return std::any_of(columns.begin(), columns.end(),
                           [&](const auto& entry) { return entry.second.name == name; });
    }

    unsigned long OwnerOf(unsigned long column) const
    {
        for (const auto& [oid, table] : tables) {
            if (table.columns.count(column) != 0)
                return oid;
        }
        return 0;
    }

    unsigned long NextColumn() const
    {
        unsigned long largest = 0;
        for (const auto& [oid, table] : tables) {
            if (!table.columns.empty())
                largest = std::max(largest, table.columns.rbegin()->first);
        }
        return largest + 1;
    }

    // A record is gone with its last value.
    void TakeValuesOf(unsigned long table, unsigned long column)
    {
        auto& rows = records[table];
        for (auto row = rows.begin(); row != rows.end();) {
            row->second.erase(column);
            row = row->second.empty() ? rows.erase(row) : std::next(row);
        }
    }
};

} // namespace qeltest
