// records_test.cpp: storing, reading, testing, counting and removing legacy records.
#include "support/hex.h"
#include "support/legacy_database.h"

using namespace qeltest;

namespace {

const std::string kNullSlot = "0400 00000000 00000000 00000000 00000000 0000000000000000";

class LegacyRecords : public CLegacyTest
{
protected:
    unsigned long lamps = AddTable(
        L"Lamps", {Column(L"Power", CQelProperty::eInt, 0), Column(L"Colour", CQelProperty::eString, 1)});
};

} // namespace

TEST_F(LegacyRecords, RecordByteByByte)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(40), Text(L"ab")})), Succeeds());
    EXPECT_EQ(StoredHex(db, 1000, 7, "4 2 4 4 4 4 8 2 4 4 4 4 8 6"),
              "02000000 "                                                  // slots
              "0400 02000000 00000000 00000000 00000000 2800000000000000 " // 40
              "0400 01000000 00000000 06000000 00000000 0000000000000000 " // "ab"
              "610062000000");
}

TEST_F(LegacyRecords, MissingValueIsANullSlotByteByByte)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, {}), Succeeds());
    EXPECT_EQ(StoredHex(db, 1000, 7, "4 2 4 4 4 4 8 2 4 4 4 4 8"), "02000000 " + kNullSlot + " " + kNullSlot);
}

TEST_F(LegacyRecords, SettingTellsItsSteps)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(40), Text(L"red")})), Succeeds());
    EXPECT_EQ(log.Take(), "I4 + Setting record\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "6(1000,7)");
    EXPECT_EQ(Record(lamps, 7), "1=40 2='red'");
}

TEST_F(LegacyRecords, SettingReplacesTheWholeRecord)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(40), Text(L"red")})), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(60)})), Succeeds());
    EXPECT_EQ(Record(lamps, 7), "1=60 2=null");
}

TEST_F(LegacyRecords, TooFewValuesAreToldAndStoredAsNull)
{
    EXPECT_THAT(db.SetRecord(lamps, 7, Values({Int(40)})), Succeeds());
    EXPECT_EQ(log.Take(), "I4 + Setting record\nE 17507\nI4 - Done\n");
    EXPECT_EQ(Record(lamps, 7), "1=40 2=null");
}

TEST_F(LegacyRecords, ValueOfAnotherTypeIsToldAndStoredAsNull)
{
    EXPECT_THAT(db.SetRecord(lamps, 7, Values({Text(L"40"), Text(L"red")})), Succeeds());
    EXPECT_EQ(log.Take(), "I4 + Setting record\nE 17508\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "6(1000,7)");
    EXPECT_EQ(Record(lamps, 7), "1=null 2='red'");
}

TEST_F(LegacyRecords, NullFitsAnyColumn)
{
    EXPECT_THAT(db.SetRecord(lamps, 7, Values({CQelProperty(), CQelProperty()})), Succeeds());
    EXPECT_TRUE(log.ErrorCodes().empty());
}

TEST_F(LegacyRecords, SurplusValuesAreLeftOut)
{
    EXPECT_THAT(db.SetRecord(lamps, 7, Values({Int(1), Text(L"a"), Int(3), Int(4)})), Succeeds());
    EXPECT_TRUE(log.ErrorCodes().empty());
    EXPECT_EQ(Record(lamps, 7), "1=1 2='a'");
}

TEST_F(LegacyRecords, ColumnOidOfAValueIsNotLookedAt)
{
    TRecord values = Values({Int(1), Text(L"a")});
    values[0].columnOid = 2;
    values[1].columnOid = 1;
    ASSERT_THAT(db.SetRecord(lamps, 7, values), Succeeds());
    EXPECT_EQ(Record(lamps, 7), "1=1 2='a'");
}

TEST_F(LegacyRecords, ValuesFollowSlotsNotDisplayOrder)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(1), Text(L"a")})), Succeeds());
    ASSERT_THAT(db.TableSwapDisplayOrder(lamps, 1, 2), Succeeds());
    EXPECT_EQ(Record(lamps, 7), "1=1 2='a'");
}

TEST_F(LegacyRecords, ColumnAddedLaterReadsAsNull)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(1), Text(L"a")})), Succeeds());
    SLegacyColumn column = Column(L"Socket", CQelProperty::eString, 2);
    ASSERT_THAT(db.TableAddColumn(lamps, column), Succeeds());
    EXPECT_EQ(Record(lamps, 7), "1=1 2='a' 3=null");
}

TEST_F(LegacyRecords, ColumnsThatShareASlotShareItsValue)
{
    const unsigned long table =
        AddTable(L"Odd", {Column(L"A", CQelProperty::eInt, 0), Column(L"B", CQelProperty::eString, 0)});
    ASSERT_THAT(db.SetRecord(table, 1, Values({Int(5), Int(6)})), Succeeds()); // 5 fits A and not B
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{17508}));
    EXPECT_EQ(Record(table, 1), "2=5 0=null"); // named after the last in display order
}

TEST_F(LegacyRecords, ColumnWhoseSlotLiesOutsideTheRecordHasNoValue)
{
    const unsigned long table =
        AddTable(L"Odd", {Column(L"A", CQelProperty::eInt, 0), Column(L"B", CQelProperty::eInt, 2147483647),
                          Column(L"C", CQelProperty::eInt, 3)});
    ASSERT_THAT(db.SetRecord(table, 1, Values({Int(1), Int(2), Int(3), Int(4), Int(5)})), Succeeds());
    EXPECT_EQ(Record(table, 1), "1=1 0=null 0=null");
    SQelPropColumnData data;
    EXPECT_THAT(db.GetColumn(table, 1, 2, data), Gives(10020));
}

TEST_F(LegacyRecords, SlotThatNoColumnOwnsStaysNull)
{
    const unsigned long table = AddTable(L"Odd", {Column(L"A", CQelProperty::eInt, 1)});
    CQelTable3X wider(table);
    ASSERT_THAT(db.GetTable(wider), Succeeds());
    StoreBytes(1001, 1, BytesOf("01000000" + HexOf(Int(9))));
    EXPECT_EQ(Record(table, 1), "0=null");
}

TEST_F(LegacyRecords, ReadingTellsItsSteps)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(1), Text(L"a")})), Succeeds());
    log.Forget();
    EXPECT_EQ(Record(lamps, 7), "1=1 2='a'");
    EXPECT_EQ(log.Take(), "I4 + Getting record\nI4 - Done\n");
    EXPECT_EQ(Record(lamps, 8), "code 10020");
    EXPECT_EQ(log.Take(), "I4 + Getting record\nI2 10020\nI4 - Done\n");
}

TEST_F(LegacyRecords, ReadingClearsWhatTheVectorHeld)
{
    StoreBytes(1000, 7, BytesOf("01000000" + HexOf(Int(1)))); // the second slot is not there
    CQelProperty price;
    price.SetCurrency(1.5, L"EUR");
    price.SetTimeBIAS(60);
    TRecord values{{9, price}, {8, price}};
    ASSERT_THAT(db.GetRecord(lamps, 7, values), Succeeds());
    EXPECT_EQ(Show(values), "1=1 2=null");
    EXPECT_EQ(HexOf(values[1].value, "2 4 4 4 4 8"), kNullSlot);
    EXPECT_EQ(values[1].value.TimeBIAS(), 9999);
}

TEST_F(LegacyRecords, FailedReadingLeavesNullsByName)
{
    TRecord values = Values({Int(1), Int(2), Int(3)});
    EXPECT_THAT(db.GetRecord(lamps, 8, values), Gives(10020));
    EXPECT_EQ(Show(values), "1=null 2=null");
    EXPECT_THAT(db.GetRecord(77, 8, values), Gives(10020));
    EXPECT_EQ(Show(values), "1=null 2=null");
}

TEST_F(LegacyRecords, GetColumnReadsOneValue)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(1), Text(L"a")})), Succeeds());
    SQelPropColumnData data;
    ASSERT_THAT(db.GetColumn(lamps, 7, 2, data), Succeeds());
    EXPECT_EQ(Show(TRecord{data}), "2='a'");
}

TEST_F(LegacyRecords, GetColumnOfWhatIsMissingIs10020WithoutAnError)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, {}), Succeeds());
    ForgetAll();
    SQelPropColumnData data{5, Int(6)};
    EXPECT_THAT(db.GetColumn(lamps, 7, 3, data), Gives(10020));
    EXPECT_THAT(db.GetColumn(lamps, 8, 1, data), Gives(10020));
    EXPECT_THAT(db.GetColumn(77, 7, 1, data), Gives(10020));
    EXPECT_EQ(Show(TRecord{data}), "5=6");
    EXPECT_TRUE(log.ErrorCodes().empty());
}

TEST_F(LegacyRecords, RemovingTellsItsSteps)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, {}), Succeeds());
    ForgetAll();
    EXPECT_THAT(db.RemoveRecord(lamps, 7), Succeeds());
    EXPECT_EQ(log.Take(), "I4 + Removing Record\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "7(1000,7)");
    EXPECT_FALSE(db.HasRecord(lamps, 7));
}

TEST_F(LegacyRecords, RemovingWhatIsMissingIs10020WithoutAnError)
{
    EXPECT_THAT(db.RemoveRecord(lamps, 7), Gives(10020));
    EXPECT_EQ(log.Take(), "I4 + Removing Record\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_THAT(db.RemoveRecord(77, 7), Gives(10020));
    EXPECT_EQ(log.Take(), "I4 + Removing Record\nI2 10020\nI4 - Done\n");
}

TEST_F(LegacyRecords, HasRecordTellsWhyItCannot)
{
    ASSERT_THAT(db.SetRecord(lamps, 7, {}), Succeeds());
    ForgetAll();
    EXPECT_TRUE(db.HasRecord(lamps, 7));
    EXPECT_FALSE(db.HasRecord(lamps, 8));
    EXPECT_EQ(log.Take(), "");
    EXPECT_FALSE(db.HasRecord(77, 7));
    EXPECT_EQ(log.Take(), "I2 10020\n");
    db.Close();
    log.Forget();
    EXPECT_FALSE(db.HasRecord(lamps, 7));
    EXPECT_EQ(log.Take(), "E 17500\n");
}

TEST_F(LegacyRecords, CountNeedsNoTable)
{
    Add(lamps, {});
    Add(lamps, {});
    unsigned int count = 9;
    EXPECT_THAT(db.GetRecordCount(lamps, count), Succeeds());
    EXPECT_EQ(count, 2U);
    EXPECT_THAT(db.GetRecordCount(77, count), Succeeds());
    EXPECT_EQ(count, 0U);
    StoreBytes(77, 1, "x");
    EXPECT_THAT(db.GetRecordCount(77, count), Succeeds());
    EXPECT_EQ(count, 1U);
}

TEST_F(LegacyRecords, CountOnAClosedDatabaseIsToldAsAnError)
{
    db.Close();
    log.Forget();
    unsigned int count = 9;
    EXPECT_THAT(db.GetRecordCount(lamps, count), Gives(17500));
    EXPECT_EQ(log.Take(), "E 17500\n");
}

TEST_F(LegacyRecords, UnknownTableIs10020)
{
    TRecord values;
    unsigned long oid = 1;
    EXPECT_THAT(db.SetRecord(77, 1, {}), Gives(10020));
    EXPECT_EQ(log.Take(), "I4 + Setting record\nI2 10020\nI4 - Done\n");
    EXPECT_THAT(db.AddRecord(77, oid, {}, false), Gives(10020));
    EXPECT_EQ(log.Take(), "I4 + Adding record\nI2 10020\nI4 - Done\n");
    EXPECT_THAT(db.GetRecord(77, 1, values), Gives(10020));
    EXPECT_EQ(StoredHex(db, 77, 1), "none");
}

TEST_F(LegacyRecords, WideOidsNameNothing)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "no such number here";
    const unsigned long wide = static_cast<unsigned long>(0x100000000ULL + 7);
    ASSERT_THAT(db.SetRecord(lamps, 7, Values({Int(1)})), Succeeds());
    TRecord values;
    SQelPropColumnData data;
    unsigned int count = 9;
    unsigned long given = wide;
    EXPECT_THAT(db.SetRecord(lamps, wide, {}), Gives(10020));
    EXPECT_THAT(db.AddRecord(lamps, given, {}, true), Gives(10020));
    EXPECT_THAT(db.RemoveRecord(lamps, wide), Gives(10020));
    EXPECT_THAT(db.GetRecord(lamps, wide, values), Gives(10020));
    EXPECT_THAT(db.GetColumn(lamps, wide, 1, data), Gives(10020));
    EXPECT_THAT(db.GetRecordCount(wide, count), Gives(10020));
    EXPECT_FALSE(db.HasRecord(lamps, wide));
    EXPECT_EQ(Dump(db), "1000 Lamps: 1 Power@0 2 Colour@1\n  7: 1=1 2=null\n");
}

TEST_F(LegacyRecords, LargestAndSmallestOidAreRecords)
{
    ASSERT_THAT(db.SetRecord(lamps, 0, Values({Int(1)})), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 4294967295UL, Values({Int(2)})), Succeeds());
    EXPECT_EQ(Dump(db), "1000 Lamps: 1 Power@0 2 Colour@1\n  0: 1=1 2=null\n  4294967295: 1=2 2=null\n");
}

TEST_F(LegacyRecords, EveryTypeComesBack)
{
    std::vector<SLegacyColumn> columns;
    std::vector<CQelProperty> values;
    for (int type = 1; type <= 14; ++type) {
        const auto each = static_cast<CQelProperty::EType>(type);
        columns.push_back(Column(L"c" + std::to_wstring(type), each, type - 1));
        values.emplace_back();
        values.back().ResetToType(each);
    }
    values[12].SetBlob("\0\1\2", 3);
    values[9].SetCurrency(-12.3456, L"EUR");
    const unsigned long table = AddTable(L"All", columns);
    const unsigned long record = Add(table, values);
    TRecord read;
    ASSERT_THAT(db.GetRecord(table, record, read), Succeeds());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(HexOf(read[i].value), HexOf(values[i])) << i + 1;
}
