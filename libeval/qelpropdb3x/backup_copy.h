// backup_copy.h: the copy of a store file that guards the removal of a column.
#pragma once

#include <string>

namespace qel {

/// The "#bak" copy of a store file. The store must be closed while the files are worked on. Not copied.
class CBackupCopy
{
public:
    /// @param storePath  path of the store file, as the store gives it
    explicit CBackupCopy(const std::wstring& storePath);
    CBackupCopy(const CBackupCopy&) = delete;
    CBackupCopy& operator=(const CBackupCopy&) = delete;

    const std::wstring& StorePath() const { return m_storePath; }
    /// Removes a copy that an earlier process left, or this one.
    void Delete() const;
    /// Copies the store file.
    /// @return false when the copy could not be made
    bool Make() const;
    /// Puts the copy in the store's place, side files of the store gone. If there is no copy to be had, the
    /// store's files stay what they were.
    /// @return false when the copy is not in place
    bool PutBack() const;

private:
    std::wstring m_storePath;
    std::wstring m_copyPath;
    std::wstring m_asidePath;
};

} // namespace qel
