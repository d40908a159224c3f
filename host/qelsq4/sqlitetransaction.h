// sqlitetransaction.h: the guard around a change.
#pragma once

#include <qelsq4/export.h>

class CQelSQLite;

namespace qel {
class CConnection;
}

/// A transaction that is undone unless it is committed. Not copied.
///
/// Inside a transaction that is already open on the connection it is a savepoint: committing releases it and
/// rolling back undoes to it, and the outer transaction goes on. BeginTrans and Rollback never throw.
///
/// A guard ends with its transaction: when the engine undoes everything by itself (a full disk), when the
/// connection is closed (which rolls back), and when a guard around it is ended first. What happens on the
/// connection afterwards is none of its concern.
class QELSQ4_API CSQLiteTransaction
{
public:
    /// Begins nothing yet.
    /// @param db         must outlive the guard; null never begins
    /// @param exclusive  false: an immediate transaction; true: an exclusive one
    CSQLiteTransaction(CQelSQLite* db, bool exclusive);
    CSQLiteTransaction(const CSQLiteTransaction&) = delete;
    CSQLiteTransaction& operator=(const CSQLiteTransaction&) = delete;
    /// Rolls back what was begun and neither committed nor rolled back.
    ~CSQLiteTransaction();

    /// Begins the transaction.
    /// @return false when none could be begun, or this guard has begun one already
    bool BeginTrans();
    /// Makes the changes permanent and ends the transaction.
    ///
    /// Hard failures are thrown as CQelException with the mapped code; the guard then still rolls back.
    /// @return false when nothing was begun or the engine refused; the change can then still be rolled back
    bool Commit();
    /// Undoes the changes and ends the transaction.
    /// @return false when nothing was begun or it had ended
    bool Rollback();

private:
    friend class qel::CConnection;

    bool BecomeInnermost();
    void End();

    enum class EState
    {
        eIdle,
        eBegun,
        eEnded
    };

    CQelSQLite* m_db;
    EState m_state = EState::eIdle;
    bool m_exclusive;
    bool m_savepoint = false;
    qel::CConnection* m_connection = nullptr; // while begun
    CSQLiteTransaction* m_outer = nullptr;    // the guard around this one
};
