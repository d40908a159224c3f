// completion.h: completion for bash, made from the commands' descriptions.
#pragma once

#include "cli/context.h"

namespace tool {

EExit RunCompletion(CContext& context);
/// The script for bash.
std::string BashCompletion();

} // namespace tool
