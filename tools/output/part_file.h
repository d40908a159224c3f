// part_file.h: a file that is made beside its place and appears there complete or not at all.
#pragma once

#include <filesystem>
#include <string>

namespace tool {

/// A name beside a target; what was made under it is removed unless it was published. Not copied.
class CPartFile
{
public:
    /// @param force  false: a target that exists is refused
    /// @throws SFailure  4 for a target that exists; 3 where its folder does not; 1 for one that is no file,
    ///                   or a folder in which none can be made
    CPartFile(const std::string& target, bool force);
    CPartFile(const CPartFile&) = delete;
    CPartFile& operator=(const CPartFile&) = delete;
    ~CPartFile();

    std::wstring Path() const;
    unsigned long long Size() const;
    /// Lets only those read what was made who may read another file.
    void AllowLike(const std::string& file);
    /// Gives the file its name, in one step. A file that it replaces keeps its permissions.
    /// @throws SFailure  1 when it cannot; the target is then as it was
    void Publish();

private:
    void CheckFolder() const;

    std::string m_name;
    std::filesystem::path m_target;
    std::filesystem::path m_part;
    bool m_published = false;
};

/// Where a symbolic link leads, even to nothing; any other path as it is.
std::filesystem::path FollowedLink(const std::filesystem::path& path);

} // namespace tool
