// records.h: the commands that change records.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunAdd(CContext& context);
EExit RunSet(CContext& context);
EExit RunRemove(CContext& context);

} // namespace tool
