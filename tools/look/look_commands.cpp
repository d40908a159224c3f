// look_commands.cpp: the descriptions of the commands that look.
#include "cli/commands.h"
#include "look.h"

namespace tool {
namespace {

const SOption kColumns = {
    "--columns", "LIST", "these columns alone, in this order: Model,Price; @oid is the record's",
    {},          false,  ENames::eColumnList};

SCommand Info()
{
    return {
        "info",
        EGroup::eLook,
        "kind, tables, records and bytes of a file",
        "Tells what kind of database the file is, what it holds, how many of its bytes 'compact' would give "
        "back, and whether it can be written to.",
        {FileArgument()},
        {},
        {{"qelprop info cars.db", ""}},
        true,
        RunInfo};
}

SCommand Tables()
{
    return {"tables",
            EGroup::eLook,
            "list the tables",
            "",
            {FileArgument()},
            {},
            {{"qelprop tables cars.db --json", ""}},
            true,
            RunTables};
}

SCommand Schema()
{
    SPositional table = TableArgument();
    table.required = false;
    table.help += "; all of them where none is named";
    return {"schema",
            EGroup::eLook,
            "show columns: names, types, defaults, hints, order",
            "",
            {FileArgument(), table},
            {},
            {{"qelprop schema cars.db Cars", ""}, {"qelprop schema cars.db --json > cars.schema.json", ""}},
            true,
            RunSchema};
}

SCommand List()
{
    return {
        "list",
        EGroup::eLook,
        "list records, sorted by as many columns as you like",
        "Without --sort the records come in the order of their oids, which also parts records whose keys are "
        "alike. Null comes first, last with :desc. Texts stand in the order of their characters' numbers, "
        "whatever the locale: Z before a, and one with a mark above behind z.\n\n"
        "--where looks for one value, to the last bit. For more than that, hand lines of JSON to a program "
        "made for it: qelprop list cars.db Cars --jsonl | jq 'select(.Doors > 2)'. The oids alone go on to "
        "commands that change: --columns @oid -o plain | xargs qelprop remove cars.db Cars --yes.",
        {FileArgument(), TableArgument()},
        With({kColumns,
              {"--sort",
               "KEYS",
               "sort by columns, COLUMN or COLUMN:desc: Maker,Price:desc",
               {},
               false,
               ENames::eColumnList},
              {"--limit", "N", "no more than so many records"},
              {"--offset", "N", "skip so many records first"}},
             FilterOptions()),
        {{"qelprop list cars.db Cars --sort Maker,Price:desc --limit 20", ""},
         {"qelprop list cars.db Cars --columns Model,Price --locale de_DE", ""},
         {"qelprop list cars.db Cars --where Maker=@3 --where Fast=false", ""}},
        true,
        RunList};
}

SCommand Get()
{
    return {
        "get",
        EGroup::eLook,
        "show records by their oids",
        "With --json one record is one object; several, or a range, are an array. Of a range those records "
        "are shown that are there. --blob gives the bytes of one value as they are; 'set ... "
        "Photo@=photo.jpg' puts them in.",
        {FileArgument(), TableArgument(), RecordListArgument()},
        {kColumns, {"--blob", "COLUMN", "the raw bytes of this column alone", {}, false, ENames::eColumn}},
        {{"qelprop get cars.db Cars @7 --json", ""},
         {"qelprop get cars.db Cars 1-3,7 --csv", ""},
         {"qelprop get cars.db Cars @7 --blob Photo -O photo.jpg", "raw bytes"}},
        true,
        RunGet};
}

SCommand Count()
{
    return {"count",
            EGroup::eLook,
            "count the records of a table",
            "Prints the number alone.",
            {FileArgument(), TableArgument()},
            FilterOptions(),
            {{"qelprop count cars.db Cars", ""}, {"qelprop count cars.db Cars --where-null Price", ""}},
            true,
            RunCount};
}

SCommand Values()
{
    return {"values",
            EGroup::eLook,
            "list the different values of a column, with their numbers",
            "Null is one of them.",
            {FileArgument(),
             TableArgument(),
             {"COLUMN", "a column, by name or as @OID", true, false, ENames::eColumn}},
            {},
            {{"qelprop values cars.db Cars Maker", ""}},
            true,
            RunValues};
}

} // namespace

std::vector<SCommand> LookCommands()
{
    return {Info(), Tables(), Schema(), List(), Get(), Count(), Values()};
}

} // namespace tool
