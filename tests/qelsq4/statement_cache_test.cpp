// statement_cache_test.cpp: which prepared statements are kept, and in what state they are handed out.
#include "../support/sql_fixture.h"

#include <host/qelsq4/statement_cache.h>
#include <sqlite3.h>

#include <memory>
#include <vector>

namespace {

using CStatement = CQelSQLite::CStatement;

// Counts what the engine really compiles.
class KeptStatements : public qeltest::CSqlTest
{
protected:
    void SetUp() override
    {
        CSqlTest::SetUp();
        sqlite3_set_authorizer(db.Handle(), &Authorize, this);
    }

    static int Authorize(void* user, int action, const char*, const char*, const char*, const char*)
    {
        if (action == SQLITE_SELECT)
            ++static_cast<KeptStatements*>(user)->compiled;
        return SQLITE_OK;
    }

    int CountInEngine()
    {
        int count = 0;
        for (sqlite3_stmt* s = sqlite3_next_stmt(db.Handle(), nullptr); s != nullptr;
             s = sqlite3_next_stmt(db.Handle(), s))
            ++count;
        return count;
    }

    int compiled = 0;
};

TEST_F(KeptStatements, SameTextIsCompiledOnce)
{
    for (int i = 0; i < 5; ++i) {
        CStatement statement(&db);
        ASSERT_EQ(statement.Prepare(L"SELECT 1"), 0);
        ASSERT_EQ(statement.Step(), 100);
    }
    EXPECT_EQ(compiled, 1);
}

TEST_F(KeptStatements, SameTextFromAnotherPlaceInMemoryIsFound)
{
    std::wstring text = L"SELECT 1";
    CStatement statement(&db);
    ASSERT_EQ(statement.Prepare(text.c_str()), 0);
    text = L"SELECT 2"; // the same place, another text
    ASSERT_EQ(statement.Prepare(text.c_str()), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 2);
    ASSERT_EQ(statement.Prepare(std::wstring(L"SELECT 1").c_str()), 0);
    EXPECT_EQ(compiled, 2);
}

TEST_F(KeptStatements, SeveralOfTheSameTextLiveAtOnce)
{
    db.ExecSQL(L"INSERT INTO t (a) VALUES (1), (2)");
    CStatement first(&db);
    CStatement second(&db);
    ASSERT_EQ(first.Prepare(L"SELECT a FROM t ORDER BY a"), 0);
    ASSERT_EQ(first.Step(), 100);
    ASSERT_EQ(second.Prepare(L"SELECT a FROM t ORDER BY a"), 0);
    ASSERT_EQ(second.Step(), 100);
    ASSERT_EQ(first.Step(), 100);
    EXPECT_EQ(first.GetInt(0), 2);
    EXPECT_EQ(second.GetInt(0), 1);
}

TEST_F(KeptStatements, AllOfTheSameTextAreKept)
{
    for (int round = 0; round < 3; ++round) {
        CStatement first(&db);
        CStatement second(&db);
        first.Prepare(L"SELECT 1");
        second.Prepare(L"SELECT 1");
    }
    EXPECT_EQ(compiled, 2);
}

TEST_F(KeptStatements, GivenBackWhenTheObjectEndsOrIsPreparedAgain)
{
    db.ExecSQL(L"INSERT INTO t (a) VALUES (1)");
    CStatement statement(&db);
    statement.Prepare(L"SELECT a FROM t");
    ASSERT_EQ(statement.Step(), 100);
    statement.Prepare(L"SELECT 2");
    EXPECT_EQ(db.ExecSQL(L"DROP TABLE t"), 0); // no query holds it
}

TEST_F(KeptStatements, HandedOutWithoutTheBindingsOfTheLastUser)
{
    {
        CStatement statement(&db);
        statement.Prepare(L"SELECT typeof(?1), typeof(?2), typeof(?3)");
        statement.BindInt(1, 1);
        statement.BindString(2, L"secret");
        statement.BindBytes(3, "gone soon", 9);
    }
    CStatement statement(&db);
    statement.Prepare(L"SELECT typeof(?1), typeof(?2), typeof(?3)");
    ASSERT_EQ(statement.Step(), 100);
    for (int column = 0; column < 3; ++column)
        EXPECT_STREQ(statement.GetString(column), L"null");
}

TEST_F(KeptStatements, NumberOfIdleOnesIsBounded)
{
    for (int i = 0; i < 1000; ++i) {
        CStatement statement(&db);
        ASSERT_EQ(statement.Prepare((L"SELECT " + std::to_wstring(i)).c_str()), 0);
    }
    EXPECT_EQ(CountInEngine(), static_cast<int>(qel::CStatementCache::kMostIdle));
}

TEST_F(KeptStatements, LongestUnusedOneGoesFirst)
{
    for (int i = 0; i < 1000; ++i) {
        CStatement often(&db);
        often.Prepare(L"SELECT 'often'");
        CStatement once(&db);
        once.Prepare((L"SELECT " + std::to_wstring(i)).c_str());
    }
    EXPECT_EQ(compiled, 1001);
}

TEST_F(KeptStatements, MoreLiveOnesThanAreKeptWork)
{
    std::vector<std::unique_ptr<CStatement>> all;
    for (int i = 0; i < 500; ++i) {
        all.push_back(std::make_unique<CStatement>(&db));
        ASSERT_EQ(all.back()->Prepare(L"SELECT ?1"), 0);
        ASSERT_EQ(all.back()->BindInt(1, i), 0);
    }
    for (int i = 0; i < 500; ++i) {
        ASSERT_EQ(all[static_cast<std::size_t>(i)]->Step(), 100);
        ASSERT_EQ(all[static_cast<std::size_t>(i)]->GetInt(0), i);
    }
    all.clear();
    EXPECT_EQ(CountInEngine(), static_cast<int>(qel::CStatementCache::kMostIdle));
}

TEST_F(KeptStatements, TextsThatLookAlikeAreToldApart)
{
    for (std::size_t place = 0; place < 100; ++place) {
        std::wstring text(100, L'x');
        text[place] = L'y';
        CStatement statement(&db);
        ASSERT_EQ(statement.Prepare((L"SELECT '" + text + L"'").c_str()), 0);
        ASSERT_EQ(statement.Step(), 100);
        EXPECT_EQ(statement.GetString(0).Text(), text);
    }
    EXPECT_EQ(compiled, 100);
}

TEST_F(KeptStatements, ClosingLetsGoOfAll)
{
    sqlite3* const handle = db.Handle();
    CStatement live(&db);
    live.Prepare(L"SELECT 1");
    {
        CStatement kept(&db);
        kept.Prepare(L"SELECT 2");
    }
    EXPECT_NE(sqlite3_next_stmt(handle, nullptr), nullptr);
    EXPECT_EQ(db.Close(), 0); // 5 if one were left
}

} // namespace
