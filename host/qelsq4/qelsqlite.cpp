// qelsqlite.cpp: a connection to an SQLite database.
#include <qelsq4/qelsqlite.h>

#include "connection.h"

#include <sqlite3.h>

CQelSQLite::CQelSQLite() : m_connection(std::make_unique<qel::CConnection>())
{}

CQelSQLite::~CQelSQLite() = default;

int CQelSQLite::Open(const std::wstring& path, bool readOnly)
{
    return m_connection->Open(path, readOnly);
}

void CQelSQLite::Use(sqlite3* handle)
{
    m_connection->Use(handle);
}

int CQelSQLite::Close()
{
    return m_connection->Close();
}

bool CQelSQLite::IsOpen() const
{
    return m_connection->Handle() != nullptr;
}

bool CQelSQLite::IsReadOnly() const
{
    return m_connection->IsReadOnly();
}

sqlite3* CQelSQLite::Handle() const
{
    return m_connection->Handle();
}

long long CQelSQLite::GetLastInsertedRowID()
{
    return IsOpen() ? sqlite3_last_insert_rowid(Handle()) : 0;
}

void CQelSQLite::SetLogfile(CDovLogfile* log)
{
    m_connection->SetLogfile(log);
}

CDovLogfile* CQelSQLite::Logfile()
{
    return m_connection->Logfile();
}

void CQelSQLite::SetBusyTimeout(int milliseconds)
{
    m_connection->SetBusyTimeout(milliseconds);
}

int CQelSQLite::ExecSQL(const wchar_t* sql)
{
    return m_connection->RunBatch(sql);
}

int CQelSQLite::ExecStatement(CStatement* statement)
{
    if (statement == nullptr)
        return SQLITE_MISUSE;
    int raw = SQLITE_ROW;
    while (raw == SQLITE_ROW)
        raw = statement->StepRaw();
    return raw == SQLITE_DONE ? SQLITE_OK : raw;
}
