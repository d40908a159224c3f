// folder_access.cpp: a folder that is opened with the right to make files in it may have them.
#include <qelplat4/folder_access.h>
#include <qelplat4/types.h>

namespace qel {

bool CanMakeFilesIn(const std::filesystem::path& folder)
{
    constexpr DWORD kAnyShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE opened = CreateFileW(folder.empty() ? L"." : folder.c_str(), FILE_ADD_FILE, kAnyShare,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return false;
    CloseHandle(opened);
    return true;
}

} // namespace qel
