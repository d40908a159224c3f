// table_operations.cpp: listing, reading, adding, renaming and removing tables.
#include "legacy_operation.h"
#include "record_address.h"
#include "reference_search.h"
#include "store_batch.h"

#include "../common/object_id.h"

#include <qelprop4/qelpropdb3x.h>

#include <algorithm>

using qel::CLegacyOperation;
using qel::kSuccess;

namespace {

constexpr unsigned long kFirstTableOid = 1000;

const CQelTable3X* FindByName(const qel::TLegacyTables& tables, const std::wstring& name)
{
    for (const auto& entry : tables) {
        if (entry.second.Properties().name == name)
            return &entry.second;
    }
    return nullptr;
}

unsigned long FirstFreeTableOid(const qel::TLegacyTables& tables)
{
    unsigned long oid = kFirstTableOid;
    while (tables.count(oid) != 0)
        ++oid;
    return oid;
}

} // namespace

bool CQelPropDB3X::TableExists(const std::wstring& name) const
{
    return FindByName(m_tables, name) != nullptr;
}

const CQelTable3X* CQelPropDB3X::FindTable(unsigned long tableOid) const
{
    const auto found = m_tables.find(tableOid);
    return found == m_tables.end() ? nullptr : &found->second;
}

unsigned int CQelPropDB3X::FindOpenTable(CLegacyOperation& operation, unsigned long tableOid,
                                         const CQelTable3X*& table) const
{
    if (const unsigned int refusal = qel::RefuseUnlessOpen(operation, m_store); refusal != kSuccess)
        return refusal;
    table = FindTable(tableOid);
    return table != nullptr ? kSuccess : operation.Refuse(qel::kNotFound);
}

unsigned int CQelPropDB3X::FindWritableTable(CLegacyOperation& operation, unsigned long tableOid,
                                             const CQelTable3X*& table) const
{
    if (const unsigned int refusal = qel::RefuseUnlessWritable(operation, m_store); refusal != kSuccess)
        return refusal;
    table = FindTable(tableOid);
    return table != nullptr ? kSuccess : operation.Refuse(qel::kNotFound);
}

unsigned int CQelPropDB3X::GetTables(std::vector<unsigned long>& oids)
{
    return qel::Perform(m_log, 3, L"+ Getting tables", __LINE__, [&](CLegacyOperation& operation) {
        if (const unsigned int refusal = qel::RefuseUnlessOpen(operation, m_store); refusal != kSuccess)
            return refusal;
        oids.clear();
        for (const auto& entry : m_tables)
            oids.push_back(entry.first);
        return kSuccess;
    });
}

unsigned int CQelPropDB3X::GetTable(CQelTable3X& table)
{
    return qel::LookUp(m_log, __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* found = nullptr;
        const unsigned int code = FindOpenTable(operation, table.Properties().oid, found);
        if (code == kSuccess)
            table = *found;
        return code;
    });
}

unsigned int CQelPropDB3X::AddTable(CQelTable3X& table)
{
    return qel::Perform(m_log, 3, L"+ Adding table", __LINE__, [&](CLegacyOperation& operation) {
        if (const unsigned int refusal = qel::RefuseUnlessWritable(operation, m_store); refusal != kSuccess)
            return refusal;
        if (!IsValidName(table.Properties().name))
            return operation.Refuse(qel::kInvalidName);
        if (FindByName(m_tables, table.Properties().name) != nullptr)
            return operation.Refuse(qel::kNameInUse);
        if (m_tables.size() >= MaxTables())
            return operation.Refuse(qel::kTooManyTables);
        TTables tables = m_tables;
        const unsigned long oid = FirstFreeTableOid(tables);
        CQelTable3X& added = tables[oid];
        added = table;
        added.Properties().oid = oid;
        const unsigned int code = StoreAndLoad(tables);
        if (code == kSuccess) {
            table.Properties().oid = oid;
            DoNotify(ePropDBTableAdded, oid, 0);
        }
        return code;
    });
}

unsigned int CQelPropDB3X::RemoveTable(unsigned long tableOid)
{
    return qel::Perform(m_log, 3, L"+ Removing table", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        if (qel::IsReferenced(m_tables, tableOid))
            return operation.Refuse(qel::kStillReferenced);
        TTables tables = m_tables;
        tables.erase(tableOid);
        qel::CStoreBatch batch(m_store);
        if (batch.BeginCode() != kSuccess)
            return batch.BeginCode();
        if (const unsigned int code = RemoveRecordsOf(tableOid); code != kSuccess)
            return code;
        if (const unsigned int code = StoreTables(tables); code != kSuccess)
            return code;
        const unsigned int committed = batch.Commit();
        m_recordIds.erase(tableOid);
        // After a failed commit, too: whether it failed before or after the change, the store knows.
        const unsigned int loaded = LoadTables(m_tables);
        const unsigned int code = committed != kSuccess ? committed : loaded;
        if (code == kSuccess)
            DoNotify(ePropDBTableRemoved, tableOid, 0);
        return code;
    });
}

// Records that another table has under the same selector, and the schema's own, stay.
unsigned int CQelPropDB3X::RemoveRecordsOf(unsigned long tableOid)
{
    if (qel::SharesSelector(m_tables, tableOid)) {
        const qel::SSite site = qel::LegacySite(__LINE__);
        if (m_log != nullptr)
            m_log->AddWarning(L"Another table has the same records, they are kept", 1, site.line, site.file);
        return kSuccess;
    }
    const unsigned short selector = qel::SelectorOf(tableOid);
    if (!qel::IsSchemaSelector(selector))
        return m_store.RemoveSelector(selector);
    std::vector<unsigned long> oids;
    unsigned int code = qel::ListRecords(m_store, tableOid, oids);
    for (std::size_t i = 0; code == kSuccess && i < oids.size(); ++i)
        code = m_store.Remove({selector, oids[i]});
    return code;
}

unsigned int CQelPropDB3X::RenameTable(unsigned long tableOid, const std::wstring& name)
{
    return qel::Perform(m_log, 3, L"+ Renaming Table", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        if (table->Properties().name == name)
            return kSuccess;
        if (FindByName(m_tables, name) != nullptr)
            return operation.Refuse(qel::kNameInUse);
        if (!IsValidName(name))
            return operation.Refuse(qel::kInvalidName);
        TTables tables = m_tables;
        tables[tableOid].Properties().name = name;
        return ChangeTables(tables, tableOid, ePropDBTableChanged);
    });
}

// Stores a changed copy of the catalogue and tells the host.
unsigned int CQelPropDB3X::ChangeTables(const TTables& tables, unsigned long tableOid, EPropDBMessage message)
{
    const unsigned int code = StoreAndLoad(tables);
    if (code == kSuccess)
        DoNotify(message, tableOid, 0);
    return code;
}
