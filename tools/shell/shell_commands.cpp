// shell_commands.cpp: the description of what helps the shell.
#include "cli/commands.h"
#include "completion.h"

namespace tool {

std::vector<SCommand> ShellCommands()
{
    return {{"completion",
             EGroup::eShell,
             "print completion for a shell",
             "The script completes commands, options, their values, files, tables and columns.",
             {{"SHELL", "bash", true, false, ENames::eText, {"bash"}}},
             {},
             {{"eval \"$(qelprop completion bash)\"", "for this shell; into ~/.bashrc for all"}},
             false,
             RunCompletion}};
}

} // namespace tool
