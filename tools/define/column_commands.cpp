// column_commands.cpp: adds, changes, renames, removes and moves columns.
#include "column_spec.h"
#include "define.h"
#include "exchange/neutral_text.h"
#include "exchange/type_name.h"
#include "names/stored_values.h"
#include "output/amount_text.h"
#include "referrers.h"

#include <algorithm>

namespace tool {
namespace {

/// The options that add-column and modify-column share.
void ApplyOptions(const CArguments& arguments, CQelTable::SQelColumn& column)
{
    if (arguments.Has("--description"))
        column.description = Wide(arguments.Text("--description"));
    if (arguments.Has("--hint"))
        column.displayHint = static_cast<unsigned int>(arguments.Number("--hint", 1));
    if (arguments.Has("--column-format"))
        column.format = Wide(arguments.Text("--column-format"));
}

SFailure Refusal(const CQelTable::SQelColumn& column, const std::string& message, const std::string& hint)
{
    return MakeFailure(EExit::eRefused, "column " + Quoted(column.name) + ": " + message, hint);
}

/// A default keeps its meaning when the column's type changes, or the change is refused.
void ConvertDefault(CQelTable::SQelColumn& column)
{
    if (column.defaultValue.IsNull() || column.defaultValue.GetType() == column.type)
        return;
    CQelProperty converted;
    std::string error;
    if (!FromNeutralText(ToNeutralText(column.defaultValue), column.type, converted, error))
        throw Refusal(column, "the default is no " + TypeName(column.type) + ": " + error,
                      "--default VALUE or --no-default replaces it");
    column.defaultValue = converted;
}

void ApplyModifications(CContext& context, const CNames& names, CQelTable::SQelColumn& column)
{
    const CArguments& arguments = context.Arguments();
    ApplyOptions(arguments, column);
    if (arguments.Has("--type"))
        ParseType(arguments.Text("--type"), names, column);
    if (arguments.Has("--currency") && column.type != CQelProperty::eCurrency)
        throw UsageFailure("--currency is for columns of type currency");
    if (arguments.Has("--currency"))
        column.currency = Wide(arguments.Text("--currency"));
    if (arguments.Has("--no-default"))
        column.defaultValue.SetNull();
    if (arguments.Has("--default"))
        column.defaultValue = ParseValue(arguments.Text("--default"), column, ValueRulesOf(context));
    ConvertDefault(column);
}

/// Stored oids would mean records of another table from then on.
void RefuseRetarget(CContext& context, CPropertyFile& file, const CQelTable& table,
                    const CQelTable::SQelColumn& column, const CQelTable::SQelColumn& changed)
{
    const bool both = column.type == CQelProperty::eReference && changed.type == CQelProperty::eReference;
    if (!both || column.refTable == changed.refTable)
        return;
    const CArguments& arguments = context.Arguments();
    if (!column.defaultValue.IsNull() && !arguments.Has("--default") && !arguments.Has("--no-default"))
        throw Refusal(column, "the default is a record of the table referred to until now",
                      "--default VALUE or --no-default replaces it");
    const SStored stored = CountStored(context, file, table.Properties().oid, column.oid);
    if (stored.values == 0)
        return;
    SFailure failure =
        Refusal(column, Counted(stored.values, "value") + " would refer to records of another table",
                "add a column for them, or set the values to null first");
    failure.code = qel::kTypeFixedByRecords;
    throw failure;
}

void RefuseNothingToDo(const CArguments& arguments)
{
    if (arguments.Has("--default") && arguments.Has("--no-default"))
        throw UsageFailure("--default and --no-default: a column has one or none");
    for (const char* option : {"--type", "--default", "--no-default", "--description", "--hint",
                               "--column-format", "--currency"}) {
        if (arguments.Has(option))
            return;
    }
    throw UsageFailure("modify-column: nothing to change",
                       "'qelprop modify-column --help' lists what can be changed");
}

/// Where the column is to stand, counted without it.
unsigned int Destination(const CArguments& arguments, const CNames& names, const CQelTable& table,
                         unsigned long moved)
{
    int given = 0;
    for (const char* option : {"--first", "--last", "--before", "--after"})
        given += arguments.Has(option) ? 1 : 0;
    if (given != 1)
        throw UsageFailure("move-column wants one of --first, --last, --before and --after");
    if (arguments.Has("--first"))
        return 0;
    std::vector<CQelTable::SQelColumn> others = table.Columns();
    others.erase(std::remove_if(others.begin(), others.end(),
                                [=](const CQelTable::SQelColumn& column) { return column.oid == moved; }),
                 others.end());
    if (arguments.Has("--last"))
        return static_cast<unsigned int>(others.size());
    const bool after = arguments.Has("--after");
    const unsigned long neighbour = names.Column(table, arguments.Text(after ? "--after" : "--before")).oid;
    const auto found = std::find_if(others.begin(), others.end(), [=](const CQelTable::SQelColumn& column) {
        return column.oid == neighbour;
    });
    if (found == others.end())
        throw UsageFailure("a column cannot stand beside itself");
    return static_cast<unsigned int>(found - others.begin()) + (after ? 1 : 0);
}

} // namespace

EExit RunAddColumn(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const unsigned long table = names.Table(arguments.Text("TABLE")).Properties().oid;
    std::vector<CQelTable::SQelColumn> columns;
    for (const std::string& spec : arguments.All("COLUMN"))
        columns.push_back(ParseColumn(spec, names, ValueRulesOf(context)));
    if (columns.size() > 1 && arguments.Has("--description"))
        throw UsageFailure("--description is for one column",
                           "add them one by one, or describe them with modify-column");
    RefuseTwins(columns);
    std::vector<unsigned long> oids;
    for (CQelTable::SQelColumn& column : columns) {
        ApplyOptions(arguments, column);
        CheckDefault(*file, column, names);
        oids.push_back(file->AddColumn(table, column));
    }
    context.Finish(*file);
    for (const unsigned long oid : oids)
        context.Out() << oid << '\n';
    return EExit::eDone;
}

EExit RunModifyColumn(CContext& context)
{
    RefuseNothingToDo(context.Arguments());
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const CQelTable::SQelColumn& present = names.Column(table, context.Arguments().Text("COLUMN"));
    CQelTable::SQelColumn column = present;
    ApplyModifications(context, names, column);
    RefuseRetarget(context, *file, table, present, column);
    CheckDefault(*file, column, names);
    file->ModifyColumn(table.Properties().oid, column);
    context.Finish(*file);
    return EExit::eDone;
}

EExit RunRenameColumn(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const CQelTable::SQelColumn& column = names.Column(table, context.Arguments().Text("COLUMN"));
    const std::wstring name = Wide(context.Arguments().Text("NEWNAME"));
    RequireValidName(name);
    if (name != column.name) // both databases take this for a name in use
        file->RenameColumn(table.Properties().oid, column.oid, name);
    context.Finish(*file);
    return EExit::eDone;
}

EExit RunRemoveColumn(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    std::string what;
    {
        const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
        const CNames names(*file);
        const CQelTable& table = names.Table(arguments.Text("TABLE"));
        const CQelTable::SQelColumn& column = names.Column(table, arguments.Text("COLUMN"));
        RefuseIfReferredTo(*file, names, table, column);
        const SStored stored = CountStored(context, *file, table.Properties().oid, column.oid);
        what = "column " + Quoted(column.name) + " with " + Counted(stored.values, "value");
    }
    context.Confirm("remove " + what);
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(arguments.Text("TABLE"));
    const unsigned long column = names.Column(table, arguments.Text("COLUMN")).oid;
    // The removal from a legacy store is done when it returns, so that a dry run cannot undo it.
    if (!context.IsDryRun() || file->Kind() == EKind::eSQLite)
        file->RemoveColumn(table.Properties().oid, column);
    context.Finish(*file);
    context.Tell((context.IsDryRun() ? "would remove " : "removed ") + what);
    return EExit::eDone;
}

EExit RunMoveColumn(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(arguments.Text("TABLE"));
    const unsigned long column = names.Column(table, arguments.Text("COLUMN")).oid;
    file->MoveColumn(table.Properties().oid, column, Destination(arguments, names, table, column));
    context.Finish(*file);
    return EExit::eDone;
}

} // namespace tool
