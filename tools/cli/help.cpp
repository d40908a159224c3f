// help.cpp: lays out the commands' descriptions as help for the screen.
#include "help.h"

#include "commands.h"

#include <algorithm>

namespace tool {
namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kWidestNames = 28;

std::string Spread(const std::string& names)
{
    std::string spread;
    for (const char letter : names)
        spread += letter == ',' ? std::string(", ") : std::string(1, letter);
    return spread;
}

std::string Label(const SOption& option)
{
    return Spread(option.names) + (option.value.empty() ? "" : " " + option.value);
}

/// Breaks words to lines that begin at an indentation; the first line is begun already.
std::string Wrap(const std::string& text, std::size_t indentation)
{
    std::string lines;
    std::size_t column = indentation;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t end = std::min(text.find(' ', place), text.size());
        const std::size_t length = end - place;
        if (column > indentation && column + 1 + length > kWidth) {
            lines += '\n' + std::string(indentation, ' ');
            column = indentation;
        } else if (column > indentation) {
            lines += ' ';
            ++column;
        }
        lines += text.substr(place, length);
        column += length;
        place = end + 1;
    }
    return lines;
}

using CLines = std::vector<std::pair<std::string, std::string>>;

std::string Section(const std::string& title, const CLines& lines)
{
    if (lines.empty())
        return {};
    std::size_t widest = 0;
    for (const auto& [label, help] : lines)
        widest = std::max(widest, std::min(label.size(), kWidestNames));
    const std::size_t indentation = widest + 4;
    std::string text = '\n' + title + ":\n";
    for (const auto& [label, help] : lines) {
        text += "  " + label;
        text += label.size() > widest ? '\n' + std::string(indentation, ' ')
                                      : std::string(indentation - 2 - label.size(), ' ');
        text += Wrap(help, indentation) + '\n';
    }
    return text;
}

CLines OptionLines(const std::vector<SOption>& options)
{
    CLines lines;
    for (const SOption& option : options)
        lines.emplace_back(Label(option), option.help);
    return lines;
}

std::string Examples(const std::string& title, const std::vector<SExample>& examples)
{
    std::string text = examples.empty() ? "" : '\n' + title + ":\n";
    for (const SExample& example : examples) {
        text += "  " + example.line + '\n';
        if (!example.help.empty())
            text += "      " + Wrap(example.help, 6) + '\n';
    }
    return text;
}

std::string Paragraphs(const std::string& description)
{
    std::string text;
    for (std::size_t place = 0; place < description.size();) {
        const std::size_t end = std::min(description.find("\n\n", place), description.size());
        text += '\n' + Wrap(description.substr(place, end - place), 0) + '\n';
        place = end + 2;
    }
    return text;
}

} // namespace

std::string ProgramVersion()
{
    return QELPROP_VERSION;
}

std::string Usage(const SCommand& command)
{
    std::string usage = "qelprop " + command.name;
    for (const SPositional& positional : command.positionals) {
        const std::string name = positional.name + (positional.repeats ? "..." : "");
        usage += positional.required ? " " + name : " [" + name + "]";
    }
    return usage + " [OPTIONS]";
}

std::string ProgramHelp()
{
    std::string text = "qelprop - look into property databases, change them, carry data in and out\n";
    text += Examples("First steps", FirstSteps());
    text += "\nUsage: qelprop [OPTIONS] COMMAND FILE [TABLE] [ARGUMENTS]\n\n"
            "FILE is an SQLite database or a legacy store; the program tells which.\n"
            "Tables, columns and records may be given as @OID.\n";
    EGroup group = EGroup::eShell;
    CLines lines;
    for (const SCommand& command : AllCommands()) {
        if (command.group != group) {
            text += Section(GroupTitle(group), lines);
            lines.clear();
            group = command.group;
        }
        lines.emplace_back(command.name, command.summary);
    }
    text += Section(GroupTitle(group), lines);
    text += Section("Options of every command", OptionLines(GlobalOptions()));
    text += Section("Output", OptionLines(OutputOptions()));
    return text + "\n'qelprop COMMAND --help' shows examples first. Exit status: 0 done, 1 failed,\n"
                  "2 usage, 3 not found, 4 refused, 5 faults found.\n";
}

std::string CommandHelp(const SCommand& command)
{
    std::string text = "qelprop " + command.name + " - " + command.summary + '\n';
    text += Examples("Examples", command.examples);
    text += "\nUsage: " + Usage(command) + '\n';
    text += Paragraphs(command.description);
    CLines arguments;
    for (const SPositional& positional : command.positionals)
        arguments.emplace_back(positional.name, positional.help);
    text += Section("Arguments", arguments);
    text += Section("Options", OptionLines(command.options));
    text += Section("Output", OptionLines(OutputOptionsOf(command)));
    return text + Section("Options of every command", OptionLines(GlobalOptions()));
}

} // namespace tool
