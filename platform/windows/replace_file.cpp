// replace_file.cpp: a rename that outlives a power failure.
#include <qelplat4/replace_file.h>
#include <qelplat4/types.h>

namespace qel {

bool ReplaceFileDurably(const std::filesystem::path& file, const std::filesystem::path& target)
{
    return MoveFileExW(file.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

} // namespace qel
