// failure_test.cpp: every write of the engine failed in turn: a code, and nothing half done.
#include "store_fixture.h"

#include <sqlite3.h>
#include <support/fault_vfs.h>
#include <support/row_name.h>

#include <functional>

using namespace qeltest;

namespace {

struct SFailing
{
    const char* name;
    std::function<unsigned int(CDovBlobDB&)> operation;
    const char* before;
    const char* after;
    int raw;
};

std::string State(const CDovBlobDB& store)
{
    return Dump(store, 1) + "|" + Dump(store, 2);
}

constexpr const char* kBefore = "1=one 2=two|1=schema";

void Fill(CDovBlobDB& store)
{
    Put(store, 1, 1, "one");
    Put(store, 1, 2, "two");
    Put(store, 2, 1, "schema");
}

unsigned int ChangeInABatch(CDovBlobDB& store)
{
    if (const unsigned int code = store.BeginBatch(); code != qel::kSuccess)
        return code;
    for (unsigned int oid = 1; oid < 700; ++oid)
        Put(store, 3, oid, std::string(5000, 'x')); // more than the engine's cache holds
    store.RemoveSelector(3);
    Put(store, 1, 1, "batch", 50);
    return store.CommitBatch();
}

class FailingDisk : public CStoreFixture, public testing::WithParamInterface<SFailing>
{
protected:
    /// Runs the operation with all but the first `passing` changes failing. @return whether it failed
    bool FailOnce(CFaultVfs& disk, int passing)
    {
        std::filesystem::remove(folder.File(L"s.qdb"));
        EXPECT_THAT(store.Create(path, 1), Succeeds());
        Fill(store);
        disk.FailAfter(passing, GetParam().raw);
        const unsigned int code = GetParam().operation(store);
        const bool failed = code != qel::kSuccess;
        const bool met = disk.Changes() > passing;
        disk.FailNothing();
        EXPECT_EQ(State(store), failed ? GetParam().before : GetParam().after);
        const unsigned int hard = qel::kSqlBase + static_cast<unsigned int>(GetParam().raw & 0xFF);
        EXPECT_THAT(code, testing::AnyOf(10001, hard, 17201, 17310, 17314));
        CheckUsable(failed);
        return met;
    }
    void CheckUsable(bool failed)
    {
        EXPECT_THAT(Put(store, 4, 4, "still works", 50), Succeeds());
        EXPECT_THAT(store.Close(), Succeeds());
        EXPECT_THAT(store.Open(path, true), Succeeds());
        EXPECT_EQ(State(store), failed ? GetParam().before : GetParam().after);
        EXPECT_EQ(Dump(store, 4), "4=still works");
        store.Close();
        EXPECT_EQ(folder.Names(), "s.qdb");
    }
};

TEST_P(FailingDisk, LeavesTheOldStateOrTheNew)
{
    CFaultVfs disk;
    int passing = 0;
    while (FailOnce(disk, passing) && !HasFailure()) {
        SCOPED_TRACE(passing);
        passing += 1 + passing / 50;
    }
    EXPECT_GT(passing, 0);
}

const SFailing kFailing[] = {
    {"SetOnAFullDisk", [](CDovBlobDB& store) { return Put(store, 1, 1, "new"); }, kBefore,
     "1=new 2=two|1=schema", SQLITE_FULL},
    {"SetOnABrokenDisk", [](CDovBlobDB& store) { return Put(store, 1, 1, "new"); }, kBefore,
     "1=new 2=two|1=schema", SQLITE_IOERR},
    {"DurableSetOnABrokenDisk", [](CDovBlobDB& store) { return Put(store, 1, 1, "new", 50); }, kBefore,
     "1=new 2=two|1=schema", SQLITE_IOERR},
    {"LargeSetOnAFullDisk", [](CDovBlobDB& store) { return Put(store, 3, 1, std::string(300000, 'x')); },
     kBefore, kBefore, SQLITE_FULL},
    {"RemoveOnABrokenDisk",
     [](CDovBlobDB& store) {
         return store.Remove({1, 1});
     },
     kBefore, "2=two|1=schema", SQLITE_IOERR},
    {"RemoveSelectorOnAFullDisk", [](CDovBlobDB& store) { return store.RemoveSelector(1); }, kBefore,
     "|1=schema", SQLITE_FULL},
    {"BatchOnAFullDisk", ChangeInABatch, kBefore, "1=batch 2=two|1=schema", SQLITE_FULL},
    {"CompactingOnAFullDisk", [](CDovBlobDB& store) { return store.Optimize(L"", nullptr, 0, false); },
     kBefore, kBefore, SQLITE_FULL},
};

INSTANTIATE_TEST_SUITE_P(, FailingDisk, testing::ValuesIn(kFailing), SRowName());

using StoreFailure = CStoreFixture;

TEST_F(StoreFailure, OfTheDiskLeavesNoHalfMadeStore)
{
    CFaultVfs disk;
    bool met = true;
    for (int passing = 0; met; ++passing) {
        disk.FailAfter(passing, SQLITE_FULL);
        const unsigned int code = store.Create(path, 1);
        met = disk.Changes() > passing;
        disk.FailNothing();
        ASSERT_EQ(code == qel::kSuccess, folder.Names() == "s.qdb") << passing << " " << folder.Names();
        ASSERT_EQ(code == qel::kSuccess, store.IsOpen());
    }
    EXPECT_TRUE(store.IsOpen());
}

TEST_F(StoreFailure, OfACopyLeavesTheTargetAsItWas)
{
    CFaultVfs disk;
    ASSERT_THAT(store.Create(folder.Path(L"copy"), 1), Succeeds());
    Put(store, 9, 9, "older copy");
    Create();
    for (unsigned int oid = 1; oid < 900; ++oid)
        Put(store, 1, oid, std::string(3000, 'x'));
    for (const int passing : {0, 1, 5, 100, 400}) {
        disk.FailAfter(passing, SQLITE_FULL);
        EXPECT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Gives(17313)) << passing;
        disk.FailNothing();
        EXPECT_EQ(folder.Names(), "copy s.qdb s.qdb-wal");
    }
    ASSERT_THAT(store.Open(folder.Path(L"copy"), true), Succeeds());
    EXPECT_EQ(Dump(store, 9), "9=older copy");
}

TEST_F(StoreFailure, OfCloseIsToldAndTheNextOpeningHasEverything)
{
    CFaultVfs disk;
    bool met = true;
    for (int passing = 0; met; ++passing) {
        SCOPED_TRACE(passing);
        ASSERT_THAT(store.Create(path, 1), Succeeds());
        Fill(store);
        disk.FailAfter(passing, SQLITE_IOERR);
        const unsigned int code = store.Close();
        met = disk.Changes() > passing;
        disk.FailNothing();
        EXPECT_FALSE(store.IsOpen());
        EXPECT_TRUE(code != qel::kSuccess || folder.Names() == "s.qdb") << folder.Names();
        ASSERT_THAT(store.Open(path, false), Succeeds());
        EXPECT_EQ(State(store), kBefore);
        ASSERT_THAT(store.Close(), Succeeds());
        EXPECT_EQ(folder.Names(), "s.qdb");
    }
}

TEST_F(StoreFailure, OfTheEnginesMemoryIsTheFamilysCodeForIt)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, std::string(200000, 'x')), Succeeds());
    sqlite3_hard_heap_limit64(sqlite3_memory_used() + 100000);
    const std::string read = Take(store, 1, 1);
    const unsigned int written = Put(store, 1, 2, std::string(300000, 'y'));
    sqlite3_hard_heap_limit64(0);
    EXPECT_EQ(read, "code 10002");
    EXPECT_THAT(written, Gives(10002));
    EXPECT_EQ(Take(store, 1, 1), std::string(200000, 'x'));
    EXPECT_EQ(Take(store, 1, 2), "code 10020");
}

TEST_F(StoreFailure, OfBeginningABatchIsNotTakenForABatchThatIsOpen)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, "one"), Succeeds());
    sqlite3_hard_heap_limit64(sqlite3_memory_used());
    const unsigned int begun = store.BeginBatch();
    sqlite3_hard_heap_limit64(0);
    EXPECT_THAT(begun, Gives(10002));
    EXPECT_THAT(store.RollbackBatch(), Gives(17201)); // none was open
    EXPECT_THAT(store.BeginBatch(), Succeeds());
    EXPECT_THAT(store.BeginBatch(), Gives(17201));
}

TEST_F(StoreFailure, ThatUndidABatchLetsNoLaterChangeOfItThrough)
{
    CFaultVfs disk;
    Create();
    Fill(store);
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    ASSERT_THAT(Put(store, 1, 1, "batch"), Succeeds());
    disk.FailAfter(0, SQLITE_FULL);
    unsigned int code = qel::kSuccess;
    for (unsigned int oid = 1; oid < 3000 && code == qel::kSuccess; ++oid)
        code = Put(store, 3, oid, std::string(5000, 'x'));
    EXPECT_THAT(code, Gives(17313));
    disk.FailNothing();
    EXPECT_THAT(Put(store, 1, 2, "late"), Gives(17201));
    EXPECT_THAT(store.Remove({1, 2}), Gives(17201));
    EXPECT_THAT(store.CommitBatch(), Gives(17201));
    EXPECT_EQ(State(store), kBefore);
    EXPECT_THAT(Put(store, 1, 2, "after"), Succeeds());
}

} // namespace
