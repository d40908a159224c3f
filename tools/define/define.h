// define.h: the commands that make and change tables and columns.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunInit(CContext& context);
EExit RunAddTable(CContext& context);
EExit RunRenameTable(CContext& context);
EExit RunRemoveTable(CContext& context);
EExit RunAddColumn(CContext& context);
EExit RunModifyColumn(CContext& context);
EExit RunRenameColumn(CContext& context);
EExit RunRemoveColumn(CContext& context);
EExit RunMoveColumn(CContext& context);

} // namespace tool
