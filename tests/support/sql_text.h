// sql_text.h: the engine's own view of a database, beside the library.
#pragma once

#include <qelsq4/qelsq4.h>

#include <string>

namespace qeltest {

/// Runs one query on the connection's own handle and gives its rows, "1|Lamps|NULL|x'00ff'" a line each; a
/// failure gives "error: " and the engine's message.
std::string Rows(CQelSQLite& sql, const std::string& query);

/// Runs statements on the connection's own handle. @return whether all succeeded
bool Execute(CQelSQLite& sql, const std::string& statements);

} // namespace qeltest
