// legacy_tables_test.cpp: tables and columns of the legacy database.
#include "legacy_host.h"

using namespace outside;

namespace {

using OutsideLegacyTables = CLegacyHost;

constexpr const char* kStored = "I3 + Storing Tables\nI3 - Done\n";
constexpr const char* kLoaded = "I3 + Loading Tables\nI2 Loading table schema\nI3 - Done\n";

TEST_F(OutsideLegacyTables, TakeTheFirstFreeOidFromOneThousandOn)
{
    EXPECT_EQ(Make(L"A"), 1000ul);
    EXPECT_EQ(Make(L"B"), 1001ul);
    EXPECT_EQ(db.RemoveTable(1000), 10001u);
    EXPECT_EQ(Make(L"C"), 1000ul);
    EXPECT_EQ(Tables(), "1000 1001");
}

TEST_F(OutsideLegacyTables, AddingTellsItsStepsInOrder)
{
    CQelTable3X table(5);
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(table.Properties().oid, 1000ul);
    EXPECT_EQ(Told(), std::string("I3 + Adding table\n") + kStored + kLoaded + "> 2(1000,0)\nI3 - Done\n");
}

TEST_F(OutsideLegacyTables, RefusalsOfNamesAreInformal)
{
    Make(L"Lamps");
    CQelTable3X table;
    table.Properties().name = L"a-b";
    EXPECT_EQ(db.AddTable(table), 17502u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI2 17502\nI3 - Done\n");
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 17503u);
    table.Properties().name = L"lamps";
    EXPECT_EQ(db.AddTable(table), 10001u);
}

TEST_F(OutsideLegacyTables, RenamingAsksForTheTableThenTheNameItHasThenOthersThenTheRule)
{
    const unsigned long lamps = Make(L"Lamps");
    Make(L"Books");
    const std::string before = StoredBytes(db.BlobDB(), 2, 1);
    EXPECT_EQ(db.RenameTable(5, L"Books"), 10020u);
    EXPECT_EQ(db.RenameTable(lamps, L"Books"), 17503u);
    EXPECT_EQ(db.RenameTable(lamps, L""), 17502u);
    Told();
    EXPECT_EQ(db.RenameTable(lamps, L"Lamps"), 10001u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI3 - Done\n");
    EXPECT_EQ(StoredBytes(db.BlobDB(), 2, 1), before);
    EXPECT_EQ(db.RenameTable(lamps, L"lamps"), 10001u);
    EXPECT_EQ(Told(), std::string("I3 + Renaming Table\n") + kStored + kLoaded + "> 3(1000,0)\nI3 - Done\n");
}

TEST_F(OutsideLegacyTables, AnyReferenceGuardsATableItsOwnAsWell)
{
    const unsigned long lamps = Make(L"Lamps", {LegacyColumn(L"Power", CQelProperty::eInt)});
    CQelTable3X::SQelColumn reference = LegacyColumn(L"Lamp", CQelProperty::eReference);
    reference.refTable = lamps;
    const unsigned long rooms = Make(L"Rooms", {reference});
    EXPECT_EQ(db.RemoveTable(lamps), 17509u);
    EXPECT_EQ(Told(), "I3 + Removing table\nI2 17509\nI3 - Done\n");
    EXPECT_EQ(db.RemoveTable(rooms), 10001u);
    EXPECT_EQ(db.RemoveTable(lamps), 10001u);
    reference.refTable = 1000;
    const unsigned long self = Make(L"Self", {reference});
    EXPECT_EQ(db.RemoveTable(self), 17509u);
}

TEST_F(OutsideLegacyTables, RemovingTakesTheRecordsAndItsRecordNumbersBeginAgain)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(Add(table, {Number(1)}), 2ul);
    EXPECT_EQ(Add(table, {Number(2)}), 3ul);
    EXPECT_EQ(db.RemoveTable(table), 10001u);
    unsigned int count = 9;
    EXPECT_EQ(db.GetRecordCount(table, count), 10001u);
    EXPECT_EQ(count, 0u);
    ASSERT_EQ(MakeLamps(), table);
    EXPECT_EQ(Add(table, {Number(3)}), 2ul);
}

TEST_F(OutsideLegacyTables, ThousandAreTheMost)
{
    std::map<unsigned long, CQelTable3X> tables;
    for (unsigned long oid = 1000; oid < 2000; ++oid)
        tables[oid].Properties() = {oid, L"T" + std::to_wstring(oid), L"", {}, false};
    ASSERT_EQ(db.StoreTables(tables), 10001u);
    ASSERT_EQ(db.Open(path.Path(), false), 10001u);
    Told();
    CQelTable3X table;
    table.Properties().name = L"More";
    EXPECT_EQ(db.AddTable(table), 17504u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI2 17504\nI3 - Done\n");
}

using OutsideLegacyColumns = CLegacyHost;

TEST_F(OutsideLegacyColumns, TakeTheFirstFreeOidOfTheirTable)
{
    const unsigned long table = MakeLamps();
    ASSERT_EQ(db.TableRemoveColumn(table, 2), 10001u);
    Told();
    CQelTable3X::SQelColumn column = LegacyColumn(L"New", CQelProperty::eInt, 77, 9, 2);
    EXPECT_EQ(db.TableAddColumn(table, column), 10001u);
    EXPECT_EQ(column.oid, 2ul);
    EXPECT_EQ(Told(), std::string("I3 + Adding Column\n") + kStored + kLoaded + "> 3(1000,0)\nI3 - Done\n");
    EXPECT_EQ(Columns(table), "1:Power@0/0 3:Age@1/1 2:New@2/2");
}

TEST_F(OutsideLegacyColumns, NameInUseComesBeforeTheRuleAndTheTableBeforeBoth)
{
    const unsigned long table = MakeLamps();
    CQelTable3X::SQelColumn column = LegacyColumn(L"Power", CQelProperty::eInt);
    EXPECT_EQ(db.TableAddColumn(5, column), 10020u);
    EXPECT_EQ(db.TableAddColumn(table, column), 17503u);
    column.name = L"a b";
    EXPECT_EQ(db.TableAddColumn(table, column), 17502u);
    EXPECT_EQ(db.RenameColumn(table, 99, L"Power"), 17503u);
    EXPECT_EQ(db.RenameColumn(table, 99, L"a b"), 17502u);
    EXPECT_EQ(db.RenameColumn(table, 99, L"Other"), 10020u);
    EXPECT_EQ(db.RenameColumn(table, 1, L"Power"), 17503u);
    EXPECT_EQ(db.RenameColumn(table, 1, L"Watts"), 10001u);
    EXPECT_EQ(Columns(table), "1:Watts@0/0 2:Maker@1/1 3:Age@2/2");
}

TEST_F(OutsideLegacyColumns, TypeIsFixedByRecordsAndTheRestIsNot)
{
    const unsigned long table = MakeLamps();
    Add(table, {Number(60), Text(L"A"), Number(1)});
    CQelTable3X::SQelColumn column = LegacyColumn(L"a b", CQelProperty::eDouble, 1, 5, 0);
    EXPECT_EQ(db.TableModifyColumn(table, column), 17506u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nI2 17506\nI3 - Done\n");
    column.type = CQelProperty::eInt;
    EXPECT_EQ(db.TableModifyColumn(table, column), 10001u);
    EXPECT_EQ(Columns(table), "2:Maker@0/1 3:Age@1/2 1:a b@2/0");
}

TEST_F(OutsideLegacyColumns, SwapTheirPlacesButNotTheirSlots)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(db.TableSwapDisplayOrder(table, 1, 3), 10001u);
    EXPECT_EQ(Told(),
              std::string("I3 + TableSwapDisplayOrder\n") + kStored + kLoaded + "> 3(1000,0)\nI3 - Done\n");
    EXPECT_EQ(Columns(table), "3:Age@0/2 2:Maker@1/1 1:Power@2/0");
    EXPECT_EQ(db.TableSwapDisplayOrder(table, 1, 9), 10020u);
}

TEST_F(OutsideLegacyColumns, UnknownOneIsNotFoundAndLeavesTheArgument)
{
    const unsigned long table = MakeLamps();
    CQelTable3X::SQelColumn column = LegacyColumn(L"mine", CQelProperty::eBlob, 42);
    EXPECT_EQ(db.TableGetColumn(table, 9, column), 10020u);
    EXPECT_EQ(column.name, L"mine");
    EXPECT_EQ(Told(), "I3 + TableGetColumn\nI2 10020\nI3 - Done\n");
    EXPECT_EQ(db.TableGetColumn(table, 2, column), 10001u);
    EXPECT_EQ(column.dataIndex, 1);
}

using OutsideLegacyColumnRemoval = CLegacyHost;

TEST_F(OutsideLegacyColumnRemoval, MovesTheSlotsBehindItUp)
{
    const unsigned long table = MakeLamps();
    const unsigned long record = Add(table, {Number(60), Text(L"A"), Number(7)});
    EXPECT_EQ(db.TableRemoveColumn(table, 2), 10001u);
    const std::string told = Told();
    EXPECT_NE(told.find("Updating existing table"), std::string::npos);
    EXPECT_EQ(told.substr(told.size() - 22), "I3 - Done\n> 3(1000,0)\n");
    EXPECT_EQ(Columns(table), "1:Power@0/0 3:Age@1/1");
    EXPECT_EQ(Record(table, record), "1=60 3=7");
    EXPECT_EQ(StoredBytes(db.BlobDB(), 1000, record).substr(0, 8), "02000000");
    EXPECT_FALSE(std::filesystem::exists(path.Backup()));
}

TEST_F(OutsideLegacyColumnRemoval, OfAnEmptyTableSaysSo)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(db.TableRemoveColumn(table, 1), 10001u);
    EXPECT_NE(Told().find("I3 Table is empty\n"), std::string::npos);
    EXPECT_EQ(Columns(table), "2:Maker@0/0 3:Age@1/1");
}

TEST_F(OutsideLegacyColumnRemoval, OfTheLastColumnTakesTheRecordsToo)
{
    const unsigned long table = Make(L"T", {LegacyColumn(L"A", CQelProperty::eInt)});
    Add(table, {Number(1)});
    Add(table, {Number(2)});
    EXPECT_EQ(db.TableRemoveColumn(table, 1), 10001u);
    const std::string told = Told();
    EXPECT_NE(told.find("> 7(1000,2)\n"), std::string::npos);
    EXPECT_NE(told.find("> 7(1000,3)\nI3 - Done\n> 3(1000,0)\n"), std::string::npos);
    unsigned int count = 9;
    EXPECT_EQ(db.GetRecordCount(table, count), 10001u);
    EXPECT_EQ(count, 0u);
}

TEST_F(OutsideLegacyColumnRemoval, IsRefusedForUnknownOnesAndWhereAReferencePoints)
{
    const unsigned long lamps = MakeLamps();
    CQelTable3X::SQelColumn reference = LegacyColumn(L"Lamp", CQelProperty::eReference);
    reference.refTable = lamps;
    reference.refColumn = 2;
    Make(L"Rooms", {reference});
    EXPECT_EQ(db.TableRemoveColumn(lamps, 2), 17509u);
    EXPECT_EQ(db.TableRemoveColumn(lamps, 9), 10020u);
    EXPECT_EQ(db.TableRemoveColumn(77, 1), 10020u);
    EXPECT_EQ(Told().find('>'), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path.Backup()));
    EXPECT_EQ(Columns(lamps), "1:Power@0/0 2:Maker@1/1 3:Age@2/2");
}

TEST_F(OutsideLegacyColumnRemoval, WithoutABackupCopyChangesNothingAndStaysOpen)
{
    const unsigned long table = MakeLamps();
    ASSERT_TRUE(std::filesystem::create_directories(path.Backup() / "full"));
    EXPECT_EQ(db.TableRemoveColumn(table, 2), 10210u);
    EXPECT_NE(Told().find("E Failed to create backup copy of database!\n"), std::string::npos);
    EXPECT_TRUE(db.BlobDB().IsOpen());
    EXPECT_EQ(Columns(table), "1:Power@0/0 2:Maker@1/1 3:Age@2/2");
}

} // namespace
