// referrers.cpp: looks for references before anything is changed, alike for both kinds of file.
#include "referrers.h"

#include <set>

namespace tool {
namespace {

SFailure Refusal(CPropertyFile& file, const std::string& place, const std::string& suffix)
{
    SFailure failure =
        FileFailure(EExit::eRefused, Utf8(file.Path()), place + suffix, "remove " + place + " first");
    failure.code = qel::kStillReferenced;
    return failure;
}

std::string Place(const CQelTable& table, const CQelTable::SQelColumn& column)
{
    return "column " + Quoted(column.name) + " of table " + Quoted(table.Properties().name);
}

/// The first Reference column for which a test holds is refused.
template <class Test>
void RefuseWhere(CPropertyFile& file, const CNames& names, const std::string& suffix, const Test& test)
{
    for (const CQelTable& table : names.Tables()) {
        for (const CQelTable::SQelColumn& column : table.Columns()) {
            if (column.type == CQelProperty::eReference && test(table, column))
                throw Refusal(file, Place(table, column), suffix);
        }
    }
}

} // namespace

void RefuseIfReferredTo(CPropertyFile& file, const CNames& names, const CQelTable& table)
{
    const unsigned long oid = table.Properties().oid;
    RefuseWhere(file, names, " refers to this table",
                [&](const CQelTable& owner, const CQelTable::SQelColumn& column) {
                    return column.refTable == oid && owner.Properties().oid != oid;
                });
    // The SQLite database removes no table at all while another refers to itself.
    if (file.Kind() == EKind::eSQLite)
        RefuseWhere(file, names, " refers to its own table, which keeps every table from being removed",
                    [&](const CQelTable& owner, const CQelTable::SQelColumn& column) {
                        return column.refTable == owner.Properties().oid && column.refTable != oid;
                    });
}

void RefuseIfReferredTo(CPropertyFile& file, const CNames& names, const CQelTable& table,
                        const CQelTable::SQelColumn& target)
{
    RefuseWhere(file, names, " refers to this column",
                [&](const CQelTable&, const CQelTable::SQelColumn& column) {
                    return column.refTable == table.Properties().oid && column.refColumn == target.oid;
                });
}

void RefuseTwins(const std::vector<CQelTable::SQelColumn>& columns)
{
    std::set<std::wstring> seen;
    for (const CQelTable::SQelColumn& column : columns) {
        if (seen.insert(column.name).second)
            continue;
        SFailure failure = MakeFailure(EExit::eRefused, "column " + Quoted(column.name) + " is given twice");
        failure.code = qel::kNameInUse;
        throw failure;
    }
}

} // namespace tool
