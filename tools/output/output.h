// output.h: where a command's answer goes: standard output, or a file that appears complete or not at all.
#pragma once

#include "cli/context.h"

#include <filesystem>
#include <fstream>

namespace tool {

/// Standard output, or the file of -O, written beside its place and renamed by Finish. Not copied.
class COutput
{
public:
    explicit COutput(CContext& context);
    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;
    /// Removes what was written to a file that was not finished.
    ~COutput();

    std::ostream& Stream();
    /// @throws SFailure  1 when not everything could be written; the file's old content is then as it was
    void Finish();

private:
    [[noreturn]] void Fail(const char* message) const;

    CContext& m_context;
    std::filesystem::path m_target;
    std::filesystem::path m_beside;
    std::ofstream m_file;
};

} // namespace tool
