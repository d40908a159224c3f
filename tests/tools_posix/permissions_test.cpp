// permissions_test.cpp: files and folders that may be read alone.
#include "program_files.h"

#include <gmock/gmock.h>
#include <qelsq4/qelsq4.h>

using testing::AllOf;
using testing::HasSubstr;

namespace qeltest {
namespace {

constexpr auto kReadFile = std::filesystem::perms::owner_read;
constexpr auto kReadFolder = std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec;

class Permissions : public ProgramOnFiles
{
protected:
    void SetUp() override
    {
        if (!CanObeyPermissions())
            GTEST_SKIP() << "the superuser's rights cannot be given up here";
    }

    static SEnded Run(const std::vector<std::string>& arguments) { return RunToEnd(arguments, {true, 0}); }

    /// Every reading command gives its answer, and the file stays as it is.
    void ExpectReaders()
    {
        const std::string before = ReadFile(folder.File(L"lamps.db"));
        for (const std::vector<std::string>& command : {std::vector<std::string>{"info", db},
                                                        {"tables", db},
                                                        {"schema", db},
                                                        {"list", db, "Lamps"},
                                                        {"get", db, "Lamps", "@7"},
                                                        {"count", db, "Lamps"},
                                                        {"values", db, "Lamps", "Name"},
                                                        {"export", db, "Lamps"},
                                                        {"dump", db},
                                                        {"check", db},
                                                        {"compare", db, db}}) {
            const SEnded ended = Run(command);
            EXPECT_EQ(ended.status, 0) << command.front() << '\n' << ended.err;
        }
        EXPECT_EQ(ReadFile(folder.File(L"lamps.db")), before);
        EXPECT_EQ(folder.Names(), "lamps.db");
    }

    /// Every writing command fails with a line that names the file, and changes nothing.
    void ExpectNoWriters()
    {
        const std::string before = ReadFile(folder.File(L"lamps.db"));
        for (const std::vector<std::string>& command :
             {std::vector<std::string>{"add", db, "Lamps", "Name=Wall"},
              {"set", db, "Lamps", "@7", "Name=Wall"},
              {"remove", db, "Lamps", "@7", "--yes"},
              {"add-table", db, "Shades"},
              {"add-column", db, "Lamps", "Power:integer"},
              {"rename-table", db, "Lamps", "Lights"},
              {"remove-table", db, "Lamps", "--yes"},
              {"compact", db}}) {
            const SEnded ended = Run(command);
            EXPECT_EQ(ended.status, 1) << command.front();
            EXPECT_THAT(ended.err, HasSubstr("qelprop: " + db + ": cannot ")) << command.front();
            EXPECT_THAT(ended.err, HasSubstr("(17")) << command.front();
        }
        EXPECT_EQ(ReadFile(folder.File(L"lamps.db")), before);
    }
};

TEST_P(Permissions, ReadOnlyFileIsReadAndNotWritten)
{
    Allow(kReadFile, db);
    EXPECT_THAT(Run({"info", db}).out, HasSubstr("writable     No\n"));
    ExpectReaders();
    ExpectNoWriters();
}

TEST_P(Permissions, FileInAReadOnlyFolderIsReadAndNotWritten)
{
    EXPECT_THAT(Run({"info", db}).out, HasSubstr("writable     Yes\n"));
    Allow(kReadFolder, folder.Root());
    EXPECT_THAT(Run({"info", db}).out, HasSubstr("writable     No\n"));
    ExpectReaders();
    ExpectNoWriters();
}

TEST_P(Permissions, CopiesAreReadByNobodyElse)
{
    constexpr auto kOwner = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    Allow(kOwner, db);
    Out({"backup", db, Name(L"copy.db")});
    Out({"migrate", db, Name(L"other.db")});
    for (const wchar_t* const name : {L"copy.db", L"other.db"})
        EXPECT_EQ(std::filesystem::status(folder.File(name)).permissions(), kOwner);
}

TEST_P(Permissions, ReadOnlyFolderTakesNoNewFile)
{
    WriteFile(folder.File(L"dump.jsonl"), Out({"dump", db}));
    Allow(kReadFolder, folder.Root());
    const std::string target = Name(L"new.db");
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"list", db, "Lamps", "-O", target},
          {"backup", db, target},
          {"migrate", db, target},
          {"load", target, Name(L"dump.jsonl")}}) {
        const SEnded ended = Run(command);
        EXPECT_EQ(ended.status, 1) << command.front();
        EXPECT_EQ(ended.err, "qelprop: " + target + ": cannot make a file in this folder\n");
    }
    EXPECT_EQ(Run({"init", target, "--format", GetParam()}).status, 1);
    EXPECT_EQ(folder.Names(), "dump.jsonl lamps.db");
}

INSTANTIATE_TEST_SUITE_P(Of, Permissions, testing::Values("sqlite", "legacy"), KindOf);

class WriteAheadLog : public Permissions
{};

TEST_P(WriteAheadLog, WithoutItsSideFilesIsToldInWords)
{
    {
        CQelSQLite connection;
        ASSERT_EQ(connection.Open(folder.Path(L"lamps.db")), 0);
        ASSERT_EQ(connection.ExecSQL(L"PRAGMA journal_mode=WAL; CREATE TABLE other(a)"), 0);
    }
    ASSERT_EQ(folder.Names(), "lamps.db");
    Allow(kReadFolder, folder.Root());
    const SEnded ended = Run({"list", db, "Lamps"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err,
                AllOf(HasSubstr("the file has a write-ahead log"), HasSubstr("its folder must be writable")));
    Allow(std::filesystem::perms::owner_all, folder.Root());
    EXPECT_EQ(Run({"list", db, "Lamps"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, WriteAheadLog, testing::Values("sqlite"), KindOf);

} // namespace
} // namespace qeltest
