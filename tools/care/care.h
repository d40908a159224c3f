// care.h: the commands that look after files.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunCheck(CContext& context);
EExit RunCompact(CContext& context);
EExit RunBackup(CContext& context);
EExit RunCompare(CContext& context);

} // namespace tool
