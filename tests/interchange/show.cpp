// show.cpp: what a file holds, as text that is the same on every system.
#include "show.h"

#include "../support/hex.h"

#include <qelplat4/utf16.h>
#include <sqlite3.h>
#include <zlib.h>

#include <memory>
#include <stdexcept>

namespace interchange {
namespace {

using TStatement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

TStatement Prepare(CQelSQLite& sql, const std::string& text)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(sql.Handle(), text.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(sql.Handle()));
    return {statement, sqlite3_finalize};
}

std::string CellText(sqlite3_stmt* statement, int cell)
{
    if (sqlite3_column_type(statement, cell) == SQLITE_NULL)
        return "NULL";
    if (sqlite3_column_type(statement, cell) == SQLITE_BLOB)
        return "blob of " + HashOf(sqlite3_column_blob(statement, cell),
                                   static_cast<std::size_t>(sqlite3_column_bytes(statement, cell)));
    return reinterpret_cast<const char*>(sqlite3_column_text(statement, cell));
}

void ShowTable(CQelSQLite& sql, const std::string& table)
{
    const TStatement rows = Prepare(sql, "SELECT rowid,* FROM \"" + table + "\" ORDER BY rowid");
    while (sqlite3_step(rows.get()) == SQLITE_ROW) {
        std::cout << table;
        for (int cell = 0; cell < sqlite3_column_count(rows.get()); ++cell)
            std::cout << "|" << CellText(rows.get(), cell);
        std::cout << "\n";
    }
}

} // namespace

std::string HashOf(const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    const unsigned long sum = bytes == nullptr ? 0 : crc32(0, bytes, static_cast<unsigned int>(size));
    const unsigned char digits[] = {static_cast<unsigned char>(sum >> 24),
                                    static_cast<unsigned char>(sum >> 16),
                                    static_cast<unsigned char>(sum >> 8), static_cast<unsigned char>(sum)};
    return std::to_string(size) + " bytes " + qeltest::HexOf(digits, sizeof digits);
}

std::string Quoted(const std::wstring& text)
{
    return " '" + qel::ToUtf8(text) + "'";
}

std::string ShowValue(const CQelProperty& value)
{
    const std::string bytes = qeltest::BytesOf(qeltest::HexOf(value));
    return bytes.size() <= 64 ? qeltest::HexOf(bytes) : HashOf(bytes.data(), bytes.size());
}

void ShowRows(const std::wstring& path)
{
    CQelSQLite sql;
    if (sql.Open(path, true) != SQLITE_OK)
        throw std::runtime_error("cannot be opened");
    std::vector<std::string> tables;
    const TStatement names = Prepare(
        sql, "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite_%' ORDER BY name");
    while (sqlite3_step(names.get()) == SQLITE_ROW)
        tables.push_back(CellText(names.get(), 0));
    for (const std::string& table : tables)
        ShowTable(sql, table);
}

} // namespace interchange
