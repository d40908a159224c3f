// part_file.cpp: names nobody else has, and the renaming at the end.
#include "part_file.h"

#include "cli/context.h"

#include <qelplat4/native_path.h>
#include <qelplat4/replace_file.h>

#include <fstream>
#include <random>

namespace tool {
std::filesystem::path FollowedLink(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::path end = std::filesystem::canonical(path, error);
    if (!error)
        return end;
    constexpr int kLongest = 40; // links in a circle lead nowhere
    std::filesystem::path followed = path;
    for (int links = 0; links < kLongest && std::filesystem::is_symlink(followed, error); ++links)
        followed = followed.parent_path() / std::filesystem::read_symlink(followed, error);
    return followed;
}

CPartFile::CPartFile(const std::string& target, bool force)
    : m_name(target), m_target(FollowedLink(qel::NativePath(Wide(target))))
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(m_target, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw FileFailure(EExit::eFailed, m_name, "this is no file");
    if (std::filesystem::exists(status) && !force)
        throw FileFailure(EExit::eRefused, m_name, "the file exists already", "--force replaces it");
    m_part = m_target;
    m_part += "." + std::to_string(std::random_device()()) + ".part";
    CheckFolder();
}

void CPartFile::CheckFolder() const
{
    std::error_code error;
    const std::filesystem::path folder = m_target.has_parent_path() ? m_target.parent_path() : ".";
    if (!std::filesystem::is_directory(folder, error))
        throw FileFailure(EExit::eNotFound, m_name, "no such folder");
    const bool canMake = std::ofstream(m_part, std::ios::binary).is_open();
    std::filesystem::remove(m_part, error);
    if (!canMake)
        throw FileFailure(EExit::eFailed, m_name, "cannot make a file in this folder");
}

CPartFile::~CPartFile()
{
    if (m_published)
        return;
    // The engine may have left its own files when it was stopped.
    for (const char* const end : {"", "-journal", "-wal", "-shm"}) {
        std::error_code error;
        std::filesystem::remove(std::filesystem::path(m_part) += end, error);
    }
}

std::wstring CPartFile::Path() const
{
    return Wide(m_part.u8string());
}

unsigned long long CPartFile::Size() const
{
    std::error_code error;
    const auto size = std::filesystem::file_size(m_part, error);
    return error ? 0 : size;
}

void CPartFile::AllowLike(const std::string& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(qel::NativePath(Wide(file)), error);
    if (std::filesystem::exists(status))
        std::filesystem::permissions(m_part, status.permissions(), error);
}

void CPartFile::Publish()
{
    std::error_code error;
    const std::filesystem::file_status replaced = std::filesystem::status(m_target, error);
    if (std::filesystem::exists(replaced))
        std::filesystem::permissions(m_part, replaced.permissions(), error);
    if (!qel::ReplaceFileDurably(m_part, m_target))
        throw FileFailure(EExit::eFailed, m_name, "cannot put the finished file in its place");
    m_published = true;
}

} // namespace tool
