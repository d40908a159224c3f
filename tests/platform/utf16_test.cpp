// utf16_test.cpp: the conversions between wide text, UTF-16 and UTF-8.
#include "../support/hex.h"
#include "../support/row_name.h"

#include <gtest/gtest.h>
#include <qelplat4/utf16.h>

namespace {

using qel::FromUtf16;
using qel::FromUtf8;
using qel::ToUtf16;
using qel::ToUtf8;
using qeltest::HexOf;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

std::wstring FromUnits(const std::u16string& units)
{
    return FromUtf16(units.data(), units.size());
}

TEST(Utf16, CharacterOutsideTheBasicPlaneBecomesAPair)
{
    EXPECT_EQ(ToUtf16(L"a\U0001F600b"), u"a\xD83D\xDE00"
                                        u"b");
    EXPECT_EQ(ToUtf16(L"\U00010000\U0010FFFF"), u"\xD800\xDC00\xDBFF\xDFFF");
}

TEST(Utf16, PairBecomesOneWideCharacterWhereItFits)
{
    EXPECT_EQ(FromUnits(u"\xD83D\xDE00"), L"\U0001F600");
    EXPECT_EQ(FromUnits(u"\xD83D\xDE00").size(), kWideIsUtf16 ? 2u : 1u);
}

TEST(Utf16, LoneSurrogatesTravelUnchangedBothWays)
{
    for (const std::u16string units : {u"\xD800", u"\xDC00", u"x\xDBFF", u"\xDFFFy", u"\xDC00\xD800",
                                       u"\xD800\xD800\xDC00", u"\xDC00\xDC00"})
        EXPECT_EQ(ToUtf16(FromUnits(units)), units);
}

TEST(Utf16, EveryUnitComesBack)
{
    std::u16string all;
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit)
        all += static_cast<char16_t>(unit);
    EXPECT_EQ(ToUtf16(FromUnits(all)), all);
    EXPECT_EQ(ToUtf16(FromUtf8(ToUtf8(FromUnits(all)))), all);
}

TEST(Utf16, NumberThatIsNoCharacterBecomesTheReplacement)
{
    if constexpr (kWideIsUtf16) {
        GTEST_SKIP() << "a wchar_t of 16 bits holds no such number";
    } else {
        for (const char32_t number : {0x110000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            const std::wstring text(1, static_cast<wchar_t>(number));
            EXPECT_EQ(ToUtf16(text), u"\xFFFD");
            EXPECT_EQ(ToUtf8(text), "\xEF\xBF\xBD");
            EXPECT_EQ(qel::Utf16Length(text), 1u);
        }
    }
}

TEST(Utf16, LengthCountsUnits)
{
    EXPECT_EQ(qel::Utf16Length(L""), 0u);
    EXPECT_EQ(qel::Utf16Length(L"ab"), 2u);
    EXPECT_EQ(qel::Utf16Length(L"a\U0001F600"), 3u);
}

TEST(Utf16, EmbeddedZerosStay)
{
    const std::wstring text(L"a\0b", 3);
    EXPECT_EQ(ToUtf16(text), std::u16string(u"a\0b", 3));
    EXPECT_EQ(ToUtf8(text), std::string("a\0b", 3));
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    EXPECT_EQ(FromUnits(ToUtf16(text)), text);
}

TEST(Utf16, PairSplitOverTwoPiecesIsJoined)
{
    std::wstring text = L"x";
    qel::AppendUtf16(u"\xD83D", 1, text);
    qel::AppendUtf16(u"\xDE00", 1, text);
    EXPECT_EQ(text, L"x\U0001F600");
}

TEST(Utf16, NothingOfNothing)
{
    EXPECT_EQ(FromUtf16(nullptr, 0), L"");
    EXPECT_EQ(ToUtf16({}), u"");
    EXPECT_EQ(ToUtf8({}), "");
    EXPECT_EQ(FromUtf8({}), L"");
}

struct SEncoded
{
    const char* name;
    const wchar_t* text;
    const char* hex;
};

class Utf8 : public testing::TestWithParam<SEncoded>
{};

TEST_P(Utf8, EncodesAndDecodes)
{
    EXPECT_EQ(HexOf(ToUtf8(GetParam().text)), GetParam().hex);
    EXPECT_EQ(FromUtf8(qeltest::BytesOf(GetParam().hex)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Boundaries, Utf8,
                         testing::Values(SEncoded{"Ascii", L"Az", "417a"},
                                         SEncoded{"LastOfOneByte", L"\x7F", "7f"},
                                         SEncoded{"FirstOfTwoBytes", L"\x80", "c280"},
                                         SEncoded{"LastOfTwoBytes", L"\x7FF", "dfbf"},
                                         SEncoded{"FirstOfThreeBytes", L"\x800", "e0a080"},
                                         SEncoded{"LastBeforeSurrogates", L"\xD7FF", "ed9fbf"},
                                         SEncoded{"FirstHighSurrogate", L"\xD800", "eda080"},
                                         SEncoded{"LastHighSurrogate", L"\xDBFF", "edafbf"},
                                         SEncoded{"FirstLowSurrogate", L"\xDC00", "edb080"},
                                         SEncoded{"LastLowSurrogate", L"\xDFFF", "edbfbf"},
                                         SEncoded{"FirstBehindSurrogates", L"\xE000", "ee8080"},
                                         SEncoded{"LastOfThreeBytes", L"\xFFFF", "efbfbf"},
                                         SEncoded{"FirstOfFourBytes", L"\U00010000", "f0908080"},
                                         SEncoded{"LastCharacter", L"\U0010FFFF", "f48fbfbf"},
                                         SEncoded{"SurrogatesInWrongOrder", L"\xDC00\xD800", "edb080eda080"}),
                         qeltest::SRowName());

struct SMalformed
{
    const char* name;
    const char* hex;
    const wchar_t* text;
};

class MalformedUtf8 : public testing::TestWithParam<SMalformed>
{};

TEST_P(MalformedUtf8, GivesOneReplacementPerMaximalPart)
{
    EXPECT_EQ(FromUtf8(qeltest::BytesOf(GetParam().hex)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Parts, MalformedUtf8,
    testing::Values(SMalformed{"LoneTail", "61 80 62",
                               L"a\xFFFD"
                               L"b"},
                    SMalformed{"TwoTails", "8080", L"\xFFFD\xFFFD"},
                    SMalformed{"LeadAtTheEnd", "61c3", L"a\xFFFD"},
                    SMalformed{"LeadBeforeAscii", "c361",
                               L"\xFFFD"
                               L"a"},
                    SMalformed{"TwoOfThreeBytes", "e28261",
                               L"\xFFFD"
                               L"a"},
                    SMalformed{"ThreeOfFourBytesAtTheEnd", "f09f98", L"\xFFFD"},
                    SMalformed{"ThreeOfFourBytesBeforeALead", "f09f98c3a4", L"\xFFFD\xE4"},
                    SMalformed{"TooLongForAscii", "c0af", L"\xFFFD\xFFFD"},
                    SMalformed{"TooLongForTwoBytes", "e09f80", L"\xFFFD\xFFFD\xFFFD"},
                    SMalformed{"TooLongForThreeBytes", "f08f8080", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
                    SMalformed{"AboveTheLastCharacter", "f4908080", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
                    SMalformed{"BytesThatNeverOccur", "f5fcff", L"\xFFFD\xFFFD\xFFFD"},
                    SMalformed{"HalfASurrogate", "eda0", L"\xFFFD"}),
    qeltest::SRowName());

TEST(MalformedUtf8, PairInTwoTimesThreeBytesIsTheCharacterItStandsFor)
{
    EXPECT_EQ(FromUtf8(qeltest::BytesOf("eda0bd edb880")), L"\U0001F600");
}

TEST(MalformedUtf8, NoBytesOfAnyKindFail)
{
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes = {static_cast<char>(first), static_cast<char>(second), '\x80', 'z'};
            EXPECT_EQ(FromUtf8(bytes).back(), L'z') << HexOf(bytes);
        }
    }
}

} // namespace
