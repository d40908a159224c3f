// failure.cpp: which exit status and which words a result code becomes.
#include "failure.h"

#include <qellib4/qellib4.h>

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

/// A file in WAL mode, or one whose last change was cut short, is not read without its journal.
bool WantsJournal(unsigned int code)
{
    constexpr unsigned int kReadOnlyEngine = kSqlError + 8;
    constexpr unsigned int kCannotOpen = kSqlError + 14;
    return code == kReadOnlyEngine || code == kCannotOpen;
}

std::string WordsOf(unsigned int code)
{
    std::string text = TavCharConvert().ToUTF8(qel::ResultText(code));
    // Result texts are sentences; a message of the program goes on from its file name.
    if (text.size() > 1 && text[0] >= 'A' && text[0] <= 'Z' && !(text[1] >= 'A' && text[1] <= 'Z'))
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

} // namespace

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

SFailure FailureOf(unsigned int code, const std::string& file, const std::string& doing)
{
    SFailure failure;
    failure.exit = ExitOf(code);
    failure.file = file;
    failure.message = (doing.empty() ? "" : doing + ": ") + WordsOf(code);
    failure.code = code;
    if (IsBusy(code))
        failure.hint = "another process holds the file; --timeout MS waits for it";
    else if (WantsJournal(code))
        failure.hint = "if the file has a journal beside it (-wal, -journal), its folder must be writable";
    return failure;
}

} // namespace tool
