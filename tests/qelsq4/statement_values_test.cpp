// statement_values_test.cpp: parameters that go in and columns that come out.
#include "../support/hex.h"
#include "../support/sql_fixture.h"

#include <sqlite3.h>

#include <limits>

namespace {

using qeltest::HexOf;

using CStatement = CQelSQLite::CStatement;

using StatementValue = qeltest::CSqlTest;

TEST_F(StatementValue, BindsByTheNumberInTheText)
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

TEST_F(StatementValue, NumberThatTheTextLacksMayBeSkipped)
{
    CStatement statement(&db);
    ASSERT_EQ(statement.Prepare(L"INSERT INTO t (a,b) VALUES(?2,?3)"), 0);
    EXPECT_EQ(statement.BindString(2, L"x"), 0);
    EXPECT_EQ(statement.BindString(3, L"y"), 0);
    EXPECT_EQ(statement.Execute(), 101);
    EXPECT_EQ(qeltest::Rows(db, L"SELECT a, b FROM t", 2), "x|y");
}

TEST_F(StatementValue, IntegersOfAllSixtyFourBitsComeBack)
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

TEST_F(StatementValue, StringsAreStoredAsText)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1), hex(?1), ?1");
    statement.BindString(1, L"\u00E4\U0001F600");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_STREQ(statement.GetString(0), L"text");
    EXPECT_STREQ(statement.GetString(1), L"C3A4F09F9880");
    EXPECT_STREQ(statement.GetString(2), L"\u00E4\U0001F600");
}

TEST_F(StatementValue, EmptyStringIsTextAndNullPointerIsNull)
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

TEST_F(StatementValue, TextComesBackWithZerosAndLoneSurrogates)
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

TEST_F(StatementValue, LongTextComesBack)
{
    const std::wstring text(300000, L'\u6F22');
    CStatement statement(&db);
    statement.Prepare(L"SELECT ?1, length(?1)");
    statement.BindString(1, text);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetString(0).Text(), text);
    EXPECT_EQ(statement.GetInt(1), 300000);
}

TEST_F(StatementValue, BlobIsCopiedWhenBound)
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

TEST_F(StatementValue, EmptyBlobIsABlobAndNullBlobIsNull)
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

TEST_F(StatementValue, NullColumnLeavesTheBlob)
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

TEST_F(StatementValue, BytesAreGivenWithoutACopy)
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

TEST_F(StatementValue, ColumnsOfOtherTypesAreReadAsTheEngineConvertsThem)
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
    EXPECT_TRUE(statement.IsInt(0));
    for (const int column : {1, 2, 3, 4, 5})
        EXPECT_FALSE(statement.IsInt(column)) << column;
    EXPECT_FALSE(CStatement(&db).IsInt(0)) << "nothing is prepared";
}

TEST_F(StatementValue, TextOfAUtf16DatabaseReadsAsInAnyOther)
{
    CQelSQLite wide;
    ASSERT_EQ(wide.Open(L":memory:"), 0);
    ASSERT_EQ(wide.ExecSQL(L"PRAGMA encoding='UTF-16le'; CREATE TABLE t (a)"), 0);
    CStatement insert(&wide);
    insert.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    for (const wchar_t* text : {L"plain", L"\u00E4\U0001F600", L""}) {
        insert.Reset();
        insert.BindString(1, text);
        ASSERT_EQ(insert.Execute(), 101);
    }
    EXPECT_EQ(qeltest::Rows(wide, L"SELECT a FROM t ORDER BY rowid"), "plain \xC3\xA4\xF0\x9F\x98\x80 ");
}

TEST_F(StatementValue, OneColumnReadsInEveryWayAndAgain)
{
    CStatement statement(&db);
    statement.Prepare(L"SELECT '12', x'3132', 12");
    ASSERT_EQ(statement.Step(), 100);
    for (int round = 0; round < 2; ++round) {
        for (int column = 0; column < 3; ++column) {
            TavBlob blob;
            EXPECT_STREQ(statement.GetString(column), L"12");
            EXPECT_TRUE(statement.GetBlob(column, &blob));
            EXPECT_EQ(HexOf(blob), "3132");
            EXPECT_EQ(statement.GetInt(column), 12);
        }
    }
}

TEST_F(StatementValue, ColumnThatDoesNotExistReadsAsNull)
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

TEST_F(StatementValue, WithoutARowEverythingReadsAsNull)
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

TEST_F(StatementValue, ParameterThatDoesNotExistIsOutOfRange)
{
    CStatement statement(&db);
    statement.Prepare(L"INSERT INTO t (a) VALUES (?1)");
    EXPECT_EQ(statement.BindInt(2, 1), 25);
    EXPECT_EQ(statement.BindInt(0, 1), 25);
    EXPECT_EQ(statement.BindInt(-1, 1), 25);
}

TEST_F(StatementValue, FailedBindKeepsAnotherValueFromBeingStored)
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

TEST_F(StatementValue, BlobThatIsTooLongIsRefused)
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

} // namespace
