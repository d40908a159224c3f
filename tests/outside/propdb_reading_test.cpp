// propdb_reading_test.cpp: reading, finding and counting records.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideReading : public CPropertyHost
{
protected:
    OutsideReading() { Make(L"Lamps", {Column(L"Power"), Column(L"Maker", CQelProperty::eString)}); }
};

TEST_F(OutsideReading, GivesOneElementPerColumnInTheTablesOrder)
{
    ASSERT_EQ(db.SetRecord(1, 7, {Data(2, Text(L"Osram")), Data(1, Number(40))}), 10001u);
    EXPECT_EQ(Record(1, 7), "1=40 2=Osram");
}

TEST_F(OutsideReading, MissingRecordIsAllNullAndNotAnError)
{
    EXPECT_EQ(Record(1, 99), "1=null 2=null");
    EXPECT_FALSE(db.HasRecord(1, 99));
    EXPECT_EQ(Told().find("E "), std::string::npos);
}

TEST_F(OutsideReading, WhatTheVectorHeldBeforeDoesNotShow)
{
    std::vector<SQelPropColumnData> out = {Data(9, Number(9)), Data(8, Text(L"old"))};
    ASSERT_EQ(db.GetRecord(1, 99, out), 10001u);
    EXPECT_EQ(Show(out), "1=null 2=null");
    out.resize(5);
    ASSERT_EQ(db.GetRecord(1, 99, out), 10001u);
    EXPECT_EQ(Show(out), "1=null 2=null");
    out.clear();
    ASSERT_EQ(db.GetRecord(1, 99, out), 10001u);
    EXPECT_EQ(Show(out), "1=null 2=null");
}

TEST_F(OutsideReading, ValuesOfRemovedColumnsAreNotReturned)
{
    Put(1, 7, 2, Text(L"x"));
    Run("INSERT INTO qeltpd (foid,toid,coid,data) VALUES(7,1,55,x'00')");
    EXPECT_EQ(Record(1, 7), "1=null 2=x") << "the damaged value of an unknown column is not even read";
}

TEST_F(OutsideReading, UnknownTableIsAnInformalEntry)
{
    std::vector<SQelPropColumnData> out;
    EXPECT_EQ(db.GetRecord(9, 1, out), 10020u);
    EXPECT_EQ(Told(), "I2 10020\n");
    SQelPropColumnData data = Data(5, Number(5));
    EXPECT_EQ(db.GetColumn(9, 1, 3, data), 10020u);
    EXPECT_EQ(data.columnOid, 3ul);
    EXPECT_TRUE(data.value.IsNull());
}

TEST_F(OutsideReading, ClosedDatabaseGives17500)
{
    sql.Close();
    std::vector<SQelPropColumnData> out;
    EXPECT_EQ(db.GetRecord(1, 1, out), 17500u);
    EXPECT_EQ(Told(), "E 17500\n");
    SQelPropColumnData data = Data(5, Number(5));
    EXPECT_EQ(db.GetColumn(1, 1, 1, data), 17500u);
    EXPECT_TRUE(data.value.IsNull());
    Told();
    unsigned int count = 9;
    EXPECT_EQ(db.GetRecordCount(1, count), 17500u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(Told(), "E 17500\n");
    EXPECT_FALSE(db.HasRecord(1, 1));
    EXPECT_EQ(Told(), "E 17500\n");
}

TEST_F(OutsideReading, OneColumnIsReadWithItsOid)
{
    Put(1, 7, 1, Number(40));
    SQelPropColumnData data = Data(9, Text(L"old"));
    EXPECT_EQ(db.GetColumn(1, 7, 1, data), 10001u);
    EXPECT_EQ(Show({data}), "1=40");
    EXPECT_EQ(db.GetColumn(1, 7, 2, data), 10001u);
    EXPECT_EQ(Show({data}), "2=null");
}

TEST_F(OutsideReading, ColumnThatTheTableLacksGives10020)
{
    Put(1, 7, 1, Number(40));
    Run("INSERT INTO qeltpd (foid,toid,coid,data) SELECT foid,toid,55,data FROM qeltpd");
    SQelPropColumnData data = Data(9, Text(L"old"));
    EXPECT_EQ(db.GetColumn(1, 7, 55, data), 10020u);
    EXPECT_EQ(Show({data}), "55=null");
}

TEST_F(OutsideReading, AnyStoredValueMakesARecord)
{
    EXPECT_FALSE(db.HasRecord(1, 7));
    Run("INSERT INTO qeltpd (foid,toid,coid) VALUES(7,1,55)");
    EXPECT_TRUE(db.HasRecord(1, 7));
    EXPECT_FALSE(db.HasRecord(1, 8));
    unsigned int count = 0;
    EXPECT_EQ(db.GetRecordCount(1, count), 10001u);
    EXPECT_EQ(count, 1u);
    Told();
    EXPECT_FALSE(db.HasRecord(9, 7));
    EXPECT_EQ(Told(), "I2 10020\n");
}

TEST_F(OutsideReading, HasRecordIsFalseWhereTheSchemaIsMissing)
{
    Run("DROP TABLE qeltpd");
    EXPECT_FALSE(db.HasRecord(1, 7));
}

TEST_F(OutsideReading, CountIsOfDistinctRecordsAndOfAnyTable)
{
    unsigned int count = 9;
    EXPECT_EQ(db.GetRecordCount(77, count), 10001u);
    EXPECT_EQ(count, 0u);
    ASSERT_EQ(db.SetRecord(1, 7, {Data(1, Number(1)), Data(2, Text(L"x"))}), 10001u);
    Put(1, 8, 1, Number(1));
    EXPECT_EQ(db.GetRecordCount(1, count), 10001u);
    EXPECT_EQ(count, 2u);
    Run("INSERT INTO qeltpd (foid,toid,coid) VALUES(1,77,1)");
    EXPECT_EQ(db.GetRecordCount(77, count), 10001u);
    EXPECT_EQ(count, 1u) << "the table is not looked up";
    ASSERT_EQ(db.RemoveRecord(1, 7), 10001u);
    EXPECT_EQ(db.GetRecordCount(1, count), 10001u);
    EXPECT_EQ(count, 1u);
}

TEST_F(OutsideReading, EveryTypeOfValueComesBackEqual)
{
    std::vector<CQelProperty> values(13);
    values[0].SetString(std::wstring(10000, L'\u20ac') + L"\U0001F4A1");
    values[1].SetInt(-5);
    values[2].SetInt(4000000000u);
    values[3].SetInt64(-5000000000ll);
    values[4].SetInt64(18000000000000000000ull);
    values[5].SetDouble(-0.1);
    values[6].SetDate(45000.0, 60);
    values[7].SetTime(0.5, 60);
    values[8].SetBool(true);
    values[9].SetCurrency(1.25, L"EUR");
    values[10].SetURL(std::wstring(L"http://x"));
    values[11].SetReference(4294967295ul);
    values[12].SetBlob("\0\1\2", 3);
    for (const CQelProperty& value : values) {
        Put(1, 1, 1, value);
        SQelPropColumnData data;
        ASSERT_EQ(db.GetColumn(1, 1, 1, data), 10001u);
        EXPECT_TRUE(data.value == value) << value.GetType();
        EXPECT_EQ(data.value.TimeBIAS(), 9999) << "the bias is not stored";
    }
}

TEST_F(OutsideReading, ReadingChangesNeitherDataNorCache)
{
    Make(L"Bulk", {Column(L"a")}, 1000);
    Put(1000, 1, 3, Number(1));
    const auto* before = &db.GetBulkRecords();
    Run("DELETE FROM qeltpd");
    std::vector<SQelPropColumnData> out;
    std::vector<unsigned long> oids;
    unsigned int count = 0;
    SQelPropColumnData data;
    CQelTable table(1000);
    (void)db.GetRecord(1000, 1, out);
    (void)db.GetColumn(1000, 1, 3, data);
    (void)db.HasRecord(1000, 1);
    (void)db.GetRecordCount(1000, count);
    (void)db.GetRecordOids(1000, oids, nullptr);
    (void)db.GetTables(oids);
    (void)db.GetTable(table);
    EXPECT_EQ(&db.GetBulkRecords(), before);
    EXPECT_EQ(before->count(1), 1u);
}

} // namespace
