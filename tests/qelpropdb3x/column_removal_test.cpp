// column_removal_test.cpp: the removal of a column under the "#bak" copy of the store.
#include "support/hex.h"
#include "support/legacy_database.h"

#include <functional>

using namespace qeltest;

namespace {

const std::string kReopened = "I3 + Loading Tables\nI2 Loading table schema\nI3 - Done\n";

class LegacyColumnRemoval : public CLegacyTest
{
protected:
    LegacyColumnRemoval()
    {
        AddTable(L"Lamps",
                 {Column(L"Power", CQelProperty::eInt, 0), Column(L"Colour", CQelProperty::eString, 1),
                  Column(L"Socket", CQelProperty::eString, 2)});
    }
    void AddLamps()
    {
        Add(lamps, {Int(40), Text(L"red"), Text(L"E14")});
        Add(lamps, {Int(60), Text(L"blue"), Text(L"E27")});
    }
    const unsigned long lamps = 1000;
    const std::string before = "1000 Lamps: 1 Power@0 2 Colour@1 3 Socket@2\n"
                               "  2: 1=40 2='red' 3='E14'\n"
                               "  3: 1=60 2='blue' 3='E27'\n";
};

// Does something the moment a line is logged, by whichever part.
class CInterferingLog : public CDovLogfile
{
public:
    CInterferingLog(std::wstring line, std::function<void()> work)
        : m_line(std::move(line)), m_work(std::move(work))
    {
        SetLevel(100);
    }
    bool Write(const SEntry& entry) override
    {
        if (!m_done && entry.text.compare(0, m_line.size(), m_line) == 0) {
            m_done = true;
            m_work();
        }
        return true;
    }

private:
    std::wstring m_line;
    std::function<void()> m_work;
    bool m_done = false;
};

} // namespace

TEST_F(LegacyColumnRemoval, MiddleColumnTakesItsSlotFromEveryRecord)
{
    AddLamps();
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    const std::string after = "1000 Lamps: 1 Power@0 3 Socket@1\n"
                              "  2: 1=40 3='E14'\n"
                              "  3: 1=60 3='E27'\n";
    EXPECT_EQ(Dump(db), after);
    EXPECT_EQ(StoredHex(db, 1000, 2), "02000000" + HexOf(Int(40)) + HexOf(Text(L"E14")));
    Reopen();
    EXPECT_EQ(Dump(db), after);
    EXPECT_EQ(folder.Names(), "legacy.store");
}

TEST_F(LegacyColumnRemoval, TellsItsSteps)
{
    AddLamps();
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Removing Column\n" + kReopened +
                              "I3 Updating existing table\n"
                              "I4 + Getting record\nI4 - Done\n"
                              "I4 + Getting record\nI4 - Done\n"
                              "I3 + Storing Tables\nI3 - Done\n" +
                              kReopened + "I3 - Done\n");
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
}

TEST_F(LegacyColumnRemoval, EmptyTableOnlyChangesItsDefinition)
{
    ASSERT_THAT(db.TableRemoveColumn(lamps, 1), Succeeds());
    EXPECT_EQ(log.Take(), "I3 + Removing Column\n" + kReopened +
                              "I3 Table is empty\n"
                              "I3 + Storing Tables\nI3 - Done\n" +
                              kReopened + "I3 - Done\n");
    EXPECT_EQ(Show(db), "1000 Lamps: 2 Colour@0 3 Socket@1\n");
    EXPECT_EQ(notifier.Text(), "3(1000,0)");
    EXPECT_EQ(folder.Names().find("#bak"), std::string::npos);
}

TEST_F(LegacyColumnRemoval, LastColumnTakesTheRecordsWithIt)
{
    AddLamps();
    ASSERT_THAT(db.TableRemoveColumn(lamps, 1), Succeeds());
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    ForgetAll();
    ASSERT_THAT(db.TableRemoveColumn(lamps, 3), Succeeds());
    EXPECT_EQ(Dump(db), "1000 Lamps\n");
    EXPECT_EQ(notifier.Text(), "7(1000,2) 7(1000,3) 3(1000,0)");
    EXPECT_NE(log.Text().find(kReopened + "I4 + Removing Record\nI4 - Done\n"
                                          "I4 + Removing Record\nI4 - Done\n"
                                          "I3 - Done\n"),
              std::string::npos);
    EXPECT_EQ(Add(lamps, {}), 2U);
}

TEST_F(LegacyColumnRemoval, DisplayOrderOfTheOthersStays)
{
    AddLamps();
    ASSERT_THAT(db.TableSwapDisplayOrder(lamps, 1, 3), Succeeds());
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps: 3 Socket@1 1 Power@0\n");
    EXPECT_EQ(Record(lamps, 2), "1=40 3='E14'");
}

TEST_F(LegacyColumnRemoval, ShortRecordGetsTheNewNumberOfSlots)
{
    StoreBytes(1000, 9, BytesOf("01000000" + HexOf(Int(25))));
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    EXPECT_EQ(StoredHex(db, 1000, 9), "02000000" + HexOf(Int(25)) + HexOf(CQelProperty()));
}

TEST_F(LegacyColumnRemoval, ColumnsThatShareASlotKeepItsValue)
{
    const unsigned long odd =
        AddTable(L"Odd", {Column(L"A", CQelProperty::eInt, 0), Column(L"B", CQelProperty::eInt, 0),
                          Column(L"C", CQelProperty::eInt, 1), Column(L"D", CQelProperty::eInt, 77)});
    Add(odd, {Int(5), Int(6)});
    ASSERT_THAT(db.TableRemoveColumn(odd, 1), Succeeds());
    // A's slot is gone, and B still names it: it now holds what was C's, as C's own new slot does.
    EXPECT_EQ(Show(db), before.substr(0, 44) + "1001 Odd: 2 B@0 3 C@0 4 D@76\n");
    SQelPropColumnData value;
    ASSERT_THAT(db.GetColumn(odd, 2, 3, value), Succeeds());
    EXPECT_EQ(Show(TRecord{value}), "3=6");
}

TEST_F(LegacyColumnRemoval, UnknownTableOrColumnIsRefused)
{
    AddLamps();
    EXPECT_THAT(db.TableRemoveColumn(77, 1), Gives(10020));
    EXPECT_EQ(log.Take(), "I3 + Removing Column\n" + kReopened + "I2 10020\nI3 - Done\n");
    EXPECT_THAT(db.TableRemoveColumn(lamps, 9), Gives(10020));
    EXPECT_THAT(db.TableRemoveColumn(lamps, ~0UL), Gives(10020));
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Dump(db), before);
    EXPECT_EQ(folder.Names(), "legacy.store");
}

TEST_F(LegacyColumnRemoval, ColumnThatAReferenceColumnPointsToStays)
{
    AddLamps();
    SLegacyColumn reference = Column(L"Ref", CQelProperty::eReference);
    reference.refTable = lamps;
    reference.refColumn = 2;
    AddTable(L"Rooms", {reference});
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(17509));
    EXPECT_EQ(log.Take(), "I3 + Removing Column\n" + kReopened + "I2 17509\nI3 - Done\n");
    EXPECT_EQ(Dump(db), before + "1001 Rooms: 1 Ref@0\n");
    EXPECT_EQ(folder.Names(), "legacy.store");
    EXPECT_THAT(db.TableRemoveColumn(lamps, 1), Succeeds()); // another column of that table
}

TEST_F(LegacyColumnRemoval, ColumnThatRefersToItselfStays)
{
    SLegacyColumn reference = Column(L"Ref", CQelProperty::eReference);
    reference.refTable = 1001;
    reference.refColumn = 1;
    AddTable(L"People", {reference});
    EXPECT_THAT(db.TableRemoveColumn(1001, 1), Gives(17509));
}

TEST_F(LegacyColumnRemoval, CopyThatCannotBeMadeChangesNothing)
{
    AddLamps();
    std::filesystem::create_directories(folder.File(L"legacy.store#bak") / "taken");
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(10210));
    EXPECT_EQ(log.Take(), "I3 + Removing Column\n"
                          "E Failed to create backup copy of database!\n" +
                              kReopened + "E 10210\nI3 - Done\n");
    EXPECT_EQ(Dump(db), before);
    EXPECT_TRUE(std::filesystem::exists(folder.File(L"legacy.store#bak") / "taken"));
}

TEST_F(LegacyColumnRemoval, CopyThatSomeoneLeftIsReplaced)
{
    AddLamps();
    WriteFile(folder.File(L"legacy.store#bak"), "left by another");
    ASSERT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    EXPECT_EQ(folder.Names().find("#bak"), std::string::npos);
}

TEST_F(LegacyColumnRemoval, HostsOpenBatchIsRefusedAndKept)
{
    AddLamps();
    ASSERT_THAT(db.BlobDB().BeginBatch(), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 9, Values({Int(9)})), Succeeds());
    log.Forget();
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(17201));
    EXPECT_EQ(log.Take(), "I3 + Removing Column\nE 17201\nI3 - Done\n");
    EXPECT_THAT(db.BlobDB().CommitBatch(), Succeeds());
    EXPECT_EQ(Dump(db), before + "  9: 1=9 2=null 3=null\n");
}

TEST_F(LegacyColumnRemoval, DamagedRecordHalfWayBringsTheCopyBack)
{
    AddLamps();
    StoreBytes(1000, 4, "\3");
    ASSERT_THAT(db.SetRecord(lamps, 5, Values({Int(5)})), Succeeds());
    ForgetAll();
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(10011));
    const std::string lines = log.Take();
    EXPECT_NE(lines.find("I3 - Done\nE Restoring backup copy of database\n" + kReopened), std::string::npos);
    EXPECT_EQ(lines.substr(lines.size() - kReopened.size()), kReopened);
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Dump(db), before + "  4: code 10011\n  5: 1=5 2=null 3=null\n");
    EXPECT_EQ(folder.Names(), "legacy.store");
    ASSERT_THAT(db.RemoveRecord(lamps, 4), Succeeds());
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
}

TEST_F(LegacyColumnRemoval, RestoringListsTheIdsAnew)
{
    AddLamps();
    unsigned long ten = 10;
    ASSERT_THAT(db.AddRecord(lamps, ten, {}, true), Succeeds());
    StoreBytes(1000, 4, "\3");
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(10011));
    EXPECT_EQ(Add(lamps, {}), 5U);
}

TEST_F(LegacyColumnRemoval, MissingCopyLeavesTheStoreAsTheBatchDid)
{
    AddLamps();
    StoreBytes(1000, 4, "\3");
    CInterferingLog interfering(L"Updating existing table",
                                [&] { std::filesystem::remove(folder.File(L"legacy.store#bak")); });
    db.SetLogfile(&interfering);
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(10011));
    db.SetLogfile(&log);
    EXPECT_EQ(Dump(db), before + "  4: code 10011\n");
    EXPECT_EQ(folder.Names(), "legacy.store");
}

TEST_F(LegacyColumnRemoval, StoreThatVanishesWhileClosedLeavesTheDatabaseClosed)
{
    AddLamps();
    db.Close();
    CInterferingLog interfering(L"Store closed: ",
                                [&] { std::filesystem::remove(folder.File(L"legacy.store")); });
    db.SetLogfile(&interfering);
    ASSERT_THAT(db.Open(path, false), Succeeds());
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(10210));
    EXPECT_FALSE(db.BlobDB().IsOpen());
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Gives(17500));
    db.SetLogfile(&log);
    EXPECT_EQ(folder.Names(), "");
}

namespace {

CLegacyDatabase* closing = nullptr;

bool QEL_STDCALL CloseWhenChanged(EPropDBMessage message, unsigned long, unsigned long, unsigned int)
{
    return message == ePropDBTableChanged && closing->Close() == qel::kSuccess;
}

} // namespace

TEST_F(LegacyColumnRemoval, CallbackMayCloseTheDatabase)
{
    AddLamps();
    closing = &db;
    db.SetNotifyCallback(CloseWhenChanged, 0);
    EXPECT_THAT(db.TableRemoveColumn(lamps, 2), Succeeds());
    db.SetNotifyCallback(nullptr, 0);
    EXPECT_EQ(folder.Names(), "legacy.store");
    Reopen();
    EXPECT_EQ(Record(lamps, 2), "1=40 3='E14'");
}
