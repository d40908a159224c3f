// propdb_repair_test.cpp: display orders that attaching repairs, and how a failure of it is told.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideOrderRepair : public CPropertyHost
{
protected:
    /// Plants one table with columns of these display orders, as other programs may have left them.
    void Plant(int table, const std::vector<long long>& orders)
    {
        Run("INSERT INTO qeltpt VALUES(" + std::to_string(table) + ",'T" + std::to_string(table) + "','')");
        for (const long long order : orders)
            Run("INSERT INTO qeltpc (toid,ctype,cname,cdo) VALUES(" + std::to_string(table) +
                ",2,'c'||abs(random())," + std::to_string(order) + ")");
    }
    std::string Orders() { return Ask("SELECT cdo FROM qeltpc ORDER BY toid,oid"); }
};

struct SRepair
{
    const char* name;
    std::vector<long long> before;
    const char* after;
};

class OutsideOrders : public OutsideOrderRepair, public testing::WithParamInterface<SRepair>
{};

TEST_P(OutsideOrders, AreSeparatedOnAttachOnly)
{
    Plant(1, GetParam().before);
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Orders(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Orders, OutsideOrders,
                         testing::Values(SRepair{"ZerosBesideThree", {0, 0, 3, 0}, "0 4 3 5"},
                                         SRepair{"OneZeroStays", {5, 0, 5}, "5 0 5"},
                                         SRepair{"EqualOrdersStay", {2, 2, 2}, "2 2 2"},
                                         SRepair{"AllZeros", {0, 0, 0}, "0 1 2"},
                                         SRepair{"NegativeOrders", {-7, 0, 0}, "-7 0 1"},
                                         SRepair{"OnlyNegative", {-7, -7}, "-7 -7"}),
                         [](const testing::TestParamInfo<SRepair>& row) { return row.param.name; });

TEST_F(OutsideOrderRepair, CatalogueInMemoryHoldsTheRepairedOrders)
{
    Plant(4, {0, 0});
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    CQelTable table(4);
    ASSERT_EQ(db.GetTable(table), 10001u);
    EXPECT_EQ(table.Columns()[1].displayOrder, 1);
}

TEST_F(OutsideOrderRepair, LoadsAgainOnlyWhenATableNeededIt)
{
    Plant(1, {0, 1});
    db.Attach(false, nullptr);
    const std::string once = Told();
    Plant(2, {0, 0});
    Plant(3, {0, 0});
    db.Attach(false, nullptr);
    const std::string twice = Told();
    const auto count = [](const std::string& text) {
        int found = 0;
        for (std::size_t at = text.find("+ Loading"); at != std::string::npos;
             at = text.find("+ Loading", at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count(once), 1);
    EXPECT_EQ(count(twice), 2);
    EXPECT_EQ(Orders(), "0 1 0 1 0 1");
}

TEST_F(OutsideOrderRepair, EveryColumnOfARepairedTableIsWritten)
{
    Plant(1, {0, 0, 3});
    Plant(2, {0, 9});
    Run("CREATE TABLE seen (c); CREATE TRIGGER note AFTER UPDATE ON qeltpc BEGIN INSERT INTO seen "
        "VALUES(new.oid||'='||new.cdo); END");
    db.Attach(false, nullptr);
    EXPECT_EQ(Ask("SELECT c FROM seen"), "1=0 2=4 3=3");
}

TEST_F(OutsideOrderRepair, ReadOnlyDatabaseIsLeftWithItsZeros)
{
    CDatabaseFile file;
    CQelSQLite writer;
    ASSERT_EQ(writer.Open(file.Path()), 0);
    CQelPropDB(&writer).Attach(true, nullptr);
    outside::Run(writer.Handle(), "INSERT INTO qeltpt VALUES(1,'T',''); INSERT INTO qeltpc (toid,cdo) "
                                  "VALUES(1,0),(1,0)");
    writer.Close();
    CQelSQLite reader;
    ASSERT_EQ(reader.Open(file.Path(), true), 0);
    EXPECT_EQ(db.Attach(false, &reader), 10001u);
    EXPECT_NE(Told().find("> 0(0,0)"), std::string::npos);
    EXPECT_EQ(outside::Ask(reader.Handle(), "SELECT cdo FROM qeltpc"), "0 0");
    CQelTable table(1);
    ASSERT_EQ(db.GetTable(table), 10001u);
    EXPECT_EQ(table.Columns()[1].displayOrder, 0);
    db.Attach(false, &sql);
}

TEST_F(OutsideOrderRepair, FailureOnATableIsLoggedUndoneAndStillTold)
{
    CHostLog own("own ");
    Plant(1, {0, 0, 0});
    Run("CREATE TRIGGER no BEFORE UPDATE ON qeltpc WHEN new.oid=3 BEGIN SELECT raise(ABORT,'no'); END");
    sql.SetLogfile(&own);
    EXPECT_EQ(db.Attach(false, nullptr), 17319u);
    sql.SetLogfile(nullptr);
    const std::string told = Told();
    EXPECT_EQ(Orders(), "0 0 0");
    EXPECT_NE(told.find("\nE 17319\n"), std::string::npos) << told;
    EXPECT_NE(told.find("> 0(0,0)\n"), std::string::npos) << told;
    ASSERT_FALSE(own.entries.empty());
    EXPECT_EQ(own.entries.back().code, 17319u);
    EXPECT_EQ(own.entries.back().kind, CDovLogfile::eError);
    EXPECT_EQ(Narrow(own.entries.back().file), ".\\qelpropdb");
}

TEST_F(OutsideOrderRepair, SuccessOfALaterTableHidesTheFailureOfAnEarlierOne)
{
    Plant(1, {0, 0});
    Plant(2, {0, 0});
    Run("CREATE TRIGGER no BEFORE UPDATE ON qeltpc WHEN new.toid=1 BEGIN SELECT raise(ABORT,'no'); END");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Orders(), "0 0 0 1");
}

TEST_F(OutsideOrderRepair, BusyDatabaseIsSilentlyLeftUnrepaired)
{
    CDatabaseFile file;
    CQelSQLite mine;
    ASSERT_EQ(mine.Open(file.Path()), 0);
    CQelPropDB(&mine).Attach(true, nullptr);
    outside::Run(mine.Handle(), "INSERT INTO qeltpt VALUES(1,'T',''); INSERT INTO qeltpc (toid,cdo) "
                                "VALUES(1,0),(1,0)");
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file.Name().c_str(), &other), 0);
    ASSERT_EQ(outside::Run(other, "BEGIN IMMEDIATE"), 0);
    EXPECT_EQ(db.Attach(false, &mine), 10001u);
    EXPECT_NE(Told().find("> 0(0,0)"), std::string::npos);
    sqlite3_close(other);
    EXPECT_EQ(outside::Ask(mine.Handle(), "SELECT cdo FROM qeltpc"), "0 0");
    db.Attach(false, &sql);
}

TEST_F(OutsideOrderRepair, LargestOrderDoesNotOverflow)
{
    Plant(1, {2147483647, 0, 0});
    (void)db.Attach(false, nullptr);
    EXPECT_EQ(Ask("SELECT cdo FROM qeltpc WHERE oid IN (1,2)"), "2147483647 0");
}

} // namespace
