// define_commands.cpp: the descriptions of the commands that define.
#include "cli/commands.h"
#include "define.h"

namespace tool {
namespace {

constexpr const char* kColumnGrammar =
    "A column is NAME:TYPE, with =DEFAULT after it if new records are to have one. TYPE is string, integer, "
    "unsigned, integer64, unsigned64, double, date, time, datetime, boolean, currency, hyperlink, reference "
    "or binary.\n\n"
    "currency:EUR names the currency of the column; reference:Makers.Name the table whose records are "
    "referred to, and the column that stands for them in tables, as '@3 Volvo', the first one where none is "
    "named. text, int, int64, uint64, bool, url and blob are other words for string, integer, integer64, "
    "unsigned64, boolean, hyperlink and binary; unsigned integers hold no number below 0.\n\n"
    "Names hold any characters but the blank and # % ( ) * , - . / : ; < > ? @ [ \\ ] |, and 'a' is not 'A'.";

SPositional ColumnArgument()
{
    return {"COLUMN", "a column, by name or as @OID", true, false, ENames::eColumn};
}

SPositional NewNameArgument()
{
    return {"NEWNAME", "the new name"};
}

SCommand Init()
{
    return {
        "init",
        EGroup::eDefine,
        "make an empty property database",
        "Makes the file, or puts the property tables into an SQLite database that exists; its other tables "
        "stay. A file that holds a property database is refused.",
        {FileArgument("the file to make")},
        {{"--format", "KIND", "sqlite (the default) or legacy", {"sqlite", "legacy"}},
         {"--no-indexes", "", "without the indexes that make large files fast (sqlite)"},
         {"--force", "", "drop the property database that the file holds"},
         DryRunOption()},
        {{"qelprop init cars.db", "empty property database; keeps other tables of the file"},
         {"qelprop init old.store --format legacy", ""}},
        false,
        RunInit};
}

SCommand AddTable()
{
    return {"add-table",
            EGroup::eDefine,
            "add a table, with its first columns if you like",
            std::string("Prints the oid of the new table.\n\n") + kColumnGrammar,
            {FileArgument(),
             {"NAME", "the name of the new table"},
             {"COLUMN", "NAME:TYPE[=DEFAULT]", false, true, ENames::eColumnSpec}},
            {{"--description", "TEXT", "what the table is for"}, DryRunOption()},
            {{"qelprop add-table cars.db Makers --description \"Who builds them\"", ""}},
            false,
            RunAddTable};
}

SCommand RenameTable()
{
    return {"rename-table",
            EGroup::eDefine,
            "give a table another name",
            "",
            {FileArgument(), TableArgument(), NewNameArgument()},
            {DryRunOption()},
            {{"qelprop rename-table cars.db Cars Vehicles", ""}},
            false,
            RunRenameTable};
}

SCommand RemoveTable()
{
    return {
        "remove-table",
        EGroup::eDefine,
        "remove a table with all its records",
        "Says how many records and values go, and asks. Refused while a Reference column of another table "
        "refers to it.",
        {FileArgument(), TableArgument()},
        {YesOption(), DryRunOption()},
        {{"qelprop remove-table cars.db Cars --dry-run", ""}},
        false,
        RunRemoveTable};
}

SCommand AddColumn()
{
    return {
        "add-column",
        EGroup::eDefine,
        "add columns to a table",
        std::string("Prints the oid of each new column. Records that are there have Null in it.\n\n") +
            kColumnGrammar,
        {FileArgument(), TableArgument(), {"COLUMN", "NAME:TYPE[=DEFAULT]", true, true, ENames::eColumnSpec}},
        {{"--description", "TEXT", "what the column is for; for one column"},
         {"--hint", "N", "display hint of the columns; a number that the program keeps for its host"},
         {"--column-format", "TEXT",
          "display format of the columns; a text that the program keeps for its host"},
         DryRunOption()},
        {{"qelprop add-column cars.db Makers Name:string Country:string", ""},
         {"qelprop add-column cars.db Cars Model:string Price:currency:EUR Bought:date Fast:boolean=false",
          ""},
         {"qelprop add-column cars.db Cars Maker:reference:Makers.Name --description \"Builder\"", ""}},
        false,
        RunAddColumn};
}

SCommand ModifyColumn()
{
    return {"modify-column",
            EGroup::eDefine,
            "change the definition of a column",
            "What is not named stays as it is. The type cannot change while the table holds records, nor the "
            "table that a column refers to while a record holds a reference in it.",
            {FileArgument(), TableArgument(), ColumnArgument()},
            {{"--type",
              "TYPE",
              "a type as 'add-column' takes it: double, currency:EUR, reference:Makers.Name",
              {},
              false,
              ENames::eType},
             {"--default", "VALUE", "value of the column in new records"},
             {"--no-default", "", "Null in new records"},
             {"--description", "TEXT", "what the column is for"},
             {"--hint", "N", "display hint; a number that the program keeps for its host"},
             {"--column-format", "TEXT", "display format; a text that the program keeps for its host"},
             {"--currency", "SYMBOL", "currency of new values"},
             DryRunOption()},
            {{"qelprop modify-column cars.db Cars Price --currency SEK --default 1000", ""}},
            false,
            RunModifyColumn};
}

SCommand RenameColumn()
{
    return {"rename-column",
            EGroup::eDefine,
            "give a column another name",
            "",
            {FileArgument(), TableArgument(), ColumnArgument(), NewNameArgument()},
            {DryRunOption()},
            {{"qelprop rename-column cars.db Cars Bought Acquired", ""}},
            false,
            RunRenameColumn};
}

SCommand RemoveColumn()
{
    return {"remove-column",
            EGroup::eDefine,
            "remove a column with its values",
            "Says how many values go, and asks. Refused while a Reference column refers to the column.",
            {FileArgument(), TableArgument(), ColumnArgument()},
            {YesOption(), DryRunOption()},
            {{"qelprop remove-column cars.db Cars Fast --yes", ""}},
            false,
            RunRemoveColumn};
}

SCommand MoveColumn()
{
    return {"move-column",
            EGroup::eDefine,
            "change the display order of columns",
            "",
            {FileArgument(), TableArgument(), ColumnArgument()},
            {{"--first", "", "before all others"},
             {"--last", "", "behind all others"},
             {"--before", "COLUMN", "before this one", {}, false, ENames::eColumn},
             {"--after", "COLUMN", "behind this one", {}, false, ENames::eColumn},
             DryRunOption()},
            {{"qelprop move-column cars.db Cars Maker --first", ""}},
            false,
            RunMoveColumn};
}

} // namespace

std::vector<SCommand> DefineCommands()
{
    return {Init(),         AddTable(),     RenameTable(),  RemoveTable(), AddColumn(),
            ModifyColumn(), RenameColumn(), RemoveColumn(), MoveColumn()};
}

} // namespace tool
