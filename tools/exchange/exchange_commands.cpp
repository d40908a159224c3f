// exchange_commands.cpp: the descriptions of the commands that carry data in and out.
#include "exchange_commands.h"

#include "cli/commands.h"

namespace tool {
namespace {

SOption SeparatorOption()
{
    return {"--separator", "CHAR", "what parts the values of separated text, such as ';'"};
}

SOption SkipDamagedOption()
{
    return {"--skip-damaged", "",
            "leave out records that cannot be read, with a line for each; exit status 5"};
}

SCommand Import()
{
    return {
        "import",
        EGroup::eExchange,
        "put the records of a file into a table",
        "The format is that of --csv, --tsv, --json or --jsonl, else of the file's name, else CSV. The first "
        "line of separated text names the columns; with --no-header every column follows in display order. "
        "An unquoted nothing is Null, \"\" is the empty text. A currency amount without a symbol has "
        "none.\n\n"
        "Everything is one transaction. The first record that does not fit ends it, and nothing is imported, "
        "unless --on-error skip is given: then each refused record is a line on stderr (the first 20 of "
        "them), and the exit status is 0 all the same. The file of --rejects has a line for each, none if "
        "there was none.\n\n"
        "A record keeps the oid that the file gives it as @oid; one that is there already is written over "
        "only with --key @oid. With a key, columns that the file does not name keep their values. References "
        "to records that are not there are taken, since those may come later; a note counts them, and "
        "'check' lists them.",
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
         {"--map",
          "NAME=COLUMN",
          "take a name in the file for another column; NAME= passes over what stands under it",
          {},
          true},
         SeparatorOption(),
         {"--new-oids", "", "read over the oids in the file"},
         {"--no-defaults", "", "leave columns Null that the file does not name"},
         DryRunOption()},
        {{"qelprop import cars.db Cars cars.csv --on-error skip --rejects bad.csv", ""},
         {"qelprop import cars.db Cars - --jsonl --key Model --dry-run < new.jsonl", ""}},
        false,
        RunImport,
        {"--as", "--csv", "--tsv", "--json", "--jsonl", "--null", "--no-header"}};
}

SCommand Export()
{
    return {
        "export",
        EGroup::eExchange,
        "write the records of a table in a form that import reads",
        "CSV unless another format is asked for. Every value comes back the same; the texts that CSV cannot "
        "carry are refused with a hint to JSON, and what no column of the table could hold with a hint to "
        "dump. 'list --csv' writes the same text, sorted and by the page if you like.",
        {FileArgument(), TableArgument()},
        With({{"--columns",
               "LIST",
               "these columns alone, in this order; @oid is the record's",
               {},
               false,
               ENames::eColumnList},
              SeparatorOption(),
              SkipDamagedOption()},
             FilterOptions()),
        {{"qelprop export cars.db Cars --csv -O cars.csv", ""}},
        true,
        RunExport};
}

SOption FormatOption(const char* absent)
{
    return {"--format",
            "KIND",
            std::string("kind of the new file: sqlite or legacy; ") + absent,
            {"sqlite", "legacy"}};
}

SOption ForceOption()
{
    return {"--force", "", "replace a file that exists"};
}

SCommand Dump()
{
    return {
        "dump",
        EGroup::eExchange,
        "write all tables and records as lines of JSON",
        "Tables first, then records, to the last bit; 'load' makes the database out of it again. A last line "
        "with the numbers of tables and records shows that nothing is missing.",
        {FileArgument()},
        {SkipDamagedOption()},
        {{"qelprop dump cars.db | gzip > cars.jsonl.gz", ""}},
        false,
        RunDump,
        {"--output"}};
}

SCommand Load()
{
    return {
        "load",
        EGroup::eExchange,
        "make a database out of a dump",
        "The new file appears when all of it is written. It is of the kind that was dumped, unless --format "
        "asks for the other. Records keep their oids; tables and columns may get others.",
        {FileArgument("the file to make"),
         {"INPUT", "the dump; standard input where none is named", false, false, ENames::eFile}},
        {FormatOption("that of the dump where none is given"), ForceOption(), DryRunOption()},
        {{"gzip -dc cars.jsonl.gz | qelprop load copy.db", ""}},
        false,
        RunLoad};
}

SCommand Migrate()
{
    return {
        "migrate",
        EGroup::eExchange,
        "copy a database into one of the other kind",
        "Writes a new file, compares both record by record, and gives the new one its name only when they "
        "are alike; differences are listed, and the exit status is 5. The old file stays as it is. Records "
        "keep their oids; tables and columns may get others.",
        {FileArgument(), {"TARGET", "the file to make", true, false, ENames::eFile}},
        {FormatOption("the other kind where none is given"), ForceOption(), DryRunOption()},
        {{"qelprop migrate old.store cars.db --progress auto", ""}},
        false,
        RunMigrate,
        {"--json", "--jsonl", "--output"}};
}

} // namespace

std::vector<SCommand> ExchangeCommands()
{
    return {Import(), Export(), Dump(), Load(), Migrate()};
}

} // namespace tool
