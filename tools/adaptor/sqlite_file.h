// sqlite_file.h: a property database inside an SQLite database.
#pragma once

#include "patience.h"
#include "property_file.h"

namespace tool {

class CSQLiteFile : public CPropertyFile
{
public:
    static std::unique_ptr<CPropertyFile> Open(const std::wstring& path, const SOptions& options);
    static std::unique_ptr<CPropertyFile> Create(const std::wstring& path, bool lookupIndexes, bool force,
                                                 const SOptions& options);
    ~CSQLiteFile() override;

    EKind Kind() const override { return EKind::eSQLite; }
    const std::wstring& Path() const override { return m_path; }
    bool IsReadOnly() const override { return m_sqlite.IsReadOnly(); }

    bool HasOtherTables() override;
    std::vector<CQelTable> Tables() override;
    void AddTable(CQelTable& table) override;
    void RenameTable(unsigned long tableOid, const std::wstring& name) override;
    void RemoveTable(unsigned long tableOid) override;
    unsigned long AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name) override;
    void RemoveColumn(unsigned long tableOid, unsigned long columnOid) override;
    void MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position) override;

    unsigned long AddRecord(unsigned long tableOid, const CRecord& record, unsigned long givenOid) override;
    void SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record) override;
    void RemoveRecord(unsigned long tableOid, unsigned long recordOid) override;
    bool HasRecord(unsigned long tableOid, unsigned long recordOid) override;
    bool GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record) override;
    unsigned int CountRecords(unsigned long tableOid) override;
    std::vector<unsigned long> RecordOids(unsigned long tableOid) override;

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
    /// Begins the transaction of the next change, if none is begun.
    void Begin();
    void Require(unsigned int code, const std::string& doing) const;
    void RunText(const wchar_t* sql, const std::string& doing);
    const CQelTable& Table(unsigned long tableOid);
    unsigned long FirstFreeOid(unsigned long tableOid);
    void CompleteRecord(unsigned long tableOid, const CRecord& record, CRecord& complete);

    std::wstring m_path;
    SOptions m_options;
    CPatience m_patience; // ends after the connection
    CQelSQLite m_sqlite;
    CQelPropDB m_database;
    bool m_begun = false;
    CQelTable m_table; // the table used last, columns in display order; oid 0 for none
};

} // namespace tool
