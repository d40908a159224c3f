// record_ids_test.cpp: the ids that new records get.
#include "support/hex.h"
#include "support/legacy_database.h"

using namespace qeltest;

namespace {

class LegacyRecordIds : public CLegacyTest
{
protected:
    unsigned long lamps = AddTable(L"Lamps", {Column(L"Power", CQelProperty::eInt, 0)});

    unsigned int AddGiven(unsigned long oid) { return db.AddRecord(lamps, oid, Values({Int(1)}), true); }
    std::string Ids()
    {
        std::vector<unsigned long> oids;
        EXPECT_THAT(db.GetRecordOids(lamps, oids, nullptr), Succeeds());
        return List(oids);
    }
};

} // namespace

TEST_F(LegacyRecordIds, FirstIsTwoAndTheNextThree)
{
    EXPECT_EQ(Add(lamps, {Int(1)}), 2U);
    EXPECT_EQ(Add(lamps, {Int(1)}), 3U);
    EXPECT_EQ(Add(lamps, {Int(1)}), 4U);
}

TEST_F(LegacyRecordIds, AddingTellsItsStepsAndSendsTwoMessages)
{
    unsigned long record = 99;
    ASSERT_THAT(db.AddRecord(lamps, record, Values({Int(40)}), false), Succeeds());
    EXPECT_EQ(record, 2U);
    EXPECT_EQ(log.Take(), "I4 + Adding record\n"
                          "I4 + Setting record\n"
                          "I4 - Done\n"
                          "I4 - Done\n");
    EXPECT_EQ(notifier.Text(), "6(1000,2) 5(1000,2)");
    EXPECT_EQ(Record(lamps, 2), "1=40");
}

TEST_F(LegacyRecordIds, AfterTheGivenTenComesTwelve)
{
    EXPECT_THAT(AddGiven(10), Succeeds());
    EXPECT_EQ(notifier.Text(), "6(1000,10) 5(1000,10)");
    EXPECT_EQ(Add(lamps, {}), 12U);
    EXPECT_EQ(Add(lamps, {}), 13U);
}

TEST_F(LegacyRecordIds, GivenIdBelowTheHintLeavesIt)
{
    EXPECT_THAT(AddGiven(10), Succeeds());
    EXPECT_THAT(AddGiven(5), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 12U);
    EXPECT_THAT(AddGiven(12), Succeeds()); // at the hint: it moves
    EXPECT_EQ(Add(lamps, {}), 14U);
    EXPECT_EQ(Ids(), "5 10 12 14");
}

TEST_F(LegacyRecordIds, GivenIdThatExistsIsReplaced)
{
    Add(lamps, {Int(1)});
    unsigned long two = 2;
    EXPECT_THAT(db.AddRecord(lamps, two, Values({Int(9)}), true), Succeeds());
    EXPECT_EQ(Record(lamps, 2), "1=9");
}

TEST_F(LegacyRecordIds, IdsInUseAreSkipped)
{
    for (const unsigned long id : {2UL, 3UL, 5UL})
        ASSERT_THAT(db.SetRecord(lamps, id, {}), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 4U);
    EXPECT_EQ(Add(lamps, {}), 6U);
}

TEST_F(LegacyRecordIds, FreeOneIsPassedOver)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, {}), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 2U);
    EXPECT_EQ(Ids(), "2 7");
}

TEST_F(LegacyRecordIds, FreedIdComesBackOnceTheIdsAreListedAgain)
{
    Add(lamps, {});
    Add(lamps, {});
    Add(lamps, {});
    ASSERT_THAT(db.RemoveRecord(lamps, 3), Succeeds()); // which drops the list
    EXPECT_EQ(Add(lamps, {}), 3U);
    EXPECT_EQ(Add(lamps, {}), 5U);
}

TEST_F(LegacyRecordIds, RecordRemovedPastTheDatabaseIsNotReused)
{
    Add(lamps, {});
    Add(lamps, {});
    Add(lamps, {});
    ASSERT_THAT(db.BlobDB().Remove({1000, 3}), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 5U);
}

TEST_F(LegacyRecordIds, EmptyTableIsListedAgainEveryTime)
{
    EXPECT_EQ(Add(lamps, {}), 2U); // nothing was listed, so that the list still counts as not made
    ASSERT_THAT(db.BlobDB().Remove({1000, 2}), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 2U);
}

TEST_F(LegacyRecordIds, RemovingWhatIsMissingDropsTheListToo)
{
    EXPECT_THAT(AddGiven(10), Succeeds());
    EXPECT_THAT(db.RemoveRecord(lamps, 99), Gives(10020));
    EXPECT_EQ(Add(lamps, {}), 2U);
}

TEST_F(LegacyRecordIds, ReopeningListsTheIdsAgain)
{
    EXPECT_THAT(AddGiven(10), Succeeds());
    Reopen();
    EXPECT_EQ(Add(lamps, {}), 2U);
}

TEST_F(LegacyRecordIds, RecordThatTheStoreHoldsIsNeverOverwritten)
{
    Add(lamps, {Int(1)});
    Add(lamps, {Int(1)});
    ASSERT_THAT(db.SetRecord(lamps, 4, Values({Int(44)})), Succeeds()); // unknown to the list of ids
    EXPECT_EQ(Add(lamps, {Int(5)}), 5U);
    EXPECT_EQ(Record(lamps, 4), "1=44");
}

TEST_F(LegacyRecordIds, DamagedRecordIsNeverOverwritten)
{
    Add(lamps, {Int(1)});
    Add(lamps, {Int(1)});
    StoreBytes(1000, 4, "no record");
    EXPECT_EQ(Add(lamps, {Int(5)}), 5U);
}

TEST_F(LegacyRecordIds, FailedAddLeavesTheHintAndTheCallersId)
{
    Add(lamps, {});
    Reopen(true);
    unsigned long record = 77;
    EXPECT_THAT(db.AddRecord(lamps, record, {}, false), Gives(17501));
    EXPECT_EQ(record, 77U);
    Reopen();
    EXPECT_EQ(Add(lamps, {}), 3U);
}

TEST_F(LegacyRecordIds, AfterTheLargestGivenIdThereIsNoOther)
{
    EXPECT_THAT(AddGiven(4294967295UL), Succeeds());
    ForgetAll();
    unsigned long record = 77;
    EXPECT_THAT(db.AddRecord(lamps, record, Values({Int(1)}), false), Gives(17201));
    EXPECT_EQ(record, 77U);
    EXPECT_EQ(log.Take(), "I4 + Adding record\nE 17201\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Ids(), "4294967295");
    Reopen(); // lists the ids again
    EXPECT_EQ(Add(lamps, {}), 2U);
}

TEST_F(LegacyRecordIds, LastButOneGivenIdLeavesNoOtherEither)
{
    EXPECT_THAT(AddGiven(4294967294UL), Succeeds()); // the hint is one more, and the search starts after it
    unsigned long record = 0;
    EXPECT_THAT(db.AddRecord(lamps, record, {}, false), Gives(17201));
    EXPECT_THAT(AddGiven(4294967295UL), Succeeds());
}

TEST_F(LegacyRecordIds, LargestIdCanComeAutomatically)
{
    EXPECT_THAT(AddGiven(4294967293UL), Succeeds());
    EXPECT_EQ(Add(lamps, {}), 4294967295UL);
    unsigned long record = 0;
    EXPECT_THAT(db.AddRecord(lamps, record, {}, false), Gives(17201));
}

TEST_F(LegacyRecordIds, EachTableHasItsOwn)
{
    const unsigned long cars = AddTable(L"Cars");
    EXPECT_EQ(Add(lamps, {}), 2U);
    EXPECT_EQ(Add(cars, {}), 2U);
    EXPECT_EQ(Add(lamps, {}), 3U);
}

namespace {

CLegacyDatabase* closing = nullptr;

bool QEL_STDCALL CloseWhenSet(EPropDBMessage message, unsigned long, unsigned long, unsigned int)
{
    if (message == ePropDBRecordSet)
        closing->Close();
    return true;
}

} // namespace

TEST_F(LegacyRecordIds, CallbackMayCloseTheDatabase)
{
    closing = &db;
    db.SetNotifyCallback(CloseWhenSet, 0);
    unsigned long record = 0;
    EXPECT_THAT(db.AddRecord(lamps, record, Values({Int(1)}), false), Succeeds());
    db.SetNotifyCallback(nullptr, 0);
    Reopen();
    EXPECT_EQ(Record(lamps, 2), "1=1");
}

// Without the list of ids the record goes where the caller said, whether that was meant or not.
TEST_F(LegacyRecordIds, WithoutAListTheCallersIdIsTaken)
{
    const unsigned long cars = AddTable(L"Cars", {Column(L"Model")});
    for (int i = 0; i < 200; ++i)
        Add(lamps, {Int(i)});
    for (int i = 0; i < 200; ++i)
        Add(cars, {Text(std::wstring(60, L'x'))});
    db.Close();
    std::string file = ReadFile(folder.File(L"legacy.store"));
    const std::size_t page = 4096;
    const std::string text = BytesOf(HexOf(Text(std::wstring(60, L'x'))));
    std::size_t damaged = file.find(text) / page + 1; // not the first page of the cars
    std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(damaged * page), 8, '\xEE');
    WriteFile(folder.File(L"legacy.store"), file);
    ASSERT_THAT(db.Open(path, false), Succeeds());
    unsigned long record = 4000;
    EXPECT_THAT(db.AddRecord(cars, record, Values({Text(L"new")}), false), Succeeds());
    EXPECT_EQ(record, 4000U);
    EXPECT_EQ(Record(cars, 4000), "1='new'");
}

TEST(LegacyRecordIdsAtScale, HundredThousandAutomaticAddsStayLinear)
{
    CTemporaryFolder folder;
    CLegacyDatabase db;
    ASSERT_THAT(db.Create(folder.Path(L"store")), Succeeds());
    CQelTable3X table;
    table.Properties().name = L"Many";
    ASSERT_THAT(db.AddTable(table), Succeeds());
    ASSERT_THAT(db.BlobDB().BeginBatch(), Succeeds());
    unsigned long record = 0;
    for (unsigned long i = 2; i <= 100001; ++i) {
        ASSERT_THAT(db.AddRecord(1000, record, {}, false), Succeeds());
        ASSERT_EQ(record, i);
    }
    ASSERT_THAT(db.BlobDB().CommitBatch(), Succeeds());
    unsigned int count = 0;
    ASSERT_THAT(db.GetRecordCount(1000, count), Succeeds());
    EXPECT_EQ(count, 100000U);
}
