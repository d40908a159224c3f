// at_rest_test.cpp: the form of the file while it is closed, and what lies beside it.
#include "store_fixture.h"

#include <sqlite3.h>
#include <support/fault_vfs.h>

#include <filesystem>

namespace fs = std::filesystem;
using namespace qeltest;

namespace {

constexpr char kRollbackForm = 1;
constexpr char kWriteAheadForm = 2;

/// A store, and what a killed process would leave of it: the files as they stand while it is open.
class StoreAtRest : public CStoreFixture
{
protected:
    char FormOf(const wchar_t* name) const { return ReadFile(folder.File(name)).at(18); }

    /// Gives the folder's files "k.qdb..." the content that the open store "s.qdb" has now.
    void CopyAsKilled()
    {
        for (const wchar_t* suffix : {L"", L"-wal", L"-journal"}) {
            const fs::path from = folder.File(std::wstring(L"s.qdb") + suffix);
            if (fs::exists(from))
                WriteFile(folder.File(std::wstring(L"k.qdb") + suffix), ReadFile(from));
        }
    }
    std::wstring killed = folder.Path(L"k.qdb");
};

TEST_F(StoreAtRest, FileEntersWriteAheadFormWithTheFirstChangeAndLeavesItOnClose)
{
    Create();
    EXPECT_EQ(FormOf(L"s.qdb"), kRollbackForm);
    Put(store, 1, 1, "one");
    EXPECT_EQ(FormOf(L"s.qdb"), kWriteAheadForm);
    EXPECT_EQ(folder.Names(), "s.qdb s.qdb-wal");
    EXPECT_THAT(store.Close(), Succeeds());
    EXPECT_EQ(FormOf(L"s.qdb"), kRollbackForm);
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreAtRest, OpeningAndReadingChangeNoByte)
{
    Create();
    Put(store, 1, 1, "one");
    store.Close();
    const std::string before = ReadFile(folder.File(L"s.qdb"));
    for (const bool readOnly : {false, true}) {
        Reopen(readOnly);
        EXPECT_EQ(Dump(store, 1), "1=one");
        EXPECT_THAT(store.Flush(), Succeeds());
        EXPECT_THAT(store.Remove({1, 2}), Gives(readOnly ? 17501 : 10020));
        EXPECT_THAT(store.Close(), Succeeds());
        EXPECT_TRUE(ReadFile(folder.File(L"s.qdb")) == before);
        EXPECT_EQ(folder.Names(), "s.qdb");
    }
}

TEST_F(StoreAtRest, CopyOfTheClosedFileAloneIsTheWholeStore)
{
    Create();
    Put(store, 1, 1, "one");
    store.Close();
    fs::copy_file(folder.File(L"s.qdb"), folder.File(L"k.qdb"));
    ASSERT_THAT(store.Open(killed, true), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=one");
}

TEST_F(StoreAtRest, StoreOfAKilledProcessIsRecoveredForWriting)
{
    Create();
    Put(store, 1, 1, "one");
    Put(store, 1, 2, "two", 50);
    CopyAsKilled();
    ASSERT_EQ(folder.Names(), "k.qdb k.qdb-wal s.qdb s.qdb-wal");
    CDovBlobDB recovered;
    ASSERT_THAT(recovered.Open(killed, false), Succeeds());
    EXPECT_EQ(Dump(recovered, 1), "1=one 2=two");
    EXPECT_THAT(recovered.Close(), Succeeds());
    EXPECT_EQ(folder.Names(), "k.qdb s.qdb s.qdb-wal");
    EXPECT_EQ(FormOf(L"k.qdb"), kRollbackForm);
}

TEST_F(StoreAtRest, OpenBatchOfAKilledProcessIsUndone)
{
    Create();
    Put(store, 1, 1, "one");
    store.BeginBatch();
    for (unsigned int oid = 1; oid < 3000; ++oid)
        Put(store, 1, oid, std::string(2000, 'x'));
    CopyAsKilled();
    CDovBlobDB recovered;
    ASSERT_THAT(recovered.Open(killed, false), Succeeds());
    EXPECT_EQ(Dump(recovered, 1), "1=one");
}

TEST_F(StoreAtRest, ReaderRefusesWhatAKilledProcessLeft)
{
    Create();
    Put(store, 1, 1, "one");
    CopyAsKilled();
    CDovBlobDB reader;
    EXPECT_THAT(reader.Open(killed, true), Gives(17308));
    fs::remove(folder.File(L"k.qdb-wal"));
    EXPECT_THAT(reader.Open(killed, true), Gives(17308)) << "the form alone tells that something is missing";
    EXPECT_EQ(folder.Names(), "k.qdb s.qdb s.qdb-wal");
}

TEST_F(StoreAtRest, ReaderRefusesAJournalBesideTheFile)
{
    Create();
    store.Close();
    WriteFile(folder.File(L"s.qdb-journal"), "\xd9");
    EXPECT_THAT(store.Open(path, true), Gives(17308));
    EXPECT_EQ(ReadFile(folder.File(L"s.qdb-journal")), "\xd9");
}

TEST_F(StoreAtRest, LogOfAnotherStateBesideARestoredBackupIsNotMixedIn)
{
    Create();
    Put(store, 1, 1, "backup");
    store.Close();
    fs::copy_file(folder.File(L"s.qdb"), folder.File(L"backup"));
    Reopen();
    Put(store, 1, 1, "later");
    CopyAsKilled();
    store.Close();
    fs::remove(folder.File(L"k.qdb"));
    fs::rename(folder.File(L"backup"), folder.File(L"k.qdb"));
    ASSERT_EQ(folder.Names(), "k.qdb k.qdb-wal s.qdb");
    EXPECT_THAT(store.Open(killed, true), Gives(17308));
    ASSERT_THAT(store.Open(killed, false), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=backup");
    store.Close();
    EXPECT_EQ(folder.Names(), "k.qdb s.qdb");
}

TEST_F(StoreAtRest, ReplacingAStoreOfAKilledProcessLeavesNothingOfIt)
{
    Create();
    Put(store, 1, 1, "one");
    CopyAsKilled();
    CDovBlobDB fresh;
    ASSERT_THAT(fresh.Create(killed, 1), Succeeds());
    EXPECT_EQ(Dump(fresh, 1), "");
    fresh.Close();
    EXPECT_EQ(folder.Names(), "k.qdb s.qdb s.qdb-wal");
}

TEST_F(StoreAtRest, CompactedCopyOverAStoreOfAKilledProcessLeavesNothingOfIt)
{
    Create();
    Put(store, 1, 1, "one");
    CopyAsKilled();
    Put(store, 1, 1, "two");
    ASSERT_THAT(store.Optimize(killed, nullptr, 0, false), Succeeds());
    CDovBlobDB copy;
    ASSERT_THAT(copy.Open(killed, true), Succeeds());
    EXPECT_EQ(Dump(copy, 1), "1=two");
}

TEST_F(StoreAtRest, SideFileThatCannotGoIsReportedByClose)
{
    Create();
    fs::create_directories(folder.File(L"s.qdb-shm/in the way"));
    EXPECT_THAT(store.Close(), Gives(17310));
    EXPECT_FALSE(store.IsOpen());
}

TEST_F(StoreAtRest, LogThatCannotGoKeepsTheStoreFromOpening)
{
    Create();
    store.Close();
    fs::create_directories(folder.File(L"s.qdb-wal/in the way"));
    EXPECT_THAT(store.Open(path, false), Gives(17310));
    EXPECT_THAT(store.Open(path, true), Gives(17308));
}

TEST_F(StoreAtRest, ChangeOfFormThatWasCutShortIsUndoneAndClearedAway)
{
    CFaultVfs disk;
    bool met = true, sawJournal = false;
    for (int passing = 0; met; ++passing) {
        SCOPED_TRACE(passing);
        Create();
        disk.FailAfter(passing, SQLITE_IOERR);
        Put(store, 1, 1, "one");
        met = disk.Changes() > passing;
        disk.FailNothing();
        fs::remove(folder.File(L"k.qdb-journal"));
        CopyAsKilled();
        WriteFile(folder.File(L"k.qdb-wal"), ""); // as made, but not yet written to
        sawJournal = sawJournal || fs::exists(folder.File(L"k.qdb-journal"));
        CDovBlobDB recovered;
        ASSERT_THAT(recovered.Open(killed, false), Succeeds());
        EXPECT_EQ(Dump(recovered, 1), "");
        EXPECT_THAT(recovered.Close(), Succeeds());
        store.Close();
        EXPECT_EQ(folder.Names(), "k.qdb s.qdb");
    }
    EXPECT_TRUE(sawJournal);
}

TEST_F(StoreAtRest, RemovedBytesAreOverwritten)
{
    Create();
    Put(store, 1, 1, "a secret that nobody shall read");
    Put(store, 1, 2, "kept");
    store.Remove({1, 1});
    store.Close();
    EXPECT_EQ(ReadFile(folder.File(L"s.qdb")).find("secret"), std::string::npos);
}

} // namespace
