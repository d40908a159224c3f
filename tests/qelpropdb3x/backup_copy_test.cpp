// backup_copy_test.cpp: the copy of a store file, and how it takes the store's place.
#include "support/temporary_folder.h"

#include "libeval/qelpropdb3x/backup_copy.h"

#include <gtest/gtest.h>

using namespace qeltest;

namespace {

class BackupCopy : public testing::Test
{
protected:
    BackupCopy() { WriteFile(folder.File(L"s"), "new"); }

    CTemporaryFolder folder;
    qel::CBackupCopy copy{folder.Path(L"s")};
};

} // namespace

TEST_F(BackupCopy, StandsBesideTheStore)
{
    EXPECT_TRUE(copy.Make());
    EXPECT_EQ(ReadFile(folder.File(L"s#bak")), "new");
    EXPECT_EQ(copy.StorePath(), folder.Path(L"s"));
    copy.Delete();
    EXPECT_EQ(folder.Names(), "s");
}

TEST_F(BackupCopy, ReplacesAnOlderOne)
{
    WriteFile(folder.File(L"s#bak"), "an older and longer one");
    EXPECT_TRUE(copy.Make());
    EXPECT_EQ(ReadFile(folder.File(L"s#bak")), "new");
}

TEST_F(BackupCopy, CannotBeMadeOfNothingOrOverAFolder)
{
    std::filesystem::create_directories(folder.File(L"s#bak") / "inside");
    EXPECT_FALSE(copy.Make());
    EXPECT_FALSE(qel::CBackupCopy(folder.Path(L"missing")).Make());
    EXPECT_EQ(folder.Names(), "s s#bak");
}

TEST_F(BackupCopy, TakesTheStoresPlaceWithoutItsSideFiles)
{
    WriteFile(folder.File(L"s#bak"), "old");
    for (const wchar_t* side : {L"s-wal", L"s-shm", L"s-journal"})
        WriteFile(folder.File(side), "of the new state");
    EXPECT_TRUE(copy.PutBack());
    EXPECT_EQ(folder.Names(), "s");
    EXPECT_EQ(ReadFile(folder.File(L"s")), "old");
}

TEST_F(BackupCopy, TakesThePlaceOfAMissingStore)
{
    std::filesystem::rename(folder.File(L"s"), folder.File(L"s#bak"));
    WriteFile(folder.File(L"s-wal"), "of the new state");
    EXPECT_TRUE(copy.PutBack());
    EXPECT_EQ(folder.Names(), "s");
}

TEST_F(BackupCopy, MissingOneLeavesTheStoreWithItsSideFiles)
{
    WriteFile(folder.File(L"s-wal"), "log");
    EXPECT_FALSE(copy.PutBack());
    EXPECT_EQ(folder.Names(), "s s-wal");
    EXPECT_EQ(ReadFile(folder.File(L"s")), "new");
    EXPECT_EQ(ReadFile(folder.File(L"s-wal")), "log");
}

TEST_F(BackupCopy, StoreThatCannotBeMovedAsideStays)
{
    WriteFile(folder.File(L"s#bak"), "old");
    WriteFile(folder.File(L"s-wal"), "log");
    std::filesystem::create_directories(folder.File(L"s#old") / "taken");
    EXPECT_FALSE(copy.PutBack());
    EXPECT_EQ(folder.Names(), "s s#bak s#old s-wal");
    EXPECT_EQ(ReadFile(folder.File(L"s")), "new");
}

TEST_F(BackupCopy, LeftoversOfAnEarlierEndAreNoHindrance)
{
    WriteFile(folder.File(L"s#bak"), "old");
    WriteFile(folder.File(L"s#old"), "set aside by a process that was killed");
    WriteFile(folder.File(L"s#old-wal"), "and its log");
    EXPECT_TRUE(copy.PutBack());
    EXPECT_EQ(folder.Names(), "s");
    EXPECT_EQ(ReadFile(folder.File(L"s")), "old");
}
