// dovlogfile_test.cpp: which entries pass, what they say, and the file that is read afterwards.
#include "../support/recording_log.h"
#include "../support/temporary_folder.h"

#include <gtest/gtest.h>
#include <host/qellib4/logline.h>
#include <qellib4/qelexception.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace {

using qeltest::CRecordingLog;
using qeltest::CTemporaryFolder;
using qeltest::ReadFile;

constexpr const wchar_t* kFile = L".\\qelpropdb";

// The lines of a log without their times, which must have the form that a line begins with.
std::string LinesOf(const std::filesystem::path& path)
{
    constexpr std::string_view kForm = "0000-00-00 00:00:00.000Z  ";
    std::istringstream in(ReadFile(path));
    std::string lines;
    for (std::string line; std::getline(in, line);) {
        std::string time = line.substr(0, kForm.size());
        std::replace_if(
            time.begin(), time.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
        EXPECT_EQ(time, kForm);
        lines += line.substr(time.size()) + "\n";
    }
    return lines;
}

TEST(LogEntry, CarriesKindCodeTextLevelAndPlace)
{
    CRecordingLog log;
    EXPECT_TRUE(log.AddInformal(L"+ Adding record", 4, 123, kFile));
    ASSERT_EQ(log.Entries().size(), 1u);
    const CDovLogfile::SEntry& entry = log.Entries()[0];
    EXPECT_EQ(entry.kind, CDovLogfile::eInformal);
    EXPECT_EQ(entry.code, 0u);
    EXPECT_EQ(entry.text, L"+ Adding record");
    EXPECT_EQ(entry.level, 4);
    EXPECT_EQ(entry.line, 123);
    EXPECT_EQ(entry.file, kFile);
}

TEST(LogEntry, OfACodeSaysItsText)
{
    CRecordingLog log;
    log.AddError(17500, 1, kFile);
    log.AddInformal(17502u, 2, 1, kFile);
    log.AddError(17313, L"", 1, kFile);
    log.AddError(10007, L"copy", 1, kFile);
    log.AddError(10007, nullptr, 1, kFile);
    ASSERT_EQ(log.Entries().size(), 5u);
    EXPECT_EQ(log.Entries()[0].text, L"Not open");
    EXPECT_EQ(log.Entries()[0].code, 17500u);
    EXPECT_EQ(log.Entries()[0].level, 0);
    EXPECT_EQ(log.Entries()[1].text, L"Invalid name");
    EXPECT_EQ(log.Entries()[1].level, 2);
    EXPECT_EQ(log.Entries()[2].text, L"SQL engine error 13");
    EXPECT_EQ(log.Entries()[3].text, L"Checksum mismatch of the schema record: copy");
    EXPECT_EQ(log.Entries()[4].text, L"Checksum mismatch of the schema record");
}

TEST(LogEntry, OfEveryKindIsTold)
{
    CRecordingLog log;
    log.AddError(L"Restoring backup copy of database", 1, kFile);
    log.AddWarning(L"odd", 1, 1, kFile);
    log.AddInformal(L"- Done", 3, 1, kFile);
    log.AddInformal(17503u, 2, 1, kFile);
    log.AddError(17500, 1, kFile);
    log.AddError(10007, L"copy", 1, kFile);
    EXPECT_EQ(log.Text(),
              "E Restoring backup copy of database\nW1 odd\nI3 - Done\nI2 17503\nE 17500\nE 10007 copy\n");
}

TEST(LogEntry, NullTextAndFileAreEmpty)
{
    CRecordingLog log;
    EXPECT_TRUE(log.AddError(static_cast<const wchar_t*>(nullptr), 1, nullptr));
    EXPECT_TRUE(log.AddInformal(static_cast<const wchar_t*>(nullptr), 1, 1, nullptr));
    EXPECT_EQ(log.Entries()[0].text, L"");
    EXPECT_EQ(log.Entries()[0].file, L"");
}

TEST(LogLevel, IsFourAtFirst)
{
    const CDovLogfile log;
    EXPECT_EQ(log.GetLevel(), 4);
}

TEST(LogLevel, EntriesAboveItDoNotReachWrite)
{
    CRecordingLog log(3);
    EXPECT_TRUE(log.AddInformal(L"three", 3, 1, kFile));
    EXPECT_TRUE(log.AddInformal(L"four", 4, 1, kFile));
    EXPECT_TRUE(log.AddInformal(17502u, 4, 1, kFile));
    EXPECT_TRUE(log.AddWarning(L"warning", 4, 1, kFile));
    EXPECT_EQ(log.Text(), "I3 three\n");
}

TEST(LogLevel, ErrorsAreAlwaysWritten)
{
    CRecordingLog log(-1);
    log.AddError(17500, 1, kFile);
    log.AddError(L"text", 1, kFile);
    log.AddWarning(L"no", 0, 1, kFile);
    EXPECT_EQ(log.Text(), "E 17500\nE text\n");
}

TEST(LogException, OfTheLibraryKeepsItsCodeAndPlace)
{
    CRecordingLog log;
    CQelException exception(17313, 5, L".\\qelsqlite", 77, false);
    log.AddError(&exception, 1, kFile);
    ASSERT_EQ(log.Entries().size(), 1u);
    EXPECT_EQ(log.Entries()[0].code, 17313u);
    EXPECT_EQ(log.Entries()[0].text, L"SQL engine error 13: 5, raised at .\\qelsqlite:77");
    EXPECT_EQ(log.Entries()[0].file, kFile);
}

TEST(LogException, OfTheLibraryIsKnownByItsBase)
{
    CRecordingLog log;
    CQelException exception(10011, 0, L"x", 1, false);
    log.AddError(static_cast<CException*>(&exception), 1, kFile);
    EXPECT_EQ(log.Text(), "E 10011 raised at x:1\n");
}

class CStrange : public CException
{
public:
    CStrange() : CException(false) {}
    std::wstring GetErrorText() const override { return L"strange"; }
};

TEST(LogException, OfTheFrameworkSaysItsText)
{
    CRecordingLog log;
    CStrange exception;
    log.AddError(&exception, 1, kFile);
    CException plain(false);
    log.AddError(&plain, 1, kFile);
    EXPECT_EQ(log.Text(), "E 10003 strange\nE 10003\n");
}

TEST(LogException, NullIsSafe)
{
    CRecordingLog log;
    EXPECT_TRUE(log.AddError(static_cast<CException*>(nullptr), 1, kFile));
    EXPECT_TRUE(log.AddError(static_cast<CQelException*>(nullptr), 1, kFile));
    EXPECT_EQ(log.Text(), "E 10003\nE 10002\n");
}

// A host's log that throws.
class CThrowingLog : public CDovLogfile
{
public:
    bool Write(const SEntry& entry) override
    {
        if (entry.text == L"framework")
            throw new CQelException(1, 0, nullptr, 0, true);
        throw std::runtime_error("broken");
    }
};

TEST(LogException, OutOfWriteStaysInTheLog)
{
    CThrowingLog log;
    EXPECT_FALSE(log.AddError(L"framework", 1, kFile));
    EXPECT_FALSE(log.AddError(L"standard", 1, kFile));
    EXPECT_FALSE(log.AddInformal(17500u, 1, 1, kFile));
    CDovLogfileMethodTracker tracker(&log, 1, L"A::B", 1, kFile);
}

TEST(Exception, CarriesWhatItWasMadeWith)
{
    const CQelException exception(17500, 42, L"file.cpp", 12, false);
    EXPECT_EQ(exception.GetCode(), 17500u);
    EXPECT_EQ(exception.GetSecond(), 42u);
    EXPECT_EQ(exception.GetFile(), L"file.cpp");
    EXPECT_EQ(exception.GetLine(), 12);
    EXPECT_EQ(exception.GetErrorText(), L"Not open (42)");
    EXPECT_EQ(CQelException(17500, 0, nullptr, 0, false).GetErrorText(), L"Not open");
}

TEST(Exception, IsCaughtAsTheFrameworksByPointer)
{
    try {
        throw new CQelException(10011, 0, nullptr, 0, true);
    } catch (CException* exception) {
        EXPECT_EQ(exception->GetErrorText(), L"Data ends before its content does");
        exception->Delete();
    }
}

TEST(MethodTracker, MarksEntryAndExit)
{
    CRecordingLog log;
    {
        CDovLogfileMethodTracker outer(&log, 5, L"CQelPropDB::FillBulkCache", 10, kFile);
        CDovLogfileMethodTracker inner(&log, 10, L"CQelPropDB::ReadAll", 20, kFile);
    }
    EXPECT_EQ(log.Text(), "I5 > CQelPropDB::FillBulkCache\nI10 > CQelPropDB::ReadAll\n"
                          "I10 < CQelPropDB::ReadAll\nI5 < CQelPropDB::FillBulkCache\n");
    EXPECT_EQ(log.Entries()[3].line, 10);
    EXPECT_EQ(log.Entries()[3].file, kFile);
}

TEST(MethodTracker, WritesNothingWithoutALogOrAboveTheLevel)
{
    CRecordingLog log(4);
    {
        CDovLogfileMethodTracker none(nullptr, 1, L"A::B", 1, kFile);
        CDovLogfileMethodTracker above(&log, 5, L"A::B", 1, kFile);
    }
    EXPECT_EQ(log.Text(), "");
}

TEST(MethodTracker, EntryAndExitGoTogether)
{
    CRecordingLog log(4);
    {
        CDovLogfileMethodTracker above(&log, 5, L"Silent", 1, kFile);
        log.SetLevel(10);
        CDovLogfileMethodTracker heard(&log, 5, L"Heard", 1, kFile);
    }
    EXPECT_EQ(log.Text(), "I5 > Heard\nI5 < Heard\n");
}

TEST(LogFile, HoldsOneLinePerEntry)
{
    CTemporaryFolder folder;
    CDovLogfile log;
    ASSERT_TRUE(log.Open(folder.Path(L"log.txt")));
    EXPECT_TRUE(log.AddError(17500, 12, kFile));
    EXPECT_TRUE(log.AddWarning(L"odd", 1, 13, kFile));
    EXPECT_TRUE(log.AddInformal(L"+ Adding \u00E4\U0001F600", 4, 14, nullptr));
    EXPECT_EQ(LinesOf(folder.File(L"log.txt")), u8"error    17500  Not open  [.\\qelpropdb:12]\n"
                                                u8"warning  -      odd  [.\\qelpropdb:13]\n"
                                                u8"info     -      + Adding \u00E4\U0001F600\n");
}

TEST(LogFile, IsAppendedTo)
{
    CTemporaryFolder folder;
    const std::wstring path = folder.Path(L"log.txt");
    CDovLogfile log;
    ASSERT_TRUE(log.Open(path));
    log.AddInformal(L"first", 1, 1, nullptr);
    log.Close();
    EXPECT_FALSE(log.AddInformal(L"lost", 1, 1, nullptr));
    ASSERT_TRUE(log.Open(path));
    log.AddInformal(L"second", 1, 1, nullptr);
    EXPECT_EQ(LinesOf(folder.File(L"log.txt")), "info     -      first\ninfo     -      second\n");
}

TEST(LogFile, SharedByTwoLogsKeepsBothsLines)
{
    CTemporaryFolder folder;
    CDovLogfile first;
    CDovLogfile second;
    ASSERT_TRUE(first.Open(folder.Path(L"log.txt")) && second.Open(folder.Path(L"log.txt")));
    first.AddInformal(L"one", 1, 1, nullptr);
    second.AddInformal(L"two", 1, 1, nullptr);
    first.AddInformal(L"three", 1, 1, nullptr);
    EXPECT_EQ(LinesOf(folder.File(L"log.txt")),
              "info     -      one\ninfo     -      two\ninfo     -      three\n");
}

TEST(LogFile, WidePathsWork)
{
    CTemporaryFolder folder;
    CDovLogfile log;
    ASSERT_TRUE(log.Open(folder.Path(L"\u00FC \u6F22\U0001F600.log")));
    EXPECT_EQ(folder.Names(), u8"\u00FC \u6F22\U0001F600.log");
}

TEST(LogFile, ThatCannotBeOpenedIsTold)
{
    CTemporaryFolder folder;
    CDovLogfile log;
    EXPECT_FALSE(log.Open(folder.Path(L"no/such/folder.log")));
    EXPECT_FALSE(log.Open(folder.Path(L"")));
    EXPECT_FALSE(log.Open(L""));
    EXPECT_FALSE(log.AddError(17500, 1, kFile));
}

TEST(LogFile, FailedOpenClosesTheOneBefore)
{
    CTemporaryFolder folder;
    CDovLogfile log;
    ASSERT_TRUE(log.Open(folder.Path(L"log.txt")));
    EXPECT_FALSE(log.Open(folder.Path(L"")));
    EXPECT_FALSE(log.AddError(17500, 1, kFile));
}

CDovLogfile::SEntry EntryOf(const std::wstring& text, const std::wstring& file = L"")
{
    return {CDovLogfile::eInformal, 0, text, 1, 7, file};
}

std::string LineAt(const CDovLogfile::SEntry& entry, long long milliseconds)
{
    return qel::LogLine(entry,
                        std::chrono::system_clock::time_point(std::chrono::milliseconds(milliseconds)));
}

TEST(LogLine, BeginsWithTheTime)
{
    EXPECT_EQ(LineAt(EntryOf(L"x"), 0), "1970-01-01 00:00:00.000Z  info     -      x\n");
    EXPECT_EQ(LineAt(EntryOf(L"x"), 951827696789), "2000-02-29 12:34:56.789Z  info     -      x\n");
    EXPECT_EQ(LineAt(EntryOf(L"x"), 4102444799999), "2099-12-31 23:59:59.999Z  info     -      x\n");
    EXPECT_EQ(LineAt(EntryOf(L"x"), -1), "1969-12-31 23:59:59.999Z  info     -      x\n");
}

TEST(LogLine, StaysOneLineWhateverTheTextHolds)
{
    EXPECT_EQ(LineAt(EntryOf(std::wstring(L"a\nb\r\nc\td\x1b[31m\x7f\0z", 16)), 0),
              "1970-01-01 00:00:00.000Z  info     -      a\\nb\\r\\nc\\td\\u001B[31m\\u007F\\u0000z\n");
    EXPECT_EQ(LineAt(EntryOf(L"\u0085\u2028\u2029", L"f\n"), 0),
              "1970-01-01 00:00:00.000Z  info     -      \\u0085\\u2028\\u2029  [f\\n:7]\n");
}

TEST(LogLine, IsValidUtf8WhateverTheTextHolds)
{
    EXPECT_EQ(
        LineAt(EntryOf(L"\xD800x\xDFFF\uD7FF\U0001F600"), 0),
        "1970-01-01 00:00:00.000Z  info     -      \xEF\xBF\xBDx\xEF\xBF\xBD\xED\x9F\xBF\xF0\x9F\x98\x80\n");
    EXPECT_EQ(LineAt(EntryOf(L"\xDC00\xDC00"), 0),
              "1970-01-01 00:00:00.000Z  info     -      \xEF\xBF\xBD\xEF\xBF\xBD\n");
}

} // namespace
