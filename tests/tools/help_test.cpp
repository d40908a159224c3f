// help_test.cpp: help, man page and completion, all made of one description.
#include "cli/commands.h"
#include "cli/help.h"
#include "cli/man_page.h"
#include "program_run.h"
#include "shell/completion.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace qeltest {
namespace {

std::string WithoutMasks(std::string roff)
{
    for (const auto& [mask, text] : {std::pair{"\\-", "-"}, {"\\(aq", "'"}, {"\\e", "\\"}, {"\\&", ""}}) {
        const std::string masked = mask;
        for (std::size_t at = roff.find(masked); at != std::string::npos; at = roff.find(masked, at + 1))
            roff.replace(at, masked.size(), text);
    }
    return roff;
}

TEST(Help, ListsEveryCommandUnderItsGroup)
{
    const std::string help = tool::ProgramHelp();
    for (const tool::SCommand& command : tool::AllCommands())
        EXPECT_THAT(help, HasSubstr("\n  " + command.name + " ")) << command.name;
    EXPECT_LT(help.find("\nLook:"), help.find("\nDefine:"));
}

TEST(Help, ShowsExamplesBeforeOptions)
{
    for (const tool::SCommand& command : tool::AllCommands()) {
        const std::string help = tool::CommandHelp(command);
        EXPECT_LT(help.find("\nExamples:\n"), help.find("\nUsage: ")) << command.name;
        for (const tool::SOption& option : command.options)
            EXPECT_THAT(help, HasSubstr(option.Key())) << command.name;
    }
}

TEST(Help, KeepsItsTextWithinEightyColumns)
{
    std::istringstream help(tool::ProgramHelp());
    for (std::string line; std::getline(help, line);)
        EXPECT_TRUE(line.size() <= 80 || line.rfind("  qelprop ", 0) == 0)
            << line; // an invocation is not broken
}

TEST(Help, IsPrintedForTheProgramAndForACommand)
{
    CProgram program;
    EXPECT_EQ(program.Run("--help").out, tool::ProgramHelp());
    EXPECT_EQ(program.Run("count -h").out, tool::CommandHelp(*tool::FindCommand("count")));
    EXPECT_EQ(program.Run("--version").out, "qelprop " + tool::ProgramVersion() + "\n");
}

TEST(ManPage, HoldsEveryCommandOptionAndExample)
{
    const std::string page = WithoutMasks(tool::ManPage());
    for (const tool::SCommand& command : tool::AllCommands()) {
        EXPECT_THAT(page, HasSubstr("\n.SS " + command.name + "\n"));
        for (const tool::SExample& example : command.examples)
            EXPECT_THAT(page, HasSubstr("\n.EX\n" + example.line + "\n.EE\n"));
        for (const tool::SOption& option : command.options)
            EXPECT_THAT(page, HasSubstr(option.Key()));
    }
}

TEST(ManPage, NamesEnvironmentFilesAndExitStatus)
{
    const std::string page = WithoutMasks(tool::ManPage());
    for (const char* section : {"LOOK", "EXIT STATUS", "ENVIRONMENT", "FILES", "SEE ALSO"})
        EXPECT_THAT(page, HasSubstr("\n.SH " + std::string(section) + "\n"));
    EXPECT_THAT(page, HasSubstr("\n.TP\nNO_COLOR\n"));
    EXPECT_THAT(page, HasSubstr("\n.TP\nFILE-journal\n"));
    EXPECT_THAT(page, HasSubstr("\n.TP\n130\ninterrupted; nothing was saved\n"));
}

TEST(ManPage, IsPrintedByAnOptionThatHelpNames)
{
    CProgram program;
    EXPECT_EQ(program.Run("--man").out, tool::ManPage());
    EXPECT_THAT(tool::ProgramHelp(), HasSubstr("\n  --man "));
}

TEST(ManPage, HasNoLineThatTextTurnedIntoARequest)
{
    std::istringstream page(tool::ManPage());
    const std::set<std::string> requests = {".TH", ".SH", ".SS", ".PP", ".TP",
                                            ".B",  ".EX", ".EE", ".RS", ".RE"};
    for (std::string line; std::getline(page, line);) {
        EXPECT_NE(line[0], '\'') << line;
        const std::string request = line.substr(0, line.find(' '));
        EXPECT_TRUE(line[0] != '.' || requests.count(request) == 1) << line;
    }
}

TEST(Completion, KnowsEveryCommandAndItsOptions)
{
    const std::string script = tool::BashCompletion();
    for (const tool::SCommand& command : tool::AllCommands()) {
        EXPECT_THAT(script, HasSubstr("\n    " + command.name + ") echo '"));
        for (const tool::SOption& option : command.options)
            EXPECT_THAT(script, HasSubstr(option.Key()));
    }
}

TEST(Completion, IsForBashAlone)
{
    CProgram program;
    EXPECT_EQ(program.Run("completion fish").exit, 2);
    EXPECT_EQ(program.Run("completion bash").out, tool::BashCompletion());
}

} // namespace
} // namespace qeltest
