// records_test.cpp: the commands that change records, on both kinds of file.
#include "program_run.h"

#include <gmock/gmock.h>
#include <qelplat4/terminal.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class Records : public BothKinds
{
protected:
    std::string Record(const std::string& table, int oid)
    {
        return Out("get cars.db " + table + " @" + std::to_string(oid) + " --csv --no-header");
    }
};

TEST_P(Records, AddPrintsTheNewOidAlone)
{
    const bool legacy = GetParam() == std::string("legacy"); // takes the first free oid from 2 on
    EXPECT_EQ(Out("add cars.db Cars Model=PV Price=1 Maker=@3"), legacy ? "3\n" : "8\n");
    EXPECT_EQ(Out("add cars.db Cars --oid 100 Model=P1800"), "100\n");
    EXPECT_EQ(Record("Cars", 100), "100,P1800,,false,\n");
}

TEST_P(Records, AddTakesDefaultsUnlessToldNotTo)
{
    Out("add cars.db Cars --oid 10 Model=A");
    Out("add cars.db Cars --oid 11 Model=A --no-defaults");
    Out("add cars.db Cars --oid 12 Model=A Fast=null");
    EXPECT_EQ(Record("Cars", 10), "10,A,,false,\n");
    EXPECT_EQ(Record("Cars", 11), "11,A,,,\n");
    EXPECT_EQ(Record("Cars", 12), "12,A,,,\n");
}

TEST_P(Records, AddKeepsARecordOfNullsAlone)
{
    Out("add cars.db Makers --oid 50");
    EXPECT_EQ(Record("Makers", 50), "50,,\n");
    EXPECT_EQ(Out("count cars.db Makers"), "4\n");
}

TEST_P(Records, AddReplacesNoRecord)
{
    EXPECT_EQ(Refusal("add cars.db Cars --oid 7 Model=x"), "4 qelprop: cars.db: record @7 is there already");
    EXPECT_EQ(Record("Cars", 7), "7,Duett,,false,3\n");
    Out("add-table cars.db Empty");
    EXPECT_EQ(Refusal("add cars.db Empty"),
              "4 qelprop: cars.db: table 'Empty' has no columns, so that it holds no records");
}

TEST_P(Records, SetKeepsWhatItDoesNotName)
{
    EXPECT_EQ(Out("set cars.db Cars @1 Fast=true"), "");
    EXPECT_EQ(Record("Cars", 1), "1,96,1900.5000 EUR,true,2\n");
    Out("set cars.db Cars @1 Price=null Maker=null");
    EXPECT_EQ(Record("Cars", 1), "1,96,,true,\n");
    EXPECT_EQ(Refusal("set cars.db Cars @3 Fast=true"),
              "3 qelprop: cars.db: no record @3 in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("set cars.db Cars @1"), "2 qelprop: set: no NAME=VALUE given");
}

TEST_P(Records, NullIsAWordInTextColumnsUnlessAsked)
{
    Out("set cars.db Cars @1 Model=null");
    EXPECT_EQ(Record("Cars", 1), "1,null,1900.5000 EUR,false,2\n");
    Out("set cars.db Cars @1 Model=- --null-text -");
    EXPECT_EQ(Record("Cars", 1), "1,,1900.5000 EUR,false,2\n");
    Out("set cars.db Cars @1 Model=");
    EXPECT_EQ(Record("Cars", 1), "1,\"\",1900.5000 EUR,false,2\n");
}

TEST_P(Records, TheLongestColumnNameBeforeTheEqualsSignWins)
{
    Out("add-column cars.db Makers a:integer a=b:integer");
    Out("set cars.db Makers @1 a=b=5 a=6");
    EXPECT_EQ(Record("Makers", 1), "1,DKW,Germany,6,5\n");
    EXPECT_EQ(Run("set cars.db Makers @1 a=b").exit, 4); // no number
}

TEST_P(Records, TakeAColumnsOidWithZerosBeforeIt)
{
    WriteFile(program.File(L"country.bin"), "Bavaria");
    Out("set cars.db Makers @1 @01=NSU @0002@=country.bin");
    EXPECT_EQ(Record("Makers", 1), "1,NSU,Bavaria\n");
    EXPECT_EQ(Refusal("set cars.db Makers @1 @1=x @01=y"), "4 qelprop: cars.db: column 'Name': given twice");
}

TEST_P(Records, TakeValuesFromFiles)
{
    Out("add-column cars.db Cars Photo:binary");
    WriteFile(program.File(L"photo.bin"), std::string("\0\1\2", 3));
    WriteFile(program.File(L"model.bin"), "Duett\nkombi");
    Out("set cars.db Cars @7 Photo@=photo.bin Model@=model.bin");
    EXPECT_EQ(Record("Cars", 7), "7,\"Duett\nkombi\",,false,3,AAEC\n");
    EXPECT_EQ(Refusal("set cars.db Cars @7 Photo@=none.bin"), "3 qelprop: none.bin: no such file");
    EXPECT_EQ(Refusal("set cars.db Cars @7 Price@=photo.bin"),
              "4 qelprop: cars.db: column 'Price': only text and binary values are read from a file");
}

TEST_P(Records, RefuseValuesThatDoNotFitAndWriteNothing)
{
    const std::string before = Out("list cars.db Cars --csv");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Model=x Fast=perhaps").substr(0, 46),
              "4 qelprop: cars.db: column 'Fast': 'perhaps' i");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Model=x Maker=@9"),
              "4 qelprop: cars.db: column 'Maker': no record @9 in table 'Makers'");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Model=x Model=y"),
              "4 qelprop: cars.db: column 'Model': given twice");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Modell=x"),
              "3 qelprop: cars.db: no column 'Modell' in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Model"), "2 qelprop: 'Model' gives no column a value");
    EXPECT_EQ(Out("list cars.db Cars --csv"), before);
}

TEST_P(Records, FollowALocaleOnRequest)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    Out("set cars.db Cars @1 Price=1.200,50 --locale de_DE");
    EXPECT_EQ(Record("Cars", 1), "1,96,1200.5000 EUR,false,2\n");
    EXPECT_EQ(Refusal("set cars.db Cars @1 Price=12.50 --locale de_DE"),
              "4 qelprop: cars.db: column 'Price': '12.50' is no number in this locale");
}

TEST_P(Records, AreRemovedAllOrNone)
{
    EXPECT_EQ(Run("remove cars.db Cars @1 @3 --yes").exit, 3);
    EXPECT_EQ(Out("count cars.db Cars"), "3\n");
    const SRun run = Run("remove cars.db Cars @1 @7 @7 --yes");
    EXPECT_EQ(run.err, "removed 2 records with 7 values from table 'Cars'\n");
    EXPECT_EQ(Out("list cars.db Cars --columns Model -o plain"), "Sonett\n");
}

TEST_P(Records, AreRemovedByRanges)
{
    EXPECT_EQ(Run("remove cars.db Cars 1-2,2 --yes").err,
              "removed 2 records with 8 values from table 'Cars'\n");
    EXPECT_EQ(Run("remove cars.db Cars 1-2 --yes").exit, 3);
    EXPECT_EQ(Out("list cars.db Cars --columns Model -o plain"), "Duett\n");
}

TEST_P(Records, AreLeftAloneInADryRun)
{
    const std::string before = Out("list cars.db Cars --csv");
    for (const char* command :
         {"add cars.db Cars Model=x", "set cars.db Cars @1 Model=x", "remove cars.db Cars @1"}) {
        EXPECT_EQ(Run(command + std::string(" --dry-run")).exit, 0) << command;
        EXPECT_EQ(Out("list cars.db Cars --csv"), before) << command;
    }
}

TEST_P(Records, AreRolledBackWhenTheUserInterrupts)
{
    const std::string before = Out("list cars.db Cars --csv");
    for (const char* command :
         {"add cars.db Cars Model=x", "set cars.db Cars @1 Model=x", "remove cars.db Cars @1 --yes"}) {
        qel::SetInterrupted(true);
        const SRun run = Run(command);
        qel::SetInterrupted(false);
        EXPECT_EQ(run.exit, 130) << command;
        EXPECT_EQ(run.err, "qelprop: interrupted; nothing was saved\n");
        EXPECT_EQ(Out("list cars.db Cars --csv"), before) << command;
    }
}

TEST_P(Records, WaitForNoOtherWriterUnlessTold)
{
    CQelSQLite other;
    ASSERT_EQ(other.Open(program.File(L"cars.db").wstring()), 0);
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    const SRun run = Run("add cars.db Cars Model=x");
    EXPECT_EQ(run.exit, 1);
    EXPECT_THAT(run.err, HasSubstr("--timeout MS waits for it"));
    ASSERT_EQ(other.ExecSQL(L"ROLLBACK"), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, Records, testing::Values("sqlite", "legacy"), KindName);

} // namespace
} // namespace qeltest
