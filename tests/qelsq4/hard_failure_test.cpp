// hard_failure_test.cpp: a busy file, a full disk, damage, an interrupt: raised, never taken for an end.
#include "../support/result_matchers.h"
#include "../support/sql_fixture.h"

#include <sqlite3.h>

#include <fstream>

namespace {

using qeltest::CodeThrownBy;
using qeltest::Gives;
using qeltest::Rows;
using CStatement = CQelSQLite::CStatement;

using HardFailure = qeltest::CSqlFileTest;

TEST_F(HardFailure, BusyFileIsRaisedByExecute)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN IMMEDIATE"), 0);
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (2)");
    EXPECT_THAT(CodeThrownBy([&] { statement.Execute(); }), Gives(17305));
    EXPECT_EQ(log.Text(), "E 17305 database is locked\n");
    other.ExecSQL(L"COMMIT");
    EXPECT_EQ(statement.Reset(), 0);
    EXPECT_EQ(statement.Execute(), 101);
}

TEST_F(HardFailure, BusyFileIsRaisedByStep)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    CStatement statement(&db);
    statement.Prepare(L"SELECT a FROM t");
    EXPECT_THAT(CodeThrownBy([&] { statement.Step(); }), Gives(17305));
}

TEST_F(HardFailure, MetByPrepareIsRaisedByTheRun)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    CQelSQLite fresh; // has the schema still to read
    ASSERT_EQ(fresh.Open(folder.Path(L"test.db")), 0);
    CStatement statement(&fresh);
    EXPECT_EQ(statement.Prepare(L"SELECT a FROM t"), 5);
    EXPECT_EQ(statement.BindInt(1, 1), 5);
    EXPECT_THAT(CodeThrownBy([&] { statement.Step(); }), Gives(17305));
    EXPECT_THAT(CodeThrownBy([&] { statement.Execute(); }), Gives(17305));
}

TEST_F(HardFailure, IsACodeOfTheExecOperations)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN IMMEDIATE"), 0);
    EXPECT_EQ(db.ExecSQL(L"INSERT INTO t (a) VALUES (2)"), 5);
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (2)");
    EXPECT_EQ(db.ExecStatement(&statement), 5);
}

TEST_F(HardFailure, TableLockedByAnOwnQueryIsAnsweredWithSix)
{
    CStatement query(&db);
    query.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(query.Step(), 100);
    EXPECT_EQ(db.ExecSQL(L"DROP TABLE t"), 6);
    CStatement drop(&db);
    drop.Prepare(L"DROP TABLE t");
    EXPECT_THAT(CodeThrownBy([&] { drop.Execute(); }), Gives(17306));
}

TEST_F(HardFailure, GivenBackQueryLocksNothing)
{
    {
        CStatement query(&db);
        query.Prepare(L"SELECT a FROM t");
        ASSERT_EQ(query.Step(), 100);
    }
    EXPECT_EQ(db.ExecSQL(L"DROP TABLE t"), 0);
}

class FullDatabase : public qeltest::CSqlFileTest
{
protected:
    void SetUp() override
    {
        CSqlFileTest::SetUp();
        ASSERT_EQ(Rows(db, L"PRAGMA max_page_count=4"), "4");
    }

    // Writes until there is no room.
    unsigned int FillUp()
    {
        CStatement statement(&db);
        statement.Prepare(L"INSERT INTO t (b) VALUES (zeroblob(1000))");
        return CodeThrownBy([&] {
            for (int i = 0; i < 100; ++i) {
                statement.Reset();
                statement.Execute();
            }
        });
    }
};

TEST_F(FullDatabase, IsRaised)
{
    EXPECT_THAT(FillUp(), Gives(17313));
    EXPECT_EQ(log.Text(), "E 17313 database or disk is full\n");
}

TEST_F(FullDatabase, LosesWhatTheTransactionDid)
{
    {
        CSQLiteTransaction guard(&db, false);
        ASSERT_TRUE(guard.BeginTrans());
        ASSERT_THAT(FillUp(), Gives(17313));
    }
    EXPECT_EQ(Content(), "1");
    EXPECT_NE(sqlite3_get_autocommit(db.Handle()), 0);
}

TEST_F(FullDatabase, WhatTheEngineUndidItselfIsNotUndoneTwice)
{
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    ASSERT_THAT(FillUp(), Gives(17313));
    ASSERT_EQ(db.ExecSQL(L"ROLLBACK"), sqlite3_get_autocommit(db.Handle()) != 0 ? 1 : 0);
    ASSERT_EQ(db.ExecSQL(L"BEGIN; UPDATE t SET a = 7 WHERE a = 1"), 0);
    EXPECT_FALSE(guard.Rollback());
    EXPECT_EQ(db.ExecSQL(L"COMMIT"), 0);
    EXPECT_EQ(Content(), "7");
}

TEST_F(HardFailure, TriggerThatRollsBackEndsTheGuardAtOnce)
{
    db.ExecSQL(L"CREATE TRIGGER no BEFORE INSERT ON t BEGIN SELECT RAISE(ROLLBACK, 'refused'); END");
    CSQLiteTransaction guard(&db, false);
    ASSERT_TRUE(guard.BeginTrans());
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (2)");
    EXPECT_EQ(statement.Execute(), 19);
    ASSERT_EQ(db.ExecSQL(L"BEGIN; UPDATE t SET a = 7"), 0); // the host's own
    EXPECT_FALSE(guard.Rollback());
    EXPECT_FALSE(guard.Commit());
    EXPECT_EQ(db.ExecSQL(L"COMMIT"), 0);
    EXPECT_EQ(Content(), "7");
}

TEST_F(HardFailure, InterruptedQueryIsRaised)
{
    CStatement statement(&db);
    statement.Prepare(L"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i FROM n");
    ASSERT_EQ(statement.Step(), 100);
    sqlite3_interrupt(db.Handle());
    EXPECT_THAT(CodeThrownBy([&] { statement.Step(); }), Gives(17309));
}

TEST_F(HardFailure, DamagedPageIsRaised)
{
    ASSERT_EQ(db.ExecSQL(L"INSERT INTO t (b) SELECT zeroblob(3000) FROM (VALUES (1),(2),(3),(4))"), 0);
    db.Close();
    other.Close();
    {
        std::fstream file(folder.File(L"test.db"), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(4096);
        file << std::string(4096, '\x7F');
    }
    ASSERT_EQ(db.Open(folder.Path(L"test.db")), 0);
    EXPECT_THAT(CodeThrownBy([&] { Content(); }), Gives(17311));
}

TEST_F(HardFailure, FileThatIsNoDatabaseIsRaised)
{
    qeltest::WriteFile(folder.File(L"text.db"), std::string(5000, 'x'));
    CQelSQLite text;
    ASSERT_EQ(text.Open(folder.Path(L"text.db")), 0);
    EXPECT_EQ(text.ExecSQL(L"CREATE TABLE t (a)"), 26);
    EXPECT_THAT(CodeThrownBy([&] { Rows(text, L"SELECT * FROM sqlite_master"); }), Gives(17326));
    CSQLiteTransaction guard(&text, false);
    EXPECT_FALSE(guard.BeginTrans());
}

TEST_F(HardFailure, StateOfTheStatementAfterARaiseIsUsable)
{
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    CStatement statement(&db);
    statement.Prepare(L"SELECT a FROM t WHERE a = ?1");
    statement.BindInt(1, 1);
    EXPECT_THAT(CodeThrownBy([&] { statement.Step(); }), Gives(17305));
    EXPECT_EQ(statement.GetInt(0), 0);
    ASSERT_EQ(other.ExecSQL(L"COMMIT"), 0);
    statement.Reset();
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 1);
}

TEST_F(HardFailure, OnlyTheListedCodesAreRaised)
{
    CStatement statement(&db);
    EXPECT_EQ(statement.Prepare(L"SELECT a FROM missing"), 1);
    EXPECT_EQ(statement.Step(), 1);
    ASSERT_EQ(db.Open(folder.Path(L"test.db"), true), 0);
    EXPECT_EQ(statement.Prepare(L"INSERT INTO t (a) VALUES (2)"), 0);
    EXPECT_EQ(statement.Execute(), 8);
}

} // namespace
