// propdb_frame_test.cpp: attaching, closing, names, limits and copies, as a host sees them.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideFrame : public CPropertyHost
{};

TEST_F(OutsideFrame, CreatingMakesExactlyTheThreeTables)
{
    EXPECT_EQ(
        Ask("SELECT sql FROM sqlite_master WHERE type='table' ORDER BY name"),
        "CREATE TABLE qeltpc (oid integer PRIMARY KEY,toid integer,ctype integer,cname Text,cdesc Text,"
        "crtt integer,crtc integer,cdef blob,cdisph integer,cformat text,ccur text,cdo integer) "
        "CREATE TABLE qeltpd (oid integer PRIMARY KEY,foid integer,toid integer,coid integer,data blob) "
        "CREATE TABLE qeltpt (oid integer PRIMARY KEY,tname Text,tdesc Text)");
}

TEST_F(OutsideFrame, CreatingMakesExactlyTheTwoIndexes)
{
    EXPECT_EQ(Ask("SELECT sql FROM sqlite_master WHERE type='index' ORDER BY name"),
              "CREATE INDEX idx_qeltpd_foid ON qeltpd(foid) "
              "CREATE UNIQUE INDEX idx_qeltpd_foidtoidcoid ON qeltpd(foid,toid,coid)");
}

TEST_F(OutsideFrame, CreatingDropsEveryRowAndNotifiesOpened)
{
    const unsigned long lamps = Make(L"Lamps", {Column(L"Power")});
    Put(lamps, 1, 1, Number(40));
    EXPECT_EQ(db.Attach(true, nullptr), 10001u);
    EXPECT_EQ(Ask("SELECT (SELECT count(*) FROM qeltpt),(SELECT count(*) FROM qeltpc),(SELECT count(*) FROM "
                  "qeltpd)"),
              "0|0|0");
    EXPECT_NE(Told().find("> 0(0,0)\n"), std::string::npos);
}

TEST_F(OutsideFrame, CreatingLeavesTheOldCatalogueInMemory)
{
    const unsigned long lamps = Make(L"Lamps");
    EXPECT_EQ(db.Attach(true, nullptr), 10001u);
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.GetTables(oids), 10001u);
    EXPECT_EQ(Show(oids), std::to_string(lamps));
}

TEST_F(OutsideFrame, OpeningAnEmptyDatabaseGivesAnEmptyCatalogueAndNotifies)
{
    CQelSQLite empty;
    ASSERT_EQ(empty.Open(L":memory:"), 0);
    EXPECT_EQ(db.Attach(false, &empty), 10001u);
    EXPECT_EQ(db.DBInstance(), &empty);
    const std::string told = Told();
    EXPECT_NE(told.find("I3 + Loading Tables\nI3 - Done\n"), std::string::npos) << told;
    EXPECT_NE(told.find("> 0(0,0)\n"), std::string::npos) << told;
    EXPECT_EQ(told.find("E "), std::string::npos) << told;
    std::vector<unsigned long> oids{9};
    EXPECT_EQ(db.GetTables(oids), 10001u);
    EXPECT_TRUE(oids.empty());
    db.Attach(false, &sql);
}

TEST_F(OutsideFrame, AttachingWithoutADatabaseKeepsTheOneGivenBefore)
{
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(db.DBInstance(), &sql);
    const CQelPropDB& constant = db;
    EXPECT_EQ(constant.DBInstance(), &sql);
}

TEST_F(OutsideFrame, AttachCanSupplyTheDatabaseLater)
{
    CQelPropDB late(nullptr);
    EXPECT_EQ(late.DBInstance(), nullptr);
    EXPECT_EQ(late.Attach(false, &sql), 10001u);
    EXPECT_EQ(late.DBInstance(), &sql);
}

TEST_F(OutsideFrame, AttachingWithoutAnyDatabaseNeitherCrashesNorThrows)
{
    CQelPropDB nowhere(nullptr);
    nowhere.SetNotifyCallback(Hear, 0);
    EXPECT_EQ(nowhere.Attach(true, nullptr), 17201u);
    EXPECT_EQ(Told(), "");
    (void)nowhere.Attach(false, nullptr);
}

TEST_F(OutsideFrame, CreatingWhereNothingMayBeWrittenGives17201WithoutMessage)
{
    ASSERT_EQ(Run("PRAGMA query_only=1"), 0);
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    EXPECT_EQ(Told().find("> "), std::string::npos);
    EXPECT_EQ(Run("PRAGMA query_only=0"), 0);
}

TEST_F(OutsideFrame, FailingDropIsLoggedToTheConnectionsOwnLogWithItsContext)
{
    CHostLog own("own ");
    sql.SetLogfile(&own);
    Run("PRAGMA query_only=1");
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    sql.SetLogfile(nullptr);
    std::string coded;
    for (const CDovLogfile::SEntry& entry : own.entries)
        if (Narrow(entry.file) == ".\\qelpropdb")
            coded += std::to_string(entry.code) +
                     (Narrow(entry.text).find("CT") != std::string::npos ? " CT;" : ";");
    EXPECT_EQ(coded, "17308 CT;17201;");
}

TEST_F(OutsideFrame, FailingIndexIsLoggedWithItsOwnContext)
{
    CHostLog own("own ");
    Make(L"Lamps");
    Run("DROP TABLE qeltpd; CREATE TABLE other (a); CREATE INDEX idx_qeltpd_foid ON other(a)");
    sql.SetLogfile(&own);
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    sql.SetLogfile(nullptr);
    bool context = false;
    for (const CDovLogfile::SEntry& entry : own.entries)
        context = context || (entry.code == 17301 && Narrow(entry.text).find("CI") != std::string::npos);
    EXPECT_TRUE(context);
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lamps") << "nothing was dropped either";
}

TEST_F(OutsideFrame, FailedCreationLeavesTheCatalogueInMemoryAlone)
{
    Make(L"Lamps");
    Run("PRAGMA query_only=1");
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    Run("PRAGMA query_only=0");
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "Lamps");
}

TEST_F(OutsideFrame, CreatingOverAViewOfThatNameGives17201)
{
    Run("DROP TABLE qeltpt; CREATE VIEW qeltpt AS SELECT 1");
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    EXPECT_EQ(Told().find("> 0"), std::string::npos);
}

TEST_F(OutsideFrame, AttachingTwiceLoadsTheSameCatalogue)
{
    Make(L"Lamps", {Column(L"Power")});
    EXPECT_EQ(db.Attach(false, &sql), 10001u);
    EXPECT_EQ(db.Attach(false, &sql), 10001u);
    EXPECT_EQ(Columns(1), "1:Power@0");
}

TEST_F(OutsideFrame, ClosingTellsMessageOneBetweenItsTwoLines)
{
    EXPECT_EQ(db.Close(), 10001u);
    EXPECT_EQ(Told(), "I2 + Closing Property Database\n> 1(0,0)\nI2 - Done\n");
}

TEST_F(OutsideFrame, ClosingTwiceTellsTwiceWhileTheDatabaseIsOpen)
{
    EXPECT_EQ(db.Close(), 10001u);
    Told();
    EXPECT_EQ(db.Close(), 10001u);
    EXPECT_EQ(Told(), "I2 + Closing Property Database\n> 1(0,0)\nI2 - Done\n");
    EXPECT_TRUE(sql.IsOpen());
}

TEST_F(OutsideFrame, ClosingEmptiesTheCatalogueAndAttachReloadsIt)
{
    Make(L"Lamps");
    db.Close();
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideFrame, ClosingWithoutAnOpenDatabaseTellsNobody)
{
    sql.Close();
    EXPECT_EQ(db.Close(), 10001u);
    EXPECT_EQ(Told(), "I2 + Closing Property Database\nI2 - Done\n");
    CQelPropDB nowhere(nullptr);
    nowhere.SetNotifyCallback(Hear, 0);
    EXPECT_EQ(nowhere.Close(), 10001u);
    EXPECT_EQ(Told(), "");
}

TEST_F(OutsideFrame, EndOfTheObjectClosesItAndLeavesTheDatabaseOpen)
{
    {
        CQelPropDB second(&sql);
        second.SetLogfile(&log);
        second.SetNotifyCallback(Hear, 7);
    }
    EXPECT_EQ(Told(), "I2 + Closing Property Database\n> 1(0,0;7)\nI2 - Done\n");
    EXPECT_TRUE(sql.IsOpen());
}

TEST_F(OutsideFrame, EveryEntryCarriesTheSourceFileAndALine)
{
    const unsigned long lamps = Make(L"Lamps", {Column(L"Power")});
    Make(L"Bulk", {}, 1000);
    Put(lamps, 1, 1, Number(1));
    db.GetBulkRecords();
    db.Close();
    ASSERT_GT(log.entries.size(), 5u);
    for (const CDovLogfile::SEntry& entry : log.entries) {
        EXPECT_EQ(Narrow(entry.file), ".\\qelpropdb") << Narrow(entry.text);
        EXPECT_GT(entry.line, 0) << Narrow(entry.text);
    }
}

TEST_F(OutsideFrame, WithoutALogNothingIsWritten)
{
    db.SetLogfile(nullptr);
    CQelTable table;
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(Told(), "> 2(1,0)\n");
}

TEST_F(OutsideFrame, CallbackGetsTheUserValueAndItsAnswerIsGivenBack)
{
    db.SetNotifyCallback(Hear, 42);
    EXPECT_TRUE(db.DoNotify(ePropDBRecordSet, 3, 4));
    CallbackAnswer() = false;
    EXPECT_FALSE(db.DoNotify(ePropDBOpened, 4294967295ul, 0));
    EXPECT_EQ(Told(), "> 6(3,4;42)\n> 0(4294967295,0;42)\n");
    db.SetNotifyCallback(nullptr, 42);
    EXPECT_TRUE(db.DoNotify(ePropDBRecordSet, 3, 4));
    EXPECT_EQ(Told(), "");
}

TEST_F(OutsideFrame, CallbackThatAnswersFalseChangesNothing)
{
    CallbackAnswer() = false;
    const unsigned long lamps = Make(L"Lamps", {Column(L"Power")});
    Put(lamps, 1, 1, Number(40));
    EXPECT_EQ(Record(lamps, 1), "1=40");
}

TEST_F(OutsideFrame, LimitsAreFiguresWhateverTheDatabase)
{
    const CQelPropDB nowhere(nullptr);
    EXPECT_EQ(nowhere.MaxTables(), 1000u);
    EXPECT_EQ(nowhere.MaxColumns(), 255u);
    EXPECT_EQ(db.MaxTables(), 1000u);
    EXPECT_EQ(db.MaxColumns(), 255u);
}

TEST_F(OutsideFrame, ThousandAndFirstTableIsAdded)
{
    Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1000) "
        "INSERT INTO qeltpt SELECT i,'T'||i,'' FROM n");
    db.Attach(false, nullptr);
    EXPECT_EQ(Make(L"Last"), 1001ul);
    EXPECT_TRUE(db.TableExists(L"Last"));
}

TEST_F(OutsideFrame, EachOfTwentyCharactersMakesANameInvalid)
{
    for (const wchar_t refused : std::wstring(L" #%()*,-./:;<>?@[\\]|"))
        for (const std::wstring& name : {std::wstring(1, refused), std::wstring(L"a") + refused + L"b"})
            EXPECT_FALSE(db.IsValidName(name)) << Narrow(name);
    EXPECT_FALSE(db.IsValidName(L""));
}

TEST_F(OutsideFrame, EveryOtherCharacterMayStandInAName)
{
    const std::wstring refused = L" #%()*,-./:;<>?@[\\]|";
    for (wchar_t character = 1; character < 0x3000; ++character) {
        const bool valid = refused.find(character) == std::wstring::npos;
        EXPECT_EQ(db.IsValidName(std::wstring(1, character)), valid) << static_cast<int>(character);
    }
    EXPECT_TRUE(db.IsValidName(L"1st"));
    EXPECT_TRUE(db.IsValidName(std::wstring(L"a\0b", 3)));
    EXPECT_TRUE(db.IsValidName(std::wstring(10000, L'n')));
    EXPECT_FALSE(db.IsValidName(std::wstring(10000, L'n') + L"-"));
}

TEST_F(OutsideFrame, TableExistsTellsCasesApart)
{
    Make(L"abc");
    EXPECT_TRUE(db.TableExists(L"abc"));
    EXPECT_FALSE(db.TableExists(L"Abc"));
    EXPECT_FALSE(db.TableExists(L""));
}

void QEL_STDCALL MustNotBeCalled(CDovBlobDB::ECBMessage, unsigned int, unsigned int, unsigned int,
                                 const std::wstring*)
{
    ADD_FAILURE() << "progress was told";
}

TEST_F(OutsideFrame, OptimizeAndSelfTestOnlyClearTheBulkCache)
{
    Make(L"Bulk", {Column(L"Power")}, 1000);
    Put(1000, 5, 1, Number(40));
    EXPECT_EQ(db.GetBulkRecords().size(), 1u);
    EXPECT_EQ(db.Optimize(L"/nowhere/at/all", MustNotBeCalled, 1), 10001u);
    Run("DELETE FROM qeltpd");
    EXPECT_EQ(db.GetBulkRecords().count(5), 0u);
    CQelMemFile report(false, 16, 16);
    unsigned long errors = 77;
    EXPECT_EQ(db.SelfTest(&report, errors, MustNotBeCalled, 1), 10001u);
    EXPECT_EQ(errors, 77ul);
    EXPECT_EQ(report.GetFileSize(), 0);
}

TEST_F(OutsideFrame, CopyHasACatalogueOfItsOwnAndSharesDatabaseLogAndCallback)
{
    Make(L"Lamps");
    {
        CQelPropDB copy(db);
        EXPECT_EQ(copy.DBInstance(), &sql);
        db.Close();
        EXPECT_TRUE(copy.TableExists(L"Lamps"));
        Told();
    }
    EXPECT_EQ(Told(), "I2 + Closing Property Database\n> 1(0,0)\nI2 - Done\n");
}

TEST_F(OutsideFrame, AssignmentCopiesDeeplyAndToItselfChangesNothing)
{
    Make(L"Bulk", {Column(L"Power")}, 1000);
    Put(1000, 5, 1, Number(40));
    db.GetBulkRecords();
    CQelPropDB copy(nullptr);
    copy = db;
    Run("DELETE FROM qeltpd");
    EXPECT_EQ(copy.GetBulkRecords().count(5), 1u) << "the cache was copied, filled as it was";
    const CQelPropDB& same = copy;
    copy = same;
    EXPECT_TRUE(copy.TableExists(L"Bulk"));
    EXPECT_EQ(copy.GetBulkRecords().count(5), 1u);
}

} // namespace
