// store_place.h: where a store file stands, and the files that may stand beside it.
#pragma once

#include <filesystem>
#include <string>

namespace qel {

/// The path of a store file, its links resolved: side files are looked for where the engine puts them.
class CStorePlace
{
public:
    CStorePlace() = default;
    explicit CStorePlace(const std::wstring& path);

    /// The path as the engine takes it, whatever special meanings its text could have there.
    std::wstring EnginePath() const;
    const std::filesystem::path& File() const { return m_file; }
    /// The place of a file beside this one, under which a new store is made.
    CStorePlace Beside() const;

    bool Exists() const;
    /// Whether it is a file that bytes can be read from at any position: no folder, pipe or device.
    bool IsRegularFile() const;
    bool IsEmptyFile() const;
    bool IsSameFileAs(const CStorePlace& other) const;

    /// The engine's write-ahead log, its index, and its rollback journal.
    std::filesystem::path Wal() const { return With("-wal"); }
    std::filesystem::path WalIndex() const { return With("-shm"); }
    std::filesystem::path Journal() const { return With("-journal"); }

    bool HasSideFile() const;
    /// Whether a rollback journal is there that still has something to undo, or may have.
    bool HasLiveJournal() const;
    /// @return false when one of them stays
    bool DeleteSideFiles() const;
    bool DeleteWalFiles() const;
    /// Deletes the store file and its side files.
    /// @return false when one of them stays
    bool DeleteAll() const;

private:
    std::filesystem::path With(const char* suffix) const;

    std::filesystem::path m_file;
};

} // namespace qel
