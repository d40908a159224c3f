// legacy_model.h: what a legacy database does, told with maps and without a store.
#pragma once

#include "support/legacy_database.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace qeltest {

/// A table of the model with its records, slot by slot, and the ids that it knows to be in use.
struct SModelTable
{
    std::wstring name;
    std::vector<SLegacyColumn> columns; // in display order
    std::map<unsigned long, std::vector<CQelProperty>> records;
    std::set<unsigned long> usedIds; // empty: not loaded
    unsigned long hint = 1;
};

/// The model of a whole database. Every operation gives the code that the database must give.
class CLegacyModel
{
public:
    std::map<unsigned long, SModelTable> tables;

    unsigned int AddTable(const std::wstring& name, const std::vector<SLegacyColumn>& columns,
                          unsigned long& oid)
    {
        if (!IsName(name))
            return 17502;
        if (Named(name) != tables.end())
            return 17503;
        for (oid = 1000; tables.count(oid) != 0;)
            ++oid;
        tables[oid].name = name;
        tables[oid].columns = columns;
        AsLoaded(tables[oid]);
        return 10001;
    }

    unsigned int RemoveTable(unsigned long table)
    {
        if (tables.count(table) == 0)
            return 10020;
        if (AnyReference([&](const SLegacyColumn& column) { return column.refTable == table; }))
            return 17509;
        tables.erase(table);
        return 10001;
    }

    unsigned int RenameTable(unsigned long table, const std::wstring& name)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        if (found->second.name == name)
            return 10001;
        if (Named(name) != tables.end())
            return 17503;
        if (!IsName(name))
            return 17502;
        found->second.name = name;
        return 10001;
    }

    unsigned int AddColumn(unsigned long table, SLegacyColumn column, unsigned long& oid)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        if (HasColumn(found->second, column.name))
            return 17503;
        if (!IsName(column.name))
            return 17502;
        for (oid = 1; FindColumn(found->second, oid) != nullptr;)
            ++oid;
        column.oid = oid;
        found->second.columns.push_back(column);
        AsLoaded(found->second);
        return 10001;
    }

    unsigned int ModifyColumn(unsigned long table, const SLegacyColumn& column)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        SLegacyColumn* const stored = FindColumn(found->second, column.oid);
        if (stored == nullptr)
            return 10020;
        if (stored->type != column.type && !found->second.records.empty())
            return 17506;
        *stored = column;
        AsLoaded(found->second);
        return 10001;
    }

    unsigned int RenameColumn(unsigned long table, unsigned long column, const std::wstring& name)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        if (HasColumn(found->second, name))
            return 17503;
        if (!IsName(name))
            return 17502;
        SLegacyColumn* const stored = FindColumn(found->second, column);
        if (stored == nullptr)
            return 10020;
        stored->name = name;
        return 10001;
    }

    unsigned int Swap(unsigned long table, unsigned long column1, unsigned long column2)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        SLegacyColumn* const first = FindColumn(found->second, column1);
        SLegacyColumn* const second = FindColumn(found->second, column2);
        if (first == nullptr || second == nullptr)
            return 10020;
        std::swap(first->displayOrder, second->displayOrder);
        AsLoaded(found->second);
        return 10001;
    }

    unsigned int RemoveColumn(unsigned long table, unsigned long column)
    {
        const auto found = tables.find(table);
        if (found == tables.end() || FindColumn(found->second, column) == nullptr)
            return 10020;
        if (AnyReference([&](const SLegacyColumn& each) {
                return each.refTable == table && each.refColumn == column;
            }))
            return 17509;
        SModelTable& changed = found->second;
        const SLegacyColumn removed = *FindColumn(changed, column);
        const std::size_t width = changed.columns.size();
        changed.columns.erase(changed.columns.begin() +
                              (FindColumn(changed, column) - changed.columns.data()));
        for (auto& record : changed.records)
            record.second = WithoutSlot(changed.columns, record.second, removed.dataIndex, width);
        for (SLegacyColumn& each : changed.columns) {
            if (each.dataIndex > removed.dataIndex)
                --each.dataIndex;
        }
        AsLoaded(changed);
        if (changed.columns.empty() && !changed.records.empty()) {
            changed.records.clear();
            Forget(changed);
        }
        return 10001;
    }

    unsigned int AddRecord(unsigned long table, unsigned long& record, const TRecord& values, bool given)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        SModelTable& t = found->second;
        if (t.usedIds.empty()) {
            for (const auto& each : t.records)
                t.usedIds.insert(each.first);
            t.hint = 1;
        }
        if (given) {
            t.usedIds.insert(record);
            if (record >= t.hint)
                t.hint = record < 4294967295UL ? record + 1 : record;
        } else {
            unsigned long id = t.hint;
            do {
                if (id == 4294967295UL)
                    return 17201;
                ++id;
            } while (t.usedIds.count(id) != 0 || t.records.count(id) != 0);
            t.hint = record = id;
        }
        return SetRecord(table, record, values);
    }

    unsigned int SetRecord(unsigned long table, unsigned long record, const TRecord& values)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        std::vector<CQelProperty> slots(found->second.columns.size());
        for (const SLegacyColumn& column : found->second.columns) {
            const auto slot = static_cast<std::size_t>(column.dataIndex);
            if (slot < values.size() && slot < slots.size() &&
                (values[slot].value.IsNull() || values[slot].value.GetType() == column.type))
                slots[slot] = values[slot].value;
        }
        found->second.records[record] = slots;
        return 10001;
    }

    unsigned int RemoveRecord(unsigned long table, unsigned long record)
    {
        const auto found = tables.find(table);
        if (found == tables.end())
            return 10020;
        Forget(found->second);
        return found->second.records.erase(record) == 0 ? 10020 : 10001;
    }

    /// A record as it must be read.
    static TRecord Read(const SModelTable& table, const std::vector<CQelProperty>& slots)
    {
        TRecord values(table.columns.size());
        for (const SLegacyColumn& column : table.columns) {
            const auto slot = static_cast<std::size_t>(column.dataIndex);
            if (slot >= values.size())
                continue;
            values[slot].columnOid = column.oid;
            values[slot].value = slot < slots.size() ? slots[slot] : CQelProperty();
        }
        return values;
    }

    void Reopen()
    {
        for (auto& table : tables)
            Forget(table.second);
    }

    std::string Dump() const
    {
        std::string text;
        for (const auto& [oid, table] : tables) {
            CQelTable3X shown(oid);
            shown.Properties().name = table.name;
            shown.Properties().columns = table.columns;
            text += Show(shown);
            for (const auto& [record, slots] : table.records)
                text += "  " + std::to_string(record) + ": " + Show(Read(table, slots)) + "\n";
        }
        return text;
    }

private:
    static bool IsName(const std::wstring& name)
    {
        return !name.empty() && name.find(L'-') == std::wstring::npos;
    }
    static void Forget(SModelTable& table)
    {
        table.usedIds.clear();
        table.hint = 1;
    }
    std::map<unsigned long, SModelTable>::iterator Named(const std::wstring& name)
    {
        return std::find_if(tables.begin(), tables.end(),
                            [&](const auto& table) { return table.second.name == name; });
    }
    static bool HasColumn(const SModelTable& table, const std::wstring& name)
    {
        return std::any_of(table.columns.begin(), table.columns.end(),
                           [&](const SLegacyColumn& column) { return column.name == name; });
    }
    static SLegacyColumn* FindColumn(SModelTable& table, unsigned long oid)
    {
        const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                        [&](const SLegacyColumn& column) { return column.oid == oid; });
        return found == table.columns.end() ? nullptr : &*found;
    }
    template <class Test>
    bool AnyReference(Test&& test) const
    {
        for (const auto& table : tables) {
            for (const SLegacyColumn& column : table.second.columns) {
                if (column.type == CQelProperty::eReference && test(column))
                    return true;
            }
        }
        return false;
    }
    // What the columns are after they were stored, in the order of oids, and loaded.
    static void AsLoaded(SModelTable& table)
    {
        auto& columns = table.columns;
        std::stable_sort(columns.begin(), columns.end(),
                         [](const SLegacyColumn& a, const SLegacyColumn& b) { return a.oid < b.oid; });
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].displayOrder < 0)
                columns[i].displayOrder = static_cast<int>(i);
            if (columns[i].dataIndex < 0)
                columns[i].dataIndex = static_cast<int>(i);
        }
        std::stable_sort(columns.begin(), columns.end(), [](const SLegacyColumn& a, const SLegacyColumn& b) {
            return a.displayOrder < b.displayOrder;
        });
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i].displayOrder = static_cast<int>(i);
    }
    static std::vector<CQelProperty> WithoutSlot(const std::vector<SLegacyColumn>& columns,
                                                 const std::vector<CQelProperty>& old, int removed,
                                                 std::size_t width)
    {
        std::vector<CQelProperty> slots(columns.size());
        for (const SLegacyColumn& column : columns) {
            const auto from = static_cast<std::size_t>(column.dataIndex);
            const std::size_t to = column.dataIndex > removed ? from - 1 : from;
            if (from < width && to < slots.size())
                slots[to] = from < old.size() ? old[from] : CQelProperty();
        }
        return slots;
    }
};

} // namespace qeltest
