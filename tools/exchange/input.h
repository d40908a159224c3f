// input.h: the file that a command reads, or standard input.
#pragma once

#include "cli/context.h"

#include <fstream>

namespace tool {

/// What the argument INPUT names; "-" and nothing are standard input. Not copied.
class CInput
{
public:
    /// @throws SFailure  3 for a file that cannot be read, 4 for one that is plainly no text in UTF-8
    explicit CInput(CContext& context);

    std::istream& Stream() { return m_isStandard ? m_context.In() : m_file; }
    /// The name, for messages.
    std::string Name() const { return m_isStandard ? "standard input" : m_name; }
    /// Bytes; 0 where that is not known.
    unsigned long long Size() const { return m_size; }

private:
    void CheckStart();

    CContext& m_context;
    std::string m_name;
    bool m_isStandard;
    std::ifstream m_file;
    unsigned long long m_size = 0;
};

/// What is wrong with a file that cannot be opened.
SFailure UnreadableFile(const std::string& name);

} // namespace tool
