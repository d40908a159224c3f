// records_test.cpp: adding, setting, reading, removing and counting records.
#include "lamps.h"

namespace {

using namespace qeltest;

using Records = Lamps;

TEST_F(Records, FirstRecordOfATableIsNumberOne)
{
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(40)), Value(2, Text(L"red"))}, false), Succeeds());
    EXPECT_EQ(oid, 1u);
    EXPECT_EQ(notifier.Text(), "5(1,1)");
    EXPECT_EQ(log.Text(), "I4 + Adding record\nI4 - Done\n");
    EXPECT_EQ(Rows(sql, "SELECT foid,toid,coid,data FROM qeltpd"),
              "1|1|1|x'0400020000000000000000000000000000002800000000000000'\n"
              "1|1|2|x'04000100000000000000080000000000000000000000000000007200650064000000'\n");
}

TEST_F(Records, OidsAreCountedTableByTable)
{
    const unsigned long other = Add(TableOf(L"Other", {Column(L"x")}));
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    EXPECT_EQ(Add(other, {Value(3, Int(1))}), 1u);
    EXPECT_EQ(AddLamp(75, L"green"), 3u);
}

TEST_F(Records, RemovedHighestOidIsUsedAgain)
{
    for (const int power : {40, 60, 75})
        AddLamp(power, L"red");
    ASSERT_THAT(db.RemoveRecord(lamps, 3), Succeeds());
    EXPECT_EQ(AddLamp(100, L"red"), 3u);
    ASSERT_THAT(db.RemoveRecord(lamps, 1), Succeeds());
    EXPECT_EQ(AddLamp(100, L"red"), 4u);
}

TEST_F(Records, GivenOidIsWrittenUnder)
{
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    unsigned long oid = 7;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(75))}, true), Succeeds());
    EXPECT_EQ(oid, 7u);
    EXPECT_EQ(notifier.Text(), "6(1,7)");
    EXPECT_EQ(AddLamp(100, L"red"), 8u);
}

TEST_F(Records, GivenOidOfZeroAsksForANewOne)
{
    AddLamp(40, L"red");
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(75))}, true), Succeeds());
    EXPECT_EQ(oid, 2u);
    EXPECT_EQ(notifier.Text(), "5(1,2)");
}

TEST_F(Records, StaleOidThatIsNotUsedStillMakesItMessageSix)
{
    AddLamp(40, L"red");
    unsigned long oid = 1;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(75))}, false), Succeeds());
    EXPECT_EQ(oid, 2u);
    EXPECT_EQ(notifier.Text(), "6(1,2)");
    EXPECT_EQ(Record(lamps, 1), "1=40 2='red'");
}

TEST_F(Records, WritingUnderAnOidReplacesOnlyTheColumnsNamed)
{
    AddLamp(40, L"red");
    unsigned long oid = 1;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(2, Text(L"blue"))}, true), Succeeds());
    EXPECT_EQ(Record(lamps, 1), "1=40 2='blue'");
}

TEST_F(Records, ValueOfColumnZeroIsPassedOver)
{
    EXPECT_EQ(Add(lamps, {Value(0, Int(1)), Value(1, Int(40)), Value(0, Int(2)), Value(2, Text(L"red"))}),
              1u);
    EXPECT_EQ(Rows(sql, "SELECT coid FROM qeltpd"), "1\n2\n");
}

TEST_F(Records, LaterOfTwoValuesOfAColumnStands)
{
    Add(lamps, {Value(1, Int(40)), Value(1, Int(60))});
    EXPECT_EQ(Record(lamps, 1), "1=60 2=-");
}

TEST_F(Records, RecordWithoutValuesIsSuccessAndNothing)
{
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {}, false), Succeeds());
    oid = 9;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(0, Int(1))}, true), Succeeds());
    EXPECT_EQ(oid, 9u);
    oid = 9;
    EXPECT_THAT(db.AddRecord(lamps, oid, {}, false), Succeeds());
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(notifier.Text(), "5(1,0) 6(1,9) 6(1,0)");
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpd"), "");
}

TEST_F(Records, ValuesOfColumnsThatTheTableLacksAreStored)
{
    Add(lamps, {Value(77, Int(5))});
    EXPECT_EQ(Rows(sql, "SELECT foid,toid,coid FROM qeltpd"), "1|1|77\n");
    EXPECT_EQ(Record(lamps, 1), "1=- 2=-");
    EXPECT_TRUE(db.HasRecord(lamps, 1));
}

TEST_F(Records, UnknownTableIsRefusedWithoutAnError)
{
    unsigned long oid = 5;
    TRecord record;
    SQelPropColumnData data;
    TOids oids;
    EXPECT_THAT(db.AddRecord(99, oid, {Value(1, Int(1))}, true), Gives(10020));
    EXPECT_THAT(db.SetRecord(99, 1, {Value(1, Int(1))}), Gives(10020));
    EXPECT_THAT(db.GetRecord(99, 1, record), Gives(10020));
    EXPECT_THAT(db.GetColumn(99, 1, 1, data), Gives(10020));
    EXPECT_THAT(db.GetRecordOids(99, oids, nullptr), Gives(10020));
    EXPECT_FALSE(db.HasRecord(99, 1));
    EXPECT_EQ(log.Text(), "I4 + Adding record\nI2 10020\nI4 + Setting record\nI2 10020\nI2 10020\nI2 10020\n"
                          "I2 10020\nI2 10020\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(oid, 5u);
}

TEST_F(Records, FailingValueUndoesTheWholeRecord)
{
    ASSERT_TRUE(Execute(sql, "CREATE TRIGGER no BEFORE INSERT ON qeltpd WHEN NEW.coid=2 BEGIN "
                             "SELECT RAISE(ABORT,'no'); END"));
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(40)), Value(2, Text(L"red"))}, false), Gives(17319));
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(log.Text(), "I4 + Adding record\nE 17319\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpd"), "");
}

TEST_F(Records, SettingMakesARecordOrReplacesItsValues)
{
    EXPECT_THAT(db.SetRecord(lamps, 5, {Value(1, Int(40)), Value(2, Text(L"red"))}), Succeeds());
    EXPECT_THAT(db.SetRecord(lamps, 5, {Value(1, Int(60))}), Succeeds());
    EXPECT_EQ(notifier.Text(), "6(1,5) 6(1,5)");
    EXPECT_EQ(log.Text().substr(0, 52), "I4 + Setting record\nI4 + Adding record\nI4 - Done\nI4 ");
    EXPECT_EQ(Record(lamps, 5), "1=60 2='red'");
}

TEST_F(Records, SettingRecordZeroAddsANewOne)
{
    AddLamp(40, L"red");
    EXPECT_THAT(db.SetRecord(lamps, 0, {Value(1, Int(60))}), Succeeds());
    EXPECT_EQ(notifier.Text(), "5(1,2)");
}

TEST_F(Records, ReadingGivesEveryColumnInTheTablesOrder)
{
    Add(lamps, {Value(2, Text(L"red"))});
    TRecord record(7);
    record[0].value.SetInt(99);
    EXPECT_THAT(db.GetRecord(lamps, 1, record), Succeeds());
    ASSERT_EQ(record.size(), 2u);
    EXPECT_EQ(record[0].columnOid, 1u);
    EXPECT_TRUE(record[0].value.IsNull());
    EXPECT_EQ(record[1].columnOid, 2u);
    EXPECT_EQ(Show(record[1].value), "'red'");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Records, ReadingLeavesNothingOfWhatTheRecordHeld)
{
    TRecord record(2);
    record[0].value.SetCurrency(1.5, L"EUR");
    record[0].value.SetTimeBIAS(60);
    record[1].value.SetString(L"old");
    EXPECT_THAT(db.GetRecord(lamps, 1, record), Succeeds());
    EXPECT_TRUE(record[0].value.IsNull());
    EXPECT_EQ(record[0].value.GetCurrencySymbol(), L"");
    EXPECT_EQ(record[0].value.TimeBIAS(), 9999);
    EXPECT_TRUE(record[1].value.IsNull());
    EXPECT_EQ(record[1].columnOid, 2u);
}

TEST_F(Records, RecordThatDoesNotExistReadsAsNulls)
{
    EXPECT_EQ(Record(lamps, 1), "1=- 2=-");
    EXPECT_FALSE(db.HasRecord(lamps, 1));
}

TEST_F(Records, ColumnsOutOfTheOrderOfTheirOidsAreFilledToo)
{
    const unsigned long table = Add(TableOf(L"t"));
    for (const unsigned long oid : {90UL, 70UL, 80UL}) {
        CQelTable::SQelColumn column = Column(L"c" + std::to_wstring(oid));
        column.oid = oid;
        ASSERT_THAT(db.TableAddColumn(table, column), Succeeds());
    }
    Add(table, {Value(90, Int(9)), Value(70, Int(7)), Value(80, Int(8)), Value(75, Int(0))});
    EXPECT_EQ(Record(table, 1), "70=7 80=8 90=9");
}

TEST_F(Records, ValueOfARemovedColumnIsNotReturned)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(Execute(sql, "DELETE FROM qeltpc WHERE oid=1"));
    db.Attach(false, nullptr);
    EXPECT_EQ(Record(lamps, 1), "2='red'");
}

TEST_F(Records, OneColumnIsRead)
{
    AddLamp(40, L"red");
    SQelPropColumnData data;
    EXPECT_THAT(db.GetColumn(lamps, 1, 2, data), Succeeds());
    EXPECT_EQ(data.columnOid, 2u);
    EXPECT_EQ(Show(data.value), "'red'");
    EXPECT_THAT(db.GetColumn(lamps, 9, 2, data), Succeeds());
    EXPECT_TRUE(data.value.IsNull());
}

TEST_F(Records, UnknownColumnIsNotFoundAndLeavesItsOidAndNull)
{
    AddLamp(40, L"red");
    SQelPropColumnData data = Value(1, Int(5));
    EXPECT_THAT(db.GetColumn(lamps, 1, 77, data), Gives(10020));
    EXPECT_EQ(data.columnOid, 77u);
    EXPECT_TRUE(data.value.IsNull());
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Records, RemovingDropsEveryValueOfTheRecord)
{
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Succeeds());
    EXPECT_EQ(notifier.Text(), "7(1,1)");
    EXPECT_EQ(log.Text(), "I4 + Removing Record\nI4 - Done\n");
    EXPECT_EQ(Dump(db), "Lamps\n  2 Power=60 Colour='blue'\n");
}

TEST_F(Records, RemovingWhatDoesNotExistSucceedsAndNotifies)
{
    EXPECT_THAT(db.RemoveRecord(lamps, 5), Succeeds());
    EXPECT_THAT(db.RemoveRecord(99, 5), Succeeds());
    EXPECT_EQ(notifier.Text(), "7(1,5) 7(99,5)");
}

TEST_F(Records, FailingRemovalIsAnError)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(
        Execute(sql, "CREATE TRIGGER no BEFORE DELETE ON qeltpd BEGIN SELECT RAISE(ABORT,'no'); END"));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Gives(17319));
    EXPECT_EQ(log.Text(), "I4 + Removing Record\nE 17319\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
    EXPECT_TRUE(db.HasRecord(lamps, 1));
}

TEST_F(Records, CountIsThatOfRecordsWithAValue)
{
    unsigned int count = 9;
    EXPECT_THAT(db.GetRecordCount(lamps, count), Succeeds());
    EXPECT_EQ(count, 0u);
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    Add(lamps, {Value(77, Int(5))});
    db.GetRecordCount(lamps, count);
    EXPECT_EQ(count, 3u);
    db.TableRemoveColumn(lamps, 77);
    db.GetRecordCount(lamps, count);
    EXPECT_EQ(count, 2u) << "a record whose values are all gone";
    EXPECT_THAT(db.GetRecordCount(99, count), Succeeds());
    EXPECT_EQ(count, 0u) << "unknown tables have none";
}

TEST_F(Records, EveryTypeComesBackAsItWasWithoutItsBias)
{
    std::vector<CQelProperty> values = {CQelProperty(),
                                        Text(L"t\u00e4xt \U0001F600"),
                                        Int(-5),
                                        UInt(4000000000u),
                                        Int64(-1234567890123),
                                        UInt64(~0ULL),
                                        Double(-0.5),
                                        Date(45000.0),
                                        Time(0.75),
                                        Bool(true),
                                        Amount(-12.3456, L"\u20ac"),
                                        Link(L"http://x"),
                                        Reference(4294967295UL),
                                        Blob(std::string("\0\xff", 2)),
                                        DateTime(45000.25, 60)};
    std::vector<CQelTable::SQelColumn> columns;
    TRecord record;
    for (std::size_t i = 0; i < values.size(); ++i) {
        columns.push_back(Column(L"c" + std::to_wstring(i), static_cast<CQelProperty::EType>(i)));
        record.push_back(Value(3 + static_cast<unsigned long>(i), values[i]));
    }
    const unsigned long table = Add(TableOf(L"types", columns));
    Add(table, record);
    TRecord read;
    ASSERT_THAT(db.GetRecord(table, 1, read), Succeeds());
    ASSERT_EQ(read.size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(Show(read[i].value), Show(values[i]));
        EXPECT_EQ(read[i].value.TimeBIAS(), 9999);
    }
}

TEST_F(Records, HostPutsManyChangesIntoOneTransactionOfItsOwn)
{
    ASSERT_TRUE(Execute(sql, "BEGIN"));
    AddLamp(40, L"red");
    db.RenameTable(lamps, L"Bulbs");
    ASSERT_TRUE(Execute(sql, "ROLLBACK"));
    db.Attach(false, nullptr);
    EXPECT_EQ(Dump(db), "Lamps\n");
}

class RecordsOfALockedFile : public LampsOfALockedFile
{
protected:
    RecordsOfALockedFile() { Add(lamps, {Value(1, Int(40))}); }
};

TEST_F(RecordsOfALockedFile, AddingThatCannotBeginIsTold)
{
    ASSERT_TRUE(Execute(other, "BEGIN IMMEDIATE"));
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(60))}, false), Gives(17201));
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(log.Text(), "I4 + Adding record\nE 17201\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(RecordsOfALockedFile, RemovingThatCannotBeginPassesForSuccess)
{
    ASSERT_TRUE(Execute(other, "BEGIN IMMEDIATE"));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Succeeds());
    EXPECT_EQ(log.Text(), "I4 + Removing Record\nI4 - Done\n");
    EXPECT_EQ(notifier.Text(), "7(1,1)");
    EXPECT_TRUE(db.HasRecord(lamps, 1));
}

TEST_F(RecordsOfALockedFile, ReadingIsACode)
{
    ASSERT_TRUE(Execute(other, "BEGIN EXCLUSIVE"));
    TRecord record;
    TOids oids = {5};
    unsigned int count = 9;
    const std::vector<CQelPropDB::SSortItem> sort(1);
    EXPECT_THAT(db.GetRecord(lamps, 1, record), Gives(17305));
    EXPECT_THAT(db.GetRecordOids(lamps, oids, &sort), Gives(17305));
    EXPECT_THAT(db.GetRecordCount(lamps, count), Gives(17305));
    EXPECT_FALSE(db.HasRecord(lamps, 1));
    EXPECT_TRUE(oids.empty());
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>(4, 17305));
}

TEST_F(RecordsOfALockedFile, CommitThatFailsChangesNothing)
{
    ASSERT_TRUE(Execute(other, "BEGIN; SELECT * FROM qeltpd")); // readers keep a commit from the file
    unsigned long oid = 0;
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(60))}, false), Gives(17305));
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(notifier.Text(), "");
    CQelTable table = TableOf(L"Other");
    EXPECT_THAT(db.AddTable(table), Gives(17305));
    EXPECT_FALSE(db.TableExists(L"Other"));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Gives(17305));
    ASSERT_TRUE(Execute(other, "COMMIT"));
    EXPECT_EQ(Dump(db), "Lamps\n  1 Power=40\n");
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM qeltpt"), "1\n");
}

} // namespace
