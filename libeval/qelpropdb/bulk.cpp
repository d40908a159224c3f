// bulk.cpp: every record of the bulk table in one query.
#include "record_reader.h"

#include <qelplat4/files.h>

namespace {

constexpr unsigned long kBulkTable = 1000; // fixed: hosts keep what they want in bulk under this oid

using TBulk = std::map<unsigned long, qel::TRecord>;

// Groups rows, which come in ascending order of their record oids, into records.
class CBulkFill
{
public:
    CBulkFill(const CQelTable& table, TBulk& bulk) : m_table(table), m_bulk(bulk) { BeginRecord(0); }

    // Takes the current row of (record, column, bytes). As long as the number is 0 no record has begun:
    // values that other hands stored under 0 go into the first record that follows.
    void Take(CQelSQLite::CStatement& row)
    {
        const long long recordOid = row.GetInt(0);
        if (!qel::IsStoredOid(recordOid)) {
            ++m_skipped;
            return;
        }
        if (m_recordOid == 0) {
            m_recordOid = static_cast<unsigned long>(recordOid);
        } else if (recordOid != static_cast<long long>(m_recordOid)) {
            EndRecord();
            BeginRecord(static_cast<unsigned long>(recordOid));
        }
        TakeValue(row);
    }

    // Without any row, one null record stands under 0.
    void EndRecord() { m_bulk.emplace_hint(m_bulk.end(), m_recordOid, std::move(m_record)); }

    unsigned long long Bytes() const { return m_bytes; }
    unsigned long Skipped() const { return m_skipped; }

private:
    void BeginRecord(unsigned long recordOid)
    {
        qel::ResetRecord(m_table, m_record);
        m_recordOid = recordOid;
        m_elements = qel::CElementFinder();
    }

    // A null that was stored takes the type of its column, unlike in a record that is read alone.
    void TakeValue(CQelSQLite::CStatement& row)
    {
        SQelPropColumnData* element = m_elements.Find(m_record, row.GetInt(1));
        if (element == nullptr || !qel::ReadValue(row, 2, element->value))
            return;
        if (element->value.IsNull())
            element->value.SetType(
                m_table.Columns()[static_cast<std::size_t>(element - m_record.data())].type);
        m_bytes += element->value.Data().nBufferSize;
    }

    const CQelTable& m_table;
    TBulk& m_bulk;
    qel::TRecord m_record;
    unsigned long m_recordOid = 0;
    qel::CElementFinder m_elements;
    unsigned long long m_bytes = 0;
    unsigned long m_skipped = 0;
};

void LogFirstRow(CDovLogfile* log, unsigned int milliseconds, qel::SSite site)
{
    if (log != nullptr)
        log->AddInformal((L"    " + std::to_wstring(milliseconds) + L" ms").c_str(), 4, site.line, site.file);
}

void LogFill(CDovLogfile* log, std::size_t records, unsigned long long bytes, qel::SSite site)
{
    if (log == nullptr)
        return;
    const std::wstring text = L"  FillBulkCache completed, " + std::to_wstring(records) +
                              L" records fetched (" + std::to_wstring(bytes >> 10) + L" KB)";
    log->AddInformal(text.c_str(), 4, site.line, site.file);
}

} // namespace

void CQelPropDB::ClearBulkCache()
{
    m_fillTime = 0;
    if (m_bulk.empty())
        return;
    CDovLogfileMethodTracker tracker(m_log, 10, L"CQelPropDB::ClearBulkCache", __LINE__,
                                     qel::kSourceQelPropDB);
    m_bulk.clear();
}

const std::map<unsigned long, std::vector<SQelPropColumnData>>& CQelPropDB::GetBulkRecords()
{
    if (m_bulk.empty())
        FillBulkCache();
    return m_bulk;
}

unsigned int CQelPropDB::FillBulkCache()
{
    const unsigned int code = qel::RunOperation(m_log, QEL_SITE, [&] {
        ClearBulkCache();
        CDovLogfileMethodTracker tracker(m_log, 5, L"CQelPropDB::FillBulkCache", __LINE__,
                                         qel::kSourceQelPropDB);
        const CQelTable* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(kBulkTable, table, QEL_SITE); refusal != qel::kSuccess)
            return refusal;
        return ReadBulkRecords(*table);
    });
    if (code != qel::kSuccess)
        m_bulk.clear(); // a part must not pass for the whole
    return code;
}

unsigned int CQelPropDB::ReadBulkRecords(const CQelTable& table)
{
    const unsigned int start = GetTickCount();
    CBulkFill fill(table, m_bulk);
    CQelSQLite::CStatement rows(m_db);
    rows.Prepare(L"SELECT foid,coid,data from qeltpd WHERE toid = ?1 ORDER by foid ASC, toid ASC, coid ASC");
    rows.BindInt(1, static_cast<long long>(kBulkTable));
    int status = rows.Step();
    LogFirstRow(m_log, GetTickCount() - start, QEL_SITE);
    for (; status == qel::kRow; status = rows.Step())
        fill.Take(rows);
    fill.EndRecord();
    qel::WarnOfSkippedRows(m_log, fill.Skipped(), QEL_SITE);
    LogFill(m_log, m_bulk.size(), fill.Bytes(), QEL_SITE);
    m_fillTime = GetTickCount();
    return qel::kSuccess;
}
