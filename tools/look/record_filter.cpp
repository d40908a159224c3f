// record_filter.cpp: reads conditions as values, and looks for records that hold them.
#include "record_filter.h"

#include "exchange/value_parts.h"
#include "names/assignment.h"

#include <algorithm>

namespace tool {

CRecordFilter::CRecordFilter(const CContext& context, const CNames& names, const CQelTable& table)
    : m_table(table.Properties().oid)
{
    for (const std::string& condition : context.Arguments().All("--where")) {
        const CRecord wanted = ParseAssignments({condition}, table, names, ValueRulesOf(context));
        const CQelProperty& value = wanted.front().value;
        m_wanted.push_back({wanted.front().columnOid, value.IsNull(), StoredBytes(value)});
    }
    for (const std::string& column : context.Arguments().All("--where-null"))
        m_wanted.push_back({names.Column(table, column).oid, true, {}});
}

bool CRecordFilter::Meets(const CRecord& record) const
{
    return std::all_of(m_wanted.begin(), m_wanted.end(), [&](const SWanted& wanted) {
        const auto found = std::find_if(record.begin(), record.end(), [&](const SQelPropColumnData& data) {
            return data.columnOid == wanted.column;
        });
        if (found == record.end() || found->value.IsNull())
            return wanted.null;
        return !wanted.null && StoredBytes(found->value) == wanted.bytes;
    });
}

std::vector<unsigned long> CRecordFilter::Oids(CContext& context, CPropertyFile& file) const
{
    std::vector<unsigned long> oids = file.RecordOids(m_table);
    if (IsEmpty())
        return oids;
    CRecord record;
    const auto isOther = [&](unsigned long oid) {
        context.CheckInterrupt();
        return !file.GetRecord(m_table, oid, record) || !Meets(record);
    };
    oids.erase(std::remove_if(oids.begin(), oids.end(), isOther), oids.end());
    return oids;
}

} // namespace tool
