// propdb_transactions_test.cpp: the host's own transactions, busy databases, full disks.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideTransactions : public CPropertyHost
{};

TEST_F(OutsideTransactions, HostMayRollBackEverythingThatItDid)
{
    Run("BEGIN");
    CQelTable table;
    table.Properties().name = L"Lamps";
    table.Properties().columns = {Column(L"Power")};
    ASSERT_EQ(db.AddTable(table), 10001u);
    Put(1, 1, 1, Number(5));
    ASSERT_EQ(db.RenameColumn(1, 1, L"Watts"), 10001u);
    ASSERT_EQ(Run("ROLLBACK"), 0);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "0");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_FALSE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTransactions, FailureInsideTheHostsTransactionUndoesItselfAlone)
{
    Make(L"Lamps", {Column(L"a"), Column(L"b")});
    Run("CREATE TRIGGER no BEFORE INSERT ON qeltpd WHEN new.coid=2 BEGIN SELECT raise(ABORT,'no'); END");
    ASSERT_EQ(Run("BEGIN"), 0);
    Put(1, 1, 1, Number(5));
    EXPECT_EQ(db.SetRecord(1, 1, {Data(1, Number(6)), Data(2, Number(7))}), 17319u);
    EXPECT_EQ(Record(1, 1), "1=5 2=null");
    EXPECT_EQ(sqlite3_get_autocommit(sql.Handle()), 0) << "the host's transaction is still open";
    ASSERT_EQ(Run("COMMIT"), 0);
    EXPECT_EQ(Record(1, 1), "1=5 2=null");
}

TEST_F(OutsideTransactions, HostsSavepointsNestWithThoseOfTheLibrary)
{
    Make(L"Lamps", {Column(L"a")});
    Run("SAVEPOINT outer1");
    Put(1, 1, 1, Number(1));
    Run("SAVEPOINT inner1");
    Put(1, 1, 1, Number(2));
    EXPECT_EQ(db.RemoveTable(1), 10001u);
    Run("ROLLBACK TO inner1; RELEASE inner1");
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Record(1, 1), "1=1");
    Run("ROLLBACK TO outer1; RELEASE outer1");
    EXPECT_FALSE(db.HasRecord(1, 1));
    EXPECT_EQ(sqlite3_get_autocommit(sql.Handle()), 1);
}

TEST_F(OutsideTransactions, FailedAddTableInsideTheHostsTransactionLeavesItOpen)
{
    Run("CREATE TRIGGER no BEFORE INSERT ON qeltpc BEGIN SELECT raise(ABORT,'no'); END; BEGIN");
    CQelTable table;
    table.Properties().name = L"Lamps";
    table.Properties().columns = {Column(L"a")};
    EXPECT_EQ(db.AddTable(table), 17319u);
    EXPECT_EQ(sqlite3_get_autocommit(sql.Handle()), 0);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "0");
    Run("ROLLBACK");
}

TEST_F(OutsideTransactions, NewSchemaIsPartOfTheHostsTransaction)
{
    Make(L"Lamps");
    Run("BEGIN");
    EXPECT_EQ(db.Attach(true, nullptr), 10001u);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpt"), "0");
    ASSERT_EQ(Run("ROLLBACK"), 0);
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lamps");
}

TEST_F(OutsideTransactions, QueryOfTheHostsThatIsOpenForbidsANewSchema)
{
    Make(L"Lamps");
    Make(L"Fans");
    sqlite3_stmt* query = nullptr;
    sqlite3_prepare_v2(sql.Handle(), "SELECT oid FROM qeltpt", -1, &query, nullptr);
    ASSERT_EQ(sqlite3_step(query), SQLITE_ROW);
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    sqlite3_finalize(query);
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lamps Fans");
    EXPECT_EQ(db.Attach(true, nullptr), 10001u);
}

TEST_F(OutsideTransactions, CreatingInAClosedDatabaseGives17201)
{
    CHostLog own("own ");
    sql.SetLogfile(&own);
    sql.Close();
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    EXPECT_EQ(Told().find("> "), std::string::npos);
    ASSERT_FALSE(own.entries.empty());
    EXPECT_EQ(own.entries.back().code, 17201u);
    sql.SetLogfile(nullptr);
}

sqlite3* watched = nullptr;
int openWhenTold = -1;

bool QEL_STDCALL NoteTransaction(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    openWhenTold = sqlite3_get_autocommit(watched) == 0 ? 1 : 0;
    return true;
}

TEST_F(OutsideTransactions, NotificationComesAfterTheCommit)
{
    watched = sql.Handle();
    openWhenTold = -1;
    db.SetNotifyCallback(NoteTransaction, 0);
    CQelTable table;
    table.Properties().name = L"Lamps";
    ASSERT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(openWhenTold, 0);
}

/// A database in a file that a second connection locks.
class OutsideBusy : public testing::Test
{
public:
    ~OutsideBusy() override
    {
        db.SetNotifyCallback(nullptr, 0);
        sqlite3_close(other);
    }

protected:
    OutsideBusy()
    {
        sql.Open(file.Path());
        db.Attach(true, nullptr);
        CQelTable table;
        table.Properties().name = L"Lamps";
        table.Properties().columns = {Column(L"a"), Column(L"b", CQelProperty::eInt, 1)};
        db.AddTable(table);
        db.SetRecord(1, 1, {Data(1, Number(5))});
        sqlite3_open(file.Name().c_str(), &other);
        db.SetLogfile(&log);
        db.SetNotifyCallback(Hear, 0);
        Told();
    }
    void Lock(const char* how) { ASSERT_EQ(outside::Run(other, how), 0); }

    CDatabaseFile file;
    CQelSQLite sql;
    CHostLog log;
    CDerivedDB db{&sql};
    sqlite3* other = nullptr;
};

TEST_F(OutsideBusy, AddingATableThatCannotBeginSucceedsWithoutReloadAndStillNotifies)
{
    Lock("BEGIN IMMEDIATE");
    CQelTable table(8);
    table.Properties().name = L"Fans";
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI3 - Done\n> 2(8,0)\n");
    EXPECT_FALSE(db.TableExists(L"Fans"));
    CQelTable unnumbered;
    unnumbered.Properties().name = L"Fans";
    EXPECT_EQ(db.AddTable(unnumbered), 10001u);
    EXPECT_EQ(Told(), "I3 + Adding table\nI3 - Done\n> 2(0,0)\n");
}

TEST_F(OutsideBusy, RemovingARecordThatCannotBeginSucceedsAndStillNotifies)
{
    Lock("BEGIN IMMEDIATE");
    EXPECT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n> 7(1,1)\n");
    EXPECT_TRUE(db.HasRecord(1, 1));
}

TEST_F(OutsideBusy, EveryOtherChangeThatCannotBeginGives17201)
{
    Lock("BEGIN IMMEDIATE");
    CQelTable::SQelColumn column = Column(L"c");
    unsigned long oid = 0;
    const std::vector<std::pair<std::string, std::function<unsigned int()>>> changes = {
        {"I3 + Removing table\n|I3 - Done\n", [&] { return db.RemoveTable(1); }},
        {"I3 + Renaming Table\n|I3 - Done\n", [&] { return db.RenameTable(1, L"X"); }},
        {"I3 + Adding Column\n|I3 - Done\n", [&] { return db.TableAddColumn(1, column); }},
        {"I3 + Removing Column\n|I3 - Done\n", [&] { return db.TableRemoveColumn(1, 1); }},
        {"I3 + Updating Column\n|I3 - Done\n",
         [&] {
             column.oid = 1;
             return db.TableModifyColumn(1, column);
         }},
        {"I3 + Renaming Column\n|I3 - Done\n", [&] { return db.RenameColumn(1, 1, L"X"); }},
        {"I3 + TableSwapDisplayOrder\n|I3 - Done\n", [&] { return db.TableSwapDisplayOrder(1, 1, 2); }},
        {"I4 + Adding record\n|I4 - Done\n",
         [&] { return db.AddRecord(1, oid, {Data(1, Number(1))}, false); }},
    };
    for (const auto& [lines, change] : changes) {
        EXPECT_EQ(change(), 17201u) << lines;
        const std::size_t bar = lines.find('|');
        EXPECT_EQ(Told(), lines.substr(0, bar) + "E 17201\n" + lines.substr(bar + 1));
    }
    outside::Run(other, "ROLLBACK");
    EXPECT_EQ(oid, 0ul);
    EXPECT_EQ(db.TableRemoveColumn(1, 1), 10001u) << "free again";
}

TEST_F(OutsideBusy, ReadsOfALockedDatabaseAreNoEndOfData)
{
    Lock("BEGIN EXCLUSIVE");
    std::vector<SQelPropColumnData> out;
    std::vector<unsigned long> oids = {7};
    unsigned int count = 9;
    std::map<unsigned long, CQelTable> tables;
    EXPECT_EQ(db.GetRecord(1, 1, out), 17305u);
    EXPECT_NE(Told().find("E 17305\n"), std::string::npos);
    EXPECT_EQ(db.GetRecordOids(1, oids, nullptr), 17305u);
    EXPECT_EQ(Show(oids), "");
    EXPECT_EQ(db.GetRecordCount(1, count), 17305u);
    EXPECT_EQ(count, 0u);
    EXPECT_FALSE(db.HasRecord(1, 1));
    EXPECT_EQ(db.LoadTables(tables), 17305u);
    outside::Run(other, "ROLLBACK");
    EXPECT_TRUE(db.HasRecord(1, 1));
}

TEST_F(OutsideBusy, CountThatCannotBeReadRefusesTheChangeOfAType)
{
    Lock("BEGIN EXCLUSIVE");
    CQelTable::SQelColumn column;
    ASSERT_EQ(db.TableGetColumn(1, 1, column), 10001u);
    column.type = CQelProperty::eString;
    EXPECT_EQ(db.TableModifyColumn(1, column), 17506u);
}

TEST_F(OutsideBusy, CommitThatMeetsAReaderLeavesEverythingAsItWas)
{
    sqlite3_stmt* reader = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(other, "SELECT oid FROM qeltpc", -1, &reader, nullptr), 0);
    ASSERT_EQ(sqlite3_step(reader), SQLITE_ROW);
    EXPECT_EQ(db.SetRecord(1, 1, {Data(1, Number(6))}), 17305u);
    EXPECT_EQ(Told().find("> "), std::string::npos);
    EXPECT_EQ(db.RemoveTable(1), 17305u);
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    sqlite3_finalize(reader);
    SQelPropColumnData data;
    EXPECT_EQ(db.GetColumn(1, 1, 1, data), 10001u);
    EXPECT_EQ(Show({data}), "1=5");
    EXPECT_EQ(db.SetRecord(1, 1, {Data(1, Number(6))}), 10001u);
}

TEST_F(OutsideBusy, FullDiskIsACodeAndNothingIsHalfWritten)
{
    outside::Run(sql.Handle(), "PRAGMA max_page_count=12");
    CQelProperty big;
    const std::string bytes(100000, 'x');
    big.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(1, Number(6)), Data(2, big)}, false), 17313u);
    const std::string told = Told();
    EXPECT_NE(told.find("E 17313\n"), std::string::npos) << told;
    EXPECT_EQ(told.find("> "), std::string::npos);
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT foid,coid FROM qeltpd"), "1|1");
    CQelTable table;
    table.Properties().name = std::wstring(100000, L'n');
    (void)db.AddTable(table);
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT count(*) FROM qeltpt"), "1");
    EXPECT_EQ(db.SetRecord(1, 1, {Data(1, Number(7))}), 10001u) << "and small changes go on";
}

TEST_F(OutsideBusy, FullDiskInsideTheHostsTransactionIsACode)
{
    outside::Run(sql.Handle(), "PRAGMA max_page_count=12; BEGIN");
    CQelProperty big;
    const std::string bytes(100000, 'x');
    big.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
    EXPECT_EQ(db.SetRecord(1, 2, {Data(2, big)}), 17313u);
    outside::Run(sql.Handle(), "ROLLBACK");
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT foid,coid FROM qeltpd"), "1|1");
}

TEST_F(OutsideBusy, DatabaseClosedUnderTheObjectAndOpenedAgainGoesOn)
{
    sql.Close();
    EXPECT_EQ(db.RemoveRecord(1, 1), 17500u);
    ASSERT_EQ(sql.Open(file.Path()), 0);
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    SQelPropColumnData data;
    EXPECT_EQ(db.GetColumn(1, 1, 1, data), 10001u);
    EXPECT_EQ(Show({data}), "1=5");
}

TEST_F(OutsideBusy, FileThatIsNoDatabaseIsACode)
{
    sql.Close();
    CDatabaseFile garbage;
    FILE* stream = std::fopen(garbage.Name().c_str(), "wb");
    ASSERT_NE(stream, nullptr);
    for (int i = 0; i < 4096; ++i)
        std::fputc('x', stream);
    std::fclose(stream);
    ASSERT_EQ(sql.Open(garbage.Path()), 0);
    EXPECT_EQ(db.Attach(false, nullptr), 17326u);
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    db.Close();
    sql.Close();
}

} // namespace
