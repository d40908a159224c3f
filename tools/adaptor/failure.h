// failure.h: how a command fails: an exit status, one line and at most one hint.
#pragma once

#include <string>

namespace tool {

/// Exit statuses of the program.
enum class EExit
{
    eDone = 0,
    eFailed = 1,   ///< input or output, busy, read-only, full, engine
    eUsage = 2,    ///< the command line itself
    eNotFound = 3, ///< file, table, column or record
    eRefused = 4,  ///< name, duplicate, limit, type, bad value; nothing was written
    eFaults = 5,   ///< faults found in the data
    eInterrupt = 130
};

/// Thrown by the parts of a command and caught once, in main, which prints it and ends the program.
struct SFailure
{
    EExit exit = EExit::eFailed;
    std::string file;            ///< UTF-8; empty where no file is concerned
    unsigned long long line = 0; ///< of an input file; 0 for none
    std::string message;         ///< UTF-8, lower case, no full stop
    std::string hint;            ///< empty for none
    unsigned int code = 0;       ///< result code of the library; 0 for none
};

/// A failure in words of the program's own.
SFailure MakeFailure(EExit exit, const std::string& message, const std::string& hint = {});
/// The same about a file.
SFailure FileFailure(EExit exit, const std::string& file, const std::string& message,
                     const std::string& hint = {});
/// The same about a line of an input file, which whoever knows its name puts in.
SFailure LineFailure(EExit exit, unsigned long long line, const std::string& message,
                     const std::string& hint = {});

/// The exit status that stands for a result code of the library.
EExit ExitOf(unsigned int code);

/// Says that a process has left a change half done, and what takes it back.
void ExplainUnfinished(SFailure& failure);

/// The failure that stands for an interrupt: exit status 130.
SFailure InterruptFailure();

/// A failure made of a result code of the library: its own text, the code in parentheses.
SFailure FailureOf(unsigned int code, const std::string& file, const std::string& doing);

} // namespace tool
