// engine_file.cpp: raw reads and locks on the file of a connection.
#include "engine_file.h"

#include <qelsq4/qelsqlite.h>

#include <sqlite3.h>

namespace qel {

CEngineFile::CEngineFile(sqlite3* connection)
{
    if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &m_file) != SQLITE_OK ||
        (m_file != nullptr && m_file->pMethods == nullptr))
        m_file = nullptr;
}

CEngineFile::~CEngineFile()
{
    if (m_file != nullptr)
        m_file->pMethods->xUnlock(m_file, SQLITE_LOCK_NONE);
}

CStoreHeader CEngineFile::Header() const
{
    CStoreHeader header;
    if (m_file == nullptr ||
        m_file->pMethods->xRead(m_file, header.Bytes(), CStoreHeader::kSize, 0) != SQLITE_OK)
        return CStoreHeader();
    return header;
}

unsigned int CEngineFile::LockForReading()
{
    return Lock(SQLITE_LOCK_SHARED);
}

unsigned int CEngineFile::LockForWriting()
{
    const unsigned int code = Lock(SQLITE_LOCK_SHARED);
    return code == kSuccess ? Lock(SQLITE_LOCK_EXCLUSIVE) : code;
}

unsigned int CEngineFile::Lock(int level)
{
    if (m_file == nullptr)
        return kSqlBase + SQLITE_CANTOPEN;
    const int raw = m_file->pMethods->xLock(m_file, level) & 0xFF;
    return raw == SQLITE_BUSY ? kFileInUse : CQelSQLite::MapQelERR(raw);
}

} // namespace qel
