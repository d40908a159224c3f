// sqlite_file.cpp: commands' view of CQelPropDB.
#include "sqlite_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tool {

CSQLiteFile::CSQLiteFile(const std::wstring& path, const SOptions& options)
    : CEngineConnection(options.busyTimeout), CDatabaseFile(path, options, nullptr)
{}

CSQLiteFile::~CSQLiteFile()
{
    CSQLiteFile::Rollback(); // no class derived from this one is there any more
    m_database.Close();
}

std::unique_ptr<CPropertyFile> CSQLiteFile::Open(const std::wstring& path, const SOptions& options)
{
    std::unique_ptr<CSQLiteFile> file(new CSQLiteFile(path, options));
    file->OpenConnection(options.access == EAccess::eRead);
    if (options.access == EAccess::eWrite)
        file->Begin(); // before anything is read, so that opening's own repairs are undone with the rest
    else
        file->BeginReading();
    if (!file->HasPropertyTables())
        throw file->NoPropertyTables();
    file->Require(file->m_database.Attach(false, &file->m_sqlite), "cannot read the tables");
    return file;
}

std::unique_ptr<CPropertyFile> CSQLiteFile::Create(const std::wstring& path, bool lookupIndexes, bool force,
                                                   const SOptions& options)
{
    std::unique_ptr<CSQLiteFile> file(new CSQLiteFile(path, options));
    file->OpenConnection(false);
    file->Begin();
    const bool exists = file->HasPropertyTables();
    if (exists && !force) {
        SFailure failure = FailureOf(qel::kFileExists, Utf8(path), "");
        failure.message = "the file holds a property database already";
        failure.hint = "--force drops its tables and every record in them";
        throw failure;
    }
    file->Require(file->m_database.Attach(true, &file->m_sqlite), "cannot create the tables");
    if (lookupIndexes)
        file->Require(file->m_database.CreateLookupIndexes(), "cannot create the indexes");
    return file;
}

bool CSQLiteFile::HasRow(const wchar_t* sql)
{
    constexpr int kRow = 100;
    int raw = 0;
    try {
        CQelSQLite::CStatement present(&m_sqlite);
        present.Prepare(sql);
        raw = present.Step();
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        Require(code, "cannot read");
    }
    Require(CQelSQLite::MapQelERR(raw), "cannot read");
    return raw == kRow;
}

bool CSQLiteFile::HasPropertyTables()
{
    return HasRow(
        L"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name IN ('qeltpt','qeltpc','qeltpd')");
}

bool CSQLiteFile::HasOtherTables()
{
    return HasRow(L"SELECT 1 FROM sqlite_master WHERE type IN ('table','view') AND "
                  L"name NOT IN ('qeltpt','qeltpc','qeltpd') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'");
}

SFailure CSQLiteFile::NoPropertyTables() const
{
    return FileFailure(EExit::eNotFound, Utf8(m_path), "the database has no property tables",
                       "'qelprop init' puts them in");
}

void CSQLiteFile::OpenConnection(bool readOnly)
{
    Require(CQelSQLite::MapQelERR(m_sqlite.Open(m_path, readOnly)), "cannot open");
    m_sqlite.SetLogfile(m_options.log);
    m_patience.Lend(m_sqlite);
}

void CSQLiteFile::RunText(const wchar_t* sql, const std::string& doing)
{
    Require(CQelSQLite::MapQelERR(m_sqlite.ExecSQL(sql)), doing);
}

void CSQLiteFile::Begin()
{
    if (m_begun)
        return;
    RunText(L"BEGIN IMMEDIATE", "cannot begin to write");
    m_begun = true;
}

void CSQLiteFile::BeginReading()
{
    RunText(L"BEGIN", "cannot begin to read");
    m_begun = true;
}

void CSQLiteFile::Commit()
{
    if (!m_begun)
        return;
    // Whoever only looks at the file, or tries whether it is free, must not cost the work of an hour.
    constexpr int kWhileOthersLook = 1000; // milliseconds
    m_patience.Raise(kWhileOthersLook);
    RunText(L"COMMIT", "cannot save");
    m_begun = false; // the next change begins anew: a failure then must not look like one of saving
}

void CSQLiteFile::Rollback() noexcept
{
    if (!m_begun)
        return;
    m_begun = false;
    ForgetTable();
    try {
        m_sqlite.ExecSQL(L"ROLLBACK"); // fails where the engine has ended the transaction itself
        // A file that could not be written is put right by the next that reads it with the right to write.
        if (m_options.access == EAccess::eWrite)
            m_sqlite.ExecSQL(L"SELECT 1 FROM sqlite_master");
    } catch (...) { // out of memory, and closing rolls back as well
    }
}

void CSQLiteFile::AddTable(CQelTable& table)
{
    Begin();
    CQelTable ordered(table);
    NumberInOrder(ordered.Properties().columns);
    const std::string doing = "cannot add table " + Quoted(table.Properties().name);
    const int before = sqlite3_total_changes(m_sqlite.Handle());
    Require(m_database.AddTable(ordered), doing);
    // The database does not ask whether its row was taken, which it is not where no journal can be made.
    if (sqlite3_total_changes(m_sqlite.Handle()) == before) {
        RunText(L"INSERT INTO qeltpt(oid) VALUES(-1)", doing); // gives the engine's reason
        Require(qel::kCannotChange, doing);
    }
    table.Properties().oid = ordered.Properties().oid;
}

unsigned long CSQLiteFile::AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    BeginChange();
    constexpr int kLast = 9999;
    CQelTable::SQelColumn added(column);
    added.displayOrder = kLast;
    Require(m_database.TableAddColumn(tableOid, added), "cannot add column " + Quoted(column.name));
    for (const CQelTable::SQelColumn& stored : TableOf(tableOid).Columns()) {
        if (stored.name == column.name)
            return stored.oid;
    }
    throw FailureOf(qel::kNotFound, Utf8(m_path), "the new column cannot be found");
}

void CSQLiteFile::ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    BeginChange();
    CQelTable::SQelColumn modified(column);
    Require(m_database.TableModifyColumn(tableOid, modified), "cannot change column " + Quoted(column.name));
}

void CSQLiteFile::RemoveColumn(unsigned long tableOid, unsigned long columnOid)
{
    BeginChange();
    Require(m_database.TableRemoveColumn(tableOid, columnOid), "cannot remove the column");
}

void CSQLiteFile::MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position)
{
    std::vector<CQelTable::SQelColumn> columns = TableOf(tableOid).Columns();
    MoveTo(columns, columnOid, position);
    NumberInOrder(columns);
    for (const CQelTable::SQelColumn& column : columns)
        ModifyColumn(tableOid, column);
}

void CSQLiteFile::CompleteRecord(unsigned long tableOid, const CRecord& record, CRecord& complete)
{
    // A record without a stored value does not exist, so every column gets one.
    for (const CQelTable::SQelColumn& column : TableOf(tableOid).Columns()) {
        complete.push_back({column.oid, {}});
        CRecord::const_iterator given;
        if (!record.empty() && CQelTable::GetColumnData(column.oid, record, given))
            complete.back().value = given->value;
    }
}

unsigned long CSQLiteFile::AddRecord(unsigned long tableOid, const CRecord& record, unsigned long givenOid)
{
    Begin();
    CRecord complete;
    CompleteRecord(tableOid, record, complete);
    unsigned long oid = givenOid;
    unsigned int code = m_database.AddRecord(tableOid, oid, complete, givenOid != 0);
    constexpr unsigned long kLastOid = std::numeric_limits<std::uint32_t>::max();
    if (code != qel::kSuccess && givenOid == 0 && HasRecord(tableOid, kLastOid)) {
        oid = FirstFreeOid(tableOid); // the database itself looks behind the last record alone
        code = m_database.AddRecord(tableOid, oid, complete, true);
    }
    Require(code, "cannot add the record");
    return oid;
}

unsigned long CSQLiteFile::FirstFreeOid(unsigned long tableOid)
{
    unsigned long free = 1;
    for (const unsigned long oid : RecordOids(tableOid)) {
        if (oid != free)
            break;
        ++free;
    }
    return free;
}

void CSQLiteFile::SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record)
{
    Begin();
    Require(m_database.SetRecord(tableOid, recordOid, record), "cannot write the record");
}

void CSQLiteFile::RemoveRecord(unsigned long tableOid, unsigned long recordOid)
{
    Begin();
    if (!HasRecord(tableOid, recordOid))
        Require(qel::kNotFound, "no such record");
    Require(m_database.RemoveRecord(tableOid, recordOid), "cannot remove the record");
}

bool CSQLiteFile::GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record)
{
    const unsigned int code = m_database.GetRecord(tableOid, recordOid, record);
    if (code != qel::kSuccess)
        throw UnreadableRecord(code, m_path, TableOf(tableOid).Properties().name, recordOid);
    SortLike(TableOf(tableOid).Columns(), record);
    const bool stored = std::any_of(record.begin(), record.end(),
                                    [](const SQelPropColumnData& data) { return !data.value.IsNull(); });
    return stored || HasRecord(tableOid, recordOid);
}

} // namespace tool
