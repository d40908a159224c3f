// sql_text.cpp: the engine's own view of a database, beside the library.
#include "sql_text.h"

#include "hex.h"

#include <sqlite3.h>

namespace qeltest {
namespace {

std::string ColumnText(sqlite3_stmt* statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return "NULL";
    case SQLITE_BLOB:
        return "x'" +
               HexOf(sqlite3_column_blob(statement, column),
                     static_cast<std::size_t>(sqlite3_column_bytes(statement, column))) +
               "'";
    default:
        return reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    }
}

} // namespace

std::string Rows(CQelSQLite& sql, const std::string& query)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(sql.Handle(), query.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        return std::string("error: ") + sqlite3_errmsg(sql.Handle());
    std::string text;
    int raw = sqlite3_step(statement);
    for (; raw == SQLITE_ROW; raw = sqlite3_step(statement)) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            text += (column == 0 ? "" : "|") + ColumnText(statement, column);
        text += "\n";
    }
    if (raw != SQLITE_DONE)
        text += std::string("error: ") + sqlite3_errmsg(sql.Handle());
    sqlite3_finalize(statement);
    return text;
}

bool Execute(CQelSQLite& sql, const std::string& statements)
{
    return sqlite3_exec(sql.Handle(), statements.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

} // namespace qeltest
