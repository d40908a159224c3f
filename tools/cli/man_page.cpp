// man_page.cpp: lays out the commands' descriptions as a manual page.
#include "man_page.h"

#include "commands.h"
#include "help.h"

namespace tool {
namespace {

/// Text as roff takes it: what it would read as a command or an escape is masked.
std::string Masked(const std::string& text)
{
    std::string masked;
    for (const char letter : text) {
        const bool first = masked.empty() || masked.back() == '\n';
        if (first && (letter == '.' || letter == '\''))
            masked += "\\&";
        if (letter == '\\')
            masked += "\\e";
        else if (letter == '-')
            masked += "\\-";
        else if (letter == '\'')
            masked += "\\(aq";
        else
            masked += letter;
    }
    return masked;
}

std::string OptionEntries(const std::vector<SOption>& options)
{
    std::string text;
    for (const SOption& option : options) {
        std::string names;
        for (const char letter : option.names)
            names += letter == ',' ? std::string("\\fR, \\fB") : Masked(std::string(1, letter));
        text += ".TP\n\\fB" + names + "\\fR";
        if (!option.value.empty())
            text += " \\fI" + Masked(option.value) + "\\fR";
        text += '\n' + Masked(option.help) + '\n';
    }
    return text;
}

std::string Paragraphs(const std::string& description)
{
    std::string text;
    for (std::size_t place = 0; place < description.size();) {
        const std::size_t end = std::min(description.find("\n\n", place), description.size());
        text += ".PP\n" + Masked(description.substr(place, end - place)) + '\n';
        place = end + 2;
    }
    return text;
}

std::string Examples(const std::vector<SExample>& examples)
{
    std::string text;
    for (const SExample& example : examples) {
        text += ".PP\n.EX\n" + Masked(example.line) + "\n.EE\n";
        if (!example.help.empty())
            text += ".RS\n" + Masked(example.help) + "\n.RE\n";
    }
    return text;
}

std::string CommandEntry(const SCommand& command)
{
    std::string text = ".SS " + Masked(command.name) + '\n' + Masked(command.summary) + '\n';
    text += ".PP\n.B " + Masked(Usage(command)) + '\n';
    text += Examples(command.examples);
    text += Paragraphs(command.description);
    for (const SPositional& positional : command.positionals)
        text += ".TP\n\\fI" + Masked(positional.name) + "\\fR\n" + Masked(positional.help) + '\n';
    return text + OptionEntries(command.options);
}

/// How values are written in arguments and in files that are exchanged.
std::string ValuesAsText()
{
    const std::pair<const char*, const char*> forms[] = {
        {"Null",
         "'null' in an argument where the column is no text; in CSV nothing between the separators, in "
         "JSON null; a dot in mid-height in a table"},
        {"the empty text", "nothing behind the '=' of an argument; \"\" in CSV and JSON"},
        {"integers, references", "digits, all 64 bits; a reference also @7, the oid of a record"},
        {"double", "1200.5, 1e-300, nan, inf; always with a full stop"},
        {"boolean", "true or false"},
        {"date, time, datetime", "2024-02-29, 13:05:09, 2024-02-29T13:05:09; ole:45000.1234 where the number "
                                 "held is no calendar date"},
        {"currency", "12.50 or 12.5000 EUR; in JSON {\"amount\":\"12.5000\",\"symbol\":\"EUR\"}"},
        {"binary", "base64; in JSON {\"$base64\":true,\"encoded\":\"...\"}; NAME@=FILE takes a file's bytes"},
    };
    std::string text = ".SH VALUES AS TEXT\n"
                       "Tables are for people and follow the user's regional settings. All else is the same\n"
                       "everywhere, unless \\fB\\-\\-locale\\fR asks for the rules of a locale.\n";
    for (const auto& [what, form] : forms)
        text += ".TP\n" + Masked(what) + '\n' + Masked(form) + '\n';
    return text;
}

constexpr const char* kExitStatus =
    ".SH EXIT STATUS\n"
    ".TP\n0\ndone\n"
    ".TP\n1\nfailed: input or output, busy, read\\-only, full, engine\n"
    ".TP\n2\nusage: the command line itself\n"
    ".TP\n3\nnot found: file, table, column or record\n"
    ".TP\n4\nrefused: name, duplicate, limit, type, bad value; nothing was written\n"
    ".TP\n5\nfaults found in the data\n"
    ".TP\n130\ninterrupted; nothing was saved\n"
    ".TP\n141\nwhoever read the output has closed the pipe\n";

} // namespace

std::string ManPage()
{
    std::string text = ".TH QELPROP 1 \"\" \"qelprop " + ProgramVersion() + "\" \"User Commands\"\n";
    text += ".SH NAME\nqelprop \\- look into property databases, change them, carry data in and out\n";
    text += ".SH SYNOPSIS\n.B qelprop\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR \\fIFILE\\fR [\\fITABLE\\fR] "
            "[\\fIARGUMENTS\\fR]\n";
    text += ".SH DESCRIPTION\n"
            "\\fIFILE\\fR is an SQLite database or a legacy store; the program tells which.\n"
            "Tables, columns and records may be given as @\\fIOID\\fR.\n"
            "Reading commands never change a file; each writing command is one transaction.\n";
    text += ".SH FIRST STEPS\n" + Examples(FirstSteps());
    EGroup group = EGroup::eShell;
    for (const SCommand& command : AllCommands()) {
        if (command.group != group)
            text += std::string(".SH ") + GroupTitle(command.group) + '\n';
        group = command.group;
        text += CommandEntry(command);
    }
    text += ".SH OPTIONS OF EVERY COMMAND\n" + OptionEntries(GlobalOptions());
    text += ".SH OUTPUT OPTIONS\n" + OptionEntries(OutputOptions());
    text += ValuesAsText();
    return text + kExitStatus;
}

} // namespace tool
