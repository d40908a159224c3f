// qelsqlite.h: one connection to an SQLite database and its prepared statements.
#pragma once

#include <qellib4/qellib4.h>
#include <qelplat4/mfc.h>
#include <qelsq4/export.h>

#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace qel {
struct SConnection;
}

/// A connection to an SQLite database, its own or one that the host opened. Not copied; one thread at a time.
///
/// Results named "raw" are SQLite's primary result codes. Hard failures (BUSY, LOCKED, NOMEM, INTERRUPT,
/// IOERR, CORRUPT, FULL, CANTOPEN, PROTOCOL, NOTADB) met by a statement's Step or Execute or by a commit are
/// thrown as CQelException with the mapped code, so that a caller who tests nothing cannot take them for an
/// end of data; any other failure is a returned code.
class QELSQ4_API CQelSQLite
{
public:
    class CStatement;

    CQelSQLite();
    CQelSQLite(const CQelSQLite&) = delete;
    CQelSQLite& operator=(const CQelSQLite&) = delete;
    /// Closes as Close does.
    virtual ~CQelSQLite();

    /// Opens a database file, makes it where it is missing unless `readOnly`; closes what was open before.
    /// @param path  ":memory:" gives a database in memory
    /// @return raw result; on failure the object is closed
    int Open(const std::wstring& path, bool readOnly = false);
    /// Works on a connection that the host opened, keeps and closes itself; null closes.
    /// The host calls Close() here before it closes the handle, since kept statements hold on to it.
    void Use(sqlite3* handle);
    /// Ends every statement, live ones included, and closes the database if this object opened it.
    /// @return raw result; 0 when nothing was open
    int Close();

    bool IsOpen() const;
    /// True when the open database was opened read-only.
    bool IsReadOnly() const;
    /// The engine's connection; null when closed. Owned as Open or Use say.
    sqlite3* Handle() const;
    /// Row id of the last row inserted through this connection; 0 when closed.
    long long GetLastInsertedRowID();

    /// Sets the log for failures of the connection itself; not owned, may be null.
    void SetLogfile(CDovLogfile* log);
    CDovLogfile* Logfile();
    /// How long a locked database is waited for; 0 at first.
    void SetBusyTimeout(int milliseconds);

    /// Runs one or more statements separated by ";" to completion. @return 0, else a raw code
    virtual int ExecSQL(const wchar_t* sql);
    /// Runs a prepared, bound statement to completion. @return 0, else a raw code
    virtual int ExecStatement(CStatement* statement);

    /// 10001 for 0, 100 and 101; 17300 + the primary code for any other raw result.
    static unsigned int MapQelERR(int raw);

private:
    friend class CSQLiteTransaction;
    std::unique_ptr<qel::SConnection> m_connection;
};

/// One prepared statement at a time, taken from the connection's kept ones by its text. Not copied.
///
/// A failed Prepare leaves a statement whose binds do nothing and whose Step and Execute fail with its code.
/// When the statement ends or is prepared again, the prepared form is reset and given back, so that it holds
/// no lock. Closing the connection under a live statement turns it into a failed one (21).
class QELSQ4_API CQelSQLite::CStatement
{
public:
    /// @param db  must outlive the statement; null makes every operation fail with 21
    explicit CStatement(CQelSQLite* db);
    CStatement(const CStatement&) = delete;
    CStatement& operator=(const CStatement&) = delete;
    ~CStatement();

    /// Compiles one statement. @return raw result
    int Prepare(const wchar_t* sql);

    /// Binds take the number of the parameter in the text ("?7" is 7). @return raw result
    int BindInt(int index, long long value);
    int BindString(int index, const wchar_t* text);
    int BindString(int index, const std::wstring& text);
    /// Binds a copy of the blob's bytes; null binds NULL.
    int BindBlob(int index, const TavBlob* blob);
    /// Binds bytes that stay the caller's and must live until the statement is reset, bound anew or ends.
    int BindBytes(int index, const void* data, unsigned int size);

    /// Makes the statement ready to run again; bindings stay. @return raw result, 0 where the last run failed
    int Reset();
    /// One step of a query: 100 while a row is available, 101 at the end, else a raw code.
    int Step();
    /// Runs one step: 101 when a change completed, 100 when a query produced a row, else a raw code.
    int Execute();

    /// Result columns count from 0; of the current row only.
    long long GetInt(int column);
    CString GetString(int column);
    /// Copies a column's bytes. @return false, leaving the blob, when the column is NULL
    bool GetBlob(int column, TavBlob* blob);
    /// Gives a column's bytes without a copy, valid until the next step, reset or end; `data` is null for
    /// size 0.
    /// @return false, leaving both, when the column is NULL
    bool GetBytes(int column, const unsigned char*& data, unsigned int& size);

private:
    friend class CQelSQLite;
    friend struct qel::SConnection;

    int StepRaw();
    void GiveBack();

    qel::SConnection* m_connection = nullptr; // null once the connection ended under it
    sqlite3_stmt* m_statement = nullptr;
    void* m_kept = nullptr; // the slot that the prepared form came from
    CStatement* m_previous = nullptr;
    CStatement* m_next = nullptr;
    int m_failure;
};
