// backup_copy.cpp: the copy of a store file that guards the removal of a column.
#include "backup_copy.h"

#include <qelplat4/files.h>

namespace qel {
namespace {

// The store file comes first: what lies beside a missing store is never taken for a whole one.
constexpr const wchar_t* kSuffixes[] = {L"", L"-wal", L"-shm", L"-journal"};

void DeleteStoreFiles(const std::wstring& path)
{
    for (const wchar_t* suffix : kSuffixes)
        DeleteFileW((path + suffix).c_str());
}

void MoveStoreFiles(const std::wstring& from, const std::wstring& to)
{
    for (const wchar_t* suffix : kSuffixes)
        MoveFileW((from + suffix).c_str(), (to + suffix).c_str());
}

} // namespace

CBackupCopy::CBackupCopy(const std::wstring& storePath)
    : m_storePath(storePath), m_copyPath(storePath + L"#bak"), m_asidePath(storePath + L"#old")
{}

void CBackupCopy::Delete() const
{
    DeleteFileW(m_copyPath.c_str());
}

bool CBackupCopy::Make() const
{
    return CopyFileW(m_storePath.c_str(), m_copyPath.c_str(), 0) != 0;
}

// A side file that stayed beside the copy would mix two states in silence, and deleting the store before the
// copy is in its place could leave nothing at all.
bool CBackupCopy::PutBack() const
{
    DeleteStoreFiles(m_asidePath);
    MoveStoreFiles(m_storePath, m_asidePath);
    if (MoveFileW(m_copyPath.c_str(), m_storePath.c_str()) == 0) {
        MoveStoreFiles(m_asidePath, m_storePath);
        return false;
    }
    DeleteStoreFiles(m_asidePath);
    return true;
}

} // namespace qel
