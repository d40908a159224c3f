// help.h: what --help prints, of the program and of each command.
#pragma once

#include "command.h"

namespace tool {

/// "4.0.0"
std::string ProgramVersion();
/// Commands by group, then the options of all commands.
std::string ProgramHelp();
/// Examples first, then arguments and options.
std::string CommandHelp(const SCommand& command);
/// "qelprop list FILE TABLE [OPTIONS]"
std::string Usage(const SCommand& command);

} // namespace tool
