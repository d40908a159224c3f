// failures_test.cpp: how failures look, and which exit status they have.
#include "adaptor/failure.h"
#include "program_run.h"

#include <gmock/gmock.h>
#include <qellib4/qellib4.h>
#include <qelsq4/qelsq4.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

TEST(ExitStatus, FollowsFromTheResultCode)
{
    const std::pair<unsigned int, int> cases[] = {
        {qel::kSuccess, 0},         {qel::kUnknownException, 1}, {qel::kReadOnly, 1},
        {qel::kSqlBase + 5, 1},     {qel::kSqlBase + 13, 1},     {qel::kFileInUse, 1},
        {qel::kNotFound, 3},        {qel::kFileMissing, 3},      {qel::kInvalidName, 4},
        {qel::kNameInUse, 4},       {qel::kTooManyColumns, 4},   {qel::kTypeFixedByRecords, 4},
        {qel::kStillReferenced, 4}, {qel::kFileExists, 4},       {qel::kChecksumMismatch, 5},
        {qel::kEndOfStream, 5},     {qel::kRecordDamaged, 5},    {qel::kSqlBase + 11, 5}};
    for (const auto& [code, exit] : cases)
        EXPECT_EQ(static_cast<int>(tool::ExitOf(code)), exit) << code;
}

TEST(Failure, IsOneLineAndAtMostOneHint)
{
    CProgram program;
    EXPECT_EQ(program.Run("lst a.db").err, "qelprop: no command 'lst'\nhint: did you mean 'list'?\n");
    EXPECT_EQ(program.Run("").err, "qelprop: no command given\nhint: 'qelprop --help' lists them\n");
}

TEST(Failure, IsOneObjectWithJson)
{
    CProgram program;
    EXPECT_EQ(program.Run("lst a.db --json").err, "{\"program\":\"qelprop\",\"message\":\"no command "
                                                  "'lst'\",\"hint\":\"did you mean 'list'?\",\"exit\":2}\n");
}

TEST(Failure, KeepsALineBreakOfANameOutOfItsLine)
{
    CProgram program;
    const SRun run = program.RunWords({"tables", "no\nsuch\x1b[1m.db"});
    EXPECT_EQ(run.err, "qelprop: no\u240asuch\u241b[1m.db: no such file\n");
}

TEST(Notes, LetNoNameSteerTheTerminal)
{
    CProgram program;
    program.Run("init a.db");
    program.Run("add-table a.db A");
    {
        CQelSQLite file; // no command gives such a name
        ASSERT_EQ(file.Open(program.File(L"a.db").wstring()), 0);
        ASSERT_EQ(file.ExecSQL(L"UPDATE qeltpt SET tname = 'A' || char(27) || '[2J'"), 0);
    }
    EXPECT_EQ(program.Run("remove-table a.db @1 --dry-run").err,
              "dry run: nothing was saved\nwould remove table 'A\u241b[2J' with 0 records and 0 values\n");
    program.Answer("n\n");
    EXPECT_EQ(program.Run("-vv remove-table a.db @1").err.find('\x1b'), std::string::npos);
}

TEST(Notes, AreObjectsWithJson)
{
    CProgram program;
    program.Run("init a.db");
    program.Run("add-table a.db Lamps Name:string");
    program.Run("add a.db Lamps Name=Desk");
    EXPECT_EQ(program.Run("set a.db Lamps @1 Name=Wall --dry-run --json").err,
              "{\"program\":\"qelprop\",\"note\":\"dry run: nothing was saved\"}\n");
    EXPECT_EQ(program.Run("remove a.db Lamps @1 --yes --json").err,
              "{\"program\":\"qelprop\",\"note\":\"removed 1 record with 1 value from table 'Lamps'\"}\n");
    EXPECT_EQ(program.Run("backup a.db b.db --json --quiet").err, "");
}

TEST(Failure, RefusesArgumentsThatAreNoText)
{
    CProgram program;
    EXPECT_EQ(program.RunWords({"tables", "a\xff.db"}).err, "qelprop: an argument is no text in UTF-8\n");
}

TEST(Log, GoesToStderrAndToAFileOnRequest)
{
    CProgram program;
    program.Run("init a.db");
    EXPECT_EQ(program.Run("tables a.db").err, "");
    EXPECT_THAT(program.Run("-v tables a.db").err, HasSubstr("log: + Loading Tables\n"));
    const std::string log = program.File(L"log.txt").u8string();
    EXPECT_EQ(program.RunWords({"--log", log, "tables", program.File(L"a.db").u8string()}).err, "");
    EXPECT_THAT(ReadFile(program.File(L"log.txt")), HasSubstr("+ Loading Tables"));
}

TEST(Locale, MustExist)
{
    CProgram program;
    const SRun run = program.Run("--locale xx_YY tables a.db");
    EXPECT_EQ(run.exit, 2);
    EXPECT_THAT(run.err, HasSubstr("no locale 'xx_YY'"));
}

} // namespace
} // namespace qeltest
