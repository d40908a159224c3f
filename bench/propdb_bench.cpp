// propdb_bench.cpp: operations of the SQLite property database beside the same statements run raw.
#include "raw_propdb.h"

#include <benchmark/benchmark.h>
#include <qellib4/tavblob.h>
#include <qelprop4/qelprop4.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <utility>

namespace {

using TRecord = std::vector<SQelPropColumnData>;
using qelbench::SRawPropDB;

constexpr long kRecords = 100000;
constexpr unsigned long kTable = 1000; // the one that is read in bulk
constexpr unsigned long kFirstColumn = 1;

// A record as hosts keep them: two texts, numbers, a Boolean, a date, an amount and a link.
TRecord SampleRecord(long number)
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

std::vector<std::string> Stored(const TRecord& record)
{
    std::vector<std::string> values;
    for (const SQelPropColumnData& data : record) {
        TavBlob blob;
        blob << data.value;
        values.emplace_back(reinterpret_cast<const char*>(blob.GetData()), blob.GetSize());
    }
    return values;
}

CQelTable SampleTable(const std::wstring& name, unsigned long oid, int columns = 8)
{
    CQelTable table(oid);
    table.Properties().name = name;
    for (int i = 0; i < columns; ++i) {
        table.Properties().columns.emplace_back().name = L"Column" + std::to_wstring(i);
        table.Properties().columns.back().displayOrder = i;
    }
    return table;
}

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

// Made once and only read from.
SDatabase& Filled()
{
    static const std::unique_ptr<SDatabase> database = [] {
        auto made = std::make_unique<SDatabase>();
        made->Fill(kRecords);
        return made;
    }();
    return *database;
}

// The allocator puts off part of its work with small pieces that were freed until a large one is asked for;
// what clears up after one round must not be counted to the next.
void SettleMemory()
{
    std::vector<char> large(1 << 20);
    benchmark::DoNotOptimize(large.data());
}

void AddLibrary(benchmark::State& state)
{
    SDatabase database;
    const TRecord record = SampleRecord(1);
    database.Run(L"BEGIN");
    for (auto _ : state) {
        unsigned long oid = 0;
        database.db.AddRecord(kTable, oid, record, false);
    }
    database.Run(L"COMMIT");
}
BENCHMARK(AddLibrary)->Name("AddRecordInHostTransaction/library")->Iterations(30000);

void AddRaw(benchmark::State& state)
{
    SDatabase database;
    const std::vector<std::string> values = Stored(SampleRecord(1));
    database.Run(L"BEGIN");
    {
        SRawPropDB raw(database.sql.Handle());
        for (auto _ : state)
            raw.Add(kTable, kFirstColumn, values);
    }
    database.Run(L"COMMIT");
}
BENCHMARK(AddRaw)->Name("AddRecordInHostTransaction/raw")->Iterations(30000);

void ReadLibrary(benchmark::State& state)
{
    SDatabase& database = Filled();
    TRecord record;
    unsigned long oid = 0;
    for (auto _ : state) {
        database.db.GetRecord(kTable, oid % kRecords + 1, record);
        ++oid;
        benchmark::DoNotOptimize(record.data());
    }
}
BENCHMARK(ReadLibrary)->Name("GetRecord/library");

void ReadRaw(benchmark::State& state)
{
    SRawPropDB raw(Filled().sql.Handle());
    std::size_t bytes = 0;
    long oid = 0;
    for (auto _ : state) {
        raw.Read(kTable, oid % kRecords + 1,
                 [&](long long column, const unsigned char* data, std::size_t size) {
                     bytes += size + data[0] + static_cast<std::size_t>(column);
                 });
        ++oid;
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(ReadRaw)->Name("GetRecord/raw");

void BulkLibrary(benchmark::State& state)
{
    SDatabase& database = Filled();
    for (auto _ : state) {
        benchmark::DoNotOptimize(database.db.GetBulkRecords().size());
        state.PauseTiming();
        database.db.Optimize(std::wstring(), nullptr, 0);
        SettleMemory();
        state.ResumeTiming();
    }
}
BENCHMARK(BulkLibrary)->Name("GetBulkRecordsOf100000/library")->Unit(benchmark::kMillisecond);

// Keeps what it reads, as a host would that asks for every record.
void BulkRaw(benchmark::State& state)
{
    SRawPropDB raw(Filled().sql.Handle());
    std::map<long long, std::vector<std::pair<long long, std::string>>> records;
    for (auto _ : state) {
        raw.bulk.Bind(1, static_cast<long long>(kTable));
        while (raw.bulk.Row()) {
            const unsigned char* data = nullptr;
            const std::size_t size = raw.bulk.Bytes(2, data);
            auto& record = records.emplace_hint(records.end(), raw.bulk.Int(0), 0)->second;
            record.reserve(8);
            record.emplace_back(raw.bulk.Int(1), std::string(reinterpret_cast<const char*>(data), size));
        }
        raw.bulk.Reset();
        benchmark::DoNotOptimize(records.size());
        state.PauseTiming();
        records.clear();
        SettleMemory();
        state.ResumeTiming();
    }
}
BENCHMARK(BulkRaw)->Name("GetBulkRecordsOf100000/raw")->Unit(benchmark::kMillisecond);

// The query alone: every byte fetched and none kept.
void BulkScan(benchmark::State& state)
{
    SRawPropDB raw(Filled().sql.Handle());
    for (auto _ : state) {
        std::size_t bytes = 0;
        raw.bulk.Bind(1, static_cast<long long>(kTable));
        while (raw.bulk.Row()) {
            const unsigned char* data = nullptr;
            bytes += raw.bulk.Bytes(2, data) + static_cast<std::size_t>(raw.bulk.Int(0) + raw.bulk.Int(1));
            bytes += data[0];
        }
        raw.bulk.Reset();
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(BulkScan)->Name("ScanOf100000KeepingNothing")->Unit(benchmark::kMillisecond);

void SortLibrary(benchmark::State& state)
{
    SDatabase& database = Filled();
    const std::vector<CQelPropDB::SSortItem> sort = {{kFirstColumn + 1, true}, {kFirstColumn, false}};
    std::vector<unsigned long> oids;
    for (auto _ : state) {
        database.db.GetRecordOids(kTable, oids, &sort);
        benchmark::DoNotOptimize(oids.data());
    }
}
BENCHMARK(SortLibrary)->Name("SortedListingOf100000ByTwoKeys/library")->Unit(benchmark::kMillisecond);

struct SRawKey
{
    std::string text;
    int number;
    long long oid;
};

// The stored text as its units stand, which for the plain letters here is their order.
void SortRaw(benchmark::State& state)
{
    SRawPropDB raw(Filled().sql.Handle());
    for (auto _ : state) {
        std::vector<SRawKey> keys;
        raw.list.Bind(1, static_cast<long long>(kTable));
        while (raw.list.Row()) {
            SRawKey key{std::string(), 0, raw.list.Int(0)};
            raw.Read(kTable, key.oid, [&](long long column, const unsigned char* data, std::size_t size) {
                if (column == kFirstColumn)
                    std::memcpy(&key.number, data + 18, sizeof key.number);
                else if (column == kFirstColumn + 1)
                    key.text.assign(reinterpret_cast<const char*>(data) + 26, size - 26);
                else
                    benchmark::DoNotOptimize(data[0]);
            });
            keys.push_back(std::move(key));
        }
        raw.list.Reset();
        std::sort(keys.begin(), keys.end(), [](const SRawKey& a, const SRawKey& b) {
            const int order = a.text.compare(b.text);
            return order != 0 ? order < 0 : a.number > b.number;
        });
        benchmark::DoNotOptimize(keys.data());
    }
}
BENCHMARK(SortRaw)->Name("SortedListingOf100000ByTwoKeys/raw")->Unit(benchmark::kMillisecond);

// A table of 100 records, alone or beside one of 100,000, without or with the look-up indexes.
struct SSmallTable : SDatabase
{
    SSmallTable(bool beside, bool indexed)
    {
        if (beside)
            Fill(kRecords);
        CQelTable small = SampleTable(L"Small", 1);
        db.AddTable(small);
        if (indexed)
            db.CreateLookupIndexes();
        firstColumn = kFirstColumn + 8;
        record = SampleRecord(1);
        for (SQelPropColumnData& data : record)
            data.columnOid += 8;
        Run(L"BEGIN");
        for (unsigned long oid = 1; oid <= 100; ++oid)
            db.SetRecord(1, oid, record);
    }

    unsigned long firstColumn = 0;
    TRecord record;
};

SSmallTable& Small(const benchmark::State& state)
{
    static std::unique_ptr<SSmallTable> kept[4];
    const auto which = static_cast<std::size_t>(state.range(0));
    if (kept[which] == nullptr)
        kept[which] = std::make_unique<SSmallTable>(which % 2 != 0, which / 2 != 0);
    return *kept[which];
}

// Every record is undone, so that the table stays small.
void AddSmallLibrary(benchmark::State& state)
{
    SSmallTable& small = Small(state);
    for (auto _ : state) {
        unsigned long oid = 0;
        small.Run(L"SAVEPOINT bench");
        small.db.AddRecord(1, oid, small.record, false);
        small.Run(L"ROLLBACK TO bench; RELEASE bench");
    }
}

void AddSmallRaw(benchmark::State& state)
{
    SSmallTable& small = Small(state);
    const std::vector<std::string> values = Stored(small.record);
    SRawPropDB raw(small.sql.Handle());
    for (auto _ : state) {
        small.Run(L"SAVEPOINT bench");
        raw.Add(1, static_cast<long long>(small.firstColumn), values);
        small.Run(L"ROLLBACK TO bench; RELEASE bench");
    }
}

SDatabase& WithManyColumns()
{
    static const std::unique_ptr<SDatabase> database = [] {
        auto made = std::make_unique<SDatabase>();
        made->Run(L"WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<999) "
                  L"INSERT INTO qeltpt SELECT i,'Table'||i,'' FROM n");
        made->Run(L"WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<99900) "
                  L"INSERT INTO qeltpc SELECT i+1000,(i-1)/100+1,1,'Column'||i,'a column',0,0,"
                  L"x'0400000000000000000000000000000000000000000000000000',1,'','',(i-1)%100 FROM n");
        made->db.CreateLookupIndexes();
        return made;
    }();
    return *database;
}

// The database object is a closed one, as it is when a host opens its file.
void AttachLibrary(benchmark::State& state)
{
    SDatabase& database = WithManyColumns();
    for (auto _ : state) {
        state.PauseTiming();
        database.db.Close();
        SettleMemory();
        state.ResumeTiming();
        database.db.Attach(false, nullptr);
    }
}
BENCHMARK(AttachLibrary)->Name("AttachOf1000TablesOf100Columns/library")->Unit(benchmark::kMillisecond);

// What every reader of all columns has to ask of a row.
std::size_t ReadColumnRow(qelbench::CRawStatement& row)
{
    std::size_t bytes = 0;
    for (int column = 0; column < 11; ++column) {
        const unsigned char* data = nullptr;
        if (column == 2 || column == 3 || column == 8 || column == 9)
            bytes += row.Text(column, data);
        else if (column == 6)
            bytes += row.Bytes(column, data);
        else
            bytes += static_cast<std::size_t>(row.Int(column));
    }
    return bytes;
}

// One pass over all columns, in the order in which they are stored; nothing is kept.
void AttachRaw(benchmark::State& state)
{
    SRawPropDB raw(WithManyColumns().sql.Handle());
    for (auto _ : state) {
        std::size_t bytes = 0;
        while (raw.columns.Row())
            bytes += ReadColumnRow(raw.columns);
        raw.columns.Reset();
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(AttachRaw)->Name("AttachOf1000TablesOf100Columns/raw")->Unit(benchmark::kMillisecond);

// A column's row as a host would keep it that reads the table by hand.
struct SRawColumn
{
    long long oid, type, refTable, refColumn, displayHint, displayOrder;
    std::string name, description, defaultValue, format, currency;
};

// The same pass by a host that keeps what it reads, in the engine's own texts, for each table its columns.
void AttachKeepingRaw(benchmark::State& state)
{
    qelbench::CRawStatement rows(
        WithManyColumns().sql.Handle(),
        "SELECT oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo,toid FROM qeltpc");
    const auto text = [&rows](int column) {
        const unsigned char* data = nullptr;
        const std::size_t size = column == 6 ? rows.Bytes(column, data) : rows.Text(column, data);
        return std::string(reinterpret_cast<const char*>(data), size);
    };
    std::map<long long, std::vector<SRawColumn>> tables;
    for (auto _ : state) {
        while (rows.Row())
            tables[rows.Int(11)].push_back({rows.Int(0), rows.Int(1), rows.Int(4), rows.Int(5), rows.Int(7),
                                            rows.Int(10), text(2), text(3), text(6), text(8), text(9)});
        rows.Reset();
        benchmark::DoNotOptimize(tables.size());
        state.PauseTiming();
        tables.clear();
        SettleMemory();
        state.ResumeTiming();
    }
}
BENCHMARK(AttachKeepingRaw)->Name("PassOver100000ColumnsKeepingThem")->Unit(benchmark::kMillisecond);

// The library's own texts, one query a table; nothing is kept.
void AttachTexts(benchmark::State& state)
{
    SRawPropDB raw(WithManyColumns().sql.Handle());
    for (auto _ : state) {
        std::size_t bytes = 0;
        while (raw.tables.Row()) {
            raw.columnsOf.Bind(1, raw.tables.Int(0));
            while (raw.columnsOf.Row())
                bytes += ReadColumnRow(raw.columnsOf);
            raw.columnsOf.Reset();
        }
        raw.tables.Reset();
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(AttachTexts)->Name("QueriesOf1000TablesKeepingNothing")->Unit(benchmark::kMillisecond);

constexpr const char* kSmallNames[] = {"AddTo100Alone", "AddTo100Beside100000", "AddTo100AloneIndexed",
                                       "AddTo100Beside100000Indexed"};

const bool g_smallRegistered = [] {
    for (int which = 0; which < 4; ++which) {
        const std::string name = kSmallNames[which];
        benchmark::RegisterBenchmark((name + "/library").c_str(), &AddSmallLibrary)->Arg(which);
        benchmark::RegisterBenchmark((name + "/raw").c_str(), &AddSmallRaw)->Arg(which);
    }
    return true;
}();

} // namespace
