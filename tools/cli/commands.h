// commands.h: every command and every option of the program.
#pragma once

#include "command.h"

namespace tool {

/// Options that every command takes, before or after its name.
const std::vector<SOption>& GlobalOptions();
/// Options that say what is printed, how and where.
const std::vector<SOption>& OutputOptions();
/// Those of them that mean something to a command.
std::vector<SOption> OutputOptionsOf(const SCommand& command);
/// All commands, in the order in which help shows them.
const std::vector<SCommand>& AllCommands();
/// A first database, step by step.
const std::vector<SExample>& FirstSteps();
/// The command of this name; null when there is none.
const SCommand* FindCommand(const std::string& name);
/// "Look", "Define" and so on.
const char* GroupTitle(EGroup group);

/// FILE, as every command but a few begins.
SPositional FileArgument(const std::string& help = "an SQLite database or a legacy store");
/// TABLE, by name or as @OID.
SPositional TableArgument();
/// RECORD..., which CRecordList reads.
SPositional RecordListArgument();
/// --where and --where-null, which CRecordFilter reads.
std::vector<SOption> FilterOptions();
/// A command's own options and others.
std::vector<SOption> With(std::vector<SOption> own, const std::vector<SOption>& others);
/// --dry-run
SOption DryRunOption();
/// --yes
SOption YesOption();

/// Commands by group, each in its own folder.
std::vector<SCommand> LookCommands();
std::vector<SCommand> DefineCommands();
std::vector<SCommand> RecordCommands();
std::vector<SCommand> ExchangeCommands();
std::vector<SCommand> CareCommands();
std::vector<SCommand> ShellCommands();

} // namespace tool
