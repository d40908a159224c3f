// command_line_test.cpp: what the parser makes of a command line.
#include "cli/commands.h"
#include "cli/parser.h"
#include "cli/suggestion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using tool::ParseCommandLine;
using tool::SFailure;
using tool::SInvocation;

namespace {

using Words = std::vector<std::string>;

SFailure FailureOfLine(const Words& words)
{
    try {
        ParseCommandLine(words);
    } catch (const SFailure& failure) {
        return failure;
    }
    ADD_FAILURE() << "no failure";
    return {};
}

TEST(CommandLine, TakesGlobalOptionsBeforeAndAfterTheCommand)
{
    for (const Words& words : {Words{"-q", "--locale", "de_DE", "count", "a.db", "T"},
                               Words{"count", "-q", "a.db", "--locale=de_DE", "T"}}) {
        const SInvocation invocation = ParseCommandLine(words);
        EXPECT_EQ(invocation.command->name, "count");
        EXPECT_TRUE(invocation.arguments.Has("--quiet"));
        EXPECT_EQ(invocation.arguments.Text("--locale"), "de_DE");
        EXPECT_EQ(invocation.arguments.Text("TABLE"), "T");
    }
}

TEST(CommandLine, TakesATableThatIsNamedLikeACommand)
{
    const SInvocation invocation = ParseCommandLine({"count", "list", "get"});
    EXPECT_EQ(invocation.command->name, "count");
    EXPECT_EQ(invocation.arguments.Text("FILE"), "list");
    EXPECT_EQ(invocation.arguments.Text("TABLE"), "get");
}

TEST(CommandLine, TakesValuesThatLookLikeOptions)
{
    const SInvocation invocation =
        ParseCommandLine({"add", "a.db", "T", "Price=-5", "--null-text", "-", "--", "--x=--y"});
    EXPECT_EQ(invocation.arguments.Text("--null-text"), "-");
    EXPECT_EQ(invocation.arguments.All("NAME=VALUE"), (Words{"Price=-5", "--x=--y"}));
}

TEST(CommandLine, KeepsEmptyValuesApartFromMissingOnes)
{
    const SInvocation invocation = ParseCommandLine({"list", "a.db", "T", "--null", ""});
    EXPECT_TRUE(invocation.arguments.Has("--null"));
    EXPECT_EQ(invocation.arguments.Text("--null", "absent"), "");
}

TEST(CommandLine, TakesTheLastOfAnOptionOfEveryCommand)
{
    EXPECT_EQ(ParseCommandLine({"--locale", "de_DE", "list", "a.db", "T", "--locale", "en_US"})
                  .arguments.Text("--locale"),
              "en_US");
    EXPECT_EQ(ParseCommandLine({"-v", "list", "a.db", "T", "-v"}).arguments.All("--verbose").size(), 2U);
}

TEST(CommandLine, TakesNoOptionBehindTwoDashes)
{
    for (const Words& words : {Words{"--", "list", "a.db", "-T"}, Words{"list", "--", "a.db", "-T"}}) {
        const tool::SInvocation invocation = ParseCommandLine(words);
        EXPECT_EQ(invocation.command->name, "list");
        EXPECT_EQ(invocation.arguments.Text("TABLE"), "-T");
    }
}

TEST(CommandLine, SaysWhatIsWrongWithIt)
{
    struct SCase
    {
        Words words;
        const char* message;
        const char* hint;
    };
    const SCase cases[] = {
        {{"lst"}, "no command 'lst'", "did you mean 'list'?"},
        {{"frobnicate"}, "no command 'frobnicate'", "'qelprop --help' lists them"},
        {{"--jsn", "list"}, "unknown option '--jsn'", "did you mean '--json'?"},
        {{"list", "a.db", "T", "--sorrt", "A"}, "unknown option '--sorrt'", "did you mean '--sort'?"},
        {{"list", "a.db"}, "list: no TABLE given", "'qelprop list --help' shows what it takes"},
        {{"count", "a.db", "T", "x"},
         "too many arguments: 'x'",
         "'qelprop count --help' shows what it takes"},
        {{"list", "a.db", "T", "--limit"}, "--limit: no value given", ""},
        {{"list", "a.db", "T", "-o", "cvs"},
         "--as: 'cvs' is none of table, csv, tsv, json, jsonl, plain",
         "did you mean 'csv'?"},
    };
    for (const SCase& line : cases) {
        const SFailure failure = FailureOfLine(line.words);
        EXPECT_EQ(failure.exit, tool::EExit::eUsage);
        EXPECT_EQ(failure.message, line.message);
        EXPECT_EQ(failure.hint, line.hint);
    }
}

TEST(CommandLine, TakesNumbersInTheirBoundsAlone)
{
    for (const char* text : {"x", "", "-1", "1x", "4294967296", "99999999999999999999"}) {
        const SInvocation invocation = ParseCommandLine({"list", "a.db", "T", "--limit", text});
        EXPECT_THROW(invocation.arguments.Number("--limit", 0), SFailure) << text;
    }
    const SInvocation invocation = ParseCommandLine({"list", "a.db", "T", "--limit", "4294967295"});
    EXPECT_EQ(invocation.arguments.Number("--limit", 0), 4294967295UL);
    EXPECT_EQ(invocation.arguments.Number("--offset", 5), 5UL);
}

TEST(Suggestion, IsTheNearestWordIfOneIsNear)
{
    const Words known = {"Makers", "Cars", "Owners"};
    EXPECT_EQ(tool::Suggestion("Car", known), "did you mean 'Cars'?");
    EXPECT_EQ(tool::Suggestion("cars", known), "did you mean 'Cars'?");
    EXPECT_EQ(tool::Suggestion("Mkaers", known), "did you mean 'Makers'?");
    EXPECT_EQ(tool::Suggestion("Planes", known), "");
    EXPECT_EQ(tool::Suggestion("", known), "");
    EXPECT_EQ(tool::Suggestion(std::string(100000, 'x'), known), "");
}

TEST(Descriptions, NameEachCommandOnceWithAnExampleAndWhatItDoes)
{
    std::set<std::string> seen;
    for (const tool::SCommand& command : tool::AllCommands()) {
        EXPECT_TRUE(seen.insert(command.name).second) << command.name;
        EXPECT_FALSE(command.summary.empty()) << command.name;
        EXPECT_NE(command.run, nullptr) << command.name;
        ASSERT_FALSE(command.examples.empty()) << command.name;
        for (const tool::SExample& example : command.examples)
            EXPECT_THAT(example.line, testing::HasSubstr("qelprop " + command.name));
    }
}

TEST(Descriptions, GiveNoCommandTwoOptionsOfOneName)
{
    for (const tool::SCommand& command : tool::AllCommands()) {
        std::set<std::string> seen;
        for (const tool::SOption& option : command.options)
            EXPECT_TRUE(seen.insert(option.Key()).second) << command.name << ' ' << option.Key();
    }
}

} // namespace
