// logline.h: how an entry of the log looks in the file.
#pragma once

#include <qellib4/dovlogfile.h>

#include <chrono>
#include <string>

namespace qel {

/// Gives one line of valid UTF-8 with its line break: time (UTC), kind, code, text and place.
///
/// "2026-03-01 09:05:07.250Z  error    17500  Not open  [.\qelpropdb:12]"; an entry without a code has "-"
/// there, one without a file no place. Control characters and line separators are escaped ("\n", "\u0007"),
/// a lone surrogate becomes U+FFFD.
std::string LogLine(const CDovLogfile::SEntry& entry, std::chrono::system_clock::time_point time);

} // namespace qel
