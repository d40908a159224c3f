// program_process.h: the built program as a process of its own, with pipes for its streams.
#pragma once

#include <string>
#include <vector>

namespace qeltest {

/// What a process may not do.
struct SLimits
{
    bool obeysPermissions = false; ///< a superuser is held to the permissions of files, too
    unsigned long fileBytes = 0;   ///< of the largest file that it may write; 0 for any
};

/// How a process has ended.
struct SEnded
{
    int status = -1; ///< 128 and the signal for one that a signal has ended, as a shell has it
    std::string out;
    std::string err;
};

/// One run of the program. Not copied.
class CProgramProcess
{
public:
    explicit CProgramProcess(std::vector<std::string> arguments, const SLimits& limits = {});
    CProgramProcess(const CProgramProcess&) = delete;
    CProgramProcess& operator=(const CProgramProcess&) = delete;
    /// Kills what still runs.
    ~CProgramProcess();

    /// Writes to its standard input.
    void Write(const std::string& text) const;
    /// Reads some of its standard output.
    std::string ReadSome() const;
    /// Closes the pipe that it writes to.
    void CloseOutput();
    void Send(int signal) const;
    /// Waits until a file is there, or some seconds. @return whether it is
    static bool Appears(const std::string& path);
    /// Closes its input and waits for its end.
    SEnded Wait();

private:
    void Run(std::vector<std::string> arguments, const SLimits& limits) const;

    int m_process = -1;
    int m_in[2] = {-1, -1};
    int m_out[2] = {-1, -1};
    int m_err[2] = {-1, -1};
};

/// One run from begin to end.
SEnded RunToEnd(const std::vector<std::string>& arguments, const SLimits& limits = {});

/// Whether this system lets a superuser give up the rights that stand above the permissions of files.
bool CanObeyPermissions();

} // namespace qeltest
