// legacy_file.h: a property database in a record store of the earlier format.
#pragma once

#include "database_file.h"

namespace tool {

class CLegacyFile : public CDatabaseFile<CQelPropDB3X, CQelTable3X>
{
public:
    static std::unique_ptr<CPropertyFile> Open(const std::wstring& path, const SOptions& options);
    /// Replaces a store that exists; anything else under the path is refused.
    static std::unique_ptr<CPropertyFile> Create(const std::wstring& path, const SOptions& options);
    ~CLegacyFile() override;

    EKind Kind() const override { return EKind::eLegacy; }
    bool IsReadOnly() const override { return m_database.BlobDB().IsReadOnly(); }

    bool HasOtherTables() override { return false; }
    std::vector<CQelTable> Tables() override;
    void AddTable(CQelTable& table) override;
    unsigned long AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    void ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) override;
    /// Stands on its own: what was changed before is committed first, and it cannot be rolled back.
    void RemoveColumn(unsigned long tableOid, unsigned long columnOid) override;
    void MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position) override;

    unsigned long AddRecord(unsigned long tableOid, const CRecord& record, unsigned long givenOid) override;
    void SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record) override;
    void RemoveRecord(unsigned long tableOid, unsigned long recordOid) override;
    bool GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record) override;

    void Commit() override;
    void Rollback() noexcept override;

    CQelPropDB* SQLiteDatabase() override { return nullptr; }
    CQelSQLite* Connection() override { return nullptr; }
    CQelPropDB3X* LegacyDatabase() override { return &m_database; }

private:
    CLegacyFile(const std::wstring& path, const SOptions& options);

    unsigned int TryOpen(bool readOnly);

    void Begin() override;
    CQelTable3X::SQelColumn StoredColumn(unsigned long tableOid, unsigned long columnOid);
    CRecord BySlot(unsigned long tableOid, const CRecord& record);
};

} // namespace tool
