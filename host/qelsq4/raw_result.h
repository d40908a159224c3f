// raw_result.h: SQLite's result codes, and which of them are raised.
#pragma once

namespace qel {

/// The primary code of a raw result, which may carry an extended one.
constexpr int Primary(int raw)
{
    return raw & 0xFF;
}

/// Throws the failure as CQelException with the mapped code if it is a hard one.
/// @return the raw result
int RaiseIfHard(int raw, int line);

} // namespace qel
