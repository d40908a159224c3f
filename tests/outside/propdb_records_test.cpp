// propdb_records_test.cpp: storing records.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideRecords : public CPropertyHost
{
protected:
    OutsideRecords() { Make(L"Lamps", {Column(L"Power"), Column(L"Maker", CQelProperty::eString)}); }

    unsigned long Added(int power, unsigned long oid = 0, bool useGiven = false)
    {
        EXPECT_EQ(db.AddRecord(1, oid, {Data(1, Number(power))}, useGiven), 10001u);
        return oid;
    }
};

TEST_F(OutsideRecords, AddingTellsItsStepsAndMessageFive)
{
    EXPECT_EQ(Added(40), 1ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 5(1,1)\n");
}

TEST_F(OutsideRecords, EveryValueIsOneRowInTheStoredForm)
{
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(2, Text(L"A")), Data(1, Number(40))}, false), 10001u);
    EXPECT_EQ(Ask("SELECT * FROM qeltpd ORDER BY oid"),
              "1|1|1|2|x0400010000000000000004000000000000000000000000000000" + std::string("41000000") +
                  " 2|1|1|1|x0400020000000000000000000000000000002800000000000000");
}

TEST_F(OutsideRecords, NumbersStartAtOneAndFollowTheHighest)
{
    EXPECT_EQ(Added(1), 1ul);
    EXPECT_EQ(Added(2), 2ul);
    EXPECT_EQ(Added(3), 3ul);
    ASSERT_EQ(db.RemoveRecord(1, 3), 10001u);
    EXPECT_EQ(Added(4), 3ul);
    EXPECT_EQ(Added(5, 7, true), 7ul);
    EXPECT_EQ(Added(6), 8ul);
    ASSERT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Added(7), 9ul) << "a gap is not filled";
}

TEST_F(OutsideRecords, NumbersAreEachTablesOwn)
{
    Make(L"Fans", {Column(L"Speed")});
    Put(1, 100, 1, Number(1));
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(2, oid, {Data(3, Number(9))}, false), 10001u);
    EXPECT_EQ(oid, 1ul);
}

TEST_F(OutsideRecords, MessageRestsOnTheNumberHandedIn)
{
    EXPECT_EQ(Added(1, 55, false), 1ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 6(1,1)\n");
    EXPECT_EQ(Added(1, 55, true), 55ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 6(1,55)\n");
    EXPECT_EQ(Added(1, 0, true), 56ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 5(1,56)\n");
}

TEST_F(OutsideRecords, GivenNumberReplacesNamedValuesAndKeepsOthers)
{
    ASSERT_EQ(db.SetRecord(1, 7, {Data(1, Number(1)), Data(2, Text(L"Osram"))}), 10001u);
    ASSERT_EQ(db.SetRecord(1, 7, {Data(1, Number(2))}), 10001u);
    EXPECT_EQ(Record(1, 7), "1=2 2=Osram");
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "2");
}

TEST_F(OutsideRecords, LaterValueOfTheSameColumnWins)
{
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(1, Number(1)), Data(1, Number(2))}, false), 10001u);
    EXPECT_EQ(Record(1, oid), "1=2 2=null");
}

TEST_F(OutsideRecords, NullIsStoredAsAValueAndMakesTheRecordExist)
{
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(1, CQelProperty())}, false), 10001u);
    EXPECT_TRUE(db.HasRecord(1, oid));
    EXPECT_EQ(Ask("SELECT length(data) FROM qeltpd"), "26");
}

TEST_F(OutsideRecords, ColumnZeroIsSkippedAndUnknownColumnsAreStored)
{
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(0, Number(1)), Data(99, Number(2))}, false), 10001u);
    EXPECT_EQ(oid, 1ul);
    EXPECT_EQ(Ask("SELECT foid,coid FROM qeltpd"), "1|99");
    EXPECT_EQ(Record(1, 1), "1=null 2=null");
}

TEST_F(OutsideRecords, WithoutValuesNothingIsWrittenAndTheNumberStays)
{
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {}, false), 10001u);
    EXPECT_EQ(oid, 0ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 5(1,0)\n");
    oid = 9;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(0, Number(1))}, true), 10001u);
    EXPECT_EQ(oid, 9ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 6(1,9)\n");
    EXPECT_EQ(db.AddRecord(1, oid, {}, false), 10001u);
    EXPECT_EQ(oid, 0ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nI4 - Done\n> 6(1,0)\n");
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "0");
}

TEST_F(OutsideRecords, UnknownTableIsAnInformalEntry)
{
    unsigned long oid = 5;
    EXPECT_EQ(db.AddRecord(9, oid, {Data(1, Number(1))}, true), 10020u);
    EXPECT_EQ(Told(), "I4 + Adding record\nI2 10020\n");
    EXPECT_EQ(oid, 5ul);
    EXPECT_EQ(db.AddRecord(9, oid, {Data(1, Number(1))}, false), 10020u);
    EXPECT_EQ(oid, 0ul) << "set to 0 before the table is looked up";
    Told();
    EXPECT_EQ(db.SetRecord(9, 5, {}), 10020u);
    EXPECT_EQ(Told(), "I4 + Setting record\nI2 10020\n");
}

TEST_F(OutsideRecords, SettingLogsItsOwnLineAndThatOfAdding)
{
    EXPECT_EQ(db.SetRecord(1, 7, {Data(1, Number(1))}), 10001u);
    const std::string told = Told();
    EXPECT_EQ(told.substr(0, 39), "I4 + Setting record\nI4 + Adding record\n") << told;
    EXPECT_NE(told.find("> 6(1,7)\n"), std::string::npos) << told;
}

TEST_F(OutsideRecords, SettingUnderZeroAllocates)
{
    EXPECT_EQ(db.SetRecord(1, 0, {Data(1, Number(1))}), 10001u);
    EXPECT_NE(Told().find("> 5(1,1)\n"), std::string::npos);
}

TEST_F(OutsideRecords, ClosedDatabaseIsAnErrorOfAddingAndAnInformalEntryOfSetting)
{
    sql.Close();
    unsigned long oid = 5;
    EXPECT_EQ(db.AddRecord(1, oid, {}, false), 17500u);
    EXPECT_EQ(oid, 5ul);
    EXPECT_EQ(Told(), "I4 + Adding record\nE 17500\n");
    EXPECT_EQ(db.SetRecord(1, 5, {}), 17500u);
    EXPECT_EQ(Told(), "I4 + Setting record\nI2 17500\n");
    EXPECT_EQ(db.RemoveRecord(1, 5), 17500u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nE 17500\n");
}

TEST_F(OutsideRecords, ReadOnlyDatabaseIsAnErrorOfAllThree)
{
    const CReadOnlyAttachment attached(db, sql);
    unsigned long oid = 5;
    EXPECT_EQ(db.AddRecord(1, oid, {}, false), 17501u);
    EXPECT_EQ(Told(), "I4 + Adding record\nE 17501\n");
    EXPECT_EQ(db.SetRecord(1, 5, {}), 17501u);
    EXPECT_EQ(Told(), "I4 + Setting record\nE 17501\n");
    EXPECT_EQ(db.RemoveRecord(1, 5), 17501u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nE 17501\n");
}

TEST_F(OutsideRecords, FailingValueTakesTheWholeRecordBack)
{
    Run("CREATE TRIGGER no BEFORE INSERT ON qeltpd WHEN new.coid=2 BEGIN SELECT raise(ABORT,'no'); END");
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(1, Number(1)), Data(2, Text(L"x"))}, false), 17319u);
    EXPECT_EQ(Told(), "I4 + Adding record\nE 17319\nI4 - Done\n");
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "0");
}

TEST_F(OutsideRecords, MissingSchemaIsAFault)
{
    Run("DROP TABLE qeltpd");
    unsigned long oid = 0;
    EXPECT_EQ(db.AddRecord(1, oid, {Data(1, Number(1))}, false), 17301u);
    EXPECT_EQ(Told(), "I4 + Adding record\nE 17301\nI4 - Done\n");
    EXPECT_EQ(db.RemoveRecord(1, 1), 17301u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nE 17301\nI4 - Done\n");
}

TEST_F(OutsideRecords, RemovingTellsMessageSevenWhetherOrNotThereWasARecord)
{
    Added(1);
    Told();
    EXPECT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n> 7(1,1)\n");
    EXPECT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n> 7(1,1)\n");
    EXPECT_EQ(db.RemoveRecord(77, 0), 10001u) << "the table is not looked up";
    EXPECT_EQ(Told(), "I4 + Removing Record\nI4 - Done\n> 7(77,0)\n");
}

TEST_F(OutsideRecords, RemovingTakesThatRecordOfThatTableAlone)
{
    Make(L"Fans", {Column(L"Speed")});
    Put(1, 1, 1, Number(1));
    Put(1, 2, 1, Number(2));
    Put(2, 1, 3, Number(3));
    EXPECT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Ask("SELECT toid,foid FROM qeltpd ORDER BY toid,foid"), "1|2 2|1");
}

TEST_F(OutsideRecords, RemovingTheValuesOfATableThatIsGoneWorks)
{
    Run("INSERT INTO qeltpd (foid,toid,coid) VALUES(3,88,1)");
    EXPECT_EQ(db.RemoveRecord(88, 3), 10001u);
    EXPECT_EQ(Ask("SELECT count(*) FROM qeltpd"), "0");
}

} // namespace
