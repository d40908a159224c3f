// files_test.cpp: copying, moving and deleting whole files, and the millisecond clock.
#include "support/temporary_folder.h"

#include <qelplat4/files.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using namespace qeltest;
namespace fs = std::filesystem;

class WholeFiles : public testing::Test
{
protected:
    BOOL Copy(const wchar_t* from, const wchar_t* to, BOOL failIfExists = FALSE)
    {
        return CopyFileW(folder.Path(from).c_str(), folder.Path(to).c_str(), failIfExists);
    }
    BOOL Move(const wchar_t* from, const wchar_t* to)
    {
        return MoveFileW(folder.Path(from).c_str(), folder.Path(to).c_str());
    }
    void Write(const wchar_t* name, const std::string& bytes) { WriteFile(folder.File(name), bytes); }
    std::string Read(const wchar_t* name) { return ReadFile(folder.File(name)); }

    CTemporaryFolder folder;
};

TEST_F(WholeFiles, CopyHoldsEveryByte)
{
    std::string bytes(200'000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7);
    Write(L"store", bytes);
    EXPECT_NE(Copy(L"store", L"store#bak"), FALSE);
    EXPECT_EQ(Read(L"store#bak"), bytes);
    EXPECT_EQ(folder.Names(), "store store#bak");
}

TEST_F(WholeFiles, CopyReplacesAnExistingTarget)
{
    Write(L"new", "new bytes");
    Write(L"old", "old bytes that are longer");
    EXPECT_NE(Copy(L"new", L"old"), FALSE);
    EXPECT_EQ(Read(L"old"), "new bytes");
}

TEST_F(WholeFiles, CopyLeavesAnExistingTargetWhenAskedTo)
{
    Write(L"new", "new");
    Write(L"old", "old");
    EXPECT_EQ(Copy(L"new", L"old", TRUE), FALSE);
    EXPECT_EQ(Read(L"old"), "old");
    EXPECT_NE(Copy(L"new", L"third", TRUE), FALSE);
    EXPECT_EQ(Read(L"third"), "new");
}

TEST_F(WholeFiles, CopyOfAnEmptyFileIsEmpty)
{
    Write(L"empty", "");
    EXPECT_NE(Copy(L"empty", L"copy"), FALSE);
    EXPECT_EQ(folder.Names(), "copy empty");
    EXPECT_EQ(fs::file_size(folder.File(L"copy")), 0u);
}

TEST_F(WholeFiles, CopyFailsWithoutASource)
{
    Write(L"target", "kept");
    EXPECT_EQ(Copy(L"missing", L"target"), FALSE);
    EXPECT_EQ(Read(L"target"), "kept");
    EXPECT_EQ(folder.Names(), "target");
}

TEST_F(WholeFiles, CopyOntoADirectoryFailsAndLeavesNothingBehind)
{
    Write(L"source", "bytes");
    fs::create_directory(folder.File(L"directory"));
    EXPECT_EQ(Copy(L"source", L"directory"), FALSE);
    EXPECT_EQ(folder.Names(), "directory source");
}

TEST_F(WholeFiles, CopyOfADirectoryFails)
{
    fs::create_directory(folder.File(L"directory"));
    EXPECT_EQ(Copy(L"directory", L"copy"), FALSE);
    EXPECT_EQ(folder.Names(), "directory");
}

TEST_F(WholeFiles, CopyOntoItselfFailsAndKeepsTheFile)
{
    Write(L"file", "bytes");
    EXPECT_EQ(Copy(L"file", L"file"), FALSE);
    EXPECT_EQ(Read(L"file"), "bytes");
}

TEST_F(WholeFiles, CopyKeepsTheTimeOfTheLastChange)
{
    Write(L"file", "bytes");
    const fs::file_time_type before = fs::last_write_time(folder.File(L"file")) - std::chrono::hours(24);
    fs::last_write_time(folder.File(L"file"), before);
    ASSERT_NE(Copy(L"file", L"copy"), FALSE);
    EXPECT_EQ(fs::last_write_time(folder.File(L"copy")), before);
}

TEST_F(WholeFiles, MoveRenames)
{
    Write(L"from", "bytes");
    EXPECT_NE(Move(L"from", L"to"), FALSE);
    EXPECT_EQ(folder.Names(), "to");
    EXPECT_EQ(Read(L"to"), "bytes");
}

TEST_F(WholeFiles, MoveNeverReplaces)
{
    Write(L"from", "from");
    Write(L"to", "to");
    EXPECT_EQ(Move(L"from", L"to"), FALSE);
    EXPECT_EQ(Read(L"from"), "from");
    EXPECT_EQ(Read(L"to"), "to");
}

TEST_F(WholeFiles, MoveFailsWithoutASource)
{
    EXPECT_EQ(Move(L"missing", L"to"), FALSE);
    EXPECT_EQ(folder.Names(), "");
}

TEST_F(WholeFiles, DeleteRemovesOneFile)
{
    Write(L"file", "bytes");
    EXPECT_NE(DeleteFileW(folder.Path(L"file").c_str()), FALSE);
    EXPECT_EQ(folder.Names(), "");
    EXPECT_EQ(DeleteFileW(folder.Path(L"file").c_str()), FALSE);
}

TEST_F(WholeFiles, DeleteRefusesADirectory)
{
    fs::create_directory(folder.File(L"directory"));
    EXPECT_EQ(DeleteFileW(folder.Path(L"directory").c_str()), FALSE);
    EXPECT_EQ(folder.Names(), "directory");
}

TEST_F(WholeFiles, NamesMayBeInAnyScript)
{
    Write(L"Größe-漢字-\U0001F600", "bytes");
    EXPECT_NE(Copy(L"Größe-漢字-\U0001F600", L"Ωμέγα"), FALSE);
    EXPECT_EQ(Read(L"Ωμέγα"), "bytes");
}

TEST(WholeFileArguments, NullPathsAreRefused)
{
    EXPECT_EQ(CopyFileW(nullptr, L"x", FALSE), FALSE);
    EXPECT_EQ(CopyFileW(L"x", nullptr, FALSE), FALSE);
    EXPECT_EQ(MoveFileW(nullptr, L"x"), FALSE);
    EXPECT_EQ(MoveFileW(L"x", nullptr), FALSE);
    EXPECT_EQ(DeleteFileW(nullptr), FALSE);
}

TEST(TickCount, CountsMilliseconds)
{
    const DWORD start = GetTickCount();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const DWORD passed = GetTickCount() - start;
    EXPECT_GE(passed, 29u);
    EXPECT_LT(passed, 30'000u);
}

} // namespace
