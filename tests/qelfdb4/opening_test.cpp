// opening_test.cpp: which files are made, opened, refused and left alone.
#include "store_fixture.h"

#include <qelsq4/qelsq4.h>
#include <support/row_name.h>

#include <filesystem>

using namespace qeltest;

namespace {

using StoreOpening = CStoreFixture;

TEST_F(StoreOpening, NewStoreIsOpenForWritingUnderTheGivenPath)
{
    ASSERT_THAT(store.Create(path, 0), Succeeds());
    EXPECT_TRUE(store.IsOpen());
    EXPECT_FALSE(store.IsReadOnly());
    EXPECT_EQ(store.GetName(), path);
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreOpening, FreshObjectIsClosed)
{
    EXPECT_FALSE(store.IsOpen());
    EXPECT_FALSE(store.IsReadOnly());
    EXPECT_EQ(store.GetName(), L"");
    EXPECT_THAT(store.Close(), Gives(17500));
}

TEST_F(StoreOpening, MissingFileIsToldAndNotMade)
{
    EXPECT_THAT(store.Open(path, false), Gives(10014));
    EXPECT_THAT(store.Open(path, true), Gives(10014));
    EXPECT_THAT(store.Open(L"", false), Gives(10014));
    EXPECT_FALSE(store.IsOpen());
    EXPECT_EQ(folder.Names(), "");
}

TEST_F(StoreOpening, ExistingStoreIsReplacedOnlyOnRequest)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, "old"), Succeeds());
    store.Close();
    EXPECT_THAT(store.Create(path, 0), Gives(10012));
    EXPECT_FALSE(store.IsOpen());
    Reopen();
    EXPECT_EQ(Dump(store, 1), "1=old");
    store.Close();
    ASSERT_THAT(store.Create(path, 1), Succeeds());
    EXPECT_EQ(Dump(store, 1), "");
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreOpening, StoreReplacesItselfWhileItIsOpen)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, "old"), Succeeds());
    ASSERT_THAT(store.Create(path, 1), Succeeds());
    EXPECT_EQ(Dump(store, 1), "");
}

TEST_F(StoreOpening, DamagedStoreCanBeReplaced)
{
    Create();
    store.Close();
    std::string bytes = ReadFile(folder.File(L"s.qdb"));
    bytes.resize(150);
    WriteFile(folder.File(L"s.qdb"), bytes);
    EXPECT_THAT(store.Open(path, false), Gives(17311));
    EXPECT_THAT(store.Create(path, 1), Succeeds());
}

struct SForeign
{
    const char* name;
    std::string bytes;
};

std::string OtherDatabase()
{
    CTemporaryFolder folder;
    CQelSQLite db;
    db.Open(folder.Path(L"x.db"));
    db.ExecSQL(L"PRAGMA application_id=7; CREATE TABLE rec(id INTEGER PRIMARY KEY, crc, data)");
    db.Close();
    return ReadFile(folder.File(L"x.db"));
}

class ForeignFile : public CStoreFixture, public testing::WithParamInterface<SForeign>
{};

TEST_P(ForeignFile, IsRefusedAndLeftAsItIs)
{
    WriteFile(folder.File(L"s.qdb"), GetParam().bytes);
    EXPECT_THAT(store.Open(path, false), Gives(10013));
    EXPECT_THAT(store.Open(path, true), Gives(10013));
    EXPECT_THAT(store.Create(path, 1), Gives(10013));
    EXPECT_THAT(store.Create(path, 0), Gives(10013));
    EXPECT_FALSE(store.IsOpen());
    EXPECT_EQ(ReadFile(folder.File(L"s.qdb")), GetParam().bytes);
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_P(ForeignFile, IsNoTargetOfACompactedCopy)
{
    Create();
    WriteFile(folder.File(L"x"), GetParam().bytes);
    EXPECT_THAT(store.Optimize(folder.Path(L"x"), nullptr, 0, false), Gives(10013));
    EXPECT_EQ(ReadFile(folder.File(L"x")), GetParam().bytes);
    EXPECT_EQ(folder.Names(), "s.qdb x");
}

INSTANTIATE_TEST_SUITE_P(, ForeignFile,
                         testing::Values(SForeign{"Empty", ""}, SForeign{"Text", "Dear Sir or Madam,\n"},
                                         SForeign{"Binary", std::string(5000, '\x7f')},
                                         SForeign{"BareMagic", std::string("SQLite format 3\0", 16)},
                                         SForeign{"OtherDatabase", OtherDatabase()}),
                         SRowName());

TEST_F(StoreOpening, FolderIsNoStore)
{
    std::filesystem::create_directory(folder.File(L"s.qdb"));
    EXPECT_THAT(store.Open(path, false), Gives(10013));
    EXPECT_THAT(store.Open(path, true), Gives(10013));
    EXPECT_THAT(store.Create(path, 1), Gives(10013));
    EXPECT_TRUE(std::filesystem::is_directory(folder.File(L"s.qdb")));
}

TEST_F(StoreOpening, FolderThatIsMissingGivesACode)
{
    EXPECT_THAT(store.Create(folder.Path(L"none/s.qdb"), 1), Gives(17314));
    EXPECT_THAT(store.Create(L"", 1), Gives(17314));
    EXPECT_FALSE(store.IsOpen());
}

TEST_F(StoreOpening, UnfinishedStoreOfAnEarlierAttemptIsClearedAway)
{
    Create();
    store.Close();
    std::filesystem::rename(folder.File(L"s.qdb"), folder.File(L"s.qdb#new"));
    WriteFile(folder.File(L"s.qdb#new-journal"), "x");
    EXPECT_THAT(store.Create(path, 0), Succeeds());
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreOpening, UsersFileInTheWayOfTheUnfinishedStoreIsLeft)
{
    WriteFile(folder.File(L"s.qdb#new"), "a letter");
    EXPECT_THAT(store.Create(path, 1), Gives(10013));
    EXPECT_EQ(ReadFile(folder.File(L"s.qdb#new")), "a letter");
    EXPECT_EQ(folder.Names(), "s.qdb#new");
}

TEST_F(StoreOpening, SideFilesThatLieAtThePlaceOfANewStoreGo)
{
    for (const wchar_t* name : {L"s.qdb-wal", L"s.qdb-shm", L"s.qdb-journal"})
        WriteFile(folder.File(name), "left behind");
    Create();
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreOpening, StoreInUseIsRefusedToASecondWriter)
{
    Create();
    CDovBlobDB second;
    EXPECT_THAT(second.Open(path, false), Gives(10015));
    EXPECT_THAT(second.Open(path, true), Gives(10015));
    EXPECT_THAT(second.Create(path, 1), Gives(10015));
    EXPECT_THAT(second.Create(path, 0), Gives(10012));
    ASSERT_THAT(Put(store, 1, 1, "mine"), Succeeds());
    EXPECT_THAT(second.Open(path, false), Gives(10015));
    EXPECT_THAT(second.Open(path, true), Gives(10015));
    EXPECT_EQ(Dump(store, 1), "1=mine");
    store.Close();
    EXPECT_THAT(second.Open(path, false), Succeeds());
}

TEST_F(StoreOpening, ReadersShareTheFileAndKeepWritersAway)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, "one"), Succeeds());
    store.Close();
    CDovBlobDB first, second;
    ASSERT_THAT(first.Open(path, true), Succeeds());
    ASSERT_THAT(second.Open(path, true), Succeeds());
    EXPECT_TRUE(first.IsReadOnly());
    EXPECT_EQ(Dump(second, 1), "1=one");
    EXPECT_THAT(store.Open(path, false), Gives(10015));
    EXPECT_THAT(store.Create(path, 1), Gives(10015));
    EXPECT_EQ(Dump(first, 1), "1=one");
    first.Close();
    second.Close();
    EXPECT_THAT(store.Open(path, false), Succeeds());
}

TEST_F(StoreOpening, ReaderRefusesEveryChange)
{
    Create();
    ASSERT_THAT(Put(store, 1, 1, "one"), Succeeds());
    Reopen(true);
    EXPECT_THAT(Put(store, 1, 1, "two"), Gives(17501));
    EXPECT_THAT(store.Remove({1, 1}), Gives(17501));
    EXPECT_THAT(store.Remove({1, 2}), Gives(17501));
    EXPECT_THAT(store.RemoveSelector(1), Gives(17501));
    EXPECT_THAT(store.BeginBatch(), Gives(17501));
    EXPECT_THAT(store.CommitBatch(), Gives(17501));
    EXPECT_THAT(store.RollbackBatch(), Gives(17501));
    EXPECT_THAT(store.Optimize(L"", nullptr, 0, false), Gives(17501));
    EXPECT_THAT(store.Flush(), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=one");
}

TEST_F(StoreOpening, ClosedStoreRefusesEverything)
{
    std::vector<unsigned long> oids;
    unsigned long faults = 0;
    unsigned int number = 7;
    char byte = 'x';
    EXPECT_THAT(Put(store, 1, 1, "one"), Gives(17500));
    EXPECT_THAT(store.Get({1, 1}, &byte), Gives(17500));
    EXPECT_THAT(store.GetSize({1, 1}, number), Gives(17500));
    EXPECT_THAT(store.GetNumberOfRecords(1, number), Gives(17500));
    EXPECT_THAT(store.GetOids(1, oids, false), Gives(17500));
    EXPECT_FALSE(store.HasRecord({1, 1}));
    EXPECT_THAT(store.Remove({1, 1}), Gives(17500));
    EXPECT_THAT(store.RemoveSelector(1), Gives(17500));
    EXPECT_THAT(store.Flush(), Gives(17500));
    EXPECT_THAT(store.BeginBatch(), Gives(17500));
    EXPECT_THAT(store.CommitBatch(), Gives(17500));
    EXPECT_THAT(store.RollbackBatch(), Gives(17500));
    EXPECT_THAT(store.Optimize(L"", nullptr, 0, false), Gives(17500));
    EXPECT_THAT(store.Optimize(path, nullptr, 0, false), Gives(17500));
    EXPECT_THAT(store.SelfTest(nullptr, faults, nullptr, 0), Gives(17500));
    EXPECT_EQ(number, 7U);
}

TEST_F(StoreOpening, CopyUsesTheSameOpenStore)
{
    Create();
    CDovBlobDB copy(store);
    EXPECT_TRUE(copy.IsOpen());
    EXPECT_EQ(copy.GetName(), path);
    ASSERT_THAT(Put(copy, 1, 1, "from the copy"), Succeeds());
    EXPECT_EQ(Take(store, 1, 1), "from the copy");
}

TEST_F(StoreOpening, EitherCopyClosesForBoth)
{
    Create();
    CDovBlobDB copy;
    copy = store;
    EXPECT_THAT(copy.Close(), Succeeds());
    EXPECT_FALSE(store.IsOpen());
    EXPECT_THAT(store.Close(), Gives(17500));
    EXPECT_THAT(Put(store, 1, 1, "x"), Gives(17500));
}

TEST_F(StoreOpening, LastCopyThatEndsClosesTheStore)
{
    {
        CDovBlobDB inner;
        ASSERT_THAT(inner.Create(path, 1), Succeeds());
        store = inner;
    }
    EXPECT_TRUE(store.IsOpen());
    store = CDovBlobDB();
    CDovBlobDB other;
    EXPECT_THAT(other.Open(path, false), Succeeds());
}

TEST_F(StoreOpening, OpeningAnotherFileClosesTheFirst)
{
    Create();
    ASSERT_THAT(store.Create(folder.Path(L"t.qdb"), 1), Succeeds());
    CDovBlobDB other;
    EXPECT_THAT(other.Open(path, false), Succeeds());
}

TEST_F(StoreOpening, FailedOpeningLeavesTheObjectClosed)
{
    Create();
    EXPECT_THAT(store.Open(folder.Path(L"none"), false), Gives(10014));
    EXPECT_FALSE(store.IsOpen());
}

struct SOddName
{
    const char* name;
    const wchar_t* file;
};

class OddPath : public CStoreFixture, public testing::WithParamInterface<SOddName>
{};

TEST_P(OddPath, NamesAnOrdinaryFile)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Root());
    ASSERT_THAT(store.Create(GetParam().file, 0), Succeeds());
    EXPECT_THAT(Put(store, 1, 1, "one"), Succeeds());
    EXPECT_THAT(store.Close(), Succeeds());
    EXPECT_THAT(store.Open(GetParam().file, true), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=one");
    std::filesystem::current_path(before);
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.File(GetParam().file)));
}

INSTANTIATE_TEST_SUITE_P(, OddPath,
                         testing::Values(SOddName{"Relative", L"plain"}, SOddName{"Blank", L"a b %41.q"},
                                         SOddName{"Chinese", L"\u8cc7\u6599\u5eab"},
                                         SOddName{"LikeAnEscape", L"a#b%20c"}),
                         SRowName());

} // namespace
