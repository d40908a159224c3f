// info.cpp: what a file is and how large.
#include "look.h"
#include "output/amount_text.h"
#include "output/output.h"
#include "output/single.h"

#include <qelplat4/folder_access.h>
#include <qelplat4/native_path.h>

#include <filesystem>
#include <fstream>

namespace tool {
namespace {

long long Pragma(CQelSQLite& connection, const wchar_t* text)
{
    CQelSQLite::CStatement statement(&connection);
    statement.Prepare(text);
    constexpr int kRow = 100;
    return statement.Step() == kRow ? statement.GetInt(0) : 0;
}

/// Both kinds are files of one engine, which knows what it could give back.
unsigned long long ReclaimableBytes(CContext& context, const std::wstring& path)
{
    CQelSQLite connection;
    connection.SetLogfile(context.Log());
    if (connection.Open(path, true) != 0)
        return 0;
    try {
        return static_cast<unsigned long long>(Pragma(connection, L"PRAGMA freelist_count") *
                                               Pragma(connection, L"PRAGMA page_size"));
    } catch (CQelException* exception) {
        exception->Delete(); // the figure is missing, the rest stands
    }
    return 0;
}

/// A change wants a file beside it as well, so that the folder has a say.
bool CanBeWritten(const std::wstring& path)
{
    const std::filesystem::path file = qel::NativePath(path);
    return std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).is_open() &&
           qel::CanMakeFilesIn(file.parent_path());
}

unsigned long long BytesOf(const std::wstring& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(qel::NativePath(path), error);
    return error ? 0 : size;
}

void AddBytes(CSingle& single, const char* name, unsigned long long bytes)
{
    constexpr unsigned long long kLeast = 1024; // less needs no other unit
    single.Add(name, NumberCell(bytes), bytes < kLeast ? "" : SizeText(bytes));
}

} // namespace

EExit RunInfo(CContext& context)
{
    unsigned long long tables = 0;
    unsigned long long columns = 0;
    unsigned long long records = 0;
    CSingle single;
    std::wstring path;
    {
        const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
        path = file->Path();
        for (const CQelTable& table : file->Tables()) {
            ++tables;
            columns += table.Columns().size();
            records += file->CountRecords(table.Properties().oid);
        }
        single.Add("file", TextCell(path));
        single.Add("kind", TextCell(std::string(file->Kind() == EKind::eSQLite ? "SQLite" : "legacy")));
    }
    single.Add("tables", NumberCell(tables));
    single.Add("columns", NumberCell(columns));
    single.Add("records", NumberCell(records));
    AddBytes(single, "bytes", BytesOf(path));
    AddBytes(single, "reclaimable", ReclaimableBytes(context, path));
    single.Add("writable", FlagCell(CanBeWritten(path)));
    single.Print(context);
    return EExit::eDone;
}

} // namespace tool
