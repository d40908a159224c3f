// batches_test.cpp: changes that count together or not at all.
#include "store_fixture.h"

using namespace qeltest;

namespace {

class StoreBatch : public CStoreFixture
{
protected:
    void SetUp() override
    {
        Create();
        Put(store, 1, 1, "old");
    }
    void ChangeAll(unsigned int priority = 0)
    {
        ASSERT_THAT(Put(store, 1, 1, "new", priority), Succeeds());
        ASSERT_THAT(Put(store, 1, 2, "more"), Succeeds());
    }
};

TEST_F(StoreBatch, CommittedChangesCount)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    EXPECT_EQ(Dump(store, 1), "1=new 2=more");
    ASSERT_THAT(store.CommitBatch(), Succeeds());
    Reopen();
    EXPECT_EQ(Dump(store, 1), "1=new 2=more");
}

TEST_F(StoreBatch, RolledBackChangesAreUndone)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    ASSERT_THAT(store.RemoveSelector(1), Succeeds());
    ASSERT_THAT(store.RollbackBatch(), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=old");
}

TEST_F(StoreBatch, ClosingRollsBack)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    EXPECT_THAT(store.Close(), Succeeds());
    Reopen();
    EXPECT_EQ(Dump(store, 1), "1=old");
    EXPECT_THAT(store.CommitBatch(), Gives(17201));
}

TEST_F(StoreBatch, LastCopyThatEndsRollsBack)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    store = CDovBlobDB();
    Reopen();
    EXPECT_EQ(Dump(store, 1), "1=old");
}

TEST_F(StoreBatch, DoesNotNest)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    EXPECT_THAT(store.BeginBatch(), Gives(17201));
    EXPECT_THAT(store.CommitBatch(), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=new 2=more");
}

TEST_F(StoreBatch, CannotEndWhereNoneIsOpen)
{
    EXPECT_THAT(store.CommitBatch(), Gives(17201));
    EXPECT_THAT(store.RollbackBatch(), Gives(17201));
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ASSERT_THAT(store.CommitBatch(), Succeeds());
    EXPECT_THAT(store.CommitBatch(), Gives(17201));
}

TEST_F(StoreBatch, DurableWriteInsideRollsBackWithTheRest)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll(50);
    EXPECT_THAT(store.Flush(), Succeeds());
    ASSERT_THAT(store.RollbackBatch(), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=old");
}

TEST_F(StoreBatch, RefusedChangeLeavesTheBatchOpen)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    EXPECT_THAT(store.Remove({9, 9}), Gives(10020));
    EXPECT_THAT(store.Set({1, 1}, "x", 4294967295U, 0), Gives(17318));
    ASSERT_THAT(store.CommitBatch(), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=new 2=more");
}

TEST_F(StoreBatch, CompactingWaitsForItsEnd)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    EXPECT_THAT(store.Optimize(L"", nullptr, 0, false), Gives(17201));
    EXPECT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Gives(17201));
    ASSERT_THAT(store.RollbackBatch(), Succeeds());
    EXPECT_THAT(store.Optimize(L"", nullptr, 0, false), Succeeds());
}

TEST_F(StoreBatch, CopyOfTheObjectEndsIt)
{
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ChangeAll();
    CDovBlobDB copy(store);
    ASSERT_THAT(copy.CommitBatch(), Succeeds());
    EXPECT_THAT(store.RollbackBatch(), Gives(17201));
    EXPECT_EQ(Dump(store, 1), "1=new 2=more");
}

} // namespace
