// propdb_columns_test.cpp: adding, removing and reading columns.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideColumns : public CPropertyHost
{
protected:
    unsigned int Add(unsigned long table, const std::wstring& name, int order = 9999, unsigned long oid = 0)
    {
        CQelTable::SQelColumn column = Column(name, CQelProperty::eInt, order);
        column.oid = oid;
        const unsigned int code = db.TableAddColumn(table, column);
        EXPECT_EQ(column.oid, oid) << "the caller's column is not updated";
        EXPECT_EQ(column.displayOrder, order);
        return code;
    }
};

TEST_F(OutsideColumns, AddingTellsItsStepsInOrder)
{
    Make(L"Lamps");
    EXPECT_EQ(Add(1, L"Power"), 10001u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(1,0)\n");
}

TEST_F(OutsideColumns, OrderNineNineNineNinePlacesAfterTheLargest)
{
    Make(L"Lamps");
    EXPECT_EQ(Add(1, L"a"), 10001u);
    EXPECT_EQ(Add(1, L"b", 4), 10001u);
    EXPECT_EQ(Add(1, L"c"), 10001u);
    EXPECT_EQ(Add(1, L"d", 9999, 50), 10001u);
    EXPECT_EQ(Add(1, L"e", 4, 40), 10001u);
    EXPECT_EQ(Ask("SELECT oid,cname,cdo FROM qeltpc ORDER BY cname"), "1|a|0 2|b|4 3|c|5 50|d|6 40|e|4");
}

TEST_F(OutsideColumns, LargestOrderOfOtherTablesDoesNotCount)
{
    Make(L"Lamps", {Column(L"x", CQelProperty::eInt, 70)});
    Make(L"Fans");
    EXPECT_EQ(Add(2, L"a", 9999, 9), 10001u);
    EXPECT_EQ(Columns(2), "9:a@0");
}

TEST_F(OutsideColumns, EveryFieldIsStored)
{
    Make(L"Lamps");
    CQelTable::SQelColumn column = Column(L"Power", CQelProperty::eDouble, 2);
    column.oid = 4294967295ul;
    column.description = L"watts";
    column.refTable = 4;
    column.refColumn = 5;
    column.displayHint = 6;
    column.format = L"%d W";
    column.currency = L"EUR";
    EXPECT_EQ(db.TableAddColumn(1, column), 10001u);
    EXPECT_EQ(
        Ask("SELECT oid,toid,ctype,cname,cdesc,crtt,crtc,hex(cdef),cdisph,cformat,ccur,cdo FROM qeltpc"),
        "4294967295|1|6|Power|watts|4|5|0400000000000000000000000000000000000000000000000000|6|%d W|EUR|2");
}

TEST_F(OutsideColumns, TakenColumnOidIsAFaultAndChangesNothing)
{
    Make(L"Lamps", {Column(L"Power")});
    Make(L"Fans");
    EXPECT_EQ(Add(2, L"Speed", 0, 1), 17319u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Columns(1), "1:Power@0");
    EXPECT_EQ(Columns(2), "");
}

TEST_F(OutsideColumns, RefusalsComeInTheirOrder)
{
    Make(L"Lamps", {Column(L"Power")});
    EXPECT_EQ(Add(9, L"a b"), 17502u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nI2 17502\n");
    EXPECT_EQ(Add(9, L"ab"), 10020u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nI2 10020\n");
    EXPECT_EQ(Add(1, L"Power"), 17503u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nI2 17503\n");
    EXPECT_EQ(Add(1, L"power"), 10001u);
}

TEST_F(OutsideColumns, TwoHundredFiftySixthIsRefusedBeforeItsNameIsCompared)
{
    std::vector<CQelTable::SQelColumn> columns;
    columns.reserve(254);
    for (int i = 0; i < 254; ++i)
        columns.push_back(Column(L"c" + std::to_wstring(i)));
    Make(L"Lamps", columns);
    EXPECT_EQ(Add(1, L"last"), 10001u);
    Told();
    EXPECT_EQ(Add(1, L"last"), 17505u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nI2 17505\n");
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpc"), "255");
}

TEST_F(OutsideColumns, AddTableItselfHasNoColumnLimit)
{
    Make(L"Lamps", std::vector<CQelTable::SQelColumn>(300, Column(L"c")));
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpc"), "300");
}

TEST_F(OutsideColumns, EveryChangeRefusesAClosedDatabaseAsAnError)
{
    sql.Close();
    CQelTable::SQelColumn column = Column(L"a b");
    EXPECT_EQ(db.TableAddColumn(1, column), 17500u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nE 17500\n");
    EXPECT_EQ(db.TableRemoveColumn(1, 1), 17500u);
    EXPECT_EQ(Told(), "I3 + Removing Column\nE 17500\n");
    EXPECT_EQ(db.TableModifyColumn(1, column), 17500u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nE 17500\n");
    EXPECT_EQ(db.RenameColumn(1, 1, L"a b"), 17500u);
    EXPECT_EQ(Told(), "I3 + Renaming Column\nE 17500\n");
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, 2), 17500u);
    EXPECT_EQ(Told(), "I3 + TableSwapDisplayOrder\nE 17500\n");
    EXPECT_EQ(db.TableGetColumn(1, 1, column), 17500u);
    EXPECT_EQ(Told().substr(0, 30), "I3 + TableGetColumn\nE 17500\n");
}

TEST_F(OutsideColumns, EveryChangeRefusesAReadOnlyDatabaseAsAnError)
{
    const CReadOnlyAttachment attached(db, sql);
    CQelTable::SQelColumn column = Column(L"a b");
    EXPECT_EQ(db.TableAddColumn(1, column), 17501u);
    EXPECT_EQ(Told(), "I3 + Adding Column\nE 17501\n");
    EXPECT_EQ(db.TableRemoveColumn(1, 1), 17501u);
    EXPECT_EQ(Told(), "I3 + Removing Column\nE 17501\n");
    EXPECT_EQ(db.TableModifyColumn(1, column), 17501u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nE 17501\n");
    EXPECT_EQ(db.RenameColumn(1, 1, L"a b"), 17501u);
    EXPECT_EQ(Told(), "I3 + Renaming Column\nE 17501\n");
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, 2), 17501u);
    EXPECT_EQ(Told(), "I3 + TableSwapDisplayOrder\nE 17501\n");
}

TEST_F(OutsideColumns, RemovingTakesTheValuesOfThatColumnAndLeavesGapsInTheOrder)
{
    Make(L"Lamps", {Column(L"a", CQelProperty::eInt, 0), Column(L"b", CQelProperty::eInt, 1),
                    Column(L"c", CQelProperty::eInt, 2)});
    ASSERT_EQ(db.SetRecord(1, 1, {Data(1, Number(10)), Data(2, Number(20)), Data(3, Number(30))}), 10001u);
    Told();
    EXPECT_EQ(db.TableRemoveColumn(1, 2), 10001u);
    EXPECT_EQ(Told(), "I3 + Removing Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(1,0)\n");
    EXPECT_EQ(Columns(1), "1:a@0 3:c@2");
    EXPECT_EQ(Ask("SELECT coid FROM qeltpd ORDER BY coid"), "1 3");
}

TEST_F(OutsideColumns, RemovingAnUnknownColumnOrTableSucceedsAndNotifies)
{
    Make(L"Lamps", {Column(L"a")});
    EXPECT_EQ(db.TableRemoveColumn(1, 99), 10001u);
    EXPECT_EQ(db.TableRemoveColumn(4294967295ul, 1), 10001u);
    EXPECT_NE(Told().find("> 3(4294967295,0)\n"), std::string::npos);
    EXPECT_EQ(Columns(1), "1:a@0");
}

TEST_F(OutsideColumns, RemovingTakesValuesOfAColumnThatIsNoLongerDefined)
{
    Make(L"Lamps", {Column(L"a")});
    Run("INSERT INTO qeltpd (foid,toid,coid) VALUES(1,1,4294967295)");
    EXPECT_EQ(db.TableRemoveColumn(1, 4294967295ul), 10001u);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "0");
}

TEST_F(OutsideColumns, SelfReferenceDoesNotHinderTheRemovalOfAColumn)
{
    CQelTable::SQelColumn self = Column(L"Ref", CQelProperty::eReference);
    self.refTable = 1;
    Make(L"Lamps", {self});
    EXPECT_EQ(db.TableRemoveColumn(1, 1), 10001u);
}

TEST_F(OutsideColumns, FailingRemovalBringsTheValuesBack)
{
    Make(L"Lamps", {Column(L"a")});
    Put(1, 1, 1, Number(5));
    Run("CREATE TRIGGER no BEFORE DELETE ON qeltpc BEGIN SELECT raise(ABORT,'no'); END");
    EXPECT_EQ(db.TableRemoveColumn(1, 1), 17319u);
    EXPECT_EQ(Told(), "I3 + Removing Column\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Record(1, 1), "1=5");
}

TEST_F(OutsideColumns, GettingAColumnOfAKnownTableAlwaysSucceeds)
{
    Make(L"Lamps", {Column(L"a")});
    CQelTable::SQelColumn column = Column(L"mine");
    EXPECT_EQ(db.TableGetColumn(1, 99, column), 10001u);
    EXPECT_EQ(column.name, L"mine");
    EXPECT_EQ(db.TableGetColumn(1, 1, column), 10001u);
    EXPECT_EQ(column.name, L"a");
    EXPECT_EQ(column.oid, 1ul);
    EXPECT_EQ(Told().substr(0, 20), "I3 + TableGetColumn\n");
    column.name = L"mine";
    EXPECT_EQ(db.TableGetColumn(9, 1, column), 10020u);
    EXPECT_EQ(column.name, L"mine");
}

TEST_F(OutsideColumns, WiderOidsNameNothing)
{
    if constexpr (sizeof(unsigned long) == 8) {
        const auto wide = static_cast<unsigned long>(4294967297ull);
        Make(L"Lamps", {Column(L"a")});
        EXPECT_EQ(Add(wide, L"b"), 10020u);
        EXPECT_EQ(Add(1, L"b", 0, wide), 10020u);
        EXPECT_EQ(db.TableRemoveColumn(wide, 1), 10020u);
        EXPECT_EQ(db.TableRemoveColumn(1, wide), 10020u);
        CQelTable::SQelColumn column = Column(L"mine");
        column.oid = wide;
        EXPECT_EQ(db.TableModifyColumn(1, column), 10020u);
        EXPECT_EQ(db.RenameColumn(1, wide, L"b"), 10020u);
        EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, wide), 10020u);
        EXPECT_EQ(Columns(1), "1:a@0");
    }
}

} // namespace
