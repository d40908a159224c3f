// qelmemfile_test.cpp: the stream in memory: growth, room, size and what becomes visible.
#include "../support/hex.h"
#include "../support/result_matchers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

using qeltest::CodeThrownBy;
using qeltest::Gives;
using qeltest::HexOf;

long long PositionOf(const CQelMemFile& file)
{
    long long position = -1;
    EXPECT_TRUE(file.GetFilePosition(position));
    return position;
}

TEST(MemoryFile, StartsEmptyAndTakesNoRoom)
{
    CQelMemFile file(false, 4096, 4096);
    EXPECT_EQ(file.GetFileSize(), 0);
    EXPECT_EQ(PositionOf(file), 0);
    EXPECT_EQ(file.GetBuffer(0), nullptr);
}

TEST(MemoryFile, GivesBackWhatWasWritten)
{
    CQelMemFile file(false, 4096, 4096);
    file.Write("abc", 3);
    file.Write("de", 2);
    EXPECT_EQ(PositionOf(file), 5);
    file.Rewind();
    char bytes[6] = {};
    file.Read(bytes, 4);
    EXPECT_STREQ(bytes, "abcd");
    EXPECT_EQ(PositionOf(file), 4);
}

TEST(MemoryFile, WritingAfterARewindReplacesInPlace)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abcdef", 6);
    file.Rewind();
    file.Write("XY", 2);
    EXPECT_EQ(HexOf(file), "585963646566");
    EXPECT_EQ(PositionOf(file), 2);
}

TEST(MemoryFile, ReadPastTheEndLeavesEverything)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abc", 3);
    file.Rewind();
    char bytes[8] = "kept";
    EXPECT_THAT(CodeThrownBy([&] { file.Read(bytes, 4); }), Gives(10011));
    EXPECT_THAT(CodeThrownBy([&] { file.Read(bytes, 0xFFFFFFFFu); }), Gives(10011));
    EXPECT_STREQ(bytes, "kept");
    EXPECT_EQ(PositionOf(file), 0);
}

TEST(MemoryFile, NothingMayBeWrittenOrReadFromNowhere)
{
    CQelMemFile file(false, 16, 16);
    file.Write(nullptr, 0);
    file.Read(nullptr, 0);
    EXPECT_EQ(file.GetFileSize(), 0);
}

TEST(MemoryFile, GrowsWithoutAStep)
{
    CQelMemFile file(false, 0, 0);
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        const char c = static_cast<char>('a' + i % 26);
        file.Write(&c, 1);
        expected += c;
    }
    EXPECT_EQ(std::string(reinterpret_cast<char*>(file.GetBuffer(0)), 1000), expected);
}

TEST(MemoryFile, MillionsOfSmallWritesStayCheap)
{
    CQelMemFile file(false, 1, 1);
    for (unsigned int i = 0; i < 3000000; ++i)
        file << i;
    EXPECT_EQ(file.GetFileSize(), 12000000);
    file.Rewind();
    for (unsigned int i = 0; i < 3000000; ++i) {
        unsigned int value = 0;
        file >> value;
        ASSERT_EQ(value, i);
    }
}

TEST(MemoryFile, SizeMakesItLongerWithZeros)
{
    CQelMemFile file(false, 16, 16);
    file.Write("ab", 2);
    file.SetSize(5);
    EXPECT_EQ(HexOf(file), "6162000000");
    EXPECT_EQ(PositionOf(file), 2);
}

TEST(MemoryFile, SizeMakesItShorterAndPullsThePosition)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abcdef", 6);
    file.SetSize(4);
    EXPECT_EQ(PositionOf(file), 4);
    EXPECT_EQ(HexOf(file), "61626364");
    file.SetSize(0);
    EXPECT_EQ(PositionOf(file), 0);
    EXPECT_EQ(file.GetFileSize(), 0);
}

TEST(MemoryFile, BytesThatWereCutOffDoNotComeBack)
{
    CQelMemFile file(false, 16, 16);
    file.Write("secret", 6);
    file.SetSize(1);
    file.SetSize(6);
    EXPECT_EQ(HexOf(file), "730000000000");
}

TEST(MemoryFile, StrayMemoryNeverShows)
{
    for (int i = 0; i < 8; ++i) {
        void* dirty = std::malloc(4096);
        std::memset(dirty, 0xEE, 4096);
        std::free(dirty);
        CQelMemFile file(false, 4096, 4096);
        file.SetSize(4000);
        for (int at = 0; at < 4000; ++at)
            ASSERT_EQ(file.GetBuffer(0)[at], 0);
    }
}

TEST(MemoryFile, RoomIsNotLength)
{
    CQelMemFile file(false, 0, 1);
    EXPECT_NE(file.GetBuffer(100), nullptr);
    EXPECT_EQ(file.GetFileSize(), 0);
    char byte = 0;
    EXPECT_THAT(CodeThrownBy([&] { file.Read(&byte, 1); }), Gives(10011));
}

TEST(MemoryFile, IsFilledThroughItsBuffer)
{
    CQelMemFile file(false, 65536, 4096);
    file.SetSize(3);
    std::memcpy(file.GetBuffer(3), "xyz", 3);
    EXPECT_EQ(PositionOf(file), 0);
    char bytes[4] = {};
    file.Read(bytes, 3);
    EXPECT_STREQ(bytes, "xyz");
}

TEST(MemoryFile, KeepsWhatWasPutIntoRoomBeforeTheSizeWasSet)
{
    CQelMemFile file(false, 16, 16);
    std::memcpy(file.GetBuffer(4), "wxyz", 4);
    EXPECT_EQ(file.GetFileSize(), 0);
    file.SetSize(6);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(file.GetBuffer(0)), 6), std::string("wxyz\0\0", 6));
}

TEST(MemoryFile, ShowsZerosAgainOnceASmallerSizeWasSet)
{
    CQelMemFile file(false, 16, 16);
    std::memcpy(file.GetBuffer(4), "wxyz", 4);
    file.SetSize(1);
    file.SetSize(4);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(file.GetBuffer(0)), 4), std::string("w\0\0\0", 4));
}

TEST(MemoryFile, BufferStaysWhileTheRoomSuffices)
{
    CQelMemFile file(false, 4096, 4096);
    const unsigned char* const before = file.GetBuffer(4096);
    file.Write(std::string(4096, 'x').data(), 4096);
    EXPECT_EQ(file.GetBuffer(0), before);
}

TEST(MemoryFile, ItsOwnBytesMayBeWrittenWhileItGrows)
{
    CQelMemFile file(false, 4, 1);
    file.Write("abcd", 4);
    for (int i = 0; i < 10; ++i)
        file.Write(file.GetBuffer(0), static_cast<unsigned int>(file.GetFileSize()));
    ASSERT_EQ(file.GetFileSize(), 4096);
    for (int at = 0; at < 4096; ++at)
        ASSERT_EQ(file.GetBuffer(0)[at], "abcd"[at % 4]);
}

TEST(MemoryFile, ReadOnlyRefusesEveryWrite)
{
    CQelMemFile file(true, 16, 16);
    qeltest::Fill(file, "0102");
    EXPECT_THAT(CodeThrownBy([&] { file.Write("x", 1); }), Gives(17501));
    EXPECT_THAT(CodeThrownBy([&] { file << true; }), Gives(17501));
    EXPECT_THAT(CodeThrownBy([&] { file.Write(nullptr, 0); }), Gives(17501));
    EXPECT_EQ(HexOf(file), "0102");
    unsigned short value = 0;
    file >> value;
    EXPECT_EQ(value, 0x0201);
}

TEST(MemoryFile, ReadingAndWritingShareThePosition)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abcdef", 6);
    file.Rewind();
    char bytes[3] = {};
    file.Read(bytes, 2);
    file.Write("XY", 2);
    file.Read(bytes, 2);
    EXPECT_STREQ(bytes, "ef");
    EXPECT_EQ(HexOf(file), "616258596566");
}

} // namespace
