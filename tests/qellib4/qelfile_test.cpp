// qelfile_test.cpp: byte forms, checksum and refusals of the binary stream.
#include "../support/hex.h"
#include "../support/result_matchers.h"
#include "../support/row_name.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <limits>

namespace {

using qeltest::CodeThrownBy;
using qeltest::Fill;
using qeltest::Gives;
using qeltest::HexOf;

class CStream : public CQelMemFile
{
public:
    CStream() : CQelMemFile(false, 64, 64) {}
    explicit CStream(const char* hex) : CStream() { Fill(*this, hex); }

    long long Position() const
    {
        long long position = -1;
        GetFilePosition(position);
        return position;
    }
};

template <class Value>
Value Read(const char* hex)
{
    CStream file(hex);
    Value value{};
    file >> value;
    EXPECT_EQ(file.BytesRemaining(), 0u);
    return value;
}

template <class Value>
std::string Written(const Value& value)
{
    CStream file;
    file << value;
    return HexOf(file);
}

TEST(ByteForm, ShortIsTwoBytesLowestFirst)
{
    EXPECT_EQ(Written<unsigned short>(0x1234), "3412");
    EXPECT_EQ(Written<unsigned short>(65535), "ffff");
    EXPECT_EQ(Read<unsigned short>("3412"), 0x1234);
}

TEST(ByteForm, IntIsFourBytesInTwosComplement)
{
    EXPECT_EQ(Written<int>(0x12345678), "78563412");
    EXPECT_EQ(Written<int>(-2), "feffffff");
    EXPECT_EQ(Written<int>(std::numeric_limits<int>::min()), "00000080");
    EXPECT_EQ(Read<int>("feffffff"), -2);
    EXPECT_EQ(Read<int>("00000080"), std::numeric_limits<int>::min());
}

TEST(ByteForm, UnsignedIntIsFourBytes)
{
    EXPECT_EQ(Written<unsigned int>(4294967295u), "ffffffff");
    EXPECT_EQ(Read<unsigned int>("00000080"), 2147483648u);
}

TEST(ByteForm, UnsignedLongIsFourBytesWhateverItsWidth)
{
    EXPECT_EQ(Written<unsigned long>(0x89ABCDEFul), "efcdab89");
    EXPECT_EQ(Read<unsigned long>("ffffffff"), 4294967295ul);
}

TEST(ByteForm, UnsignedLongAbove32BitsIsRefusedAndNothingIsWritten)
{
    if constexpr (sizeof(unsigned long) == 4) {
        GTEST_SKIP() << "no such number here";
    } else {
        CStream file;
        const auto wide = static_cast<unsigned long>(4294967296ull);
        EXPECT_THAT(CodeThrownBy([&] { file << wide; }), Gives(10020));
        EXPECT_EQ(file.GetFileSize(), 0);
    }
}

TEST(ByteForm, BoolIsOneByte)
{
    EXPECT_EQ(Written(true), "01");
    EXPECT_EQ(Written(false), "00");
    EXPECT_FALSE(Read<bool>("00"));
    EXPECT_TRUE(Read<bool>("01"));
}

TEST(ByteForm, AnyByteButZeroIsTrue)
{
    EXPECT_TRUE(Read<bool>("02"));
    EXPECT_TRUE(Read<bool>("80"));
    EXPECT_TRUE(Read<bool>("ff"));
}

struct SText
{
    const char* name;
    std::wstring text;
    const char* hex;
};

class StringForm : public testing::TestWithParam<SText>
{};

TEST_P(StringForm, IsACountAndUnits)
{
    EXPECT_EQ(Written(GetParam().text), GetParam().hex);
    EXPECT_EQ(Read<std::wstring>(GetParam().hex), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, StringForm,
    testing::Values(SText{"Empty", L"", "00000000"}, SText{"Ascii", L"ab", "0200000061006200"},
                    SText{"EmbeddedZero", std::wstring(L"a\0b", 3), "03000000610000006200"},
                    SText{"OutsideTheBasicPlane", L"\U0001F600", "020000003dd800de"},
                    SText{"LoneSurrogates", L"\xDC00\xD800", "0200000000dc00d8"}),
    qeltest::SRowName());

TEST(StringForm, LongTextsOfPairsComeBackWhereverThePiecesAreCut)
{
    for (std::size_t length = 250; length < 262; ++length) {
        std::wstring text(length, L'x');
        for (int i = 0; i < 300; ++i)
            text += L"\U0001F600";
        CStream file;
        file << text;
        file.Rewind();
        std::wstring read;
        file >> read;
        ASSERT_EQ(read, text) << length;
        ASSERT_EQ(file.GetFileSize(), static_cast<long long>(4 + 2 * (length + 600)));
    }
}

TEST(StringForm, EveryUnitComesBack)
{
    std::wstring text;
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit)
        text += static_cast<wchar_t>(unit ^ 0xFF00u); // the low surrogates first
    CStream file;
    file << text;
    file.Rewind();
    std::wstring read;
    file >> read;
    CStream again;
    again << read;
    EXPECT_EQ(HexOf(again), HexOf(file));
}

TEST(Stream, OperatorsGiveTheStreamItself)
{
    CStream file;
    CQelFile& stream = file;
    EXPECT_EQ(&(stream << true << 1 << 2u << 3ul << std::wstring(L"x")), &file);
    file.Rewind();
    bool flag = false;
    int number = 0;
    unsigned int count = 0;
    unsigned long oid = 0;
    std::wstring text;
    EXPECT_EQ(&(stream >> flag >> number >> count >> oid >> text), &file);
    EXPECT_TRUE(flag && number == 1 && count == 2 && oid == 3 && text == L"x");
}

template <class Value>
void ExpectEndIsKept(const char* hex, Value value)
{
    CStream file(hex);
    const Value before = value;
    EXPECT_THAT(CodeThrownBy([&] { file >> value; }), Gives(10011));
    EXPECT_EQ(value, before);
    EXPECT_EQ(file.Position(), 0);
}

TEST(EndOfStream, LeavesValueAndPosition)
{
    ExpectEndIsKept<unsigned short>("01", 7);
    ExpectEndIsKept<int>("010203", 7);
    ExpectEndIsKept<unsigned int>("010203", 7);
    ExpectEndIsKept<unsigned long>("010203", 7);
    ExpectEndIsKept<bool>("", true);
    ExpectEndIsKept<std::wstring>("010000", L"kept");
}

TEST(EndOfStream, CountThatTheBytesCannotFillTakesNoMemory)
{
    for (const char* hex : {"ffffffff 6100", "00000080", "02000000 610062", "01000000 61"}) {
        CStream file(hex);
        std::wstring text = L"kept";
        EXPECT_THAT(CodeThrownBy([&] { file >> text; }), Gives(10011)) << hex;
        EXPECT_EQ(text, L"kept");
        EXPECT_EQ(file.Position(), 4);
    }
}

TEST(EndOfStream, ExceptionNamesItsPlace)
{
    CStream file;
    int value = 0;
    try {
        file >> value;
        FAIL();
    } catch (CQelException* exception) {
        EXPECT_EQ(exception->GetFile(), L"qelmemfile.cpp");
        EXPECT_GT(exception->GetLine(), 0);
        EXPECT_EQ(exception->GetSecond(), 0u);
        exception->Delete();
    }
}

TEST(CheckSum, OfNineDigitsIsTheKnownOne)
{
    CStream file;
    file.BeginCheckSum();
    file.Write("123456789", 9);
    EXPECT_EQ(file.EndCheckSum(), 0xCBF43926u);
}

TEST(CheckSum, IsTheSameWrittenAndRead)
{
    CStream file;
    file << 5u;
    file.BeginCheckSum();
    file << std::wstring(L"text") << true << 77;
    const unsigned long written = file.WriteCheckSum();
    file.Rewind();
    unsigned int head = 0;
    std::wstring text;
    bool flag = false;
    int number = 0;
    unsigned long stored = 0;
    file >> head;
    file.BeginCheckSum();
    file >> text >> flag >> number;
    EXPECT_EQ(file.EndCheckSum(), written);
    file >> stored;
    EXPECT_EQ(stored, written);
}

TEST(CheckSum, IsWrittenAsFourBytesThatItDoesNotCover)
{
    CStream file;
    file.BeginCheckSum();
    file.Write("123456789", 9);
    EXPECT_EQ(file.WriteCheckSum(), 0xCBF43926u);
    EXPECT_EQ(HexOf(file, "9 4"), "313233343536373839 2639f4cb");
    EXPECT_EQ(file.EndCheckSum(), 0u);
}

TEST(CheckSum, OfNothingIsZero)
{
    CStream file;
    file.BeginCheckSum();
    file.Write(nullptr, 0);
    EXPECT_EQ(file.EndCheckSum(), 0u);
    EXPECT_EQ(file.EndCheckSum(), 0u);
}

TEST(CheckSum, BegunAgainStartsAfresh)
{
    CStream file;
    file.BeginCheckSum();
    file.Write("noise", 5);
    file.BeginCheckSum();
    file.Write("123456789", 9);
    EXPECT_EQ(file.EndCheckSum(), 0xCBF43926u);
}

TEST(CheckSum, ReadThatFailedIsNotPartOfIt)
{
    CStream file("313233343536373839");
    file.BeginCheckSum();
    char bytes[10];
    EXPECT_THAT(CodeThrownBy([&] { file.Read(bytes, 10); }), Gives(10011));
    file.Read(bytes, 9);
    EXPECT_EQ(file.EndCheckSum(), 0xCBF43926u);
}

// A stream of a host's own that knows no position.
class CPipe : public CQelFile
{
public:
    void Write(const void*, unsigned int) override {}
    void Read(void*, unsigned int) override {}
    void Rewind() override {}
    long long GetFileSize() const override { return size; }
    bool GetFilePosition(long long& position) const override
    {
        position = at;
        return known;
    }
    long long size = 10;
    long long at = 4;
    bool known = true;
};

TEST(BytesRemaining, IsZeroWhereThePositionSaysNothing)
{
    CPipe pipe;
    EXPECT_EQ(pipe.BytesRemaining(), 6u);
    pipe.known = false;
    EXPECT_EQ(pipe.BytesRemaining(), 0u);
    pipe.known = true;
    for (const long long at : {10LL, 11LL, -1LL, std::numeric_limits<long long>::max()}) {
        pipe.at = at;
        EXPECT_EQ(pipe.BytesRemaining(), 0u) << at;
    }
}

TEST(BytesRemaining, CountsBeyondFourGigabytes)
{
    CPipe pipe;
    pipe.size = 10'000'000'000;
    EXPECT_EQ(pipe.BytesRemaining(), 9'999'999'996u);
}

} // namespace
