// guarded_sort_test.cpp: the sort that trusts no comparison.
#include <gtest/gtest.h>
#include <libeval/common/guarded_sort.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

namespace {

using TLess = std::function<bool(int, int)>;

std::vector<int> Upwards(std::size_t count)
{
    std::vector<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

std::vector<int> Shuffled(std::size_t count, unsigned int seed)
{
    std::vector<int> numbers = Upwards(count);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
    return numbers;
}

// A shape that drives a median of three into its worst case.
std::vector<int> OrganPipe(std::size_t count)
{
    std::vector<int> numbers = Upwards(count);
    std::reverse(numbers.begin() + static_cast<std::ptrdiff_t>(count / 2), numbers.end());
    return numbers;
}

TEST(GuardedSort, SortsEveryLengthAroundTheShortRuns)
{
    for (std::size_t count = 0; count < 200; ++count) {
        std::vector<int> numbers = Shuffled(count, static_cast<unsigned int>(count));
        qel::GuardedSort(numbers, std::less<int>());
        EXPECT_EQ(numbers, Upwards(count)) << count;
    }
}

TEST(GuardedSort, SortsShapesThatAreHardForQuickSort)
{
    const std::size_t count = 20000;
    std::vector<int> backwards = Upwards(count);
    std::reverse(backwards.begin(), backwards.end());
    for (std::vector<int> numbers : {Upwards(count), backwards, OrganPipe(count), Shuffled(count, 1)}) {
        std::vector<int> sorted = numbers;
        std::sort(sorted.begin(), sorted.end());
        qel::GuardedSort(numbers, std::less<int>());
        EXPECT_EQ(numbers, sorted);
    }
}

TEST(GuardedSort, SortsManyEqualElements)
{
    std::vector<int> numbers = Shuffled(10000, 2);
    for (int& number : numbers)
        number %= 7;
    qel::GuardedSort(numbers, std::less<int>());
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST(GuardedSort, StaysFastWhenEveryDivisionIsLopsided)
{
    // An adversary that decides values as it is asked, always to the disadvantage of the pivot.
    const int count = 20000;
    std::vector<int> value(count, count);
    int decided = 0;
    int candidate = 0;
    long long asked = 0;
    const TLess less = [&](int a, int b) {
        ++asked;
        auto& first = value[static_cast<std::size_t>(a)];
        auto& second = value[static_cast<std::size_t>(b)];
        if (first == count && second == count)
            (a == candidate ? first : second) = decided++;
        if (first == count)
            candidate = a;
        else if (second == count)
            candidate = b;
        return first < second;
    };
    std::vector<int> numbers = Upwards(count);
    qel::GuardedSort(numbers, less);
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end(), [&](int a, int b) {
        return value[static_cast<std::size_t>(a)] < value[static_cast<std::size_t>(b)];
    }));
    EXPECT_LT(asked, 30LL * count * 15) << "quadratic";
}

struct SSenseless
{
    const char* name;
    TLess less;
};

class SenselessComparison : public testing::TestWithParam<SSenseless>
{};

TEST_P(SenselessComparison, LosesNoElement)
{
    for (const std::size_t count : {2u, 31u, 32u, 33u, 34u, 100u, 1000u, 5000u}) {
        std::vector<int> numbers = Shuffled(count, 3);
        qel::GuardedSort(numbers, GetParam().less);
        std::sort(numbers.begin(), numbers.end());
        EXPECT_EQ(numbers, Upwards(count)) << count;
    }
}

std::mt19937 g_dice(4);

INSTANTIATE_TEST_SUITE_P(GuardedSort, SenselessComparison,
                         testing::Values(SSenseless{"AlwaysBefore", [](int, int) { return true; }},
                                         SSenseless{"NeverBefore", [](int, int) { return false; }},
                                         SSenseless{"AtRandom", [](int, int) { return (g_dice() & 1) != 0; }},
                                         SSenseless{"NotLess", [](int a, int b) { return !(a < b); }},
                                         SSenseless{"InCircles",
                                                    [](int a, int b) { return (a - b + 3000) % 3 == 1; }}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
