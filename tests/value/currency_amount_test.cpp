// currency_amount_test.cpp: amounts as counts of ten-thousandths.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include "support/row_name.h"
#include "support/sample_values.h"

#include <cmath>
#include <cstdint>
#include <limits>

using namespace qeltest;

namespace {

struct SAmountRow
{
    const char* name;
    double amount;
    long long count;
};

class CurrencyAmounts : public testing::TestWithParam<SAmountRow>
{};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST_P(CurrencyAmounts, AreCutTowardZero)
{
    EXPECT_EQ(Amount(GetParam().amount).Data().uValue.nCurrency, GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CurrencyAmounts,
    testing::Values(SAmountRow{"Fraction", 1.23456, 12345}, SAmountRow{"Negative", -1.23456, -12345},
                    SAmountRow{"BelowTheSmallest", -0.00009, 0}, SAmountRow{"Whole", 42.0, 420000},
                    SAmountRow{"LargestThatFits", 922337203685477.5, 9223372036854774784},
                    SAmountRow{"TooLarge", 1e15, INT64_MIN}, SAmountRow{"TooSmall", -1e15, INT64_MIN},
                    SAmountRow{"Infinite", kInfinity, INT64_MIN}, SAmountRow{"NoNumber", NAN, INT64_MIN}),
    SRowName());
