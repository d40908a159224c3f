// store_writing.cpp: changes of a store file, what they promise, and batches of them.
#include "engine_call.h"
#include "store_format.h"
#include "storefile.h"

#include <sqlite3.h>

namespace qel {

/// Runs a change as one atomic unit that keeps its promise when it returns.
template <class Work>
unsigned int CStoreFile::Change(bool durable, Work&& work)
{
    if (m_batch != nullptr)
        return ChangeInBatch(durable, work);
    PrepareChange(durable);
    return durable ? ChangeDurably(work) : work();
}

// A failure that made the engine undo the whole transaction must not let later changes of the batch through.
template <class Work>
unsigned int CStoreFile::ChangeInBatch(bool durable, Work&& work)
{
    if (BatchWasUndone())
        return kCannotChange;
    m_batchDurable = m_batchDurable || durable;
    return work();
}

template <class Work>
unsigned int CStoreFile::ChangeDurably(Work&& work)
{
    CSQLiteTransaction transaction(&m_db, false);
    if (!transaction.BeginTrans())
        return CodeOfRefusedBegin();
    unsigned int code = work();
    if (code == kSuccess)
        code = MoveCounter();
    if (code == kSuccess && !transaction.Commit())
        code = kCannotChange;
    return code;
}

unsigned int CStoreFile::Set(const CDovBlobDB::SSelector& record, const void* data, unsigned int size,
                             unsigned int priority)
{
    if (size > static_cast<unsigned int>(sqlite3_limit(m_db.Handle(), SQLITE_LIMIT_LENGTH, -1)))
        return kSqlBase + SQLITE_TOOBIG;
    if (data == nullptr && size > 0)
        return kSqlBase + SQLITE_MISUSE;
    return Change(priority >= kDurablePriority, [&] { return WriteRecord(KeyOf(record), data, size); });
}

unsigned int CStoreFile::WriteRecord(long long key, const void* data, unsigned int size)
{
    CQelSQLite::CStatement statement(&m_db);
    statement.Prepare(L"INSERT OR REPLACE INTO rec(id,crc,data) VALUES(?1,?2,?3)");
    statement.BindInt(1, key);
    statement.BindInt(2, RecordChecksum(key, data, size));
    statement.BindBytes(3, size > 0 ? data : "",
                        size); // a null pointer would be NULL and not a record of size 0
    return CQelSQLite::MapQelERR(statement.Execute());
}

unsigned int CStoreFile::Remove(const CDovBlobDB::SSelector& record)
{
    if (!HasRecord(record)) // told before the file is made ready for a change
        return kNotFound;
    return Change(false, [&] {
        CQelSQLite::CStatement statement(&m_db);
        statement.Prepare(L"DELETE FROM rec WHERE id=?1");
        statement.BindInt(1, KeyOf(record));
        return CQelSQLite::MapQelERR(statement.Execute());
    });
}

unsigned int CStoreFile::RemoveSelector(unsigned short selector)
{
    return Change(false, [&] {
        CQelSQLite::CStatement statement(&m_db);
        statement.Prepare(L"DELETE FROM rec WHERE id BETWEEN ?1 AND ?2");
        statement.BindInt(1, KeyOf(selector, 0));
        statement.BindInt(2, KeyOf(selector, 0xFFFFFFFF));
        return CQelSQLite::MapQelERR(statement.Execute());
    });
}

// Before the first change there is nothing that is not on the disk.
unsigned int CStoreFile::Flush()
{
    if (!m_wal)
        return kSuccess;
    return Change(true, [] { return kSuccess; });
}

unsigned int CStoreFile::BeginBatch()
{
    if (m_batch != nullptr)
        return kCannotChange;
    PrepareChange(false);
    auto batch = std::make_unique<CSQLiteTransaction>(&m_db, false);
    if (!batch->BeginTrans())
        return CodeOfRefusedBegin();
    m_batch = std::move(batch);
    m_batchDurable = false;
    return kSuccess;
}

// Never the code for an open batch, which callers take for leave to go on inside it.
unsigned int CStoreFile::CodeOfRefusedBegin() const
{
    const unsigned int code = CQelSQLite::MapQelERR(sqlite3_errcode(m_db.Handle()));
    return code != kSuccess ? code : kUnknownException;
}

// However it ends, the batch is over. The safety level cannot change inside a transaction, so that what was
// promised is kept right after it.
unsigned int CStoreFile::CommitBatch()
{
    const std::unique_ptr<CSQLiteTransaction> batch = std::move(m_batch);
    if (batch == nullptr || BatchWasUndone() || !batch->Commit())
        return kCannotChange;
    return m_batchDurable ? Flush() : kSuccess;
}

unsigned int CStoreFile::RollbackBatch()
{
    if (m_batch == nullptr)
        return kCannotChange;
    m_batch.reset();
    return kSuccess;
}

bool CStoreFile::BatchWasUndone() const
{
    return sqlite3_get_autocommit(m_db.Handle()) != 0;
}

void CStoreFile::PrepareChange(bool durable)
{
    EnterWal();
    SetSafety(durable);
}

// Left again when the store is closed: a file in write-ahead form cannot be read without its side file, nor
// from a folder where none can be made.
void CStoreFile::EnterWal()
{
    if (m_wal)
        return;
    if (AskText(m_db, L"PRAGMA journal_mode=WAL") != L"wal")
        Fail(kSqlBase + SQLITE_IOERR, __LINE__);
    m_wal = true;
}

// FULL syncs the write-ahead log with every commit, NORMAL only before it is copied into the file.
void CStoreFile::SetSafety(bool durable)
{
    if (m_durable == durable)
        return;
    Run(m_db, durable ? L"PRAGMA synchronous=FULL" : L"PRAGMA synchronous=NORMAL");
    m_durable = durable;
}

// A missing row is made anew and a strange value brought back into range: the row always changes.
unsigned int CStoreFile::MoveCounter()
{
    CQelSQLite::CStatement statement(&m_db);
    statement.Prepare(L"INSERT OR REPLACE INTO sync(id,count) "
                      L"VALUES(1,(SELECT (IFNULL(MAX(count),0)+1)&2147483647 FROM sync WHERE id=1))");
    return CQelSQLite::MapQelERR(statement.Execute());
}

} // namespace qel
