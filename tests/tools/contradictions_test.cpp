// contradictions_test.cpp: command lines that ask for two things at once, or for what would have no effect.
#include "program_run.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class Contradictions : public BothKinds
{
protected:
    void Refuses(const std::string& arguments, const std::string& message)
    {
        const std::string before = Out("dump cars.db");
        EXPECT_EQ(Refusal(arguments), "2 qelprop: " + message);
        EXPECT_EQ(Out("dump cars.db"), before) << arguments;
    }
};

TEST_P(Contradictions, AreRefusedBetweenOptions)
{
    Refuses("list cars.db Cars --csv --tsv", "--csv and --tsv: one format can be asked for");
    Refuses("list cars.db Cars -o csv --jsonl", "--as and --jsonl: one format can be asked for");
    Refuses("list cars.db Cars --limit 1 --limit 2", "--limit is given twice");
    Refuses("list cars.db Cars --null a --null b", "--null is given twice");
    Refuses("modify-column cars.db Cars Model --default 9 --no-default",
            "--default and --no-default: a column has one or none");
    EXPECT_EQ(Out("count cars.db Cars --color never --color auto"), "3\n"); // an alias may hold the first
}

TEST_P(Contradictions, AreRefusedWhereAnOptionHasNoEffect)
{
    WriteFile(program.File(L"in.csv"), "Name\nFiat\n");
    Refuses("import cars.db Makers in.csv --rejects bad.csv", "--rejects wants --on-error skip");
    Refuses("modify-column cars.db Cars Model --currency EUR", "--currency is for columns of type currency");
    Refuses("init new.store --format legacy --no-indexes", "--no-indexes is for SQLite");
    Refuses("add-column cars.db Cars Rent:currency:EUR:x",
            "currency 'EUR:x': nothing follows the currency but =DEFAULT");
    EXPECT_EQ(program.Names().find("new.store"), std::string::npos);
    Refuses("check cars.db --no-header", "check: --no-header means nothing here");
    Refuses("compare cars.db cars.db --width 9", "compare: --width means nothing here");
    Refuses("check cars.db -o csv", "faults and differences are text, json or jsonl");
    Refuses("compare cars.db cars.db -o tsv", "faults and differences are text, json or jsonl");
}

TEST_P(Contradictions, NameARecordThatWasForgotten)
{
    Refuses("set cars.db Cars Model=PV", "'Model=PV' is no record");
    EXPECT_THAT(Run("set cars.db Cars Model=PV").err,
                HasSubstr("hint: qelprop set FILE TABLE RECORD NAME=VALUE... [OPTIONS]\n"));
}

TEST_P(Contradictions, LeadFromHelpToTheOption)
{
    EXPECT_EQ(Run("help list").err, "qelprop: no command 'help'\nhint: qelprop list --help\n");
    EXPECT_EQ(Run("help").err, "qelprop: no command 'help'\nhint: qelprop --help\n");
}

INSTANTIATE_TEST_SUITE_P(Kinds, Contradictions, testing::Values("sqlite", "legacy"), KindName);

class Retargeting : public BothKinds
{
protected:
    void SetUp() override
    {
        BothKinds::SetUp();
        Out("add-table cars.db Owners Name:string");
    }
};

TEST_P(Retargeting, IsRefusedWhileARecordHoldsAReference)
{
    const std::string before = Out("dump cars.db");
    EXPECT_EQ(Refusal("modify-column cars.db Cars Maker --type reference:Owners.Name"),
              "4 qelprop: cars.db: column 'Maker': 3 values would refer to records of another table (17506)");
    EXPECT_EQ(Out("dump cars.db"), before);
    Out("modify-column cars.db Cars Maker --type reference:Makers.Country"); // the same table
}

TEST_P(Retargeting, IsDoneOnceEveryValueIsNull)
{
    for (const char* record : {"@1", "@2", "@7"})
        Out(std::string("set cars.db Cars ") + record + " Maker=null");
    Out("modify-column cars.db Cars Maker --type reference:Owners.Name");
    EXPECT_THAT(Out("schema cars.db Cars --csv"), HasSubstr(",Owners.Name,"));
}

TEST_P(Retargeting, IsRefusedForADefaultOfTheOldTable)
{
    Out("add-column cars.db Cars Second:reference:Makers.Name=@1");
    EXPECT_EQ(
        Refusal("modify-column cars.db Cars Second --type reference:Owners.Name"),
        "4 qelprop: cars.db: column 'Second': the default is a record of the table referred to until now");
    Out("modify-column cars.db Cars Second --type reference:Owners.Name --no-default");
}

TEST_P(Retargeting, DoesNotKeepATableThatRefersToItself)
{
    Out("add-table cars.db Parts Name:string");
    Out("add-column cars.db Parts Parent:reference:Parts.Name");
    Out("add cars.db Parts --oid 1 Name=Engine");
    Out("add cars.db Parts --oid 2 Name=Piston Parent=@1");
    Out("remove-table cars.db Parts --dry-run");
    EXPECT_EQ(Out("count cars.db Parts"), "2\n");
    Out("remove-table cars.db Parts --yes");
    EXPECT_EQ(Run("count cars.db Parts").exit, 3);
    EXPECT_EQ(Out("check cars.db"), "");
}

INSTANTIATE_TEST_SUITE_P(Kinds, Retargeting, testing::Values("sqlite", "legacy"), KindName);

TEST(Output, GoesToTheStreamThatANameUnderDevStandsFor)
{
    CProgram program;
    EXPECT_EQ(program.Run("init cars.db").exit, 0);
    EXPECT_EQ(program.Run("add-table cars.db Makers Name:string").exit, 0);
    for (const char* name : {"-", "/dev/stdout", "/dev/fd/1", "/dev//./stdout"})
        EXPECT_EQ(program.Run(std::string("count cars.db Makers -O ") + name).out, "0\n") << name;
    const SRun run = program.Run("count cars.db Makers -O /dev/stderr");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "0\n");
}

} // namespace
} // namespace qeltest
