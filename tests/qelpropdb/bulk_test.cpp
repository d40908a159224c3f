// bulk_test.cpp: every record of the table with oid 1000 in one query.
#include "lamps.h"

#include <support/row_name.h>

namespace {

using namespace qeltest;

/// The table 1000 with the columns Power (1, integer) and Colour (2, text).
class Bulk : public PropDB
{
protected:
    Bulk() { Add(TableOf(L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour")}, 1000)); }

    /// The cache as "1: 1=40 2='red'", a line for each record.
    std::string Cached()
    {
        std::string text;
        for (const auto& [oid, record] : db.GetBulkRecords()) {
            text += std::to_string(oid) + ":";
            for (const SQelPropColumnData& data : record)
                text += " " + std::to_string(data.columnOid) + "=" + Show(data.value);
            text += "\n";
        }
        return text;
    }
};

TEST_F(Bulk, HoldsEveryRecordInTheShapeOfItsTable)
{
    Add(1000, {Value(1, Int(40)), Value(2, Text(L"red"))});
    Add(1000, {Value(2, Text(L"blue"))});
    Add(1000, {Value(1, Int(75))});
    EXPECT_EQ(Cached(), "1: 1=40 2='red'\n2: 1=- 2='blue'\n3: 1=75 2=-\n");
}

TEST_F(Bulk, LastRecordOfASingleValueIsThere)
{
    Add(1000, {Value(1, Int(40))});
    EXPECT_EQ(Cached(), "1: 1=40 2=-\n");
    Add(1000, {Value(1, Int(60))});
    EXPECT_EQ(Cached(), "1: 1=40 2=-\n2: 1=60 2=-\n");
}

TEST_F(Bulk, TableWithoutValuesGivesOneNullRecordUnderZero)
{
    EXPECT_EQ(Cached(), "0: 1=- 2=-\n");
}

TEST_F(Bulk, StoredNullTakesTheTypeOfItsColumn)
{
    Add(1000, {Value(1, CQelProperty()), Value(2, CQelProperty())});
    const auto& record = db.GetBulkRecords().at(1);
    EXPECT_EQ(record[0].value.GetType(), CQelProperty::eInt);
    EXPECT_EQ(record[1].value.GetType(), CQelProperty::eString);
    EXPECT_EQ(Record(1000, 1), "1=- 2=-") << "a record that is read alone keeps null";
}

TEST_F(Bulk, ValueWithoutBytesStaysNull)
{
    Add(1000, {Value(1, Int(40)), Value(2, Text(L"red"))});
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=NULL WHERE coid=1"));
    EXPECT_EQ(Cached(), "1: 1=- 2='red'\n");
}

TEST_F(Bulk, ValuesOfUnknownColumnsArePassedOver)
{
    Add(1000, {Value(77, Int(1)), Value(1, Int(40))});
    Add(1000, {Value(77, Int(1))});
    EXPECT_EQ(Cached(), "1: 1=40 2=-\n2: 1=- 2=-\n");
}

TEST_F(Bulk, OtherTablesStayOut)
{
    const unsigned long other = Add(TableOf(L"Other", {Column(L"x")}));
    Add(other, {Value(3, Int(5))});
    Add(1000, {Value(1, Int(40))});
    EXPECT_EQ(Cached(), "1: 1=40 2=-\n");
}

TEST_F(Bulk, ValuesOfRecordZeroGoIntoTheFirstRecordThatFollows)
{
    Add(1000, {Value(2, Text(L"red"))});
    ASSERT_TRUE(Execute(sql, "INSERT INTO qeltpd(foid,toid,coid,data) "
                             "VALUES(0,1000,1,x'0400020000000000000000000000000000002800000000000000')"));
    EXPECT_EQ(Cached(), "1: 1=40 2='red'\n");
}

TEST_F(Bulk, RowsUnderOidsOutOfRangeArePassedOverWithAWarning)
{
    Add(1000, {Value(1, Int(40))});
    ASSERT_TRUE(Execute(sql,
                        "INSERT INTO qeltpd(foid,toid,coid,data) SELECT -1,1000,1,data FROM qeltpd; "
                        "INSERT INTO qeltpd(foid,toid,coid,data) SELECT 4294967297,1000,1,data FROM qeltpd "
                        "WHERE foid=1"));
    EXPECT_EQ(Cached(), "1: 1=40 2=-\n");
    EXPECT_NE(log.Text().find("W1 Passed over 2 rows"), std::string::npos) << log.Text();
    EXPECT_EQ(Rows(sql, "SELECT foid FROM qeltpd ORDER BY foid"), "-1\n1\n4294967297\n");
}

TEST_F(Bulk, IsFilledOnceAndHandedOutAsItStands)
{
    Add(1000, {Value(1, Int(40))});
    const auto& first = db.GetBulkRecords();
    ASSERT_TRUE(Execute(sql, "DELETE FROM qeltpd"));
    log.Forget();
    EXPECT_EQ(&db.GetBulkRecords(), &first);
    EXPECT_EQ(first.size(), 1u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Bulk, FillTellsItsTimeAndItsSize)
{
    log.SetLevel(4);
    Add(1000, {Value(1, Int(40)), Value(2, Text(std::wstring(600, L'x')))});
    Add(1000, {Value(2, Text(std::wstring(600, L'x')))});
    db.GetBulkRecords();
    ASSERT_EQ(log.Entries().size(), 2u);
    const std::wstring first = log.Entries()[0].text;
    EXPECT_EQ(first.substr(0, 4), L"    ");
    EXPECT_EQ(first.substr(first.size() - 3), L" ms");
    EXPECT_EQ(log.Entries()[1].text, L"  FillBulkCache completed, 2 records fetched (2 KB)");
    EXPECT_EQ(log.Entries()[1].level, 4);
}

TEST_F(Bulk, FillAndClearAreTracked)
{
    db.GetBulkRecords();
    EXPECT_EQ(log.Text().substr(0, 34), "I5 > CQelPropDB::FillBulkCache\nI4 ");
    EXPECT_NE(log.Text().find("I5 < CQelPropDB::FillBulkCache\n"), std::string::npos);
    log.Forget();
    db.Optimize(L"", nullptr, 0);
    EXPECT_EQ(log.Text(), "I10 > CQelPropDB::ClearBulkCache\nI10 < CQelPropDB::ClearBulkCache\n");
    log.Forget();
    db.Optimize(L"", nullptr, 0);
    EXPECT_EQ(log.Text(), "") << "an empty cache is not worth a line";
}

using WithoutBulkTable = PropDB;

TEST_F(WithoutBulkTable, StaysEmptyAndTriesAgain)
{
    EXPECT_TRUE(db.GetBulkRecords().empty());
    EXPECT_TRUE(db.GetBulkRecords().empty());
    log.SetLevel(4);
    log.Forget();
    db.GetBulkRecords();
    EXPECT_EQ(log.Text(), "I2 10020\n");
    Add(TableOf(L"Lamps", {}, 1000));
    EXPECT_EQ(db.GetBulkRecords().size(), 1u);
}

struct SEmptying
{
    const char* name;
    void (*work)(CQelPropDB& db);
};

class BulkIsEmptiedBy : public Bulk, public testing::WithParamInterface<SEmptying>
{};

// Also by an operation that is then refused.
TEST_P(BulkIsEmptiedBy, TheOperation)
{
    Add(1000, {Value(1, Int(40))});
    db.GetBulkRecords();
    log.Forget();
    GetParam().work(db);
    EXPECT_NE(log.Text().find("I10 > CQelPropDB::ClearBulkCache\n"), std::string::npos) << log.Text();
}

INSTANTIATE_TEST_SUITE_P(
    Bulk, BulkIsEmptiedBy,
    testing::Values(SEmptying{"Attach", [](CQelPropDB& db) { db.Attach(false, nullptr); }},
                    SEmptying{"Create", [](CQelPropDB& db) { db.Attach(true, nullptr); }},
                    SEmptying{"Close", [](CQelPropDB& db) { db.Close(); }},
                    SEmptying{"Optimize", [](CQelPropDB& db) { db.Optimize(L"", nullptr, 0); }},
                    SEmptying{"SelfTest",
                              [](CQelPropDB& db) {
                                  unsigned long errors = 0;
                                  db.SelfTest(nullptr, errors, nullptr, 0);
                              }},
                    SEmptying{"AddTable",
                              [](CQelPropDB& db) {
                                  CQelTable table = TableOf(L"a b");
                                  db.AddTable(table);
                              }},
                    SEmptying{"RemoveTable", [](CQelPropDB& db) { db.RemoveTable(99); }},
                    SEmptying{"RenameTable", [](CQelPropDB& db) { db.RenameTable(99, L"a b"); }},
                    SEmptying{"TableAddColumn",
                              [](CQelPropDB& db) {
                                  CQelTable::SQelColumn column = Column(L"a b");
                                  db.TableAddColumn(99, column);
                              }},
                    SEmptying{"TableRemoveColumn", [](CQelPropDB& db) { db.TableRemoveColumn(99, 99); }},
                    SEmptying{"TableModifyColumn",
                              [](CQelPropDB& db) {
                                  CQelTable::SQelColumn column;
                                  db.TableModifyColumn(99, column);
                              }},
                    SEmptying{"RenameColumn", [](CQelPropDB& db) { db.RenameColumn(99, 99, L"a b"); }},
                    SEmptying{"TableSwapDisplayOrder",
                              [](CQelPropDB& db) { db.TableSwapDisplayOrder(99, 1, 2); }},
                    SEmptying{"CreateLookupIndexes", [](CQelPropDB& db) { db.CreateLookupIndexes(); }},
                    SEmptying{"AddRecord",
                              [](CQelPropDB& db) {
                                  unsigned long oid = 0;
                                  db.AddRecord(99, oid, {}, false);
                              }},
                    SEmptying{"SetRecord", [](CQelPropDB& db) { db.SetRecord(99, 1, {}); }},
                    SEmptying{"RemoveRecord", [](CQelPropDB& db) { db.RemoveRecord(99, 1); }}),
    SRowName());

TEST_F(Bulk, ReadsLeaveTheCacheAlone)
{
    Add(1000, {Value(1, Int(40))});
    db.GetBulkRecords();
    log.Forget();
    TOids oids;
    SQelPropColumnData data;
    unsigned int count = 0;
    CQelTable table(1000);
    db.GetTables(oids);
    db.GetTable(table);
    db.HasRecord(1000, 1);
    db.GetColumn(1000, 1, 1, data);
    db.GetRecordCount(1000, count);
    db.GetRecordOids(1000, oids, nullptr);
    EXPECT_EQ(Record(1000, 1), "1=40 2=-");
    EXPECT_EQ(log.Text(), "I3 + Getting tables\nI3 - Done\n");
}

class COpened : public CQelPropDB
{
public:
    using CQelPropDB::ClearBulkCache;
    using CQelPropDB::CQelPropDB;
    using CQelPropDB::FillBulkCache;
    using CQelPropDB::LoadTables;
};

TEST_F(Bulk, FillingGivesItsResult)
{
    COpened opened(&sql);
    EXPECT_THAT(opened.FillBulkCache(), Gives(10020));
    opened.Attach(false, nullptr);
    EXPECT_THAT(opened.FillBulkCache(), Succeeds());
    EXPECT_EQ(opened.GetBulkRecords().size(), 1u);
    std::map<unsigned long, CQelTable> tables;
    tables[5];
    EXPECT_THAT(opened.LoadTables(tables), Succeeds());
    EXPECT_EQ(tables.size(), 1u);
    sql.Close();
    EXPECT_THAT(opened.FillBulkCache(), Gives(17500));
}

} // namespace
