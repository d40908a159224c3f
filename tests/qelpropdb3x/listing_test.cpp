// listing_test.cpp: the list of a table's record ids, sorted on request.
#include "support/legacy_database.h"

#include <algorithm>

using namespace qeltest;

namespace {

class LegacyListing : public CLegacyTest
{
protected:
    unsigned long lamps = AddTable(
        L"Lamps", {Column(L"Power", CQelProperty::eInt, 0), Column(L"Colour", CQelProperty::eString, 1)});

    void AddLamps()
    {
        Add(lamps, {Int(60), Text(L"red")});
        Add(lamps, {Int(40), Text(L"red")});
        Add(lamps, {Int(75), Text(L"blue")});
        Add(lamps, {CQelProperty(), Text(L"green")});
    }
    std::string Sorted(const std::vector<CQelPropDB3X::SSortItem>& items)
    {
        std::vector<unsigned long> oids{77};
        EXPECT_THAT(db.GetRecordOids(lamps, oids, &items), Succeeds());
        return List(oids);
    }
};

} // namespace

TEST_F(LegacyListing, WithoutSortItemsIdsComeInTheStoresOrder)
{
    AddLamps();
    ASSERT_THAT(db.SetRecord(lamps, 1, {}), Succeeds());
    std::vector<unsigned long> oids{77, 78};
    ASSERT_THAT(db.GetRecordOids(lamps, oids, nullptr), Succeeds());
    EXPECT_EQ(List(oids), "1 2 3 4 5");
}

TEST_F(LegacyListing, EmptySortItemsCountAsNone)
{
    AddLamps();
    EXPECT_EQ(Sorted({}), "2 3 4 5");
}

TEST_F(LegacyListing, SortsUpAndDown)
{
    AddLamps();
    EXPECT_EQ(Sorted({{1, true}}), "5 3 2 4");
    EXPECT_EQ(Sorted({{1, false}}), "4 2 3 5");
}

TEST_F(LegacyListing, LaterKeysDecideAmongEquals)
{
    AddLamps();
    EXPECT_EQ(Sorted({{2, true}, {1, true}}), "4 5 3 2");
    EXPECT_EQ(Sorted({{2, true}, {1, false}}), "4 5 2 3");
    EXPECT_EQ(Sorted({{2, false}, {1, true}}), "3 2 5 4");
}

TEST_F(LegacyListing, UnknownColumnSortsByTheColumnAtPlaceZero)
{
    AddLamps();
    EXPECT_EQ(Sorted({{99, true}}), Sorted({{1, true}}));
}

TEST_F(LegacyListing, KeyIsThePlaceInDisplayOrderTakenForASlot)
{
    AddLamps();
    ASSERT_THAT(db.TableSwapDisplayOrder(lamps, 1, 2), Succeeds());
    // Power now stands at place 1, and slot 1 holds the colours.
    EXPECT_EQ(Sorted({{1, true}, {2, true}}), "4 5 3 2");
    EXPECT_EQ(Sorted({{2, true}}), "5 3 2 4");
}

TEST_F(LegacyListing, UnknownTableIs10020)
{
    std::vector<unsigned long> oids{77};
    EXPECT_THAT(db.GetRecordOids(77, oids, nullptr), Gives(10020));
    EXPECT_EQ(List(oids), "77");
    EXPECT_EQ(log.Take(), "I2 10020\n");
}

TEST_F(LegacyListing, FirstRecordThatCannotBeReadEndsTheSort)
{
    AddLamps();
    StoreBytes(1000, 3, std::string("\1\0\0\0\4", 5));
    const std::vector<CQelPropDB3X::SSortItem> items{{1, true}};
    std::vector<unsigned long> oids;
    EXPECT_THAT(db.GetRecordOids(lamps, oids, &items), Gives(10011));
    EXPECT_EQ(List(oids), "2 3 4 5");
    EXPECT_FALSE(log.ErrorCodes().empty());
}

TEST_F(LegacyListing, EmptyTableListsNothing)
{
    EXPECT_EQ(Sorted({{1, true}}), "");
}

TEST_F(LegacyListing, ManyRecordsOfOneValueSortToAnEnd)
{
    for (int i = 0; i < 300; ++i)
        Add(lamps, {Int(i % 3), Text(L"x")});
    const std::string sorted = Sorted({{1, false}, {2, false}}); // equal in every key: in no order
    EXPECT_EQ(std::count(sorted.begin(), sorted.end(), ' '), 299);
}
