// sqlite_layer_bench.cpp: the SQL layer beside raw SQLite with statements kept by hand.
#include <qelsq4/qelsq4.h>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstring>

namespace {

constexpr const wchar_t* kInsert = L"INSERT OR REPLACE INTO d (toid,foid,coid,data) VALUES(?1,?2,?3,?4)";
constexpr const char* kRawInsert = "INSERT OR REPLACE INTO d (toid,foid,coid,data) VALUES(?1,?2,?3,?4)";
constexpr const wchar_t* kSelect = L"SELECT coid,data FROM d WHERE toid=?1 AND foid=?2 ORDER BY coid";
constexpr const char* kRawSelect = "SELECT coid,data FROM d WHERE toid=?1 AND foid=?2 ORDER BY coid";
constexpr int kRecords = 1000;
constexpr int kColumns = 8;

// A table of records of eight values, each of 34 bytes.
class CBenchDatabase
{
public:
    CBenchDatabase()
    {
        db.Open(L":memory:");
        db.ExecSQL(L"CREATE TABLE d (oid INTEGER PRIMARY KEY, toid INTEGER, foid INTEGER, coid INTEGER,"
                   L"data BLOB); CREATE UNIQUE INDEX i ON d (foid,toid,coid)");
        std::memset(blob.Resize(34), 7, 34);
        for (int record = 0; record < kRecords; ++record)
            AddRecord(record);
    }

    void AddRecord(int record)
    {
        CQelSQLite::CStatement statement(&db);
        statement.Prepare(kInsert);
        for (int column = 0; column < kColumns; ++column) {
            statement.Reset();
            statement.BindInt(1, 1);
            statement.BindInt(2, record);
            statement.BindInt(3, column);
            statement.BindBlob(4, &blob);
            statement.Execute();
        }
    }

    CQelSQLite db;
    TavBlob blob;
};

// A raw statement that its caller keeps.
class CRawStatement
{
public:
    CRawStatement(sqlite3* handle, const char* sql)
    {
        sqlite3_prepare_v3(handle, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    }
    CRawStatement(const CRawStatement&) = delete;
    CRawStatement& operator=(const CRawStatement&) = delete;
    ~CRawStatement() { sqlite3_finalize(statement); }

    sqlite3_stmt* statement = nullptr;
};

void TakeKept(benchmark::State& state)
{
    CBenchDatabase database;
    for (auto _ : state) {
        CQelSQLite::CStatement statement(&database.db);
        benchmark::DoNotOptimize(statement.Prepare(kInsert));
    }
}
BENCHMARK(TakeKept)->Name("take_statement/library");

void ResetKept(benchmark::State& state)
{
    CBenchDatabase database;
    const CRawStatement raw(database.db.Handle(), kRawInsert);
    for (auto _ : state) {
        benchmark::DoNotOptimize(sqlite3_reset(raw.statement));
        benchmark::DoNotOptimize(sqlite3_clear_bindings(raw.statement));
    }
}
BENCHMARK(ResetKept)->Name("take_statement/raw");

void TakeAmongMany(benchmark::State& state)
{
    CBenchDatabase database;
    for (int i = 0; i < 100; ++i) {
        CQelSQLite::CStatement other(&database.db);
        other.Prepare((std::wstring(kInsert) + L" -- " + std::to_wstring(i)).c_str());
    }
    for (auto _ : state) {
        CQelSQLite::CStatement statement(&database.db);
        benchmark::DoNotOptimize(statement.Prepare(kInsert));
    }
}
BENCHMARK(TakeAmongMany)->Name("take_statement_among_a_hundred/library");

void PrepareRaw(benchmark::State& state)
{
    CBenchDatabase database;
    for (auto _ : state)
        const CRawStatement raw(database.db.Handle(), kRawInsert);
}
BENCHMARK(PrepareRaw)->Name("compile_statement/raw");

void WriteLibrary(benchmark::State& state)
{
    CBenchDatabase database;
    database.db.ExecSQL(L"BEGIN");
    int record = 0;
    for (auto _ : state)
        database.AddRecord(record++ % kRecords);
}
BENCHMARK(WriteLibrary)->Name("write_record/library");

void WriteRaw(benchmark::State& state)
{
    CBenchDatabase database;
    database.db.ExecSQL(L"BEGIN");
    const CRawStatement raw(database.db.Handle(), kRawInsert);
    int record = 0;
    for (auto _ : state) {
        for (int column = 0; column < kColumns; ++column) {
            sqlite3_reset(raw.statement);
            sqlite3_bind_int64(raw.statement, 1, 1);
            sqlite3_bind_int64(raw.statement, 2, record % kRecords);
            sqlite3_bind_int64(raw.statement, 3, column);
            sqlite3_bind_blob(raw.statement, 4, database.blob.GetData(), 34, SQLITE_STATIC);
            sqlite3_step(raw.statement);
        }
        ++record;
    }
}
BENCHMARK(WriteRaw)->Name("write_record/raw");

void ReadLibrary(benchmark::State& state)
{
    CBenchDatabase database;
    TavBlob blob;
    int record = 0;
    for (auto _ : state) {
        CQelSQLite::CStatement statement(&database.db);
        statement.Prepare(kSelect);
        statement.BindInt(1, 1);
        statement.BindInt(2, record++ % kRecords);
        while (statement.Step() == 100) {
            benchmark::DoNotOptimize(statement.GetInt(0));
            statement.GetBlob(1, &blob);
        }
    }
}
BENCHMARK(ReadLibrary)->Name("read_record/library");

void ReadRaw(benchmark::State& state)
{
    CBenchDatabase database;
    const CRawStatement raw(database.db.Handle(), kRawSelect);
    unsigned char bytes[64];
    int record = 0;
    for (auto _ : state) {
        sqlite3_reset(raw.statement);
        sqlite3_bind_int64(raw.statement, 1, 1);
        sqlite3_bind_int64(raw.statement, 2, record++ % kRecords);
        while (sqlite3_step(raw.statement) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_int64(raw.statement, 0));
            const void* data = sqlite3_column_blob(raw.statement, 1);
            std::memcpy(bytes, data, static_cast<std::size_t>(sqlite3_column_bytes(raw.statement, 1)));
            benchmark::DoNotOptimize(bytes);
        }
    }
    sqlite3_reset(raw.statement);
}
BENCHMARK(ReadRaw)->Name("read_record/raw");

void GuardLibrary(benchmark::State& state)
{
    CBenchDatabase database;
    database.db.ExecSQL(L"BEGIN");
    for (auto _ : state) {
        CSQLiteTransaction guard(&database.db, false);
        guard.BeginTrans();
        guard.Commit();
    }
}
BENCHMARK(GuardLibrary)->Name("savepoint/library");

void GuardRaw(benchmark::State& state)
{
    CBenchDatabase database;
    database.db.ExecSQL(L"BEGIN");
    const CRawStatement begin(database.db.Handle(), "SAVEPOINT s");
    const CRawStatement end(database.db.Handle(), "RELEASE s");
    for (auto _ : state) {
        sqlite3_step(begin.statement);
        sqlite3_reset(begin.statement);
        sqlite3_step(end.statement);
        sqlite3_reset(end.statement);
    }
}
BENCHMARK(GuardRaw)->Name("savepoint/raw");

} // namespace
