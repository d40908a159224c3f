// legacy_records_test.cpp: records of the legacy database: by slot, their numbers, and their listing.
#include "legacy_host.h"

using namespace outside;

namespace {

using OutsideLegacyRecords = CLegacyHost;

TEST_F(OutsideLegacyRecords, AddingTellsItsStepsInOrderAndBothMessages)
{
    const unsigned long table = MakeLamps();
    unsigned long oid = 55;
    EXPECT_EQ(db.AddRecord(table, oid, Positional({Number(60), Text(L"A"), Number(1)}), false), 10001u);
    EXPECT_EQ(oid, 2ul);
    EXPECT_EQ(Told(),
              "I4 + Adding record\nI4 + Setting record\nI4 - Done\n> 6(1000,2)\nI4 - Done\n> 5(1000,2)\n");
}

TEST_F(OutsideLegacyRecords, CountUpFromTwoPastWhatIsInUse)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(Add(table, {Number(1)}), 2ul);
    EXPECT_EQ(Add(table, {Number(2)}), 3ul);
    unsigned long given = 10;
    EXPECT_EQ(db.AddRecord(table, given, Positional({Number(3)}), true), 10001u);
    EXPECT_EQ(Add(table, {Number(4)}), 12ul);
    EXPECT_EQ(db.SetRecord(table, 13, Positional({Number(5)})), 10001u);
    EXPECT_EQ(Add(table, {Number(6)}), 14ul) << "a record that is there is never overwritten";
}

TEST_F(OutsideLegacyRecords, RemovedNumberIsUsedAgainOnceTheListIsMadeAnew)
{
    const unsigned long table = MakeLamps();
    for (int i = 0; i < 3; ++i)
        Add(table, {Number(i)});
    EXPECT_EQ(db.RemoveRecord(table, 3), 10001u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n> 7(1000,3)\n");
    EXPECT_EQ(Add(table, {Number(9)}), 3ul);
    EXPECT_EQ(Add(table, {Number(9)}), 5ul);
}

TEST_F(OutsideLegacyRecords, RemovingNoneIsNotFoundWithoutAnError)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(db.RemoveRecord(table, 3), 10020u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n");
    EXPECT_EQ(db.RemoveRecord(5, 3), 10020u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI2 10020\nI4 - Done\n");
}

TEST_F(OutsideLegacyRecords, WrongTypesAndMissingValuesAreToldAndStoredAsNull)
{
    const unsigned long table = MakeLamps();
    EXPECT_EQ(db.SetRecord(table, 7, Positional({Text(L"x"), Text(L"B")})), 10001u);
    EXPECT_EQ(Told(), "I4 + Setting record\nE 17507\nE 17508\nI4 - Done\n> 6(1000,7)\n");
    EXPECT_EQ(Record(table, 7), "1=null 2=B 3=null");
}

TEST_F(OutsideLegacyRecords, AreACountAndTheSlotsInTheirOwnOrder)
{
    const unsigned long table = Make(L"T", {LegacyColumn(L"A", CQelProperty::eInt, 1, 1, 1),
                                            LegacyColumn(L"B", CQelProperty::eInt, 2, 2, 0)});
    EXPECT_EQ(db.SetRecord(table, 1, Positional({Number(5), CQelProperty()})), 10001u);
    EXPECT_EQ(StoredBytes(db.BlobDB(), 1000, 1), "02000000"
                                                 "04000200000000000000000000000000000005000000000000"
                                                 "00"
                                                 "0400000000000000000000000000000000000000000000000000");
    EXPECT_EQ(Record(table, 1), "2=5 1=null");
}

TEST_F(OutsideLegacyRecords, SlotsThatWereNeverWrittenAreNull)
{
    const unsigned long table = MakeLamps();
    Add(table, {Number(60), Text(L"A"), Number(1)});
    CQelTable3X::SQelColumn column = LegacyColumn(L"New", CQelProperty::eInt, 0, 9, 3);
    ASSERT_EQ(db.TableAddColumn(table, column), 10001u);
    EXPECT_EQ(Record(table, 2), "1=60 2=A 3=1 4=null");
    EXPECT_EQ(db.BlobDB().Set({1000, 5}, "\3\0\0\0", 4, 0), 10001u) << "a count and no slot";
    EXPECT_EQ(Record(table, 5), "1=null 2=null 3=null 4=null");
}

TEST_F(OutsideLegacyRecords, OneColumnIsReadAloneOrLeftAsItWas)
{
    const unsigned long table = MakeLamps();
    Add(table, {Number(60), Text(L"A"), Number(1)});
    SQelPropColumnData data = Data(9, Number(4));
    EXPECT_EQ(db.GetColumn(table, 2, 8, data), 10020u);
    EXPECT_EQ(db.GetColumn(table, 3, 1, data), 10020u);
    EXPECT_EQ(db.GetColumn(5, 2, 1, data), 10020u);
    EXPECT_EQ(Show({data}), "9=4");
    EXPECT_EQ(Told().find("E "), std::string::npos) << "nothing found is no error";
    EXPECT_EQ(db.GetColumn(table, 2, 2, data), 10001u);
    EXPECT_EQ(Show({data}), "2=A");
}

TEST_F(OutsideLegacyRecords, ZeroIsANumberLikeAnyOtherWhenItIsGiven)
{
    const unsigned long table = MakeLamps();
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(table, oid, Positional({Number(1)}), true), 10001u);
    EXPECT_EQ(oid, 0ul);
    EXPECT_TRUE(db.HasRecord(table, 0));
}

class OutsideLegacyListing : public CLegacyHost
{
protected:
    std::string List(unsigned long table, const std::vector<CQelPropDB3X::SSortItem>& items)
    {
        std::vector<unsigned long> oids{99};
        const unsigned int code = db.GetRecordOids(table, oids, &items);
        return code == 10001 ? Show(oids) : std::to_string(code);
    }
};

TEST_F(OutsideLegacyListing, SortsByKeysUpAndDownAndWithoutAnyAsStored)
{
    const unsigned long table = MakeLamps();
    Add(table, {Number(60), Text(L"B"), Number(1)});
    Add(table, {Number(40), Text(L"A"), Number(2)});
    Add(table, {Number(60), Text(L"A"), Number(3)});
    EXPECT_EQ(List(table, {{1, true}, {2, true}}), "3 4 2");
    EXPECT_EQ(List(table, {{1, false}, {3, false}}), "4 2 3");
    EXPECT_EQ(List(table, {{77, true}, {2, true}}), "3 4 2") << "an unknown column is the first";
    EXPECT_EQ(List(table, {}), "2 3 4");
    EXPECT_EQ(List(5, {}), "10020");
}

TEST_F(OutsideLegacyListing, TakesTheValueOfTheSlotWithTheNumberOfThePlace)
{
    const unsigned long table = MakeLamps();
    Add(table, {Number(1), Text(L"A"), Number(9)});
    Add(table, {Number(2), Text(L"A"), Number(8)});
    ASSERT_EQ(db.TableSwapDisplayOrder(table, 1, 3), 10001u);
    EXPECT_EQ(List(table, {{1, true}}), "3 2") << "Power stands last, where Age has its slot";
    EXPECT_EQ(List(table, {{3, true}}), "2 3");
}

} // namespace
