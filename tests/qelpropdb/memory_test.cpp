// memory_test.cpp: every change without the memory that it asks for.
#include "every_change.h"

#include <sqlite3.h>
#include <support/allocations.h>

#include <new>

namespace {

using namespace qeltest;

class WithoutMemory : public testing::TestWithParam<SChange>
{
protected:
    static std::string StoredAfter(const SChange& change)
    {
        CQelSQLite sql;
        sql.Open(L":memory:");
        CQelPropDB db(&sql);
        db.Attach(true, nullptr);
        FillForChanges(db);
        EXPECT_THAT(change.work(db), Succeeds());
        return Stored(sql);
    }
};

// Each attempt fails all requests of memory from one on: the first, the second, and so on.
TEST_P(WithoutMemory, OperationGivesACodeAndIsWholeOrNotAtAll)
{
    int failures = 0;
    int standing = 0;
    const std::string after = StoredAfter(GetParam());
    bool met = true;
    for (std::size_t at = 0; met; ++at) {
        CQelSQLite sql;
        sql.Open(L":memory:");
        CQelPropDB db(&sql);
        db.Attach(true, nullptr);
        FillForChanges(db);
        const std::string before = Stored(sql);
        const std::string definitions = DumpDefinitions(db);
        unsigned int code = 0;
        {
            CFailingMemory failing(at);
            try {
                code = GetParam().work(db);
            } catch (const std::bad_alloc&) {
                code = qel::kSuccess; // the test's own arguments; no operation throws
            }
            met = failing.Hit();
        }
        if (code == qel::kSuccess)
            continue; // what failed was not needed, or passes for success as a transaction that cannot begin
        ++failures;
        EXPECT_TRUE(code == 10002 || code == 17307 || code == 17201) << code << " at " << at;
        const bool changed = Stored(sql) == after;
        standing += changed ? 1 : 0;
        EXPECT_TRUE(changed || Stored(sql) == before) << at;
        EXPECT_EQ(DumpDefinitions(db), definitions) << at;
        EXPECT_NE(sqlite3_get_autocommit(sql.Handle()), 0) << at;
    }
    EXPECT_EQ(standing > 0, GetParam().readsBack) << "committed, and then not read back: " << standing;
    const std::string name = GetParam().name;
    if (name == "AddRecord" || name == "SetRecord") {
        EXPECT_EQ(failures, 0) << "with its statements kept, writing a record asks for none";
    } else {
        EXPECT_GT(failures, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Memory, WithoutMemory, testing::ValuesIn(EveryChange()), SChangeName());

} // namespace
