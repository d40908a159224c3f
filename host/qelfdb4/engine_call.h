// engine_call.h: statements run where a failure is to end the operation.
#pragma once

#include <qelsq4/qelsqlite.h>

#include <string>

namespace qel {

/// Throws a CQelException with the result code.
[[noreturn]] void Fail(unsigned int code, int line);
/// Throws the code behind a raw result other than 0, 100 and 101.
void Check(int raw, int line);

/// Runs statements separated by ";" to completion or throws.
void Run(CQelSQLite& db, const wchar_t* sql);
/// Gives the first column of the first row, or throws; a query without a row fails as corrupt.
std::wstring AskText(CQelSQLite& db, const wchar_t* sql);
long long AskInt(CQelSQLite& db, const wchar_t* sql);

/// Steps a query.
/// @return whether there is a row; throws for anything but a row or the end
bool Next(CQelSQLite::CStatement& statement);

} // namespace qel
