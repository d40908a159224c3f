// exchange_test.cpp: what import says and keeps, and which files are never replaced.
#include "program_run.h"

#include <gmock/gmock.h>
#include <qelplat4/utf16.h>
#include <qelsq4/qelsq4.h>

using testing::AllOf;
using testing::HasSubstr;

namespace qeltest {
namespace {

class Exchange : public BothKinds
{
protected:
    std::string Name(const std::wstring& name) const { return program.File(name).u8string(); }
    void Write(const std::wstring& name, const std::string& bytes) { WriteFile(program.File(name), bytes); }
    SRun Words(const std::vector<std::string>& words) { return program.RunWords(words); }
};

TEST_P(Exchange, EachRefusedRecordIsALineAndTheRestIsCounted)
{
    std::string rows = "Model,Price\n";
    for (int row = 0; row < 25; ++row)
        rows += "x,much\n";
    Write(L"a.csv", rows + "Duett,1\n");
    const SRun run = Run("import cars.db Cars a.csv --on-error skip --rejects bad.csv");
    EXPECT_EQ(run.exit, 0);
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 21);
    EXPECT_THAT(run.err, HasSubstr(Name(L"a.csv") +
                                   ":2: column 'Price': 'much' is no amount (want 12.3400 EUR, at most "
                                   "four decimals)\n"));
    EXPECT_THAT(run.err, HasSubstr("imported 1 record, replaced 0, refused 25\n"));
    const std::string rejects = ReadFile(program.File(L"bad.csv"));
    EXPECT_EQ(rejects.substr(0, 26), "\"Model\",\"Price\"\n\"x\",\"much\"");
    EXPECT_EQ(std::count(rejects.begin(), rejects.end(), '\n'), 26);
}

TEST_P(Exchange, RejectsOfAnImportThatFailsAreNotKept)
{
    Write(L"a.csv", "Model,Price\nx,much\n\"open\n");
    Write(L"bad.csv", "old");
    EXPECT_EQ(Run("import cars.db Cars a.csv --on-error skip --rejects bad.csv").exit, 4);
    EXPECT_EQ(ReadFile(program.File(L"bad.csv")), "old");
    EXPECT_EQ(program.Names(), "a.csv bad.csv cars.db");
}

TEST_P(Exchange, SeparatorIsOfTheUsersChoice)
{
    Write(L"a.csv", "Model;Price\nDuett;1,5\n");
    const SRun refused = Run("import cars.db Cars a.csv");
    EXPECT_EQ(refused.exit, 3);
    EXPECT_THAT(refused.err, HasSubstr("hint: if ';' parts the values: --separator ';'\n"));
    SKIP_UNLESS_LOCALES_SWITCH();
    Out("import cars.db Cars a.csv --separator ; --locale de_DE");
    EXPECT_THAT(Out("export cars.db Cars --columns Model,Price --separator ;"),
                AllOf(HasSubstr("Model;Price\n96;1900.5000 EUR\n"), HasSubstr("\nDuett;1.5000\n")));
    for (const char* separator : {"", ";;", "\"", "\n", "\xc2\xa7"})
        EXPECT_EQ(Words({"export", Name(L"cars.db"), "Cars", "--separator", separator}).exit, 2) << separator;
}

TEST_P(Exchange, NameThatIsMappedMustBeInTheFile)
{
    Write(L"a.csv", "Kind\nDuett\n");
    EXPECT_EQ(Refusal("import cars.db Cars a.csv --map Kind=Model --map Preis=Price"),
              "3 qelprop: a.csv:1: --map: no column 'Preis' in the file");
}

TEST_P(Exchange, KeyThatSeveralRecordsHaveIsRefused)
{
    Out("add cars.db Cars Model=Duett");
    Write(L"a.csv", "Model,Fast\nDuett,true\n");
    EXPECT_EQ(Refusal("import cars.db Cars a.csv --key Model"),
              "4 qelprop: a.csv:2: several records have this key; nothing was imported");
    EXPECT_EQ(Out("count cars.db Cars"), "4\n");
}

TEST_P(Exchange, KeyThatTheFileRepeatsIsWrittenOver)
{
    Write(L"a.csv", "Model,Fast\nSpider,true\nSpider,false\n");
    EXPECT_THAT(Run("import cars.db Cars a.csv --key Model").err,
                HasSubstr("imported 1 record, replaced 1, refused 0"));
    EXPECT_EQ(Out("count cars.db Cars"), "4\n");
}

// The file itself, the same by another path, by a symbolic link and by a hard link.
TEST_P(Exchange, FileOfTheCommandIsNeverItsOutput)
{
    const std::string db = Name(L"cars.db");
    std::error_code noLinks;
    std::filesystem::create_symlink(db, program.File(L"link.db"), noLinks);
    if (noLinks)
        GTEST_SKIP() << "no symbolic link can be made here";
    std::filesystem::create_hard_link(db, program.File(L"hard.db"));
    const std::string detour = program.File(L"").u8string() + "./cars.db";
    const std::string before = Bytes();
    for (const std::string& same : {db, detour, Name(L"link.db"), Name(L"hard.db")}) {
        EXPECT_EQ(Words({"export", db, "Cars", "-O", same}).exit, 2) << same;
        EXPECT_EQ(Words({"dump", db, "-O", same}).exit, 2) << same;
        EXPECT_EQ(Words({"backup", db, same, "--force"}).exit, 2) << same;
        EXPECT_EQ(Words({"migrate", db, same, "--force"}).exit, 2) << same;
        EXPECT_EQ(Words({"load", db, same, "--force"}).exit, 2) << same;
        EXPECT_EQ(Words({"compact", db, "-O", same}).exit, 2) << same;
        EXPECT_EQ(Words({"count", db, "Cars", "--log", same}).exit, 2) << same;
        EXPECT_EQ(Bytes(), before) << same;
    }
}

TEST_P(Exchange, RejectsNeverReplaceWhatIsRead)
{
    Write(L"a.csv", "Model\nDuett\n");
    const std::string before = Out("list cars.db Cars --csv");
    EXPECT_EQ(Run("import cars.db Cars a.csv --on-error skip --rejects a.csv").exit, 2);
    EXPECT_EQ(Run("import cars.db Cars a.csv --on-error skip --rejects cars.db").exit, 2);
    EXPECT_EQ(ReadFile(program.File(L"a.csv")), "Model\nDuett\n");
    EXPECT_EQ(Out("list cars.db Cars --csv"), before);
}

TEST_P(Exchange, NewFileReplacesNothingUnasked)
{
    Out("dump cars.db -O dump.bin");
    for (const wchar_t* const name : {L"text.bin", L"other.db"}) {
        const std::string target = Name(name);
        if (name == std::wstring(L"text.bin"))
            Write(name, "a letter");
        else
            Out("init other.db");
        const std::string before = ReadFile(program.File(name));
        EXPECT_EQ(Words({"backup", Name(L"cars.db"), target}).exit, 4);
        EXPECT_EQ(Words({"migrate", Name(L"cars.db"), target}).exit, 4);
        EXPECT_EQ(Words({"load", target, Name(L"dump.bin")}).exit, 4);
        EXPECT_EQ(Words({"init", target}).exit, 4);
        EXPECT_EQ(ReadFile(program.File(name)), before);
    }
}

TEST_P(Exchange, ForceReplacesDatabasesAlone)
{
    Out("dump cars.db -O dump.bin");
    Write(L"text.bin", "a letter");
    {
        CQelSQLite foreign;
        ASSERT_EQ(foreign.Open(program.File(L"foreign.db").wstring()), 0);
        ASSERT_EQ(foreign.ExecSQL(L"CREATE TABLE own(a)"), 0);
    }
    for (const wchar_t* const name : {L"text.bin", L"foreign.db"}) {
        const std::string target = Name(name);
        const std::string before = ReadFile(program.File(name));
        EXPECT_EQ(Words({"backup", Name(L"cars.db"), target, "--force"}).exit, 4);
        EXPECT_EQ(Words({"migrate", Name(L"cars.db"), target, "--force"}).exit, 4);
        EXPECT_EQ(Words({"load", target, Name(L"dump.bin"), "--force"}).exit, 4);
        EXPECT_EQ(ReadFile(program.File(name)), before);
    }
    Out("init other.db");
    Out("load other.db dump.bin --force");
    Out("compare cars.db other.db");
}

TEST_P(Exchange, LoadAndMigrateKeepTablesOfAHost)
{
    Out("dump cars.db -O dump.bin");
    Out("init host.db");
    {
        CQelSQLite host;
        ASSERT_EQ(host.Open(program.File(L"host.db").wstring()), 0);
        ASSERT_EQ(host.ExecSQL(L"CREATE TABLE own(a)"), 0);
    }
    const std::string before = ReadFile(program.File(L"host.db"));
    for (const char* command : {"load host.db dump.bin --force", "migrate cars.db host.db --force"})
        EXPECT_EQ(Refusal(command),
                  "4 qelprop: host.db: the file holds other tables as well, and is never replaced");
    EXPECT_EQ(ReadFile(program.File(L"host.db")), before);
}

TEST_P(Exchange, RegionalTextKeepsEveryDigit)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    Out("add-column cars.db Cars Weight:double Bought:datetime");
    Out("set cars.db Cars @1 Price=1.2345 Weight=1050.12345 Bought=2024-02-29T13:05:09");
    Out("set cars.db Cars @2 Price=1200 Weight=1.5e-300 Bought=ole:45000.1234567");
    Out("set cars.db Cars @7 Price=-0.0001 Weight=nan");
    Out("add cars.db Cars Weight=-inf Price=922337203685477.5807");
    Out("export cars.db Cars -O before.csv");
    for (const char* const locale :
         {"de_DE", "en_US", "fr_FR", "de_CH", "ja_JP", "pt_BR", "sv_SE", "hi_IN"}) {
        Out(std::string("export cars.db Cars -O a.csv --locale ") + locale);
        Out(std::string("import cars.db Cars a.csv --key @oid --locale ") + locale);
        Out("export cars.db Cars -O after.csv");
        EXPECT_EQ(ReadFile(program.File(L"after.csv")), ReadFile(program.File(L"before.csv"))) << locale;
    }
}

TEST_P(Exchange, TextOfAFileIsKeptWholeOrRefused)
{
    Write(L"zero.bin", std::string("a\0b\n", 4));
    Write(L"bad.bin", "\xff\xfe");
    Out("set cars.db Cars @1 Model@=zero.bin");
    EXPECT_EQ(Out("get cars.db Cars @1 --blob Model"), std::string("a\0b\n", 4));
    EXPECT_EQ(Refusal("set cars.db Cars @1 Model@=bad.bin"),
              "4 qelprop: cars.db: column 'Model': 'bad.bin' is no text in UTF-8");
}

TEST_P(Exchange, OptionsWithoutEffectAreRefused)
{
    EXPECT_EQ(Refusal("dump cars.db --csv"), "2 qelprop: dump: --csv means nothing here");
    EXPECT_EQ(Refusal("add cars.db Cars -O a.csv"), "2 qelprop: add: --output means nothing here");
    EXPECT_EQ(Refusal("backup cars.db b.db --null x"), "2 qelprop: backup: --null means nothing here");
}

TEST_P(Exchange, LastOidLeavesRoomBelow)
{
    Out("add cars.db Makers --oid 4294967295 Name=Last");
    const std::string given = Out("add cars.db Makers Name=Next");
    EXPECT_EQ(Out("get cars.db Makers @" + given.substr(0, given.size() - 1) + " --columns Name -o plain"),
              "Next\n");
    EXPECT_EQ(Out("count cars.db Makers"), "5\n");
}

INSTANTIATE_TEST_SUITE_P(Of, Exchange, testing::Values("sqlite", "legacy"), KindName);

/// A file of each kind in which the record @2 of Cars cannot be read.
class DamagedRecord : public Exchange
{
protected:
    void SetUp() override
    {
        Exchange::SetUp();
        CQelSQLite file;
        ASSERT_EQ(file.Open(program.File(L"cars.db").wstring()), 0);
        const bool legacy = GetParam() == std::string("legacy");
        ASSERT_EQ(file.ExecSQL(legacy
                                   ? L"UPDATE rec SET crc = crc + 1 WHERE id & 4294967295 = 2 AND id >> 32 = "
                                     L"(SELECT MAX(id) >> 32 FROM rec)"
                                   : L"UPDATE qeltpd SET data = x'0400' WHERE foid = 2 AND toid = 2"),
                  0);
    }
};

TEST_P(DamagedRecord, IsNamed)
{
    const SRun run = Run("export cars.db Cars");
    EXPECT_EQ(run.exit, 5);
    EXPECT_THAT(run.err, HasSubstr("cannot read record @2 of table 'Cars': "));
    EXPECT_THAT(
        run.err,
        HasSubstr("hint: 'qelprop check' lists what is damaged; 'export' and 'dump' leave it out with "
                  "--skip-damaged\n"));
}

TEST_P(DamagedRecord, IsLeftOutOnRequest)
{
    const SRun run = Run("export cars.db Cars --columns Model --skip-damaged");
    EXPECT_EQ(run.exit, 5);
    EXPECT_EQ(run.out, "Model\n96\nDuett\n");
    EXPECT_THAT(run.err, HasSubstr("; left out"));
    const SRun dump = Run("dump cars.db --skip-damaged -O dump.bin");
    EXPECT_EQ(dump.exit, 5);
    Out("load copy.db dump.bin");
    EXPECT_EQ(Out("count copy.db Cars"), "2\n");
}

TEST_P(DamagedRecord, IsLeftOutOfWhatAConditionChooses)
{
    const SRun run = Run("export cars.db Cars --columns Model --skip-damaged --where Fast=false");
    EXPECT_EQ(run.exit, 5);
    EXPECT_EQ(run.out, "Model\n96\nDuett\n");
}

TEST_P(DamagedRecord, GoesWithItsTable)
{
    EXPECT_EQ(Run("remove-table cars.db Cars --yes").err,
              "removed table 'Cars' with 3 records and 7 values\n");
    EXPECT_EQ(Run("check cars.db").exit, 0);
}

TEST_P(DamagedRecord, CanBeRemoved)
{
    Out("remove cars.db Cars @2 --yes");
    EXPECT_EQ(Out("export cars.db Cars --columns Model"), "Model\n96\nDuett\n");
    Out("check cars.db");
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedRecord, testing::Values("sqlite", "legacy"), KindName);

} // namespace
} // namespace qeltest
