// replace_file.cpp: a rename that outlives a power failure.
#include <qelplat4/replace_file.h>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace qel {
namespace {

// Not every file system can do this, so that a failure counts for nothing: the rename itself has happened.
void SyncFolder(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

bool ReplaceFileDurably(const std::filesystem::path& file, const std::filesystem::path& target)
{
    if (std::rename(file.c_str(), target.c_str()) != 0)
        return false;
    SyncFolder(target.parent_path());
    return true;
}

} // namespace qel
