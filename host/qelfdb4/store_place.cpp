// store_place.cpp: paths of a store file and its side files.
#include "store_place.h"

#include <qelplat4/native_path.h>
#include <qelplat4/utf16.h>

#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace qel {
namespace {

fs::path Resolved(const std::wstring& path)
{
    const fs::path given = NativePath(path);
    std::error_code failure;
    fs::path resolved = given.empty() ? given : fs::weakly_canonical(fs::absolute(given, failure), failure);
    return failure ? given : resolved;
}

bool Delete(const fs::path& file)
{
    std::error_code failure;
    fs::remove(file, failure);
    return !failure;
}

bool IsThere(const fs::path& file)
{
    std::error_code failure;
    return fs::symlink_status(file, failure).type() != fs::file_type::not_found;
}

} // namespace

CStorePlace::CStorePlace(const std::wstring& path) : m_file(Resolved(path))
{}

// A resolved path is absolute, so that ":memory:" and "file:" are names of files like any other.
std::wstring CStorePlace::EnginePath() const
{
    return FromUtf8(m_file.u8string());
}

CStorePlace CStorePlace::Beside() const
{
    CStorePlace beside;
    beside.m_file = With("#new");
    return beside;
}

bool CStorePlace::Exists() const
{
    return !m_file.empty() && IsThere(m_file);
}

bool CStorePlace::IsRegularFile() const
{
    std::error_code failure;
    return fs::is_regular_file(m_file, failure);
}

bool CStorePlace::IsEmptyFile() const
{
    std::error_code failure;
    return IsRegularFile() && fs::file_size(m_file, failure) == 0 && !failure;
}

bool CStorePlace::IsSameFileAs(const CStorePlace& other) const
{
    std::error_code failure;
    return fs::equivalent(m_file, other.m_file, failure) && !failure;
}

bool CStorePlace::HasSideFile() const
{
    return IsThere(Wal()) || IsThere(WalIndex()) || IsThere(Journal());
}

bool CStorePlace::HasLiveJournal() const
{
    std::ifstream journal(Journal(), std::ios::binary);
    if (!journal.is_open())
        return IsThere(Journal());
    const int first = journal.get();
    return first != std::ifstream::traits_type::eof() && first != 0;
}

bool CStorePlace::DeleteWalFiles() const
{
    const bool wal = Delete(Wal());
    return Delete(WalIndex()) && wal;
}

bool CStorePlace::DeleteSideFiles() const
{
    const bool wal = DeleteWalFiles();
    return Delete(Journal()) && wal;
}

bool CStorePlace::DeleteAll() const
{
    const bool sides = DeleteSideFiles();
    return Delete(m_file) && sides;
}

fs::path CStorePlace::With(const char* suffix) const
{
    fs::path path = m_file;
    path += suffix;
    return path;
}

} // namespace qel
