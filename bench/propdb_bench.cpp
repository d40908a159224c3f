// propdb_bench.cpp: record operations of the SQLite property database beside the same statements run raw.
#include "propdb_samples.h"
#include "raw_propdb.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <utility>

namespace {

using namespace qelbench;

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

} // namespace
