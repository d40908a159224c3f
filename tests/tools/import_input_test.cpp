// import_input_test.cpp: what import says of its input, on both kinds of file.
#include "program_run.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class ImportInput : public BothKinds
{
protected:
    std::string RefusalOf(const std::string& text, const std::string& options = "")
    {
        WriteFile(program.File(L"in.csv"), text);
        return Refusal("import cars.db Makers in.csv " + options);
    }
    /// The line with the hint.
    std::string HintOf(const std::string& options)
    {
        const std::string err = Run("import cars.db Makers in.csv " + options).err;
        return err.substr(std::min(err.find('\n'), err.size() - 1) + 1);
    }
};

TEST_P(ImportInput, PassesOverColumnsThatAreMappedToNothing)
{
    WriteFile(program.File(L"in.csv"), "Name,Comment,\nFiat,good,\n\"\",bad,\n");
    WriteFile(program.File(L"lines.csv"), "{\"Name\":\"Lancia\",\"Comment\":3}\n");
    Out("import cars.db Makers in.csv --map Comment= --map =");
    Out("import cars.db Makers lines.csv --jsonl --map Comment=");
    EXPECT_EQ(Out("list cars.db Makers --where-null Country --csv --columns Name --no-header"),
              "Fiat\n\"\"\nLancia\n");
}

TEST_P(ImportInput, SaysHowAnUnknownColumnIsPassedOver)
{
    EXPECT_EQ(RefusalOf("Name,Comment\nFiat,good\n"),
              "3 qelprop: in.csv:1: no column 'Comment' in table 'Makers' (10020)");
    EXPECT_EQ(
        HintOf(""),
        "hint: --map NAME=COLUMN takes a name in the file for another column, --map NAME= passes over it\n");
    EXPECT_EQ(RefusalOf("Name,\nFiat,\n"), "3 qelprop: in.csv:1: no column '' in table 'Makers' (10020)");
    EXPECT_EQ(HintOf(""), "hint: --map = passes over values without a name, as behind a last separator\n");
}

TEST_P(ImportInput, CountsTheRecordsOfOneLineOfJson)
{
    RefusalOf(R"([{"Name":"A"},{"Name":"B"},{"Name":true}])", "--json");
    const std::string err = Run("import cars.db Makers in.csv --json").err;
    EXPECT_THAT(err, HasSubstr(R"("line":1,"message":"record 3: column 'Name': )"));
}

TEST_P(ImportInput, TellsAPlaceInJsonByItsRecordAndByte)
{
    RefusalOf(R"([{"Name":"A"},{"Name":}])", "--json");
    EXPECT_THAT(Run("import cars.db Makers in.csv --json").err,
                HasSubstr(R"("message":"record 2: no JSON at byte 9: syntax error)"));
    RefusalOf(R"([{"Name":"A"},])", "--json");
    EXPECT_THAT(
        Run("import cars.db Makers in.csv --json").err,
        HasSubstr(R"("message":"behind record 1: no object follows the comma; nothing was imported")"));
}

TEST_P(ImportInput, KnowsWhatIsNoTextByItsFirstBytes)
{
    EXPECT_EQ(RefusalOf(std::string("\xFF\xFEN\0a\0", 6)),
              "4 qelprop: in.csv: this is text in UTF-16, and UTF-8 is wanted");
    EXPECT_EQ(RefusalOf("\x1F\x8B\x08 and so on"), "4 qelprop: in.csv: this is packed");
    EXPECT_EQ(RefusalOf(Bytes()), "4 qelprop: in.csv: this is a database, and text is wanted");
    EXPECT_EQ(Refusal("import cars.db Makers no.csv"), "3 qelprop: no.csv: no such file");
}

TEST_P(ImportInput, TakesAZeroCharacterThatTablesShow)
{
    WriteFile(program.File(L"in.csv"), "{\"Name\":\"a\\u0000b\"}\n");
    Out("import cars.db Makers in.csv --jsonl");
    EXPECT_THAT(Out("list cars.db Makers --where-null Country"), HasSubstr("  a\u2400b "));
}

TEST_P(ImportInput, SaysThatADateIsTooEarly)
{
    Out("add-column cars.db Makers Founded:date");
    EXPECT_EQ(
        RefusalOf("Founded\n0099-12-31\n"),
        "4 qelprop: in.csv:2: column 'Founded': '0099-12-31' is too early (dates begin with 0100-01-01); "
        "nothing was imported");
    EXPECT_THAT(RefusalOf("Founded\n00991231\n"), HasSubstr("want YYYY-MM-DD"));
}

TEST_P(ImportInput, CountsReferencesThatLeadNowhere)
{
    WriteFile(program.File(L"in.csv"), "Model,Maker\nA,1\nB,8\nC,9\nD,9\nE,\n");
    EXPECT_EQ(Run("import cars.db Cars in.csv").err,
              "imported 5 records, replaced 0, refused 0\n"
              "3 references lead to no record; 'qelprop check' lists what dangles\n");
    EXPECT_EQ(Run("check cars.db").exit, 5);
}

TEST_P(ImportInput, FindsWhatIsReferredToFurtherDown)
{
    Out("add-table cars.db Parts Name:string");
    Out("add-column cars.db Parts Parent:reference:Parts.Name");
    WriteFile(program.File(L"in.csv"), "@oid,Name,Parent\n11,Piston,12\n12,Engine,\n13,Valve,14\n");
    EXPECT_EQ(Run("import cars.db Parts in.csv --dry-run").err,
              "dry run: nothing was saved\n"
              "would have imported 3 records, replaced 0, refused 0\n"
              "1 reference leads to no record; 'qelprop check' lists what dangles\n");
}

INSTANTIATE_TEST_SUITE_P(Kinds, ImportInput, testing::Values("sqlite", "legacy"), KindName);

} // namespace
} // namespace qeltest
