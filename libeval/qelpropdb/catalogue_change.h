// catalogue_change.h: the one way in which the catalogue changes.
#pragma once

#include "frame.h"

namespace qel {
/// Gives a table or a column another name.
/// @param sql  the statement, with ?1 the oid and ?2 the name
unsigned int Rename(CQelSQLite* db, const wchar_t* sql, unsigned long oid, const std::wstring& name);
} // namespace qel

/// Runs statements in one transaction, all or nothing, and reads the catalogue back once it is committed.
/// @param statements  gives the result code of the first one that failed, or success
/// @param loads       how often the catalogue is read back
/// @return 17201 when no transaction could be begun
template <class Statements>
unsigned int CQelPropDB::ChangeCatalogue(const Statements& statements, int loads)
{
    CSQLiteTransaction transaction(m_db, false);
    if (!transaction.BeginTrans())
        return qel::kCannotChange;
    const unsigned int code = statements();
    return code == qel::kSuccess ? CommitAndReload(transaction, loads) : code;
}
