// propdb_samples.h: the database and the records that the property database is measured with.
#pragma once

#include <benchmark/benchmark.h>
#include <qellib4/tavblob.h>
#include <qelprop4/qelprop4.h>

#include <string>
#include <vector>

namespace qelbench {

using TRecord = std::vector<SQelPropColumnData>;

inline constexpr long kRecords = 100000;
inline constexpr unsigned long kTable = 1000;    // the one that is read in bulk
inline constexpr unsigned long kFirstColumn = 1; // of that table

/// A record as hosts keep them: two texts, numbers, a Boolean, a date, an amount and a link.
inline TRecord SampleRecord(long number)
{
    TRecord record(8);
    for (std::size_t i = 0; i < record.size(); ++i)
        record[i].columnOid = kFirstColumn + i;
    record[0].value.SetInt(static_cast<int>(number * 7919 % 100003));
    record[1].value.SetString(L"package-" + std::to_wstring(number % 1000));
    record[2].value.SetInt64(number * 4096LL);
    record[3].value.SetBool(number % 2 == 0);
    record[4].value.SetURL(L"https://packages.example.org/");
    record[5].value.SetDate(45000.0 + static_cast<double>(number % 365), 9999);
    record[6].value.SetCurrency(static_cast<double>(number) / 100, L"EUR");
    record[7].value.SetDouble(static_cast<double>(number) / 3);
    return record;
}

/// The stored form of every value.
inline std::vector<std::string> Stored(const TRecord& record)
{
    std::vector<std::string> values;
    for (const SQelPropColumnData& data : record) {
        TavBlob blob;
        blob << data.value;
        values.emplace_back(reinterpret_cast<const char*>(blob.GetData()), blob.GetSize());
    }
    return values;
}

/// A table of text columns, to be added.
inline CQelTable SampleTable(const std::wstring& name, unsigned long oid, int columns = 8)
{
    CQelTable table(oid);
    table.Properties().name = name;
    for (int i = 0; i < columns; ++i) {
        table.Properties().columns.emplace_back().name = L"Column" + std::to_wstring(i);
        table.Properties().columns.back().displayOrder = i;
    }
    return table;
}

/// A property database in memory with the table that is read in bulk.
struct SDatabase
{
    SDatabase()
    {
        sql.Open(L":memory:");
        db.Attach(true, nullptr);
        CQelTable table = SampleTable(L"Packages", kTable);
        db.AddTable(table);
    }

    void Run(const wchar_t* text) { sql.ExecSQL(text); }

    void Fill(long count)
    {
        Run(L"BEGIN");
        for (long i = 0; i < count; ++i) {
            unsigned long oid = 0;
            db.AddRecord(kTable, oid, SampleRecord(i), false);
        }
        Run(L"COMMIT");
    }

    CQelSQLite sql;
    CQelPropDB db{&sql};
};

/// The allocator puts off part of its work with small pieces that were freed until a large one is asked for;
/// what clears up after one round must not be counted to the next.
inline void SettleMemory()
{
    std::vector<char> large(1 << 20);
    benchmark::DoNotOptimize(large.data());
}

} // namespace qelbench
