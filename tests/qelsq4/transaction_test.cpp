// transaction_test.cpp: the guard around a change, as transaction and as savepoint.
#include "../support/result_matchers.h"
#include "../support/sql_fixture.h"

#include <sqlite3.h>

#include <memory>

namespace {

using qeltest::CodeThrownBy;
using qeltest::Gives;
using qeltest::Rows;

class Transaction : public qeltest::CSqlTest
{
protected:
    void Add(int value)
    {
        db.ExecSQL((L"INSERT INTO t (a) VALUES (" + std::to_wstring(value) + L")").c_str());
    }
    bool IsOpen() { return sqlite3_get_autocommit(db.Handle()) == 0; }
};

using TransactionOnAFile = qeltest::CSqlFileTest;

TEST_F(Transaction, CommitKeepsTheChange)
{
    CSQLiteTransaction guard(&db, false);
    EXPECT_TRUE(guard.BeginTrans());
    Add(1);
    EXPECT_TRUE(guard.Commit());
    EXPECT_EQ(Content(), "1");
    EXPECT_FALSE(IsOpen());
}

TEST_F(Transaction, EndOfTheScopeUndoesTheChange)
{
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        Add(1);
    }
    EXPECT_EQ(Content(), "");
    EXPECT_FALSE(IsOpen());
}

TEST_F(Transaction, RollbackUndoesTheChange)
{
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    Add(1);
    EXPECT_TRUE(guard.Rollback());
    EXPECT_EQ(Content(), "");
    EXPECT_FALSE(IsOpen());
}

TEST_F(Transaction, NothingBegunIsNothingToEnd)
{
    CSQLiteTransaction guard(&db, false);
    EXPECT_FALSE(guard.Commit());
    EXPECT_FALSE(guard.Rollback());
    EXPECT_FALSE(IsOpen());
}

TEST_F(Transaction, BeginsOnlyOnce)
{
    CSQLiteTransaction guard(&db, false);
    EXPECT_TRUE(guard.BeginTrans());
    EXPECT_FALSE(guard.BeginTrans());
    EXPECT_TRUE(guard.Commit());
    EXPECT_FALSE(guard.BeginTrans());
    EXPECT_FALSE(guard.Commit());
    EXPECT_FALSE(guard.Rollback());
}

TEST_F(Transaction, SecondOneAfterARollbackSurvivesTheFirstOnesScope)
{
    auto first = std::make_unique<CSQLiteTransaction>(&db, false);
    ASSERT_TRUE(first->BeginTrans());
    ASSERT_TRUE(first->Rollback());
    CSQLiteTransaction second(&db, false);
    ASSERT_TRUE(second.BeginTrans());
    Add(2);
    first.reset();
    EXPECT_TRUE(second.Commit());
    EXPECT_EQ(Content(), "2");
}

TEST_F(Transaction, HostsTransactionAfterACommitSurvivesTheScope)
{
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        ASSERT_TRUE(guard.Commit());
        db.ExecSQL(L"BEGIN");
        Add(3);
    }
    EXPECT_TRUE(IsOpen());
    db.ExecSQL(L"COMMIT");
    EXPECT_EQ(Content(), "3");
}

TEST_F(Transaction, WithoutAnOpenConnectionCannotBegin)
{
    CSQLiteTransaction none(nullptr, false);
    EXPECT_FALSE(none.BeginTrans());
    db.Close();
    CSQLiteTransaction closed(&db, false);
    EXPECT_FALSE(closed.BeginTrans());
    EXPECT_FALSE(closed.Commit());
    EXPECT_FALSE(closed.Rollback());
}

TEST_F(Transaction, InsideTheHostsTransactionItIsASavepoint)
{
    db.ExecSQL(L"BEGIN");
    Add(1);
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        Add(2);
    }
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        Add(3);
        EXPECT_TRUE(guard.Commit());
    }
    EXPECT_TRUE(IsOpen());
    db.ExecSQL(L"COMMIT");
    EXPECT_EQ(Content(), "1 3");
}

TEST_F(Transaction, HostsRollbackUndoesACommittedSavepoint)
{
    db.ExecSQL(L"BEGIN");
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    Add(1);
    ASSERT_TRUE(guard.Commit());
    db.ExecSQL(L"ROLLBACK");
    EXPECT_EQ(Content(), "");
}

TEST_F(Transaction, RolledBackSavepointLeavesNoneBehind)
{
    db.ExecSQL(L"BEGIN");
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    EXPECT_TRUE(guard.Rollback());
    EXPECT_EQ(db.ExecSQL(L"RELEASE qel_guard"), 1);
    db.ExecSQL(L"COMMIT");
}

TEST_F(Transaction, ExclusiveOneInsideTheHostsIsASavepointToo)
{
    db.ExecSQL(L"BEGIN");
    CSQLiteTransaction guard(&db, true);
    EXPECT_TRUE(guard.BeginTrans());
    EXPECT_TRUE(guard.Commit());
    EXPECT_TRUE(IsOpen());
}

TEST_F(Transaction, GuardsNestToAnyDepth)
{
    CSQLiteTransaction first(&db, false);
    ASSERT_TRUE(first.BeginTrans());
    Add(1);
    CSQLiteTransaction second(&db, false);
    ASSERT_TRUE(second.BeginTrans());
    Add(2);
    {
        CSQLiteTransaction third(&db, false);
        ASSERT_TRUE(third.BeginTrans());
        Add(3);
    }
    EXPECT_EQ(Content(), "1 2");
    EXPECT_TRUE(second.Rollback());
    EXPECT_EQ(Content(), "1");
    EXPECT_TRUE(first.Commit());
    EXPECT_EQ(Content(), "1");
}

TEST_F(Transaction, OuterGuardEndsTheInnerOnes)
{
    db.ExecSQL(L"BEGIN");
    CSQLiteTransaction outer(&db, false);
    CSQLiteTransaction inner(&db, false);
    ASSERT_TRUE(outer.BeginTrans());
    Add(1);
    ASSERT_TRUE(inner.BeginTrans());
    Add(2);
    EXPECT_TRUE(outer.Rollback());
    EXPECT_EQ(Content(), "");
    EXPECT_FALSE(inner.Commit());
    EXPECT_FALSE(inner.Rollback());
    EXPECT_TRUE(IsOpen());
}

TEST_F(Transaction, OuterCommitKeepsWhatAnInnerGuardDid)
{
    CSQLiteTransaction outer(&db, false);
    CSQLiteTransaction middle(&db, false);
    CSQLiteTransaction inner(&db, false);
    ASSERT_TRUE(outer.BeginTrans() && middle.BeginTrans());
    Add(1);
    ASSERT_TRUE(inner.BeginTrans());
    Add(2);
    EXPECT_TRUE(middle.Commit());
    EXPECT_FALSE(inner.Rollback());
    EXPECT_TRUE(outer.Commit());
    EXPECT_EQ(Content(), "1 2");
    EXPECT_FALSE(IsOpen());
}

TEST_F(Transaction, RefusedCommitCanStillBeRolledBack)
{
    db.ExecSQL(L"PRAGMA foreign_keys=ON; CREATE TABLE p (id INTEGER PRIMARY KEY);"
               L"CREATE TABLE c (p REFERENCES p DEFERRABLE INITIALLY DEFERRED)");
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    db.ExecSQL(L"INSERT INTO c VALUES (1)");
    EXPECT_FALSE(guard.Commit());
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(guard.Rollback());
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Rows(db, L"SELECT count(*) FROM c"), "0");
}

TEST_F(Transaction, RefusedCommitCanBeTriedAgain)
{
    db.ExecSQL(L"PRAGMA foreign_keys=ON; CREATE TABLE p (id INTEGER PRIMARY KEY);"
               L"CREATE TABLE c (p REFERENCES p DEFERRABLE INITIALLY DEFERRED)");
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    db.ExecSQL(L"INSERT INTO c VALUES (1)");
    EXPECT_FALSE(guard.Commit());
    db.ExecSQL(L"INSERT INTO p VALUES (1)");
    EXPECT_TRUE(guard.Commit());
    EXPECT_EQ(Rows(db, L"SELECT count(*) FROM c"), "1");
}

TEST_F(Transaction, HostEndingItUnderTheGuardEndsTheGuard)
{
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    Add(1);
    db.ExecSQL(L"COMMIT");
    EXPECT_FALSE(guard.Rollback());
    EXPECT_EQ(Content(), "1");
}

TEST_F(Transaction, HostEndingItUnderNestedGuardsEndsThemOuterOneFirst)
{
    CSQLiteTransaction outer(&db, false);
    CSQLiteTransaction inner(&db, false);
    ASSERT_TRUE(outer.BeginTrans() && inner.BeginTrans());
    ASSERT_EQ(db.ExecSQL(L"ROLLBACK"), 0);
    EXPECT_FALSE(outer.Rollback());
    EXPECT_FALSE(inner.Commit());
    CSQLiteTransaction next(&db, false);
    ASSERT_TRUE(next.BeginTrans());
    ASSERT_EQ(db.ExecSQL(L"INSERT INTO t VALUES (1, 2)"), 0);
    EXPECT_TRUE(next.Commit());
    EXPECT_EQ(Content(), "1");
}

TEST_F(Transaction, NewGuardEndsOneWhoseTransactionHasGone)
{
    CSQLiteTransaction stale(&db, false);
    ASSERT_TRUE(stale.BeginTrans());
    db.ExecSQL(L"ROLLBACK");
    CSQLiteTransaction fresh(&db, false);
    ASSERT_TRUE(fresh.BeginTrans());
    Add(1);
    EXPECT_FALSE(stale.Rollback());
    EXPECT_TRUE(fresh.Commit());
    EXPECT_EQ(Content(), "1");
}

TEST_F(Transaction, ClosingTheConnectionUnderItRollsBack)
{
    sqlite3* host = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &host), 0);
    {
        CQelSQLite used;
        used.Use(host);
        CSQLiteTransaction outer(&used, false);
        CSQLiteTransaction inner(&used, false);
        ASSERT_TRUE(outer.BeginTrans() && inner.BeginTrans());
        EXPECT_EQ(used.ExecSQL(L"CREATE TABLE t (a)"), 0);
        used.Close();
        EXPECT_NE(sqlite3_get_autocommit(host), 0);
        EXPECT_FALSE(outer.Commit());
        EXPECT_FALSE(inner.Rollback());
    }
    EXPECT_EQ(sqlite3_exec(host, "SELECT * FROM t", nullptr, nullptr, nullptr), SQLITE_ERROR);
    EXPECT_EQ(sqlite3_close(host), 0);
}

TEST_F(Transaction, OutlivesTheConnectionObject)
{
    auto own = std::make_unique<CQelSQLite>();
    ASSERT_EQ(own->Open(L":memory:"), 0);
    CSQLiteTransaction guard(own.get(), false);
    ASSERT_TRUE(guard.BeginTrans());
    own.reset();
    EXPECT_FALSE(guard.Commit());
}

TEST_F(Transaction, OpenQueryDoesNotKeepItFromEnding)
{
    db.ExecSQL(L"INSERT INTO t (a) VALUES (1), (2)");
    CQelSQLite::CStatement query(&db);
    query.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(query.Step(), 100);
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    Add(3);
    EXPECT_TRUE(guard.Commit());
    EXPECT_EQ(query.Step(), 100);
    EXPECT_EQ(query.GetInt(0), 2);
}

TEST_F(TransactionOnAFile, CannotBeginWhileAnotherConnectionWrites)
{
    CSQLiteTransaction theirs(&other, false);
    ASSERT_TRUE(theirs.BeginTrans());
    CSQLiteTransaction ours(&db, false);
    EXPECT_FALSE(ours.BeginTrans());
    EXPECT_EQ(log.Text(), "E 17305 database is locked\n");
    EXPECT_TRUE(theirs.Commit());
    EXPECT_TRUE(ours.BeginTrans());
}

TEST_F(TransactionOnAFile, ImmediateOneLetsOthersRead)
{
    CSQLiteTransaction guard(&other, false);
    ASSERT_TRUE(guard.BeginTrans());
    EXPECT_EQ(Content(), "1");
}

TEST_F(TransactionOnAFile, ExclusiveOneKeepsOthersFromReading)
{
    CSQLiteTransaction guard(&other, true);
    ASSERT_TRUE(guard.BeginTrans());
    EXPECT_THAT(CodeThrownBy([&] { Content(); }), Gives(17305));
}

TEST_F(TransactionOnAFile, ReadOnlyDatabaseRefusesTheChangeInside)
{
    ASSERT_EQ(db.Open(folder.Path(L"test.db"), true), 0);
    CSQLiteTransaction guard(&db, false);
    EXPECT_TRUE(guard.BeginTrans());
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 8);
    EXPECT_TRUE(guard.Rollback());
}

TEST_F(TransactionOnAFile, BusyCommitIsRaisedAndCanBeTriedAgain)
{
    CQelSQLite::CStatement reader(&other);
    reader.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(reader.Step(), 100);
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    ASSERT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 0);
    EXPECT_THAT(CodeThrownBy([&] { guard.Commit(); }), Gives(17305));
    reader.Reset();
    EXPECT_TRUE(guard.Commit());
    EXPECT_EQ(Content(), "1 2");
}

TEST_F(TransactionOnAFile, BusyCommitIsUndoneAtTheEndOfTheScope)
{
    CQelSQLite::CStatement reader(&other);
    reader.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(reader.Step(), 100);
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        ASSERT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 0);
        EXPECT_THAT(CodeThrownBy([&] { guard.Commit(); }), Gives(17305));
    }
    reader.Reset();
    EXPECT_EQ(Content(), "1");
}

} // namespace
