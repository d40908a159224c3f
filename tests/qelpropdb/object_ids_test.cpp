// object_ids_test.cpp: numbers that are no oids, handed in and stored by other hands.
#include "lamps.h"

namespace {

using namespace qeltest;

class WideOids : public Lamps
{
protected:
    void SetUp() override
    {
        if (sizeof(unsigned long) == 4)
            GTEST_SKIP() << "no oid can be wide here";
        AddLamp(40, L"red");
        before = Rows(sql, "SELECT * FROM qeltpt") + Rows(sql, "SELECT * FROM qeltpc") +
                 Rows(sql, "SELECT * FROM qeltpd");
    }

    void TearDown() override
    {
        if (IsSkipped())
            return;
        EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpt") + Rows(sql, "SELECT * FROM qeltpc") +
                      Rows(sql, "SELECT * FROM qeltpd"),
                  before);
        EXPECT_EQ(notifier.Text(), "");
    }

    // Cut to 32 bits they would name the table, the record and the column.
    const unsigned long wide = static_cast<unsigned long>(0x100000001ULL);
    std::string before;
};

TEST_F(WideOids, NameNoTable)
{
    CQelTable table(wide);
    CQelTable::SQelColumn column = Column(L"Size");
    TRecord record;
    SQelPropColumnData data;
    TOids oids;
    unsigned long oid = 1;
    unsigned int count = 9;
    EXPECT_THAT(db.GetTable(table), Gives(10020));
    EXPECT_THAT(db.RemoveTable(wide), Gives(10020));
    EXPECT_THAT(db.RenameTable(wide, L"x"), Gives(10020));
    EXPECT_THAT(db.TableAddColumn(wide, column), Gives(10020));
    EXPECT_THAT(db.TableRemoveColumn(wide, 1), Gives(10020));
    EXPECT_THAT(db.TableModifyColumn(wide, column), Gives(10020));
    EXPECT_THAT(db.RenameColumn(wide, 1, L"x"), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(wide, 1, 2), Gives(10020));
    EXPECT_THAT(db.TableGetColumn(wide, 1, column), Gives(10020));
    EXPECT_THAT(db.AddRecord(wide, oid, {Value(1, Int(1))}, true), Gives(10020));
    EXPECT_THAT(db.SetRecord(wide, 1, {Value(1, Int(1))}), Gives(10020));
    EXPECT_THAT(db.GetRecord(wide, 1, record), Gives(10020));
    EXPECT_THAT(db.GetColumn(wide, 1, 1, data), Gives(10020));
    EXPECT_THAT(db.RemoveRecord(wide, 1), Gives(10020));
    EXPECT_THAT(db.GetRecordOids(wide, oids, nullptr), Gives(10020));
    EXPECT_FALSE(db.HasRecord(wide, 1));
    EXPECT_THAT(db.GetRecordCount(wide, count), Succeeds());
    EXPECT_EQ(count, 0u);
}

TEST_F(WideOids, NameNoRecord)
{
    unsigned long oid = wide;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(1))}, true), Gives(10020));
    EXPECT_EQ(oid, wide);
    EXPECT_THAT(db.SetRecord(lamps, wide, {Value(1, Int(1))}), Gives(10020));
    EXPECT_THAT(db.RemoveRecord(lamps, wide), Gives(10020));
    EXPECT_FALSE(db.HasRecord(lamps, wide));
    EXPECT_EQ(Record(lamps, wide), "1=- 2=-");
    EXPECT_EQ(log.ErrorCodes().size(), 0u);
}

TEST_F(WideOids, NameNoColumn)
{
    CQelTable::SQelColumn column = Column(L"Size");
    SQelPropColumnData data;
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(1)), Value(wide, Int(1))}, false), Gives(10020));
    EXPECT_THAT(db.TableRemoveColumn(lamps, wide), Gives(10020));
    EXPECT_THAT(db.RenameColumn(lamps, wide, L"x"), Gives(10020));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, wide, 2), Gives(10020));
    EXPECT_THAT(db.GetColumn(lamps, 1, wide, data), Gives(10020));
    EXPECT_THAT(db.TableGetColumn(lamps, wide, column), Succeeds());
    EXPECT_EQ(column.name, L"Size");
    column.oid = wide;
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(10020));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(10020));
}

TEST_F(WideOids, CannotBeReferredTo)
{
    CQelTable::SQelColumn toTable = Column(L"a", CQelProperty::eReference);
    toTable.refTable = wide;
    CQelTable::SQelColumn toColumn = Column(L"b", CQelProperty::eReference);
    toColumn.refColumn = wide;
    for (CQelTable::SQelColumn column : {toTable, toColumn}) {
        CQelTable table = TableOf(L"Other", {column});
        EXPECT_THAT(db.AddTable(table), Gives(10020));
        EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(10020));
        column.oid = 1;
        EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(10020));
    }
    CQelTable table = TableOf(L"Other", {}, wide);
    EXPECT_THAT(db.AddTable(table), Gives(10020));
}

TEST_F(WideOids, SortItemSortsByTheFirstColumn)
{
    const std::vector<CQelPropDB::SSortItem> sort = {{wide + 1, true}};
    TOids oids;
    EXPECT_THAT(db.GetRecordOids(lamps, oids, &sort), Succeeds());
    EXPECT_EQ(oids, TOids{1});
}

using LastOid = Lamps;

TEST_F(LastOid, IsAnOidLikeAnyOther)
{
    EXPECT_THAT(db.SetRecord(lamps, kLargestOid, {Value(1, Int(40))}), Succeeds());
    EXPECT_EQ(Record(lamps, kLargestOid), "1=40 2=-");
    EXPECT_TRUE(db.HasRecord(lamps, kLargestOid));
    EXPECT_EQ(Dump(db), "Lamps\n  4294967295 Power=40\n");
    EXPECT_THAT(db.RemoveRecord(lamps, kLargestOid), Succeeds());
    EXPECT_EQ(notifier.Text(), "6(1,4294967295) 7(1,4294967295)");
}

TEST_F(LastOid, OfARecordLeavesNoNewOne)
{
    ASSERT_THAT(db.SetRecord(lamps, kLargestOid, {Value(1, Int(40))}), Succeeds());
    Forget();
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(60)), Value(2, Text(L"x"))}, false), Gives(17201));
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>{17201});
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Dump(db), "Lamps\n  4294967295 Power=40\n");
}

TEST_F(LastOid, OfATableLeavesNoNewOne)
{
    Add(TableOf(L"last", {}, kLargestOid));
    CQelTable table = TableOf(L"Other", {Column(L"x")});
    EXPECT_THAT(db.AddTable(table), Gives(17201));
    EXPECT_EQ(table.Properties().oid, 0u);
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Rows(sql, "SELECT oid FROM qeltpt"), "1\n4294967295\n");
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM qeltpc"), "2\n");
}

TEST_F(LastOid, OfAColumnLeavesNoNewOne)
{
    CQelTable::SQelColumn column = Column(L"last");
    column.oid = kLargestOid;
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    Forget();
    column = Column(L"Other");
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17201));
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Rows(sql, "SELECT oid FROM qeltpc"), "1\n2\n4294967295\n");
    CQelTable table = TableOf(L"Other", {Column(L"x")});
    EXPECT_THAT(db.AddTable(table), Gives(17201)) << "its column would have none";
    EXPECT_EQ(DumpDefinitions(db),
              "1 Lamps\n  1 Power type 2\n  2 Colour type 1\n  4294967295 last type 1\n");
}

class ForeignRows : public Lamps
{
protected:
    // Rows that only other hands can have written.
    void Write(const std::string& statements) { ASSERT_TRUE(Execute(sql, statements)) << statements; }
};

TEST_F(ForeignRows, RecordsOutOfRangeAreLeftAloneWithAWarning)
{
    AddLamp(40, L"red");
    Write(
        "INSERT INTO qeltpd(foid,toid,coid,data) SELECT -5,toid,coid,data FROM qeltpd; "
        "INSERT INTO qeltpd(foid,toid,coid,data) SELECT 4294967296,toid,coid,data FROM qeltpd WHERE foid=1");
    TOids oids;
    const std::vector<CQelPropDB::SSortItem> sort = {{1, true}};
    EXPECT_THAT(db.GetRecordOids(lamps, oids, nullptr), Succeeds());
    EXPECT_EQ(oids, TOids{1});
    EXPECT_EQ(log.Text(), "W1 Passed over 2 rows under oids out of range\n");
    EXPECT_THAT(db.GetRecordOids(lamps, oids, &sort), Succeeds());
    EXPECT_EQ(oids, TOids{1});
    EXPECT_EQ(Rows(sql, "SELECT DISTINCT foid FROM qeltpd ORDER BY foid"), "-5\n1\n4294967296\n");
}

TEST_F(ForeignRows, NewRecordCannotFollowOneThatIsOutOfRange)
{
    Write("INSERT INTO qeltpd(foid,toid,coid,data) VALUES(4294967300,1,1,NULL)");
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(60))}, false), Gives(17201));
    EXPECT_THAT(db.SetRecord(lamps, 6, {Value(1, Int(60))}), Succeeds()) << "under a given oid it can";
}

TEST_F(ForeignRows, NewRecordCannotFollowNegativeOnesOnly)
{
    Write("INSERT INTO qeltpd(foid,toid,coid,data) VALUES(-1,1,1,NULL)");
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(60)), Value(2, Int(1))}, false), Gives(17201));
    EXPECT_EQ(Rows(sql, "SELECT foid FROM qeltpd"), "-1\n");
}

TEST_F(ForeignRows, NewRecordFollowsRecordZero)
{
    Write("INSERT INTO qeltpd(foid,toid,coid,data) VALUES(0,1,1,NULL)");
    EXPECT_EQ(AddLamp(40, L"red"), 1u);
    EXPECT_EQ(Dump(db), "Lamps\n  0\n  1 Power=40 Colour='red'\n");
}

TEST_F(ForeignRows, TablesAndColumnsOutOfRangeAreLeftOutOfTheCatalogueWithAWarning)
{
    Write("INSERT INTO qeltpt VALUES(-3,'neg',''),(4294967297,'wide',''); "
          "INSERT INTO qeltpc(oid,toid,cname) VALUES(-3,1,'neg'),(4294967297,1,'wide'),(9,-3,'x')");
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_NE(log.Text().find("W1 Passed over 4 rows under oids out of range\n"), std::string::npos)
        << log.Text();
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1 order 1\n");
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM qeltpt"), "3\n");
}

TEST_F(ForeignRows, ReferencesOutOfRangeReferToNothing)
{
    Write("UPDATE qeltpc SET crtt=4294967297, crtc=-1, ctype=12 WHERE oid=1");
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 12\n  2 Colour type 1 order 1\n");
}

TEST_F(ForeignRows, NumbersThatFitNoFieldStayAtItsLimit)
{
    Write("UPDATE qeltpc SET cdo=99999999999, ctype=-99999999999 WHERE oid=1; "
          "UPDATE qeltpc SET cdo='x', ctype='y', cdisph=NULL, crtt='z' WHERE oid=2");
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type -2147483648 order 2147483647\n"
                                   "  2 Colour type 0 hint 0\n");
}

TEST_F(ForeignRows, TableZeroIsATableToo)
{
    Write("INSERT INTO qeltpt VALUES(0,'zero','')");
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    CQelTable table(0);
    EXPECT_THAT(db.GetTable(table), Succeeds());
    EXPECT_EQ(table.Properties().name, L"zero");
}

TEST_F(ForeignRows, ValuesOfColumnsOutOfRangeArePassedOver)
{
    AddLamp(40, L"red");
    Write("INSERT INTO qeltpd(foid,toid,coid,data) VALUES(1,1,4294967297,x'00'),(1,1,-1,x'00')");
    EXPECT_EQ(Record(lamps, 1), "1=40 2='red'");
}

} // namespace
