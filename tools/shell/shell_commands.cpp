// shell_commands.cpp: commands that help the shell.
#include "cli/commands.h"

namespace tool {

std::vector<SCommand> ShellCommands()
{
    return {};
}

} // namespace tool
