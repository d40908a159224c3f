// exchange_commands.h: the commands that carry data in and out.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunImport(CContext& context);
EExit RunExport(CContext& context);
EExit RunDump(CContext& context);
EExit RunLoad(CContext& context);
EExit RunMigrate(CContext& context);

} // namespace tool
