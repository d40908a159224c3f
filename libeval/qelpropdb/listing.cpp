// listing.cpp: the record oids of a table, as stored or sorted.
#include "record_reader.h"

#include "../common/record_order.h"

namespace {

// Calls `take` with every record oid of the table, in the order in which the records were first stored. The
// query stays open meanwhile, so that the file is locked once however many records are read.
template <class Take>
void ForEachRecord(CQelSQLite* db, unsigned long tableOid, CDovLogfile* log, const Take& take)
{
    CQelSQLite::CStatement rows(db);
    rows.Prepare(L"SELECT DISTINCT foid FROM qeltpd WHERE toid = ?1 ORDER BY oid");
    rows.BindInt(1, static_cast<long long>(tableOid));
    unsigned long skipped = 0;
    while (rows.Step() == qel::kRow) {
        const long long recordOid = rows.GetInt(0);
        if (qel::IsStoredOid(recordOid))
            take(static_cast<unsigned long>(recordOid));
        else
            ++skipped;
    }
    qel::WarnOfSkippedRows(log, skipped, QEL_SITE);
}

std::vector<unsigned long> ListAsStored(CQelSQLite* db, const CQelTable& table, CDovLogfile* log)
{
    std::vector<unsigned long> oids;
    ForEachRecord(db, table.Properties().oid, log,
                  [&](unsigned long recordOid) { oids.push_back(recordOid); });
    return oids;
}

std::vector<unsigned long> ListSorted(CQelSQLite* db, const CQelTable& table, CDovLogfile* log,
                                      const std::vector<CQelPropDB::SSortItem>& sortItems)
{
    const std::vector<qel::SSortKey> keys = qel::FindSortKeys(sortItems, table.Columns());
    std::vector<bool> wanted(table.Columns().size());
    for (const qel::SSortKey& key : keys) {
        if (key.position < wanted.size())
            wanted[key.position] = true;
    }
    qel::CRecordOrder order(keys);
    qel::CRecordReader reader(db, table);
    qel::TRecord record;
    qel::ResetRecord(table, record);
    ForEachRecord(db, table.Properties().oid, log, [&](unsigned long recordOid) {
        reader.ReadWanted(recordOid, wanted, record);
        order.Add(recordOid, record);
    });
    std::vector<unsigned long> oids;
    order.List(oids);
    return oids;
}

} // namespace

unsigned int CQelPropDB::GetRecordOids(unsigned long tableOid, std::vector<unsigned long>& oids,
                                       const std::vector<SSortItem>* sortItems)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        const CQelTable* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(tableOid, table, QEL_SITE); refusal != qel::kSuccess)
            return refusal;
        oids.clear();
        oids = sortItems == nullptr ? ListAsStored(m_db, *table, m_log)
                                    : ListSorted(m_db, *table, m_log, *sortItems);
        return qel::kSuccess;
    });
}
