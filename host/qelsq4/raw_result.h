// raw_result.h: SQLite's result codes, and which of them are raised.
#pragma once

namespace qel {

/// The primary code of a raw result, which may carry an extended one.
constexpr int Primary(int raw)
{
    return raw & 0xFF;
}

/// Whether a failure is thrown by the operations whose results go untested: the engine could not do what is
/// right in itself, and a caller who tests nothing would take it for an end of data.
bool IsHardFailure(int raw);

/// Throws the failure as CQelException with the mapped code if it is a hard one. @return the raw result
int RaiseIfHard(int raw, int line);

} // namespace qel
