// connection.cpp: opening and closing, kept statements handed out, and failures noted.
#include "connection.h"

#include "raw_result.h"

#include <qelplat4/utf16.h>

#include <sqlite3.h>

namespace qel {
namespace {

constexpr const wchar_t* kSource = L".\\qelsqlite";

} // namespace

CConnection::~CConnection()
{
    Close();
    EndStatements(true);
}

int CConnection::Open(const std::wstring& path, bool readOnly)
{
    Close();
    // The engine would take an empty path for a nameless file that is deleted when it is closed, and would
    // read no further than to an embedded zero.
    if (path.empty() || path.find(L'\0') != std::wstring::npos)
        return Failed(SQLITE_CANTOPEN, __LINE__);
    const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int raw = sqlite3_open_v2(ToUtf8(path).c_str(), &m_handle, flags, nullptr);
    if (raw != SQLITE_OK) {
        Failed(raw, __LINE__);
        sqlite3_close(m_handle);
        m_handle = nullptr;
        return Primary(raw);
    }
    m_owned = true;
    m_readOnly = sqlite3_db_readonly(m_handle, "main") == 1;
    return sqlite3_busy_timeout(m_handle, m_busyTimeout);
}

void CConnection::Use(sqlite3* handle)
{
    if (handle == m_handle)
        return;
    Close();
    m_handle = handle;
    m_readOnly = handle != nullptr && sqlite3_db_readonly(handle, "main") == 1;
}

int CConnection::Close()
{
    if (m_handle == nullptr)
        return SQLITE_OK;
    EndGuards(true);
    EndStatements(false);
    m_cache.Clear();
    int raw = SQLITE_OK;
    if (m_owned) {
        raw = sqlite3_close(m_handle);
        if (raw != SQLITE_OK) {
            // The host holds a statement of its own; the engine closes the file when that one ends.
            Failed(raw, __LINE__);
            sqlite3_close_v2(m_handle);
        }
    }
    m_handle = nullptr;
    m_owned = false;
    m_readOnly = false;
    return Primary(raw);
}

void CConnection::SetBusyTimeout(int milliseconds)
{
    m_busyTimeout = milliseconds;
    if (m_handle != nullptr)
        sqlite3_busy_timeout(m_handle, milliseconds);
}

int CConnection::Take(const wchar_t* text, SKeptStatement*& kept) noexcept
{
    kept = nullptr;
    if (m_handle == nullptr || text == nullptr)
        return Failed(SQLITE_MISUSE, __LINE__);
    try {
        const std::wstring_view view = text;
        kept = m_cache.Take(view);
        if (kept != nullptr)
            return SQLITE_OK;
        sqlite3_stmt* statement = nullptr;
        const int raw = PrepareOne(ToUtf8(view), statement);
        if (raw != SQLITE_OK)
            return Failed(raw, __LINE__);
        kept = m_cache.Enter(view, statement);
        return SQLITE_OK;
    } catch (...) {
        return Failed(SQLITE_NOMEM, __LINE__);
    }
}

int CConnection::KeepReady(const wchar_t* text) noexcept
{
    if (m_cache.Has(text))
        return SQLITE_OK;
    SKeptStatement* kept = nullptr;
    const int raw = Take(text, kept);
    if (raw == SQLITE_OK)
        m_cache.GiveBack(kept, false);
    return raw;
}

// Prepares the one statement of a text; blanks and comments may stand around it.
int CConnection::PrepareOne(const std::string& sql, sqlite3_stmt*& statement)
{
    const char* rest = sql.c_str();
    while (*rest != '\0') {
        sqlite3_stmt* next = nullptr;
        const int raw = sqlite3_prepare_v3(m_handle, rest, -1, SQLITE_PREPARE_PERSISTENT, &next, &rest);
        if (raw != SQLITE_OK || (next != nullptr && statement != nullptr)) {
            sqlite3_finalize(next);
            sqlite3_finalize(statement);
            statement = nullptr;
            return raw != SQLITE_OK ? raw : SQLITE_MISUSE;
        }
        if (next != nullptr)
            statement = next;
    }
    return statement != nullptr ? SQLITE_OK : SQLITE_MISUSE;
}

int CConnection::Run(const wchar_t* text) noexcept
{
    SKeptStatement* kept = nullptr;
    int raw = Take(text, kept);
    if (raw != SQLITE_OK)
        return raw;
    const bool inTransaction = InTransaction();
    raw = Primary(sqlite3_step(kept->statement));
    // A progress handler may interrupt behind the last instruction, when the transaction has begun or ended.
    if (raw == SQLITE_INTERRUPT && InTransaction() != inTransaction)
        raw = SQLITE_DONE;
    raw = raw == SQLITE_DONE ? SQLITE_OK : Failed(raw, __LINE__);
    m_cache.GiveBack(kept, false);
    return raw;
}

int CConnection::RunBatch(const wchar_t* sql) noexcept
{
    if (m_handle == nullptr || sql == nullptr)
        return Failed(SQLITE_MISUSE, __LINE__);
    try {
        const int raw = sqlite3_exec(m_handle, ToUtf8(sql).c_str(), nullptr, nullptr, nullptr);
        return raw == SQLITE_OK ? raw : Failed(raw, __LINE__);
    } catch (...) {
        return Failed(SQLITE_NOMEM, __LINE__);
    }
}

int CConnection::Failed(int raw, int line) noexcept
{
    if (m_guards != nullptr && !InTransaction())
        EndGuards(false);
    if (m_log == nullptr)
        return Primary(raw);
    try {
        // The engine's own message belongs to this failure only if it was the engine that met it.
        const bool met = m_handle != nullptr && Primary(sqlite3_errcode(m_handle)) == Primary(raw);
        const std::wstring text = FromUtf8(met ? sqlite3_errmsg(m_handle) : sqlite3_errstr(raw));
        m_log->AddError(CQelSQLite::MapQelERR(raw), text.c_str(), line, kSource);
    } catch (...) {
        m_log->AddError(CQelSQLite::MapQelERR(raw), line, kSource);
    }
    return Primary(raw);
}

bool CConnection::InTransaction() const
{
    return m_handle != nullptr && sqlite3_get_autocommit(m_handle) == 0;
}

void CConnection::EndStatements(bool forGood) noexcept
{
    for (auto* statement = m_statements; statement != nullptr; statement = statement->m_next) {
        if (statement->m_kept != nullptr) {
            statement->m_kept = nullptr;
            statement->m_statement = nullptr;
        }
        statement->m_failure = SQLITE_MISUSE;
        if (forGood)
            statement->m_connection = nullptr;
    }
}

void CConnection::EndGuards(bool undo) noexcept
{
    while (m_guards != nullptr) {
        CSQLiteTransaction* const innermost = m_guards;
        if (undo)
            innermost->Rollback();
        else
            innermost->End();
    }
}

} // namespace qel
