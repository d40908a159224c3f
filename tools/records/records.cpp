// records.cpp: adds, changes and removes records.
#include "records.h"

#include "names/assignment.h"
#include "names/record_list.h"
#include "names/stored_values.h"
#include "output/amount_text.h"

#include <algorithm>

namespace tool {
namespace {

unsigned long GivenOid(CContext& context, CPropertyFile& file, const CQelTable& table)
{
    if (!context.Arguments().Has("--oid"))
        return 0;
    const unsigned long oid = CNames::RecordOid(context.Arguments().Text("--oid"));
    if (!file.HasRecord(table.Properties().oid, oid))
        return oid;
    throw MakeFailure(EExit::eRefused, "record @" + std::to_string(oid) + " is there already",
                      "'qelprop set' changes it");
}

void RefuseWithoutColumns(const CQelTable& table)
{
    if (!table.Columns().empty())
        return;
    throw MakeFailure(EExit::eRefused,
                      "table " + Quoted(table.Properties().name) +
                          " has no columns, so that it holds no records",
                      "'qelprop add-column' adds some");
}

/// The records that are to go, each once.
std::vector<unsigned long> RecordsToRemove(const CRecordList& list, CPropertyFile& file, const CNames& names,
                                           const CQelTable& table)
{
    std::vector<unsigned long> oids = list.Oids(file, names, table);
    std::sort(oids.begin(), oids.end());
    oids.erase(std::unique(oids.begin(), oids.end()), oids.end());
    return oids;
}

} // namespace

EExit RunAdd(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(arguments.Text("TABLE"));
    RefuseWithoutColumns(table);
    CRecord record = ParseAssignments(arguments.All("NAME=VALUE"), table, names, ValueRulesOf(context));
    if (!arguments.Has("--no-defaults"))
        AddDefaults(table, record);
    CheckReferences(*file, table, names, record);
    const unsigned long oid =
        file->AddRecord(table.Properties().oid, record, GivenOid(context, *file, table));
    context.Finish(*file);
    context.Out() << oid << '\n';
    return EExit::eDone;
}

EExit RunSet(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const unsigned long oid = CNames::RecordOid(arguments.Text("RECORD"));
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(arguments.Text("TABLE"));
    if (!file->HasRecord(table.Properties().oid, oid))
        throw names.NoRecord(table, oid);
    const CRecord record = ParseAssignments(arguments.All("NAME=VALUE"), table, names, ValueRulesOf(context));
    CheckReferences(*file, table, names, record);
    file->SetRecord(table.Properties().oid, oid, record);
    context.Finish(*file);
    return EExit::eDone;
}

EExit RunRemove(CContext& context)
{
    const std::string given = context.Arguments().Text("TABLE");
    const CRecordList list(context.Arguments().All("RECORD"));
    std::vector<unsigned long> oids;
    std::string what;
    {
        const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
        const CNames names(*file);
        const CQelTable& table = names.Table(given);
        oids = RecordsToRemove(list, *file, names, table);
        unsigned long long values = 0;
        CRecord record;
        for (const unsigned long oid : oids) {
            if (!ReadIfWhole(*file, table.Properties().oid, oid, record))
                throw names.NoRecord(table, oid);
            values += CountValues(record);
        }
        what = Counted(oids.size(), "record") + " with " + Counted(values, "value") + " from table " +
               Quoted(table.Properties().name);
    }
    context.Confirm("remove " + what);
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(given);
    for (const unsigned long oid : oids) {
        context.CheckInterrupt();
        file->RemoveRecord(table.Properties().oid, oid);
    }
    context.Finish(*file);
    context.Tell((context.IsDryRun() ? "would remove " : "removed ") + what);
    return EExit::eDone;
}

} // namespace tool
