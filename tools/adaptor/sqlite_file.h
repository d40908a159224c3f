// sqlite_file.h: a property database inside an SQLite database.
#pragma once

#include "database_file.h"
#include "patience.h"

namespace tool {

/// The engine's connection; a base, since it ends after the database that works on it.
class CEngineConnection
{
protected:
    explicit CEngineConnection(int busyTimeout) : m_patience(busyTimeout) {}

    CPatience m_patience; // ends after the connection
    CQelSQLite m_sqlite;
};

class CSQLiteFile : private CEngineConnection, public CDatabaseFile<CQelPropDB, CQelTable>
{
public:
    static std::unique_ptr<CPropertyFile> Open(const std::wstring& path, const SOptions& options);
    static std::unique_ptr<CPropertyFile> Create(const std::wstring& path, bool lookupIndexes, bool force,
                                                 const SOptions& options);
    ~CSQLiteFile() override;

    EKind Kind() const override { return EKind::eSQLite; }
    bool IsReadOnly() const override { return m_sqlite.IsReadOnly(); }

    bool HasOtherTables() override;
    std::vector<CQelTable> Tables() override { return StoredTables(); }
    void AddTable(CQelTable& table) override;
    unsigned long AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void RemoveColumn(unsigned long tableOid, unsigned long columnOid) override;
    void MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position) override;

    unsigned long AddRecord(unsigned long tableOid, const CRecord& record, unsigned long givenOid) override;
    void SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record) override;
    void RemoveRecord(unsigned long tableOid, unsigned long recordOid) override;
    bool GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record) override;

    void Commit() override;
    void Rollback() noexcept override;

    CQelPropDB* SQLiteDatabase() override { return &m_database; }
    CQelSQLite* Connection() override { return &m_sqlite; }
    CQelPropDB3X* LegacyDatabase() override { return nullptr; }

private:
    CSQLiteFile(const std::wstring& path, const SOptions& options);

    void OpenConnection(bool readOnly);
    bool HasRow(const wchar_t* sql);
    bool HasPropertyTables();
    /// Begins a transaction that reads, so that all that is read is of one moment.
    void BeginReading();
    SFailure NoPropertyTables() const;
    void Begin() override;
    void RunText(const wchar_t* sql, const std::string& doing);
    unsigned long FirstFreeOid(unsigned long tableOid);
    void CompleteRecord(unsigned long tableOid, const CRecord& record, CRecord& complete);
};

} // namespace tool
