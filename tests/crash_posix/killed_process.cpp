// killed_process.cpp: forking a process, hearing it and killing it.
#include "killed_process.h"

#include <csignal>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace qeltest {

CKilledProcess::CKilledProcess(const std::function<void(const Acknowledge&)>& work)
{
    int ends[2];
    if (pipe(ends) != 0)
        return;
    m_process = fork();
    if (m_process == 0) {
        close(ends[0]);
        work([&](long long step) {
            if (write(ends[1], &step, sizeof step) != sizeof step)
                _exit(3);
        });
        _exit(2);
    }
    close(ends[1]);
    m_pipe = ends[0];
}

CKilledProcess::~CKilledProcess()
{
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    if (m_pipe >= 0)
        close(m_pipe);
}

bool CKilledProcess::ReadStep(long long& step) const
{
    return m_pipe >= 0 && read(m_pipe, &step, sizeof step) == sizeof step;
}

std::vector<long long> CKilledProcess::KillAfter(int microseconds)
{
    std::vector<long long> steps;
    long long step = 0;
    if (!ReadStep(step))
        return steps;
    steps.push_back(step);
    // The pipe holds a few thousand steps; a child that fills it waits there, which is as good a moment.
    usleep(static_cast<useconds_t>(microseconds));
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
    while (ReadStep(step))
        steps.push_back(step);
    return steps;
}

int CrashRounds()
{
    const char* const rounds = std::getenv("QEL_CRASH_ROUNDS");
    return rounds != nullptr && std::atoi(rounds) > 0 ? std::atoi(rounds) : 20;
}

} // namespace qeltest
