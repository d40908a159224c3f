// record_walk.h: the records of a table, one after the other, for commands that carry them out.
#pragma once

#include "cli/context.h"

namespace tool {

/// Reads records; leaves damaged ones out, and says so, where the user asked for that.
class CRecordWalk
{
public:
    explicit CRecordWalk(CContext& context)
        : m_context(context), m_skip(context.Arguments().Has("--skip-damaged"))
    {}

    /// @return false for a record that is not there, or was left out
    /// @throws SFailure  for a damaged one that is not to be left out
    bool Read(CPropertyFile& file, unsigned long table, unsigned long oid, CRecord& record);
    /// What the command ends with: faults, if something was left out.
    EExit Exit() const { return m_skipped == 0 ? EExit::eDone : EExit::eFaults; }

private:
    CContext& m_context;
    bool m_skip;
    unsigned long long m_skipped = 0;
};

} // namespace tool
