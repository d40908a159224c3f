// raw_result.cpp: SQLite's result codes: which are raised, and as which code of the family.
#include "raw_result.h"

#include <qelsq4/qelsqlite.h>

#include <sqlite3.h>

namespace qel {

bool IsHardFailure(int raw)
{
    switch (Primary(raw)) {
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

int RaiseIfHard(int raw, int line)
{
    if (IsHardFailure(raw))
        throw new CQelException(CQelSQLite::MapQelERR(raw), 0, L".\\qelsqlite", line, true);
    return raw;
}

} // namespace qel

unsigned int CQelSQLite::MapQelERR(int raw)
{
    const int primary = qel::Primary(raw);
    if (primary == SQLITE_OK || primary == SQLITE_ROW || primary == SQLITE_DONE)
        return qel::kSuccess;
    return qel::kSqlBase + static_cast<unsigned int>(primary);
}
