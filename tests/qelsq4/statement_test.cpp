// statement_test.cpp: preparing, binding, stepping and reading one statement.
#include "../support/hex.h"
#include "../support/sql_fixture.h"

#include <sqlite3.h>

#include <limits>

namespace {

using qeltest::HexOf;
using qeltest::Rows;
using CStatement = CQelSQLite::CStatement;

using Statement = qeltest::CSqlTest;

TEST_F(Statement, BindsByTheNumberInTheText)
{
    CStatement statement(&db);
    ASSERT_EQ(statement.Prepare(L"SELECT ?2, ?99, ?1"), 0);
    EXPECT_EQ(statement.BindInt(99, 990), 0);
    EXPECT_EQ(statement.BindInt(1, 10), 0);
    EXPECT_EQ(statement.BindInt(2, 20), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 20);
    EXPECT_EQ(statement.GetInt(1), 990);
    EXPECT_EQ(statement.GetInt(2), 10);
    EXPECT_EQ(statement.Step(), 101);
}

TEST_F(Statement, NumberThatTheTextLacksMayBeSkipped)
{
    CStatement statement(&db);
    ASSERT_EQ(statement.Prepare(L"INSERT INTO t (a,b) VALUES(?2,?3)"), 0);
    EXPECT_EQ(statement.BindString(2, L"x"), 0);
    EXPECT_EQ(statement.BindString(3, L"y"), 0);
    EXPECT_EQ(statement.Execute(), 101);
    EXPECT_EQ(Rows(db, L"SELECT a, b FROM t", 2), "x|y");
}

TEST_F(Statement, IntegersOfAllSixtyFourBitsComeBack)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT ?1, typeof(?1)");
    for (const long long value : {0LL, -1LL, 4294967295LL, std::numeric_limits<long long>::max(),
                                  std::numeric_limits<long long>::min()}) {
        statement.Reset();
        statement.BindInt(1, value);
        ASSERT_EQ(statement.Step(), 100);
        EXPECT_EQ(statement.GetInt(0), value);
        EXPECT_STREQ(statement.GetString(1), L"integer");
    }
}

TEST_F(Statement, StringsAreStoredAsText)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1), hex(?1), ?1");
    statement.BindString(1, L"\u00E4\U0001F600");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_STREQ(statement.GetString(0), L"text");
    EXPECT_STREQ(statement.GetString(1), L"C3A4F09F9880");
    EXPECT_STREQ(statement.GetString(2), L"\u00E4\U0001F600");
}

TEST_F(Statement, EmptyStringIsTextAndNullPointerIsNull)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1), typeof(?2), typeof(?3)");
    statement.BindString(1, L"");
    statement.BindString(2, std::wstring());
    statement.BindString(3, nullptr);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_STREQ(statement.GetString(0), L"text");
    EXPECT_STREQ(statement.GetString(1), L"text");
    EXPECT_STREQ(statement.GetString(2), L"null");
}

TEST_F(Statement, TextComesBackWithZerosAndLoneSurrogates)
{
    const std::wstring text = std::wstring(L"a\0b", 3) + L"\xD800" + L"c";
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    statement.BindString(1, text);
    ASSERT_EQ(statement.Execute(), 101);
    statement.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetString(0).Text(), text);
}

TEST_F(Statement, LongTextComesBack)
{
    const std::wstring text(300000, L'\u6F22');
    CStatement statement(&db);
    statement.Prepare(L"SELECT ?1, length(?1)");
    statement.BindString(1, text);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetString(0).Text(), text);
    EXPECT_EQ(statement.GetInt(1), 300000);
}

TEST_F(Statement, BlobIsCopiedWhenBound)
{
    TavBlob blob;
    blob.SetData("\x00\xFF\x01", 3);
    CStatement statement(&db);
    statement.Prepare(L"SELECT ?1, typeof(?1)");
    statement.BindBlob(1, &blob);
    blob.SetData("zzz", 3);
    ASSERT_EQ(statement.Step(), 100);
    TavBlob read;
    EXPECT_TRUE(statement.GetBlob(0, &read));
    EXPECT_EQ(HexOf(read), "00ff01");
    EXPECT_STREQ(statement.GetString(1), L"blob");
}

TEST_F(Statement, EmptyBlobIsABlobAndNullBlobIsNull)
{
    TavBlob empty;
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1), typeof(?2), typeof(?3), ?1");
    statement.BindBlob(1, &empty);
    statement.BindBlob(2, nullptr);
    statement.BindBytes(3, nullptr, 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_STREQ(statement.GetString(0), L"blob");
    EXPECT_STREQ(statement.GetString(1), L"null");
    EXPECT_STREQ(statement.GetString(2), L"blob");
    TavBlob read;
    read.SetData("old", 3);
    EXPECT_TRUE(statement.GetBlob(3, &read));
    EXPECT_EQ(read.GetSize(), 0u);
}

TEST_F(Statement, NullColumnLeavesTheBlob)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT NULL");
    ASSERT_EQ(statement.Step(), 100);
    TavBlob blob;
    blob.SetData("kept", 4);
    EXPECT_FALSE(statement.GetBlob(0, &blob));
    EXPECT_EQ(blob.GetSize(), 4u);
    const unsigned char* data = nullptr;
    unsigned int size = 77;
    EXPECT_FALSE(statement.GetBytes(0, data, size));
    EXPECT_EQ(size, 77u);
    EXPECT_FALSE(statement.GetBlob(0, nullptr));
}

TEST_F(Statement, BytesAreGivenWithoutACopy)
{
    const unsigned char bytes[] = {1, 2, 3};
    CStatement statement(&db);
    statement.Prepare(L"SELECT ?1, x''");
    statement.BindBytes(1, bytes, 3);
    ASSERT_EQ(statement.Step(), 100);
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    ASSERT_TRUE(statement.GetBytes(0, data, size));
    EXPECT_EQ(HexOf(data, size), "010203");
    ASSERT_TRUE(statement.GetBytes(1, data, size));
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0u);
}

TEST_F(Statement, ColumnsOfOtherTypesAreReadAsTheEngineConvertsThem)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 12, 'abc', 1.5, NULL, x'4142'");
    ASSERT_EQ(statement.Step(), 100);
    TavBlob blob;
    EXPECT_TRUE(statement.GetBlob(0, &blob));
    EXPECT_EQ(HexOf(blob), "3132");
    EXPECT_TRUE(statement.GetBlob(1, &blob));
    EXPECT_EQ(HexOf(blob), "616263");
    EXPECT_EQ(statement.GetInt(1), 0);
    EXPECT_EQ(statement.GetInt(2), 1);
    EXPECT_EQ(statement.GetInt(3), 0);
    EXPECT_STREQ(statement.GetString(3), L"");
    EXPECT_STREQ(statement.GetString(4), L"AB");
}

TEST_F(Statement, ColumnThatDoesNotExistReadsAsNull)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 1");
    ASSERT_EQ(statement.Step(), 100);
    TavBlob blob;
    for (const int column : {1, 100, -1}) {
        EXPECT_EQ(statement.GetInt(column), 0);
        EXPECT_TRUE(statement.GetString(column).IsEmpty());
        EXPECT_FALSE(statement.GetBlob(column, &blob));
    }
}

TEST_F(Statement, WithoutARowEverythingReadsAsNull)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT 1");
    TavBlob blob;
    EXPECT_EQ(statement.GetInt(0), 0);
    statement.Step();
    EXPECT_EQ(statement.Step(), 101);
    EXPECT_EQ(statement.GetInt(0), 0);
    EXPECT_TRUE(statement.GetString(0).IsEmpty());
    EXPECT_FALSE(statement.GetBlob(0, &blob));
}

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

TEST_F(Statement, ParameterThatDoesNotExistIsOutOfRange)
{
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    EXPECT_EQ(statement.BindInt(2, 1), 25);
    EXPECT_EQ(statement.BindInt(0, 1), 25);
    EXPECT_EQ(statement.BindInt(-1, 1), 25);
}

TEST_F(Statement, FailedBindKeepsAnotherValueFromBeingStored)
{
    sqlite3_limit(db.Handle(), SQLITE_LIMIT_LENGTH, 100);
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    EXPECT_EQ(statement.BindString(1, std::wstring(101, L'x')), 18);
    EXPECT_EQ(statement.Execute(), 18);
    EXPECT_EQ(Content(), "");
    EXPECT_EQ(statement.BindString(1, L"short"), 0);
    EXPECT_EQ(statement.Execute(), 101);
    EXPECT_EQ(Content(), "short");
}

TEST_F(Statement, BlobThatIsTooLongIsRefused)
{
    sqlite3_limit(db.Handle(), SQLITE_LIMIT_LENGTH, 100);
    TavBlob blob;
    blob.SetData(std::string(101, 'x').data(), 101);
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    EXPECT_EQ(statement.BindBlob(1, &blob), 18);
    EXPECT_EQ(statement.BindBytes(1, blob.GetData(), 101), 18);
    EXPECT_EQ(statement.Execute(), 18);
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
