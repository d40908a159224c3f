// exchange_commands.cpp: the descriptions of the commands that carry data in and out.
#include "exchange_commands.h"

#include "cli/commands.h"

namespace tool {
namespace {

SCommand Import()
{
    return {
        "import",
        EGroup::eExchange,
        "put the records of a file into a table",
        "The format is that of --csv, --tsv, --json or --jsonl, else of the file's name, else CSV. The first "
        "line of separated text names the columns; with --no-header every column follows in display order. "
        "An "
        "unquoted nothing is Null, \"\" is the empty text. A currency amount without a symbol has none.\n\n"
        "Everything is one transaction. The first record that does not fit ends it, and nothing is imported, "
        "unless --on-error skip is given.\n\n"
        "A record keeps the oid that the file gives it as @oid; one that is there already is written over "
        "only with --key @oid. With a key, columns that the file does not name keep their values.",
        {FileArgument(),
         TableArgument(),
         {"INPUT", "the file to read; - for standard input", true, false, ENames::eFile}},
        {{"--key",
          "COLUMN",
          "write over the record with the same value there; @oid for the oid",
          {},
          false,
          ENames::eColumn},
         {"--on-error", "WHAT", "at a record that does not fit: stop or skip", {"stop", "skip"}},
         {"--rejects", "FILE", "with skip, write refused records to a file", {}, false, ENames::eFile},
         {"--map", "NAME=COLUMN", "take a name in the file for another column", {}, true},
         {"--new-oids", "", "read over the oids in the file"},
         {"--no-defaults", "", "leave columns Null that the file does not name"},
         DryRunOption()},
        {{"qelprop import cars.db Cars cars.csv --on-error skip --rejects bad.csv", ""},
         {"qelprop import cars.db Cars - --jsonl --key Model --dry-run < new.jsonl", ""}},
        false,
        RunImport};
}

SCommand Export()
{
    return {
        "export",
        EGroup::eExchange,
        "write the records of a table in a form that import reads",
        "CSV unless another format is asked for. Every value comes back the same; the texts that CSV cannot "
        "carry are refused with a hint to JSON, and what no column of the table could hold with a hint to "
        "dump.",
        {FileArgument(), TableArgument()},
        {{"--columns",
          "LIST",
          "these columns alone, in this order; @oid is the record's",
          {},
          false,
          ENames::eColumn}},
        {{"qelprop export cars.db Cars --csv -O cars.csv", ""}},
        true,
        RunExport};
}

} // namespace

std::vector<SCommand> ExchangeCommands()
{
    return {Import(), Export()};
}

} // namespace tool
