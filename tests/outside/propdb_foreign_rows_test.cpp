// propdb_foreign_rows_test.cpp: rows that other programs left: damaged values, odd types, odd oids.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideForeignRows : public CPropertyHost
{
protected:
    OutsideForeignRows() { Make(L"Bulk", {Column(L"Power"), Column(L"Maker", CQelProperty::eString)}, 1000); }

    void Plant(const std::string& foid, const std::string& coid, const std::string& data)
    {
        ASSERT_EQ(Run("INSERT INTO qeltpd (foid,toid,coid,data) VALUES(" + foid + ",1000," + coid + "," +
                      data + ")"),
                  0);
    }
};

struct SDamage
{
    const char* name;
    const char* data;
};

class OutsideDamage : public OutsideForeignRows, public testing::WithParamInterface<SDamage>
{};

TEST_P(OutsideDamage, GivesACodeAndALogEntryFromEveryReader)
{
    Put(1000, 5, 2, Text(L"good"));
    Plant("7", "1", GetParam().data);
    std::vector<SQelPropColumnData> out;
    EXPECT_EQ(db.GetRecord(1000, 7, out), 10011u);
    EXPECT_NE(Told().find("E 10011\n"), std::string::npos);
    SQelPropColumnData one;
    EXPECT_EQ(db.GetColumn(1000, 7, 1, one), 10011u);
    EXPECT_EQ(db.FillBulkCache(), 10011u);
    EXPECT_TRUE(db.HasRecord(1000, 7));
    EXPECT_EQ(Record(1000, 5), "1=null 2=good");
    EXPECT_EQ(db.SetRecord(1000, 7, {Data(1, Number(1))}), 10001u) << "the damage can be written over";
    EXPECT_EQ(Record(1000, 7), "1=1 2=null");
}

TEST_P(OutsideDamage, OfADefaultValueIsToldAndLeavesTheTableInReach)
{
    Run("UPDATE qeltpc SET cdef=" + std::string(GetParam().data) + " WHERE oid=1");
    EXPECT_EQ(db.Attach(false, nullptr), 10011u);
    EXPECT_NE(Told().find("E 10011\n"), std::string::npos);
    EXPECT_EQ(Columns(1000), "1:Power@0 2:Maker@1");
    CQelTable::SQelColumn column;
    ASSERT_EQ(db.TableGetColumn(1000, 1, column), 10001u);
    EXPECT_TRUE(column.defaultValue.IsNull());
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, OutsideDamage,
    testing::Values(SDamage{"EmptyBlob", "x''"}, SDamage{"OneByte", "x'04'"},
                    SDamage{"VersionAlone", "x'0400'"},
                    SDamage{"NoPayload", "x'040002000000000000000000000000000000'"},
                    SDamage{"OneByteShort", "x'04000200000000000000000000000000000001000000000000'"},
                    SDamage{"HugeBuffer", "x'040001000000000000"
                                          "00fffffffe000000000000000000000000'"},
                    SDamage{"HugeSymbol", "x'04000200000000000000000000"
                                          "00ffffff7f0000000000000000'"},
                    SDamage{"BufferMissing", "x'0400010000000000000004000000000000000000000000000000'"},
                    SDamage{"Number", "5"}, SDamage{"EmptyText", "''"}, SDamage{"ShortText", "'abc'"},
                    SDamage{"Real", "1.5"}),
    [](const testing::TestParamInfo<SDamage>& row) { return row.param.name; });

TEST_F(OutsideForeignRows, EveryTruncationOfAValueIsRefused)
{
    Put(1000, 1, 2, Text(L"Osram"));
    for (int size = 0; size < 38; ++size) {
        Run("DELETE FROM qeltpd WHERE foid=2; INSERT INTO qeltpd (foid,toid,coid,data) SELECT "
            "2,1000,2,substr(data,1," +
            std::to_string(size) + ") FROM qeltpd WHERE foid=1");
        EXPECT_EQ(Record(1000, 2), "10011") << size;
    }
}

TEST_F(OutsideForeignRows, NullInABlobColumnIsANullValue)
{
    Plant("7", "1", "NULL");
    Run("UPDATE qeltpc SET cdef=NULL");
    EXPECT_EQ(Record(1000, 7), "1=null 2=null");
    EXPECT_TRUE(db.HasRecord(1000, 7));
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    CQelTable::SQelColumn column;
    column.defaultValue = Number(1);
    ASSERT_EQ(db.TableGetColumn(1000, 1, column), 10001u);
    EXPECT_TRUE(column.defaultValue.IsNull());
}

TEST_F(OutsideForeignRows, TypeBeyondTheKnownOnesIsReadAsItStands)
{
    Plant("7", "1", "x'0400630000000000000000000000000000000000000000000000'");
    EXPECT_EQ(Record(1000, 7), "1=type99 2=null");
}

TEST_F(OutsideForeignRows, BytesAfterAValueAreNotRead)
{
    Plant("7", "1", "x'0400020000000000000000000000000000002800000000000000ffff'");
    EXPECT_EQ(Record(1000, 7), "1=40 2=null");
}

TEST_F(OutsideForeignRows, NullTextsAndNumbersInTheCatalogueLoad)
{
    Run("INSERT INTO qeltpt VALUES(2,NULL,NULL); INSERT INTO qeltpt VALUES(3,5,x'6162');"
        "INSERT INTO qeltpc (toid) VALUES(2); INSERT INTO qeltpc (toid,ctype,cname,cdo) VALUES(3,'x',7,'y')");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    CQelTable table(2);
    ASSERT_EQ(db.GetTable(table), 10001u);
    EXPECT_EQ(table.Properties().name, L"");
    ASSERT_EQ(table.Columns().size(), 1u);
    EXPECT_EQ(table.Columns()[0].type, CQelProperty::eNull);
    EXPECT_EQ(table.Columns()[0].displayHint, 0u);
    EXPECT_TRUE(db.TableExists(L"5"));
}

TEST_F(OutsideForeignRows, TablesUnderNegativeOrWiderOidsAreNotListedUnderOthers)
{
    Run("INSERT INTO qeltpt VALUES(-1,'minus',''); INSERT INTO qeltpt VALUES(4294967297,'wide','');"
        "INSERT INTO qeltpc (oid,toid,cname) VALUES(4294967298,1000,'wide')");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetTables(oids), 10001u);
    EXPECT_EQ(Show(oids), "1000");
    EXPECT_EQ(Columns(1000).find("4294967298"), std::string::npos);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "3") << "and they are left alone";
}

TEST_F(OutsideForeignRows, RecordsUnderNegativeOrWiderOidsAreNotListedUnderOthers)
{
    Plant("-1", "1", "NULL");
    Plant("4294967297", "1", "NULL");
    Plant("3", "1", "NULL");
    std::vector<unsigned long> oids;
    std::vector<CQelPropDB::SSortItem> items(1);
    EXPECT_EQ(db.GetRecordOids(1000, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "3");
    EXPECT_EQ(db.GetRecordOids(1000, oids, &items), 10001u);
    EXPECT_EQ(Show(oids), "3");
    const auto& bulk = db.GetBulkRecords();
    EXPECT_EQ(bulk.size(), 1u);
    EXPECT_EQ(bulk.count(3), 1u);
    EXPECT_FALSE(db.HasRecord(1000, 1));
}

TEST_F(OutsideForeignRows, RecordZeroIsReadListedAndRemovedLikeAnyOther)
{
    Put(1000, 1, 1, Number(5));
    Run("UPDATE qeltpd SET foid=0");
    EXPECT_TRUE(db.HasRecord(1000, 0));
    EXPECT_EQ(Record(1000, 0), "1=5 2=null");
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetRecordOids(1000, oids, nullptr), 10001u);
    EXPECT_EQ(Show(oids), "0");
    unsigned int count = 0;
    EXPECT_EQ(db.GetRecordCount(1000, count), 10001u);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(db.RemoveRecord(1000, 0), 10001u);
    EXPECT_FALSE(db.HasRecord(1000, 0));
}

TEST_F(OutsideForeignRows, LargestRecordNumberIsUsedAndNoneFollowsIt)
{
    Put(1000, 4294967295ul, 1, Number(5));
    EXPECT_EQ(Record(1000, 4294967295ul), "1=5 2=null");
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1000, oid, {Data(1, Number(6))}, false), 17201u);
    EXPECT_EQ(Ask("SELECT foid FROM qeltpd"), "4294967295") << "no row under 4294967296 stays behind";
    EXPECT_EQ(db.RemoveRecord(1000, 4294967295ul), 10001u);
    EXPECT_EQ(db.AddRecord(1000, oid, {Data(1, Number(6))}, false), 10001u);
    EXPECT_EQ(oid, 1ul);
}

TEST_F(OutsideForeignRows, NoNewRecordIsMadeBehindWhatIsNoWholeNumber)
{
    Put(1000, 10, 2, Text(L"kept"));
    for (const char* foid : {"'10abc'", "'abc'", "10.5", "x'3130'"}) {
        ASSERT_EQ(Run(std::string("INSERT INTO qeltpd (foid,toid,coid) VALUES(") + foid + ",1000,1)"), 0);
        unsigned long oid = 0;
        EXPECT_EQ(db.AddRecord(1000, oid, {Data(1, Number(6)), Data(2, Text(L"new"))}, false), 17201u)
            << foid;
        EXPECT_EQ(oid, 0ul) << foid;
        EXPECT_EQ(Record(1000, 10), "1=null 2=kept") << foid;
        EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "2") << foid;
        Run("DELETE FROM qeltpd WHERE coid=1");
    }
}

TEST_F(OutsideForeignRows, WiderRecordNumbersNameNothing)
{
    if constexpr (sizeof(unsigned long) == 8) {
        auto wide = static_cast<unsigned long>(4294967297ull);
        Put(1000, 1, 1, Number(5));
        EXPECT_EQ(db.AddRecord(1000, wide, {Data(1, Number(6))}, true), 10020u);
        EXPECT_EQ(db.SetRecord(1000, wide, {Data(1, Number(6))}), 10020u);
        EXPECT_EQ(db.SetRecord(1000, 1, {Data(wide, Number(6))}), 10020u);
        EXPECT_EQ(db.RemoveRecord(1000, wide), 10020u);
        EXPECT_FALSE(db.HasRecord(1000, wide));
        EXPECT_EQ(Ask("SELECT foid,coid FROM qeltpd"), "1|1");
        unsigned int count = 9;
        (void)db.GetRecordCount(wide + 999, count);
        EXPECT_EQ(count, 0u);
    }
}

TEST_F(OutsideForeignRows, EmbeddedZeroAndLoneSurrogatesOfAValueComeBack)
{
    const std::wstring text = {L'a', static_cast<wchar_t>(0xDC00), L'b', static_cast<wchar_t>(0xD83D)};
    Put(1000, 1, 2, Text(text));
    SQelPropColumnData data;
    ASSERT_EQ(db.GetColumn(1000, 1, 2, data), 10001u);
    EXPECT_EQ(data.value.String(), text);
    EXPECT_TRUE(data.value == Text(text));
}

TEST_F(OutsideForeignRows, SecondRowOfAValueCountsEvenWithoutABlob)
{
    Put(1000, 1, 1, Number(5));
    Run("DROP INDEX idx_qeltpd_foidtoidcoid");
    Plant("1", "1", "NULL");
    EXPECT_EQ(Record(1000, 1), "1=null 2=null");
}

TEST_F(OutsideForeignRows, BlobsOfAMegabyteComeBack)
{
    CQelProperty blob;
    const std::string bytes(1 << 20, '\xAB');
    blob.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
    Put(1000, 1, 2, blob);
    SQelPropColumnData data;
    ASSERT_EQ(db.GetColumn(1000, 1, 2, data), 10001u);
    EXPECT_TRUE(data.value == blob);
}

} // namespace
