// operation_test.cpp: the lines that open and close an operation.
#include <gtest/gtest.h>
#include <libeval/common/operation.h>
#include <support/recording_log.h>

namespace {

constexpr qel::SSite kSite{L".\\somewhere", 12};

TEST(OperationLines, EntryLineIsWrittenWhenItIsMade)
{
    qeltest::CRecordingLog log;
    qel::COperation operation(&log, 3, L"+ Adding table", kSite);
    EXPECT_EQ(log.Text(), "I3 + Adding table\n");
    EXPECT_EQ(log.Entries()[0].line, 12);
    EXPECT_EQ(log.Entries()[0].file, L".\\somewhere");
}

TEST(OperationLines, ClosingLineComesOnlyThroughDone)
{
    qeltest::CRecordingLog log;
    {
        qel::COperation operation(&log, 3, L"+ Adding table", kSite);
    }
    EXPECT_EQ(log.Text(), "I3 + Adding table\n");
    qel::COperation operation(&log, 4, L"+ Adding record", kSite);
    EXPECT_EQ(operation.Done(qel::kSuccess), 10001u);
    EXPECT_EQ(log.Text(), "I3 + Adding table\nI4 + Adding record\nI4 - Done\n");
}

TEST(OperationLines, FailureIsAnErrorBeforeTheClosingLine)
{
    qeltest::CRecordingLog log;
    qel::COperation operation(&log, 4, L"+ x", kSite);
    EXPECT_EQ(operation.Done(17201), 17201u);
    EXPECT_EQ(log.Text(), "I4 + x\nE 17201\nI4 - Done\n");
}

TEST(OperationLines, QuietCodeIsNoError)
{
    qeltest::CRecordingLog log;
    qel::COperation operation(&log, 4, L"+ x", kSite);
    EXPECT_EQ(operation.Done(10020, 10020), 10020u);
    EXPECT_EQ(log.Text(), "I4 + x\nI4 - Done\n");
}

TEST(OperationLines, NothingIsWrittenWithoutALog)
{
    qel::COperation operation(nullptr, 4, L"+ x", kSite);
    EXPECT_EQ(operation.Done(17201), 17201u);
    EXPECT_EQ(qel::LogFault(nullptr, 17500, kSite), 17500u);
    EXPECT_EQ(qel::LogRefusal(nullptr, 17502, kSite), 17502u);
}

TEST(OperationLines, FaultIsAnErrorAndRefusalAnInformalEntryOfLevelTwo)
{
    qeltest::CRecordingLog log;
    EXPECT_EQ(qel::LogFault(&log, 17500, kSite), 17500u);
    EXPECT_EQ(qel::LogRefusal(&log, 17502, kSite), 17502u);
    EXPECT_EQ(log.Text(), "E 17500\nI2 17502\n");
    EXPECT_EQ(log.Entries()[1].line, 12);
}

} // namespace
