// listing_test.cpp: the record oids of a table, as stored and sorted.
#include "lamps.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

namespace {

using namespace qeltest;
using TSort = std::vector<CQelPropDB::SSortItem>;

class Listing : public Lamps
{
protected:
    TOids Listed(const TSort& sort)
    {
        TOids oids = {77};
        EXPECT_THAT(db.GetRecordOids(lamps, oids, &sort), Succeeds());
        return oids;
    }

    TOids Listed()
    {
        TOids oids = {77};
        EXPECT_THAT(db.GetRecordOids(lamps, oids, nullptr), Succeeds());
        return oids;
    }

    void Set(unsigned long oid, int power, const wchar_t* colour)
    {
        ASSERT_THAT(db.SetRecord(lamps, oid, {Value(1, Int(power)), Value(2, Text(colour))}), Succeeds());
        Forget();
    }
};

TEST_F(Listing, FreshSortItemIsAscending)
{
    const CQelPropDB::SSortItem item;
    EXPECT_EQ(item.column, 0u);
    EXPECT_TRUE(item.ascending);
}

TEST_F(Listing, EmptyTableHasNoRecords)
{
    EXPECT_EQ(Listed(), TOids());
    EXPECT_EQ(Listed({{1, true}}), TOids());
}

TEST_F(Listing, WithoutSortItemsIsInTheOrderOfStoring)
{
    for (const unsigned long oid : {5UL, 2UL, 9UL})
        Set(oid, 1, L"x");
    EXPECT_EQ(Listed(), (TOids{5, 2, 9}));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Listing, OrderOfStoringIsThatOfARecordsFirstValue)
{
    ASSERT_THAT(db.SetRecord(lamps, 8, {Value(2, Text(L"a"))}), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 3, {Value(2, Text(L"a")), Value(1, Int(1))}), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 8, {Value(1, Int(1))}), Succeeds());
    EXPECT_EQ(Listed(), (TOids{8, 3}));
}

TEST_F(Listing, AscendingKeyOrdersAndDescendingReverses)
{
    Set(1, 60, L"b");
    Set(2, -4, L"a");
    Set(3, 40, L"c");
    EXPECT_EQ(Listed({{1, true}}), (TOids{2, 3, 1}));
    EXPECT_EQ(Listed({{1, false}}), (TOids{1, 3, 2}));
    EXPECT_EQ(Listed({{2, true}}), (TOids{2, 1, 3}));
}

TEST_F(Listing, EqualKeysFallBackToTheNext)
{
    Set(1, 60, L"b");
    Set(2, 40, L"b");
    Set(3, 40, L"a");
    Set(4, 60, L"a");
    EXPECT_EQ(Listed({{1, true}, {2, false}}), (TOids{2, 3, 1, 4}));
    EXPECT_EQ(Listed({{2, true}, {1, false}}), (TOids{4, 3, 1, 2}));
}

TEST_F(Listing, UnknownColumnSortsByTheFirst)
{
    Set(1, 60, L"a");
    Set(2, 40, L"b");
    EXPECT_EQ(Listed({{99, true}}), (TOids{2, 1}));
}

TEST_F(Listing, CallersSortItemsStayAsTheyAre)
{
    Set(1, 60, L"a");
    const TSort sort = {{99, false}};
    Listed(sort);
    EXPECT_EQ(sort[0].column, 99u);
    EXPECT_FALSE(sort[0].ascending);
}

TEST_F(Listing, EmptySortListGivesNoRecords)
{
    Set(1, 60, L"a");
    EXPECT_EQ(Listed(TSort()), TOids());
}

TEST_F(Listing, NullsComeFirstAndTypesMix)
{
    ASSERT_THAT(db.SetRecord(lamps, 1, {Value(1, Int(5))}), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 2, {Value(2, Text(L"x"))}), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 3, {Value(1, Int(-5))}), Succeeds());
    EXPECT_EQ(Listed({{1, true}}), (TOids{2, 3, 1}));
}

TEST_F(Listing, TableWithoutColumnsListsItsRecordsInAnyOrder)
{
    const unsigned long bare = Add(TableOf(L"bare"));
    for (const unsigned long oid : {5UL, 2UL})
        ASSERT_THAT(db.SetRecord(bare, oid, {Value(77, Int(1))}), Succeeds());
    TOids oids;
    const TSort sort = {{77, true}};
    EXPECT_THAT(db.GetRecordOids(bare, oids, &sort), Succeeds());
    EXPECT_THAT(oids, testing::UnorderedElementsAre(5u, 2u));
}

TEST_F(Listing, DamagedRecordEndsItWithItsCodeEvenWithoutKeys)
{
    Set(1, 60, L"a");
    Set(2, 40, L"b");
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=x'0400' WHERE foid=2 AND coid=2"));
    for (const TSort& sort : {TSort{{1, true}}, TSort()}) {
        TOids oids = {77};
        EXPECT_THAT(db.GetRecordOids(lamps, oids, &sort), Gives(10011));
        EXPECT_TRUE(oids.empty());
    }
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{10011, 10011}));
    EXPECT_EQ(Listed(), (TOids{1, 2})) << "unsorted, no value is read";
}

TEST_F(Listing, RecordZeroIsListedAndReadable)
{
    Set(1, 60, L"a");
    ASSERT_TRUE(Execute(sql, "INSERT INTO qeltpd(foid,toid,coid,data) SELECT 0,toid,coid,data FROM qeltpd"));
    EXPECT_EQ(Listed(), (TOids{1, 0}));
    EXPECT_THAT(Listed({{1, true}}), testing::UnorderedElementsAre(1u, 0u));
    EXPECT_EQ(Record(lamps, 0), "1=60 2='a'");
    EXPECT_TRUE(db.HasRecord(lamps, 0));
}

CQelProperty AnyValue(std::mt19937& dice)
{
    const int number = static_cast<int>(dice() % 30);
    switch (dice() % 8) {
    case 0:
        return CQelProperty();
    case 1:
        return Int(number);
    case 2:
        return Double(number == 0 ? std::numeric_limits<double>::quiet_NaN() : number);
    case 3:
        return Date(number % 3 + 0.03 * number);
    case 4:
        return Time(number % 3 + 0.03 * number);
    case 5:
        return Text(std::wstring(static_cast<std::size_t>(number % 5), L'a'));
    case 6:
        return Blob(std::string(static_cast<std::size_t>(number % 4), 'a'));
    default:
        return Bits(0x7FF8000000000000ULL, CQelProperty::eDateTime);
    }
}

TEST_F(Listing, MixedTypesNansAndDatesOfOneDayLoseNoRecord)
{
    std::mt19937 dice(1);
    ASSERT_TRUE(Execute(sql, "BEGIN"));
    for (int i = 0; i < 600; ++i)
        Add(lamps, {Value(1, AnyValue(dice)), Value(2, AnyValue(dice))});
    ASSERT_TRUE(Execute(sql, "COMMIT"));
    TOids expected(600);
    std::iota(expected.begin(), expected.end(), 1);
    for (int direction = 0; direction < 4; ++direction) {
        TOids oids = Listed({{1, (direction & 1) != 0}, {2, (direction & 2) != 0}});
        std::sort(oids.begin(), oids.end());
        EXPECT_EQ(oids, expected);
    }
}

} // namespace
