// completion.cpp: writes the commands' descriptions as tables of a bash script.
#include "completion.h"

#include "cli/commands.h"
#include "cli/word_list.h"
#include "exchange/type_name.h"

#include <algorithm>

namespace tool {
namespace {

std::string Spaced(const std::string& names)
{
    std::string spaced = names;
    std::replace(spaced.begin(), spaced.end(), ',', ' ');
    return spaced;
}

std::string OptionNames(const std::vector<SOption>& options)
{
    std::string names;
    for (const SOption& option : options)
        AddWord(names, Spaced(option.names));
    return names;
}

const char* Word(ENames names)
{
    switch (names) {
    case ENames::eFile:
        return "@file";
    case ENames::eTable:
        return "@table";
    case ENames::eColumn:
        return "@column";
    case ENames::eColumnList:
        return "@columns";
    case ENames::eAssignment:
        return "@assignment";
    case ENames::eColumnSpec:
        return "@spec";
    case ENames::eType:
        return "@type";
    case ENames::eText:
        break;
    }
    return "";
}

/// One line of a case: what it answers to a pattern.
std::string CaseLine(const std::string& pattern, const std::string& answer)
{
    return "    " + pattern + ") echo '" + answer + "' ;;\n";
}

/// Lines "KEY-OPTION) what follows it" of a case; key is the command, or "*" for all.
std::string OptionCases(const std::string& command, const std::vector<SOption>& options)
{
    const std::string start = command + "/";
    std::string lines;
    for (const SOption& option : options) {
        if (option.value.empty())
            continue;
        std::string follows = Word(option.completes);
        for (const std::string& choice : option.choices)
            AddWord(follows, choice);
        std::string patterns;
        std::string name;
        for (const char letter : option.names + ",") {
            if (letter != ',') {
                name += letter;
                continue;
            }
            AddWord(patterns, start + name, "|");
            name.clear();
        }
        lines += CaseLine(patterns, follows);
    }
    return lines;
}

std::string PlaceCases(const SCommand& command)
{
    const std::string start = command.name + "/";
    std::string lines;
    std::size_t place = 1;
    for (const SPositional& positional : command.positionals) {
        const std::string number = positional.repeats ? "*" : std::to_string(place);
        std::string words = Word(positional.completes);
        for (const std::string& choice : positional.choices)
            AddWord(words, choice);
        if (!words.empty())
            lines += CaseLine(start + number, words);
        ++place;
    }
    return lines;
}

constexpr const char* kEngine = R"bash(
_qelprop() {
    local words=() cur head= whole command= places=0 file= table= word i last want
    _qelprop_words
    last=$((${#words[@]} - 1))
    cur=${words[last]}
    whole=$cur
    COMPREPLY=()
    for ((i = 1; i < last; i++)); do
        word=${words[i]}
        if [[ $word == -* ]]; then
            _qelprop_takes_value "$command" "$word" && ((i++))
        elif [[ -z $command ]]; then
            command=$word
        else
            ((places++))
            [[ $places -eq 1 ]] && file=${word/#\~/$HOME}
            [[ $places -eq 2 ]] && table=$word
        fi
    done
    if ((i > last)); then
        want=$(_qelprop_value "$command" "${words[last - 1]}")
    elif [[ $cur == --*=* ]]; then
        want=$(_qelprop_value "$command" "${cur%%=*}")
        _qelprop_keep "${cur%%=*}="
    elif [[ $cur == -* ]]; then
        want="$(_qelprop_options "$command") $(_qelprop_options '*')"
    elif [[ -z $command ]]; then
        want=$_qelprop_commands
    else
        want=$(_qelprop_place "$command/$((places + 1))")
    fi
    case $want in
    @file) _qelprop_files ;;
    @table) _qelprop_names tables 2 ;;
    @column) _qelprop_names schema 2 "$table" ;;
    @columns)
        _qelprop_keep "${cur%"${cur##*,}"}"
        _qelprop_names schema 2 "$table"
        [[ @oid != "$cur"* ]] || COMPREPLY+=(@oid)
        ;;
    @assignment) _qelprop_assignment ;;
    @spec) [[ $cur != *:* ]] || { _qelprop_keep "${cur%%:*}:"; _qelprop_reply "$(compgen -W "$_qelprop_types" -- "$cur")"; } ;;
    @type) _qelprop_reply "$(compgen -W "$_qelprop_types" -- "$cur")" ;;
    *) _qelprop_reply "$(compgen -W "$want" -- "$cur")" ;;
    esac
    _qelprop_cut
}

# The words as the program gets them: readline parts them at = : and @ as well.
_qelprop_words() {
    local line=${COMP_LINE:0:COMP_POINT} i rest
    for ((i = 0; i <= COMP_CWORD; i++)); do
        rest=${line#"${line%%[![:blank:]]*}"}
        if ((i == 0)) || [[ $rest != "$line" || -z $line ]]; then
            words+=("${COMP_WORDS[i]}")
        else
            words[${#words[@]} - 1]+=${COMP_WORDS[i]}
        fi
        line=${rest#"${COMP_WORDS[i]}"}
    done
}

# What stands before the part that is completed.
_qelprop_keep() {
    head+=$1
    cur=${cur#"$1"}
}

# Answers replace what stands behind the last character at which readline has parted the word; an @ is one that it
# replaces as well.
_qelprop_cut() {
    local breaks=${COMP_WORDBREAKS//[^=:@]/} parted= i
    [[ -z $breaks ]] || parted=${whole%"${whole##*[$breaks]}"} parted=${parted%@}
    for i in "${!COMPREPLY[@]}"; do
        word=$head${COMPREPLY[i]}
        COMPREPLY[i]=${word#"$parted"}
    done
}

# One answer a line. A here-string, since process substitution needs /dev/fd, which not every system mounts.
_qelprop_reply() {
    COMPREPLY=()
    [[ -z $1 ]] || mapfile -t COMPREPLY <<<"$1"
}

_qelprop_files() {
    compopt -o filenames 2>/dev/null
    _qelprop_reply "$(compgen -f -- "$cur")"
}

# NAME=VALUE, where the value is the user's, and NAME@=FILE.
_qelprop_assignment() {
    if [[ $cur == *@=* ]]; then
        _qelprop_keep "${cur%%@=*}@="
        _qelprop_files
    elif [[ $cur != *=* ]]; then
        compopt -o nospace 2>/dev/null
        _qelprop_names schema 2 "$table"
        COMPREPLY=("${COMPREPLY[@]/%/=}")
    fi
}

_qelprop_takes_value() {
    [[ $2 == *=* ]] && return 1
    [[ " $_qelprop_valued " == *" $1/$2 "* || " $_qelprop_valued " == *" */$2 "* ]]
}

_qelprop_value() {
    local want
    want=$(_qelprop_after "$1/$2")
    [[ -n $want ]] || want=$(_qelprop_after "*/$2")
    echo "$want"
}

# Names are data: no word of them may be expanded by the shell.
_qelprop_names() {
    local name
    while IFS= read -r name; do
        [[ -n $name && $name == "$cur"* ]] && COMPREPLY+=("$(printf %q "$name")")
    done <<<"$(qelprop "$1" "$file" ${3:+"$3"} --as plain 2>/dev/null | cut -f"$2")"
}

complete -F _qelprop qelprop
)bash";

std::string Case(const std::string& function, const std::string& lines)
{
    return function + "() {\n    case $1 in\n" + lines + "    esac\n}\n";
}

/// "COMMAND/OPTION" of every option that takes a value.
std::string ValuedOptions(const std::string& command, const std::vector<SOption>& options)
{
    std::string words;
    for (const SOption& option : options) {
        if (option.value.empty())
            continue;
        std::string names = command + "/" + option.names;
        for (std::size_t comma = names.find(','); comma != std::string::npos; comma = names.find(',', comma))
            names.replace(comma, 1, " " + command + "/");
        AddWord(words, names);
    }
    return words;
}

} // namespace

std::string BashCompletion()
{
    std::string commands;
    std::string options;
    std::string after;
    std::string places;
    std::string valued = ValuedOptions("*", GlobalOptions()) + " " + ValuedOptions("*", OutputOptions());
    for (const SCommand& command : AllCommands()) {
        AddWord(commands, command.name);
        options += CaseLine(command.name, OptionNames(command.options));
        after += OptionCases(command.name, command.options);
        places += PlaceCases(command);
        const std::string own = ValuedOptions(command.name, command.options);
        if (!own.empty())
            AddWord(valued, own);
    }
    std::string types;
    for (const std::string& type : TypeNames())
        AddWord(types, type);
    options += CaseLine("'*'", OptionNames(GlobalOptions()) + " " + OptionNames(OutputOptions()));
    after += OptionCases("\\*", GlobalOptions()) + OptionCases("\\*", OutputOptions());
    return "# bash completion for qelprop; made by 'qelprop completion bash'\n"
           "_qelprop_commands='" +
           commands + "'\n_qelprop_types='" + types + "'\n_qelprop_valued='" + valued + "'\n" +
           Case("_qelprop_options", options) + Case("_qelprop_after", after) +
           Case("_qelprop_place", places) + kEngine;
}

EExit RunCompletion(CContext& context)
{
    const std::string shell = context.Arguments().Text("SHELL");
    if (shell != "bash")
        throw UsageFailure("no completion for " + shell, "there is one for bash");
    context.Out() << BashCompletion();
    return EExit::eDone;
}

} // namespace tool
