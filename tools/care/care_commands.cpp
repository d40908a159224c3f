// care_commands.cpp: the descriptions of the commands that look after files.
#include "care.h"
#include "cli/commands.h"

namespace tool {
namespace {

SOption LimitOption()
{
    return {"--limit", "N", "print no more than so many (1000); 0 for all"};
}

SCommand Check()
{
    return {
        "check",
        EGroup::eCare,
        "look for faults in a file",
        "Has the engine test the file, reads every value, and looks at names, display orders, types and "
        "references, and for what belongs to no table or column. Each fault is a line that says where, or "
        "a JSON object; the exit status is 5 if there are any. Nothing is changed.",
        {FileArgument()},
        {LimitOption()},
        {{"qelprop check cars.db --json", ""}},
        false,
        RunCheck,
        {"--as", "--json", "--jsonl", "--output"}};
}

SCommand Compact()
{
    return {
        "compact",
        EGroup::eCare,
        "give back the room that removed records have left",
        "The file is rewritten where it stands, in one step that a failure or an interrupt undoes, so that "
        "its owner, its permissions and the connections of other programs stay. For that time it wants "
        "as much free room as the file has bytes. With --dry-run the result is made elsewhere, measured "
        "and thrown away.",
        {FileArgument()},
        {DryRunOption()},
        {{"qelprop compact cars.db", ""}},
        false,
        RunCompact,
        {"--output"}};
}

SCommand Backup()
{
    return {"backup",
            EGroup::eCare,
            "copy a file while others may use it",
            "The copy is of one moment and appears when it is complete. Other tables of an SQLite file are "
            "copied as well; a legacy store is compacted on the way.",
            {FileArgument(), {"TARGET", "the copy to make", true, false, ENames::eFile}},
            {{"--force", "", "replace a file that exists"}, DryRunOption()},
            {{"qelprop backup cars.db cars-2024-02-29.db && qelprop compare cars.db cars-2024-02-29.db", ""}},
            false,
            RunBackup};
}

SCommand Compare()
{
    return {
        "compare",
        EGroup::eCare,
        "tell whether two files hold the same",
        "Compares tables and columns by name, records by oid and values to the last bit; the files may be "
        "of different kinds. Each difference is a line, or a JSON object; the exit status is 5 if there "
        "are any.",
        {FileArgument(), {"OTHER", "the file to compare with", true, false, ENames::eFile}},
        {LimitOption()},
        {{"qelprop compare old.store cars.db", ""}},
        false,
        RunCompare,
        {"--as", "--json", "--jsonl", "--output"}};
}

} // namespace

std::vector<SCommand> CareCommands()
{
    return {Check(), Compact(), Backup(), Compare()};
}

} // namespace tool
