// parser.cpp: makes a CLI11 parser out of the commands' descriptions and reads its results.
#include "parser.h"

#include "adaptor/text.h"
#include "commands.h"
#include "help.h"
#include "suggestion.h"
#include "word_list.h"

#include <CLI/CLI.hpp>
#include <qellib4/qellib4.h>
#include <qelplat4/native_path.h>

#include <algorithm>

namespace tool {
namespace {

/// Options by key, bound to what the parser found for them.
using CBound = std::vector<std::pair<std::string, CLI::Option*>>;

bool Ignore(const CLI::results_t&)
{
    return true;
}

void AddOption(CLI::App& parser, const SOption& option, CBound& bound)
{
    CLI::Option* added = nullptr;
    if (option.value.empty()) {
        added = parser.add_flag(option.names);
    } else {
        added = parser.add_option(option.names, CLI::callback_t(Ignore));
        added->expected(1)->allow_extra_args(false);
        added->multi_option_policy(option.repeats ? CLI::MultiOptionPolicy::TakeAll
                                                  : CLI::MultiOptionPolicy::TakeLast);
    }
    bound.emplace_back(option.Key(), added);
}

void AddPositional(CLI::App& parser, const SPositional& positional, CBound& bound)
{
    CLI::Option* added = parser.add_option(positional.name, CLI::callback_t(Ignore));
    if (positional.repeats)
        added->expected(0, CLI::detail::expected_max_vector_size)->allow_extra_args();
    bound.emplace_back(positional.name, added);
}

bool IsAmong(const SOption& option, const std::vector<SOption>& others)
{
    return std::any_of(others.begin(), others.end(),
                       [&](const SOption& other) { return other.Key() == option.Key(); });
}

void AddSharedOptions(CLI::App& parser, const std::vector<SOption>& own, CBound& bound)
{
    for (const std::vector<SOption>* options : {&GlobalOptions(), &OutputOptions()}) {
        for (const SOption& option : *options) {
            if (!IsAmong(option, own))
                AddOption(parser, option, bound);
        }
    }
}

void Prepare(CLI::App& parser)
{
    parser.set_help_flag();
    parser.allow_windows_style_options(false);
}

void Parse(CLI::App& parser, std::vector<std::string> arguments)
{
    std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the end
    try {
        parser.parse(arguments);
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string message = error.what();
        throw UsageFailure(message.substr(0, message.find(':')) + ": no value given");
    } catch (const CLI::ParseError& error) {
        throw UsageFailure(error.what());
    }
}

std::vector<SOption> EveryOption(const SCommand* command)
{
    std::vector<SOption> options;
    if (command != nullptr)
        options = command->options;
    options.insert(options.end(), GlobalOptions().begin(), GlobalOptions().end());
    options.insert(options.end(), OutputOptions().begin(), OutputOptions().end());
    return options;
}

[[noreturn]] void RefuseOption(const std::string& given, const SCommand* command)
{
    std::vector<std::string> known;
    for (const SOption& option : EveryOption(command))
        known.push_back(option.Key());
    const std::string name = given.substr(0, given.find('='));
    std::string hint = Suggestion(name, known);
    if (hint.empty() && command != nullptr)
        hint = "'qelprop " + command->name + " --help' lists its options";
    throw UsageFailure("unknown option '" + name + "'", hint);
}

[[noreturn]] void RefuseChoice(const SOption& option, const std::string& value)
{
    std::string list;
    for (const std::string& choice : option.choices)
        AddWord(list, choice, ", ");
    throw UsageFailure(option.Key() + ": '" + value + "' is none of " + list,
                       Suggestion(value, option.choices));
}

void CheckChoices(const SInvocation& invocation)
{
    for (const SOption& option : EveryOption(invocation.command)) {
        if (option.choices.empty() || !invocation.arguments.Has(option.Key()))
            continue;
        const std::string value = invocation.arguments.Text(option.Key());
        if (std::find(option.choices.begin(), option.choices.end(), value) == option.choices.end())
            RefuseChoice(option, value);
    }
}

/// "qelprop set cars.db Cars Price=3" has forgotten the record, and would be told that it lacks a value.
void CheckRecordIsNamed(const SInvocation& invocation)
{
    const std::string record = invocation.arguments.Text("RECORD");
    if (record.find('=') != std::string::npos)
        throw UsageFailure("'" + record + "' is no record", Usage(*invocation.command));
}

void CheckPlaces(const SInvocation& invocation, const std::vector<std::string>& extras)
{
    CheckRecordIsNamed(invocation);
    for (const std::string& extra : extras) {
        if (extra == "--")
            continue;
        if (extra.size() > 1 && extra[0] == '-')
            RefuseOption(extra, invocation.command);
        throw UsageFailure("too many arguments: '" + extra + "'",
                           "'qelprop " + invocation.command->name + " --help' shows what it takes");
    }
    for (const SPositional& positional : invocation.command->positionals) {
        if (positional.required && !invocation.arguments.Has(positional.name))
            throw UsageFailure(invocation.command->name + ": no " + positional.name + " given",
                               "'qelprop " + invocation.command->name + " --help' shows what it takes");
    }
}

/// Of two values for one thing, one would go unheard. Options of every command may stand in an alias and be
/// given again.
void CheckTwice(const SInvocation& invocation)
{
    std::vector<SOption> options = invocation.command->options;
    options.insert(options.end(), OutputOptions().begin(), OutputOptions().end());
    for (const SOption& option : options) {
        if (!option.repeats && !option.value.empty() && invocation.arguments.All(option.Key()).size() > 1)
            throw UsageFailure(option.Key() + " is given twice");
    }
    std::string format;
    for (const char* key : {"--as", "--csv", "--tsv", "--json", "--jsonl"}) {
        if (!invocation.arguments.Has(key))
            continue;
        if (!format.empty())
            throw UsageFailure(format + " and " + key + ": one format can be asked for");
        format = key;
    }
}

/// An option without effect would let the user believe that it had one. --json also says how errors look.
void CheckOutputOptions(const SInvocation& invocation)
{
    const std::vector<SOption> heeded = OutputOptionsOf(*invocation.command);
    for (const SOption& option : OutputOptions()) {
        const std::string key = option.Key();
        if (!IsAmong(option, heeded) && key != "--json" && invocation.arguments.Has(key))
            throw UsageFailure(invocation.command->name + ": " + key + " means nothing here");
    }
}

CArguments Found(const CBound& bound)
{
    CArguments arguments;
    for (const auto& [key, option] : bound) {
        if (option->count() > 0)
            arguments.Set(key, option->results());
    }
    return arguments;
}

/// Reads the options before the command. @return the command and all that follows it
std::vector<std::string> ReadUpToCommand(const std::vector<std::string>& arguments, CArguments& found)
{
    CLI::App parser;
    Prepare(parser);
    parser.prefix_command();
    CBound bound;
    AddSharedOptions(parser, {}, bound);
    Parse(parser, arguments);
    found = Found(bound);
    return parser.remaining();
}

/// "qelprop cars.db list" is what those would type who know other programs.
std::string SwappedHint(const std::string& name, const std::vector<std::string>& unread)
{
    std::error_code error;
    const bool isFile = std::filesystem::exists(qel::NativePath(Wide(name)), error);
    const bool swapped = unread.size() > 1 && FindCommand(unread[1]) != nullptr;
    if (!isFile && !swapped)
        return "'qelprop --help' lists them";
    return "the command comes first: qelprop " + (swapped ? unread[1] : "COMMAND") + " " + name;
}

const SCommand& CommandNamed(const std::vector<std::string>& unread)
{
    const std::string& name = unread.front();
    if (const SCommand* command = FindCommand(name))
        return *command;
    if (name.size() > 1 && name[0] == '-')
        RefuseOption(name, nullptr);
    if (name == "help")
        throw UsageFailure("no command 'help'",
                           "qelprop " + (unread.size() > 1 ? unread[1] + " " : std::string()) + "--help");
    std::vector<std::string> known;
    for (const SCommand& command : AllCommands())
        known.push_back(command.name);
    std::string hint = Suggestion(name, known);
    throw UsageFailure("no command '" + name + "'", hint.empty() ? SwappedHint(name, unread) : hint);
}

} // namespace

SInvocation ParseCommandLine(const std::vector<std::string>& arguments)
{
    SInvocation invocation;
    std::vector<std::string> unread = ReadUpToCommand(arguments, invocation.arguments);
    if (!unread.empty() && unread.front() == "--") // no option follows; the command does
        unread.erase(unread.begin());
    if (unread.empty())
        return invocation;
    invocation.command = &CommandNamed(unread);

    CLI::App parser;
    Prepare(parser);
    parser.allow_extras();
    CBound bound;
    for (const SPositional& positional : invocation.command->positionals)
        AddPositional(parser, positional, bound);
    for (const SOption& option : invocation.command->options)
        AddOption(parser, option, bound);
    AddSharedOptions(parser, invocation.command->options, bound);
    std::vector<std::string> rest(arguments);
    rest.erase(rest.end() - static_cast<std::ptrdiff_t>(unread.size()));
    Parse(parser, rest);
    invocation.arguments = Found(bound);
    if (!invocation.arguments.Has("--help")) {
        CheckPlaces(invocation, parser.remaining());
        CheckChoices(invocation);
        CheckOutputOptions(invocation);
        CheckTwice(invocation);
    }
    return invocation;
}

} // namespace tool
