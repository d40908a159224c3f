// terminal.cpp: arguments, streams and keys of a Windows process.
#include <qelplat4/terminal.h>
#include <qelplat4/types.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace qel {
namespace {

volatile LONG g_interrupted = 0;

BOOL WINAPI RememberInterrupt(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        return FALSE;
    // The second one is left to the system, which ends the process.
    return InterlockedExchange(&g_interrupted, 1) == 0 ? TRUE : FALSE;
}

std::string Utf8Of(const wchar_t* text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(size > 0 ? static_cast<std::size_t>(size) : 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

} // namespace

std::vector<std::string> CommandLineArguments(int, char**)
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** texts = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int index = 1; texts != nullptr && index < count; ++index)
        arguments.push_back(Utf8Of(texts[index]));
    LocalFree(texts);
    return arguments;
}

bool IsTerminal(EStream stream)
{
    return _isatty(static_cast<int>(stream)) != 0;
}

int TerminalColumns(int absent)
{
    for (const DWORD handle : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        if (GetConsoleScreenBufferInfo(GetStdHandle(handle), &info) != 0)
            return info.srWindow.Right - info.srWindow.Left + 1;
    }
    return absent;
}

void PrepareStreams()
{
    for (FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

std::streambuf* StandardInput()
{
    return std::cin.rdbuf(); // the keys that stop a program end its reading as well
}

bool IsOutputClosed()
{
    return GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE;
}

void CatchInterrupts(bool caught)
{
    SetConsoleCtrlHandler(RememberInterrupt, caught ? TRUE : FALSE);
}

bool WasInterrupted()
{
    return g_interrupted != 0;
}

void SetInterrupted(bool interrupted)
{
    InterlockedExchange(&g_interrupted, interrupted ? 1 : 0);
}

bool UseLocale(const std::string&)
{
    return false;
}

} // namespace qel
