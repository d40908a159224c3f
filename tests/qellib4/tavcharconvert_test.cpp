// tavcharconvert_test.cpp: UTF-8 through the converter, and numbers out of text.
#include "../support/row_name.h"

#include <gtest/gtest.h>
#include <qellib4/tavcharconvert.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace {

TEST(CharConvert, GoesBothWays)
{
    const TavCharConvert convert;
    EXPECT_EQ(convert.ToUTF8(L"\u00E4\u20AC\U0001F600"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(convert.UTF8ToUnicode("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), L"\u00E4\u20AC\U0001F600");
    EXPECT_EQ(convert.ToUTF8(L""), "");
    EXPECT_EQ(convert.UTF8ToUnicode(""), L"");
}

TEST(CharConvert, LoneSurrogateComesBack)
{
    const TavCharConvert convert;
    EXPECT_EQ(convert.ToUTF8(L"\xD800"), "\xED\xA0\x80");
    EXPECT_EQ(convert.UTF8ToUnicode("\xED\xA0\x80"), L"\xD800");
}

TEST(CharConvert, MalformedBytesBecomeTheReplacement)
{
    EXPECT_EQ(TavCharConvert().UTF8ToUnicode("a\xC3z\xFF"), L"a\xFFFDz\xFFFD");
}

struct SNumber
{
    const char* name;
    const wchar_t* text;
    double value;
};

class StringToFloat : public testing::TestWithParam<SNumber>
{};

TEST_P(StringToFloat, ReadsAsFarAsItGoes)
{
    EXPECT_EQ(TavCharConvert::StringToFloat(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, StringToFloat,
    testing::Values(SNumber{"Null", nullptr, 0}, SNumber{"Empty", L"", 0}, SNumber{"Integer", L"42", 42},
                    SNumber{"FullStop", L"1234.5", 1234.5}, SNumber{"Comma", L"1234,5", 1234.5},
                    SNumber{"ArabicSeparator", L"1234\u066B5", 1234.5}, SNumber{"Negative", L"-7.25", -7.25},
                    SNumber{"Plus", L"+7.25", 7.25}, SNumber{"LeadingBlanks", L" \t\n\u00A0 3", 3},
                    SNumber{"BlankBehindTheSign", L"- 3", 0}, SNumber{"TwoSigns", L"--3", 0},
                    SNumber{"SecondSeparatorEndsIt", L"1.234,5", 1.234},
                    SNumber{"SeparatorFirst", L".5", 0.5}, SNumber{"SeparatorLast", L"5.", 5},
                    SNumber{"SeparatorAlone", L".", 0}, SNumber{"SignAlone", L"-", 0},
                    SNumber{"TextBehind", L"12abc", 12}, SNumber{"NoNumber", L"abc", 0},
                    SNumber{"Exponent", L"1.5e3", 1500}, SNumber{"BigLetterExponent", L"1,5E+3", 1500},
                    SNumber{"NegativeExponent", L"25e-2", 0.25}, SNumber{"ExponentWithoutDigits", L"2e", 2},
                    SNumber{"ExponentWithSignAlone", L"2e-", 2}, SNumber{"ExponentAlone", L"e5", 0},
                    SNumber{"SignInside", L"12-3", 12}, SNumber{"NoHexadecimal", L"0x10", 0},
                    SNumber{"NoInfinity", L"inf", 0}, SNumber{"NoNan", L"nan", 0},
                    SNumber{"LeadingZeros", L"000000012.5", 12.5}, SNumber{"Nearest", L"0.1", 0.1},
                    SNumber{"LastDigitCounts", L"9007199254740993", 9007199254740992.0},
                    SNumber{"LargestDouble", L"1.7976931348623157e308", 1.7976931348623157e308},
                    SNumber{"TooLarge", L"1e309", HUGE_VAL},
                    SNumber{"TooLargeNegative", L"-1e309", -HUGE_VAL},
                    SNumber{"HugeExponent", L"1e99999999999999999999", HUGE_VAL},
                    SNumber{"HugeNegativeExponent", L"1e-99999999999999999999", 0},
                    SNumber{"ZeroWithHugeExponent", L"0e99999999999999999999", 0},
                    SNumber{"Smallest", L"4.9406564584124654e-324", 4.9406564584124654e-324},
                    SNumber{"TooSmall", L"1e-400", 0}),
    qeltest::SRowName());

TEST(StringToFloat, NegativeZeroKeepsItsSign)
{
    EXPECT_TRUE(std::signbit(TavCharConvert::StringToFloat(L"-0")));
    EXPECT_TRUE(std::signbit(TavCharConvert::StringToFloat(L"-0.00")));
    EXPECT_TRUE(std::signbit(TavCharConvert::StringToFloat(L"-1e-400")));
}

TEST(StringToFloat, EndlessDigitsAreReadToTheNearest)
{
    // Half-way between 1 and the next double, decided by a digit far behind.
    const std::wstring half = L"1.00000000000000011102230246251565404236316680908203125";
    EXPECT_EQ(TavCharConvert::StringToFloat(half.c_str()), 1.0);
    const std::wstring above = half + std::wstring(100000, L'0') + L"1";
    EXPECT_EQ(TavCharConvert::StringToFloat(above.c_str()), std::nextafter(1.0, 2.0));
    const std::wstring equal = half + std::wstring(100000, L'0');
    EXPECT_EQ(TavCharConvert::StringToFloat(equal.c_str()), 1.0);
}

TEST(StringToFloat, EndlessIntegersAndFractionsKeepTheirScale)
{
    EXPECT_EQ(TavCharConvert::StringToFloat((L"1" + std::wstring(300, L'0')).c_str()), 1e300);
    EXPECT_EQ(TavCharConvert::StringToFloat((L"1" + std::wstring(5000, L'0') + L"e-5000").c_str()), 1.0);
    EXPECT_EQ(TavCharConvert::StringToFloat((L"0." + std::wstring(4999, L'0') + L"1e5000").c_str()), 1.0);
    EXPECT_EQ(TavCharConvert::StringToFloat((std::wstring(5000, L'9') + L"").c_str()), HUGE_VAL);
    EXPECT_EQ(TavCharConvert::StringToFloat((L"0." + std::wstring(5000, L'0') + L"9").c_str()), 0.0);
    EXPECT_EQ(TavCharConvert::StringToFloat((std::wstring(1000000, L'0') + L"7").c_str()), 7.0);
}

TEST(StringToFloat, LocaleOfTheProcessDoesNotMatter)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "German", "C"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            EXPECT_EQ(TavCharConvert::StringToFloat(L"1.5"), 1.5) << name;
            EXPECT_EQ(TavCharConvert::StringToFloat(L"1,5"), 1.5) << name;
        }
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
