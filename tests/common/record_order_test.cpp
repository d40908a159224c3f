// record_order_test.cpp: the order of a sorted record listing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libeval/common/record_order.h>
#include <support/sample_values.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

namespace {

using namespace qeltest;
using TOids = std::vector<unsigned long>;
using TRecord = std::vector<SQelPropColumnData>;

TRecord RecordOf(std::vector<CQelProperty> values)
{
    TRecord record(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        record[i].value = std::move(values[i]);
    return record;
}

// Adds the records under 1, 2, 3... and lists them.
TOids Order(const std::vector<qel::SSortKey>& keys, std::vector<TRecord> records)
{
    qel::CRecordOrder order(keys);
    unsigned long oid = 0;
    for (TRecord& record : records)
        order.Add(++oid, record);
    TOids oids = {99};
    order.List(oids);
    return oids;
}

struct SItem
{
    unsigned long column;
    bool ascending;
};

TEST(SortKeys, AreThePositionsOfTheirColumns)
{
    std::vector<SQelPropColumnData> unused;
    struct SColumn
    {
        unsigned long oid;
    };
    const std::vector<SColumn> columns = {{11}, {12}, {13}, {12}};
    const auto keys = qel::FindSortKeys(std::vector<SItem>{{13, false}, {12, true}}, columns);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].position, 2u);
    EXPECT_FALSE(keys[0].ascending);
    EXPECT_EQ(keys[1].position, 1u);
    EXPECT_TRUE(keys[1].ascending);
}

TEST(SortKeys, UnknownColumnBecomesTheFirstPosition)
{
    struct SColumn
    {
        unsigned long oid;
    };
    const auto keys = qel::FindSortKeys(std::vector<SItem>{{77, false}}, std::vector<SColumn>{{11}, {12}});
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0].position, 0u);
    EXPECT_FALSE(keys[0].ascending);
}

TEST(RecordOrder, AscendingKeyOrdersByValue)
{
    EXPECT_EQ(Order({{0, true}}, {RecordOf({Int(60)}), RecordOf({Int(-4)}), RecordOf({Int(40)})}),
              (TOids{2, 3, 1}));
}

TEST(RecordOrder, DescendingKeyReversesIt)
{
    EXPECT_EQ(Order({{0, false}}, {RecordOf({Int(60)}), RecordOf({Int(-4)}), RecordOf({Int(40)})}),
              (TOids{1, 3, 2}));
}

TEST(RecordOrder, NullStandsBeforeEveryValue)
{
    const CQelProperty null;
    EXPECT_EQ(Order({{0, true}}, {RecordOf({Int(-1)}), RecordOf({null}), RecordOf({Int(-2)})}),
              (TOids{2, 3, 1}));
    EXPECT_EQ(Order({{0, false}}, {RecordOf({null}), RecordOf({Int(-2)}), RecordOf({Int(-1)})}),
              (TOids{3, 2, 1}));
}

TEST(RecordOrder, EqualKeysLeaveItToTheNext)
{
    EXPECT_EQ(
        Order({{1, true}, {0, false}}, {RecordOf({Int(1), Text(L"b")}), RecordOf({Int(2), Text(L"a")}),
                                        RecordOf({Int(3), Text(L"b")}), RecordOf({Int(4), Text(L"a")})}),
        (TOids{4, 2, 3, 1}));
}

TEST(RecordOrder, TwoKeysOfOnePositionReadTheSameValue)
{
    EXPECT_EQ(Order({{0, true}, {0, false}, {1, true}},
                    {RecordOf({Int(5), Int(9)}), RecordOf({Int(5), Int(8)}), RecordOf({Int(4), Int(7)})}),
              (TOids{3, 2, 1}));
}

TEST(RecordOrder, DatesOfOneDayAreUnorderedWhenAscending)
{
    // Neither equal nor less: the first key decides although it does not separate them.
    const TOids oids =
        Order({{0, true}, {1, true}}, {RecordOf({Date(100.7), Int(2)}), RecordOf({Date(99.5), Int(3)}),
                                       RecordOf({Date(101.0), Int(1)})});
    EXPECT_EQ(oids.size(), 3u);
    EXPECT_EQ(oids.front(), 2u);
    EXPECT_EQ(oids.back(), 3u);
}

TEST(RecordOrder, PositionOutsideARecordIsPassedOver)
{
    EXPECT_EQ(Order({{1, false}, {0, true}}, {RecordOf({Int(3)}), RecordOf({Int(2)}), RecordOf({Int(1)})}),
              (TOids{3, 2, 1}));
    EXPECT_THAT(Order({{0, true}}, {TRecord(), TRecord()}), testing::UnorderedElementsAre(1u, 2u));
}

TEST(RecordOrder, PositionInsideOneRecordOnlyIsPassedOver)
{
    EXPECT_EQ(Order({{1, true}, {0, true}}, {RecordOf({Int(2), Int(1)}), RecordOf({Int(1)})}), (TOids{2, 1}));
}

TEST(RecordOrder, WithoutKeysNothingIsListed)
{
    EXPECT_TRUE(Order({}, {RecordOf({Int(1)})}).empty());
}

TEST(RecordOrder, TakesOnlyTheValuesThatItSortsBy)
{
    qel::CRecordOrder order({{1, true}});
    TRecord record = RecordOf({Int(1), Int(2)});
    order.Add(1, record);
    EXPECT_FALSE(record[0].value.IsNull());
    EXPECT_TRUE(record[1].value.IsNull());
}

CQelProperty AnyValue(std::mt19937& dice)
{
    const int number = static_cast<int>(dice() % 20);
    switch (dice() % 9) {
    case 0:
        return CQelProperty();
    case 1:
        return Int(number);
    case 2:
        return Int64(number);
    case 3:
        return Double(number == 0 ? std::numeric_limits<double>::quiet_NaN() : number);
    case 4:
        return Date(number % 3 + 0.1 * number);
    case 5:
        return Time(number % 3 + 0.1 * number);
    case 6:
        return Text(std::wstring(static_cast<std::size_t>(number % 4), L'a'));
    case 7:
        return Blob(std::string(static_cast<std::size_t>(number % 3), 'a'));
    default:
        return Bits(0x7FF8000000000000ULL, CQelProperty::eDateTime);
    }
}

TEST(RecordOrder, LosesNoRecordOfMixedTypesInAnyDirection)
{
    std::mt19937 dice(5);
    for (int round = 0; round < 30; ++round) {
        std::vector<TRecord> records;
        records.reserve(700);
        for (int i = 0; i < 700; ++i)
            records.push_back(RecordOf({AnyValue(dice), AnyValue(dice)}));
        TOids oids = Order({{0, (round & 1) != 0}, {1, (round & 2) != 0}}, std::move(records));
        std::sort(oids.begin(), oids.end());
        TOids expected(700);
        std::iota(expected.begin(), expected.end(), 1);
        EXPECT_EQ(oids, expected);
    }
}

} // namespace
