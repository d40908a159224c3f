// frame_test.cpp: opening, closing and copying a legacy database, its limits, names and messages.
#include "support/allocations.h"
#include "support/hex.h"
#include "support/legacy_database.h"

#include <climits>
#include <filesystem>
#include <new>

using namespace qeltest;

namespace {

class LegacyFrame : public CLegacyTest
{};

bool QEL_STDCALL AnswerNo(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    return false;
}

bool QEL_STDCALL Throw(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    throw 1;
}

} // namespace

TEST_F(LegacyFrame, CreateWritesTheEmptySchemaTwice)
{
    EXPECT_EQ(StoredHex(db, 2, 1, "2 4 4"), "0100 00000000 06729e7a");
    EXPECT_EQ(StoredHex(db, 3, 1, "2 4 4"), "0100 00000000 06729e7a");
}

TEST_F(LegacyFrame, CreateTellsItsSteps)
{
    ASSERT_THAT(db.Create(folder.Path(L"second")), Succeeds());
    EXPECT_EQ(log.Take(), "I2 + Create Property Database\n"
                          "I2 + Closing Property Database\n"
                          "I2 - Done\n"
                          "I3 + Storing Tables\n"
                          "I3 - Done\n"
                          "I2 - Done\n");
    EXPECT_EQ(notifier.Text(), "1(0,0) 0(0,0)");
}

TEST_F(LegacyFrame, CreateReplacesAStore)
{
    AddTable(L"Old");
    ASSERT_THAT(db.Create(path), Succeeds());
    EXPECT_EQ(Show(db), "");
}

TEST_F(LegacyFrame, CreateThatFailsGivesTheCodeOfWritingTheSchema)
{
    EXPECT_THAT(db.Create(folder.Path(L"missing/folder/store")), Gives(17500));
    EXPECT_FALSE(db.BlobDB().IsOpen());
    EXPECT_EQ(notifier.Text(), "1(0,0) 0(0,0)");
    const std::vector<unsigned int> errors = log.ErrorCodes();
    ASSERT_EQ(errors.size(), 5U); // the store's own; both records and their result; this operation's
    EXPECT_NE(errors[0], 17500U);
    EXPECT_EQ(errors[4], 17500U);
}

TEST_F(LegacyFrame, CreateNeverReplacesAFileThatIsNoStore)
{
    WriteFile(folder.File(L"letter.txt"), "dear host");
    EXPECT_THAT(db.Create(folder.Path(L"letter.txt")), Gives(17500));
    EXPECT_EQ(log.ErrorCodes()[0], 10013U);
    EXPECT_EQ(ReadFile(folder.File(L"letter.txt")), "dear host");
}

TEST_F(LegacyFrame, OpenTellsItsSteps)
{
    db.Close();
    ForgetAll();
    ASSERT_THAT(db.Open(path, false), Succeeds());
    EXPECT_EQ(log.Take(), "I2 + Open Property Database\n"
                          "I2 + Closing Property Database\n"
                          "I2 - Done\n"
                          "I3 + Loading Tables\n"
                          "I2 Loading table schema\n"
                          "I3 - Done\n"
                          "I2 - Done\n");
    EXPECT_EQ(notifier.Text(), "0(0,0)");
}

TEST_F(LegacyFrame, OpenOfAMissingFileGivesTheCodeOfLoadingTheSchema)
{
    EXPECT_THAT(db.Open(folder.Path(L"missing"), false), Gives(17500));
    EXPECT_EQ(notifier.Text(), "1(0,0) 0(0,0)");
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{10014, 17500, 17500}));
}

TEST_F(LegacyFrame, OpenSwitchesStores)
{
    AddTable(L"Lamps");
    ASSERT_THAT(db.Create(folder.Path(L"second")), Succeeds());
    EXPECT_EQ(Show(db), "");
    ASSERT_THAT(db.Open(path, false), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps\n");
}

TEST_F(LegacyFrame, ReadOnlyIsHandedToTheStore)
{
    Reopen(true);
    EXPECT_TRUE(db.BlobDB().IsReadOnly());
    CQelTable3X table;
    table.Properties().name = L"Lamps";
    EXPECT_THAT(db.AddTable(table), Gives(17501));
    EXPECT_EQ(log.Take(), "I3 + Adding table\nE 17501\nI3 - Done\n");
}

TEST_F(LegacyFrame, CloseEmptiesTheCatalogueAndTellsTheHost)
{
    AddTable(L"Lamps");
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    EXPECT_FALSE(db.BlobDB().IsOpen());
    EXPECT_EQ(log.Take(), "I2 + Closing Property Database\nI2 - Done\n");
    EXPECT_EQ(notifier.Text(), "1(0,0)");
}

TEST_F(LegacyFrame, CloseThatFailsIsToldTwiceAndClosesAllTheSame)
{
    std::filesystem::create_directories(folder.File(L"legacy.store-shm/in the way"));
    EXPECT_THAT(db.Close(), Gives(17310));
    EXPECT_FALSE(db.BlobDB().IsOpen());
    EXPECT_EQ(log.Take(), "I2 + Closing Property Database\nE 17310\nE 17310\nI2 - Done\n");
    EXPECT_EQ(notifier.Text(), "1(0,0)");
}

TEST_F(LegacyFrame, CloseOfWhatWasNeverOpenedIsSuccessWithoutAMessage)
{
    CLegacyDatabase other;
    other.SetNotifyCallback(CRecordingNotifier::Notify, 0);
    EXPECT_THAT(other.Close(), Succeeds());
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LegacyFrame, DestructorClosesTheStore)
{
    {
        CQelPropDB3X other;
        other.SetNotifyCallback(CRecordingNotifier::Notify, 5);
        ASSERT_THAT(other.Create(folder.Path(L"other")), Succeeds());
    }
    EXPECT_EQ(notifier.Text(), "0(0,0;5) 1(0,0;5)");
}

TEST_F(LegacyFrame, CopySharesTheStoreAndHasACatalogueOfItsOwn)
{
    AddTable(L"Lamps");
    CLegacyDatabase copy(db);
    EXPECT_EQ(Show(copy), "1000 Lamps\n");
    CQelTable3X table;
    table.Properties().name = L"Cars";
    ASSERT_THAT(copy.AddTable(table), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps\n");
    EXPECT_EQ(notifier.Text(), "2(1001,0)"); // callback and log came along
    EXPECT_NE(log.Take(), "");
    copy.Close();
    EXPECT_FALSE(db.BlobDB().IsOpen());
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(LegacyFrame, AssignmentCopiesEverything)
{
    AddTable(L"Lamps");
    CLegacyDatabase copy;
    copy = db;
    EXPECT_EQ(Show(copy), "1000 Lamps\n");
    EXPECT_EQ(copy.BlobDB().GetName(), path);
    copy = *&copy;
    EXPECT_EQ(Show(copy), "1000 Lamps\n");
}

TEST_F(LegacyFrame, AssignmentWithoutMemoryLeavesTheObjectAsItWas)
{
    AddTable(L"Lamps");
    CLegacyDatabase other;
    bool failed = true;
    for (std::size_t allowed = 0; failed; ++allowed) {
        {
            const CFailingMemory failing(allowed);
            try {
                other = db;
            } catch (const std::bad_alloc&) {
            }
            failed = failing.Hit();
        }
        EXPECT_EQ(other.BlobDB().GetName(), failed ? L"" : path) << allowed;
        EXPECT_EQ(other.TableExists(L"Lamps"), !failed) << allowed;
    }
}

TEST_F(LegacyFrame, BlobDBIsTheOpenStore)
{
    StoreBytes(77, 1, "abc");
    EXPECT_EQ(db.BlobDB().GetName(), path);
    EXPECT_TRUE(const_cast<const CLegacyDatabase&>(db).BlobDB().HasRecord({77, 1}));
}

TEST_F(LegacyFrame, LimitsAreFixed)
{
    EXPECT_EQ(db.MaxTables(), 1000U);
    EXPECT_EQ(db.MaxColumns(), 255U);
}

TEST_F(LegacyFrame, NamesFollowTheCommonRule)
{
    for (const wchar_t* name : {L"", L"a-b", L"a.b", L"a b", L"|"})
        EXPECT_FALSE(db.IsValidName(name));
    for (const wchar_t* name : {L"a_b", L"1st", L"Gr\u00f6\u00dfe", L"a+b"})
        EXPECT_TRUE(db.IsValidName(name));
    for (const wchar_t refused : std::wstring(L" #%()*,-./:;<>?@[\\]|"))
        EXPECT_FALSE(db.IsValidName(std::wstring(L"x") + refused));
}

TEST_F(LegacyFrame, TableExistsComparesExactlyAndNeedsNoStore)
{
    AddTable(L"Lamps");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_FALSE(db.TableExists(L"lamps"));
    db.BlobDB().Close();
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(LegacyFrame, DoNotifyGivesTheCallbacksAnswer)
{
    EXPECT_TRUE(db.DoNotify(ePropDBTableChanged, 1, 2));
    EXPECT_EQ(notifier.Text(), "3(1,2)");
    db.SetNotifyCallback(AnswerNo, 0);
    EXPECT_FALSE(db.DoNotify(ePropDBTableChanged, 1, 2));
    db.SetNotifyCallback(nullptr, 0);
    EXPECT_TRUE(db.DoNotify(ePropDBTableChanged, 1, 2));
}

TEST_F(LegacyFrame, CallbackThatAnswersNoStopsNothing)
{
    db.SetNotifyCallback(AnswerNo, 0);
    EXPECT_EQ(AddTable(L"Lamps"), 1000U);
    EXPECT_EQ(Show(db), "1000 Lamps\n");
}

TEST_F(LegacyFrame, CallbackThatThrowsBecomesACode)
{
    const unsigned long table = AddTable(L"Lamps");
    db.SetNotifyCallback(Throw, 0);
    EXPECT_THAT(db.SetRecord(table, 1, {}), Gives(10002));
    EXPECT_TRUE(db.HasRecord(table, 1));
    EXPECT_THAT(db.RenameTable(table, L"Torches"), Gives(10002));
    EXPECT_EQ(Show(db), "1000 Torches\n");
    db.SetNotifyCallback(nullptr, 0);
}

TEST_F(LegacyFrame, WithoutALogNothingIsWritten)
{
    db.SetLogfile(nullptr);
    EXPECT_EQ(AddTable(L"Lamps"), 1000U);
    EXPECT_THAT(db.RemoveTable(7), Gives(10020));
    EXPECT_THAT(db.Close(), Succeeds());
    EXPECT_EQ(log.Text(), "");
}

TEST_F(LegacyFrame, OptimizeWritesACompactedCopyOrCompactsInPlace)
{
    AddTable(L"Lamps");
    EXPECT_THAT(db.Optimize(folder.Path(L"small"), nullptr, 0), Succeeds());
    EXPECT_THAT(db.Optimize(L"", nullptr, 0), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps\n");
    ASSERT_THAT(db.Open(folder.Path(L"small"), true), Succeeds());
    EXPECT_EQ(Show(db), "1000 Lamps\n");
}

TEST_F(LegacyFrame, SelfTestCountsFaults)
{
    unsigned long errors = 3;
    CQelMemFile report(false, 64, 64);
    EXPECT_THAT(db.SelfTest(&report, errors, nullptr, 0), Succeeds());
    EXPECT_EQ(errors, 3U);
    EXPECT_EQ(report.GetFileSize(), 0);
    db.Close();
    EXPECT_THAT(db.SelfTest(&report, errors, nullptr, 0), Gives(17500));
    EXPECT_THAT(db.Optimize(L"", nullptr, 0), Gives(17500));
}

TEST_F(LegacyFrame, EntriesNameTheLegacySource)
{
    db.RemoveTable(7);
    for (const CDovLogfile::SEntry& entry : log.Entries()) {
        EXPECT_EQ(entry.file, L".\\qelpropdb3x");
        EXPECT_GT(entry.line, 0);
    }
    EXPECT_EQ(log.Entries().size(), 3U);
}

// Every operation on a closed database, with the code that it gives.
TEST_F(LegacyFrame, ClosedDatabaseGives17500Everywhere)
{
    const unsigned long table = AddTable(L"Lamps");
    db.Close();
    std::vector<unsigned long> oids;
    CQelTable3X definition(table);
    SLegacyColumn column;
    TRecord values;
    SQelPropColumnData data;
    unsigned long record = 1;
    unsigned int count = 0;
    EXPECT_THAT(db.GetTables(oids), Gives(17500));
    EXPECT_THAT(db.GetTable(definition), Gives(17500));
    EXPECT_THAT(db.AddTable(definition), Gives(17500));
    EXPECT_THAT(db.RemoveTable(table), Gives(17500));
    EXPECT_THAT(db.RenameTable(table, L"X"), Gives(17500));
    EXPECT_THAT(db.TableAddColumn(table, column), Gives(17500));
    EXPECT_THAT(db.TableModifyColumn(table, column), Gives(17500));
    EXPECT_THAT(db.RenameColumn(table, 1, L"X"), Gives(17500));
    EXPECT_THAT(db.TableSwapDisplayOrder(table, 1, 2), Gives(17500));
    EXPECT_THAT(db.TableGetColumn(table, 1, column), Gives(17500));
    EXPECT_THAT(db.TableRemoveColumn(table, 1), Gives(17500));
    EXPECT_THAT(db.AddRecord(table, record, {}, false), Gives(17500));
    EXPECT_THAT(db.SetRecord(table, 1, {}), Gives(17500));
    EXPECT_THAT(db.GetRecord(table, 1, values), Gives(17500));
    EXPECT_THAT(db.GetColumn(table, 1, 1, data), Gives(17500));
    EXPECT_THAT(db.RemoveRecord(table, 1), Gives(17500));
    EXPECT_FALSE(db.HasRecord(table, 1));
    EXPECT_THAT(db.GetRecordCount(table, count), Gives(17500));
    EXPECT_THAT(db.GetRecordOids(table, oids, nullptr), Gives(17500));
}

TEST_F(LegacyFrame, ReadOnlyDatabaseGives17501ToEveryChange)
{
    const unsigned long table = AddTable(L"Lamps", {Column(L"Power")});
    Reopen(true);
    CQelTable3X definition;
    definition.Properties().name = L"Cars";
    SLegacyColumn column = Column(L"Colour");
    unsigned long record = 1;
    EXPECT_THAT(db.AddTable(definition), Gives(17501));
    EXPECT_THAT(db.RemoveTable(table), Gives(17501));
    EXPECT_THAT(db.RenameTable(table, L"X"), Gives(17501));
    EXPECT_THAT(db.TableAddColumn(table, column), Gives(17501));
    EXPECT_THAT(db.TableModifyColumn(table, column), Gives(17501));
    EXPECT_THAT(db.RenameColumn(table, 1, L"X"), Gives(17501));
    EXPECT_THAT(db.TableSwapDisplayOrder(table, 1, 1), Gives(17501));
    EXPECT_THAT(db.TableRemoveColumn(table, 1), Gives(17501));
    EXPECT_THAT(db.AddRecord(table, record, {}, false), Gives(17501));
    EXPECT_THAT(db.SetRecord(table, 1, {}), Gives(17501));
    EXPECT_THAT(db.RemoveRecord(table, 1), Gives(17501));
    EXPECT_EQ(db.RemoveTable(7), 17501U); // told before the table is looked for
    EXPECT_EQ(Dump(db), "1000 Lamps: 1 Power@0\n");
}
