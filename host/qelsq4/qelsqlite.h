// qelsqlite.h: one connection to an SQLite database and its prepared statements.
#pragma once

#include <qellib4/qellib4.h>
#include <qelplat4/mfc.h>
#include <qelsq4/export.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace qel {
class CConnection;
struct SKeptStatement;
} // namespace qel

/// A connection to an SQLite database, its own or one that the host opened. Not copied; one thread at a time.
///
/// Results named "raw" are SQLite's primary result codes. Hard failures (BUSY, LOCKED, NOMEM, INTERRUPT,
/// IOERR, CORRUPT, FULL, CANTOPEN, PROTOCOL, NOTADB) met by a statement's Step or Execute or by a commit are
/// thrown as CQelException with the mapped code, so that a caller who tests nothing cannot take them for an
/// end of data; any other failure, and every failure of the other operations, is a returned code. Failures
/// are logged with the engine's message. Nothing is set on a connection that the caller did not ask for.
class QELSQ4_API CQelSQLite
{
public:
    class CStatement;

    /// Makes a closed connection object.
    CQelSQLite();
    CQelSQLite(const CQelSQLite&) = delete;
    CQelSQLite& operator=(const CQelSQLite&) = delete;
    /// Closes as Close does.
    virtual ~CQelSQLite();

    /// Opens a database file, makes it where it is missing unless `readOnly`; closes what was open before.
    /// @param path      ":memory:" gives a database in memory; an empty path gives 14
    /// @param readOnly  a file without write permission is opened read-only in any case
    /// @return raw result; on failure the object is closed
    int Open(const std::wstring& path, bool readOnly = false);
    /// Works on a connection that the host opened, keeps and closes itself.
    ///
    /// The host calls Close() here before it closes the handle, since kept statements hold on to it.
    /// @param handle  null closes; the handle that is in use already changes nothing
    void Use(sqlite3* handle);
    /// Rolls back the guards that are begun, ends every statement, live ones included, and closes the
    /// database if this object opened it; the object is closed whatever the result.
    /// @return raw result; 0 when nothing was open; 5 while a statement that the host prepared on Handle()
    ///         lives: the engine closes the file when that ends
    int Close();

    /// Whether there is a connection to work on, whoever opened it.
    bool IsOpen() const;
    /// True when the open database was opened read-only.
    bool IsReadOnly() const;
    /// The engine's connection; null when closed. Owned as Open or Use say.
    sqlite3* Handle() const;
    /// Row id of the last row inserted through this connection; 0 when closed.
    long long GetLastInsertedRowID();

    /// Sets the log for failures of the connection itself; not owned, may be null.
    void SetLogfile(CDovLogfile* log);
    /// The log that was set; null when there is none.
    CDovLogfile* Logfile();
    /// Sets how long a locked database is waited for; 0 at first.
    ///
    /// It holds for every database that is opened later, and for the host's own connection only if it is in
    /// use now.
    void SetBusyTimeout(int milliseconds);

    /// Runs one or more statements separated by ";" to completion, up to the first that fails; a text
    /// without any is success.
    /// @return 0, else a raw code, hard failures as well; 21 closed or null
    virtual int ExecSQL(const wchar_t* sql);
    /// Runs a prepared, bound statement to completion.
    /// @return 0, else a raw code, hard failures as well; 21 for null
    virtual int ExecStatement(CStatement* statement);

    /// 10001 for 0, 100 and 101; 17300 + the primary code for any other raw result, extended or not.
    static unsigned int MapQelERR(int raw);
    /// Whether a raw result, extended or not, is one of the hard failures above.
    static bool IsHardFailure(int raw);

private:
    friend class CSQLiteTransaction;
    std::unique_ptr<qel::CConnection> m_connection;
};

/// One prepared statement at a time, taken from the connection's kept ones by its text. Not copied.
///
/// A failed Prepare leaves a statement whose binds do nothing and whose Step and Execute fail with its code.
/// When the statement ends or is prepared again, the prepared form is reset and given back, so that it holds
/// no lock. Closing the connection under a live statement turns it into a failed one (21) until it is
/// prepared again. While the last bind of a parameter has failed, Step and Execute fail with its code.
class QELSQ4_API CQelSQLite::CStatement
{
public:
    /// Prepares nothing yet.
    /// @param db  null makes every operation fail with 21, and so does the end of the connection object
    explicit CStatement(CQelSQLite* db);
    CStatement(const CStatement&) = delete;
    CStatement& operator=(const CStatement&) = delete;
    ~CStatement();

    /// Compiles one statement; blanks and comments may stand around it. The parameters are unbound.
    /// @return raw result; 21 for a null text and for one that holds no statement, or several
    int Prepare(const wchar_t* sql);

    /// Binds a number to the parameter "?7" for an index of 7, here and below.
    /// @return raw result, here and below
    int BindInt(int index, long long value);
    /// Binds a copy of a text; null binds NULL.
    int BindString(int index, const wchar_t* text);
    /// Binds a copy of a text, embedded zeros included.
    int BindString(int index, const std::wstring& text);
    /// Binds a copy of the blob's bytes; null binds NULL.
    int BindBlob(int index, const TavBlob* blob);
    /// Binds bytes that stay the caller's and must live as long as the statement may be run with them.
    /// @param data  may be null when size is 0, which binds an empty blob
    int BindBytes(int index, const void* data, unsigned int size);

    /// Makes the statement ready to run again; bindings stay.
    /// @return raw result, 0 where the last run failed
    int Reset();
    /// One step of a query: 100 while a row is available, 101 at the end, else a raw code.
    int Step();
    /// Runs one step: 101 when a change completed, 100 when a query produced a row, else a raw code.
    int Execute();

    /// A column of the current row as a number; columns count from 0, here and below.
    long long GetInt(int column);
    /// Whether a column holds a whole number as it stands, which GetInt then gives unchanged.
    bool IsInt(int column);
    /// A column as text; empty for NULL, embedded zeros stay.
    CString GetString(int column);
    /// Copies a column's bytes.
    /// @return false, leaving the blob, when the column is NULL
    bool GetBlob(int column, TavBlob* blob);
    /// Gives a column's bytes without a copy.
    /// @param data  out: valid until the next step, reset or end; null for a size of 0
    /// @return false, leaving both, when the column is NULL
    bool GetBytes(int column, const unsigned char*& data, unsigned int& size);

private:
    friend class CQelSQLite;
    friend class qel::CConnection;

    int StepRaw();
    int Bound(int index, int raw);
    int BindText(int index, std::wstring_view text);
    void GiveBack();

    qel::CConnection* m_connection; // null without one, and once it ended under this
    sqlite3_stmt* m_statement = nullptr;
    qel::SKeptStatement* m_kept = nullptr;
    CStatement* m_previous = nullptr;
    CStatement* m_next = nullptr;
    bool m_bound = false;
    std::uint64_t m_failedBinds = 0; // a bit for each parameter whose bind failed
    int m_bindFailure = 0;
    int m_failure; // what everything answers without a prepared form
};
