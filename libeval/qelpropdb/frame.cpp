// frame.cpp: life of the database object, and what every operation begins with.
#include "frame.h"

#include "../common/name_rule.h"
#include "../common/notification.h"

#include <qellib4/qelexception.h>

namespace qel {

bool IsOpen(const CQelSQLite* db)
{
    return db != nullptr && db->IsOpen();
}

unsigned int RefuseUnlessOpen(const CQelSQLite* db, CDovLogfile* log, SSite site)
{
    return IsOpen(db) ? kSuccess : LogFault(log, kNotOpen, site);
}

unsigned int RefuseUnlessWritable(const CQelSQLite* db, CDovLogfile* log, SSite site)
{
    if (!IsOpen(db))
        return LogFault(log, kNotOpen, site);
    return db->IsReadOnly() ? LogFault(log, kReadOnly, site) : kSuccess;
}

const CQelTable* FindTable(const TCatalogue& tables, unsigned long tableOid)
{
    const auto found = tables.find(tableOid);
    return found == tables.end() ? nullptr : &found->second;
}

const CQelTable::SQelColumn* FindColumn(const CQelTable& table, unsigned long columnOid)
{
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        if (column.oid == columnOid)
            return &column;
    }
    return nullptr;
}

void Raise(unsigned int code, SSite site)
{
    throw new CQelException(code, 0, site.file, site.line, true);
}

void WarnOfSkippedRows(CDovLogfile* log, unsigned long count, SSite site)
{
    if (log == nullptr || count == 0)
        return;
    const std::wstring text = L"Passed over " + std::to_wstring(count) + L" rows under oids out of range";
    log->AddWarning(text.c_str(), 1, site.line, site.file);
}

} // namespace qel

CQelPropDB::CQelPropDB(CQelSQLite* db) : m_db(db)
{}

CQelPropDB::CQelPropDB(const CQelPropDB& other) = default;

CQelPropDB& CQelPropDB::operator=(const CQelPropDB& other)
{
    if (this == &other)
        return *this;
    std::map<unsigned long, CQelTable> tables(other.m_tables);
    std::map<unsigned long, qel::TRecord> bulk(other.m_bulk);
    CQelBase::operator=(other);
    m_log = other.m_log;
    m_callback = other.m_callback;
    m_callbackUser = other.m_callbackUser;
    m_tables.swap(tables);
    m_fillTime = other.m_fillTime;
    m_db = other.m_db;
    m_bulk.swap(bulk);
    return *this;
}

CQelPropDB::~CQelPropDB()
{
    Close();
}

unsigned int CQelPropDB::Close()
{
    qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 2, L"+ Closing Property Database", QEL_SITE);
        ClearBulkCache();
        m_tables.clear();
        if (qel::IsOpen(m_db))
            DoNotify(ePropDBClosed, 0, 0);
        return operation.Done(qel::kSuccess);
    });
    return qel::kSuccess;
}

void CQelPropDB::SetLogfile(CDovLogfile* log)
{
    m_log = log;
}

void CQelPropDB::SetNotifyCallback(TQelNotifyCallback callback, unsigned int user)
{
    m_callback = callback;
    m_callbackUser = user;
}

bool CQelPropDB::DoNotify(EPropDBMessage message, unsigned long first, unsigned long second)
{
    return qel::Notify(m_callback, m_callbackUser, message, first, second);
}

unsigned int CQelPropDB::MaxTables() const
{
    return 1000;
}

unsigned int CQelPropDB::MaxColumns() const
{
    return 255;
}

bool CQelPropDB::IsValidName(const std::wstring& name) const
{
    return qel::IsValidName(name);
}

bool CQelPropDB::TableExists(const std::wstring& name) const
{
    for (const auto& [oid, table] : m_tables) {
        if (table.Properties().name == name)
            return true;
    }
    return false;
}

unsigned int CQelPropDB::FindOpenTable(unsigned long tableOid, const CQelTable*& table, qel::SSite site) const
{
    if (const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, site); refusal != qel::kSuccess)
        return refusal;
    table = qel::FindTable(m_tables, tableOid);
    return table != nullptr ? qel::kSuccess : qel::LogRefusal(m_log, qel::kNotFound, site);
}

unsigned int CQelPropDB::Optimize(const std::wstring&, CDovBlobDB::TProgress, unsigned int)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        ClearBulkCache();
        return qel::kSuccess;
    });
}

unsigned int CQelPropDB::SelfTest(CQelFile*, unsigned long&, CDovBlobDB::TProgress, unsigned int)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        ClearBulkCache();
        return qel::kSuccess;
    });
}
