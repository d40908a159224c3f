// reference_search.cpp: which Reference columns point at a table or a column.
#include "reference_search.h"

#include <algorithm>

namespace qel {
namespace {

template <class Test>
bool AnyReference(const TLegacyTables& tables, Test&& test)
{
    return std::any_of(tables.begin(), tables.end(), [&](const auto& entry) {
        const auto& columns = entry.second.Columns();
        return std::any_of(columns.begin(), columns.end(), [&](const CQelTable3X::SQelColumn& column) {
            return column.type == CQelProperty::eReference && test(column);
        });
    });
}

} // namespace

bool IsReferenced(const TLegacyTables& tables, unsigned long tableOid)
{
    return AnyReference(tables, [&](const auto& column) { return column.refTable == tableOid; });
}

bool IsReferenced(const TLegacyTables& tables, unsigned long tableOid, unsigned long columnOid)
{
    return AnyReference(tables, [&](const auto& column) {
        return column.refTable == tableOid && column.refColumn == columnOid;
    });
}

} // namespace qel
