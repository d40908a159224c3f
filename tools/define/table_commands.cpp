// table_commands.cpp: adds, renames and removes tables.
#include "column_spec.h"
#include "define.h"
#include "names/stored_values.h"
#include "output/amount_text.h"
#include "referrers.h"

namespace tool {
namespace {

/// Neither database removes a table that refers to itself.
void ForgetOwnReferences(CPropertyFile& file, const CQelTable& table)
{
    const unsigned long oid = table.Properties().oid;
    for (CQelTable::SQelColumn column : table.Columns()) {
        if (column.type != CQelProperty::eReference || column.refTable != oid)
            continue;
        column.refTable = 0;
        column.refColumn = 0;
        file.ModifyColumn(oid, column);
    }
}

} // namespace

EExit RunAddTable(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    CQelTable table;
    table.Properties().name = Wide(arguments.Text("NAME"));
    RequireValidName(table.Properties().name);
    table.Properties().description = Wide(arguments.Text("--description"));
    for (const std::string& spec : arguments.All("COLUMN"))
        table.Properties().columns.push_back(ParseColumn(spec, names, ValueRulesOf(context)));
    RefuseTwins(table.Columns());
    for (const CQelTable::SQelColumn& column : table.Columns())
        CheckDefault(*file, column, names);
    file->AddTable(table);
    context.Finish(*file);
    context.Out() << table.Properties().oid << '\n';
    return EExit::eDone;
}

EExit RunRenameTable(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable::SData& table = names.Table(context.Arguments().Text("TABLE")).Properties();
    const std::wstring name = Wide(context.Arguments().Text("NEWNAME"));
    RequireValidName(name);
    if (name != table.name) // one of the databases takes this for a name in use
        file->RenameTable(table.oid, name);
    context.Finish(*file);
    return EExit::eDone;
}

EExit RunRemoveTable(CContext& context)
{
    const std::string given = context.Arguments().Text("TABLE");
    std::string what;
    {
        const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
        const CNames names(*file);
        const CQelTable& table = names.Table(given);
        RefuseIfReferredTo(*file, names, table);
        const SStored stored = CountStored(context, *file, table.Properties().oid);
        what = "table " + Quoted(table.Properties().name) + " with " + Counted(stored.records, "record") +
               " and " + Counted(stored.values, "value");
    }
    context.Confirm("remove " + what);
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(given);
    ForgetOwnReferences(*file, table);
    file->RemoveTable(table.Properties().oid);
    context.Finish(*file);
    context.Tell((context.IsDryRun() ? "would remove " : "removed ") + what);
    return EExit::eDone;
}

} // namespace tool
