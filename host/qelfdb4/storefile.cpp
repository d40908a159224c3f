// storefile.cpp: opening a store file, taking it over from a process that was killed, and closing it.
#include "storefile.h"
#include "store_format.h"

#include "engine_call.h"
#include "engine_file.h"

#include <sqlite3.h>

namespace qel {
namespace {

// Once a file is known to be a store, others that hold it and damage that unmakes it have their own codes.
unsigned int OpeningCode(unsigned int code)
{
    switch (code) {
    case kSqlBase + SQLITE_BUSY:
    case kSqlBase + SQLITE_LOCKED:
        return kFileInUse;
    case kSqlBase + SQLITE_NOTADB:
        return kNotAStore;
    default:
        return code;
    }
}

void ExpectMode(CQelSQLite& db, const wchar_t* pragma, const wchar_t* mode, int line)
{
    if (AskText(db, pragma) != mode)
        Fail(kCannotChange, line);
}

} // namespace

CStoreFile::~CStoreFile()
{
    Close();
}

unsigned int CStoreFile::Open(const std::wstring& path, bool readOnly)
{
    Close();
    const unsigned int code =
        RunOperation(nullptr, {kSourceQelFDB, __LINE__}, [&] { return OpenFile(path, readOnly); });
    if (code != kSuccess)
        m_db.Close();
    return OpeningCode(code);
}

unsigned int CStoreFile::OpenFile(const std::wstring& path, bool readOnly)
{
    m_place = CStorePlace(path);
    if (!m_place.Exists())
        return kFileMissing;
    if (!m_place.IsRegularFile())
        return kNotAStore;
    Check(m_db.Open(m_place.EnginePath(), readOnly), __LINE__);
    if (!CEngineFile(m_db.Handle()).Header().IsStore())
        return kNotAStore;
    if (m_db.IsReadOnly() && !readOnly)
        return kReadOnly;
    Harden();
    if (const unsigned int code = readOnly ? RefuseUnlessAtRest() : TakeOver(); code != kSuccess)
        return code;
    m_readOnly = readOnly;
    m_durable = true;
    m_name = path;
    return CheckContent();
}

// The file may come from anywhere: nothing in its schema may run, and a damaged page is to be noticed early.
// What is removed is overwritten with zeros, whatever the engine was built to do.
void CStoreFile::Harden()
{
    sqlite3* const handle = m_db.Handle();
    for (const auto& [option, value] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                        {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                        {SQLITE_DBCONFIG_ENABLE_VIEW, 0}})
        Check(sqlite3_db_config(handle, option, value, nullptr), __LINE__);
    Run(m_db, L"PRAGMA cell_size_check=ON; PRAGMA secure_delete=ON; PRAGMA locking_mode=EXCLUSIVE");
}

// A reader changes nothing on the disk, and so cannot recover what a killed process left.
unsigned int CStoreFile::RefuseUnlessAtRest()
{
    CEngineFile file(m_db.Handle());
    if (const unsigned int code = file.LockForReading(); code != kSuccess)
        return code;
    const bool atRest = file.Header().IsAtRest() && !m_place.HasSideFile();
    return atRest ? kSuccess : kSqlBase + SQLITE_READONLY;
}

// The engine applies any log that it finds beside the file. A file at rest has none of its own, so that one
// found there belongs to another state of it (a backup was moved into place without clearing up) and must go.
unsigned int CStoreFile::TakeOver()
{
    {
        CEngineFile file(m_db.Handle());
        if (const unsigned int code = file.LockForWriting(); code != kSuccess)
            return code;
        if (file.Header().IsAtRest() && !m_place.HasLiveJournal() && !m_place.DeleteWalFiles())
            return kSqlBase + SQLITE_IOERR;
    }
    Run(m_db, L"BEGIN EXCLUSIVE; COMMIT"); // recovers, and holds the lock until the file is closed
    m_wal = AskText(m_db, L"PRAGMA journal_mode") == L"wal";
    return m_wal || m_place.DeleteWalFiles() ? kSuccess : kSqlBase + SQLITE_IOERR; // empty ones are not used
}

// Reading the schema also makes a reader take its lock, which it then holds.
unsigned int CStoreFile::CheckContent()
{
    std::wstring schema;
    CQelSQLite::CStatement query(&m_db);
    query.Prepare(L"SELECT sql FROM sqlite_master ORDER BY rowid");
    while (Next(query))
        schema += query.GetString(0).Text() + L";";
    if (schema != std::wstring(kCreateRec) + L";" + kCreateSync + L";")
        return kSqlBase + SQLITE_CORRUPT;
    return AskInt(m_db, L"PRAGMA user_version") == kFormatVersion ? kSuccess : kNotAStore;
}

unsigned int CStoreFile::Close()
{
    if (!IsOpen())
        return kNotOpen;
    m_batch.reset();
    unsigned int code = kSuccess;
    if (!m_readOnly)
        code = RunOperation(nullptr, {kSourceQelFDB, __LINE__}, [this] { return Leave(); });
    const unsigned int closing = CQelSQLite::MapQelERR(m_db.Close());
    m_readOnly = false;
    m_wal = false;
    m_name.clear();
    return code == kSuccess ? closing : code;
}

// Takes the file back to rest. The engine keeps its rollback journal under an exclusive lock; only a change
// from one kind of journal to the other in normal locking deletes it.
unsigned int CStoreFile::Leave()
{
    SetSafety(true); // the change of form goes through the rollback journal
    ExpectMode(m_db, L"PRAGMA journal_mode=DELETE", L"delete", __LINE__);
    ExpectMode(m_db, L"PRAGMA locking_mode=NORMAL", L"normal", __LINE__);
    ExpectMode(m_db, L"PRAGMA journal_mode=TRUNCATE", L"truncate", __LINE__);
    ExpectMode(m_db, L"PRAGMA journal_mode=DELETE", L"delete", __LINE__);
    return m_place.HasSideFile() ? kSqlBase + SQLITE_IOERR : kSuccess;
}

} // namespace qel
