// propdb_tables_test.cpp: the catalogue of tables: loading, listing, adding.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideTables : public CPropertyHost
{
protected:
    unsigned int Add(const std::wstring& name, unsigned long oid = 0)
    {
        CQelTable table(oid);
        table.Properties().name = name;
        return db.AddTable(table);
    }
};

TEST_F(OutsideTables, AddingTellsItsStepsInOrder)
{
    EXPECT_EQ(Add(L"Lamps"), 10001u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 2(1,0)\n");
}

TEST_F(OutsideTables, AddingStoresOneRowAndOneForEachColumnInOrder)
{
    CQelTable table;
    table.Properties().name = L"Lamps";
    table.Properties().description = L"all of them";
    table.Properties().columns = {Column(L"Power", CQelProperty::eInt, 3), Column(L"Maker"),
                                  Column(L"Power")};
    table.Properties().columns[0].oid = 77;
    table.Properties().columns[0].description = L"watts";
    table.Properties().columns[0].refTable = 4;
    table.Properties().columns[0].refColumn = 5;
    table.Properties().columns[0].displayHint = 6;
    table.Properties().columns[0].format = L"%d W";
    table.Properties().columns[0].currency = L"EUR";
    table.Properties().columns[0].defaultValue = Number(60);
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(table.Properties().oid, 1ul);
    EXPECT_EQ(table.Columns()[0].oid, 77ul) << "the caller's columns keep their oids";
    EXPECT_EQ(Ask("SELECT * FROM qeltpt"), "1|Lamps|all of them");
    EXPECT_EQ(Ask("SELECT * FROM qeltpc WHERE oid=1"),
              "1|1|2|Power|watts|4|5|x04000200000000000000000000000000000" +
                  std::string("03c00000000000000") + "|6|%d W|EUR|3");
    EXPECT_EQ(Ask("SELECT oid,cname,length(cdef) FROM qeltpc ORDER BY oid"),
              "1|Power|26 2|Maker|26 3|Power|26");
    EXPECT_EQ(Columns(1), "1:Power@3 2:Maker@0 3:Power@0");
}

TEST_F(OutsideTables, EveryFieldOfAColumnComesBack)
{
    CQelTable::SQelColumn column = Column(L"Ref", CQelProperty::eReference, -5);
    column.description = L"d";
    column.refTable = 4294967295ul;
    column.refColumn = 4294967294ul;
    column.displayHint = 4294967293u;
    column.format = L"f";
    column.currency = L"c";
    column.defaultValue = Text(L"none");
    Make(L"Lamps", {column});
    CQelTable::SQelColumn found;
    ASSERT_EQ(db.TableGetColumn(1, 1, found), 10001u);
    EXPECT_EQ(found.type, CQelProperty::eReference);
    EXPECT_EQ(found.description, L"d");
    EXPECT_EQ(found.refTable, 4294967295ul);
    EXPECT_EQ(found.refColumn, 4294967294ul);
    EXPECT_EQ(found.displayHint, 4294967293u);
    EXPECT_EQ(found.format, L"f");
    EXPECT_EQ(found.currency, L"c");
    EXPECT_EQ(found.displayOrder, -5);
    EXPECT_TRUE(found.defaultValue == Text(L"none"));
}

TEST_F(OutsideTables, LoadedTablesCarryTheFlag)
{
    Make(L"Lamps");
    CQelTable table(1);
    ASSERT_EQ(db.GetTable(table), 10001u);
    EXPECT_TRUE(table.Properties().flag);
}

TEST_F(OutsideTables, GivenOidIsTaken)
{
    EXPECT_EQ(Make(L"Lamps", {}, 4294967295ul), 4294967295ul);
    EXPECT_EQ(Ask("SELECT oid FROM qeltpt"), "4294967295");
    CQelTable table(4294967295ul);
    EXPECT_EQ(db.GetTable(table), 10001u);
    EXPECT_EQ(table.Properties().name, L"Lamps");
}

TEST_F(OutsideTables, TakenOidStoresNothingYetSucceedsReloadsAndNotifies)
{
    Make(L"Lamps", {Column(L"Power")}, 7);
    CQelTable table(7);
    table.Properties().name = L"Fans";
    table.Properties().columns = {Column(L"Speed")};
    EXPECT_EQ(db.AddTable(table), 10001u);
    const std::string told = Told();
    EXPECT_NE(told.find("I3 + Loading Tables\nI3 - Done\nI3 - Done\n> 2(7,0)\n"), std::string::npos) << told;
    EXPECT_EQ(Ask("SELECT oid,tname FROM qeltpt"), "7|Lamps");
    EXPECT_EQ(Columns(7), "1:Power@0");
    EXPECT_FALSE(db.TableExists(L"Fans"));
}

TEST_F(OutsideTables, InvalidNameComesBeforeDuplicateAndIsAnInformalEntry)
{
    EXPECT_EQ(Add(L"My Table"), 17502u);
    EXPECT_EQ(Told().substr(0, 28), "I3 + Adding table\nI2 17502\n" + std::string());
    EXPECT_EQ(Add(L""), 17502u);
}

TEST_F(OutsideTables, UsedNameIsRefusedExactlyAsWritten)
{
    Make(L"Lamps");
    EXPECT_EQ(Add(L"Lamps"), 17503u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI2 17503\n");
    EXPECT_EQ(Add(L"lamps"), 10001u);
}

TEST_F(OutsideTables, RefusalsOfAClosedDatabaseAreErrors)
{
    sql.Close();
    std::vector<unsigned long> oids{5};
    CQelTable table(1);
    EXPECT_EQ(Add(L"My Table"), 17500u);
    EXPECT_EQ(Told(), "I3 + Adding table\nE 17500\n");
    EXPECT_EQ(db.RemoveTable(1), 17500u);
    EXPECT_EQ(Told(), "I3 + Removing table\nE 17500\n");
    EXPECT_EQ(db.RenameTable(1, L"My Table"), 17500u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nE 17500\n");
    EXPECT_EQ(db.GetTables(oids), 17500u);
    EXPECT_EQ(Told(), "I3 + Getting tables\nE 17500\n");
    EXPECT_EQ(Show(oids), "5");
    EXPECT_EQ(db.GetTable(table), 17500u);
    EXPECT_EQ(Told(), "E 17500\n");
}

TEST_F(OutsideTables, ReadOnlyDatabaseRefusesEveryChangeAsAnError)
{
    const CReadOnlyAttachment attached(db, sql);
    EXPECT_EQ(Add(L"My Table"), 17501u);
    EXPECT_EQ(Told(), "I3 + Adding table\nE 17501\n");
    EXPECT_EQ(db.RemoveTable(1), 17501u);
    EXPECT_EQ(Told(), "I3 + Removing table\nE 17501\n");
    EXPECT_EQ(db.RenameTable(1, L"My Table"), 17501u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nE 17501\n");
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
}

TEST_F(OutsideTables, GettingTablesListsThemAscending)
{
    Make(L"b", {}, 20);
    Make(L"a", {}, 4294967295ul);
    Make(L"c", {}, 3);
    std::vector<unsigned long> oids{1, 2, 3, 4};
    EXPECT_EQ(db.GetTables(oids), 10001u);
    EXPECT_EQ(Show(oids), "3 20 4294967295");
    EXPECT_EQ(Told(), "I3 + Getting tables\nI3 - Done\n");
}

TEST_F(OutsideTables, UnknownTableLeavesTheArgumentAndIsNotLogged)
{
    CQelTable table(9);
    table.Properties().name = L"mine";
    EXPECT_EQ(db.GetTable(table), 10020u);
    EXPECT_EQ(table.Properties().name, L"mine");
    EXPECT_EQ(table.Properties().oid, 9ul);
    EXPECT_EQ(Told(), "");
}

TEST_F(OutsideTables, ReadsUseTheMapAndNoSql)
{
    Make(L"Lamps", {Column(L"Power")});
    Run("DELETE FROM qeltpt; DELETE FROM qeltpc");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_EQ(Columns(1), "1:Power@0");
}

TEST_F(OutsideTables, LoadingEmptiesTheGivenMapFirst)
{
    std::map<unsigned long, CQelTable> tables;
    tables.emplace(55, CQelTable(55));
    Make(L"Lamps");
    EXPECT_EQ(db.LoadTables(tables), 10001u);
    EXPECT_EQ(tables.size(), 1u);
    EXPECT_EQ(tables.count(1), 1u);
    EXPECT_EQ(Told(), "I3 + Loading Tables\nI3 - Done\n");
}

TEST_F(OutsideTables, MissingSchemaLoadsAsEmptyAndSuccess)
{
    Make(L"Lamps");
    Run("DROP TABLE qeltpt");
    std::map<unsigned long, CQelTable> tables;
    EXPECT_EQ(db.LoadTables(tables), 10001u);
    EXPECT_TRUE(tables.empty());
    EXPECT_EQ(Told(), "I3 + Loading Tables\nI3 - Done\n");
}

TEST_F(OutsideTables, MissingColumnTableLoadsTablesWithoutColumns)
{
    Make(L"Lamps", {Column(L"Power")});
    Run("DROP TABLE qeltpc");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Columns(1), "");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTables, FailingColumnRollsTheWholeTableBack)
{
    Run("CREATE TRIGGER no BEFORE INSERT ON qeltpc WHEN new.cname='bad' BEGIN SELECT raise(ABORT,'no'); END");
    CQelTable table;
    table.Properties().name = L"Lamps";
    table.Properties().columns = {Column(L"good"), Column(L"bad"), Column(L"never")};
    EXPECT_EQ(db.AddTable(table), 17319u);
    const std::string told = Told();
    EXPECT_EQ(told.substr(told.size() - 18), "E 17319\nI3 - Done\n");
    EXPECT_EQ(Ask("SELECT (SELECT count(*) FROM qeltpt),(SELECT count(*) FROM qeltpc)"), "0|0");
    EXPECT_FALSE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTables, NamesBeyondTheBasicPlaneAndLongOnesComeBack)
{
    const std::wstring wide = L"\U0001F4A1" + std::wstring(10000, L'\u00e9') + L"\u4e2d";
    Make(wide);
    EXPECT_TRUE(db.TableExists(wide));
    db.Close();
    db.Attach(false, nullptr);
    EXPECT_TRUE(db.TableExists(wide));
    EXPECT_EQ(Ask("SELECT length(tname) FROM qeltpt"), "10002");
}

TEST_F(OutsideTables, LoneSurrogateInANameComesBack)
{
    const std::wstring lone = {L'a', static_cast<wchar_t>(0xD800), L'b', static_cast<wchar_t>(0xDC00)};
    EXPECT_EQ(Add(lone), 10001u);
    EXPECT_TRUE(db.TableExists(lone));
    EXPECT_EQ(Add(lone), 17503u);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "1");
}

TEST_F(OutsideTables, ZeroInsideANameComesBack)
{
    const std::wstring name(L"a\0b", 3);
    EXPECT_EQ(Add(name), 10001u);
    EXPECT_TRUE(db.TableExists(name));
    EXPECT_FALSE(db.TableExists(L"a"));
    EXPECT_EQ(Add(L"a"), 10001u);
}

TEST_F(OutsideTables, WiderOidThanThirtyTwoBitsIsRefusedWith10020)
{
    if constexpr (sizeof(unsigned long) == 8) {
        const auto wide = static_cast<unsigned long>(4294967297ull);
        EXPECT_EQ(Add(L"Lamps", wide), 10020u);
        EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "0");
        Make(L"Lamps", {}, 1);
        CQelTable table(wide);
        EXPECT_EQ(db.GetTable(table), 10020u);
        EXPECT_EQ(db.RemoveTable(wide), 10020u);
        EXPECT_EQ(db.RenameTable(wide, L"X"), 10020u);
        EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lamps");
    }
}

} // namespace
