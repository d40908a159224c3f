// raw_result.cpp: SQLite's result codes: which are raised, and as which code of the family.
#include "raw_result.h"

#include <qelsq4/qelsqlite.h>

#include <sqlite3.h>

// The engine could not do what is right in itself, and a caller who tests nothing would take it for an end of
// the data.
bool CQelSQLite::IsHardFailure(int raw)
{
    switch (qel::Primary(raw)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_NOMEM:
    case SQLITE_INTERRUPT:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
    case SQLITE_PROTOCOL:
    case SQLITE_NOTADB:
        return true;
    default:
        return false;
    }
}

unsigned int CQelSQLite::MapQelERR(int raw)
{
    const int primary = qel::Primary(raw);
    if (primary == SQLITE_OK || primary == SQLITE_ROW || primary == SQLITE_DONE)
        return qel::kSuccess;
    return qel::kSqlBase + static_cast<unsigned int>(primary);
}

int qel::RaiseIfHard(int raw, int line)
{
    if (CQelSQLite::IsHardFailure(raw))
        throw new CQelException(CQelSQLite::MapQelERR(raw), 0, L".\\qelsqlite", line, true);
    return raw;
}
