// program.h: one run of the program, from arguments to exit status.
#pragma once

#include "context.h"

#include <string>
#include <vector>

namespace tool {

/// Runs the program; failures are printed to the surroundings' err. @return the exit status
int RunProgram(const std::vector<std::string>& arguments, const SSurroundings& surroundings);

} // namespace tool
