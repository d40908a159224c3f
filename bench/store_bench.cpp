// store_bench.cpp: the record store beside the engine doing the same with kept statements.
#include <qelfdb4/qelfdb4.h>
#include <qelplat4/native_path.h>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <zlib.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr unsigned short kSelector = 1000;
constexpr unsigned int kRecords = 100000;

std::string Content()
{
    std::string content(200, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7);
    return content;
}

/// A file of this benchmark's own, gone afterwards.
class CPlace
{
public:
    explicit CPlace(const char* name) : m_path(fs::current_path() / name) { Clear(); }
    ~CPlace() { Clear(); }
    std::wstring Wide() const { return m_path.wstring(); }
    std::string Narrow() const { return m_path.string(); }

private:
    void Clear() const
    {
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            fs::remove(m_path.string() + suffix);
    }
    fs::path m_path;
};

/// The same table, modes and checksum by hand, with statements prepared once.
class CRaw
{
public:
    explicit CRaw(const std::string& path)
    {
        sqlite3_open(path.c_str(), &m_db);
        Run("PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;"
            "CREATE TABLE rec(id INTEGER PRIMARY KEY, crc INTEGER NOT NULL, data BLOB NOT NULL);"
            "CREATE TABLE sync(id INTEGER PRIMARY KEY, count INTEGER NOT NULL); INSERT INTO sync "
            "VALUES(1,0)");
        m_set = Prepare("INSERT OR REPLACE INTO rec(id,crc,data) VALUES(?1,?2,?3)");
        m_get = Prepare("SELECT crc,data FROM rec WHERE id=?1");
        m_begin = Prepare("BEGIN IMMEDIATE");
        m_count = Prepare("UPDATE sync SET count=count+1 WHERE id=1");
        m_commit = Prepare("COMMIT");
    }
    ~CRaw()
    {
        for (sqlite3_stmt* statement : {m_set, m_get, m_begin, m_count, m_commit})
            sqlite3_finalize(statement);
        sqlite3_close(m_db);
    }
    void Run(const char* sql) { sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr); }
    static std::int64_t Checksum(std::int64_t id, const void* data, unsigned int size)
    {
        const uLong begun = crc32(0, reinterpret_cast<const Bytef*>(&id), sizeof id);
        return static_cast<std::int64_t>(crc32(begun, static_cast<const Bytef*>(data), size));
    }
    bool Set(unsigned int oid, const std::string& bytes)
    {
        const std::int64_t id = (std::int64_t{kSelector} << 32) | oid;
        const auto size = static_cast<unsigned int>(bytes.size());
        sqlite3_bind_int64(m_set, 1, id);
        sqlite3_bind_int64(m_set, 2, Checksum(id, bytes.data(), size));
        sqlite3_bind_blob(m_set, 3, bytes.data(), static_cast<int>(size), SQLITE_STATIC);
        return Finish(m_set);
    }
    bool SetDurably(unsigned int oid, const std::string& bytes)
    {
        return Finish(m_begin) && Set(oid, bytes) && Finish(m_count) && Finish(m_commit);
    }
    bool Get(unsigned int oid, TavBlob& blob)
    {
        const std::int64_t id = (std::int64_t{kSelector} << 32) | oid;
        sqlite3_bind_int64(m_get, 1, id);
        bool found = sqlite3_step(m_get) == SQLITE_ROW;
        if (found) {
            const void* const data = sqlite3_column_blob(m_get, 1);
            const auto size = static_cast<unsigned int>(sqlite3_column_bytes(m_get, 1));
            found = sqlite3_column_int64(m_get, 0) == Checksum(id, data, size);
            blob.SetData(data, size);
        }
        sqlite3_reset(m_get);
        return found;
    }

private:
    sqlite3_stmt* Prepare(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr);
        return statement;
    }
    static bool Finish(sqlite3_stmt* statement)
    {
        const bool done = sqlite3_step(statement) == SQLITE_DONE;
        sqlite3_reset(statement);
        return done;
    }

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_set = nullptr;
    sqlite3_stmt* m_get = nullptr;
    sqlite3_stmt* m_begin = nullptr;
    sqlite3_stmt* m_count = nullptr;
    sqlite3_stmt* m_commit = nullptr;
};

void Require(benchmark::State& state, bool done)
{
    if (!done)
        state.SkipWithError("an operation failed");
}

/// Oids in an order that leaps through the table.
class COids
{
public:
    unsigned int Next() { return m_next = (m_next + 7919) % kRecords; }

private:
    unsigned int m_next = 0;
};

void SetLibrary(benchmark::State& state, unsigned int priority)
{
    const CPlace place("bench_store.qdb");
    const std::string bytes = Content();
    CDovBlobDB store;
    store.Create(place.Wide(), 1);
    unsigned int oid = 0;
    for (auto _ : state)
        Require(state, store.Set({kSelector, ++oid}, bytes.data(), static_cast<unsigned int>(bytes.size()),
                                 priority) == qel::kSuccess);
}

void SetRaw(benchmark::State& state, bool durable)
{
    const CPlace place("bench_store.db");
    const std::string bytes = Content();
    CRaw raw(place.Narrow());
    raw.Run(durable ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=NORMAL");
    unsigned int oid = 0;
    for (auto _ : state)
        Require(state, durable ? raw.SetDurably(++oid, bytes) : raw.Set(++oid, bytes));
}

void GetLibrary(benchmark::State& state)
{
    const CPlace place("bench_store.qdb");
    const std::string bytes = Content();
    CDovBlobDB store;
    store.Create(place.Wide(), 1);
    store.BeginBatch();
    for (unsigned int oid = 0; oid < kRecords; ++oid)
        store.Set({kSelector, oid}, bytes.data(), static_cast<unsigned int>(bytes.size()), 0);
    store.CommitBatch();
    TavBlob blob;
    COids oids;
    for (auto _ : state)
        Require(state, store.Get({kSelector, oids.Next()}, blob) == qel::kSuccess);
}

void GetRaw(benchmark::State& state)
{
    const CPlace place("bench_store.db");
    const std::string bytes = Content();
    CRaw raw(place.Narrow());
    raw.Run("BEGIN");
    for (unsigned int oid = 0; oid < kRecords; ++oid)
        raw.Set(oid, bytes);
    raw.Run("COMMIT");
    TavBlob blob;
    COids oids;
    for (auto _ : state)
        Require(state, raw.Get(oids.Next(), blob));
}

BENCHMARK_CAPTURE(SetLibrary, priority0, 0U)->Name("store_set_0/library");
BENCHMARK_CAPTURE(SetRaw, priority0, false)->Name("store_set_0/raw");
BENCHMARK_CAPTURE(SetLibrary, priority50, 50U)->Name("store_set_50/library")->UseRealTime();
BENCHMARK_CAPTURE(SetRaw, priority50, true)->Name("store_set_50/raw")->UseRealTime();
BENCHMARK(GetLibrary)->Name("store_get/library");
BENCHMARK(GetRaw)->Name("store_get/raw");

} // namespace
