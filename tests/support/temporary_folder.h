// temporary_folder.h: a folder of a test's own.
#pragma once

#include <filesystem>
#include <string>

namespace qeltest {

/// A fresh, empty folder that is removed with all that it holds. Not copied.
class CTemporaryFolder
{
public:
    CTemporaryFolder();
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;
    ~CTemporaryFolder();

    /// A path inside the folder, as the API takes it.
    std::wstring Path(const std::wstring& name) const;
    /// The same, as the standard library takes it.
    std::filesystem::path File(const std::wstring& name) const;
    const std::filesystem::path& Root() const { return m_root; }

    /// Names of what the folder holds, sorted, separated by blanks.
    std::string Names() const;

private:
    std::filesystem::path m_root;
};

/// The whole file; an empty text when it cannot be read.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

} // namespace qeltest
