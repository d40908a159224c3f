// connection.h: what a connection object holds: the engine's handle, the kept statements, and all that must
// end before the handle does.
#pragma once

#include "statement_cache.h"

#include <qelsq4/qelsqlite.h>
#include <qelsq4/sqlitetransaction.h>

namespace qel {

/// The state behind one CQelSQLite; lives as long, open or closed. Not copied.
class CConnection
{
public:
    CConnection() = default;
    CConnection(const CConnection&) = delete;
    CConnection& operator=(const CConnection&) = delete;
    /// Closes, and lets go of every statement and guard that still points here.
    ~CConnection();

    int Open(const std::wstring& path, bool readOnly);
    void Use(sqlite3* handle);
    int Close();

    sqlite3* Handle() const { return m_handle; }
    bool IsReadOnly() const { return m_readOnly; }
    CDovLogfile* Logfile() const { return m_log; }
    void SetLogfile(CDovLogfile* log) { m_log = log; }
    void SetBusyTimeout(int milliseconds);

    /// Hands out a prepared statement of one text.
    /// @param kept  out: null unless the result is 0
    /// @return raw; 21 closed, null text, no statement in the text or more than one; failures are logged
    int Take(const wchar_t* text, SKeptStatement*& kept) noexcept;
    /// @param bound  whether anything was bound
    void GiveBack(SKeptStatement* kept, bool bound) noexcept { m_cache.GiveBack(kept, bound); }
    /// Sees to it that a text is kept, so that running it later does not fail for lack of memory.
    /// @return raw, as Take gives it
    int KeepReady(const wchar_t* text) noexcept;
    /// Runs a kept statement that gives no rows.
    /// @return 0, else a raw code, logged
    int Run(const wchar_t* text) noexcept;
    /// Runs a batch; nothing of it is kept.
    /// @return 0, else a raw code, logged
    int RunBatch(const wchar_t* sql) noexcept;
    /// To be called with every failure: logs it with the engine's message, and ends the guards whose
    /// transaction the engine has undone itself.
    /// @return the primary code
    int Failed(int raw, int line) noexcept;

    /// Whether the engine has a transaction open.
    bool InTransaction() const;

    /// A buffer for text on its way into a statement.
    std::string& Scratch() { return m_scratch; }

    CQelSQLite::CStatement* m_statements = nullptr; ///< every statement object of this connection
    CSQLiteTransaction* m_guards = nullptr;         ///< the begun ones, innermost first

private:
    int PrepareOne(const std::string& sql, sqlite3_stmt*& statement);
    void EndStatements(bool forGood) noexcept;
    void EndGuards(bool undo) noexcept;

    sqlite3* m_handle = nullptr;
    bool m_owned = false;
    bool m_readOnly = false;
    int m_busyTimeout = 0;
    CDovLogfile* m_log = nullptr;
    CStatementCache m_cache;
    std::string m_scratch;
};

} // namespace qel
