// sqlitetransaction.cpp: the guard around a change, a transaction or a savepoint.
#include <qelsq4/sqlitetransaction.h>

#include "connection.h"
#include "raw_result.h"

#include <sqlite3.h>

namespace {

// One name serves every level: the engine takes it for the innermost savepoint, and inner guards end first.
constexpr const wchar_t* kSavepoint = L"SAVEPOINT qel_guard";
constexpr const wchar_t* kRelease = L"RELEASE qel_guard";
constexpr const wchar_t* kRollbackTo = L"ROLLBACK TO qel_guard";
constexpr const wchar_t* kBeginImmediate = L"BEGIN IMMEDIATE";
constexpr const wchar_t* kBeginExclusive = L"BEGIN EXCLUSIVE";
constexpr const wchar_t* kCommit = L"COMMIT";
constexpr const wchar_t* kRollback = L"ROLLBACK";

} // namespace

CSQLiteTransaction::CSQLiteTransaction(CQelSQLite* db, bool exclusive) : m_db(db), m_exclusive(exclusive)
{}

CSQLiteTransaction::~CSQLiteTransaction()
{
    Rollback();
}

bool CSQLiteTransaction::BeginTrans()
{
    if (m_db == nullptr || m_state != EState::eIdle || !m_db->IsOpen())
        return false;
    qel::CConnection& connection = *m_db->m_connection;
    m_savepoint = connection.InTransaction();
    if (!m_savepoint) {
        while (connection.m_guards != nullptr) // their transaction has gone without them
            connection.m_guards->End();
    }
    const wchar_t* const begin = m_exclusive ? kBeginExclusive : kBeginImmediate;
    if (connection.KeepReady(m_savepoint ? kRollbackTo : kRollback) != SQLITE_OK ||
        connection.Run(m_savepoint ? kSavepoint : begin) != SQLITE_OK)
        return false;
    m_state = EState::eBegun;
    m_connection = &connection;
    m_outer = connection.m_guards;
    connection.m_guards = this;
    return true;
}

bool CSQLiteTransaction::Commit()
{
    if (!BecomeInnermost())
        return false;
    const int raw = m_connection->Run(m_savepoint ? kRelease : kCommit);
    if (raw != SQLITE_OK) {
        qel::RaiseIfHard(raw, __LINE__);
        return false;
    }
    End();
    return true;
}

bool CSQLiteTransaction::Rollback()
{
    if (!BecomeInnermost())
        return false;
    qel::CConnection& connection = *m_connection;
    End(); // first: no path may run the text twice
    if (!m_savepoint)
        return connection.Run(kRollback) == SQLITE_OK;
    return connection.Run(kRollbackTo) == SQLITE_OK && connection.Run(kRelease) == SQLITE_OK;
}

// Ends the guards that were begun inside this one, whose changes are now this one's to keep or undo.
// Gives false, with this guard ended, when the engine has no transaction any more.
bool CSQLiteTransaction::BecomeInnermost()
{
    if (m_state == EState::eBegun && !m_connection->InTransaction())
        End();
    while (m_state == EState::eBegun && m_connection->m_guards != this) {
        qel::CConnection& connection = *m_connection;
        const bool release = m_savepoint && connection.m_guards->m_savepoint;
        connection.m_guards->End();
        if (release)
            connection.Run(kRelease);
    }
    return m_state == EState::eBegun;
}

void CSQLiteTransaction::End()
{
    m_state = EState::eEnded;
    CSQLiteTransaction** link = &m_connection->m_guards;
    while (*link != this)
        link = &(*link)->m_outer;
    *link = m_outer;
    m_connection = nullptr;
}
