// legacy_bench.cpp: records of the legacy database beside raw SQLite keeping the same bytes the same way.
#include <benchmark/benchmark.h>
#include <qelplat4/utf16.h>
#include <qelprop4/qelprop4.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <sqlite3.h>
#include <zlib.h>

namespace {

constexpr unsigned long kTable = 1000;
constexpr int kRecords = 20000; // to read from

/// A folder of the run's own.
class CFolder
{
public:
    CFolder()
    {
        m_path =
            std::filesystem::temp_directory_path() / ("qelbench-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directory(m_path);
    }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    ~CFolder() { std::filesystem::remove_all(m_path); }
    std::string File(const char* name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

// ---- the library

const CQelProperty::EType kTypes[] = {CQelProperty::eString, CQelProperty::eInt,     CQelProperty::eInt64,
                                      CQelProperty::eBool,   CQelProperty::eURL,     CQelProperty::eDate,
                                      CQelProperty::eDouble, CQelProperty::eCurrency};
const std::wstring kText = L"Portable network library";
const std::wstring kLink = L"https://www.example.org/a/page";

std::vector<SQelPropColumnData> SampleValues()
{
    std::vector<SQelPropColumnData> values(8);
    values[0].value.SetString(kText);
    values[1].value.SetInt(42);
    values[2].value.SetInt64(12345678901LL);
    values[3].value.SetBool(true);
    values[4].value.SetURL(kLink);
    values[5].value.SetDate(45000.0, 9999);
    values[6].value.SetDouble(1234.5678);
    values[7].value.SetCurrency(99.5, L"");
    return values;
}

void MakeTable(CQelPropDB3X& db, const std::string& file)
{
    db.Create(qel::FromUtf8(file));
    CQelTable3X table;
    table.Properties().name = L"Packages";
    for (unsigned long oid = 1; oid <= 8; ++oid) {
        CQelTable3X::SQelColumn column;
        column.oid = oid;
        column.name = L"c" + std::to_wstring(oid);
        column.type = kTypes[oid - 1];
        column.displayOrder = static_cast<int>(oid);
        table.Properties().columns.push_back(column);
    }
    db.AddTable(table);
}

void AddRecords(CQelPropDB3X& db, int count)
{
    const auto values = SampleValues();
    db.BlobDB().BeginBatch();
    for (int i = 0; i < count; ++i) {
        unsigned long record = 0;
        db.AddRecord(kTable, record, values, false);
    }
    db.BlobDB().CommitBatch();
}

// ---- the twin: the same file layout, journal and statements, plain C++ values in and out

/// A record as a host without the library would hold it.
struct SPlainRecord
{
    std::u16string text = u"Portable network library";
    std::int32_t number = 42;
    std::int64_t large = 12345678901LL;
    bool flag = true;
    std::u16string link = u"https://www.example.org/a/page";
    double date = 45000.0;
    double real = 1234.5678;
    std::int64_t amount = 995000;
};

class CPlainWriter
{
public:
    explicit CPlainWriter(std::vector<unsigned char>& out) : m_out(out) { m_out.clear(); }
    void Put(const void* data, std::size_t size)
    {
        const auto* bytes = static_cast<const unsigned char*>(data);
        m_out.insert(m_out.end(), bytes, bytes + size);
    }
    template <class Payload>
    void Value(std::int32_t type, const Payload& payload, const std::u16string* text = nullptr)
    {
        const std::uint16_t version = 4;
        const std::uint32_t zero = 0;
        const auto size = text != nullptr ? static_cast<std::uint32_t>(text->size() * 2 + 2) : 0;
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, &payload, sizeof payload);
        Put(&version, 2);
        Put(&type, 4);
        Put(&zero, 4);
        Put(&size, 4);
        Put(&zero, 4);
        Put(&bytes, 8);
        if (text != nullptr)
            Put(text->c_str(), size);
    }

private:
    std::vector<unsigned char>& m_out;
};

void Encode(const SPlainRecord& record, std::vector<unsigned char>& out)
{
    CPlainWriter writer(out);
    const std::uint32_t count = 8;
    writer.Put(&count, 4);
    writer.Value(1, std::uint64_t{0}, &record.text);
    writer.Value(2, record.number);
    writer.Value(4, record.large);
    writer.Value(9, record.flag);
    writer.Value(11, std::uint64_t{0}, &record.link);
    writer.Value(7, record.date);
    writer.Value(6, record.real);
    writer.Value(10, record.amount);
}

class CPlainReader
{
public:
    CPlainReader(const unsigned char* data, std::size_t size) : m_at(data), m_end(data + size) {}
    void Take(void* out, std::size_t size)
    {
        if (static_cast<std::size_t>(m_end - m_at) < size)
            std::abort();
        std::memcpy(out, m_at, size);
        m_at += size;
    }
    template <class Payload>
    void Value(Payload& payload, std::u16string* text = nullptr)
    {
        std::uint16_t version = 0;
        std::int32_t type = 0;
        std::uint32_t reserved = 0, size = 0, symbol = 0;
        std::uint64_t bytes = 0;
        Take(&version, 2);
        Take(&type, 4);
        Take(&reserved, 4);
        Take(&size, 4);
        Take(&symbol, 4);
        Take(&bytes, 8);
        std::memcpy(&payload, &bytes, sizeof payload);
        if (text == nullptr)
            return;
        text->resize(size / 2);
        Take(text->data(), size);
        text->pop_back();
    }

private:
    const unsigned char* m_at;
    const unsigned char* m_end;
};

void Decode(const unsigned char* data, std::size_t size, SPlainRecord& record)
{
    CPlainReader reader(data, size);
    std::uint32_t count = 0;
    std::uint64_t none = 0;
    reader.Take(&count, 4);
    reader.Value(none, &record.text);
    reader.Value(record.number);
    reader.Value(record.large);
    reader.Value(record.flag);
    reader.Value(none, &record.link);
    reader.Value(record.date);
    reader.Value(record.real);
    reader.Value(record.amount);
}

long long Checksum(long long key, const void* data, std::size_t size)
{
    const uLong seed = crc32(0, reinterpret_cast<const Bytef*>(&key), sizeof key);
    return static_cast<long long>(crc32(seed, static_cast<const Bytef*>(data), static_cast<uInt>(size)));
}

/// Raw SQLite with the statements that the record store runs, kept.
class CRawStore
{
public:
    explicit CRawStore(const std::string& file)
    {
        sqlite3_open(file.c_str(), &m_db);
        for (const char* text :
             {"PRAGMA cell_size_check=ON", "PRAGMA locking_mode=EXCLUSIVE", "PRAGMA journal_mode=WAL",
              "PRAGMA synchronous=NORMAL",
              "CREATE TABLE rec(id INTEGER PRIMARY KEY, crc INTEGER NOT NULL, data BLOB NOT NULL)"})
            sqlite3_exec(m_db, text, nullptr, nullptr, nullptr);
        Prepare("INSERT OR REPLACE INTO rec(id,crc,data) VALUES(?1,?2,?3)", m_insert);
        Prepare("SELECT crc,data FROM rec WHERE id=?1", m_select);
    }
    CRawStore(const CRawStore&) = delete;
    CRawStore& operator=(const CRawStore&) = delete;
    ~CRawStore()
    {
        sqlite3_finalize(m_insert);
        sqlite3_finalize(m_select);
        sqlite3_close(m_db);
    }

    void Run(const char* text) { sqlite3_exec(m_db, text, nullptr, nullptr, nullptr); }
    bool Has(long long key)
    {
        sqlite3_bind_int64(m_select, 1, key);
        const bool found = sqlite3_step(m_select) == SQLITE_ROW;
        sqlite3_reset(m_select);
        return found;
    }
    void Add(long long key, const SPlainRecord& record)
    {
        Encode(record, m_bytes);
        sqlite3_bind_int64(m_insert, 1, key);
        sqlite3_bind_int64(m_insert, 2, Checksum(key, m_bytes.data(), m_bytes.size()));
        sqlite3_bind_blob(m_insert, 3, m_bytes.data(), static_cast<int>(m_bytes.size()), SQLITE_STATIC);
        sqlite3_step(m_insert);
        sqlite3_reset(m_insert);
        sqlite3_clear_bindings(m_insert);
    }
    bool Get(long long key, SPlainRecord& record)
    {
        sqlite3_bind_int64(m_select, 1, key);
        bool found = sqlite3_step(m_select) == SQLITE_ROW;
        if (found) {
            const auto* data = static_cast<const unsigned char*>(sqlite3_column_blob(m_select, 1));
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_select, 1));
            found = sqlite3_column_int64(m_select, 0) == Checksum(key, data, size);
            if (found)
                Decode(data, size, record);
        }
        sqlite3_reset(m_select);
        return found;
    }

private:
    void Prepare(const char* text, sqlite3_stmt*& statement)
    {
        sqlite3_prepare_v3(m_db, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    }

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_select = nullptr;
    std::vector<unsigned char> m_bytes;
};

constexpr long long KeyOf(long long record)
{
    return (static_cast<long long>(kTable) << 32) | record;
}

// ---- the cases: each record a change of its own, and all in one

void AddRecordLibrary(benchmark::State& state, bool inOneBatch)
{
    CFolder folder;
    CQelPropDB3X db;
    MakeTable(db, folder.File("store"));
    const auto values = SampleValues();
    if (inOneBatch)
        db.BlobDB().BeginBatch();
    for (auto _ : state) {
        unsigned long record = 0;
        if (db.AddRecord(kTable, record, values, false) != 10001)
            state.SkipWithError("AddRecord failed");
    }
    if (inOneBatch)
        db.BlobDB().CommitBatch();
    state.SetItemsProcessed(state.iterations());
}

void AddRecordRaw(benchmark::State& state, bool inOneBatch)
{
    CFolder folder;
    CRawStore store(folder.File("store"));
    const SPlainRecord values;
    long long record = 1;
    if (inOneBatch)
        store.Run("BEGIN IMMEDIATE");
    for (auto _ : state) {
        while (store.Has(KeyOf(++record)))
            ;
        store.Add(KeyOf(record), values);
    }
    if (inOneBatch)
        store.Run("COMMIT");
    state.SetItemsProcessed(state.iterations());
}

void GetRecordLibrary(benchmark::State& state)
{
    CFolder folder;
    CQelPropDB3X db;
    MakeTable(db, folder.File("store"));
    AddRecords(db, kRecords);
    std::minstd_rand random;
    std::vector<SQelPropColumnData> values;
    for (auto _ : state) {
        if (db.GetRecord(kTable, 2 + random() % kRecords, values) != 10001)
            state.SkipWithError("GetRecord failed");
        benchmark::DoNotOptimize(values.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void GetRecordRaw(benchmark::State& state)
{
    CFolder folder;
    CRawStore store(folder.File("store"));
    store.Run("BEGIN IMMEDIATE");
    for (int i = 0; i < kRecords; ++i)
        store.Add(KeyOf(2 + i), SPlainRecord());
    store.Run("COMMIT");
    std::minstd_rand random;
    SPlainRecord record;
    for (auto _ : state) {
        if (!store.Get(KeyOf(2 + static_cast<long long>(random() % kRecords)), record))
            state.SkipWithError("no record");
        benchmark::DoNotOptimize(record.text.data());
    }
    state.SetItemsProcessed(state.iterations());
}

/// The copy of the file, every record rewritten, one commit.
void TableRemoveColumn(benchmark::State& state)
{
    const int records = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        CFolder folder;
        CQelPropDB3X db;
        MakeTable(db, folder.File("store"));
        AddRecords(db, records);
        state.ResumeTiming();
        if (db.TableRemoveColumn(kTable, 3) != 10001)
            state.SkipWithError("TableRemoveColumn failed");
        state.PauseTiming();
        db.Close();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * records);
}

} // namespace

BENCHMARK_CAPTURE(AddRecordLibrary, single, false)->Name("legacy/AddRecord/library");
BENCHMARK_CAPTURE(AddRecordRaw, single, false)->Name("legacy/AddRecord/raw");
BENCHMARK_CAPTURE(AddRecordLibrary, batch, true)->Name("legacy/AddRecordInOneBatch/library");
BENCHMARK_CAPTURE(AddRecordRaw, batch, true)->Name("legacy/AddRecordInOneBatch/raw");
BENCHMARK(GetRecordLibrary)->Name("legacy/GetRecord/library");
BENCHMARK(GetRecordRaw)->Name("legacy/GetRecord/raw");
BENCHMARK(TableRemoveColumn)
    ->Name("legacy/TableRemoveColumn")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
