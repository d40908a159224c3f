// propdb_bulk_test.cpp: the bulk cache of the table with oid 1000.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideBulk : public CPropertyHost
{
protected:
    /// Table 1000 with the columns 1 (number) and 2 (text).
    void MakeBulk() { Make(L"Bulk", {Column(L"Power"), Column(L"Maker", CQelProperty::eString)}, 1000); }

    std::string Bulk()
    {
        std::string text;
        for (const auto& [oid, record] : db.GetBulkRecords())
            text += (text.empty() ? "" : "; ") + std::to_string(oid) + ": " + Show(record);
        return text;
    }
};

TEST_F(OutsideBulk, WithoutTableThousandItStaysEmptyAndTriesAgain)
{
    EXPECT_EQ(db.FillBulkCache(), 10020u);
    const std::string first = Told();
    EXPECT_NE(first.find("I2 10020\n"), std::string::npos) << first;
    EXPECT_EQ(Bulk(), "");
    EXPECT_EQ(Told(), first);
    EXPECT_EQ(Bulk(), "");
    EXPECT_EQ(Told(), first);
}

TEST_F(OutsideBulk, ClosedDatabaseGives17500AndAnEmptyMap)
{
    MakeBulk();
    sql.Close();
    EXPECT_EQ(db.FillBulkCache(), 17500u);
    EXPECT_TRUE(db.GetBulkRecords().empty());
}

TEST_F(OutsideBulk, RecordsHaveTheShapeThatReadingGives)
{
    MakeBulk();
    ASSERT_EQ(db.SetRecord(1000, 9, {Data(2, Text(L"b")), Data(1, Number(2))}), 10001u);
    ASSERT_EQ(db.SetRecord(1000, 3, {Data(1, Number(1))}), 10001u);
    Put(1000, 5, 55, Number(8));
    EXPECT_EQ(Bulk(), "3: 1=1 2=null; 5: 1=null 2=null; 9: 1=2 2=b");
}

TEST_F(OutsideBulk, TableWithoutValuesLeavesOneEntryUnderZero)
{
    MakeBulk();
    EXPECT_EQ(Bulk(), "0: 1=null 2=null");
    Told();
    EXPECT_EQ(Bulk(), "0: 1=null 2=null");
    EXPECT_EQ(Told(), "") << "the entry counts as filled";
}

TEST_F(OutsideBulk, StoredNullTakesTheTypeOfItsColumnHereButNotInARecord)
{
    MakeBulk();
    Put(1000, 1, 2, CQelProperty());
    const auto& record = db.GetBulkRecords().at(1);
    EXPECT_EQ(record[1].value.GetType(), CQelProperty::eString);
    EXPECT_EQ(record[1].value.Data().nBufferSize, 0u);
    EXPECT_TRUE(record[0].value.IsNull()) << "no row, no type";
    EXPECT_EQ(Record(1000, 1), "1=null 2=null");
}

TEST_F(OutsideBulk, RowWithoutABlobIsNullWithoutType)
{
    MakeBulk();
    Run("INSERT INTO qeltpd (foid,toid,coid,data) VALUES(1,1000,2,NULL)");
    EXPECT_TRUE(db.GetBulkRecords().at(1)[1].value.IsNull());
}

TEST_F(OutsideBulk, FillingTellsItsSteps)
{
    MakeBulk();
    Put(1000, 1, 2, Text(std::wstring(1023, L'x')));
    Put(1000, 2, 1, Number(1));
    EXPECT_EQ(db.FillBulkCache(), 10001u);
    std::string told = Told();
    const std::size_t start = told.find("I4     "), end = told.find(" ms");
    ASSERT_NE(start, std::string::npos) << told;
    ASSERT_NE(end, std::string::npos) << told;
    told.replace(start, end - start, "I4     N");
    EXPECT_EQ(told,
              "I5 > CQelPropDB::FillBulkCache\nI4     N ms\n"
              "I4   FillBulkCache completed, 2 records fetched (2 KB)\nI5 < CQelPropDB::FillBulkCache\n");
}

TEST_F(OutsideBulk, KilobytesAreCutNotRounded)
{
    MakeBulk();
    Put(1000, 1, 2, Text(std::wstring(510, L'x')));
    EXPECT_EQ(db.FillBulkCache(), 10001u);
    EXPECT_NE(Told().find("completed, 1 records fetched (0 KB)\n"), std::string::npos);
}

TEST_F(OutsideBulk, ClearingTellsOnlyWhereThereWasSomething)
{
    MakeBulk();
    db.GetBulkRecords();
    Told();
    db.ClearBulkCache();
    EXPECT_EQ(Told(), "I10 > CQelPropDB::ClearBulkCache\nI10 < CQelPropDB::ClearBulkCache\n");
    db.ClearBulkCache();
    EXPECT_EQ(Told(), "");
}

TEST_F(OutsideBulk, ClearingTellsAfterTheOpeningLineOfAChange)
{
    MakeBulk();
    db.GetBulkRecords();
    Told();
    EXPECT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI10 > CQelPropDB::ClearBulkCache\nI10 < "
                      "CQelPropDB::ClearBulkCache\nI4 - Done\n> 7(1,1)\n");
}

TEST_F(OutsideBulk, EveryOperationThatMayChangeClearsEvenWhenItIsRefused)
{
    MakeBulk();
    Put(1000, 1, 1, Number(1));
    CQelTable table;
    CQelTable::SQelColumn column = Column(L"a b");
    unsigned long oid = 0, errors = 0;
    std::map<unsigned long, CQelTable> tables;
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"Attach", [&] { db.Attach(false, nullptr); }},
        {"LoadTables", [&] { db.LoadTables(tables); }},
        {"AddTable", [&] { EXPECT_EQ(db.AddTable(table), 17502u); }},
        {"RemoveTable", [&] { EXPECT_EQ(db.RemoveTable(77), 10020u); }},
        {"RenameTable", [&] { EXPECT_EQ(db.RenameTable(77, L""), 17502u); }},
        {"TableAddColumn", [&] { EXPECT_EQ(db.TableAddColumn(77, column), 17502u); }},
        {"TableRemoveColumn", [&] { EXPECT_EQ(db.TableRemoveColumn(77, 1), 10001u); }},
        {"TableModifyColumn", [&] { EXPECT_EQ(db.TableModifyColumn(77, column), 10020u); }},
        {"RenameColumn", [&] { EXPECT_EQ(db.RenameColumn(77, 1, L""), 17502u); }},
        {"TableSwapDisplayOrder", [&] { EXPECT_EQ(db.TableSwapDisplayOrder(77, 1, 2), 10020u); }},
        {"Optimize", [&] { db.Optimize(L"", nullptr, 0); }},
        {"SelfTest", [&] { db.SelfTest(nullptr, errors, nullptr, 0); }},
        {"AddRecord", [&] { EXPECT_EQ(db.AddRecord(77, oid, {}, false), 10020u); }},
        {"SetRecord", [&] { EXPECT_EQ(db.SetRecord(77, 1, {}), 10020u); }},
        {"RemoveRecord", [&] { EXPECT_EQ(db.RemoveRecord(77, 1), 10001u); }},
        {"FillBulkCache", [&] { EXPECT_EQ(db.FillBulkCache(), 10001u); }},
    };
    for (const auto& [name, change] : changes) {
        Told();
        EXPECT_EQ(Bulk(), "1: 1=1 2=null") << name;
        Told();
        change();
        EXPECT_NE(Told().find("> CQelPropDB::ClearBulkCache"), std::string::npos) << name;
    }
}

TEST_F(OutsideBulk, DamagedValueEmptiesTheCacheAndIsLogged)
{
    MakeBulk();
    Put(1000, 1, 1, Number(1));
    Run("INSERT INTO qeltpd (foid,toid,coid,data) VALUES(2,1000,1,x'0400')");
    const unsigned int code = db.FillBulkCache();
    EXPECT_NE(code, 10001u);
    EXPECT_NE(Told().find("E " + std::to_string(code) + "\n"), std::string::npos);
}

TEST_F(OutsideBulk, LargestRecordNumberIsHeld)
{
    MakeBulk();
    Put(1000, 4294967295ul, 1, Number(1));
    EXPECT_EQ(Bulk(), "4294967295: 1=1 2=null");
}

TEST_F(OutsideBulk, RowsUnderRecordZeroGoOnBeforeTheFirstRecord)
{
    MakeBulk();
    Put(1000, 3, 2, Text(L"x"));
    Run("INSERT INTO qeltpd (foid,toid,coid,data) SELECT 0,1000,1,data FROM qeltpd");
    EXPECT_EQ(Bulk(), "3: 1=x 2=x") << "the remembered number 0 takes the number of the next row";
}

} // namespace
