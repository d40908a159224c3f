// property_file.cpp: tells which kind of database a file is, and opens it.
#include "property_file.h"

#include "legacy_file.h"
#include "sqlite_file.h"
#include "text.h"

#include <qelplat4/native_path.h>

#include <filesystem>
#include <fstream>
#include <string_view>

namespace tool {
namespace {

constexpr const char* kOtherFile = "the file is something else";

bool Exists(const std::wstring& path)
{
    std::error_code error;
    return std::filesystem::exists(qel::NativePath(path), error);
}

/// Opening a pipe would wait for its other end, a device might do anything.
bool IsPipeOrDevice(const std::wstring& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(qel::NativePath(path), error);
    return std::filesystem::is_other(status);
}

bool HasFolder(const std::wstring& path)
{
    std::error_code error;
    const std::filesystem::path folder = qel::NativePath(path).parent_path();
    return folder.empty() || std::filesystem::is_directory(folder, error);
}

bool IsEngineFile(const std::wstring& path)
{
    constexpr std::string_view kMark = "SQLite format 3";
    std::string start(kMark.size(), '\0');
    std::ifstream file(qel::NativePath(path), std::ios::binary);
    file.read(start.data(), static_cast<std::streamsize>(start.size()));
    return start == kMark;
}

/// The engine takes a file of a few bytes for an empty one and would write over them.
bool IsOtherFile(const std::wstring& path)
{
    std::error_code error;
    const bool empty = std::filesystem::is_empty(qel::NativePath(path), error);
    return !empty && !IsEngineFile(path);
}

SFailure NoDatabase(const std::wstring& path)
{
    return FileFailure(EExit::eNotFound, Utf8(path),
                       "no property database: neither an SQLite database nor a legacy store");
}

// A store is told by the store itself, so that its mark has one home.
EKind KindOf(const std::wstring& path)
{
    return CDovBlobDB().Open(path, true) == qel::kNotAStore ? EKind::eSQLite : EKind::eLegacy;
}

} // namespace

CPropertyFile::~CPropertyFile() = default;

std::unique_ptr<CPropertyFile> CPropertyFile::Open(const std::wstring& path, const SOptions& options)
{
    if (!Exists(path))
        throw FileFailure(EExit::eNotFound, Utf8(path), "no such file");
    if (IsPipeOrDevice(path))
        throw NoDatabase(path);
    if (!std::ifstream(qel::NativePath(path), std::ios::binary).is_open())
        throw FileFailure(EExit::eFailed, Utf8(path), "no permission to read this file");
    if (KindOf(path) == EKind::eLegacy)
        return CLegacyFile::Open(path, options);
    if (IsOtherFile(path))
        throw NoDatabase(path);
    return CSQLiteFile::Open(path, options);
}

SFailure CPropertyFile::NotReplaced(const std::wstring& path, const std::string& why)
{
    return FileFailure(EExit::eRefused, Utf8(path), why + ", and is never replaced",
                       "name another file, or remove this one yourself");
}

SFailure CPropertyFile::UnreadableRecord(unsigned int code, const std::wstring& path,
                                         const std::wstring& table, unsigned long recordOid)
{
    SFailure failure = FailureOf(
        code, Utf8(path), "cannot read record @" + std::to_string(recordOid) + " of table " + Quoted(table));
    if (failure.exit == EExit::eFaults)
        failure.hint =
            "'qelprop check' lists what is damaged; 'export' and 'dump' leave it out with --skip-damaged";
    return failure;
}

std::unique_ptr<CPropertyFile> CPropertyFile::Create(const std::wstring& path, EKind kind, bool lookupIndexes,
                                                     bool force, const SOptions& options)
{
    if (!HasFolder(path))
        throw FileFailure(EExit::eNotFound, Utf8(path), "no such folder");
    const bool exists = Exists(path);
    if (IsPipeOrDevice(path))
        throw NotReplaced(path, kOtherFile);
    const bool isStore = exists && KindOf(path) == EKind::eLegacy;
    if (kind == EKind::eSQLite) {
        // A store is a file of the same engine, and would take the tables without a word.
        if (isStore)
            throw NotReplaced(path, "the file is a legacy store");
        if (exists && IsOtherFile(path))
            throw NotReplaced(path, kOtherFile);
        return CSQLiteFile::Create(path, lookupIndexes, force, options);
    }
    if (exists && !isStore)
        throw NotReplaced(path, kOtherFile);
    if (exists && !force)
        throw FileFailure(EExit::eRefused, Utf8(path), "the file holds a property database already",
                          "--force drops its tables and every record in them");
    return CLegacyFile::Create(path, options);
}

} // namespace tool
