// streams_test.cpp: pipes that close early and disks that are full.
#include "program_files.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class ClosedPipe : public ProgramOnFiles
{};

TEST_P(ClosedPipe, EndsThePrintingWithoutAWord)
{
    AddLargeRecord();
    for (const std::vector<std::string>& command : {std::vector<std::string>{"list", db, "Lamps"},
                                                    {"list", db, "Lamps", "--json"},
                                                    {"export", db, "Lamps"},
                                                    {"dump", db}}) {
        CProgramProcess process(command);
        EXPECT_NE(process.ReadSome(), "");
        process.CloseOutput();
        const SEnded ended = process.Wait();
        EXPECT_EQ(ended.status, 141) << command.front();
        EXPECT_EQ(ended.err, "") << command.front();
    }
}

class NamedPipe : public ProgramOnFiles
{};

TEST_P(NamedPipe, IsNoDatabaseToWaitFor)
{
    ASSERT_EQ(mkfifo(Name(L"pipe.db").c_str(), 0600), 0);
    const SEnded ended = RunToEnd({"info", Name(L"pipe.db")});
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.err, "qelprop: " + Name(L"pipe.db") +
                             ": no property database: neither an SQLite database nor a legacy store\n");
    EXPECT_EQ(RunToEnd({"init", Name(L"pipe.db"), "--format", GetParam()}).status, 4);
}

INSTANTIATE_TEST_SUITE_P(Of, NamedPipe, testing::Values("sqlite", "legacy"), KindOf);
INSTANTIATE_TEST_SUITE_P(Of, ClosedPipe, testing::Values("sqlite", "legacy"), KindOf);

// No file may grow beyond what is enough for a small database: the engine meets it as it meets a full disk.
class FullDisk : public ProgramOnFiles
{
protected:
    static constexpr SLimits kFull{false, 200UL * 1024};

    void Fill()
    {
        WriteFile(folder.File(L"rows.csv"), ManyRows(6000));
        Out({"import", db, "Lamps", Name(L"rows.csv")});
        std::filesystem::remove(folder.File(L"rows.csv"));
    }
};

TEST_P(FullDisk, LeavesTheDatabaseAsItWasBeforeAnImport)
{
    WriteFile(folder.File(L"rows.csv"), ManyRows(6000));
    const std::string before = Records();
    const SEnded ended = RunToEnd({"import", db, "Lamps", Name(L"rows.csv")}, kFull);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("qelprop: " + db + ": cannot "));
    EXPECT_EQ(Records(), before);
    EXPECT_EQ(folder.Names(), "lamps.db rows.csv");
    Out({"check", db});
}

TEST_P(FullDisk, LeavesNoPartOfANewFile)
{
    Fill();
    const std::string other = GetParam() == std::string("legacy") ? "sqlite" : "legacy";
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"export", db, "Lamps", "-O", Name(L"o.csv")},
          {"dump", db, "-O", Name(L"o.jsonl")},
          {"backup", db, Name(L"copy.db")},
          {"migrate", db, Name(L"other.db"), "--format", other}}) {
        const SEnded ended = RunToEnd(command, kFull);
        EXPECT_EQ(ended.status, 1) << command.front();
        EXPECT_THAT(ended.err, HasSubstr("qelprop: ")) << command.front();
        EXPECT_EQ(folder.Names(), "lamps.db") << command.front();
    }
}

TEST_P(FullDisk, KeepsTheFileThatIsCompacted)
{
    Fill();
    const std::string before = Records();
    EXPECT_EQ(RunToEnd({"compact", db}, kFull).status, 1);
    EXPECT_EQ(Records(), before);
    Out({"check", db});
}

TEST_P(FullDisk, KeepsTheFileThatIsReplaced)
{
    Fill();
    WriteFile(folder.File(L"o.csv"), "old");
    EXPECT_EQ(RunToEnd({"export", db, "Lamps", "-O", Name(L"o.csv")}, kFull).status, 1);
    EXPECT_EQ(ReadFile(folder.File(L"o.csv")), "old");
}

INSTANTIATE_TEST_SUITE_P(Of, FullDisk, testing::Values("sqlite", "legacy"), KindOf);

} // namespace
} // namespace qeltest
