// legacy_frame_test.cpp: the legacy database made, opened and closed, and the bytes of its schema.
#include "legacy_host.h"

using namespace outside;

namespace {

// Version 1, no tables, and the checksum of those six bytes.
constexpr const char* kEmptySchema = "01000000000006729e7a";

using OutsideLegacyFrame = CLegacyHost;

TEST_F(OutsideLegacyFrame, EmptySchemaIsTenBytesAndStoredTwice)
{
    EXPECT_EQ(StoredBytes(db.BlobDB(), 2, 1), kEmptySchema);
    EXPECT_EQ(StoredBytes(db.BlobDB(), 3, 1), kEmptySchema);
}

TEST_F(OutsideLegacyFrame, CreatingTellsItsStepsInOrder)
{
    db.Close();
    Told();
    EXPECT_EQ(db.Create(path.Path()), 10001u);
    EXPECT_EQ(Told(), "I2 + Create Property Database\n"
                      "I2 + Closing Property Database\nI2 - Done\n"
                      "I3 + Storing Tables\nI3 - Done\n"
                      "> 0(0,0)\nI2 - Done\n");
}

TEST_F(OutsideLegacyFrame, OpeningAnOpenOneClosesItFirst)
{
    EXPECT_EQ(db.Open(path.Path(), false), 10001u);
    EXPECT_EQ(Told(), "I2 + Open Property Database\n"
                      "I2 + Closing Property Database\n> 1(0,0)\nI2 - Done\n"
                      "I3 + Loading Tables\nI2 Loading table schema\nI3 - Done\n"
                      "> 0(0,0)\nI2 - Done\n");
}

TEST_F(OutsideLegacyFrame, ClosingWhatWasNeverOpenedIsSuccessWithoutAMessage)
{
    CDerivedLegacyDB closed;
    closed.SetLogfile(&log);
    closed.SetNotifyCallback(Hear, 0);
    EXPECT_EQ(closed.Close(), 10001u);
    EXPECT_EQ(Told(), "I2 + Closing Property Database\nI2 - Done\n");
    closed.SetLogfile(nullptr);
}

TEST_F(OutsideLegacyFrame, MissingSchemaRecordIsReplacedByItsCopy)
{
    MakeLamps();
    ASSERT_EQ(db.BlobDB().Remove({2, 1}), 10001u);
    EXPECT_EQ(db.Open(path.Path(), false), 10001u);
    EXPECT_NE(Told().find("I2 Loading table schema\nW1 Loading backup table schema\nI3 - Done\n"),
              std::string::npos);
    EXPECT_EQ(Tables(), "1000");
}

TEST_F(OutsideLegacyFrame, WrongChecksumIsNotHealedByTheCopy)
{
    ASSERT_EQ(db.BlobDB().Set({2, 1}, "\1\0\0\0\0\0\6\x72\x9e\x7b", 10, 50), 10001u);
    EXPECT_EQ(db.Open(path.Path(), false), 10007u);
    EXPECT_EQ(Told().find("Loading backup"), std::string::npos);
    EXPECT_TRUE(db.BlobDB().IsOpen());
}

TEST_F(OutsideLegacyFrame, WithoutAnySchemaTheStoreIsOpenAndTheCatalogueEmpty)
{
    MakeLamps();
    ASSERT_EQ(db.BlobDB().Remove({2, 1}), 10001u);
    ASSERT_EQ(db.BlobDB().Remove({3, 1}), 10001u);
    EXPECT_EQ(db.Open(path.Path(), false), 10020u);
    EXPECT_NE(Told().find("> 0(0,0)\n"), std::string::npos);
    EXPECT_TRUE(db.BlobDB().IsOpen());
    EXPECT_EQ(Tables(), "");
}

TEST_F(OutsideLegacyFrame, EntryLinesAreWrittenByClosedOperationsToo)
{
    db.Close();
    Told();
    unsigned long oid = 7;
    unsigned int count = 0;
    std::vector<unsigned long> oids{9};
    EXPECT_EQ(db.GetTables(oids), 17500u);
    EXPECT_EQ(Told(), "I3 + Getting tables\nE 17500\nI3 - Done\n");
    EXPECT_EQ(Show(oids), "9");
    EXPECT_EQ(db.AddRecord(1000, oid, {}, true), 17500u);
    EXPECT_EQ(Told(), "I4 + Adding record\nE 17500\nI4 - Done\n");
    EXPECT_EQ(db.GetRecordCount(1000, count), 17500u);
    EXPECT_EQ(db.GetRecordOids(1000, oids, nullptr), 17500u);
    EXPECT_FALSE(db.HasRecord(1000, 1));
}

TEST_F(OutsideLegacyFrame, ReadOnlyStoreIsReadButNotChanged)
{
    const unsigned long table = MakeLamps();
    const unsigned long record = Add(table, {Number(60), Text(L"A"), Number(1)});
    ASSERT_EQ(db.Open(path.Path(), true), 10001u);
    EXPECT_EQ(Record(table, record), "1=60 2=A 3=1");
    CQelTable3X added;
    added.Properties().name = L"a b"; // refused for the store before it is for its name
    EXPECT_EQ(db.AddTable(added), 17501u);
    EXPECT_EQ(db.RemoveTable(99), 17501u);
    EXPECT_EQ(db.SetRecord(99, 1, {}), 17501u);
    EXPECT_EQ(db.RemoveRecord(table, record), 17501u);
    EXPECT_EQ(db.TableRemoveColumn(table, 1), 17501u);
}

/// Writes a schema of one table as older versions did.
class OutsideLegacyVersions : public CLegacyHost
{
protected:
    void Store(unsigned short version, const std::vector<CQelTable3X::SQelColumn>& columns)
    {
        CQelMemFile file(false, 65536, 4096);
        file.BeginCheckSum();
        file << static_cast<unsigned short>(1) << 1u << version << 1000ul << std::wstring(L"Old")
             << std::wstring(L"table") << static_cast<unsigned int>(columns.size());
        for (const auto& column : columns)
            Store(file, version, column);
        if (version >= 2)
            file << true;
        file.WriteCheckSum();
        const auto size = static_cast<unsigned int>(file.GetFileSize());
        ASSERT_EQ(db.BlobDB().Set({2, 1}, file.GetBuffer(0), size, 50), 10001u);
        ASSERT_EQ(db.Open(path.Path(), false), 10001u);
    }

    bool Flag()
    {
        CQelTable3X table(1000);
        EXPECT_EQ(db.GetTable(table), 10001u);
        return table.Properties().flag;
    }

private:
    static void Store(CQelFile& file, unsigned short version, const CQelTable3X::SQelColumn& column)
    {
        file << column.oid << static_cast<int>(column.type) << column.name << column.description
             << column.refTable << column.refColumn << column.defaultValue << column.displayHint
             << column.format << column.currency;
        if (version >= 3)
            file << column.displayOrder;
        if (version >= 4)
            file << column.dataIndex;
    }
};

TEST_F(OutsideLegacyVersions, FirstHasNeitherFlagNorPlaces)
{
    Store(1, {LegacyColumn(L"A", CQelProperty::eInt, 3), LegacyColumn(L"B", CQelProperty::eInt, 5)});
    EXPECT_EQ(Columns(1000), "3:A@0/0 5:B@1/1");
    EXPECT_FALSE(Flag());
}

TEST_F(OutsideLegacyVersions, SecondHasTheFlag)
{
    Store(2, {LegacyColumn(L"A", CQelProperty::eInt, 3), LegacyColumn(L"B", CQelProperty::eInt, 5)});
    EXPECT_EQ(Columns(1000), "3:A@0/0 5:B@1/1");
    EXPECT_TRUE(Flag());
}

TEST_F(OutsideLegacyVersions, ThirdHasDisplayOrdersAndSlotsByPlace)
{
    Store(3, {LegacyColumn(L"A", CQelProperty::eInt, 3, 7), LegacyColumn(L"B", CQelProperty::eInt, 5, 2)});
    EXPECT_EQ(Columns(1000), "5:B@0/1 3:A@1/0");
}

TEST_F(OutsideLegacyVersions, NegativePlacesOfTheFourthBecomeThePlaceAmongTheStored)
{
    Store(4,
          {LegacyColumn(L"A", CQelProperty::eInt, 3, 5, 2), LegacyColumn(L"B", CQelProperty::eInt, 5, 2, -1),
           LegacyColumn(L"C", CQelProperty::eInt, 6, 9, 0),
           LegacyColumn(L"D", CQelProperty::eInt, 8, -4, 3)});
    EXPECT_EQ(Columns(1000), "5:B@0/1 8:D@1/3 3:A@2/2 6:C@3/0");
}

TEST_F(OutsideLegacyVersions, StoredEntryHasItsColumnsInTheOrderOfTheirOids)
{
    const unsigned long table = Make(L"T", {LegacyColumn(L"B", CQelProperty::eInt, 9, 1, 0),
                                            LegacyColumn(L"A", CQelProperty::eInt, 4, 2, 1)});
    EXPECT_EQ(Columns(table), "9:B@0/0 4:A@1/1");
    const std::string bytes = StoredBytes(db.BlobDB(), 2, 1);
    EXPECT_LT(bytes.find("0400000002000000010000004100"), bytes.find("0900000002000000010000004200"));
    EXPECT_EQ(bytes.substr(0, 28), "0100010000000400e80300000100");
    EXPECT_EQ(bytes, StoredBytes(db.BlobDB(), 3, 1));
}

} // namespace
