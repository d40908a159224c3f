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

/// A list of terms with what is to be said of each.
std::string Terms(const std::string& title, const std::vector<std::pair<const char*, const char*>>& terms)
{
    std::string text = ".SH " + title + '\n';
    for (const auto& [term, meaning] : terms)
        text += ".TP\n" + Masked(term) + '\n' + Masked(meaning) + '\n';
    return text;
}

std::string Capitals(std::string title)
{
    for (char& letter : title)
        letter = static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
    return title;
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

std::string ExitStatus()
{
    return Terms("EXIT STATUS",
                 {{"0", "done"},
                  {"1", "failed: input or output, busy, read-only, full, engine"},
                  {"2", "usage: the command line itself"},
                  {"3", "not found: file, table, column or record"},
                  {"4", "refused: name, duplicate, limit, type, bad value; nothing was written"},
                  {"5", "faults found in the data"},
                  {"130", "interrupted; nothing was saved"},
                  {"141", "whoever read the output has closed the pipe"}});
}

std::string Environment()
{
    return Terms(
        "ENVIRONMENT",
        {{"LC_ALL, LC_NUMERIC, LC_MONETARY, LC_TIME, LANG",
          "the regional settings that tables follow, in the usual order; no locale need be installed. "
          "--locale goes before them"},
         {"NO_COLOR", "no colours, unless --color always is given"},
         {"TERM", "no colours where it is dumb"}});
}

std::string Files()
{
    return Terms(
        "FILES",
        {{"FILE-journal", "the old content of what a change of FILE overwrites, while it lasts; where a "
                          "change was cut off, it takes FILE back, and must stay beside it until then"},
         {"FILE-wal, FILE-shm",
          "the newest changes of a FILE that is kept in another mode, and their index; they belong to "
          "FILE and go where it goes"},
         {"FILE.NUMBER.part", "a file that is being made; it gets its name when it is complete"}});
}

constexpr const char* kSeeAlso =
    ".SH SEE ALSO\n"
    "The documentation of qelprop4, installed beside the library: README.md, docs/qelprop.md (what the\n"
    "program promises), docs/exchange.md (how values travel), docs/values.md (how values look).\n"
    ".PP\n\\fBsqlite3\\fR(1)\n";

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
            text += ".SH " + Capitals(GroupTitle(command.group)) + '\n';
        group = command.group;
        text += CommandEntry(command);
    }
    text += ".SH OPTIONS OF EVERY COMMAND\n" + OptionEntries(GlobalOptions());
    text += ".SH OUTPUT OPTIONS\n" + OptionEntries(OutputOptions());
    text += ValuesAsText();
    return text + ExitStatus() + Environment() + Files() + kSeeAlso;
}

} // namespace tool
