// memory_test.cpp: what the SQL layer takes from memory, and what it answers when there is none.
#include "../support/allocations.h"
#include "../support/result_matchers.h"
#include "../support/sql_fixture.h"

#include <sqlite3.h>

#include <new>

namespace {

using qeltest::AllocationCount;
using qeltest::CFailingMemory;
using CStatement = CQelSQLite::CStatement;

using SqlMemory = qeltest::CSqlTest;

constexpr const wchar_t* kInsert = L"INSERT INTO t (a, b) VALUES (?1, ?2)";

int InsertOne(CQelSQLite& db, const std::wstring& text)
{
    TavBlob blob;
    blob.SetData("bytes", 5);
    CStatement statement(&db);
    statement.Prepare(kInsert);
    statement.BindString(1, text);
    statement.BindBlob(2, &blob);
    return statement.Execute();
}

TEST_F(SqlMemory, RunningAKeptStatementTakesNone)
{
    const std::wstring text = L"a text that is longer than any small string";
    ASSERT_EQ(InsertOne(db, text), 101);
    const std::size_t before = AllocationCount();
    ASSERT_EQ(InsertOne(db, text), 101);
    EXPECT_EQ(AllocationCount() - before, 0u);
}

TEST_F(SqlMemory, GuardTakesNoneOnceItsTextsAreKept)
{
    for (const bool last : {false, true}) {
        const std::size_t before = AllocationCount();
        CSQLiteTransaction outer(&db, false);
        CSQLiteTransaction inner(&db, false);
        ASSERT_TRUE(outer.BeginTrans() && inner.BeginTrans());
        ASSERT_TRUE(inner.Rollback() && outer.Commit());
        const std::size_t taken = AllocationCount() - before;
        EXPECT_EQ(last ? taken : 0, 0u);
    }
}

TEST_F(SqlMemory, WhereverItRunsOutNothingWrongIsStored)
{
    const std::wstring text = L"a text that is longer than any small string";
    for (std::size_t allowed = 0;; ++allowed) {
        db.SetLogfile(nullptr);
        int raw = 7;
        bool hit = false;
        unsigned int code = 0;
        {
            const CFailingMemory failing(allowed);
            try {
                raw = InsertOne(db, text);
            } catch (CQelException* exception) {
                code = exception->GetCode();
                exception->Delete();
            } catch (const std::bad_alloc&) { // for the exception itself
                code = 17307;
            }
            hit = failing.Hit();
        }
        if (!hit) {
            EXPECT_EQ(raw, 101);
            break;
        }
        EXPECT_THAT(code, qeltest::Gives(17307)) << allowed;
        ASSERT_EQ(Content(), "") << allowed;
        db.Close(); // so that nothing is kept
        SetUp();
    }
    EXPECT_EQ(Content(), "a text that is longer than any small string");
}

TEST_F(SqlMemory, GuardBeginsAndEndsOrDoesNot)
{
    for (std::size_t allowed = 0;; ++allowed) {
        bool begun = false;
        bool hit = false;
        {
            const CFailingMemory failing(allowed);
            CSQLiteTransaction guard(&db, false);
            begun = guard.BeginTrans();
            EXPECT_EQ(guard.Rollback(), begun);
            hit = failing.Hit();
        }
        ASSERT_NE(sqlite3_get_autocommit(db.Handle()), 0) << allowed;
        if (!hit) {
            EXPECT_TRUE(begun);
            break;
        }
    }
}

TEST_F(SqlMemory, BatchWithoutMemoryIsACode)
{
    const std::wstring sql = L"INSERT INTO t (a) VALUES ('a text that is longer than any small string')";
    const CFailingMemory failing(0);
    EXPECT_EQ(db.ExecSQL(sql.c_str()), 7);
}

} // namespace
