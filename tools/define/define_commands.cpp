// define_commands.cpp: the descriptions of this group's commands.
#include "cli/commands.h"

namespace tool {

std::vector<SCommand> DefineCommands()
{
    return {};
}

} // namespace tool
