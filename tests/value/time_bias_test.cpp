// time_bias_test.cpp: a time bias as text.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include "support/sample_values.h"

#include <climits>

using namespace qeltest;

namespace {

struct SWrittenRow
{
    const char* name;
    int bias;
    const wchar_t* text;
};

struct SReadRow
{
    const char* name;
    const wchar_t* text;
    bool accepted;
    int bias;
};

class TimeBiasWriting : public testing::TestWithParam<SWrittenRow>
{};

class TimeBiasReading : public testing::TestWithParam<SReadRow>
{};

} // namespace

TEST_P(TimeBiasWriting, GivesSignHoursAndMinutes)
{
    EXPECT_EQ(Date(45000.0, GetParam().bias).GetTimeBIAS(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TimeBiasWriting,
    testing::Values(SWrittenRow{"None", 9999, L""}, SWrittenRow{"Positive", 90, L"+0130"},
                    SWrittenRow{"Negative", -90, L"-0130"}, SWrittenRow{"Zero", 0, L"+0000"},
                    SWrittenRow{"LosesTheSignBelowAnHour", -30, L"+0030"},
                    SWrittenRow{"BelowAnHour", 30, L"+0030"}, SWrittenRow{"LongestDay", 1500, L"+2500"},
                    SWrittenRow{"NineThousand", 9998, L"+16638"},
                    SWrittenRow{"Lowest", INT_MIN, L"-3579139408"},
                    SWrittenRow{"Highest", INT_MAX, L"+3579139407"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(TimeBiasReading, FollowsTheStoredHabit)
{
    int bias = 1;
    EXPECT_EQ(CQelProperty::ParseTimeBIAS(GetParam().text, bias), GetParam().accepted);
    EXPECT_EQ(bias, GetParam().bias);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TimeBiasReading,
    testing::Values(
        SReadRow{"Plus", L"+0130", true, 90}, SReadRow{"MinusHoldsForTheHoursAlone", L"-0130", true, -30},
        SReadRow{"MinusHalfHour", L"-0030", true, 30}, SReadRow{"Unsigned", L"0100", true, 60},
        SReadRow{"HoursAndMinutesAreLimited", L"+2599", true, 1500},
        SReadRow{"UnsignedIsLimitedToo", L"9999", true, 1500},
        SReadRow{"NegativeIsLimitedToo", L"-9999", true, -1380},
        SReadRow{"SignedIsNotCheckedFurther", L"+ab12", true, 12},
        SReadRow{"SignInsideHours", L"+-112", true, -48}, SReadRow{"SignInsideMinutes", L"+01-5", true, 55},
        SReadRow{"BlankInside", L"+ 1 2", true, 62}, SReadRow{"TooShort", L"+1", false, 9999},
        SReadRow{"Empty", L"", false, 9999}, SReadRow{"TooLong", L"+01300", false, 9999},
        SReadRow{"FiveWithoutSign", L"01300", false, 9999}, SReadRow{"LetterInFour", L"01a0", false, 9999},
        SReadRow{"SignInFour", L"+130", false, 9999},
        SReadRow{"OtherDigitsInFour", L"\u0661\u0662\u0663\u0664", false, 9999}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TimeBias, IsCarriedByEverySetterOfAMoment)
{
    EXPECT_EQ(Date(1.0, 60).TimeBIAS(), 60);
    EXPECT_EQ(Time(1.0, -60).TimeBIAS(), -60);
    EXPECT_EQ(DateTime(1.0, 0).TimeBIAS(), 0);
}

TEST(TimeBias, IsChangedAlone)
{
    CQelProperty value = Int(5);
    value.SetTimeBIAS(90);
    EXPECT_EQ(value.TimeBIAS(), 90);
    value.TimeBIAS() = 30;
    const CQelProperty& seen = value;
    EXPECT_EQ(seen.TimeBIAS(), 30);
    EXPECT_EQ(value.GetType(), CQelProperty::eInt);
    EXPECT_EQ(value.Data().uValue.nInt, 5);
}
