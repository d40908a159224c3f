// connection_test.cpp: opening, closing and the host's own connections.
#include "../support/sql_fixture.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <memory>

namespace {

using qeltest::CSqlFileTest;
using qeltest::CSqlTest;
using qeltest::CTemporaryFolder;
using qeltest::Rows;

using Connection = CSqlTest;
using ConnectionToAFile = CSqlFileTest;

// A connection that the host opens and closes itself.
class CHostConnection
{
public:
    CHostConnection() { sqlite3_open(":memory:", &m_handle); }
    CHostConnection(const CHostConnection&) = delete;
    CHostConnection& operator=(const CHostConnection&) = delete;
    ~CHostConnection() { EXPECT_EQ(sqlite3_close(m_handle), SQLITE_OK) << "something still holds on to it"; }

    sqlite3* Handle() const { return m_handle; }
    void Run(const char* sql)
    {
        ASSERT_EQ(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    }

private:
    sqlite3* m_handle = nullptr;
};

TEST(ClosedConnection, AnswersEverythingWithoutHarm)
{
    CQelSQLite db;
    EXPECT_FALSE(db.IsOpen());
    EXPECT_FALSE(db.IsReadOnly());
    EXPECT_EQ(db.Handle(), nullptr);
    EXPECT_EQ(db.GetLastInsertedRowID(), 0);
    EXPECT_EQ(db.Logfile(), nullptr);
    EXPECT_EQ(db.ExecSQL(L"SELECT 1"), 21);
    EXPECT_EQ(db.Close(), 0);
    db.SetBusyTimeout(5);
}

TEST_F(Connection, IsOpenUntilClosed)
{
    EXPECT_TRUE(db.IsOpen());
    EXPECT_FALSE(db.IsReadOnly());
    EXPECT_EQ(db.Close(), 0);
    EXPECT_FALSE(db.IsOpen());
    EXPECT_EQ(db.Close(), 0);
}

TEST_F(Connection, OpeningAgainClosesTheFirstDatabase)
{
    ASSERT_EQ(db.Open(L":memory:"), 0);
    EXPECT_EQ(db.ExecSQL(L"SELECT a FROM t"), 1);
}

TEST_F(Connection, GivesTheRowIdOfTheLastInsert)
{
    EXPECT_EQ(db.GetLastInsertedRowID(), 0);
    db.ExecSQL(L"INSERT INTO t (rowid, a) VALUES (4294967296, 1)");
    EXPECT_EQ(db.GetLastInsertedRowID(), 4294967296);
}

TEST_F(Connection, RunsABatchOfStatements)
{
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (1); -- a remark; with a semicolon\n"
                         L"INSERT INTO t (a) VALUES (2); SELECT a FROM t;"),
              0);
    EXPECT_EQ(Content(), "1 2");
}

TEST_F(Connection, BatchStopsAtTheFirstFailure)
{
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (1); INSERT INTO missing VALUES (2);"
                         L"INSERT INTO t (a) VALUES (3)"),
              1);
    EXPECT_EQ(Content(), "1");
}

TEST_F(Connection, BatchWithoutStatementsIsSuccess)
{
    EXPECT_EQ(db.ExecSQL(L""), 0);
    EXPECT_EQ(db.ExecSQL(L" ; ;; /* nothing */ -- at all"), 0);
}

TEST_F(Connection, NullBatchIsMisuse)
{
    EXPECT_EQ(db.ExecSQL(nullptr), 21);
}

TEST_F(Connection, LogsAFailureWithTheEnginesMessage)
{
    db.ExecSQL(L"INSERT INTO missing VALUES (1)");
    EXPECT_EQ(log.Text(), "E 17301 no such table: missing\n");
    ASSERT_EQ(log.Entries().size(), 1u);
    EXPECT_EQ(log.Entries()[0].file, L".\\qelsqlite");
    EXPECT_EQ(db.Logfile(), &log);
}

TEST_F(Connection, WorksWithoutALog)
{
    db.SetLogfile(nullptr);
    EXPECT_EQ(db.ExecSQL(L"broken"), 1);
}

TEST_F(Connection, KeepsTextOfEveryScript)
{
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES ('\u00E4\u0416\u6F22\U0001F600')"), 0);
    EXPECT_EQ(Content(), u8"\u00E4\u0416\u6F22\U0001F600");
}

TEST(OpenFile, IsMadeWhereItIsMissing)
{
    CTemporaryFolder folder;
    CQelSQLite db;
    ASSERT_EQ(db.Open(folder.Path(L"\u00FCber \u6F22\U0001F600.db")), 0);
    ASSERT_EQ(db.ExecSQL(L"CREATE TABLE t (a)"), 0);
    ASSERT_EQ(db.Close(), 0);
    EXPECT_EQ(folder.Names(), u8"\u00FCber \u6F22\U0001F600.db");
}

TEST(OpenFile, MissingFileIsNotOpenedReadOnly)
{
    CTemporaryFolder folder;
    CQelSQLite db;
    EXPECT_EQ(db.Open(folder.Path(L"missing.db"), true), 14);
    EXPECT_FALSE(db.IsOpen());
    EXPECT_EQ(folder.Names(), "");
}

TEST(OpenFile, FolderOrMissingFolderCannotBeOpened)
{
    CTemporaryFolder folder;
    qeltest::CRecordingLog log;
    CQelSQLite db;
    db.SetLogfile(&log);
    EXPECT_EQ(db.Open(folder.Path(L"")), 14);
    EXPECT_EQ(db.Open(folder.Path(L"no/such.db")), 14);
    EXPECT_EQ(log.Text(), "E 17314 unable to open database file\nE 17314 unable to open database file\n");
}

TEST(OpenFile, PathThatTheEngineWouldReadAnotherWayIsRefused)
{
    CTemporaryFolder folder;
    CQelSQLite db;
    EXPECT_EQ(db.Open(L""), 14);
    EXPECT_EQ(db.Open(folder.Path(std::wstring(L"a\0b", 3))), 14);
    EXPECT_EQ(folder.Names(), "");
}

TEST(OpenFile, FailureClosesWhatWasOpen)
{
    CQelSQLite db;
    ASSERT_EQ(db.Open(L":memory:"), 0);
    EXPECT_EQ(db.Open(L""), 14);
    EXPECT_FALSE(db.IsOpen());
}

TEST_F(ConnectionToAFile, OpenedReadOnlyRefusesChanges)
{
    ASSERT_EQ(db.Open(folder.Path(L"test.db"), true), 0);
    EXPECT_TRUE(db.IsReadOnly());
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 8);
    EXPECT_EQ(Content(), "1");
}

TEST_F(ConnectionToAFile, BusyTimeoutWaitsForTheOtherConnection)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    db.SetBusyTimeout(1);
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 5);
    EXPECT_EQ(other.ExecSQL(L"COMMIT"), 0);
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 0);
}

TEST_F(ConnectionToAFile, HostsDatabaseKeepsItsSettings)
{
    CQelSQLite fresh;
    ASSERT_EQ(fresh.Open(folder.Path(L"fresh.db")), 0);
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(qel::ToUtf8(folder.Path(L"raw.db")).c_str(), &raw), 0);
    CQelSQLite host;
    host.Use(raw);
    for (const wchar_t* pragma : {L"PRAGMA journal_mode", L"PRAGMA synchronous", L"PRAGMA foreign_keys",
                                  L"PRAGMA locking_mode", L"PRAGMA busy_timeout", L"PRAGMA cache_size"})
        EXPECT_EQ(Rows(fresh, pragma), Rows(host, pragma)) << qel::ToUtf8(pragma);
    host.Close();
    EXPECT_EQ(sqlite3_close(raw), 0);
}

TEST(HostConnection, StaysOpenWhenTheObjectIsClosed)
{
    CHostConnection host;
    CQelSQLite db;
    db.Use(host.Handle());
    EXPECT_TRUE(db.IsOpen());
    EXPECT_EQ(db.Handle(), host.Handle());
    EXPECT_EQ(db.ExecSQL(L"CREATE TABLE t (a)"), 0);
    EXPECT_EQ(db.Close(), 0);
    EXPECT_FALSE(db.IsOpen());
    host.Run("INSERT INTO t VALUES (1)");
}

TEST(HostConnection, IsLetGoWithEveryKeptStatement)
{
    CHostConnection host; // complains when it cannot be closed
    CQelSQLite db;
    db.Use(host.Handle());
    EXPECT_EQ(Rows(db, L"SELECT 1"), "1");
    CQelSQLite::CStatement live(&db);
    EXPECT_EQ(live.Prepare(L"SELECT 2"), 0);
    EXPECT_EQ(live.Step(), 100);
    db.Close();
    EXPECT_EQ(live.Step(), 21);
}

TEST(HostConnection, IsReplacedByAnotherAndByNone)
{
    CHostConnection first;
    CHostConnection second;
    second.Run("CREATE TABLE second (a)");
    CQelSQLite db;
    db.Use(first.Handle());
    EXPECT_EQ(Rows(db, L"SELECT count(*) FROM sqlite_master"), "0");
    db.Use(second.Handle());
    EXPECT_EQ(Rows(db, L"SELECT count(*) FROM sqlite_master"), "1");
    db.Use(nullptr);
    EXPECT_FALSE(db.IsOpen());
}

TEST(HostConnection, HandedInTwiceKeepsItsStatements)
{
    CHostConnection host;
    CQelSQLite db;
    db.Use(host.Handle());
    {
        CQelSQLite::CStatement live(&db);
        live.Prepare(L"SELECT 7");
        db.Use(host.Handle());
        EXPECT_EQ(live.Step(), 100);
    }
    db.Close();
}

TEST(HostConnection, OwnHandleHandedInStaysOwned)
{
    CQelSQLite db;
    ASSERT_EQ(db.Open(L":memory:"), 0);
    db.Use(db.Handle());
    EXPECT_EQ(db.ExecSQL(L"CREATE TABLE t (a)"), 0);
    EXPECT_EQ(db.Close(), 0);
}

TEST(HostConnection, ExtendedCodesAreGivenAsPrimaryOnes)
{
    CHostConnection host;
    host.Run("CREATE TABLE t (a UNIQUE); INSERT INTO t VALUES (1)");
    sqlite3_extended_result_codes(host.Handle(), 1);
    CQelSQLite db;
    db.Use(host.Handle());
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t VALUES (1)"), 19);
    {
        CQelSQLite::CStatement statement(&db);
        statement.Prepare(L"INSERT INTO t VALUES (1)");
        EXPECT_EQ(statement.Execute(), 19);
    }
    db.Close();
}

TEST(HostConnection, KeepsItsBusyTimeoutUnlessAskedToChange)
{
    CHostConnection host;
    sqlite3_busy_timeout(host.Handle(), 1234);
    CQelSQLite db;
    db.SetBusyTimeout(7);
    db.Use(host.Handle());
    EXPECT_EQ(Rows(db, L"PRAGMA busy_timeout"), "1234");
    db.SetBusyTimeout(8);
    EXPECT_EQ(Rows(db, L"PRAGMA busy_timeout"), "8");
    db.Close();
}

TEST_F(Connection, ClosesLaterWhileTheHostHoldsAStatementOfItsOwn)
{
    sqlite3_stmt* own = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db.Handle(), "SELECT 1", -1, &own, nullptr), 0);
    EXPECT_EQ(db.Close(), 5);
    EXPECT_FALSE(db.IsOpen());
    EXPECT_EQ(sqlite3_step(own), SQLITE_ROW);
    sqlite3_finalize(own);
}

TEST(ResultMapping, SuccessRowAndDoneAreTheFamilysSuccess)
{
    for (const int raw : {0, 100, 101, 256, 512})
        EXPECT_EQ(CQelSQLite::MapQelERR(raw), 10001u) << raw;
}

TEST(ResultMapping, FailureKeepsItsPrimaryCode)
{
    EXPECT_EQ(CQelSQLite::MapQelERR(1), 17301u);
    EXPECT_EQ(CQelSQLite::MapQelERR(21), 17321u);
    EXPECT_EQ(CQelSQLite::MapQelERR(19), 17319u);
    EXPECT_EQ(CQelSQLite::MapQelERR(2067), 17319u); // a unique constraint
    EXPECT_EQ(CQelSQLite::MapQelERR(522), 17310u);  // a short read
}

TEST(ResultMapping, NothingElseIsSuccess)
{
    for (int raw = -1000; raw <= 10000; ++raw) {
        const int primary = raw & 0xFF;
        const bool success = primary == 0 || primary == 100 || primary == 101;
        EXPECT_EQ(CQelSQLite::MapQelERR(raw) == 10001u, success) << raw;
    }
}

// A host's subclass sees both operations through the object.
class CCountingSQLite : public CQelSQLite
{
public:
    int ExecSQL(const wchar_t*) override { return ++calls; }
    int ExecStatement(CStatement*) override { return ++calls; }
    int calls = 40;
};

TEST(Subclass, TakesOverBothExecOperations)
{
    CCountingSQLite db;
    CQelSQLite& base = db;
    EXPECT_EQ(base.ExecSQL(L"anything"), 41);
    EXPECT_EQ(base.ExecStatement(nullptr), 42);
}

} // namespace
