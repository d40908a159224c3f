// lookup_bench.cpp: what the look-up indexes are for: a small table beside a large one, and attaching to
// many.
#include "propdb_samples.h"
#include "raw_propdb.h"

#include <map>
#include <memory>

namespace {

using namespace qelbench;

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
