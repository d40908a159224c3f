// look_commands.cpp: the descriptions of this group's commands.
#include "cli/commands.h"

namespace tool {

std::vector<SCommand> LookCommands()
{
    return {};
}

} // namespace tool
