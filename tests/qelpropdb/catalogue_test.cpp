// catalogue_test.cpp: loading, listing, adding, removing and renaming tables.
#include "lamps.h"

namespace {

using namespace qeltest;

using Catalogue = PropDB;
using CatalogueOfLamps = Lamps;

CQelTable::SQelColumn SelfReference(unsigned long table)
{
    CQelTable::SQelColumn column = Column(L"Parent", CQelProperty::eReference);
    column.refTable = table;
    return column;
}

TEST_F(Catalogue, EmptyOneListsNoTables)
{
    TOids oids = {7};
    EXPECT_THAT(db.GetTables(oids), Succeeds());
    EXPECT_TRUE(oids.empty());
    EXPECT_EQ(log.Text(), "I3 + Getting tables\nI3 - Done\n");
}

TEST_F(Catalogue, TablesAreListedInAscendingOrder)
{
    Add(TableOf(L"c", {}, 30));
    Add(TableOf(L"a", {}, 10));
    Add(TableOf(L"b", {}, 20));
    TOids oids;
    db.GetTables(oids);
    EXPECT_EQ(oids, (TOids{10, 20, 30}));
}

TEST_F(CatalogueOfLamps, TableIsFetchedWithItsColumnsAndItsFlag)
{
    CQelTable table(lamps);
    EXPECT_THAT(db.GetTable(table), Succeeds());
    EXPECT_EQ(table.Properties().name, L"Lamps");
    EXPECT_TRUE(table.Properties().flag);
    ASSERT_EQ(table.Columns().size(), 2u);
    EXPECT_EQ(table.Columns()[1].oid, 2u);
    EXPECT_EQ(table.Columns()[1].name, L"Colour");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(CatalogueOfLamps, UnknownTableLeavesTheArgumentAndTheLog)
{
    CQelTable table = TableOf(L"kept", {Column(L"x")}, 99);
    EXPECT_THAT(db.GetTable(table), Gives(10020));
    EXPECT_EQ(table.Properties().name, L"kept");
    EXPECT_EQ(table.Columns().size(), 1u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Catalogue, SmallTableAfterALargeOneIsLoadedWithoutItsRoom)
{
    struct SHost : CQelPropDB
    {
        using CQelPropDB::CQelPropDB;
        using CQelPropDB::LoadTables;
    };
    std::vector<CQelTable::SQelColumn> many;
    many.reserve(100);
    for (int i = 0; i < 100; ++i)
        many.push_back(Column(L"c" + std::to_wstring(i), CQelProperty::eInt, i));
    Add(TableOf(L"Large", many, 1));
    Add(TableOf(L"Small", {Column(L"a")}, 2));
    std::map<unsigned long, CQelTable> tables;
    SHost host(&sql);
    ASSERT_THAT(host.LoadTables(tables), Succeeds());
    EXPECT_EQ(tables.at(1).Columns().size(), 100u);
    EXPECT_EQ(tables.at(2).Columns().size(), 1u);
    EXPECT_LE(tables.at(2).Columns().capacity(), 2u);
}

TEST_F(Catalogue, AddingStoresTheTableAndItsColumns)
{
    CQelTable table = TableOf(L"Lamps", {Column(L"a"), Column(L"b"), Column(L"c")});
    table.Properties().columns[1].oid = 77; // not used, and left to the caller
    table.Properties().description = L"for the house";
    EXPECT_THAT(db.AddTable(table), Succeeds());
    EXPECT_EQ(table.Properties().oid, 1u);
    EXPECT_EQ(table.Columns()[0].oid, 0u);
    EXPECT_EQ(table.Columns()[1].oid, 77u);
    EXPECT_EQ(notifier.Text(), "2(1,0)");
    EXPECT_EQ(log.Text(), "I3 + Adding table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpt"), "1|Lamps|for the house\n");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps 'for the house'\n  1 a type 1\n  2 b type 1\n  3 c type 1\n");
}

TEST_F(Catalogue, EveryFieldOfAColumnIsStoredInItsPlace)
{
    CQelTable::SQelColumn column = Column(L"Power", CQelProperty::eDouble, -3);
    column.description = L"in watts";
    column.refTable = 11;
    column.refColumn = kLargestOid;
    column.defaultValue.SetInt(-2);
    column.displayHint = 4294967295u;
    column.format = L"%g W";
    column.currency = L"\u20ac";
    Add(TableOf(L"Lamps", {column}));
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpc"),
              "1|1|6|Power|in "
              "watts|11|4294967295|x'040002000000000000000000000000000000feffffff00000000'|4294967295|"
              "%g W|\xe2\x82\xac|-3\n");
    EXPECT_EQ(DumpDefinitions(db),
              "1 Lamps\n  1 Power type 6 'in watts' table 11 column 4294967295 default -2 "
              "hint 4294967295 format '%g W' currency '\xe2\x82\xac' order -3\n");
}

TEST_F(Catalogue, DefaultValuesOfOneTableAreStoredApart)
{
    std::vector<CQelTable::SQelColumn> columns = {Column(L"a"), Column(L"b"), Column(L"c")};
    columns[0].defaultValue.SetString(L"a long text that leaves bytes behind it");
    columns[1].defaultValue.SetInt(5);
    Add(TableOf(L"t", columns));
    EXPECT_EQ(Rows(sql, "SELECT length(cdef) FROM qeltpc"), "106\n26\n26\n");
    CQelTable table(1);
    db.GetTable(table);
    EXPECT_EQ(Show(table.Columns()[1].defaultValue), "5");
    EXPECT_EQ(Show(table.Columns()[2].defaultValue), "-");
}

TEST_F(Catalogue, DefaultValueThatIsSqlNullIsNull)
{
    Add(TableOf(L"t", {Column(L"a")}));
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpc SET cdef=NULL, cname=NULL"));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(DumpDefinitions(db), "1 t\n  1  type 1\n");
}

TEST_F(Catalogue, GivenOidIsUsed)
{
    EXPECT_EQ(Add(TableOf(L"t", {}, 1000)), 1000u);
    EXPECT_EQ(Add(TableOf(L"largest", {}, kLargestOid)), kLargestOid);
    EXPECT_EQ(Rows(sql, "SELECT oid FROM qeltpt"), "1000\n4294967295\n");
}

TEST_F(CatalogueOfLamps, GivenOidThatIsTakenStoresNothingAndSucceeds)
{
    CQelTable table = TableOf(L"Other", {Column(L"x")}, lamps);
    EXPECT_THAT(db.AddTable(table), Succeeds());
    EXPECT_EQ(notifier.Text(), "2(1,0)");
    EXPECT_EQ(table.Properties().oid, lamps);
    EXPECT_EQ(log.ErrorCodes().size(), 0u);
    EXPECT_NE(log.Text().find("+ Loading Tables"), std::string::npos);
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n");
}

TEST_F(CatalogueOfLamps, InvalidNameIsRefusedBeforeOneThatIsUsed)
{
    CQelTable table = TableOf(L"My Table");
    EXPECT_THAT(db.AddTable(table), Gives(17502));
    EXPECT_EQ(log.Text(), "I3 + Adding table\nI2 17502\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(table.Properties().oid, 0u);
}

TEST_F(CatalogueOfLamps, UsedNameIsRefusedAndCaseCounts)
{
    CQelTable same = TableOf(L"Lamps");
    EXPECT_THAT(db.AddTable(same), Gives(17503));
    EXPECT_EQ(log.Text(), "I3 + Adding table\nI2 17503\n");
    CQelTable other = TableOf(L"lamps");
    EXPECT_THAT(db.AddTable(other), Succeeds());
}

TEST_F(Catalogue, LimitOfTablesIsNotTested)
{
    ASSERT_TRUE(Execute(sql, "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<1000) "
                             "INSERT INTO qeltpt SELECT i,'t'||i,'' FROM n"));
    db.Attach(false, nullptr);
    EXPECT_EQ(Add(TableOf(L"OneMore")), 1001u);
}

TEST_F(Catalogue, OddNamesComeBackAsTheyWere)
{
    const std::wstring names[] = {
        L"\u65e5\u672c\u8a9e", std::wstring(10000, L'x'),          L"a'b\"c",
        L"\U0001F600",         std::wstring(L"lone\xD800") + L"s", std::wstring(L"a\0b", 3)};
    for (const std::wstring& name : names)
        Add(TableOf(name, {Column(name)}));
    db.Attach(false, nullptr);
    unsigned long oid = 0;
    for (const std::wstring& name : names) {
        CQelTable table(++oid);
        EXPECT_THAT(db.GetTable(table), Succeeds());
        EXPECT_EQ(table.Properties().name, name);
        EXPECT_EQ(table.Columns().at(0).name, name);
    }
}

TEST_F(CatalogueOfLamps, FailingColumnUndoesTheWholeTable)
{
    ASSERT_TRUE(Execute(sql, "CREATE TRIGGER no BEFORE INSERT ON qeltpc WHEN NEW.cname='bad' BEGIN "
                             "SELECT RAISE(ABORT,'no'); END"));
    CQelTable table = TableOf(L"Other", {Column(L"good"), Column(L"bad")});
    EXPECT_THAT(db.AddTable(table), Gives(17319));
    EXPECT_EQ(table.Properties().oid, 0u);
    EXPECT_EQ(log.Text(), "I3 + Adding table\nE 17319\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Rows(sql, "SELECT tname FROM qeltpt"), "Lamps\n");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n");
}

TEST_F(CatalogueOfLamps, RemovingDeletesValuesColumnsAndTheTable)
{
    Add(TableOf(L"Other", {Column(L"x")}));
    AddLamp(40, L"red");
    EXPECT_THAT(db.RemoveTable(lamps), Succeeds());
    EXPECT_EQ(notifier.Text(), "4(1,0)");
    EXPECT_EQ(log.Text(), "I3 + Removing table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpd"), "");
    EXPECT_EQ(DumpDefinitions(db), "2 Other\n  3 x type 1\n");
}

TEST_F(CatalogueOfLamps, RemovingGoesValuesFirstThenColumnsThenTheTable)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(
        Execute(sql, "CREATE TABLE seen(what); "
                     "CREATE TRIGGER d AFTER DELETE ON qeltpd BEGIN INSERT INTO seen VALUES('value'); END;"
                     "CREATE TRIGGER c AFTER DELETE ON qeltpc BEGIN INSERT INTO seen VALUES('column'); END;"
                     "CREATE TRIGGER t AFTER DELETE ON qeltpt BEGIN INSERT INTO seen VALUES('table'); END;"));
    EXPECT_THAT(db.RemoveTable(lamps), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT group_concat(what,' ') FROM seen"), "value value column column table\n");
}

TEST_F(CatalogueOfLamps, RemovingAnUnknownTableIsRefused)
{
    EXPECT_THAT(db.RemoveTable(2), Gives(10020));
    EXPECT_EQ(log.Text(), "I3 + Removing table\nI2 10020\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(CatalogueOfLamps, FailureHalfWayRemovesNothing)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(
        Execute(sql, "CREATE TRIGGER no BEFORE DELETE ON qeltpt BEGIN SELECT RAISE(ABORT,'no'); END"));
    EXPECT_THAT(db.RemoveTable(lamps), Gives(17319));
    EXPECT_EQ(log.Text(), "I3 + Removing table\nE 17319\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40 Colour='red'\n");
}

TEST_F(CatalogueOfLamps, TableThatRefersToItselfKeepsEveryTableFromRemoval)
{
    const unsigned long tree = Add(TableOf(L"Tree"));
    CQelTable::SQelColumn parent = SelfReference(tree);
    ASSERT_THAT(db.TableAddColumn(tree, parent), Succeeds());
    Forget();
    EXPECT_THAT(db.RemoveTable(lamps), Gives(17509));
    EXPECT_THAT(db.RemoveTable(tree), Gives(17509));
    EXPECT_EQ(log.Text(), "I3 + Removing table\nI2 17509\nI3 + Removing table\nI2 17509\n");
    EXPECT_THAT(db.RemoveTable(99), Gives(10020)) << "an unknown table is told first";
}

TEST_F(CatalogueOfLamps, ReferenceFromAnotherTableDoesNotKeepATable)
{
    Add(TableOf(L"Rooms", {SelfReference(lamps)}));
    EXPECT_THAT(db.RemoveTable(lamps), Succeeds());
}

TEST_F(Catalogue, OnlyAReferenceColumnGuards)
{
    CQelTable::SQelColumn column = SelfReference(1);
    column.type = CQelProperty::eInt;
    const unsigned long table = Add(TableOf(L"Tree", {column}));
    EXPECT_THAT(db.RemoveTable(table), Succeeds());
}

TEST_F(CatalogueOfLamps, RenamingChangesTheNameAlone)
{
    EXPECT_THAT(db.RenameTable(lamps, L"Bulbs"), Succeeds());
    EXPECT_EQ(notifier.Text(), "3(1,0)");
    EXPECT_EQ(log.Text(), "I3 + Renaming Table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(DumpDefinitions(db), "1 Bulbs\n  1 Power type 2\n  2 Colour type 1\n");
}

TEST_F(CatalogueOfLamps, RenamingToItsOwnNameIsRefused)
{
    EXPECT_THAT(db.RenameTable(lamps, L"Lamps"), Gives(17503));
    EXPECT_EQ(log.Text(), "I3 + Renaming Table\nI2 17503\n");
}

TEST_F(CatalogueOfLamps, RenamingTellsAUsedNameBeforeAnInvalidOne)
{
    ASSERT_TRUE(Execute(sql, "INSERT INTO qeltpt VALUES(5,'a b','')"));
    db.Attach(false, nullptr);
    Forget();
    EXPECT_THAT(db.RenameTable(lamps, L"a b"), Gives(17503));
    EXPECT_THAT(db.RenameTable(lamps, L"a-b"), Gives(17502));
    EXPECT_THAT(db.RenameTable(lamps, L""), Gives(17502));
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(CatalogueOfLamps, RenamingAnUnknownTableSucceeds)
{
    EXPECT_THAT(db.RenameTable(55, L"X"), Succeeds());
    EXPECT_EQ(notifier.Text(), "3(55,0)");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n");
}

// A second connection that writes to the same file meanwhile.
class CatalogueOfALockedFile : public LampsOfALockedFile
{};

TEST_F(CatalogueOfALockedFile, AddingATableThatCannotBeginPassesForSuccess)
{
    ASSERT_TRUE(Execute(other, "BEGIN IMMEDIATE"));
    CQelTable table = TableOf(L"Other");
    EXPECT_THAT(db.AddTable(table), Succeeds());
    EXPECT_EQ(log.Text(), "I3 + Adding table\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "2(0,0)");
    EXPECT_EQ(table.Properties().oid, 0u);
    EXPECT_FALSE(db.TableExists(L"Other"));
}

TEST_F(CatalogueOfALockedFile, EveryOtherChangeThatCannotBeginIsTold)
{
    ASSERT_TRUE(Execute(other, "BEGIN IMMEDIATE"));
    CQelTable::SQelColumn column = Column(L"Size");
    CQelTable::SQelColumn modified = Column(L"Size");
    modified.oid = 1;
    EXPECT_THAT(db.RemoveTable(lamps), Gives(17201));
    EXPECT_EQ(log.Text(), "I3 + Removing table\nE 17201\nI3 - Done\n");
    EXPECT_THAT(db.RenameTable(lamps, L"x"), Gives(17201));
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17201));
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Gives(17201));
    EXPECT_THAT(db.TableModifyColumn(lamps, modified), Gives(17201));
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"x"), Gives(17201));
    EXPECT_THAT(db.CreateLookupIndexes(), Gives(17201));
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>(7, 17201));
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(CatalogueOfALockedFile, LoadingFromALockedFileIsACode)
{
    ASSERT_TRUE(Execute(other, "BEGIN EXCLUSIVE"));
    EXPECT_THAT(db.Attach(false, nullptr), Gives(17305));
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    ASSERT_TRUE(Execute(other, "ROLLBACK"));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

} // namespace
