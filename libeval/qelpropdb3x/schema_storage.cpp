// schema_storage.cpp: the catalogue on its way to the two schema records and back.
#include "legacy_operation.h"
#include "record_address.h"

#include <qelprop4/qelpropdb3x.h>

using qel::CLegacyOperation;
using qel::kSuccess;

namespace {

constexpr unsigned int kDurable = 50; // on the disk when Set returns

unsigned int Fetch(const CDovBlobDB& store, const CDovBlobDB::SSelector& address, CQelMemFile& file)
{
    unsigned int size = 0;
    if (const unsigned int code = store.GetSize(address, size); code != kSuccess)
        return code;
    file.SetSize(size);
    return store.Get(address, file.GetBuffer(size));
}

unsigned int Put(CDovBlobDB& store, const CDovBlobDB::SSelector& address, CQelMemFile& file, CDovLogfile* log,
                 const wchar_t* text)
{
    const unsigned int size = static_cast<unsigned int>(file.GetFileSize());
    const unsigned int code = store.Set(address, file.GetBuffer(0), size, kDurable);
    const qel::SSite site = qel::LegacySite(__LINE__);
    if (code != kSuccess && log != nullptr)
        log->AddError(code, text, site.line, site.file);
    return code;
}

} // namespace

unsigned int CQelPropDB3X::StoreTables(const std::map<unsigned long, CQelTable3X>& tables)
{
    return SaveTables(tables, false);
}

// With `bothRecords`, a failure of the first record counts, too; without, the copy's result alone does.
unsigned int CQelPropDB3X::SaveTables(const TTables& tables, bool bothRecords)
{
    return qel::Perform(m_log, 3, L"+ Storing Tables", __LINE__, [&](CLegacyOperation&) {
        CQelMemFile file(false, 65536, 4096);
        qel::WriteSchema(file, tables);
        const unsigned int first = Put(m_store, qel::kSchemaRecord, file, m_log, L"Saving table schema");
        const unsigned int copy = Put(m_store, qel::kSchemaCopy, file, m_log, L"Saving copy of table schema");
        return bothRecords && first != kSuccess ? first : copy;
    });
}

unsigned int CQelPropDB3X::LoadTables(std::map<unsigned long, CQelTable3X>& tables)
{
    return qel::Perform(m_log, 3, L"+ Loading Tables", __LINE__, [&](CLegacyOperation&) {
        tables.clear();
        CQelMemFile file(false, 65536, 4096);
        if (const unsigned int code = ReadSchemaRecord(file); code != kSuccess)
            return code;
        return qel::ReadSchema(file, tables) ? kSuccess : qel::kChecksumMismatch;
    });
}

// Only a record that cannot be had sends us to the copy; one with wrong bytes does not.
unsigned int CQelPropDB3X::ReadSchemaRecord(CQelMemFile& file)
{
    const qel::SSite site = qel::LegacySite(__LINE__);
    if (m_log != nullptr)
        m_log->AddInformal(L"Loading table schema", 2, site.line, site.file);
    if (Fetch(m_store, qel::kSchemaRecord, file) == kSuccess)
        return kSuccess;
    if (m_log != nullptr)
        m_log->AddWarning(L"Loading backup table schema", 1, site.line, site.file);
    return Fetch(m_store, qel::kSchemaCopy, file);
}

// Writes a changed copy of the catalogue and takes over what the store then holds.
unsigned int CQelPropDB3X::StoreAndLoad(const TTables& tables)
{
    const unsigned int code = StoreTables(tables);
    return code == kSuccess ? LoadTables(m_tables) : code;
}
