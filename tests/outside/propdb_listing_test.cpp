// propdb_listing_test.cpp: listing record oids, as stored and sorted.
#include "property_host.h"

#include <algorithm>
#include <cmath>

using namespace outside;

namespace {

class OutsideListing : public CPropertyHost
{
protected:
    OutsideListing() { Make(L"Lamps", {Column(L"Power"), Column(L"Maker", CQelProperty::eString)}); }

    void Lamp(unsigned long oid, int power, const std::wstring& maker)
    {
        EXPECT_EQ(db.SetRecord(1, oid, {Data(1, Number(power)), Data(2, Text(maker))}), 10001u);
        Told();
    }

    std::string Sorted(const std::vector<std::pair<unsigned long, bool>>& keys)
    {
        std::vector<CQelPropDB::SSortItem> items;
        for (const auto& [column, ascending] : keys) {
            CQelPropDB::SSortItem item;
            item.column = column;
            item.ascending = ascending;
            items.push_back(item);
        }
        std::vector<unsigned long> oids = {77};
        const unsigned int code = db.GetRecordOids(1, oids, &items);
        return code == 10001 ? Show(oids) : std::to_string(code) + ":" + Show(oids);
    }
};

TEST_F(OutsideListing, WithoutKeysComesInTheOrderOfStorage)
{
    for (const unsigned long oid : {5ul, 2ul, 9ul})
        Lamp(oid, 1, L"x");
    std::vector<unsigned long> oids = {77};
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "5 2 9");
}

TEST_F(OutsideListing, LookUpIndexesKeepTheOrderOfStorage)
{
    ASSERT_EQ(db.CreateLookupIndexes(), 10001u);
    for (const unsigned long oid : {5ul, 2ul, 9ul})
        Lamp(oid, 1, L"x");
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "5 2 9");
    EXPECT_EQ(Ask("SELECT name FROM sqlite_master WHERE type='index' ORDER BY name"),
              "idx_qeltpc_toid idx_qeltpd_foid idx_qeltpd_foidtoidcoid idx_qeltpd_toidfoid");
    EXPECT_EQ(db.CreateLookupIndexes(), 10001u);
}

TEST_F(OutsideListing, EmptyTableListsNothing)
{
    std::vector<unsigned long> oids = {77};
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "");
    EXPECT_EQ(Sorted({{1, true}}), "");
}

TEST_F(OutsideListing, UnknownTableAndClosedDatabaseLeaveTheList)
{
    std::vector<unsigned long> oids = {77};
    EXPECT_EQ(db.GetRecordOids(9, oids, nullptr), 10020u);
    EXPECT_EQ(Show(oids), "77");
    EXPECT_NE(Told().find("I2 10020\n"), std::string::npos);
    sql.Close();
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 17500u);
    EXPECT_EQ(Show(oids), "77");
    EXPECT_NE(Told().find("E 17500\n"), std::string::npos);
}

TEST_F(OutsideListing, KeysSortUpAndDownAndFallBackToTheNext)
{
    Lamp(1, 60, L"b");
    Lamp(2, 40, L"c");
    Lamp(3, 60, L"a");
    Lamp(4, -5, L"d");
    EXPECT_EQ(Sorted({{1, true}, {2, true}}), "4 2 3 1");
    EXPECT_EQ(Sorted({{1, false}, {2, true}}), "3 1 2 4");
    EXPECT_EQ(Sorted({{1, false}, {2, false}}), "1 3 2 4");
    EXPECT_EQ(Sorted({{2, false}}), "4 2 1 3");
}

TEST_F(OutsideListing, NullSortsFirstAndLastGoingDown)
{
    Lamp(1, 60, L"b");
    Put(1, 2, 2, Text(L"only a maker"));
    Lamp(3, 40, L"a");
    EXPECT_EQ(Sorted({{1, true}}), "2 3 1");
    EXPECT_EQ(Sorted({{1, false}}), "1 3 2");
}

TEST_F(OutsideListing, UnknownKeySortsByTheFirstColumn)
{
    Lamp(1, 60, L"a");
    Lamp(2, 40, L"b");
    EXPECT_EQ(Sorted({{99, true}}), "2 1");
    EXPECT_EQ(Sorted({{0, false}}), "1 2");
}

TEST_F(OutsideListing, EmptyListOfKeysGivesNoOids)
{
    Lamp(1, 60, L"a");
    EXPECT_EQ(Sorted({}), "");
}

TEST_F(OutsideListing, CallersKeysStayAsTheyWere)
{
    Lamp(1, 60, L"a");
    CQelPropDB::SSortItem item;
    EXPECT_EQ(item.column, 0ul);
    EXPECT_TRUE(item.ascending);
    item.column = 2;
    const std::vector<CQelPropDB::SSortItem> items = {item};
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetRecordOids(1, oids, &items), 10001u);
    EXPECT_EQ(items[0].column, 2ul);
}

TEST_F(OutsideListing, DamagedRecordEndsASortedListingEmptyAndIsLogged)
{
    Lamp(1, 60, L"a");
    Run("INSERT INTO qeltpd (foid,toid,coid,data) VALUES(2,1,1,x'0400')");
    EXPECT_EQ(Sorted({{1, true}}), "10011:");
    EXPECT_NE(Told().find("E 10011\n"), std::string::npos);
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "1 2");
}

TEST_F(OutsideListing, ManyRecordsAreAllThereInOrder)
{
    Run("BEGIN");
    for (unsigned long oid = 1; oid <= 500; ++oid)
        Lamp(oid, static_cast<int>(oid * 7919 % 503), L"x");
    Run("COMMIT");
    std::vector<CQelPropDB::SSortItem> items(1);
    items[0].column = 1;
    std::vector<unsigned long> oids;
    ASSERT_EQ(db.GetRecordOids(1, oids, &items), 10001u);
    ASSERT_EQ(oids.size(), 500u);
    for (std::size_t i = 1; i < oids.size(); ++i)
        EXPECT_LT(oids[i - 1] * 7919 % 503, oids[i] * 7919 % 503);
}

TEST_F(OutsideListing, UnorderedValuesGoingDownEndAndLoseNoRecord)
{
    Run("BEGIN");
    for (unsigned long oid = 1; oid <= 300; ++oid) {
        CQelProperty value = Number(static_cast<int>(oid));
        if (oid % 3 == 0)
            value.SetDouble(std::nan(""));
        if (oid % 3 == 1)
            value.SetBool(true);
        Put(1, oid, 1, value);
    }
    Run("COMMIT");
    std::vector<CQelPropDB::SSortItem> items(1);
    items[0].column = 1;
    items[0].ascending = false;
    std::vector<unsigned long> oids;
    ASSERT_EQ(db.GetRecordOids(1, oids, &items), 10001u);
    std::sort(oids.begin(), oids.end());
    ASSERT_EQ(oids.size(), 300u);
    for (std::size_t i = 0; i < oids.size(); ++i)
        EXPECT_EQ(oids[i], i + 1);
}

TEST_F(OutsideListing, TableWithoutColumnsCanBeSorted)
{
    Make(L"Bare");
    Run("INSERT INTO qeltpd (foid,toid,coid) VALUES(4,2,1),(3,2,1)");
    std::vector<CQelPropDB::SSortItem> items(1);
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetRecordOids(2, oids, &items), 10001u);
    std::sort(oids.begin(), oids.end());
    EXPECT_EQ(Show(oids), "3 4");
}

} // namespace
