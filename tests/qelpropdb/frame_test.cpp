// frame_test.cpp: life of the database object: construction, copies, closing, limits, names and messages.
#include "lamps.h"

#include <type_traits>

namespace {

using namespace qeltest;

using Frame = PropDB;
using FrameWithLamps = Lamps;

TEST_F(Frame, LimitsAreFiguresForTheHost)
{
    EXPECT_EQ(db.MaxTables(), 1000u);
    EXPECT_EQ(db.MaxColumns(), 255u);
    EXPECT_EQ(CQelPropDB(nullptr).MaxTables(), 1000u);
}

TEST_F(Frame, NamesFollowTheRuleOfBothDatabases)
{
    EXPECT_FALSE(db.IsValidName(L""));
    EXPECT_FALSE(db.IsValidName(L"a-b"));
    EXPECT_TRUE(db.IsValidName(L"Gr\u00f6\u00dfe"));
}

TEST_F(Frame, DatabaseIsHandedBack)
{
    const CQelPropDB& fixed = db;
    EXPECT_EQ(db.DBInstance(), &sql);
    EXPECT_EQ(fixed.DBInstance(), &sql);
    EXPECT_EQ(CQelPropDB(nullptr).DBInstance(), nullptr);
}

TEST_F(FrameWithLamps, TableExistsUnderItsExactNameAlone)
{
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_FALSE(db.TableExists(L"lamps"));
    EXPECT_FALSE(db.TableExists(L"Lamp"));
}

TEST_F(FrameWithLamps, TableExistsReadsNoSql)
{
    sql.Close();
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(FrameWithLamps, CloseEmptiesTheCatalogueAndKeepsTheDatabase)
{
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_EQ(notifier.Text(), "1(0,0)");
    EXPECT_EQ(log.Text(), "I2 + Closing Property Database\nI2 - Done\n");
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    EXPECT_TRUE(sql.IsOpen());
}

TEST_F(FrameWithLamps, ClosedObjectCanBeAttachedAgain)
{
    db.Close();
    Forget();
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(Dump(db), "Lamps\n");
}

TEST_F(FrameWithLamps, ClosingTwiceTellsTwiceThatTheDatabaseIsOpen)
{
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_EQ(notifier.Text(), "1(0,0) 1(0,0)");
}

TEST_F(Frame, CloseOfAClosedOrMissingDatabaseIsSilentSuccess)
{
    sql.Close();
    EXPECT_THAT(db.Close(), Succeeds());
    CQelPropDB none(nullptr);
    none.SetNotifyCallback(&CRecordingNotifier::Notify, 0);
    EXPECT_THAT(none.Close(), Succeeds());
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(FrameWithLamps, DestructorClosesTheObjectAlone)
{
    {
        CQelPropDB other(&sql);
        other.SetLogfile(&log);
        other.SetNotifyCallback(&CRecordingNotifier::Notify, 3);
    }
    EXPECT_EQ(notifier.Text(), "1(0,0;3)");
    EXPECT_EQ(log.Text(), "I2 + Closing Property Database\nI2 - Done\n");
    EXPECT_TRUE(sql.IsOpen());
}

TEST_F(FrameWithLamps, CopySharesDatabaseLogAndCallbackAndOwnsItsCatalogue)
{
    CQelPropDB copy(db);
    EXPECT_EQ(copy.DBInstance(), &sql);
    db.Close();
    Forget();
    EXPECT_EQ(Dump(copy), "Lamps\n");
    EXPECT_THAT(copy.RemoveTable(lamps), Succeeds());
    EXPECT_EQ(notifier.Text(), "4(1,0)");
    EXPECT_NE(log.Text().find("I3 + Removing table\n"), std::string::npos);
}

TEST_F(FrameWithLamps, AssignmentReplacesWhatTheObjectHeld)
{
    CQelPropDB other(nullptr);
    static_assert(std::is_same_v<decltype(other = db), CQelPropDB&>);
    other = db;
    EXPECT_EQ(other.DBInstance(), &sql);
    EXPECT_EQ(Dump(other), "Lamps\n");
    db = CQelPropDB(nullptr);
    EXPECT_EQ(db.DBInstance(), nullptr);
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    EXPECT_TRUE(other.TableExists(L"Lamps"));
}

TEST_F(FrameWithLamps, AssigningAnObjectToItselfChangesNothing)
{
    const CQelPropDB& same = db;
    db = same;
    EXPECT_EQ(Dump(db), "Lamps\n");
    EXPECT_EQ(db.DBInstance(), &sql);
}

TEST_F(Frame, OptimizeAndSelfTestTouchNothing)
{
    unsigned long errors = 77;
    CQelMemFile report(false, 16, 16);
    EXPECT_THAT(db.Optimize(L"/nowhere/at/all", nullptr, 0), Succeeds());
    EXPECT_THAT(db.SelfTest(&report, errors, nullptr, 0), Succeeds());
    EXPECT_THAT(db.SelfTest(nullptr, errors, nullptr, 0), Succeeds());
    EXPECT_EQ(errors, 77u);
    EXPECT_EQ(report.GetFileSize(), 0);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(FrameWithLamps, EveryChangeOfTheCatalogueIsRefusedWhileTheDatabaseIsClosed)
{
    sql.Close();
    CQelTable table(lamps);
    CQelTable::SQelColumn column = Column(L"Size");
    EXPECT_THAT(db.AddTable(table), Gives(17500));
    EXPECT_THAT(db.RemoveTable(lamps), Gives(17500));
    EXPECT_THAT(db.RenameTable(lamps, L"x"), Gives(17500));
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17500));
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Gives(17500));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(17500));
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"x"), Gives(17500));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 2), Gives(17500));
    EXPECT_THAT(db.CreateLookupIndexes(), Gives(17500));
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>(9, 17500));
    EXPECT_EQ(log.Text().find("- Done"), std::string::npos);
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(FrameWithLamps, EveryReadIsRefusedWhileTheDatabaseIsClosed)
{
    sql.Close();
    CQelTable table(lamps);
    CQelTable::SQelColumn column;
    TRecord record;
    SQelPropColumnData data;
    TOids oids = {5};
    unsigned int count = 9;
    EXPECT_THAT(db.GetTables(oids), Gives(17500));
    EXPECT_THAT(db.GetTable(table), Gives(17500));
    EXPECT_THAT(db.TableGetColumn(lamps, 1, column), Gives(17500));
    EXPECT_THAT(db.GetRecord(lamps, 1, record), Gives(17500));
    EXPECT_THAT(db.GetColumn(lamps, 1, 1, data), Gives(17500));
    EXPECT_THAT(db.GetRecordCount(lamps, count), Gives(17500));
    EXPECT_THAT(db.GetRecordOids(lamps, oids, nullptr), Gives(17500));
    EXPECT_FALSE(db.HasRecord(lamps, 1));
    EXPECT_TRUE(db.GetBulkRecords().empty());
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>(9, 17500));
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(oids, TOids{5});
}

TEST_F(FrameWithLamps, EveryChangeOfARecordIsRefusedWhileTheDatabaseIsClosed)
{
    sql.Close();
    unsigned long oid = 1;
    EXPECT_THAT(db.AddRecord(lamps, oid, {}, true), Gives(17500));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Gives(17500));
    EXPECT_THAT(db.SetRecord(lamps, 1, {}), Gives(17500));
    EXPECT_EQ(log.Text(), "I4 + Adding record\nE 17500\nI4 + Removing Record\nE 17500\n"
                          "I4 + Setting record\nI2 17500\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(FrameWithLamps, EveryChangeIsRefusedWhileTheDatabaseIsReadOnly)
{
    CTemporaryFolder folder;
    sql.Open(folder.Path(L"lamps.db"));
    db.Attach(true, nullptr);
    sql.Open(folder.Path(L"lamps.db"), true);
    db.Attach(false, nullptr);
    Forget();
    CQelTable table = TableOf(L"x");
    CQelTable::SQelColumn column = Column(L"Size");
    unsigned long oid = 1;
    EXPECT_THAT(db.AddTable(table), Gives(17501));
    EXPECT_THAT(db.RemoveTable(lamps), Gives(17501));
    EXPECT_THAT(db.RenameTable(lamps, L"x"), Gives(17501));
    EXPECT_THAT(db.TableAddColumn(lamps, column), Gives(17501));
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Gives(17501));
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Gives(17501));
    EXPECT_THAT(db.RenameColumn(lamps, 1, L"x"), Gives(17501));
    EXPECT_THAT(db.TableSwapDisplayOrder(lamps, 1, 2), Gives(17501));
    EXPECT_THAT(db.CreateLookupIndexes(), Gives(17501));
    EXPECT_THAT(db.AddRecord(lamps, oid, {}, true), Gives(17501));
    EXPECT_THAT(db.SetRecord(lamps, 1, {}), Gives(17501));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Gives(17501));
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>(12, 17501));
    EXPECT_EQ(notifier.Text(), "");
}

CQelPropDB* g_calledBack = nullptr;
std::string g_seen;

bool QEL_STDCALL ReadBack(EPropDBMessage message, unsigned long table, unsigned long record, unsigned int)
{
    TRecord values;
    if (message == ePropDBRecordAdded && g_calledBack->GetRecord(table, record, values) == qel::kSuccess)
        g_seen += Show(values.at(0).value) + " ";
    g_seen += Dump(*g_calledBack);
    return false;
}

TEST_F(FrameWithLamps, CallbackMayReadAndItsAnswerChangesNothing)
{
    g_calledBack = &db;
    g_seen.clear();
    db.SetNotifyCallback(&ReadBack, 0);
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(40))}, false), Succeeds());
    EXPECT_EQ(g_seen, "40 Lamps\n  1 Power=40\n");
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40\n");
    db.SetNotifyCallback(nullptr, 0);
}

bool QEL_STDCALL AddAnother(EPropDBMessage message, unsigned long table, unsigned long record, unsigned int)
{
    unsigned long oid = 0;
    if (message == ePropDBRecordAdded && record < 3)
        g_calledBack->AddRecord(table, oid, {Value(1, Int(static_cast<int>(record)))}, false);
    return true;
}

TEST_F(FrameWithLamps, CallbackMayChangeTheDatabase)
{
    g_calledBack = &db;
    db.SetNotifyCallback(&AddAnother, 0);
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(40))}, false), Succeeds());
    EXPECT_EQ(oid, 1u);
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40\n  2 Power=1\n  3 Power=2\n");
    db.SetNotifyCallback(nullptr, 0);
}

bool QEL_STDCALL Throw(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    throw 5;
}

TEST_F(FrameWithLamps, CallbackThatThrowsIsACodeAndTheChangeStands)
{
    db.SetNotifyCallback(&Throw, 0);
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(40))}, false), Gives(10002));
    EXPECT_EQ(log.Text(), "I4 + Adding record\nI4 - Done\nE 10002 ...\n");
    EXPECT_EQ(oid, 1u);
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40\n");
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_THAT(db.Attach(false, nullptr), Gives(17201));
}

TEST_F(FrameWithLamps, LogAndCallbackCanBeTakenAway)
{
    db.SetLogfile(nullptr);
    db.SetNotifyCallback(nullptr, 0);
    EXPECT_THAT(db.RenameTable(lamps, L"Bulbs"), Succeeds());
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(FrameWithLamps, EntriesNameTheSource)
{
    db.RenameTable(lamps, L"Bulbs");
    ASSERT_FALSE(log.Entries().empty());
    for (const CDovLogfile::SEntry& entry : log.Entries()) {
        EXPECT_EQ(entry.file, L".\\qelpropdb");
        EXPECT_GT(entry.line, 0);
    }
}

// What hosts reach only by deriving.
class COpened : public CQelPropDB
{
public:
    using CQelPropDB::CQelPropDB;
    using CQelPropDB::DoNotify;
};

bool QEL_STDCALL Refuse(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    return false;
}

TEST_F(Frame, NotifyingGivesTheAnswerOfTheCallback)
{
    COpened opened(&sql);
    EXPECT_TRUE(opened.DoNotify(ePropDBOpened, 1, 2));
    opened.SetNotifyCallback(&Refuse, 0);
    EXPECT_FALSE(opened.DoNotify(ePropDBOpened, 1, 2));
    opened.SetNotifyCallback(nullptr, 0);
}

} // namespace
