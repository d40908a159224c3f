// payload_format_test.cpp: a caller's printf format over the payload of a value.
#include <gtest/gtest.h>

#include "libeval/value/payload_format.h"
#include "support/recorded_table.h"
#include "support/row_name.h"

#include <cstring>
#include <limits>

using namespace qeltest;

namespace {

std::uint64_t Bits(double number)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

std::wstring Format(const wchar_t* format, std::uint64_t payload, wchar_t decimalPoint = L'.')
{
    return qel::FormatPayload(format, payload, decimalPoint);
}

std::wstring FormatNumber(const wchar_t* format, double number)
{
    return Format(format, Bits(number));
}

std::uint64_t PayloadOf(const SRecordedRow& row)
{
    return std::stoull(row[3], nullptr, 16) | std::stoull(row[4], nullptr, 16) << 32;
}

/// A percent sign behind flags or a width stands for itself here; the recorded runtime wrote nothing.
bool IsAnsweredOtherwise(const SRecordedRow& row)
{
    return row[2] == "\"%5%|\"";
}

struct SFormatRow
{
    const char* name;
    const wchar_t* format;
    std::uint64_t payload;
    const wchar_t* text;
};

class PayloadFormat : public testing::TestWithParam<SFormatRow>
{};

} // namespace

TEST(PayloadFormat, AgreesWithEveryRecordedAnswer)
{
    int binding = 0;
    int doubtful = 0;
    for (const SRecordedRow& row : ReadRecordedTable(QEL_TEST_DATA "/payload_formats.tsv")) {
        if (IsAnsweredOtherwise(row))
            continue;
        const wchar_t decimalPoint = row[1] == "C" ? L'.' : L',';
        const std::wstring text = qel::FormatPayload(QuotedText(row[2]), PayloadOf(row), decimalPoint);
        EXPECT_EQ(text, QuotedText(row[6])) << row.Number() << " " << row[2];
        ++(row.IsBinding() ? binding : doubtful);
    }
    EXPECT_EQ(binding, 966);
    EXPECT_EQ(doubtful, 244);
}

TEST_P(PayloadFormat, WritesThisText)
{
    EXPECT_EQ(Format(GetParam().format, GetParam().payload), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, PayloadFormat,
    testing::Values(SFormatRow{"TwoWords", L"%d %d", 0x0000000200000001, L"1 2"},
                    SFormatRow{"ZerosBehindThePayload", L"%d %d %d %I64d", 0x0000000200000001, L"1 2 0 0"},
                    SFormatRow{"LongAfterAWord", L"%d %I64u", 0x0000000200000001, L"1 2"},
                    SFormatRow{"DoubleBehindThePayload", L"%I64d %f", 5, L"5 0.000000"},
                    SFormatRow{"WidthFromThePayload", L"%*d|", 0x0000000200000005, L"    2|"},
                    SFormatRow{"NegativeWidthFromThePayload", L"%*d|", 0x00000002FFFFFFFB, L"2    |"},
                    SFormatRow{"PrecisionFromThePayload", L"%.*d", 0x0000000200000003, L"002"},
                    SFormatRow{"NegativePrecisionIsNone", L"%.*d", 0x00000002FFFFFFFF, L"2"},
                    SFormatRow{"PrecisionOfADoubleTakesItsLowWord", L"%.*f", 0x3FF0000000000002, L"0.00"},
                    SFormatRow{"TextTakesAnAddressAndWritesNothing", L"[%s|%d]", 0x0000000700000001, L"[|7]"},
                    SFormatRow{"NarrowTextToo", L"[%10S|%hs|%ls|%d]", 0x0000000700000001, L"[|||0]"},
                    SFormatRow{"CountTakesAnAddressAndWritesNothing", L"ab%nc%d", 0x0000000700000001,
                               L"abc7"},
                    SFormatRow{"PercentTakesNothing", L"%%%d", 1, L"%1"},
                    SFormatRow{"UnknownLetterTakesNothing", L"%y%d", 1, L"y1"},
                    SFormatRow{"PercentBehindAWidth", L"%5%|", 1, L"%|"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Integers, PayloadFormat,
    testing::Values(SFormatRow{"Pointer", L"%p", 0x1A, L"0000001A"},
                    SFormatRow{"WidePointer", L"%12p|", 0x1A, L"    0000001A|"},
                    SFormatRow{"MarkedPointer", L"%#p", 0x1A, L"0X0000001A"},
                    SFormatRow{"PointerOfAnySizeIsAWord", L"%I64p %d", 0x000000020000001A, L"0000001A 2"},
                    SFormatRow{"ZeroToNoDigits", L"[%.0d]", 0, L"[]"},
                    SFormatRow{"OctalZeroToNoDigits", L"[%#.0o]", 0, L"[0]"},
                    SFormatRow{"OctalZeroIsWrittenOnce", L"%#o", 0, L"0"},
                    SFormatRow{"OctalPrecisionHoldsTheZero", L"%#.4o", 8, L"0010"},
                    SFormatRow{"PrecisionSwitchesZerosOff", L"%08.3d|", 5, L"     005|"},
                    SFormatRow{"ZerosBehindTheMark", L"%#010x", 0xAB, L"0x000000ab"},
                    SFormatRow{"CapitalMark", L"%#X", 0xAB, L"0XAB"},
                    SFormatRow{"SignsAreForSignedNumbers", L"%+u % x", 0x0000000A00000005, L"5 a"},
                    SFormatRow{"ShortHexadecimal", L"%hx", 0x12345678, L"5678"},
                    SFormatRow{"LastPrefixOfSize", L"%I64hd", 0x12345, L"9029"},
                    SFormatRow{"FarAndNearMeanNothing", L"%Fd %Nd", 0x0000000200000001, L"1 2"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Characters, PayloadFormat,
    testing::Values(SFormatRow{"SurrogatesBecomeOneCharacter", L"%c%c", 0x0000DE000000D83D, L"\U0001F600"},
                    SFormatRow{"WideFormOfTheNarrowLetter", L"%lC", 0x20AC, L"\u20AC"},
                    SFormatRow{"NarrowFormOfTheNarrowLetter", L"%hC", 0x20AC, L"\u00AC"},
                    SFormatRow{"ZerosBeforeACharacter", L"%03c|%-03c|", 0x0000004200000041, L"00A|B  |"},
                    SFormatRow{"TextAroundIsKept", L"\U0001F600 %d \u20AC", 5, L"\U0001F600 5 \u20AC"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Malformed, PayloadFormat,
                         testing::Values(SFormatRow{"EndBehindAFlag", L"a%+", 1, L"a"},
                                         SFormatRow{"EndBehindAnAsterisk", L"a%*", 1, L"a"},
                                         SFormatRow{"EndBehindAPrefix", L"a%I64", 1, L"a"},
                                         SFormatRow{"HalfAPrefix", L"%I3d", 1, L"I3d"}),
                         SRowName());

namespace {

struct SNumberRow
{
    const char* name;
    const wchar_t* format;
    double number;
    const wchar_t* text;
};

class NumberFormat : public testing::TestWithParam<SNumberRow>
{};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST_P(NumberFormat, WritesThisText)
{
    EXPECT_EQ(FormatNumber(GetParam().format, GetParam().number), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rounding, NumberFormat,
    testing::Values(SNumberRow{"TieAwayFromZero", L"%.0f", 2.5, L"3"},
                    SNumberRow{"NegativeTie", L"%.0f", -2.5, L"-3"},
                    SNumberRow{"MarkedWithDecimals", L"%#.1f", 2.5, L"2.5"},
                    SNumberRow{"TieBelowOne", L"%.0f", 0.5, L"1"},
                    SNumberRow{"TieThatCarries", L"%.0f", 9.5, L"10"},
                    SNumberRow{"TieInDecimals", L"%.1f", 0.25, L"0.3"},
                    SNumberRow{"TieThatCarriesThroughNines", L"%.2f", 99.995117187499, L"100.00"},
                    SNumberRow{"JustBelowATie", L"%.2f", 1.005, L"1.00"},
                    SNumberRow{"TieInAnExponentForm", L"%.0e", 2.5, L"3e+000"},
                    SNumberRow{"CarryIntoTheExponent", L"%.0e", 9.5, L"1e+001"},
                    SNumberRow{"TieInTheGeneralForm", L"%.1g", 0.25, L"0.3"},
                    SNumberRow{"CarryIntoTheGeneralExponent", L"%g", 999999.5, L"1e+006"},
                    SNumberRow{"LargestWhole", L"%.0f", 9007199254740993.0, L"9007199254740992"},
                    SNumberRow{"ManyDecimals", L"%.30f", 0.1, L"0.100000000000000005551115123126"},
                    SNumberRow{"SmallestNumber", L"%.3e", 4.9406564584124654e-324, L"4.941e-324"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(General, NumberFormat,
                         testing::Values(SNumberRow{"LastFixedSmall", L"%g", 0.0001, L"0.0001"},
                                         SNumberRow{"FirstExponentSmall", L"%g", 0.00001, L"1e-005"},
                                         SNumberRow{"LastFixedLarge", L"%g", 123456.0, L"123456"},
                                         SNumberRow{"FirstExponentLarge", L"%g", 1234567.0, L"1.23457e+006"},
                                         SNumberRow{"ZerosOnRequest", L"%#.3g", 1.0, L"1.00"},
                                         SNumberRow{"Zero", L"%g", 0.0, L"0"},
                                         SNumberRow{"TrailingZerosOfWholesStay", L"%.10g", 1200.0, L"1200"},
                                         SNumberRow{"PointOnRequest", L"%#.1g", 5.0, L"5."}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(Hexadecimal, NumberFormat,
                         testing::Values(SNumberRow{"FewerDigits", L"%.2a", 1.5, L"0x1.80p+0"},
                                         SNumberRow{"NoDigits", L"%.0a", 1.25, L"0x1p+0"},
                                         SNumberRow{"RoundedUp", L"%.0a", 1.5, L"0x2p+0"},
                                         SNumberRow{"MoreDigits", L"%.15a", 1.5, L"0x1.800000000000000p+0"},
                                         SNumberRow{"ZerosBehindTheMark", L"%012.1a", -1.5, L"-0x0001.8p+0"},
                                         SNumberRow{"Exponent", L"%.1A", 1024.0, L"0X1.0P+10"}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(Special, NumberFormat,
                         testing::Values(SNumberRow{"CutToTwo", L"%.2f", kInfinity, L"1.#J"},
                                         SNumberRow{"CutToFour", L"%.4f", kInfinity, L"1.#INF"},
                                         SNumberRow{"Filled", L"%.8f", kInfinity, L"1.#INF0000"},
                                         SNumberRow{"WithPlus", L"%+.0f", kInfinity, L"+1"},
                                         SNumberRow{"GeneralIsNeverCut", L"%.2g", kInfinity, L"1.#INF"},
                                         SNumberRow{"GeneralInAWidth", L"%09g", -kInfinity, L"-001.#INF"},
                                         SNumberRow{"CapitalExponent", L"%.2E", -kInfinity, L"-1.#JE+000"},
                                         SNumberRow{"HexadecimalCut", L"%.3a", kInfinity, L"0x1.#IOp+0"}),
                         SRowName());

TEST(PayloadFormatBound, WidthIsCutAtTheLongestText)
{
    EXPECT_EQ(Format(L"%99999999999999d", 7), std::wstring(4095, L' ') + L"7");
    EXPECT_EQ(Format(L"%-9999d", 7), L"7" + std::wstring(4095, L' '));
    EXPECT_EQ(Format(L"x%5000d", 7), L"x" + std::wstring(4095, L' '));
}

TEST(PayloadFormatBound, PrecisionIsCutAtTheLongestText)
{
    EXPECT_EQ(Format(L"%.999999999d", 7).size(), 4096U);
    EXPECT_EQ(FormatNumber(L"%.999999999f", 0.5), L"0.5" + std::wstring(4093, L'0'));
    EXPECT_EQ(FormatNumber(L"%.5000e", 0.5), L"5." + std::wstring(4094, L'0'));
    EXPECT_EQ(FormatNumber(L"%.5000a", 0.5), L"0x1." + std::wstring(4092, L'0'));
    EXPECT_EQ(FormatNumber(L"%.*f", -1.0), L"0"); // the low word is the precision, the high one the number
}

TEST(PayloadFormatBound, LongFormatIsCutAtTheLongestText)
{
    EXPECT_EQ(qel::FormatPayload(std::wstring(10000, L'x'), 0, L'.'), std::wstring(4096, L'x'));
    std::wstring many;
    for (int i = 0; i < 3000; ++i)
        many += L"%I64d";
    EXPECT_EQ(qel::FormatPayload(many, 0x7FFFFFFFFFFFFFFF, L'.').size(), 19U + 2999);
}

TEST(PayloadFormatBound, EmbeddedZeroIsTextLikeAnyOther)
{
    EXPECT_EQ(qel::FormatPayload(std::wstring(L"a\0%d", 4), 5, L'.'), std::wstring(L"a\0"
                                                                                   L"5",
                                                                                   3));
}

TEST(PayloadFormatBound, DecimalPointIsTheRuntimeLocales)
{
    EXPECT_EQ(Format(L"%f %g", Bits(1.5), L','), L"1,500000 0");
    EXPECT_EQ(Format(L"%.0f.%d", Bits(1.5), L','), L"2.0");
}
