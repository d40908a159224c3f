// statement_test.cpp: preparing, running and ending one statement.
#include "../support/sql_fixture.h"

#include <memory>

namespace {

using qeltest::Rows;
using CStatement = CQelSQLite::CStatement;

using Statement = qeltest::CSqlTest;

TEST_F(Statement, ExecuteGivesARowForAQueryAndDoneForAChange)
{
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (1)");
    EXPECT_EQ(statement.Execute(), 101);
    statement.Prepare(L"SELECT COUNT(*) FROM t");
    EXPECT_EQ(statement.Execute(), 100);
    EXPECT_EQ(statement.GetInt(0), 1);
}

TEST_F(Statement, ResetMakesItRunAgainWithItsBindings)
{
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a, b) VALUES (?1, ?2)");
    statement.BindString(2, L"same");
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(statement.Reset(), 0);
        EXPECT_EQ(statement.BindInt(1, i), 0);
        EXPECT_EQ(statement.Execute(), 101);
    }
    EXPECT_EQ(Rows(db, L"SELECT a, b FROM t", 2), "1|same 2|same 3|same");
}

TEST_F(Statement, ResetForgetsTheFailureOfTheLastRun)
{
    db.ExecSQL(L"CREATE UNIQUE INDEX one ON t (a); INSERT INTO t (a) VALUES (1)");
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    statement.BindInt(1, 1);
    EXPECT_EQ(statement.Execute(), 19);
    EXPECT_EQ(statement.Reset(), 0);
    statement.BindInt(1, 2);
    EXPECT_EQ(statement.Execute(), 101);
    EXPECT_EQ(log.Text(), "E 17319 UNIQUE constraint failed: t.a\n");
}

TEST_F(Statement, PreparedAgainTakesAnotherText)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 1");
    ASSERT_EQ(statement.Step(), 100);
    statement.Reset();
    EXPECT_EQ(statement.Prepare(L"SELECT 2"), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 2);
}

TEST_F(Statement, PreparedAgainWithTheSameTextHasNoBindingsLeft)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1)");
    statement.BindInt(1, 5);
    ASSERT_EQ(statement.Step(), 100);
    statement.Prepare(L"SELECT typeof(?1)");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_STREQ(statement.GetString(0), L"null");
}

struct SRefusedText
{
    const wchar_t* text;
    int raw;
};

TEST_F(Statement, TextWithoutExactlyOneStatementIsRefused)
{
    const SRefusedText cases[] = {
        {nullptr, 21},
        {L"", 21},
        {L"  \n\t", 21},
        {L"-- only a remark", 21},
        {L"/* only */ ;", 21},
        {L"SELECT 1; SELECT 2", 21},
        {L"SELECT 1; broken", 1},
        {L"broken", 1},
        {L"SELECT * FROM missing", 1},
        {L"SELECT 'unended", 1},
    };
    for (const SRefusedText& row : cases) {
        CStatement statement(&db);
        EXPECT_EQ(statement.Prepare(row.text), row.raw);
        EXPECT_EQ(statement.Step(), row.raw);
        EXPECT_EQ(statement.Execute(), row.raw);
    }
}

TEST_F(Statement, RemarksAndSemicolonsMayStandAroundTheStatement)
{
    CStatement statement(&db);
    EXPECT_EQ(statement.Prepare(L" ; /* before */ SELECT /* inside; */ 3 -- behind;\n ; ;"), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 3);
}

TEST_F(Statement, FailedPrepareMakesEverythingElseHarmless)
{
    CStatement statement(&db);
    EXPECT_EQ(statement.Prepare(L"SELECT * FROM missing WHERE a = ?1"), 1);
    TavBlob blob;
    EXPECT_EQ(statement.BindInt(1, 1), 1);
    EXPECT_EQ(statement.BindString(1, L"x"), 1);
    EXPECT_EQ(statement.BindString(1, std::wstring()), 1);
    EXPECT_EQ(statement.BindBlob(1, &blob), 1);
    EXPECT_EQ(statement.BindBytes(1, "x", 1), 1);
    EXPECT_EQ(statement.Reset(), 1);
    EXPECT_EQ(statement.Step(), 1);
    EXPECT_EQ(CQelSQLite::MapQelERR(statement.Execute()), 17301u);
    EXPECT_EQ(statement.GetInt(0), 0);
    EXPECT_TRUE(statement.GetString(0).IsEmpty());
    EXPECT_FALSE(statement.GetBlob(0, &blob));
    EXPECT_EQ(db.ExecStatement(&statement), 1);
}

TEST_F(Statement, FailedPrepareForgetsTheStatementBefore)
{
    CStatement statement(&db);
    ASSERT_EQ(statement.Prepare(L"SELECT 1"), 0);
    EXPECT_EQ(statement.Prepare(L"broken"), 1);
    EXPECT_EQ(statement.Step(), 1);
}

TEST_F(Statement, NeverPreparedFails)
{
    CStatement statement(&db);
    EXPECT_EQ(statement.Step(), 21);
    EXPECT_EQ(statement.Execute(), 21);
    EXPECT_EQ(statement.BindInt(1, 1), 21);
    EXPECT_EQ(statement.Reset(), 21);
}

TEST_F(Statement, WithoutAConnectionFails)
{
    CStatement statement(nullptr);
    EXPECT_EQ(statement.Prepare(L"SELECT 1"), 21);
    EXPECT_EQ(statement.Step(), 21);
    EXPECT_EQ(statement.GetInt(0), 0);
}

TEST_F(Statement, OnAClosedConnectionFails)
{
    db.Close();
    CStatement statement(&db);
    EXPECT_EQ(statement.Prepare(L"SELECT 1"), 21);
    EXPECT_EQ(statement.Execute(), 21);
}

TEST_F(Statement, ClosingUnderItMakesItFail)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 1 UNION SELECT 2");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(db.Close(), 0);
    EXPECT_EQ(statement.Step(), 21);
    EXPECT_EQ(statement.BindInt(1, 1), 21);
    EXPECT_EQ(statement.Reset(), 21);
    EXPECT_EQ(statement.GetInt(0), 0);
}

TEST_F(Statement, CanBePreparedAgainOnceTheConnectionIsOpenAgain)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 1");
    db.Open(L":memory:");
    EXPECT_EQ(statement.Step(), 21);
    EXPECT_EQ(statement.Prepare(L"SELECT 5"), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 5);
}

TEST_F(Statement, OutlivesTheConnectionObject)
{
    auto own = std::make_unique<CQelSQLite>();
    ASSERT_EQ(own->Open(L":memory:"), 0);
    CStatement statement(own.get());
    statement.Prepare(L"SELECT 1");
    own.reset();
    EXPECT_EQ(statement.Step(), 21);
    EXPECT_EQ(statement.Prepare(L"SELECT 1"), 21);
}

TEST_F(Statement, ExecStatementRunsToTheEnd)
{
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (1), (2) RETURNING a");
    EXPECT_EQ(db.ExecStatement(&statement), 0);
    EXPECT_EQ(Content(), "1 2");
    EXPECT_EQ(db.ExecStatement(nullptr), 21);
}

TEST_F(Statement, ExecStatementGivesTheRawCode)
{
    db.ExecSQL(L"CREATE UNIQUE INDEX one ON t (a); INSERT INTO t (a) VALUES (1)");
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (1)");
    EXPECT_EQ(db.ExecStatement(&statement), 19);
    EXPECT_EQ(CQelSQLite::MapQelERR(19), 17319u);
}

TEST_F(Statement, SeesASchemaThatChangedSinceItWasKept)
{
    EXPECT_EQ(Rows(db, L"SELECT * FROM t"), "");
    db.ExecSQL(L"DROP TABLE t; CREATE TABLE t (z); INSERT INTO t VALUES (9)");
    EXPECT_EQ(Rows(db, L"SELECT * FROM t"), "9");
}

} // namespace
