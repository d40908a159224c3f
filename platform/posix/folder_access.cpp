// folder_access.cpp: the permissions that the system itself goes by, for whoever runs this process.
#include <qelplat4/folder_access.h>

#include <unistd.h>

namespace qel {

bool CanMakeFilesIn(const std::filesystem::path& folder)
{
    return access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) == 0;
}

} // namespace qel
