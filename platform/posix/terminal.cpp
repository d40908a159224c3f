// terminal.cpp: arguments, streams and signals of a POSIX process.
#include <qelplat4/terminal.h>

#include "locale_name.h"

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace qel {
namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void RememberInterrupt(int number)
{
    g_interrupted = 1;
    std::signal(number, SIG_DFL);
}

/// A stream that was closed stays useless; else the next file that is opened would be in its place.
void HoldClosedStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongWay = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", wrongWay) < 0) // takes the lowest free number
            return;
    }
}

} // namespace

std::vector<std::string> CommandLineArguments(int argc, char** argv)
{
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool IsTerminal(EStream stream)
{
    return isatty(static_cast<int>(stream)) == 1;
}

int TerminalColumns(int absent)
{
    for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
        winsize size{};
        if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
            return size.ws_col;
    }
    return absent;
}

void PrepareStreams()
{
    HoldClosedStreams();
    // What ends a process by default is an error of the write that met it.
    for (const int number : {SIGPIPE, SIGXFSZ})
        std::signal(number, SIG_IGN);
}

bool IsOutputClosed()
{
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

void CatchInterrupts(bool caught)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        // Whoever started the program may want it to go on: nohup, a job in the background.
        if (std::signal(number, SIG_IGN) != SIG_IGN)
            std::signal(number, caught ? RememberInterrupt : SIG_DFL);
    }
}

bool WasInterrupted()
{
    return g_interrupted != 0;
}

void SetInterrupted(bool interrupted)
{
    g_interrupted = interrupted ? 1 : 0;
}

bool UseLocale(const std::string& name)
{
    if (!IsNeutralName(name) && IcuLocaleId(name).empty())
        return false;
    return setenv("LC_ALL", name.c_str(), 1) == 0;
}

} // namespace qel
