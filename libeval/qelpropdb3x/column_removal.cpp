// column_removal.cpp: the removal of a column, with every record of its table rewritten.
#include "column_removal.h"

#include "legacy_operation.h"
#include "record_address.h"
#include "reference_search.h"
#include "store_batch.h"

#include <algorithm>

namespace qel {
namespace {

using SColumn = CQelTable3X::SQelColumn;

// Ends the removal with a code.
void Require(unsigned int code, int line)
{
    if (code != kSuccess)
        throw new CQelException(code, 0, kSourceQelPropDB3X, line, true);
}

} // namespace

CColumnRemoval::CColumnRemoval(CQelPropDB3X& db, unsigned long tableOid, unsigned long columnOid)
    : m_db(db), m_tableOid(tableOid), m_columnOid(columnOid), m_copy(db.m_store.GetName())
{}

unsigned int CColumnRemoval::Run(CLegacyOperation& operation)
{
    if (const unsigned int refusal = RefuseUnlessWritable(operation, m_db.m_store); refusal != kSuccess)
        return refusal;
    if (const unsigned int refusal = RefuseInsideBatch(operation); refusal != kSuccess)
        return refusal;
    if (const unsigned int code = MakeCopy(operation); code != kSuccess)
        return code;
    m_tables = m_db.m_tables;
    if (const unsigned int refusal = Examine(operation); refusal != kSuccess)
        return refusal;
    m_changing = true;
    Change(operation);
    return kSuccess;
}

// Closing the store would throw away what the host has in an open batch.
unsigned int CColumnRemoval::RefuseInsideBatch(CLegacyOperation& operation)
{
    if (const unsigned int code = m_db.m_store.BeginBatch(); code != kSuccess)
        return operation.Fail(code);
    return m_db.m_store.RollbackBatch();
}

unsigned int CColumnRemoval::MakeCopy(CLegacyOperation& operation)
{
    m_copy.Delete();
    // A store that does not close cleanly has side files, and its file alone is no copy of it.
    const bool closed = m_db.m_store.Close() == kSuccess;
    m_copyMade = closed && m_copy.Make();
    if (!m_copyMade && m_db.m_log != nullptr)
        m_db.m_log->AddError(L"Failed to create backup copy of database!", __LINE__, kSourceQelPropDB3X);
    Reopen();
    return m_copyMade ? kSuccess : operation.Fail(kNoBackupCopy);
}

void CColumnRemoval::Reopen()
{
    if (const unsigned int code = m_db.m_store.Open(m_copy.StorePath(), false); code != kSuccess)
        LogFault(m_db.m_log, code, LegacySite(__LINE__));
    if (const unsigned int code = m_db.LoadTables(m_db.m_tables); code != kSuccess)
        LogFault(m_db.m_log, code, LegacySite(__LINE__));
}

// Takes the column out of the copy of the catalogue, unless there is a reason not to.
unsigned int CColumnRemoval::Examine(CLegacyOperation& operation)
{
    const auto table = m_tables.find(m_tableOid);
    if (table == m_tables.end())
        return operation.Refuse(kNotFound);
    auto& columns = table->second.Properties().columns;
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [&](const SColumn& each) { return each.oid == m_columnOid; });
    if (column == columns.end())
        return operation.Refuse(kNotFound);
    if (IsReferenced(m_tables, m_tableOid, m_columnOid))
        return operation.Refuse(kStillReferenced);
    if (SharesRecords())
        return operation.Fail(kCannotChange);
    m_removedSlot = column->dataIndex;
    columns.erase(column);
    return kSuccess;
}

// Records that another table has under the same selector do not follow this table's slots alone.
bool CColumnRemoval::SharesRecords() const
{
    unsigned int records = 0;
    return SharesSelector(m_tables, m_tableOid) &&
           (m_db.GetRecordCount(m_tableOid, records) != kSuccess || records != 0);
}

void CColumnRemoval::Change(CLegacyOperation& operation)
{
    Require(m_db.GetRecordOids(m_tableOid, m_records, nullptr), __LINE__);
    CStoreBatch batch(m_db.m_store);
    Require(batch.BeginCode(), __LINE__);
    operation.Note(m_records.empty() ? L"Table is empty" : L"Updating existing table");
    RewriteRecords();
    ShiftDataIndexes();
    StoreCatalogue();
    if (Table().Columns().empty())
        RemoveEmptyRecords();
    Require(batch.Commit(), __LINE__);
    TellOfRemovedRecords();
}

void CColumnRemoval::RewriteRecords()
{
    std::vector<SQelPropColumnData> values;
    TSlots slots(Table().Columns().size());
    TavBlob bytes;
    for (const unsigned long oid : m_records) {
        Require(m_db.GetRecord(m_tableOid, oid, values), __LINE__);
        ArrangeSlots(values, slots);
        WriteSlots(bytes, slots);
        const CDovBlobDB::SSelector address = {SelectorOf(m_tableOid), oid};
        Require(m_db.m_store.Set(address, bytes.GetData(), bytes.GetSize(), 0), __LINE__);
    }
}

// The columns of the copy still have their old slots. One whose slot lies outside the record has no value.
void CColumnRemoval::ArrangeSlots(const std::vector<SQelPropColumnData>& values, TSlots& slots) const
{
    std::fill(slots.begin(), slots.end(), nullptr);
    for (const SColumn& column : m_tables.at(m_tableOid).Columns()) {
        const std::size_t oldSlot = static_cast<std::size_t>(column.dataIndex);
        const std::size_t newSlot = column.dataIndex > m_removedSlot ? oldSlot - 1 : oldSlot;
        if (oldSlot < values.size() && newSlot < slots.size())
            slots[newSlot] = &values[oldSlot].value;
    }
}

void CColumnRemoval::ShiftDataIndexes()
{
    for (SColumn& column : Table().Properties().columns) {
        if (column.dataIndex > m_removedSlot)
            --column.dataIndex;
    }
}

// The records are rewritten, so that a first schema record of the old shape would not do.
void CColumnRemoval::StoreCatalogue()
{
    Require(m_db.SaveTables(m_tables, true), __LINE__);
    Require(m_db.LoadTables(m_db.m_tables), __LINE__);
}

void CColumnRemoval::RemoveEmptyRecords()
{
    for (const unsigned long oid : m_records) {
        Require(m_db.TakeRecord(m_tableOid, oid), __LINE__);
        ++m_recordsGone;
    }
}

// Messages follow the commit: until then the records can come back.
void CColumnRemoval::TellOfRemovedRecords()
{
    for (std::size_t i = 0; i < m_recordsGone; ++i)
        m_db.DoNotify(ePropDBRecordRemoved, m_tableOid, m_records[i]);
}

unsigned int CColumnRemoval::Finish(unsigned int code)
{
    if (code != kSuccess && m_changing) {
        Restore();
        return code;
    }
    if (code == kSuccess)
        m_db.DoNotify(ePropDBTableChanged, m_tableOid, 0);
    if (m_copyMade)
        m_copy.Delete();
    return code;
}

void CColumnRemoval::Restore()
{
    if (m_db.m_log != nullptr)
        m_db.m_log->AddError(L"Restoring backup copy of database", __LINE__, kSourceQelPropDB3X);
    m_db.m_store.Close();
    m_copy.PutBack();
    m_db.m_recordIds.clear();
    m_db.m_tables.clear();
    Reopen();
}

} // namespace qel

unsigned int CQelPropDB3X::TableRemoveColumn(unsigned long tableOid, unsigned long columnOid)
{
    return qel::RunOperation(m_log, qel::LegacySite(__LINE__), [&] {
        qel::CColumnRemoval removal(*this, tableOid, columnOid);
        const unsigned int code =
            qel::Perform(m_log, 3, L"+ Removing Column", __LINE__,
                         [&](qel::CLegacyOperation& operation) { return removal.Run(operation); });
        return removal.Finish(code);
    });
}
