// defining_test.cpp: the commands that define, on both kinds of file.
#include "program_run.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class Defining : public BothKinds
{
protected:
    /// Name and type of each column, in display order.
    std::string Columns(const std::string& table)
    {
        const std::string rows = Out("schema cars.db " + table + " -o tsv --no-header");
        std::istringstream stream(rows);
        std::string columns;
        for (std::string line; std::getline(stream, line);) {
            std::istringstream cells(line);
            std::string oid;
            std::string name;
            std::string type;
            cells >> oid >> name >> type;
            columns += columns.empty() ? "" : " ";
            columns.append(name).append(":").append(type);
        }
        return columns;
    }
};

TEST_P(Defining, MakesColumnsOfEveryType)
{
    Out("add-table cars.db All A:string B:integer C:unsigned D:integer64 E:unsigned64 F:double G:date H:time "
        "I:boolean J:currency:EUR K:hyperlink L:reference:Makers.Name M:binary N:datetime");
    EXPECT_EQ(Columns("All"), "A:string B:integer C:unsigned D:integer64 E:unsigned64 F:double G:date H:time "
                              "I:boolean J:currency K:hyperlink L:reference M:binary N:datetime");
    EXPECT_THAT(Out("schema cars.db All --json"),
                HasSubstr("\"table\": \"Makers\",\n        \"column\": \"Name\""));
}

TEST_P(Defining, TakesNamesWithAnEqualsSign)
{
    Out("add-table cars.db T=1 A=B:integer=5");
    EXPECT_EQ(Columns("T=1"), "A=B:integer");
    Out("add cars.db T=1 --oid 1");
    Out("add-column cars.db Cars R:reference:T=1.A=B=@1");
    EXPECT_THAT(Out("schema cars.db Cars --csv"), HasSubstr("R,reference,1,T=1.A=B"));
}

TEST_P(Defining, SaysWhatIsWrongWithAName)
{
    EXPECT_EQ(Refusal("add-table cars.db a-b"), "4 qelprop: cars.db: invalid name 'a-b' (17502)");
    EXPECT_EQ(Refusal("add-table cars.db Shops Shelf.no:string"),
              "4 qelprop: cars.db: invalid name 'Shelf.no' (17502)");
    EXPECT_EQ(Refusal("rename-table cars.db Cars a/b"), "4 qelprop: cars.db: invalid name 'a/b' (17502)");
    EXPECT_EQ(Refusal("rename-column cars.db Cars Model a,b"),
              "4 qelprop: cars.db: invalid name 'a,b' (17502)");
    const std::string db = program.File(L"cars.db").u8string();
    EXPECT_EQ(program.RunWords({"rename-table", db, "Cars", "My Cars"}).err,
              "qelprop: " + db + ": invalid name 'My Cars' (17502)\nhint: names hold no blank\n");
    EXPECT_EQ(program.RunWords({"rename-table", db, "Cars", ""}).err,
              "qelprop: " + db + ": a name cannot be empty (17502)\n");
    Out("check cars.db");
}

TEST_P(Defining, RefusesColumnsThatAreNoneAndAddsNoOther)
{
    EXPECT_EQ(Refusal("add-column cars.db Cars Seats:integer Model:string"),
              "4 qelprop: cars.db: cannot add column 'Model': the name is already used (17503)");
    EXPECT_EQ(Refusal("add-column cars.db Cars a.b:string"),
              "4 qelprop: cars.db: invalid name 'a.b' (17502)");
    EXPECT_EQ(Refusal("add-column cars.db Cars A:string A:integer"),
              "4 qelprop: cars.db: column 'A' is given twice (17503)");
    EXPECT_EQ(Refusal("add-column cars.db Cars Other:reference:Makers.Name=@9"),
              "4 qelprop: cars.db: column 'Other': no record @9 in table 'Makers'");
    EXPECT_EQ(Refusal("modify-column cars.db Cars Maker --default @9"),
              "4 qelprop: cars.db: column 'Maker': no record @9 in table 'Makers'");
    EXPECT_EQ(Refusal("add-column cars.db Cars Seats:intger"), "2 qelprop: no type 'intger'");
    EXPECT_EQ(Refusal("add-column cars.db Cars Seats"), "2 qelprop: column 'Seats' has no type");
    EXPECT_EQ(Refusal("add-column cars.db Cars Seats:integer:EUR"),
              "2 qelprop: type 'integer' takes nothing after it");
    EXPECT_EQ(Refusal("add-column cars.db Cars M:reference:Makrs.Name"),
              "3 qelprop: cars.db: no table 'Makrs' (10020)");
    EXPECT_EQ(Refusal("add-column cars.db Cars M:reference"),
              "2 qelprop: a reference wants the table that it refers to");
    EXPECT_EQ(Refusal("add-column cars.db Cars Seats:integer=many").substr(0, 44),
              "4 qelprop: cars.db: column 'Seats': 'many' i");
    EXPECT_EQ(Columns("Cars"), "Model:string Price:currency Fast:boolean Maker:reference");
}

TEST_P(Defining, RenamesTablesAndColumns)
{
    Out("rename-table cars.db Cars Vehicles");
    Out("rename-column cars.db Vehicles Model Name");
    Out("rename-table cars.db Vehicles Vehicles"); // its own name is no refusal
    Out("rename-column cars.db Vehicles Name Name");
    EXPECT_EQ(Columns("Vehicles"), "Name:string Price:currency Fast:boolean Maker:reference");
    EXPECT_EQ(Refusal("rename-table cars.db Vehicles Makers"),
              "4 qelprop: cars.db: cannot rename the table to 'Makers': the name is already used (17503)");
    EXPECT_EQ(Refusal("rename-column cars.db Vehicles Name Price"),
              "4 qelprop: cars.db: cannot rename the column to 'Price': the name is already used (17503)");
}

TEST_P(Defining, MovesColumnsToWhereTheyAreWanted)
{
    Out("move-column cars.db Cars Maker --first");
    EXPECT_EQ(Columns("Cars"), "Maker:reference Model:string Price:currency Fast:boolean");
    Out("move-column cars.db Cars Maker --after Price");
    EXPECT_EQ(Columns("Cars"), "Model:string Price:currency Maker:reference Fast:boolean");
    Out("move-column cars.db Cars Fast --before Price");
    EXPECT_EQ(Columns("Cars"), "Model:string Fast:boolean Price:currency Maker:reference");
    Out("move-column cars.db Cars Model --last");
    EXPECT_EQ(Columns("Cars"), "Fast:boolean Price:currency Maker:reference Model:string");
    EXPECT_EQ(Out("get cars.db Cars @2 -o plain"), "2\ttrue\t5400.0000 EUR\t2\tSonett\n");
    EXPECT_EQ(Refusal("move-column cars.db Cars Model"),
              "2 qelprop: move-column wants one of --first, --last, --before and --after");
    EXPECT_EQ(Refusal("move-column cars.db Cars Model --before Model"),
              "2 qelprop: a column cannot stand beside itself");
}

TEST_P(Defining, ChangesWhatIsNamedOfAColumn)
{
    Out("modify-column cars.db Cars Price --default 9.99 --currency SEK --description Cost --hint 4");
    EXPECT_THAT(Out("schema cars.db Cars --csv"), HasSubstr("Price,currency,9.9900 SEK,,SEK,,4,1,Cost"));
    Out("modify-column cars.db Cars Price --no-default");
    EXPECT_THAT(Out("schema cars.db Cars --csv"), HasSubstr("Price,currency,,,SEK,,4,1,Cost"));
    EXPECT_EQ(Refusal("modify-column cars.db Cars Price"), "2 qelprop: modify-column: nothing to change");
}

TEST_P(Defining, ChangesATypeWhileThereAreNoRecords)
{
    Out("add-table cars.db T N:string=12");
    Out("modify-column cars.db T N --type integer");
    EXPECT_THAT(Out("schema cars.db T --csv"), HasSubstr("N,integer,12,"));
    Out("modify-column cars.db T N --type string --default twelve");
    EXPECT_EQ(Run("modify-column cars.db T N --type integer").exit, 4);
    Out("add cars.db T N=1");
    EXPECT_EQ(Run("modify-column cars.db T N --type double --no-default").exit, 4);
    EXPECT_EQ(Columns("T"), "N:string");
}

TEST_P(Defining, RemovesOnlyWithConsent)
{
    const std::string before = Bytes();
    EXPECT_EQ(Refusal("remove-column cars.db Cars Price"),
              "2 qelprop: cannot ask whether to remove column 'Price' with 2 values: no terminal");
    program.Answer("n\n");
    EXPECT_EQ(Run("remove-table cars.db Cars").exit, 4);
    EXPECT_TRUE(Bytes() == before);
    program.Answer("y\n");
    const SRun run = Run("remove-column cars.db Cars Price");
    EXPECT_EQ(run.err, "remove column 'Price' with 2 values? [y/N] removed column 'Price' with 2 values\n");
    EXPECT_EQ(Columns("Cars"), "Model:string Fast:boolean Maker:reference");
    EXPECT_EQ(Out("get cars.db Cars @2 -o plain"), "2\tSonett\ttrue\t2\n");
}

TEST_P(Defining, RemovesNothingThatIsReferredTo)
{
    EXPECT_EQ(Refusal("remove-table cars.db Makers --yes"),
              "4 qelprop: cars.db: column 'Maker' of table 'Cars' refers to this table (17509)");
    EXPECT_EQ(Refusal("remove-column cars.db Makers Name --yes"),
              "4 qelprop: cars.db: column 'Maker' of table 'Cars' refers to this column (17509)");
    EXPECT_EQ(Run("remove-column cars.db Cars Maker --yes").exit, 0);
    EXPECT_EQ(Run("remove-table cars.db Makers --yes").err,
              "removed table 'Makers' with 3 records and 6 values\n");
}

TEST_P(Defining, SavesNothingInADryRun)
{
    const std::string before = Out("schema cars.db --json");
    for (const char* command :
         {"add-table cars.db T A:string", "rename-table cars.db Cars T", "remove-table cars.db Cars",
          "add-column cars.db Cars A:string", "modify-column cars.db Cars Price --hint 3",
          "rename-column cars.db Cars Price P", "remove-column cars.db Cars Price",
          "move-column cars.db Cars Price --last"}) {
        const SRun run = Run(command + std::string(" --dry-run"));
        EXPECT_EQ(run.exit, 0) << command << run.err;
        EXPECT_THAT(run.err, HasSubstr("dry run: nothing was saved\n"));
        EXPECT_EQ(Out("schema cars.db --json"), before) << command;
        EXPECT_EQ(Out("count cars.db Cars"), "3\n");
        EXPECT_EQ(program.Names(), "cars.db") << command;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Defining, testing::Values("sqlite", "legacy"), KindName);

TEST(Init, KeepsOtherTablesOfAnSqliteDatabase)
{
    CProgram program;
    {
        CQelSQLite other;
        ASSERT_EQ(other.Open(program.File(L"host.db").wstring()), 0);
        ASSERT_EQ(other.ExecSQL(L"CREATE TABLE mine(a); INSERT INTO mine VALUES(7)"), 0);
    }
    EXPECT_EQ(program.Run("init host.db").exit, 0);
    EXPECT_EQ(program.Run("tables host.db --json").out, "[]\n");
    CQelSQLite other;
    ASSERT_EQ(other.Open(program.File(L"host.db").wstring(), true), 0);
    CQelSQLite::CStatement statement(&other);
    statement.Prepare(L"SELECT a FROM mine");
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 7);
}

TEST(Init, RefusesWhatHoldsAPropertyDatabaseUnlessForced)
{
    for (const char* format : {"sqlite", "legacy"}) {
        CProgram program;
        const std::string init = std::string("init a.db --format ") + format;
        EXPECT_EQ(program.Run(init).exit, 0);
        EXPECT_EQ(program.Run("add-table a.db T").exit, 0);
        EXPECT_EQ(program.Run(init).exit, 4);
        EXPECT_EQ(program.Run(init + " --force --dry-run").exit, 0);
        EXPECT_NE(program.Run("tables a.db --csv --no-header").out, "") << format;
        EXPECT_EQ(program.Run(init + " --force").exit, 0);
        EXPECT_EQ(program.Run("tables a.db --csv --no-header").out, "") << format;
    }
}

TEST(Init, NeverReplacesAFileOfAnotherKind)
{
    CProgram program;
    WriteFile(program.File(L"note.db"), "x");
    program.Run("init old.store --format legacy");
    program.Run("init new.db");
    const std::string store = ReadFile(program.File(L"old.store"));
    for (const char* command : {"init note.db --force", "init note.db --format legacy --force",
                                "init old.store --force", "init new.db --format legacy --force"})
        EXPECT_EQ(program.Run(command).exit, 4) << command;
    EXPECT_EQ(ReadFile(program.File(L"note.db")), "x");
    EXPECT_TRUE(ReadFile(program.File(L"old.store")) == store);
}

TEST(Init, LeavesNoFileBehindInADryRun)
{
    CProgram program;
    EXPECT_EQ(program.Run("init a.db --dry-run").exit, 0);
    EXPECT_EQ(program.Run("init a.store --format legacy --dry-run").exit, 0);
    EXPECT_EQ(program.Names(), "");
}

TEST(Init, LeavesALinkToNothingAsItIs)
{
    CProgram program;
    std::error_code error;
    std::filesystem::create_symlink("new.db", program.File(L"link.db"), error);
    if (error)
        GTEST_SKIP() << "no links here";
    for (const char* const kind : {"sqlite", "legacy"}) {
        program.Run(std::string("init link.db --dry-run --format ") + kind);
        EXPECT_TRUE(std::filesystem::is_symlink(program.File(L"link.db"))) << kind;
        EXPECT_FALSE(std::filesystem::exists(program.File(L"new.db"))) << kind;
    }
}

TEST(Opening, TellsFilesThatAreNoPropertyDatabase)
{
    CProgram program;
    WriteFile(program.File(L"note.db"), "a note");
    WriteFile(program.File(L"empty.db"), "");
    EXPECT_THAT(program.Run("tables note.db").err,
                HasSubstr("neither an SQLite database nor a legacy store"));
    EXPECT_THAT(program.Run("tables empty.db").err, HasSubstr("no property tables\nhint: 'qelprop init'"));
    EXPECT_EQ(program.Run("tables empty.db").exit, 3);
    EXPECT_EQ(program.Run("add-table empty.db T").exit, 3);
    EXPECT_EQ(ReadFile(program.File(L"empty.db")), "");
}

} // namespace
} // namespace qeltest
