// columns_test.cpp: adding, removing, changing and reading the columns of a table.
#include "lamps.h"

namespace {

using namespace qeltest;

using Columns = Lamps;

CQelTable::SQelColumn WithOid(unsigned long oid, CQelTable::SQelColumn column)
{
    column.oid = oid;
    return column;
}

TEST_F(Columns, AddingStoresTheColumnAndLeavesTheArgument)
{
    CQelTable::SQelColumn column = Column(L"Size", CQelProperty::eDouble, 7);
    EXPECT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(column.oid, 0u);
    EXPECT_EQ(notifier.Text(), "3(1,0)");
    EXPECT_EQ(log.Text(), "I3 + Adding Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n  3 Size type 6 order 7\n");
}

TEST_F(Columns, EveryFieldOfAnAddedColumnIsStoredInItsPlace)
{
    CQelTable::SQelColumn column = WithOid(50, Column(L"Room", CQelProperty::eReference, -3));
    column.description = L"where it is";
    column.refTable = 11;
    column.refColumn = kLargestOid;
    column.defaultValue.SetReference(9);
    column.displayHint = 4294967295u;
    column.format = L"%d";
    column.currency = L"EUR";
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpc WHERE oid=50"),
              "50|1|12|Room|where it is|11|4294967295|x'04000c00000000000000000000000000000009000000"
              "00000000'|4294967295|%d|EUR|-3\n");
}

// What display order is stored for what was asked, by oid given or not.
TEST_F(Columns, LastPlaceIsOneMoreThanTheLargestOrder)
{
    const unsigned long table = Add(TableOf(L"t"));
    CQelTable::SQelColumn column = Column(L"a", CQelProperty::eInt, 9999);
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    column = WithOid(70, Column(L"b", CQelProperty::eInt, 4));
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    column = WithOid(80, Column(L"c", CQelProperty::eInt, 9999));
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    column = Column(L"d", CQelProperty::eInt, 9999);
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    column = Column(L"e", CQelProperty::eInt, 4);
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT oid,cname,cdo FROM qeltpc WHERE toid=2 ORDER BY oid"),
              "3|a|0\n70|b|4\n80|c|5\n81|d|6\n82|e|4\n");
}

TEST_F(Columns, LastPlaceOfAGivenOidInAnEmptyTableIsZero)
{
    const unsigned long table = Add(TableOf(L"t"));
    CQelTable::SQelColumn column = WithOid(70, Column(L"a", CQelProperty::eInt, 9999));
    ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT cdo FROM qeltpc WHERE oid=70"), "0\n");
}

TEST_F(Columns, GivenOidThatIsTakenIsTheEnginesFailure)
{
    CQelTable::SQelColumn column = WithOid(1, Column(L"Size"));
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17319));
    EXPECT_EQ(log.Text(), "I3 + Adding Column\nE 17319\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n");
}

TEST_F(Columns, AddingChecksNameThenTableThenDoubles)
{
    CQelTable::SQelColumn column = Column(L"a b");
    EXPECT_THAT(db.TableAddColumn(99, column), Gives(17502));
    column.name = L"Power";
    EXPECT_THAT(db.TableAddColumn(99, column), Gives(10020));
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17503));
    EXPECT_EQ(log.Text(), "I3 + Adding Column\nI2 17502\nI3 + Adding Column\nI2 10020\n"
                          "I3 + Adding Column\nI2 17503\n");
    column.name = L"power";
    EXPECT_THAT(db.TableAddColumn(lamps, column), Succeeds());
}

TEST_F(Columns, TableTakes255AndNoMore)
{
    std::vector<CQelTable::SQelColumn> columns;
    columns.reserve(254);
    for (int i = 0; i < 254; ++i)
        columns.push_back(Column(L"c" + std::to_wstring(i), CQelProperty::eInt, i));
    const unsigned long table = Add(TableOf(L"wide", columns));
    CQelTable::SQelColumn column = Column(L"last");
    EXPECT_THAT(db.TableAddColumn(table, column), Succeeds());
    column.name = L"TooMany";
    Forget();
    EXPECT_THAT(db.TableAddColumn(table, column), Gives(17505));
    EXPECT_EQ(log.Text(), "I3 + Adding Column\nI2 17505\n");
    column.name = L"last";
    EXPECT_THAT(db.TableAddColumn(table, column), Gives(17505)) << "before a double name";
}

TEST_F(Columns, RemovingDropsTheColumnAndItsValues)
{
    AddLamp(40, L"red");
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Succeeds());
    EXPECT_EQ(notifier.Text(), "3(1,0)");
    EXPECT_EQ(log.Text(), "I3 + Removing Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(Rows(sql, "SELECT coid FROM qeltpd"), "2\n");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  2 Colour type 1\n");
}

TEST_F(Columns, RemovingLeavesGapsInTheDisplayOrder)
{
    const unsigned long table = Add(TableOf(
        L"t", {Column(L"a"), Column(L"b", CQelProperty::eInt, 1), Column(L"c", CQelProperty::eInt, 2)}));
    EXPECT_THAT(db.TableRemoveColumn(table, 4), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT cdo FROM qeltpc WHERE toid=2"), "0\n2\n");
}

TEST_F(Columns, RemovingWhatDoesNotExistSucceedsAndNotifies)
{
    EXPECT_THAT(db.TableRemoveColumn(lamps, 99), Succeeds());
    EXPECT_THAT(db.TableRemoveColumn(kLargestOid, kLargestOid), Succeeds());
    EXPECT_EQ(notifier.Text(), "3(1,0) 3(4294967295,0)");
}

TEST_F(Columns, RemovingNeedsTheColumnsOwnTable)
{
    const unsigned long other = Add(TableOf(L"Other", {Column(L"x")}));
    AddLamp(40, L"red");
    EXPECT_THAT(db.TableRemoveColumn(other, 1), Succeeds());
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40 Colour='red'\nOther\n");
}

TEST_F(Columns, FailingRemovalKeepsTheValues)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(
        Execute(sql, "CREATE TRIGGER no BEFORE DELETE ON qeltpc BEGIN SELECT RAISE(ABORT,'no'); END"));
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Gives(17319));
    EXPECT_EQ(log.Text(), "I3 + Removing Column\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40 Colour='red'\n");
}

TEST_F(Columns, ModifyingReplacesEveryFieldAndLoadsTwice)
{
    CQelTable::SQelColumn column = WithOid(1, Column(L"a b", CQelProperty::eInt, 9999));
    column.description = L"d";
    column.refTable = 5;
    column.refColumn = 6;
    column.defaultValue.SetBool(true);
    column.displayHint = 7;
    column.format = L"f";
    column.currency = L"c";
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    EXPECT_EQ(log.Text(),
              "I3 + Updating Column\nI3 + Loading Tables\nI3 - Done\nI3 + Loading Tables\nI3 - Done\n"
              "I3 - Done\n");
    EXPECT_EQ(notifier.Text(), "3(1,0)");
    EXPECT_EQ(DumpDefinitions(db),
              "1 Lamps\n  1 a b type 2 'd' table 5 column 6 default true hint 7 format 'f' "
              "currency 'c' order 9999\n  2 Colour type 1\n");
}

TEST_F(Columns, ModifyingTestsNoName)
{
    CQelTable::SQelColumn column = WithOid(1, Column(L"Colour", CQelProperty::eInt));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    column.name = L"";
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
}

TEST_F(Columns, TypeIsFixedWhileTheTableHoldsRecords)
{
    CQelTable::SQelColumn column = WithOid(1, Column(L"Power", CQelProperty::eDouble));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds()) << "there are none yet";
    Add(lamps, {Value(2, Text(L"red"))});
    column.type = CQelProperty::eString;
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(17506));
    EXPECT_EQ(log.Text(), "I3 + Updating Column\nI2 17506\n");
    EXPECT_EQ(notifier.Text(), "");
    column.type = CQelProperty::eDouble;
    column.name = L"Watts";
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds()) << "the same type";
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Watts type 6\n  2 Colour type 1\n");
}

TEST_F(Columns, ModifyingConvertsNoStoredValue)
{
    AddLamp(40, L"red");
    CQelTable::SQelColumn column = WithOid(1, Column(L"Watts", CQelProperty::eInt));
    ASSERT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    EXPECT_EQ(Dump(db), "Lamps\n  1 Watts=40 Colour='red'\n");
}

TEST_F(Columns, ModifyingWhatDoesNotExistIsRefused)
{
    CQelTable::SQelColumn column = WithOid(3, Column(L"x"));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(10020));
    column.oid = 1;
    EXPECT_THAT(db.TableModifyColumn(99, column), Gives(10020));
    EXPECT_EQ(log.Text(), "I3 + Updating Column\nI2 10020\nI3 + Updating Column\nI2 10020\n");
}

TEST_F(Columns, RenamingChangesTheNameAlone)
{
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"Watts"), Succeeds());
    EXPECT_EQ(log.Text(), "I3 + Renaming Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "3(1,0)");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Watts type 2\n  2 Colour type 1\n");
}

TEST_F(Columns, RenamingChecksNameThenTableThenDoublesThenColumn)
{
    EXPECT_THAT(db.RenameColumn(99, 99, L"a b"), Gives(17502));
    EXPECT_THAT(db.RenameColumn(99, 99, L"Power"), Gives(10020));
    EXPECT_THAT(db.RenameColumn(lamps, 99, L"Power"), Gives(17503));
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"Power"), Gives(17503)) << "its own name";
    EXPECT_THAT(db.RenameColumn(lamps, 99, L"Watts"), Gives(10020));
    EXPECT_EQ(log.ErrorCodes().size(), 0u);
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(Columns, SwappingExchangesTheDisplayOrders)
{
    const unsigned long table =
        Add(TableOf(L"t", {Column(L"a", CQelProperty::eInt, 5), Column(L"b", CQelProperty::eInt, -1)}));
    EXPECT_THAT(db.TableSwapDisplayOrder(table, 3, 4), Succeeds());
    EXPECT_EQ(log.Text(), "I3 + TableSwapDisplayOrder\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n");
    EXPECT_EQ(notifier.Text(), "3(2,0)");
    EXPECT_EQ(Rows(sql, "SELECT cname,cdo FROM qeltpc WHERE toid=2"), "a|-1\nb|5\n");
}

TEST_F(Columns, SwappingNeedsTwoColumnsOfTheTable)
{
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 1), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 3), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 3, 1), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(99, 1, 2), Gives(10020));
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(Columns, SwappingIsWholeOrNotAtAll)
{
    const unsigned long table =
        Add(TableOf(L"t", {Column(L"a", CQelProperty::eInt, 5), Column(L"b", CQelProperty::eInt, 6)}));
    ASSERT_TRUE(Execute(sql, "CREATE TRIGGER no BEFORE UPDATE ON qeltpc WHEN OLD.oid=4 BEGIN "
                             "SELECT RAISE(ABORT,'no'); END"));
    EXPECT_THAT(db.TableSwapDisplayOrder(table, 3, 4), Gives(17319));
    EXPECT_EQ(Rows(sql, "SELECT cname,cdo FROM qeltpc WHERE toid=2"), "a|5\nb|6\n");
}

TEST_F(Columns, OneColumnIsRead)
{
    CQelTable::SQelColumn column;
    EXPECT_THAT(db.TableGetColumn(lamps, 2, column), Succeeds());
    EXPECT_EQ(column.name, L"Colour");
    EXPECT_EQ(column.oid, 2u);
    EXPECT_EQ(log.Text(), "I3 + TableGetColumn\nI3 - Done\n");
}

TEST_F(Columns, UnknownColumnOfAKnownTableLeavesTheArgumentAndSucceeds)
{
    CQelTable::SQelColumn column = WithOid(77, Column(L"kept"));
    EXPECT_THAT(db.TableGetColumn(lamps, 3, column), Succeeds());
    EXPECT_EQ(column.oid, 77u);
    EXPECT_EQ(column.name, L"kept");
    EXPECT_THAT(db.TableGetColumn(99, 1, column), Gives(10020));
    EXPECT_EQ(column.name, L"kept");
}

} // namespace
