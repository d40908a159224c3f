// looking_test.cpp: the commands that look, on both kinds of file.
#include "program_run.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class Looking : public BothKinds
{};

TEST_P(Looking, ListsRecordsInTheOrderOfTheirOids)
{
    EXPECT_EQ(Out("list cars.db Cars --csv"), "@oid,Model,Price,Fast,Maker\n"
                                              "1,96,1900.5000 EUR,false,2\n"
                                              "2,Sonett,5400.0000 EUR,true,2\n"
                                              "7,Duett,,false,3\n");
}

TEST_P(Looking, SortsByManyKeysAndByOidWhereTheyAreAlike)
{
    EXPECT_EQ(Out("list cars.db Cars --sort Maker:desc,Price:desc --columns Model -o plain"),
              "Duett\nSonett\n96\n");
    EXPECT_EQ(Out("list cars.db Cars --sort Fast --columns @oid -o plain"), "1\n7\n2\n");
    EXPECT_EQ(Out("list cars.db Cars --sort Fast,@oid:desc --columns @oid -o plain"), "7\n1\n2\n");
    EXPECT_EQ(Out("list cars.db Cars --sort Price --columns Model -o plain"), "Duett\n96\nSonett\n");
}

TEST_P(Looking, SortsByTheRightColumnOnceColumnsWereMovedAndRemoved)
{
    Out("move-column cars.db Cars Maker --first");
    Out("remove-column cars.db Cars Model --yes");
    EXPECT_EQ(Out("list cars.db Cars --sort Price:desc --columns @oid -o plain"), "2\n1\n7\n");
    EXPECT_EQ(Out("list cars.db Cars --sort Maker:desc --columns @oid -o plain"), "7\n1\n2\n");
}

TEST_P(Looking, GivesOnePageOfTheRecords)
{
    EXPECT_EQ(Out("list cars.db Cars --limit 1 --offset 1 --columns Model -o plain"), "Sonett\n");
    EXPECT_EQ(Out("list cars.db Cars --offset 9 --columns Model -o plain"), "");
    EXPECT_EQ(Out("list cars.db Cars --limit 0 --csv --columns Model"), "Model\n");
}

TEST_P(Looking, FindsTablesAndColumnsByOid)
{
    const std::string table = GetParam() == std::string("legacy") ? "@1001" : "@2";
    const std::string column = GetParam() == std::string("legacy") ? "@2" : "@4";
    EXPECT_EQ(Out("list cars.db " + table + " --columns " + column + " -o plain --limit 1"),
              "1900.5000 EUR\n");
}

TEST_P(Looking, RefusesNamesThatAreNotThere)
{
    EXPECT_EQ(Refusal("list cars.db Car"), "3 qelprop: cars.db: no table 'Car' (10020)");
    EXPECT_EQ(Refusal("list cars.db @5"), "3 qelprop: cars.db: no table '@5' (10020)");
    EXPECT_EQ(Refusal("list cars.db Cars --sort Nope"),
              "3 qelprop: cars.db: no column 'Nope' in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("list cars.db Cars --columns Model,Nope"),
              "3 qelprop: cars.db: no column 'Nope' in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("list cars.db Cars --sort Model:up"),
              "2 qelprop: --sort: 'up' is neither asc nor desc");
    EXPECT_EQ(Refusal("get cars.db Cars @3"), "3 qelprop: cars.db: no record @3 in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("get cars.db Cars @x"), "2 qelprop: '@x' is no oid of a record");
    EXPECT_EQ(Refusal("list none.db Cars"), "3 qelprop: none.db: no such file");
}

TEST_P(Looking, PrintsNoRecordWhereOneOfManyIsMissing)
{
    EXPECT_EQ(Refusal("get cars.db Cars @1 @3 @7"),
              "3 qelprop: cars.db: no record @3 in table 'Cars' (10020)");
}

TEST_P(Looking, TakesRangesOfRecordsThatAreThere)
{
    const auto oids = [&](const std::string& records) {
        return Out("get cars.db Cars " + records + " --columns @oid --csv --no-header");
    };
    EXPECT_EQ(oids("1-7"), "1\n2\n7\n");
    EXPECT_EQ(oids("@2-@4294967295,1"), "2\n7\n1\n");
    EXPECT_EQ(oids("1,7 2-3"), "1\n7\n2\n");
    EXPECT_EQ(Out("get cars.db Makers 3-9 --columns Name --json"), "[{\"Name\":\"Volvo\"}]\n");
    EXPECT_EQ(Refusal("get cars.db Cars 3-6"),
              "3 qelprop: cars.db: no record @3 to @6 in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("get cars.db Cars 1-2,5"), "3 qelprop: cars.db: no record @5 in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("get cars.db Cars 7-1"), "2 qelprop: '7-1' ends before it begins");
    for (const char* const none : {"1-", "-", "1,,2", "1-2-3", "1-4294967296", "0-3"})
        EXPECT_EQ(Run(std::string("get cars.db Cars -- ") + none).exit, 2) << none;
}

TEST_P(Looking, ShowsOneRecordLineByLine)
{
    EXPECT_EQ(Out("get cars.db Cars @7"), "@oid   7\n"
                                          "Model  Duett\n"
                                          "Price  \u00b7\n"
                                          "Fast   No\n"
                                          "Maker  @3 Volvo\n");
    EXPECT_EQ(Out("get cars.db Makers @1 @3 --csv"), "@oid,Name,Country\n1,DKW,Germany\n3,Volvo,Sweden\n");
    EXPECT_EQ(Out("get cars.db Makers @1 --columns Name -o plain"), "DKW\n");
}

TEST_P(Looking, GivesTheBytesOfOneValue)
{
    Out("add-column cars.db Cars Photo:binary");
    WriteFile(program.File(L"photo.bin"), std::string("\xff\0\n\r", 4));
    Out("set cars.db Cars @7 Photo@=photo.bin");
    EXPECT_EQ(Out("get cars.db Cars @7 --blob Photo"), std::string("\xff\0\n\r", 4));
    EXPECT_EQ(Out("get cars.db Cars @7 --blob Model"), "Duett");
    EXPECT_EQ(Refusal("get cars.db Cars @1 --blob Photo"),
              "3 qelprop: column 'Photo': the record has no value here");
    EXPECT_EQ(Refusal("get cars.db Cars @1 --blob Price"),
              "4 qelprop: cars.db: column 'Price': holds neither bytes nor text");
}

TEST_P(Looking, CountsRecordsAndValues)
{
    EXPECT_EQ(Out("count cars.db Cars"), "3\n");
    EXPECT_EQ(Out("values cars.db Cars Maker --csv"), "Maker,@records\n2,2\n3,1\n");
    EXPECT_EQ(Out("values cars.db Cars Price --csv"),
              "Price,@records\n,1\n1900.5000 EUR,1\n5400.0000 EUR,1\n");
}

TEST_P(Looking, TellsWhatTheFileIs)
{
    const std::string kind = GetParam() == std::string("legacy") ? "legacy" : "SQLite";
    const std::string info = Out("info cars.db --json");
    EXPECT_THAT(info, HasSubstr("\"kind\": \"" + kind + "\""));
    EXPECT_THAT(info, HasSubstr("\"tables\": 2,\n  \"columns\": 6,\n  \"records\": 6,"));
    EXPECT_THAT(info, HasSubstr("\"bytes\": " + std::to_string(Bytes().size()) + ","));
    // The number before it stands as the user's settings group it.
    EXPECT_THAT(Out("info cars.db"), HasSubstr(" (" + std::to_string(Bytes().size() / 1024) + ".0 KiB)\n"));
}

TEST_P(Looking, NeverChangesAFile)
{
    const std::string before = Bytes();
    for (const char* command : {"info cars.db", "tables cars.db", "schema cars.db", "schema cars.db Cars",
                                "list cars.db Cars --sort Price", "get cars.db Cars @1", "count cars.db Cars",
                                "values cars.db Cars Maker"}) {
        Out(command);
        EXPECT_EQ(program.Names(), "cars.db") << command;
        EXPECT_TRUE(Bytes() == before) << command;
    }
}

TEST_P(Looking, WritesAFileCompleteOrNotAtAll)
{
    Out("list cars.db Makers --columns Name --csv -O names.csv");
    EXPECT_EQ(ReadFile(program.File(L"names.csv")), "Name\nDKW\nSaab\nVolvo\n");
    EXPECT_EQ(program.Names(), "cars.db names.csv");
    Out("add cars.db Cars Model=x --oid 9");
    const SRun run = program.RunWords({"get", program.File(L"cars.db").u8string(), "Cars", "@9", "@8", "-O",
                                       program.File(L"names.csv").u8string()});
    EXPECT_EQ(run.exit, 3);
    EXPECT_EQ(ReadFile(program.File(L"names.csv")), "Name\nDKW\nSaab\nVolvo\n");
    EXPECT_EQ(program.Names(), "cars.db names.csv");
}

TEST_P(Looking, NeverWritesItsAnswerOverTheDatabase)
{
    const std::string before = Bytes();
    EXPECT_EQ(Refusal("list cars.db Cars -O cars.db"), "2 qelprop: --output: this is the database itself");
    EXPECT_TRUE(Bytes() == before);
}

TEST_P(Looking, KeepsPermissionsAndLinkOfTheFileThatItReplaces)
{
    namespace fs = std::filesystem;
    WriteFile(program.File(L"real.csv"), "old");
    fs::permissions(program.File(L"real.csv"), fs::perms::owner_read | fs::perms::owner_write);
    std::error_code error;
    fs::create_symlink("real.csv", program.File(L"link.csv"), error);
    if (error)
        GTEST_SKIP() << "no links here";
    Out("list cars.db Makers --columns Name -o plain -O link.csv");
    EXPECT_TRUE(fs::is_symlink(program.File(L"link.csv")));
    EXPECT_EQ(ReadFile(program.File(L"real.csv")), "DKW\nSaab\nVolvo\n");
    EXPECT_EQ(fs::status(program.File(L"real.csv")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_P(Looking, MakesTheFileThatALinkLeadsTo)
{
    std::error_code error;
    std::filesystem::create_symlink("new.csv", program.File(L"link.csv"), error);
    if (error)
        GTEST_SKIP() << "no links here";
    Out("list cars.db Makers --columns Name -o plain -O link.csv");
    EXPECT_TRUE(std::filesystem::is_symlink(program.File(L"link.csv")));
    EXPECT_EQ(ReadFile(program.File(L"new.csv")), "DKW\nSaab\nVolvo\n");
}

TEST_P(Looking, CutsATableToTheScreenAlone)
{
    program.SetScreen(12);
    EXPECT_EQ(Out("list cars.db Makers --columns Name,Country --limit 1 --color never"),
              "Name  Count\u2026\n----  ------\nDKW   Germa\u2026\n");
    EXPECT_EQ(Out("list cars.db Makers --columns Name,Country --limit 1 --color never --width 0"),
              "Name  Country\n----  -------\nDKW   Germany\n");
}

TEST_P(Looking, ShowsPeopleWhatAReferenceNames)
{
    Out("remove cars.db Makers @3 --yes");
    Out("set cars.db Makers @2 Name=null --null-text null");
    Out("add cars.db Cars --oid 9 Model=F12 Maker=@1");
    EXPECT_EQ(Out("list cars.db Cars --columns Model,Maker"), "Model   Maker\n"
                                                              "------  ------\n"
                                                              "96      @2\n"
                                                              "Sonett  @2\n"
                                                              "Duett   @3\n"
                                                              "F12     @1 DKW\n");
    EXPECT_EQ(Out("list cars.db Cars --columns Maker -o plain"), "2\n2\n3\n1\n");
}

INSTANTIATE_TEST_SUITE_P(Of, Looking, testing::Values("sqlite", "legacy"), KindName);

} // namespace
} // namespace qeltest
