// others_test.cpp: other processes, and the user who wants to stop.
#include "program_files.h"

#include <gmock/gmock.h>

#include <csignal>
#include <memory>

#include <unistd.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

class Others : public ProgramOnFiles
{
protected:
    /// An import that has put in two rows, and waits for more.
    std::unique_ptr<CProgramProcess> Importing()
    {
        auto process = std::make_unique<CProgramProcess>(
            std::vector<std::string>{"import", db, "Lamps", "-", "--on-error", "skip", "--rejects", "-"});
        process->Write("Name\nFloor\nTable\n");
        // Refused, and too long for the buffers on both sides to hold back.
        for (int row = 0; row < 2; ++row)
            process->Write(std::string(100000, 'x') + ",y\n");
        EXPECT_NE(process->ReadSome(), "");
        return process;
    }
};

TEST_P(Others, HeldFileIsToldAtOnce)
{
    const auto importing = Importing();
    const SEnded ended = RunToEnd({"add", db, "Lamps", "Name=Wall"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("hint: another process holds the file; --timeout MS waits for it\n"));
    EXPECT_THAT(ended.err, HasSubstr(GetParam() == std::string("legacy") ? "(10015)" : "(17305)"));
}

TEST_P(Others, HeldFileIsWaitedForOnRequest)
{
    const auto importing = Importing();
    CProgramProcess waiting({"--timeout", "60000", "add", db, "Lamps", "Name=Wall"});
    EXPECT_EQ(importing->Wait().status, 0);
    EXPECT_EQ(waiting.Wait().status, 0);
    EXPECT_EQ(Out({"count", db, "Lamps"}), "4\n");
}

TEST_P(Others, WaitingEndsWithItsTime)
{
    const auto importing = Importing();
    EXPECT_EQ(RunToEnd({"--timeout", "50", "add", db, "Lamps", "Name=Wall"}).status, 1);
}

TEST_P(Others, WhatIsReadIsOfOneMoment)
{
    AddLargeRecord();
    CProgramProcess dumping({"dump", db});
    const std::string begin = dumping.ReadSome(); // the rest waits for a reader
    EXPECT_EQ(RunToEnd({"add", db, "Lamps", "Name=Wall"}).status, 1);
    const SEnded ended = dumping.Wait();
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_THAT(begin + ended.out, HasSubstr("{\"end\":{\"tables\":1,\"records\":2}}"));
    EXPECT_EQ(RunToEnd({"add", db, "Lamps", "Name=Wall"}).status, 0);
}

/// Of SQLite files alone, which others may read during a change.
class Saving : public Others
{};

TEST_P(Saving, WaitsAMomentForThoseWhoRead)
{
    AddLargeRecord();
    CProgramProcess dumping({"dump", db});
    EXPECT_NE(dumping.ReadSome(), "");
    CProgramProcess adding({"add", db, "Lamps", "Name=Wall"});
    EXPECT_EQ(dumping.Wait().status, 0);
    const SEnded ended = adding.Wait();
    EXPECT_EQ(ended.status, 0) << ended.err;
}

class Interrupt : public Others
{};

TEST_P(Interrupt, RollsAnImportBack)
{
    const std::string before = Records();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto importing = Importing();
        importing->Send(signal);
        const SEnded ended = importing->Wait();
        EXPECT_EQ(ended.status, 130);
        EXPECT_THAT(ended.err, HasSubstr("qelprop: interrupted; nothing was saved\n"));
        EXPECT_EQ(Records(), before);
        EXPECT_EQ(folder.Names(), "lamps.db");
    }
}

// The rows keep coming: the import ends between two of them.
TEST_P(Interrupt, EndsAnImportThatNeverWaits)
{
    const std::string before = Records();
    WriteFile(folder.File(L"rows.csv"), ManyRows(200000));
    CProgramProcess importing({"import", db, "Lamps", Name(L"rows.csv")});
    ASSERT_TRUE(CProgramProcess::Appears(db + (GetParam() == std::string("legacy") ? "-wal" : "-journal")));
    importing.Send(SIGINT);
    EXPECT_EQ(importing.Wait().status, 130);
    EXPECT_EQ(Records(), before);
    EXPECT_EQ(folder.Names(), "lamps.db rows.csv");
}

TEST_P(Interrupt, EndsTheWaitForAHeldFile)
{
    const auto importing = Importing();
    CProgramProcess waiting({"--timeout", "600000", "add", db, "Lamps", "Name=Wall"});
    usleep(200000); // so that it waits; an interrupt before that ends it as well
    waiting.Send(SIGINT);
    EXPECT_EQ(waiting.Wait().status, 130);
}

// A dump that ends too early is no fault of the dump here.
TEST_P(Interrupt, LeavesNoFileOfALoad)
{
    const std::string dump = Out({"dump", db});
    CProgramProcess loading({"load", Name(L"copy.db")});
    loading.Write(dump.substr(0, dump.rfind("{\"end\"")));
    loading.Send(SIGINT);
    EXPECT_EQ(loading.Wait().status, 130);
    EXPECT_EQ(folder.Names(), "lamps.db");
}

INSTANTIATE_TEST_SUITE_P(Of, Saving, testing::Values("sqlite"), KindOf);
INSTANTIATE_TEST_SUITE_P(Of, Others, testing::Values("sqlite", "legacy"), KindOf);
INSTANTIATE_TEST_SUITE_P(Of, Interrupt, testing::Values("sqlite", "legacy"), KindOf);

class KilledImport : public Others
{};

TEST_P(KilledImport, IsUndoneByTheNextThatOpensTheFile)
{
    const std::string before = Records();
    WriteFile(folder.File(L"rows.csv"), ManyRows(200000));
    {
        CProgramProcess importing({"import", db, "Lamps", Name(L"rows.csv")});
        ASSERT_TRUE(
            CProgramProcess::Appears(db + (GetParam() == std::string("legacy") ? "-wal" : "-journal")));
        importing.Send(SIGKILL);
        EXPECT_EQ(importing.Wait().status, 128 + SIGKILL);
    }
    Out({"compact", db});
    EXPECT_EQ(Records(), before);
    EXPECT_EQ(folder.Names(), "lamps.db rows.csv");
}

INSTANTIATE_TEST_SUITE_P(Of, KilledImport, testing::Values("sqlite", "legacy"), KindOf);

TEST(KilledImportOf, ALegacyStoreIsToldToReaders)
{
    const CTemporaryFolder folder;
    const std::string db = folder.File(L"lamps.store").string();
    RunToEnd({"init", db, "--format", "legacy"});
    RunToEnd({"add-table", db, "Lamps", "Name:string"});
    WriteFile(folder.File(L"rows.csv"), ManyRows(200000));
    CProgramProcess importing({"import", db, "Lamps", folder.File(L"rows.csv").string()});
    ASSERT_TRUE(CProgramProcess::Appears(db + "-wal"));
    importing.Send(SIGKILL);
    importing.Wait();
    const SEnded ended = RunToEnd({"count", db, "Lamps"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("a change was cut off, and reading must not take it back"));
    EXPECT_EQ(RunToEnd({"compact", db}).status, 0);
    EXPECT_EQ(RunToEnd({"count", db, "Lamps"}).out, "0\n");
}

} // namespace
} // namespace qeltest
