// values_streams_test.cpp: the stream's byte forms, its checksum, the memory file and the blob.
#include "value_host.h"

#include <algorithm>
#include <functional>
#include <type_traits>

namespace outside {
namespace {

using namespace qeltest;

unsigned int CodeOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        return code;
    }
    return 0;
}

struct SFormRow
{
    const char* name;
    std::function<void(CQelFile&)> write;
    const char* hex;
};

class StreamForms : public testing::TestWithParam<SFormRow>
{};

TEST_P(StreamForms, AreLittleEndianAndOfFixedWidth)
{
    CQelMemFile file(false, 16, 16);
    GetParam().write(file);
    EXPECT_EQ(HexOf(file), GetParam().hex);
}

INSTANTIATE_TEST_SUITE_P(
    Writers, StreamForms,
    testing::Values(
        SFormRow{"Short", [](auto& f) { f << static_cast<unsigned short>(0x1234); }, "3412"},
        SFormRow{"Int", [](auto& f) { f << -2; }, "feffffff"},
        SFormRow{"UInt", [](auto& f) { f << 0x12345678u; }, "78563412"},
        SFormRow{"Long", [](auto& f) { f << 0xfffffffful; }, "ffffffff"},
        SFormRow{"True", [](auto& f) { f << true; }, "01"},
        SFormRow{"False", [](auto& f) { f << false; }, "00"},
        SFormRow{"EmptyText", [](auto& f) { f << std::wstring(); }, "00000000"},
        SFormRow{"Text", [](auto& f) { f << std::wstring(L"a\u20ac"); }, "020000006100ac20"},
        SFormRow{"Surrogates", [](auto& f) { f << std::wstring(L"\U0001F600"); }, "020000003dd800de"},
        SFormRow{"ZeroInside", [](auto& f) { f << std::wstring(L"a\0b", 3); }, "03000000610000006200"},
        SFormRow{"Raw", [](auto& f) { f.Write("\1\2\3", 3); }, "010203"}),
    SRowName());

TEST(StreamOperators, GiveTheStreamItselfAndReadWhatWasWritten)
{
    CQelMemFile file(false, 16, 16);
    const std::wstring text(L"a\0\U0001F600", 3);
    EXPECT_EQ(&(file << static_cast<unsigned short>(65535) << -2147483647 << 4294967295u), &file);
    EXPECT_EQ(&(file << 4294967295ul << true << text), &file);
    file.Rewind();
    unsigned short number16 = 0;
    int number = 0;
    unsigned int count = 0;
    unsigned long oid = 0;
    bool flag = false;
    std::wstring read;
    EXPECT_EQ(&(file >> number16 >> number >> count >> oid >> flag >> read), &file);
    EXPECT_EQ(number16, 65535);
    EXPECT_EQ(number, -2147483647);
    EXPECT_EQ(count, 4294967295u);
    EXPECT_EQ(oid, 4294967295ul);
    EXPECT_TRUE(flag);
    EXPECT_EQ(read, text);
}

TEST(StreamOperators, OidWiderThanThirtyTwoBitsIsRefused)
{
    if constexpr (sizeof(unsigned long) > 4) {
        CQelMemFile file(false, 16, 16);
        EXPECT_EQ(CodeOf([&] { file << static_cast<unsigned long>(0x100000005ull); }), 10020u);
        EXPECT_EQ(file.GetFileSize(), 0);
    }
}

class StreamEnds : public testing::TestWithParam<const char*>
{};

TEST_P(StreamEnds, ThrowTenThousandAndEleven)
{
    CQelMemFile file(false, 16, 16);
    Fill(file, GetParam());
    std::wstring text = L"kept";
    EXPECT_EQ(CodeOf([&] { file >> text; }), 10011u);
    EXPECT_EQ(text, L"kept");
}

INSTANTIATE_TEST_SUITE_P(Texts, StreamEnds,
                         testing::Values("", "010000", "01000000", "0100000061", "ffffffff6100", "ffffff7f"));

TEST(StreamCheckSum, IsTheCrcOfTheBytesWritten)
{
    CQelMemFile file(false, 16, 16);
    file << 7u;
    file.BeginCheckSum();
    file.Write("123456789", 9);
    EXPECT_EQ(file.EndCheckSum(), 0xcbf43926ul);
}

TEST(StreamCheckSum, IsWrittenBehindTheBytesAndIsReadTheSame)
{
    CQelMemFile file(false, 16, 16);
    file.BeginCheckSum();
    file.Write("123456789", 9);
    EXPECT_EQ(file.WriteCheckSum(), 0xcbf43926ul);
    EXPECT_EQ(HexOf(file), "3132333435363738392639f4cb");
    file.Rewind();
    file.BeginCheckSum();
    char bytes[9];
    file.Read(bytes, 9);
    EXPECT_EQ(file.EndCheckSum(), 0xcbf43926ul);
    unsigned long stored = 0;
    file >> stored;
    EXPECT_EQ(stored, 0xcbf43926ul);
}

TEST(StreamCheckSum, StartsAnewEachTime)
{
    CQelMemFile file(false, 16, 16);
    file.BeginCheckSum();
    file << 1u;
    file.EndCheckSum();
    file << 2u;
    file.BeginCheckSum();
    EXPECT_EQ(file.EndCheckSum(), 0ul);
}

TEST(StreamClasses, StandOnOneAnother)
{
    EXPECT_TRUE((std::is_base_of_v<CQelFile, CQelMemFile>));
    EXPECT_TRUE(std::is_abstract_v<CQelFile>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CQelMemFile>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TavBlob>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CBitVector>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TavCharConvert>);
}

TEST(MemoryFile, KnowsItsSizeAndPosition)
{
    CQelMemFile file(false, 4096, 4096);
    long long position = -1;
    EXPECT_EQ(file.GetFileSize(), 0);
    file.Write("abcdef", 6);
    file.GetFilePosition(position);
    EXPECT_EQ(position, 6);
    file.Rewind();
    file.GetFilePosition(position);
    EXPECT_EQ(position, 0);
    EXPECT_EQ(file.GetFileSize(), 6);
}

TEST(MemoryFile, WriteAfterARewindReplacesTheFirstBytes)
{
    CQelMemFile file(false, 4096, 4096);
    file.Write("abcdef", 6);
    file.Rewind();
    file.Write("XY", 2);
    EXPECT_EQ(HexOf(file), "585963646566");
}

TEST(MemoryFile, IsFilledThroughItsMemory)
{
    CQelMemFile file(false, 65536, 4096);
    file.SetSize(3);
    EXPECT_EQ(file.GetFileSize(), 3);
    std::copy_n("abc", 3, file.GetBuffer(3));
    file.Rewind();
    char bytes[3];
    file.Read(bytes, 3);
    EXPECT_EQ(std::string(bytes, 3), "abc");
}

TEST(MemoryFile, BufferMakesRoomAndNoLength)
{
    CQelMemFile file(false, 0, 0);
    file.Write("ab", 2);
    unsigned char* const memory = file.GetBuffer(100000);
    ASSERT_NE(memory, nullptr);
    memory[99999] = 1;
    EXPECT_EQ(file.GetFileSize(), 2);
    EXPECT_EQ(memory[0], 'a');
}

TEST(MemoryFile, GrowsPastItsFirstRoom)
{
    CQelMemFile file(false, 4, 3);
    for (unsigned int i = 0; i < 1000; ++i)
        file << i;
    EXPECT_EQ(file.GetFileSize(), 4000);
    EXPECT_EQ(HexOf(file.GetBuffer(0) + 3996, 4), "e7030000");
}

TEST(MemoryFile, ReadOnlyRefusesEveryWrite)
{
    CQelMemFile file(true, 16, 16);
    EXPECT_NE(CodeOf([&] { file << 1u; }), 0u);
    EXPECT_EQ(file.GetFileSize(), 0);
}

TEST(MemoryFile, ReadPastTheEndThrowsAndGivesNothing)
{
    CQelMemFile file(false, 16, 16);
    file.Write("ab", 2);
    file.Rewind();
    char bytes[3];
    EXPECT_EQ(CodeOf([&] { file.Read(bytes, 3); }), 10011u);
}

TEST(Blob, HoldsACopyOfItsBytes)
{
    TavBlob blob;
    EXPECT_EQ(blob.GetSize(), 0u);
    std::string bytes("a\0b", 3);
    blob.SetData(bytes.data(), 3);
    bytes[0] = 'x';
    EXPECT_EQ(HexOf(blob), "610062");
    TavBlob copy(blob);
    blob.SetData(nullptr, 0);
    EXPECT_EQ(HexOf(copy), "610062");
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST(Blob, LoadsAStreamAndStoresIntoOne)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abc", 3);
    file.Rewind();
    TavBlob blob;
    blob.SetData("previous", 8);
    EXPECT_TRUE(blob.Load(&file));
    EXPECT_EQ(HexOf(blob), "616263");
    CQelMemFile target(false, 16, 16);
    EXPECT_TRUE(blob.Store(&target));
    EXPECT_EQ(HexOf(target), "616263");
}

TEST(Blob, LoadsAnEmptyStreamAsNothing)
{
    CQelMemFile file(false, 16, 16);
    TavBlob blob;
    blob.SetData("previous", 8);
    EXPECT_TRUE(blob.Load(&file));
    EXPECT_EQ(blob.GetSize(), 0u);
}

} // namespace
} // namespace outside
