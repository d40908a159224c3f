// failure.cpp: which exit status and which words a result code becomes.
#include "failure.h"

#include "text.h"

#include <qellib4/qellib4.h>
#include <qelplat4/native_path.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

namespace tool {
namespace {

constexpr unsigned int kSqlError = 17300;

bool IsDamage(unsigned int code)
{
    constexpr unsigned int kCorrupt = kSqlError + 11;
    constexpr unsigned int kNotADatabase = kSqlError + 26;
    return code == qel::kChecksumMismatch || code == qel::kEndOfStream || code == qel::kRecordDamaged ||
           code == kCorrupt || code == kNotADatabase;
}

bool IsBusy(unsigned int code)
{
    constexpr unsigned int kBusy = kSqlError + 5;
    constexpr unsigned int kLocked = kSqlError + 6;
    return code == kBusy || code == kLocked || code == qel::kFileInUse;
}

/// Codes of an engine that could not make the files that it keeps beside its own.
bool WantsSideFiles(unsigned int code)
{
    constexpr unsigned int kReadOnlyEngine = kSqlError + 8;
    constexpr unsigned int kCannotOpen = kSqlError + 14;
    return code == kReadOnlyEngine || code == kCannotOpen;
}

/// Whether the engine keeps a write-ahead log for the file, as its header says. Reading it gives up the locks
/// that this process has on the file, for which a failure has no more use.
bool KeepsLog(const std::string& file)
{
    constexpr std::streamoff kReadVersion = 19;
    constexpr int kWithLog = 2;
    std::ifstream header(qel::NativePath(Wide(file)), std::ios::binary);
    header.seekg(kReadVersion);
    return header.get() == kWithLog;
}

std::string EngineWords(unsigned int code)
{
    return sqlite3_errstr(static_cast<int>(code - kSqlError));
}

std::string WordsOf(unsigned int code)
{
    constexpr unsigned int kCodes = 100; // codes of the property database follow further up
    if (code > kSqlError && code < kSqlError + kCodes)
        return EngineWords(code);
    std::string text = Utf8(qel::ResultText(code));
    // Result texts are sentences; a message of the program goes on from its file name.
    if (text.size() > 1 && text[0] >= 'A' && text[0] <= 'Z' && !(text[1] >= 'A' && text[1] <= 'Z'))
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

/// Puts better words in the place of those that a result code has.
void ReplaceWords(SFailure& failure, const std::string& words)
{
    const std::size_t doing = failure.message.find(": ");
    failure.message = (doing == std::string::npos ? "" : failure.message.substr(0, doing + 2)) + words;
}

bool HasJournal(const std::string& file)
{
    std::error_code error;
    const std::filesystem::path journal = qel::NativePath(Wide(file + "-journal"));
    return std::filesystem::file_size(journal, error) > 0 && !error;
}

void ExplainSideFiles(SFailure& failure)
{
    if (HasJournal(failure.file)) {
        ExplainUnfinished(failure);
    } else if (KeepsLog(failure.file)) {
        ReplaceWords(failure,
                     "the file has a write-ahead log, so that even reading it makes files beside it");
        failure.hint =
            "its folder must be writable; or copy it, with its -wal if there is one, to one that is";
    } else {
        failure.hint = "the folder must be writable, too: a journal stands beside the file during a change";
    }
}

} // namespace

SFailure MakeFailure(EExit exit, const std::string& message, const std::string& hint)
{
    return {exit, {}, 0, message, hint, 0};
}

SFailure FileFailure(EExit exit, const std::string& file, const std::string& message, const std::string& hint)
{
    return {exit, file, 0, message, hint, 0};
}

SFailure LineFailure(EExit exit, unsigned long long line, const std::string& message, const std::string& hint)
{
    return {exit, {}, line, message, hint, 0};
}

EExit ExitOf(unsigned int code)
{
    if (code == qel::kSuccess)
        return EExit::eDone;
    if (code == qel::kNotFound || code == qel::kFileMissing)
        return EExit::eNotFound;
    if ((code >= qel::kInvalidName && code <= qel::kStillReferenced) || code == qel::kFileExists)
        return EExit::eRefused;
    return IsDamage(code) ? EExit::eFaults : EExit::eFailed;
}

void ExplainUnfinished(SFailure& failure)
{
    ReplaceWords(failure, "a change was cut off, and reading must not take it back");
    failure.hint = "whatever opens the file for writing takes it back: 'qelprop compact'";
}

SFailure InterruptFailure()
{
    return MakeFailure(EExit::eInterrupt, "interrupted; nothing was saved");
}

SFailure FailureOf(unsigned int code, const std::string& file, const std::string& doing)
{
    SFailure failure = FileFailure(ExitOf(code), file, (doing.empty() ? "" : doing + ": ") + WordsOf(code));
    failure.code = code;
    if (IsBusy(code))
        failure.hint = "another process holds the file; --timeout MS waits for it";
    else if (WantsSideFiles(code))
        ExplainSideFiles(failure);
    return failure;
}

} // namespace tool
