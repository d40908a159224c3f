// commands.cpp: the list of all commands, and the options that they share.
#include "commands.h"

#include <algorithm>

namespace tool {

const std::vector<SOption>& GlobalOptions()
{
    static const std::vector<SOption> kOptions = {
        {"-h,--help", "", "show help, for a command if one is named"},
        {"--version", "", "show the version"},
        {"--man", "", "print the manual page, in the language of man"},
        {"-q,--quiet", "", "no notes on stderr, errors alone"},
        {"-v,--verbose", "", "the library's log on stderr; twice for every detail", {}, true},
        {"--log", "FILE", "append the library's log to a file", {}, false, ENames::eFile},
        {"--locale", "NAME", "follow the rules of a locale, in exchanged text, too (de_DE)"},
        {"--timeout", "MS", "wait so long for a file that another process holds (0)"},
        {"--color", "WHEN", "colours: auto, never or always", {"auto", "never", "always"}},
        {"--progress", "WHEN", "progress of long work on stderr: auto or never", {"auto", "never"}},
    };
    return kOptions;
}

const std::vector<SOption>& OutputOptions()
{
    static const std::vector<SOption> kOptions = {
        {"-o,--as",
         "FORMAT",
         "table, csv, tsv, json, jsonl or plain",
         {"table", "csv", "tsv", "json", "jsonl", "plain"}},
        {"--csv", "", "the same as -o csv"},
        {"--tsv", "", "the same as -o tsv"},
        {"--json", "", "the same as -o json; errors and notes become JSON, too"},
        {"--jsonl", "", "the same as -o jsonl"},
        {"--null", "TEXT", "what stands for Null"},
        {"--no-header", "", "no line of column names"},
        {"--width", "N", "columns of the screen that a table may take; 0 for any"},
        {"--big-as-text", "", "JSON: 64-bit integers as text, for readers that know doubles alone"},
        {"-O,--output",
         "FILE",
         "write to a file, complete or not at all; - for standard output",
         {},
         false,
         ENames::eFile},
    };
    return kOptions;
}

std::vector<SOption> OutputOptionsOf(const SCommand& command)
{
    std::vector<SOption> options;
    for (const SOption& option : OutputOptions()) {
        const auto& heeds = command.heeds;
        if (command.prints || std::find(heeds.begin(), heeds.end(), option.Key()) != heeds.end())
            options.push_back(option);
    }
    return options;
}

const std::vector<SCommand>& AllCommands()
{
    static const std::vector<SCommand> kCommands = [] {
        std::vector<SCommand> all;
        for (auto* group :
             {LookCommands, DefineCommands, RecordCommands, ExchangeCommands, CareCommands, ShellCommands}) {
            for (SCommand& command : group())
                all.push_back(std::move(command));
        }
        return all;
    }();
    return kCommands;
}

const std::vector<SExample>& FirstSteps()
{
    static const std::vector<SExample> kSteps = {
        {"qelprop init cars.db", "make a database"},
        {"qelprop add-table cars.db Makers Name:string Country:string", "and tables with their columns"},
        {"qelprop add-table cars.db Cars Model:string Price:currency:EUR Maker:reference:Makers.Name", ""},
        {"qelprop add cars.db Makers Name=Volvo Country=Sweden", "put records in; each gets an oid"},
        {"qelprop add cars.db Cars Model=Duett Price=1200 Maker=@1",
         "and refer to others by the oid that was printed"},
        {"qelprop list cars.db Cars", "look at them"},
        {"qelprop export cars.db Cars --csv -O cars.csv", "carry them elsewhere"},
    };
    return kSteps;
}

const SCommand* FindCommand(const std::string& name)
{
    const std::vector<SCommand>& all = AllCommands();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const SCommand& command) { return command.name == name; });
    return found == all.end() ? nullptr : &*found;
}

const char* GroupTitle(EGroup group)
{
    switch (group) {
    case EGroup::eLook:
        return "Look";
    case EGroup::eDefine:
        return "Define";
    case EGroup::eRecords:
        return "Records";
    case EGroup::eExchange:
        return "Exchange";
    case EGroup::eCare:
        return "Care";
    case EGroup::eShell:
        break;
    }
    return "Shell";
}

SPositional FileArgument(const std::string& help)
{
    return {"FILE", help, true, false, ENames::eFile};
}

SPositional TableArgument()
{
    return {"TABLE", "a table, by name or as @OID", true, false, ENames::eTable};
}

SPositional RecordListArgument()
{
    return {"RECORD", "records by their oids: @7, 1-5, or 1-5,9", true, true};
}

std::vector<SOption> FilterOptions()
{
    return {
        {"--where",
         "NAME=VALUE",
         "records with this value alone, as 'set' takes it; all that are given must hold",
         {},
         true,
         ENames::eAssignment},
        {"--where-null", "COLUMN", "records with Null there alone, also in text", {}, true, ENames::eColumn}};
}

std::vector<SOption> With(std::vector<SOption> own, const std::vector<SOption>& others)
{
    own.insert(own.end(), others.begin(), others.end());
    return own;
}

SOption DryRunOption()
{
    return {"--dry-run", "", "do everything but save it"};
}

SOption YesOption()
{
    return {"--yes", "", "do not ask"};
}

} // namespace tool
