// look.h: the commands that look and never change.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunInfo(CContext& context);
EExit RunTables(CContext& context);
EExit RunSchema(CContext& context);
EExit RunList(CContext& context);
EExit RunGet(CContext& context);
EExit RunCount(CContext& context);
EExit RunValues(CContext& context);

} // namespace tool
