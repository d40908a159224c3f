// failure_text.h: a failure as people and programs read it.
#pragma once

#include "adaptor/failure.h"

#include <string>

namespace tool {

/// "qelprop: FILE:LINE: MESSAGE (CODE)" and, where there is one, a line with the hint; with `json` one
/// object. Ends with a line end.
std::string FailureText(const SFailure& failure, bool json);

/// A note for people as one line; with `json` one object. Ends with a line end.
std::string NoteText(const std::string& note, bool json);

} // namespace tool
