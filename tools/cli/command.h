// command.h: what one command is; parser, help, man page and completion are all made from this.
#pragma once

#include "adaptor/failure.h"

#include <string>
#include <vector>

namespace tool {

class CContext;

/// What an argument names, so that completion can offer it.
enum class ENames
{
    eText,
    eFile,
    eTable,
    eColumn,
    eColumnList, ///< columns and @oid, parted by commas
    eAssignment, ///< NAME=VALUE or NAME@=FILE
    eColumnSpec, ///< NAME:TYPE
    eType
};

/// An option of one command, or of the whole program.
struct SOption
{
    std::string names; ///< "-o,--as": short ones first; the last is the one that commands ask for
    std::string value; ///< name of its value, "FORMAT"; empty for a flag
    std::string help;  ///< a phrase in lower case, no full stop
    std::vector<std::string> choices = {}; ///< the only values that it takes; empty for any
    bool repeats = false;                  ///< may be given more than once
    ENames completes = ENames::eText;

    /// The name that commands ask for, "--as".
    std::string Key() const { return names.substr(names.rfind(',') + 1); }
};

/// An argument that is known by its place.
struct SPositional
{
    std::string name; ///< "TABLE", the key that commands ask for
    std::string help;
    bool required = true;
    bool repeats = false;
    ENames completes = ENames::eText;
    std::vector<std::string> choices = {}; ///< what completion offers where `completes` says nothing
};

/// An invocation as a person would type it; kept as a test.
struct SExample
{
    std::string line;
    std::string help;
};

/// Groups in the order in which help and man page show them.
enum class EGroup
{
    eLook,
    eDefine,
    eRecords,
    eExchange,
    eCare,
    eShell
};

/// One command of the program.
struct SCommand
{
    std::string name;
    EGroup group = EGroup::eLook;
    std::string summary;     ///< a phrase in lower case, no full stop
    std::string description; ///< sentences; a blank line parts paragraphs
    std::vector<SPositional> positionals;
    std::vector<SOption> options;
    std::vector<SExample> examples;
    bool prints = false; ///< whether the output options (-o, --csv, -O ...) mean something to it
    /// Does the work; failures are thrown as SFailure. @return eDone, or eFaults when that is the answer
    EExit (*run)(CContext& context) = nullptr;
    std::vector<std::string> heeds = {}; ///< where it does not print rows: the output options that it takes
};

} // namespace tool
