// content.h: what travels between systems: tables of odd names and values of every type.
#pragma once

#include <qelprop4/qelprop4.h>

#include <string>
#include <vector>

namespace interchange {

/// Fails the program with the code of an operation that has not succeeded.
void Check(unsigned int code, const char* what);

/// Names that both databases take and that other programs stumble over.
std::vector<std::wstring> OddNames();

/// Values of every type, the extremes of each among them, as columns of these types hold them.
struct SSample
{
    CQelProperty::EType type;
    std::vector<CQelProperty> values;
};
std::vector<SSample> Samples();

/// Adds a table of the name to either database: a column for each type under an odd name, with a default.
template <class Table, class Database>
unsigned long AddTable(Database& db, const std::wstring& name)
{
    Table table;
    table.Properties().name = name;
    table.Properties().description = L"Beschreibung \u2014 \u8AAC\u660E\r\n" + name;
    const std::vector<std::wstring> names = OddNames();
    for (const SSample& sample : Samples()) {
        typename Table::SQelColumn column;
        column.name = names[table.Columns().size() % names.size()] + std::to_wstring(sample.type);
        column.description = column.name + L" \u2190";
        column.type = sample.type;
        column.defaultValue = sample.values.back();
        column.displayHint = 7;
        column.format = L"%.3f \u20AC";
        column.currency = L"\u20AC";
        table.Properties().columns.push_back(column);
    }
    Check(db.AddTable(table), "AddTable");
    return table.Properties().oid;
}

/// Adds a record for every place in the longest list of values; shorter lists begin again.
template <class Table, class Database>
void AddRecords(Database& db, unsigned long tableOid)
{
    Table table(tableOid);
    Check(db.GetTable(table), "GetTable");
    const std::vector<SSample> samples = Samples();
    std::size_t count = 0;
    for (const SSample& sample : samples)
        count = sample.values.size() > count ? sample.values.size() : count;
    for (std::size_t row = 0; row < count; ++row) {
        std::vector<SQelPropColumnData> record;
        for (std::size_t i = 0; i < samples.size(); ++i)
            record.push_back({table.Columns()[i].oid, samples[i].values[row % samples[i].values.size()]});
        unsigned long oid = 0;
        Check(db.AddRecord(tableOid, oid, record, false), "AddRecord");
    }
}

} // namespace interchange
