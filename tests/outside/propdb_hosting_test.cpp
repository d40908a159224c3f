// propdb_hosting_test.cpp: connections of the host's own, callbacks that go on working, quiet logs.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideHosting : public CPropertyHost
{};

/// A connection that the host opened with SQLite itself.
class OutsideOwnHandle : public testing::TestWithParam<const char*>
{
public:
    ~OutsideOwnHandle() override { sqlite3_close(handle); }

protected:
    OutsideOwnHandle() { sqlite3_open(file.Name().c_str(), &handle); }

    CDatabaseFile file;
    sqlite3* handle = nullptr;
};

TEST_P(OutsideOwnHandle, ServesAndStaysOpen)
{
    ASSERT_EQ(outside::Run(handle, GetParam()), 0);
    outside::Run(handle, "CREATE TABLE hosts_own (a); INSERT INTO hosts_own VALUES(1)");
    CQelSQLite sql;
    sql.Use(handle);
    {
        CQelPropDB db(&sql);
        ASSERT_EQ(db.Attach(true, nullptr), 10001u);
        CQelTable table;
        table.Properties().name = L"L\u00e4mp\U0001F4A1";
        table.Properties().columns = {Column(L"a")};
        ASSERT_EQ(db.AddTable(table), 10001u);
        ASSERT_EQ(db.SetRecord(1, 1, {Data(1, Text(L"x"))}), 10001u);
        db.Close();
        ASSERT_EQ(db.Attach(false, nullptr), 10001u);
        EXPECT_TRUE(db.TableExists(L"L\u00e4mp\U0001F4A1"));
        SQelPropColumnData data;
        EXPECT_EQ(db.GetColumn(1, 1, 1, data), 10001u);
        EXPECT_EQ(Show({data}), "1=x");
    }
    sql.Close();
    EXPECT_EQ(outside::Ask(handle, "SELECT a,(SELECT count(*) FROM qeltpd) FROM hosts_own"), "1|1");
}

INSTANTIATE_TEST_SUITE_P(Settings, OutsideOwnHandle,
                         testing::Values("PRAGMA encoding='UTF-8'", "PRAGMA encoding='UTF-16le'",
                                         "PRAGMA encoding='UTF-16be'", "PRAGMA journal_mode=WAL",
                                         "PRAGMA foreign_keys=1"),
                         [](const testing::TestParamInfo<const char*>& row) {
                             return "Setting" + std::to_string(row.index);
                         });

CQelPropDB* g_heard = nullptr;

bool QEL_STDCALL GoOn(EPropDBMessage message, unsigned long table, unsigned long record, unsigned int)
{
    unsigned long oid = 0;
    CQelTable::SQelColumn column = Column(L"added", CQelProperty::eInt, 9999);
    if (message == ePropDBTableAdded) {
        EXPECT_EQ(g_heard->TableAddColumn(table, column), 10001u);
    }
    if (message == ePropDBTableChanged) {
        EXPECT_EQ(g_heard->AddRecord(table, oid, {Data(1, Number(5))}, false), 10001u);
    }
    if (message == ePropDBRecordAdded) {
        EXPECT_TRUE(g_heard->HasRecord(table, record));
    }
    return false;
}

TEST_F(OutsideHosting, CallbackMayCallFurtherOperations)
{
    g_heard = &db;
    db.SetNotifyCallback(GoOn, 0);
    CQelTable table;
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(Record(1, 1), "1=5");
}

bool QEL_STDCALL CloseIt(EPropDBMessage message, unsigned long, unsigned long, unsigned int)
{
    return message == ePropDBClosed || g_heard->Close() == 10001;
}

TEST_F(OutsideHosting, CallbackMayCloseTheDatabaseObject)
{
    Make(L"Lamps", {Column(L"a")});
    g_heard = &db;
    db.SetNotifyCallback(CloseIt, 0);
    EXPECT_EQ(db.RenameTable(1, L"Lights"), 10001u);
    EXPECT_FALSE(db.TableExists(L"Lights"));
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lights");
}

TEST_F(OutsideHosting, EntriesAboveTheLevelAreNotWritten)
{
    Make(L"Bulk", {Column(L"a")}, 1000);
    log.SetLevel(2);
    EXPECT_EQ(db.RenameTable(1000, L"Thousand"), 10001u);
    EXPECT_EQ(db.FillBulkCache(), 10001u);
    EXPECT_EQ(db.SetRecord(1000, 1, {Data(1, Number(1))}), 10001u);
    EXPECT_EQ(Told(), "> 3(1000,0)\n> 6(1000,1)\n");
    EXPECT_EQ(db.RemoveTable(1), 10020u);
    EXPECT_EQ(Told(), "I2 10020\n");
    log.SetLevel(0);
    EXPECT_EQ(db.RemoveTable(1), 10020u);
    EXPECT_EQ(Told(), "");
    sql.Close();
    EXPECT_EQ(db.RemoveTable(1), 17500u);
    EXPECT_EQ(Told(), "E 17500\n");
}

TEST_F(OutsideHosting, UsualLevelLeavesTheTrackersOut)
{
    Make(L"Bulk", {Column(L"a")}, 1000);
    log.SetLevel(CDovLogfile().GetLevel());
    db.GetBulkRecords();
    EXPECT_EQ(Told().find("CQelPropDB::"), std::string::npos);
}

TEST_F(OutsideHosting, LookUpIndexesAreRefusedAsAnyChange)
{
    Make(L"Bulk", {Column(L"a")}, 1000);
    db.GetBulkRecords();
    Told();
    EXPECT_EQ(db.CreateLookupIndexes(), 10001u);
    EXPECT_NE(Told().find("> CQelPropDB::ClearBulkCache"), std::string::npos);
    Run("DROP INDEX idx_qeltpc_toid; DROP TABLE qeltpc");
    EXPECT_EQ(db.CreateLookupIndexes(), 17301u);
    sql.Close();
    EXPECT_EQ(db.CreateLookupIndexes(), 17500u);
}

TEST_F(OutsideHosting, TwoObjectsOnOneDatabaseSeeEachOthersRecords)
{
    Make(L"Lamps", {Column(L"a")});
    CQelPropDB second(db);
    second.SetLogfile(nullptr);
    second.SetNotifyCallback(nullptr, 0);
    Put(1, 1, 1, Number(5));
    EXPECT_TRUE(second.HasRecord(1, 1));
    EXPECT_EQ(second.RenameTable(1, L"Lights"), 10001u);
    EXPECT_TRUE(db.TableExists(L"Lamps")) << "until it loads again";
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_TRUE(db.TableExists(L"Lights"));
}

TEST_F(OutsideHosting, TablesTakenInAreCopied)
{
    CQelTable table;
    table.Properties().name = L"Lamps";
    ASSERT_EQ(db.AddTable(table), 10001u);
    table.Properties().name = L"changed";
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    CQelTable found(1);
    ASSERT_EQ(db.GetTable(found), 10001u);
    found.Properties().name = L"changed";
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_FALSE(db.TableExists(L"changed"));
}

TEST_F(OutsideHosting, TableReadFromTheCatalogueCanBeAddedAgainUnderAnotherName)
{
    Make(L"Lamps", {Column(L"a"), Column(L"b", CQelProperty::eInt, 1)});
    CQelTable copy(1);
    ASSERT_EQ(db.GetTable(copy), 10001u);
    copy.Properties().oid = 0;
    copy.Properties().name = L"Copy";
    EXPECT_EQ(db.AddTable(copy), 10001u);
    EXPECT_EQ(Columns(copy.Properties().oid), "3:a@0 4:b@1");
}

} // namespace
