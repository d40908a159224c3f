// parser.h: from a command line to a command and its arguments.
#pragma once

#include "arguments.h"
#include "command.h"

namespace tool {

/// What a command line asks for.
struct SInvocation
{
    const SCommand* command = nullptr; ///< null with --help, --version and --man alone
    CArguments arguments;
};

/// Reads the arguments that follow the program's name.
/// @throws SFailure  2, with a hint where the mistake can be guessed
SInvocation ParseCommandLine(const std::vector<std::string>& arguments);

} // namespace tool
