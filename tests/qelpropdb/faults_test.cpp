// faults_test.cpp: every statement failed in turn, and nothing changed by halves.
#include "every_change.h"

#include <sqlite3.h>

namespace {

using namespace qeltest;

class Interrupted : public testing::Test, public testing::WithParamInterface<SChange>
{
protected:
    // A fresh database for every attempt, since a failure must not lean on the one before.
    struct SAttempt
    {
        SAttempt()
        {
            sql.Open(L":memory:");
            db.Attach(true, nullptr);
            FillForChanges(db);
            db.SetNotifyCallback(&CRecordingNotifier::Notify, 0);
            definitions = DumpDefinitions(db);
            stored = Stored(sql);
        }

        CQelSQLite sql;
        CQelPropDB db{&sql};
        CRecordingNotifier notifier;
        std::string definitions;
        std::string stored;
    };

    static int Tick(void* left) { return --*static_cast<int*>(left) == 0 ? 1 : 0; }

    static void ExpectLeft(SAttempt& attempt, const std::string& stored, int at, unsigned int code)
    {
        EXPECT_EQ(Stored(attempt.sql), stored) << at;
        EXPECT_EQ(DumpDefinitions(attempt.db), attempt.definitions) << at;
        EXPECT_NE(sqlite3_get_autocommit(attempt.sql.Handle()), 0) << "a transaction is left open, " << at;
        if (code != qel::kSuccess) {
            EXPECT_EQ(attempt.notifier.Text(), "") << at;
        }
    }
};

// The engine is interrupted at its first instruction, its second, and so on until the operation gets through.
// Tables and columns that cannot be read back after the commit are changed nevertheless.
TEST_P(Interrupted, OperationGivesACodeAndIsWholeOrNotAtAll)
{
    SAttempt whole;
    ASSERT_THAT(GetParam().work(whole.db), Succeeds());
    const std::string after = Stored(whole.sql);
    ASSERT_NE(after, whole.stored) << "there must be something to change";
    int failures = 0;
    int standing = 0;
    for (int at = 1, left = 0; left <= 0; ++at) {
        SAttempt attempt;
        left = at;
        sqlite3_progress_handler(attempt.sql.Handle(), 1, &Tick, &left);
        const unsigned int code = GetParam().work(attempt.db);
        sqlite3_progress_handler(attempt.sql.Handle(), 0, nullptr, nullptr);
        failures += code == qel::kSuccess ? 0 : 1;
        const bool changed = Stored(attempt.sql) == after;
        if (code == qel::kSuccess && changed)
            continue; // what failed was not needed
        standing += changed ? 1 : 0;
        if (code == qel::kSuccess) {
            EXPECT_TRUE(GetParam().quietStart) << at;
        } else {
            EXPECT_TRUE(code == 17309 || code == 17201) << code << " at " << at;
        }
        ExpectLeft(attempt, changed ? after : attempt.stored, at, code);
    }
    EXPECT_GT(failures, 5);
    EXPECT_EQ(standing > 0, GetParam().readsBack) << standing;
}

INSTANTIATE_TEST_SUITE_P(Faults, Interrupted, testing::ValuesIn(EveryChange()), SChangeName());

using InterruptedRepair = Interrupted;

// Attaching that fails leaves the orders as they were or whole, and a catalogue that is whole or empty.
TEST_F(InterruptedRepair, IsWholeOrNotAtAll)
{
    SAttempt whole;
    ASSERT_THAT(whole.db.Attach(false, nullptr), Succeeds());
    const std::string after = Stored(whole.sql);
    ASSERT_NE(after, whole.stored);
    for (int at = 1, left = 0; left <= 0; ++at) {
        SAttempt attempt;
        left = at;
        sqlite3_progress_handler(attempt.sql.Handle(), 1, &Tick, &left);
        const unsigned int code = attempt.db.Attach(false, nullptr);
        sqlite3_progress_handler(attempt.sql.Handle(), 0, nullptr, nullptr);
        const std::string stored = Stored(attempt.sql);
        EXPECT_TRUE(stored == attempt.stored || stored == after) << at;
        EXPECT_EQ(attempt.db.TableExists(L"Lamps"), code != 17309) << at;
        EXPECT_EQ(attempt.notifier.Text(), code == 17201 ? "" : "0(0,0)") << at;
        EXPECT_NE(sqlite3_get_autocommit(attempt.sql.Handle()), 0) << at;
    }
}

class Refused : public Interrupted
{
protected:
    struct SRefusal
    {
        int left;
        bool met = false;
    };

    static int Deny(void* user, int action, const char*, const char*, const char*, const char*)
    {
        auto* refusal = static_cast<SRefusal*>(user);
        if (action == SQLITE_TRANSACTION || action == SQLITE_SAVEPOINT || --refusal->left != 0)
            return SQLITE_OK;
        refusal->met = true;
        return SQLITE_DENY;
    }
};

// The engine refuses one table, column or function of the statements, the first, the second, and so on. That
// is no hard failure: reads go on as if nothing were stored. What has been refused must not be half done.
TEST_P(Refused, OperationIsWholeOrNotAtAll)
{
    SAttempt whole;
    ASSERT_THAT(GetParam().work(whole.db), Succeeds());
    const std::string after = Stored(whole.sql);
    for (int at = 1;; ++at) {
        SAttempt attempt;
        SRefusal refusal{at};
        sqlite3_set_authorizer(attempt.sql.Handle(), &Deny, &refusal);
        const unsigned int code = GetParam().work(attempt.db);
        sqlite3_set_authorizer(attempt.sql.Handle(), nullptr, nullptr);
        if (!refusal.met)
            break;
        const std::string stored = Stored(attempt.sql);
        EXPECT_TRUE(stored == attempt.stored || (code == qel::kSuccess && stored == after)) << at << stored;
        EXPECT_NE(sqlite3_get_autocommit(attempt.sql.Handle()), 0) << at;
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, Refused, testing::ValuesIn(EveryChange()), SChangeName());

class RefusedCommit : public Interrupted
{};

TEST_P(RefusedCommit, IsTheResultAndUndoesTheChange)
{
    SAttempt attempt;
    sqlite3_commit_hook(
        attempt.sql.Handle(), [](void*) { return 1; }, nullptr);
    EXPECT_THAT(GetParam().work(attempt.db), Gives(17201));
    sqlite3_commit_hook(attempt.sql.Handle(), nullptr, nullptr);
    EXPECT_EQ(Stored(attempt.sql), attempt.stored);
    EXPECT_EQ(DumpDefinitions(attempt.db), attempt.definitions);
}

INSTANTIATE_TEST_SUITE_P(Faults, RefusedCommit, testing::ValuesIn(EveryChange()), SChangeName());

TEST_F(InterruptedRepair, RefusedCommitIsTheResultAndLeavesTheOrders)
{
    SAttempt attempt;
    sqlite3_commit_hook(
        attempt.sql.Handle(), [](void*) { return 1; }, nullptr);
    EXPECT_THAT(attempt.db.Attach(false, nullptr), Gives(17201));
    sqlite3_commit_hook(attempt.sql.Handle(), nullptr, nullptr);
    EXPECT_EQ(Stored(attempt.sql), attempt.stored);
    EXPECT_TRUE(attempt.db.TableExists(L"Lamps"));
    EXPECT_EQ(attempt.notifier.Text(), "0(0,0)");
}

using FullDisk = Lamps;

TEST_F(FullDisk, EndsAddingRecordsWithItsCodeAndLosesNone)
{
    ASSERT_TRUE(Execute(sql, "PRAGMA max_page_count=60"));
    const TRecord values = {Value(1, Int(1)), Value(2, Text(std::wstring(3000, L'x')))};
    unsigned long oid = 0;
    unsigned int code = qel::kSuccess;
    unsigned int added = 0;
    for (; code == qel::kSuccess && added < 1000; added += code == qel::kSuccess ? 1 : 0)
        code = db.AddRecord(lamps, oid, values, false);
    EXPECT_THAT(code, Gives(17313));
    EXPECT_GT(added, 5u);
    unsigned int count = 0;
    EXPECT_THAT(db.GetRecordCount(lamps, count), Succeeds());
    EXPECT_EQ(count, added);
    for (const unsigned long removed : {1UL, 2UL, 3UL})
        EXPECT_THAT(db.RemoveRecord(lamps, removed), Succeeds());
    EXPECT_THAT(db.AddRecord(lamps, oid, values, false), Succeeds()) << "room was made";
}

TEST_F(FullDisk, EndsAddingATableWithItsCode)
{
    unsigned int code = qel::kSuccess;
    int added = 0;
    ASSERT_TRUE(Execute(sql, "PRAGMA max_page_count=20"));
    while (code == qel::kSuccess && added < 1000) {
        CQelTable table = TableOf(L"t" + std::to_wstring(added));
        table.Properties().description = std::wstring(3000, L'x');
        code = db.AddTable(table);
        added += code == qel::kSuccess ? 1 : 0;
    }
    EXPECT_THAT(code, Gives(17313));
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM qeltpt"), std::to_string(added + 1) + "\n");
    EXPECT_FALSE(db.TableExists(L"t" + std::to_wstring(added)));
}

using InterruptedRead = Lamps;

// Interrupted at every instruction in turn.
TEST_F(InterruptedRead, IsACodeAndNeverAPart)
{
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    const std::vector<CQelPropDB::SSortItem> sort = {{1, false}};
    int failures = 0;
    for (int at = 1, left = 0; left <= 0; ++at) {
        left = at;
        sqlite3_progress_handler(
            sql.Handle(), 1, [](void* rest) { return --*static_cast<int*>(rest) == 0 ? 1 : 0; }, &left);
        TOids oids = {77};
        const unsigned int code = db.GetRecordOids(lamps, oids, &sort);
        sqlite3_progress_handler(sql.Handle(), 0, nullptr, nullptr);
        failures += code == qel::kSuccess ? 0 : 1;
        EXPECT_EQ(oids, code == qel::kSuccess ? (TOids{2, 1}) : TOids()) << at;
        EXPECT_TRUE(code == qel::kSuccess || code == 17309);
    }
    EXPECT_GT(failures, 20);
}

} // namespace
