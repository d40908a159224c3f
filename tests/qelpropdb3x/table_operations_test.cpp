// table_operations_test.cpp: listing, reading, adding, renaming and removing legacy tables.
#include "support/legacy_database.h"

using namespace qeltest;

namespace {

class LegacyTables : public CLegacyTest
{
protected:
    unsigned int TryToAdd(const std::wstring& name)
    {
        CQelTable3X table;
        table.Properties().name = name;
        return db.AddTable(table);
    }
    // A catalogue of tables with the oids `first` to `last`, all under names of their own.
    void Fill(unsigned long first, unsigned long last)
    {
        std::vector<CQelTable3X> tables;
        for (unsigned long oid = first; oid <= last; ++oid) {
            tables.emplace_back(oid);
            tables.back().Properties().name = L"T" + std::to_wstring(oid);
        }
        UseSchema(tables);
    }
    SLegacyColumn ReferenceTo(unsigned long table, unsigned long column)
    {
        SLegacyColumn reference = Column(L"Ref", CQelProperty::eReference);
        reference.refTable = table;
        reference.refColumn = column;
        return reference;
    }
};

} // namespace

TEST_F(LegacyTables, FirstTableIsAThousand)
{
    CQelTable3X table(77);
    table.Properties().name = L"Lamps";
    table.Properties().description = L"they glow";
    table.Properties().flag = true;
    ASSERT_THAT(db.AddTable(table), Succeeds());
    EXPECT_EQ(table.Properties().oid, 1000U);
    EXPECT_EQ(notifier.Text(), "2(1000,0)");
    CQelTable3X stored(1000);
    ASSERT_THAT(db.GetTable(stored), Succeeds());
    EXPECT_EQ(stored.Properties().description, L"they glow");
    EXPECT_TRUE(stored.Properties().flag);
}

TEST_F(LegacyTables, AddingTellsItsSteps)
{
    ASSERT_THAT(TryToAdd(L"Lamps"), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Adding table\n"
                          "I3 + Storing Tables\n"
                          "I3 - Done\n"
                          "I3 + Loading Tables\n"
                          "I2 Loading table schema\n"
                          "I3 - Done\n"
                          "I3 - Done\n");
}

TEST_F(LegacyTables, AddingKeepsTheCallersColumns)
{
    EXPECT_EQ(AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt, 5), Column(L"Colour")}), 1000U);
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@5 2 Colour@1\n");
    Reopen();
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@5 2 Colour@1\n");
}

TEST_F(LegacyTables, RemovedOidIsUsedAgain)
{
    AddTable(L"A");
    AddTable(L"B");
    ASSERT_THAT(db.RemoveTable(1000), Succeeds());
    EXPECT_EQ(AddTable(L"C"), 1000U);
    EXPECT_EQ(AddTable(L"D"), 1002U);
    EXPECT_EQ(Show(db), "1000 C\n1001 B\n1002 D\n");
}

TEST_F(LegacyTables, InvalidNameIsRefusedBeforeTheDuplicate)
{
    EXPECT_THAT(TryToAdd(L""), Gives(17502));
    EXPECT_THAT(TryToAdd(L"a-b"), Gives(17502));
    EXPECT_EQ(log.Take(), "I3 + Adding table\nI2 17502\nI3 - Done\n"
                          "I3 + Adding table\nI2 17502\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LegacyTables, NameInUseIsRefusedInItsExactForm)
{
    AddTable(L"Lamps");
    EXPECT_THAT(TryToAdd(L"Lamps"), Gives(17503));
    EXPECT_EQ(log.Take(), "I3 + Adding table\nI2 17503\nI3 - Done\n");
    EXPECT_THAT(TryToAdd(L"lamps"), Succeeds());
}

TEST_F(LegacyTables, ThousandAndFirstTableIsRefused)
{
    Fill(1000, 1998);
    EXPECT_THAT(TryToAdd(L"last"), Succeeds());
    log.Forget();
    EXPECT_THAT(TryToAdd(L"onemore"), Gives(17504));
    EXPECT_EQ(log.Take(), "I3 + Adding table\nI2 17504\nI3 - Done\n");
    std::vector<unsigned long> oids;
    ASSERT_THAT(db.GetTables(oids), Succeeds());
    EXPECT_EQ(oids.size(), 1000U);
    EXPECT_EQ(oids.back(), 1999U);
}

TEST_F(LegacyTables, RefusedTableLeavesTheCallersOid)
{
    CQelTable3X table(77);
    EXPECT_THAT(db.AddTable(table), Gives(17502));
    EXPECT_EQ(table.Properties().oid, 77U);
}

TEST_F(LegacyTables, OidsAreListedAscending)
{
    AddTable(L"A");
    AddTable(L"B");
    std::vector<unsigned long> oids{9, 9, 9};
    ASSERT_THAT(db.GetTables(oids), Succeeds());
    EXPECT_EQ(List(oids), "1000 1001");
    EXPECT_EQ(log.Take(), "I3 + Getting tables\nI3 - Done\n");
}

TEST_F(LegacyTables, UnknownTableIsToldAndLeavesTheArgument)
{
    CQelTable3X table(1000);
    table.Properties().name = L"mine";
    EXPECT_THAT(db.GetTable(table), Gives(10020));
    EXPECT_EQ(table.Properties().name, L"mine");
    EXPECT_EQ(log.Take(), "I2 10020\n");
    db.Close();
    log.Forget();
    EXPECT_THAT(db.GetTable(table), Gives(17500));
    EXPECT_EQ(log.Take(), "E 17500\n");
}

TEST_F(LegacyTables, RemovingATableRemovesItsRecordsAndNoOthers)
{
    const unsigned long lamps = AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt)});
    const unsigned long cars = AddTable(L"Cars", {Column(L"Model")});
    Add(lamps, {Int(40)});
    Add(cars, {Text(L"Duett")});
    ASSERT_THAT(db.RemoveTable(lamps), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Removing table\n"
                          "I3 + Storing Tables\n"
                          "I3 - Done\n"
                          "I3 + Loading Tables\n"
                          "I2 Loading table schema\n"
                          "I3 - Done\n"
                          "I3 - Done\n");
    EXPECT_EQ(notifier.Text(), "4(1000,0)");
    EXPECT_EQ(Dump(db), "1001 Cars: 1 Model@0\n  2: 1='Duett'\n");
    EXPECT_EQ(StoredHex(db, 1000, 2), "none");
}

TEST_F(LegacyTables, TableMadeUnderARemovedOidStartsAfresh)
{
    const unsigned long lamps = AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt)});
    for (int i = 0; i < 5; ++i)
        Add(lamps, {Int(i)});
    ASSERT_THAT(db.RemoveTable(lamps), Succeeds());
    AddTable(L"Cars", {Column(L"Model")});
    EXPECT_EQ(Add(1000, {Text(L"Duett")}), 2U);
}

TEST_F(LegacyTables, UnknownTableIsNotRemoved)
{
    EXPECT_THAT(db.RemoveTable(1000), Gives(10020));
    EXPECT_EQ(log.Take(), "I3 + Removing table\nI2 10020\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LegacyTables, TableThatAReferenceColumnPointsToStays)
{
    const unsigned long makers = AddTable(L"Makers", {Column(L"Name")});
    const unsigned long cars = AddTable(L"Cars", {ReferenceTo(makers, 1)});
    Add(makers, {Text(L"Volvo")});
    const std::string before = Dump(db);
    ForgetAll();
    EXPECT_THAT(db.RemoveTable(makers), Gives(17509));
    EXPECT_EQ(log.Take(), "I3 + Removing table\nI2 17509\nI3 - Done\n");
    EXPECT_EQ(Dump(db), before);
    EXPECT_THAT(db.RemoveTable(cars), Succeeds());
    EXPECT_THAT(db.RemoveTable(makers), Succeeds());
}

TEST_F(LegacyTables, TableThatRefersToItselfStays)
{
    const unsigned long people = AddTable(L"People", {ReferenceTo(1000, 1)});
    EXPECT_THAT(db.RemoveTable(people), Gives(17509));
}

TEST_F(LegacyTables, OnlyReferenceColumnsCount)
{
    const unsigned long makers = AddTable(L"Makers");
    SLegacyColumn number = ReferenceTo(makers, 1);
    number.type = CQelProperty::eInt;
    AddTable(L"Cars", {number});
    EXPECT_THAT(db.RemoveTable(makers), Succeeds());
}

TEST_F(LegacyTables, RenamingIsStored)
{
    AddTable(L"Lamps");
    ASSERT_THAT(db.RenameTable(1000, L"Torches"), Succeeds());
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    EXPECT_EQ(log.Take().substr(0, 21), "I3 + Renaming Table\nI");
    Reopen();
    EXPECT_EQ(Show(db), "1000 Torches\n");
}

TEST_F(LegacyTables, RenamingToTheSameNameWritesNothing)
{
    CQelTable3X odd(1000);
    odd.Properties().name = L"a-b"; // no valid name, but its own
    UseSchema({odd});
    EXPECT_THAT(db.RenameTable(1000, L"a-b"), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Renaming Table\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LegacyTables, RenamingTestsTheDuplicateBeforeTheName)
{
    CQelTable3X odd(1000);
    odd.Properties().name = L"a-b";
    CQelTable3X other(1001);
    other.Properties().name = L"Other";
    UseSchema({odd, other});
    EXPECT_THAT(db.RenameTable(1001, L"a-b"), Gives(17503));
    EXPECT_THAT(db.RenameTable(1001, L"c-d"), Gives(17502));
    EXPECT_THAT(db.RenameTable(1002, L"c-d"), Gives(10020));
    EXPECT_EQ(Show(db), "1000 a-b\n1001 Other\n");
}

TEST_F(LegacyTables, WideOidNamesNoTable)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "no such number here";
    AddTable(L"Lamps");
    const unsigned long wide = static_cast<unsigned long>(0x100000000ULL + 1000);
    CQelTable3X table(wide);
    EXPECT_THAT(db.GetTable(table), Gives(10020));
    EXPECT_THAT(db.RemoveTable(wide), Gives(10020));
    EXPECT_THAT(db.RenameTable(wide, L"X"), Gives(10020));
    EXPECT_EQ(Show(db), "1000 Lamps\n");
}

TEST_F(LegacyTables, ColumnThatRefersToAWideOidIsNotStored)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "no such number here";
    CQelTable3X table;
    table.Properties().name = L"Cars";
    table.Properties().columns = {ReferenceTo(static_cast<unsigned long>(0x100000000ULL), 1)};
    EXPECT_THAT(db.AddTable(table), Gives(10020));
    EXPECT_EQ(Show(db), "");
    EXPECT_EQ(StoredHex(db, 2, 1, "2 4 4"), "0100 00000000 06729e7a");
}

TEST_F(LegacyTables, HostsBatchCoversTheCatalogue)
{
    ASSERT_THAT(db.BlobDB().BeginBatch(), Succeeds());
    AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt)});
    Add(1000, {Int(1)});
    EXPECT_THAT(db.RemoveTable(1000), Succeeds());
    AddTable(L"Cars");
    ASSERT_THAT(db.BlobDB().RollbackBatch(), Succeeds());
    Reopen();
    EXPECT_EQ(Show(db), "");
}
