// schema_storage_test.cpp: the catalogue on its way to the two schema records and back.
#include "support/fault_vfs.h"
#include "support/hex.h"
#include "support/legacy_database.h"

#include <sqlite3.h>

using namespace qeltest;

namespace {

class LegacySchemaStorage : public CLegacyTest
{
protected:
    std::string PrimaryBytes() { return BytesOf(StoredHex(db, 2, 1)); }
    // Opens the database again, whatever that gives.
    unsigned int OpenAgain()
    {
        db.Close();
        ForgetAll();
        return db.Open(path, false);
    }
};

} // namespace

TEST_F(LegacySchemaStorage, BothRecordsHoldTheSameBytes)
{
    AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt)});
    EXPECT_EQ(StoredHex(db, 2, 1), StoredHex(db, 3, 1));
    EXPECT_EQ(StoredHex(db, 2, 1).substr(0, 24), "010001000000"
                                                 "0400e8030000");
}

TEST_F(LegacySchemaStorage, MissingFirstRecordIsReplacedByItsCopy)
{
    AddTable(L"Lamps");
    ASSERT_THAT(db.BlobDB().Remove({2, 1}), Succeeds());
    ASSERT_THAT(OpenAgain(), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps\n");
    EXPECT_NE(log.Text().find("I2 Loading table schema\nW1 Loading backup table schema\nI3 - Done\n"),
              std::string::npos);
}

TEST_F(LegacySchemaStorage, WrongChecksumDoesNotFallBackToTheCopy)
{
    AddTable(L"Lamps");
    std::string bytes = PrimaryBytes();
    bytes.back() = static_cast<char>(bytes.back() ^ 0x40);
    StoreBytes(2, 1, bytes);
    EXPECT_THAT(OpenAgain(), Gives(10007));
    EXPECT_EQ(Show(db), "1000 Lamps\n"); // what was read stays
    EXPECT_EQ(log.Text().find("backup"), std::string::npos);
    EXPECT_NE(log.Text().find("E 10007\nI3 - Done\n"), std::string::npos);
    EXPECT_TRUE(db.BlobDB().IsOpen());
    EXPECT_EQ(notifier.Text(), "0(0,0)");
}

TEST_F(LegacySchemaStorage, SchemaThatEndsEarlyDoesNotFallBackEither)
{
    AddTable(L"Lamps");
    AddTable(L"Cars");
    const std::string bytes = PrimaryBytes();
    StoreBytes(2, 1, bytes.substr(0, bytes.size() - 6));
    EXPECT_THAT(OpenAgain(), Gives(10011));
    EXPECT_EQ(Show(db), "1000 Lamps\n");
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{10011, 10011, 10011}));
}

TEST_F(LegacySchemaStorage, WithoutBothRecordsTheStoreIsOpenAndEmpty)
{
    ASSERT_THAT(db.BlobDB().Remove({2, 1}), Succeeds());
    ASSERT_THAT(db.BlobDB().Remove({3, 1}), Succeeds());
    EXPECT_THAT(OpenAgain(), Gives(10020));
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{10020, 10020})); // of loading and of opening
    EXPECT_TRUE(db.BlobDB().IsOpen());
    EXPECT_EQ(Show(db), "");
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(AddTable(L"Lamps"), 1000U);
}

TEST_F(LegacySchemaStorage, SchemaCutAtAnyByteGivesACodeAndALogEntry)
{
    AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour")});
    const std::string whole = PrimaryBytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        StoreBytes(2, 1, whole.substr(0, size));
        std::map<unsigned long, CQelTable3X> tables;
        log.Forget();
        EXPECT_THAT(db.LoadTables(tables), Gives(10011)) << size;
        EXPECT_FALSE(log.ErrorCodes().empty()) << size;
    }
}

TEST_F(LegacySchemaStorage, SchemaWithAnyByteFlippedGivesACodeAndALogEntry)
{
    AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour")});
    const std::string whole = PrimaryBytes();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(~damaged[at]);
        StoreBytes(2, 1, damaged);
        std::map<unsigned long, CQelTable3X> tables;
        log.Forget();
        const unsigned int code = db.LoadTables(tables);
        EXPECT_TRUE(code == 10007 || code == 10011) << at << ": " << code;
        EXPECT_FALSE(log.ErrorCodes().empty()) << at;
    }
}

TEST_F(LegacySchemaStorage, LoadingEmptiesTheCatalogueFirst)
{
    std::map<unsigned long, CQelTable3X> tables;
    tables[5] = CQelTable3X(5);
    EXPECT_THAT(db.LoadTables(tables), Succeeds());
    EXPECT_TRUE(tables.empty());
}

TEST_F(LegacySchemaStorage, LoadedColumnsStandInDisplayOrderFromZero)
{
    CQelTable3X table(1000);
    table.Properties().name = L"T";
    const int orders[] = {5, 2, 9};
    for (unsigned long i = 0; i < 3; ++i) {
        SLegacyColumn column = Column(std::wstring(1, static_cast<wchar_t>(L'a' + i)));
        column.oid = i + 1;
        column.displayOrder = orders[i];
        table.Properties().columns.push_back(column);
    }
    UseSchema({table});
    EXPECT_EQ(Show(db), "1000 T: 2 b@1 1 a@0 3 c@2\n");
    SLegacyColumn last;
    ASSERT_THAT(db.TableGetColumn(1000, 3, last), Succeeds());
    EXPECT_EQ(last.displayOrder, 2);
}

TEST_F(LegacySchemaStorage, StoringOnAClosedStoreTellsEveryStep)
{
    db.Close();
    ForgetAll();
    EXPECT_THAT(db.StoreTables({}), Gives(17500));
    EXPECT_EQ(log.Take(), "I3 + Storing Tables\n"
                          "E 17500 Saving table schema\n"
                          "E 17500 Saving copy of table schema\n"
                          "E 17500\n"
                          "I3 - Done\n");
}

TEST_F(LegacySchemaStorage, LoadingFromAClosedStoreTriesBothRecords)
{
    db.Close();
    ForgetAll();
    std::map<unsigned long, CQelTable3X> tables;
    EXPECT_THAT(db.LoadTables(tables), Gives(17500));
    EXPECT_EQ(log.Take(), "I3 + Loading Tables\n"
                          "I2 Loading table schema\n"
                          "W1 Loading backup table schema\n"
                          "E 17500\n"
                          "I3 - Done\n");
}

TEST(LegacySchemaStorageFailures, ResultIsThatOfTheCopyAlone)
{
    CFaultVfs disk;
    CTemporaryFolder folder;
    CLegacyLog log;
    CLegacyDatabase db;
    db.SetLogfile(&log);
    ASSERT_THAT(db.Create(folder.Path(L"store")), Succeeds());
    log.Forget();
    disk.FailOnceAfter(0, SQLITE_FULL);
    EXPECT_THAT(db.StoreTables({{1000, CQelTable3X(1000)}}), Succeeds());
    EXPECT_TRUE(disk.HasFailed());
    EXPECT_EQ(log.Take(), "I3 + Storing Tables\nE 17313 Saving table schema\nI3 - Done\n");
    EXPECT_EQ(StoredHex(db, 2, 1, "2 4 4"), "0100 00000000 06729e7a");
    EXPECT_EQ(StoredHex(db, 3, 1).substr(0, 12), "010001000000");
    db.Close();
}

TEST(LegacySchemaStorageFailures, FailureOfTheCopyAloneIsTheResult)
{
    CFaultVfs disk;
    CTemporaryFolder folder;
    CLegacyLog log;
    CLegacyDatabase db;
    db.SetLogfile(&log);
    ASSERT_THAT(db.Create(folder.Path(L"store")), Succeeds());
    int n = 0;
    do { // the first write that belongs to the copy
        ASSERT_THAT(db.StoreTables({}), Succeeds());
        log.Forget();
        disk.FailOnceAfter(n++, SQLITE_FULL);
    } while (db.StoreTables({{1000, CQelTable3X(1000)}}) == qel::kSuccess);
    EXPECT_EQ(log.Take(), "I3 + Storing Tables\nE 17313 Saving copy of table schema\nE 17313\nI3 - Done\n");
    EXPECT_EQ(StoredHex(db, 2, 1).substr(0, 12), "010001000000");
    EXPECT_EQ(StoredHex(db, 3, 1, "2 4 4"), "0100 00000000 06729e7a");
    db.Close();
}
