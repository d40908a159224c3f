// values_bias_test.cpp: the time bias as number and as text.
#include "value_host.h"

namespace outside {
namespace {

using namespace qeltest;

TEST(TimeBias, IsReadAndWrittenThroughItsAccessorsAlone)
{
    CQelProperty value = DateTime(45000.5);
    EXPECT_EQ(value.TimeBIAS(), 9999);
    value.SetTimeBIAS(60);
    EXPECT_EQ(static_cast<const CQelProperty&>(value).TimeBIAS(), 60);
    value.TimeBIAS() += 5;
    EXPECT_EQ(value.Data().nTimeBias, 65);
    EXPECT_EQ(value.Data().uValue.dDouble, 45000.5);
    EXPECT_EQ(value.GetType(), CQelProperty::eDateTime);
}

struct STextRow
{
    const char* name;
    int bias;
    const wchar_t* text;
};

class TimeBiasText : public testing::TestWithParam<STextRow>
{};

TEST_P(TimeBiasText, HasSignHoursAndMinutes)
{
    CQelProperty value;
    value.SetTimeBIAS(GetParam().bias);
    EXPECT_EQ(value.GetTimeBIAS(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Minutes, TimeBiasText,
                         testing::Values(STextRow{"None", 9999, L""}, STextRow{"East", 90, L"+0130"},
                                         STextRow{"West", -90, L"-0130"}, STextRow{"Zero", 0, L"+0000"},
                                         STextRow{"SignLostBelowAnHour", -30, L"+0030"},
                                         STextRow{"ElevenHours", -660, L"-1100"},
                                         STextRow{"BeyondADay", 1500, L"+2500"},
                                         STextRow{"HundredHours", 9998, L"+16638"}),
                         SRowName());

struct SParseRow
{
    const char* name;
    const wchar_t* text;
    bool taken;
    int bias;
};

class TimeBiasParsing : public testing::TestWithParam<SParseRow>
{};

TEST_P(TimeBiasParsing, GivesMinutesOrNone)
{
    int bias = 7;
    EXPECT_EQ(CQelProperty::ParseTimeBIAS(GetParam().text, bias), GetParam().taken);
    EXPECT_EQ(bias, GetParam().bias);
}

INSTANTIATE_TEST_SUITE_P(
    Taken, TimeBiasParsing,
    testing::Values(
        SParseRow{"Plus", L"+0130", true, 90}, SParseRow{"SignOfTheHoursAlone", L"-0130", true, -30},
        SParseRow{"SignLostBelowAnHour", L"-0030", true, 30}, SParseRow{"WholeHours", L"-0500", true, -300},
        SParseRow{"NoSign", L"0100", true, 60}, SParseRow{"Capped", L"+2599", true, 1500},
        SParseRow{"CappedMinus", L"-2599", true, -1380}, SParseRow{"CappedWithoutSign", L"9999", true, 1500},
        SParseRow{"SixtyMinutes", L"+0060", true, 60}, SParseRow{"Zero", L"+0000", true, 0},
        SParseRow{"LettersAfterASign", L"+abcd", true, 0}, SParseRow{"DigitThenLetter", L"+1x2y", true, 62},
        SParseRow{"SignsAfterTheSign", L"+-1-5", true, -65}, SParseRow{"MinusMinus", L"--1-5", true, 55},
        SParseRow{"BlankHours", L"+ 1 2", true, 62}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Refused, TimeBiasParsing,
                         testing::Values(SParseRow{"Empty", L"", false, 9999},
                                         SParseRow{"TooShort", L"+1", false, 9999},
                                         SParseRow{"ThreeDigits", L"130", false, 9999},
                                         SParseRow{"SixCharacters", L"+01300", false, 9999},
                                         SParseRow{"FiveWithoutSign", L"00130", false, 9999},
                                         SParseRow{"LetterAmongFour", L"01a0", false, 9999},
                                         SParseRow{"SignAmongFour", L"+130", false, 9999},
                                         SParseRow{"Colon", L"01:30", false, 9999}),
                         SRowName());

} // namespace
} // namespace outside
