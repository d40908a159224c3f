// killed_process.h: a process of a test's own that is killed at work.
#pragma once

#include <functional>
#include <vector>

namespace qeltest {

/// Forks a process that works until it is killed and acknowledges its steps over a pipe. Not copied.
class CKilledProcess
{
public:
    /// Tells the parent that a step, and all before it, is done.
    using Acknowledge = std::function<void(long long step)>;

    /// Runs the work in the child; it never returns from there.
    explicit CKilledProcess(const std::function<void(const Acknowledge&)>& work);
    CKilledProcess(const CKilledProcess&) = delete;
    CKilledProcess& operator=(const CKilledProcess&) = delete;
    ~CKilledProcess();

    /// Waits for the first acknowledged step, then that long, and kills it.
    /// @return every step that was acknowledged
    std::vector<long long> KillAfter(int microseconds);

private:
    bool ReadStep(long long& step) const;

    int m_pipe = -1;
    int m_process = -1;
};

/// Rounds that the crash tests run: QEL_CRASH_ROUNDS of the environment, else 20.
int CrashRounds();

} // namespace qeltest
