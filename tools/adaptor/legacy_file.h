// legacy_file.h: a property database in a record store of the earlier format.
#pragma once

#include "property_file.h"

namespace tool {

class CLegacyFile : public CPropertyFile
{
public:
    static std::unique_ptr<CPropertyFile> Open(const std::wstring& path, const SOptions& options);
    /// Replaces a store that exists; anything else under the path is refused.
    static std::unique_ptr<CPropertyFile> Create(const std::wstring& path, const SOptions& options);
    ~CLegacyFile() override;

    EKind Kind() const override { return EKind::eLegacy; }
    const std::wstring& Path() const override { return m_path; }
    bool IsReadOnly() const override { return m_database.BlobDB().IsReadOnly(); }

    bool HasOtherTables() override { return false; }
    std::vector<CQelTable> Tables() override;
    void AddTable(CQelTable& table) override;
    void RenameTable(unsigned long tableOid, const std::wstring& name) override;
    void RemoveTable(unsigned long tableOid) override;
    unsigned long AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name) override;
    /// Stands on its own: what was changed before is committed first, and it cannot be rolled back.
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

    CQelPropDB* SQLiteDatabase() override { return nullptr; }
    CQelSQLite* Connection() override { return nullptr; }
    CQelPropDB3X* LegacyDatabase() override { return &m_database; }

private:
    CLegacyFile(const std::wstring& path, const SOptions& options);

    unsigned int TryOpen(bool readOnly);

    /// Begins the batch of the next change, if none is begun.
    void Begin();
    void Require(unsigned int code, const std::string& doing) const;
    const CQelTable3X& Table(unsigned long tableOid);
    CQelTable3X::SQelColumn StoredColumn(unsigned long tableOid, unsigned long columnOid);
    CRecord BySlot(unsigned long tableOid, const CRecord& record);

    std::wstring m_path;
    SOptions m_options;
    CQelPropDB3X m_database;
    bool m_begun = false;
    CQelTable3X m_table; // the table used last; oid 0 for none
};

} // namespace tool
