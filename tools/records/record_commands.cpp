// record_commands.cpp: the descriptions of the commands that change records.
#include "cli/commands.h"
#include "records.h"

namespace tool {
namespace {

constexpr const char* kAssignments =
    "A value is NAME=VALUE; names may hold '=', the longest that fits wins. 'null' is Null where the column "
    "is no text. NAME@=FILE takes all of a file: bytes, or text in UTF-8 with its line ends. A reference is "
    "the oid of a record, @3, and the record must be there.\n\n"
    "Dates are 2024-02-29, times 13:05:09, both 2024-02-29T13:05:09, amounts 12.50 or 12.50 EUR; with "
    "--locale they are written as the locale has it.";

SPositional Assignments(bool required)
{
    return {"NAME=VALUE", "the value of a column", required, true, ENames::eAssignment};
}

SOption NullText()
{
    return {"--null-text", "TEXT", "this text means Null, in text columns, too"};
}

SCommand Add()
{
    return {"add",
            EGroup::eRecords,
            "add a record",
            std::string("Prints the new oid alone. Columns that are not named take their defaults.\n\n") +
                kAssignments,
            {FileArgument(), TableArgument(), Assignments(false)},
            {{"--oid", "OID", "under this oid, which must be free"},
             {"--no-defaults", "", "Null in columns that are not named"},
             NullText(),
             DryRunOption()},
            {{"qelprop add cars.db Cars Model=Duett Price=1200 Bought=1961-05-02 Maker=@3",
              "prints the new oid alone"}},
            false,
            RunAdd};
}

SCommand Set()
{
    return {"set",
            EGroup::eRecords,
            "change values of a record",
            std::string("Columns that are not named keep their values.\n\n") + kAssignments,
            {FileArgument(), TableArgument(), {"RECORD", "a record, as @OID"}, Assignments(true)},
            {NullText(), DryRunOption()},
            {{"qelprop set cars.db Cars @7 Price=null Fast=true",
              "'null' only where the type is no text; --null-text else"},
             {"qelprop set cars.db Cars @7 Photo@=photo.jpg", "the bytes of a file"}},
            false,
            RunSet};
}

SCommand Remove()
{
    return {
        "remove",
        EGroup::eRecords,
        "remove records",
        "Says how many values go, and asks. All records that are named go, or none; of a range those that "
        "are there. What refers to them stays, and dangles then; 'check' finds it.",
        {FileArgument(), TableArgument(), RecordListArgument()},
        {YesOption(), DryRunOption()},
        {{"qelprop remove cars.db Cars @7 @8 --yes", ""}},
        false,
        RunRemove};
}

} // namespace

std::vector<SCommand> RecordCommands()
{
    return {Add(), Set(), Remove()};
}

} // namespace tool
