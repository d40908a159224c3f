// legacy_file.cpp: commands' view of CQelPropDB3X; turns slots into values that name their column.
#include "legacy_file.h"

#include "patience.h"

#include <algorithm>

namespace tool {
namespace {

constexpr unsigned int kUnfinished = 17308; // of a reader: the store wants to be opened for writing once

/// Why a store does not open, which the database above it does not tell.
unsigned int StoreCode(const std::wstring& path, bool readOnly)
{
    const unsigned int code = CDovBlobDB().Open(path, readOnly);
    return code == qel::kSuccess ? qel::kNotOpen : code;
}

} // namespace

CLegacyFile::CLegacyFile(const std::wstring& path, const SOptions& options) : CDatabaseFile(path, options)
{}

CLegacyFile::~CLegacyFile()
{
    CLegacyFile::Rollback(); // no class derived from this one is there any more
    m_database.Close();
}

std::unique_ptr<CPropertyFile> CLegacyFile::Open(const std::wstring& path, const SOptions& options)
{
    std::unique_ptr<CLegacyFile> file(new CLegacyFile(path, options));
    const bool readOnly = options.access == EAccess::eRead;
    const unsigned int code = CPatience(options.busyTimeout).Open([&] { return file->TryOpen(readOnly); });
    if (readOnly && code == kUnfinished) {
        SFailure failure = FailureOf(code, "", "cannot open");
        failure.file = Utf8(path);
        ExplainUnfinished(failure);
        throw failure;
    }
    file->Require(code, "cannot open");
    if (!readOnly)
        file->Begin();
    return file;
}

std::unique_ptr<CPropertyFile> CLegacyFile::Create(const std::wstring& path, const SOptions& options)
{
    std::unique_ptr<CLegacyFile> file(new CLegacyFile(path, options));
    // Create goes on after a store that could not be made, so the store is asked first.
    CDovBlobDB store;
    file->Require(store.Create(path, 1), "cannot create");
    file->Require(store.Close(), "cannot create");
    file->Require(file->m_database.Create(path), "cannot create");
    file->Begin();
    return file;
}

unsigned int CLegacyFile::TryOpen(bool readOnly)
{
    const unsigned int code = m_database.Open(m_path, readOnly);
    return code == qel::kNotOpen ? StoreCode(m_path, readOnly) : code;
}

void CLegacyFile::Begin()
{
    if (m_begun)
        return;
    Require(m_database.BlobDB().BeginBatch(), "cannot begin to write");
    m_begun = true;
}

void CLegacyFile::Commit()
{
    if (!m_begun)
        return;
    Require(m_database.BlobDB().CommitBatch(), "cannot save");
    m_begun = false; // the next change begins anew: a failure then must not look like one of saving
    Require(m_database.BlobDB().Flush(), "cannot save");
}

void CLegacyFile::Rollback() noexcept
{
    if (!m_begun)
        return;
    m_begun = false;
    ForgetTable();
    m_database.BlobDB().RollbackBatch();
}

std::vector<CQelTable> CLegacyFile::Tables()
{
    std::vector<CQelTable> tables;
    for (const CQelTable3X& stored : StoredTables()) {
        tables.emplace_back(stored.Properties().oid);
        CQelTable::SData& data = tables.back().Properties();
        data.name = stored.Properties().name;
        data.description = stored.Properties().description;
        data.flag = stored.Properties().flag;
        data.columns.assign(stored.Columns().begin(), stored.Columns().end());
    }
    return tables;
}

CQelTable3X::SQelColumn CLegacyFile::StoredColumn(unsigned long tableOid, unsigned long columnOid)
{
    CQelTable3X::SQelColumn column;
    if (!TableOf(tableOid).GetColumn(columnOid, column))
        Require(qel::kNotFound, "no such column");
    return column;
}

void CLegacyFile::AddTable(CQelTable& table)
{
    BeginChange();
    CQelTable3X added;
    added.Properties().name = table.Properties().name;
    added.Properties().description = table.Properties().description;
    added.Properties().flag = table.Properties().flag;
    int place = 0;
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        CQelTable3X::SQelColumn copy;
        static_cast<CQelTable::SQelColumn&>(copy) = column;
        // The database numbers columns only when they are added one by one.
        copy.oid = static_cast<unsigned long>(place) + 1;
        copy.displayOrder = place;
        copy.dataIndex = place;
        ++place;
        added.Properties().columns.push_back(std::move(copy));
    }
    Require(m_database.AddTable(added), "cannot add table " + Quoted(table.Properties().name));
    table.Properties().oid = added.Properties().oid;
}

unsigned long CLegacyFile::AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    Begin();
    const CQelTable3X& table = TableOf(tableOid);
    CQelTable3X::SQelColumn added;
    static_cast<CQelTable::SQelColumn&>(added) = column;
    added.displayOrder = static_cast<int>(table.Columns().size());
    // A slot left to the database could be one that another column has, once a column was removed.
    added.dataIndex = 0;
    for (const CQelTable3X::SQelColumn& present : table.Columns())
        added.dataIndex = std::max(added.dataIndex, present.dataIndex + 1);
    ForgetTable();
    Require(m_database.TableAddColumn(tableOid, added), "cannot add column " + Quoted(column.name));
    return added.oid;
}

void CLegacyFile::ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    Begin();
    CQelTable3X::SQelColumn modified = StoredColumn(tableOid, column.oid);
    static_cast<CQelTable::SQelColumn&>(modified) = column;
    ForgetTable();
    Require(m_database.TableModifyColumn(tableOid, modified), "cannot change column " + Quoted(column.name));
}

void CLegacyFile::RemoveColumn(unsigned long tableOid, unsigned long columnOid)
{
    ForgetTable();
    Commit(); // the removal copies and reopens the store's file, which ends a batch
    Require(m_database.TableRemoveColumn(tableOid, columnOid), "cannot remove the column");
}

void CLegacyFile::MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position)
{
    Begin();
    std::vector<CQelTable3X::SQelColumn> columns = TableOf(tableOid).Columns();
    MoveTo(columns, columnOid, position);
    NumberInOrder(columns);
    // Every change renumbers the rest, so the columns are set from the front to their final places.
    for (CQelTable3X::SQelColumn& column : columns) {
        ForgetTable();
        const std::vector<CQelTable3X::SQelColumn> now = TableOf(tableOid).Columns();
        const auto place = static_cast<std::size_t>(column.displayOrder);
        if (now[place].oid != column.oid)
            Require(m_database.TableSwapDisplayOrder(tableOid, column.oid, now[place].oid),
                    "cannot move the column");
    }
    ForgetTable();
}

CRecord CLegacyFile::BySlot(unsigned long tableOid, const CRecord& record)
{
    const std::vector<CQelTable3X::SQelColumn>& columns = TableOf(tableOid).Columns();
    CRecord slots(columns.size());
    for (const CQelTable3X::SQelColumn& column : columns) {
        CRecord::const_iterator given;
        if (record.empty() || !CQelTable::GetColumnData(column.oid, record, given))
            continue;
        if (column.dataIndex < 0 || static_cast<std::size_t>(column.dataIndex) >= slots.size())
            Require(qel::kWrongValueType, "the column has no slot in its table's records");
        slots[static_cast<std::size_t>(column.dataIndex)] = *given;
    }
    return slots;
}

unsigned long CLegacyFile::AddRecord(unsigned long tableOid, const CRecord& record, unsigned long givenOid)
{
    Begin();
    unsigned long oid = givenOid;
    Require(m_database.AddRecord(tableOid, oid, BySlot(tableOid, record), givenOid != 0),
            "cannot add the record");
    return oid;
}

void CLegacyFile::SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record)
{
    Begin();
    CRecord whole;
    if (!GetRecord(tableOid, recordOid, whole))
        whole.clear();
    for (const SQelPropColumnData& data : record) {
        CRecord::iterator present;
        if (CQelTable::GetColumnData(data.columnOid, whole, present))
            present->value = data.value;
        else
            whole.push_back(data);
    }
    Require(m_database.SetRecord(tableOid, recordOid, BySlot(tableOid, whole)), "cannot write the record");
}

void CLegacyFile::RemoveRecord(unsigned long tableOid, unsigned long recordOid)
{
    Begin();
    Require(m_database.RemoveRecord(tableOid, recordOid), "cannot remove the record");
}

bool CLegacyFile::GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record)
{
    const unsigned int code = m_database.GetRecord(tableOid, recordOid, record);
    if (code == qel::kNotFound && !HasRecord(tableOid, recordOid))
        return false;
    if (code != qel::kSuccess)
        throw UnreadableRecord(code, m_path, TableOf(tableOid).Properties().name, recordOid);
    SortLike(TableOf(tableOid).Columns(), record);
    return true;
}

} // namespace tool
