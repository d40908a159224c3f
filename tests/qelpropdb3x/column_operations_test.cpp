// column_operations_test.cpp: adding, changing, renaming, reordering and reading legacy columns.
#include "support/fault_vfs.h"
#include "support/legacy_database.h"

#include <sqlite3.h>

using namespace qeltest;

namespace {

class LegacyColumns : public CLegacyTest
{
protected:
    unsigned long lamps = AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour")});

    unsigned int TryToAdd(const std::wstring& name)
    {
        SLegacyColumn column = Column(name);
        return db.TableAddColumn(lamps, column);
    }
    SLegacyColumn Stored(unsigned long column)
    {
        SLegacyColumn stored;
        EXPECT_THAT(db.TableGetColumn(lamps, column, stored), Succeeds());
        ForgetAll();
        return stored;
    }
};

const std::string kStoredAndLoaded = "I3 + Storing Tables\n"
                                     "I3 - Done\n"
                                     "I3 + Loading Tables\n"
                                     "I2 Loading table schema\n"
                                     "I3 - Done\n"
                                     "I3 - Done\n";

} // namespace

TEST_F(LegacyColumns, AddingGivesTheFirstFreeOid)
{
    SLegacyColumn column = Column(L"Socket");
    column.oid = 99;
    column.displayOrder = 7;
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(column.oid, 3U);
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    EXPECT_EQ(log.Take(), "I3 + Adding Column\n" + kStoredAndLoaded);
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1 3 Socket@2\n");
}

TEST_F(LegacyColumns, FirstColumnOfATableIsOne)
{
    lamps = AddTable(L"Empty");
    ASSERT_THAT(TryToAdd(L"First"), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1\n1001 Empty: 1 First@0\n");
}

TEST_F(LegacyColumns, OidOfARemovedColumnIsUsedAgain)
{
    ASSERT_THAT(TryToAdd(L"Socket"), Succeeds());
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    SLegacyColumn column = Column(L"Shade");
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(column.oid, 2U);
}

TEST_F(LegacyColumns, DisplayOrderIsTheCallersAndThenRenumbered)
{
    SLegacyColumn column = Column(L"Socket");
    column.displayOrder = -3; // negative: the place in the order of oids
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    column = Column(L"Shade"); // 0, as it comes: after the first, whose order is 0, too
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 4 Shade@3 2 Colour@1 3 Socket@2\n");
    EXPECT_EQ(Stored(3).displayOrder, 3);
}

TEST_F(LegacyColumns, SlotOfTheCallerIsKept)
{
    SLegacyColumn column = Column(L"Socket", CQelProperty::eString, 12);
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(Stored(3).dataIndex, 12);
}

TEST_F(LegacyColumns, NegativeSlotBecomesThePlaceInTheOrderOfOidsTakenOrNot)
{
    ASSERT_THAT(TryToAdd(L"Socket"), Succeeds());
    ASSERT_THAT(db.TableRemoveColumn(lamps, 1), Succeeds());
    SLegacyColumn column = Column(L"Shade");
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(column.oid, 1U);
    EXPECT_EQ(Stored(1).dataIndex, 0); // the first of the oids 1, 2, 3
    EXPECT_EQ(Stored(2).dataIndex, 0); // and there stands Colour since Power went
}

struct SRefusal
{
    const char* name;
    const wchar_t* column;
    unsigned int code;
};

class LegacyColumnRefusal : public CLegacyTest, public testing::WithParamInterface<SRefusal>
{};

TEST_P(LegacyColumnRefusal, LeavesEverythingAsItWas)
{
    AddTable(L"Lamps", {Column(L"Power"), Column(L"a-b")});
    SLegacyColumn column = Column(GetParam().column);
    column.oid = 99;
    EXPECT_THAT(db.TableAddColumn(1000, column), Gives(GetParam().code));
    EXPECT_EQ(column.oid, 99U);
    EXPECT_EQ(log.Take(), "I3 + Adding Column\nI2 " + std::to_string(GetParam().code) + "\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 a-b@1\n");
}

INSTANTIATE_TEST_SUITE_P(Rows, LegacyColumnRefusal,
                         testing::Values(SRefusal{"NameInUse", L"Power", 17503},
                                         SRefusal{"InvalidName", L"c-d", 17502},
                                         SRefusal{"EmptyName", L"", 17502},
                                         SRefusal{"InvalidNameInUse", L"a-b", 17503}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LegacyColumns, TwoHundredAndFiftySixthColumnIsRefused)
{
    CQelTable3X table(1000);
    table.Properties().name = L"Wide";
    for (unsigned long oid = 1; oid < 255; ++oid) {
        table.Properties().columns.push_back(Column(L"c" + std::to_wstring(oid)));
        table.Properties().columns.back().oid = oid;
    }
    UseSchema({table});
    EXPECT_THAT(TryToAdd(L"last"), Succeeds());
    EXPECT_THAT(TryToAdd(L"onemore"), Gives(17505));
    EXPECT_THAT(TryToAdd(L"c1"), Gives(17505)); // told before the name
}

TEST_F(LegacyColumns, UnknownTableOrColumnIs10020)
{
    SLegacyColumn column = Column(L"Socket");
    EXPECT_THAT(db.TableAddColumn(77, column), Gives(10020));
    EXPECT_THAT(db.TableModifyColumn(77, column), Gives(10020));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(10020)); // its oid is 0
    EXPECT_THAT(db.RenameColumn(77, 1, L"X"), Gives(10020));
    EXPECT_THAT(db.RenameColumn(lamps, 9, L"X"), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(77, 1, 2), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 9), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 9, 1), Gives(10020));
    EXPECT_THAT(db.TableGetColumn(77, 1, column), Gives(10020));
    EXPECT_THAT(db.TableGetColumn(lamps, 9, column), Gives(10020));
    EXPECT_TRUE(log.ErrorCodes().empty());
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LegacyColumns, ModifyingReplacesEveryFieldAndTestsNoName)
{
    SLegacyColumn column = Column(L"a-b", CQelProperty::eReference, 4);
    column.oid = 2;
    column.description = L"d";
    column.refTable = 5;
    column.refColumn = 6;
    column.defaultValue = Int(3);
    column.displayHint = 8;
    column.format = L"f";
    column.currency = L"c";
    column.displayOrder = -1;
    ASSERT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Updating Column\n" + kStoredAndLoaded);
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    const SLegacyColumn stored = Stored(2);
    EXPECT_EQ(stored.name, L"a-b");
    EXPECT_EQ(stored.type, CQelProperty::eReference);
    EXPECT_EQ(stored.description, L"d");
    EXPECT_EQ(stored.refTable, 5U);
    EXPECT_EQ(stored.refColumn, 6U);
    EXPECT_EQ(stored.defaultValue, Int(3));
    EXPECT_EQ(stored.displayHint, 8U);
    EXPECT_EQ(stored.format, L"f");
    EXPECT_EQ(stored.currency, L"c");
    EXPECT_EQ(stored.displayOrder, 1);
    EXPECT_EQ(stored.dataIndex, 4);
}

TEST_F(LegacyColumns, TypeIsFixedByRecords)
{
    Add(lamps, {Int(40), Text(L"red")});
    SLegacyColumn column = Stored(1);
    column.type = CQelProperty::eString;
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(17506));
    EXPECT_EQ(log.Take(), "I3 + Updating Column\nI2 17506\nI3 - Done\n");
    EXPECT_EQ(Stored(1).type, CQelProperty::eInt);
    column.type = CQelProperty::eInt;
    column.name = L"Watts";
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    ASSERT_THAT(db.RemoveRecord(lamps, 2), Succeeds());
    column.type = CQelProperty::eString;
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
}

TEST_F(LegacyColumns, RenamingIsStored)
{
    ASSERT_THAT(db.RenameColumn(lamps, 1, L"Watts"), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Renaming Column\n" + kStoredAndLoaded);
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    Reopen();
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Watts@0 2 Colour@1\n");
}

TEST_F(LegacyColumns, RenamingTestsNameInUseThenNameThenColumn)
{
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"Power"), Gives(17503)); // its own name counts
    EXPECT_THAT(db.RenameColumn(lamps, 9, L"Colour"), Gives(17503));
    EXPECT_THAT(db.RenameColumn(lamps, 9, L"a-b"), Gives(17502));
    EXPECT_THAT(db.RenameColumn(lamps, 9, L"X"), Gives(10020));
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1\n");
}

TEST_F(LegacyColumns, SwappingReordersAndKeepsSlots)
{
    ASSERT_THAT(db.TableSwapDisplayOrder(lamps, 1, 2), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + TableSwapDisplayOrder\n" + kStoredAndLoaded);
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    EXPECT_EQ(Show(db), "1000 Lamps: 2 Colour@1 1 Power@0\n");
    Reopen();
    EXPECT_EQ(Show(db), "1000 Lamps: 2 Colour@1 1 Power@0\n");
}

TEST_F(LegacyColumns, SwappingAColumnWithItselfIsSuccess)
{
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 1), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1\n");
}

TEST_F(LegacyColumns, UnknownColumnLeavesTheArgument)
{
    SLegacyColumn column = Column(L"mine");
    EXPECT_THAT(db.TableGetColumn(lamps, 9, column), Gives(10020));
    EXPECT_EQ(column.name, L"mine");
    EXPECT_EQ(log.Take(), "I3 + TableGetColumn\nI2 10020\nI3 - Done\n");
}

TEST(LegacyColumnFailures, FailedStoreLeavesTheCatalogueExceptAfterASwap)
{
    CFaultVfs disk;
    CTemporaryFolder folder;
    CLegacyDatabase db;
    ASSERT_THAT(db.Create(folder.Path(L"store")), Succeeds());
    CQelTable3X table;
    table.Properties().name = L"Lamps";
    table.Properties().columns = {Column(L"Power"), Column(L"Colour")};
    table.Properties().columns[0].oid = 1;
    table.Properties().columns[1].oid = 2;
    table.Properties().columns[1].displayOrder = 1;
    ASSERT_THAT(db.AddTable(table), Succeeds());

    disk.FailAfter(0, SQLITE_FULL);
    EXPECT_THAT(db.RenameColumn(1000, 1, L"Watts"), Gives(17313));
    EXPECT_THAT(db.RenameTable(1000, L"Torches"), Gives(17313));
    SLegacyColumn added = Column(L"Room");
    EXPECT_THAT(db.TableAddColumn(1000, added), Gives(17313));
    EXPECT_EQ(added.oid, 0UL);
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1\n");
    EXPECT_THAT(db.TableSwapDisplayOrder(1000, 1, 2), Gives(17313));
    SLegacyColumn power;
    ASSERT_THAT(db.TableGetColumn(1000, 1, power), Succeeds());
    EXPECT_EQ(power.displayOrder, 1); // swapped in memory alone

    disk.FailNothing();
    db.Close();
    ASSERT_THAT(db.Open(folder.Path(L"store"), false), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps: 1 Power@0 2 Colour@1\n");
    db.Close();
}
