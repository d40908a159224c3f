// resultcodes.cpp: the texts behind the result codes.
#include <qellib4/resultcodes.h>

namespace qel {
namespace {

struct SText
{
    unsigned int code;
    const wchar_t* text;
};

constexpr SText kTexts[] = {
    {kSuccess, L"Success"},
    {kUnknownException, L"An exception of unknown kind"},
    {kFrameworkException, L"A framework exception"},
    {kChecksumMismatch, L"Checksum mismatch of the schema record"},
    {kEndOfStream, L"Data ends before its content does"},
    {kFileExists, L"The file exists already"},
    {kNotAStore, L"The file is no record store"},
    {kFileMissing, L"No such file"},
    {kFileInUse, L"Another process has the file open for writing"},
    {kRecordDamaged, L"A record fails its checksum"},
    {kNotFound, L"Not found"},
    {kNoBackupCopy, L"The backup copy of the store file could not be made"},
    {kCannotChange, L"The database could not be changed"},
    {kNotOpen, L"Not open"},
    {kReadOnly, L"Read-only"},
    {kInvalidName, L"Invalid name"},
    {kNameInUse, L"The name is already used"},
    {kTooManyTables, L"The limit of tables is reached"},
    {kTooManyColumns, L"The limit of columns is reached"},
    {kTypeFixedByRecords, L"The type of a column cannot change while its table holds records"},
    {kTooFewValues, L"Fewer values than columns"},
    {kWrongValueType, L"A value's type differs from its column's"},
    {kStillReferenced, L"Refused: a Reference column refers to it"},
};

} // namespace

std::wstring ResultText(unsigned int code)
{
    for (const SText& entry : kTexts) {
        if (entry.code == code)
            return entry.text;
    }
    if (code > kSqlBase && code < kSqlBase + 256)
        return L"SQL engine error " + std::to_wstring(code - kSqlBase);
    return L"Result " + std::to_wstring(code);
}

} // namespace qel
