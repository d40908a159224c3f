// listing.cpp: the list of a table's record ids, sorted on request.
#include "legacy_operation.h"
#include "record_address.h"

#include "../common/record_order.h"

#include <qelprop4/qelpropdb3x.h>

using qel::CLegacyOperation;
using qel::kSuccess;

unsigned int CQelPropDB3X::GetRecordOids(unsigned long tableOid, std::vector<unsigned long>& oids,
                                         const std::vector<SSortItem>* sortItems)
{
    return qel::LookUp(m_log, __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        const unsigned int code = qel::ListRecords(m_store, tableOid, oids);
        if (code != kSuccess || sortItems == nullptr || sortItems->empty())
            return code;
        return SortRecords(*table, *sortItems, oids);
    });
}

// A key is the column's place in display order, and so is taken for the number of a slot.
unsigned int CQelPropDB3X::SortRecords(const CQelTable3X& table, const std::vector<SSortItem>& sortItems,
                                       std::vector<unsigned long>& oids)
{
    qel::CRecordOrder order(qel::FindSortKeys(sortItems, table.Columns()));
    std::vector<SQelPropColumnData> values;
    for (const unsigned long oid : oids) {
        if (const unsigned int code = GetRecord(table.Properties().oid, oid, values); code != kSuccess)
            return code;
        order.Add(oid, values);
    }
    order.List(oids);
    return kSuccess;
}
