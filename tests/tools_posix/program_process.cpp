// program_process.cpp: pipes, limits and signals.
#include "program_process.h"

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qeltest {
namespace {

void Close(int& descriptor)
{
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

std::string ReadAll(int descriptor)
{
    std::string text;
    char some[4096];
    for (ssize_t size = read(descriptor, some, sizeof some); size > 0;
         size = read(descriptor, some, sizeof some))
        text.append(some, static_cast<std::size_t>(size));
    return text;
}

// What is given up here is gone with the next program that the process becomes.
bool GiveUpRights()
{
    return geteuid() != 0 || (prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE) == 0 &&
                              prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH) == 0);
}

} // namespace

CProgramProcess::CProgramProcess(std::vector<std::string> arguments, const SLimits& limits)
{
    for (auto* ends : {&m_in, &m_out, &m_err}) {
        if (pipe2(*ends, O_CLOEXEC) != 0)
            std::abort();
    }
    m_process = fork();
    if (m_process == 0)
        Run(std::move(arguments), limits);
    Close(m_in[0]);
    Close(m_out[1]);
    Close(m_err[1]);
}

void CProgramProcess::Run(std::vector<std::string> arguments, const SLimits& limits) const
{
    dup2(m_in[0], STDIN_FILENO);
    dup2(m_out[1], STDOUT_FILENO);
    dup2(m_err[1], STDERR_FILENO);
    if (limits.fileBytes != 0) {
        const rlimit most{limits.fileBytes, limits.fileBytes};
        setrlimit(RLIMIT_FSIZE, &most);
    }
    if (limits.obeysPermissions && !GiveUpRights())
        _exit(126);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        std::signal(number, SIG_DFL); // whatever the tests were started with
    setenv("LC_ALL", "C.UTF-8", 1);
    arguments.insert(arguments.begin(), QELPROP_PROGRAM);
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    execv(words.front(), words.data());
    _exit(127);
}

CProgramProcess::~CProgramProcess()
{
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    for (auto* ends : {&m_in, &m_out, &m_err}) {
        Close((*ends)[0]);
        Close((*ends)[1]);
    }
}

void CProgramProcess::Write(const std::string& text) const
{
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t size = write(m_in[1], text.data() + done, text.size() - done);
        if (size <= 0)
            return;
        done += static_cast<std::size_t>(size);
    }
}

std::string CProgramProcess::ReadSome() const
{
    char some[256];
    const ssize_t size = read(m_out[0], some, sizeof some);
    return size > 0 ? std::string(some, static_cast<std::size_t>(size)) : std::string();
}

void CProgramProcess::CloseOutput()
{
    Close(m_out[0]);
}

void CProgramProcess::Send(int signal) const
{
    kill(m_process, signal);
}

bool CProgramProcess::Appears(const std::string& path)
{
    constexpr int kTries = 3000;
    constexpr useconds_t kPause = 10000;
    struct stat found
    {};
    for (int tries = 0; tries < kTries; ++tries) {
        if (stat(path.c_str(), &found) == 0)
            return true;
        usleep(kPause);
    }
    return false;
}

SEnded CProgramProcess::Wait()
{
    Close(m_in[1]);
    SEnded ended;
    ended.out = ReadAll(m_out[0]);
    ended.err = ReadAll(m_err[0]);
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    constexpr int kSignals = 128;
    ended.status = WIFSIGNALED(status) ? kSignals + WTERMSIG(status) : WEXITSTATUS(status);
    return ended;
}

SEnded RunToEnd(const std::vector<std::string>& arguments, const SLimits& limits)
{
    return CProgramProcess(arguments, limits).Wait();
}

bool CanObeyPermissions()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(GiveUpRights() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace qeltest
