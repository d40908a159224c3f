// progress_test.cpp: how far long work has come.
#include "output/amount_text.h"
#include "output/progress.h"

#include "support/row_name.h"

#include <gtest/gtest.h>
#include <qelplat4/terminal.h>

#include <sstream>
#include <thread>

using namespace qeltest;

namespace {

TEST(SizeText, ShowsMultiplesOf1024)
{
    const std::pair<unsigned long long, const char*> cases[] = {
        {0, "0 bytes"},           {1, "1 byte"},           {1023, "1023 bytes"},
        {1024, "1.0 KiB"},        {1536, "1.5 KiB"},       {1048575, "1.0 MiB"},
        {432328704, "412.3 MiB"}, {1ULL << 40, "1.0 TiB"}, {~0ULL, "16.0 EiB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(tool::SizeText(bytes), text) << bytes;
}

TEST(GroupedText, PartsThousands)
{
    const std::pair<unsigned long long, const char*> cases[] = {
        {0, "0"}, {999, "999"}, {1000, "1,000"}, {12034, "12,034"}, {1234567, "1,234,567"}};
    for (const auto& [number, text] : cases)
        EXPECT_EQ(tool::GroupedText(number), text) << number;
}

TEST(Counted, PartsThousandsAndKnowsOne)
{
    EXPECT_EQ(tool::Counted(1, "record"), "1 record");
    EXPECT_EQ(tool::Counted(20000, "record"), "20,000 records");
}

struct SLine
{
    const char* name;
    const char* unit;
    unsigned long long done;
    unsigned long long total;
    double seconds;
    std::size_t columns;
    const char* line;
};

class ProgressLine : public testing::TestWithParam<SLine>
{};

TEST_P(ProgressLine, TellsPartRateAndTimeLeft)
{
    const SLine& row = GetParam();
    EXPECT_EQ(tool::ProgressLine("importing", row.unit, row.done, row.total, row.seconds, row.columns),
              row.line);
}

INSTANTIATE_TEST_SUITE_P(
    Of, ProgressLine,
    testing::Values(SLine{"half", "records", 5000, 10000, 2, 100,
                          "importing [##########..........] 50% 5,000 records, 2,500 records/s, 0:02 left"},
                    SLine{"bytes", "bytes", 1048576, 4194304, 1, 100,
                          "importing [#####...............] 25% 1.0 MiB, 1.0 MiB/s, 0:03 left"},
                    SLine{"all", "records", 10, 10, 1, 100,
                          "importing [####################] 100% 10 records, 10 records/s"},
                    SLine{"more_than_all", "records", 12, 10, 1, 100,
                          "importing [####################] 100% 12 records, 12 records/s"},
                    SLine{"nothing_yet", "records", 0, 10, 1, 100,
                          "importing [....................] 0% 0 records, 0 records/s"},
                    SLine{"no_total", "records", 300, 0, 3, 100, "importing 300 records, 100 records/s"},
                    SLine{"no_time", "records", 10, 20, 0, 100,
                          "importing [##########..........] 50% 10 records, 10,000 records/s, 0:00 left"},
                    SLine{"hours", "records", 1, 7201, 1, 100,
                          "importing [....................] 0% 1 records, 1 records/s, 2:00:00 left"},
                    SLine{"days", "records", 1, 100000000, 1, 100,
                          "importing [....................] 0% 1 records, 1 records/s, 99:59:59 left"},
                    SLine{"shorter_bar", "records", 5000, 10000, 2, 70,
                          "importing [######......] 50% 5,000 records, 2,500 records/s, 0:02 left"},
                    SLine{"narrow_screen", "records", 5000, 10000, 2, 20, "importing [########\u2026"}),
    SRowName());

TEST(ProgressLineOf, ANameIsMeasuredAndShownAsOnAScreen)
{
    EXPECT_EQ(tool::ProgressLine("checking K\u00e4ufer\x1b[2J", "records", 5000, 10000, 2, 20),
              "checking K\u00e4ufer\u241b[2J\u2026");
}

/// A run of the program whose stderr is kept.
class Progress : public testing::Test
{
public:
    ~Progress() override { qel::SetInterrupted(false); }

protected:
    /// What stands on stderr after a step that takes longer than the bar waits.
    std::string Drawn(bool terminal, const tool::CArguments& arguments = {})
    {
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        tool::CContext context({in, out, err, false, false, terminal, 80}, arguments);
        {
            tool::CProgress progress(context, "testing", "records", 4);
            progress.Step(1);
            std::this_thread::sleep_for(std::chrono::milliseconds(120));
            progress.Step(2);
        }
        return err.str();
    }
};

TEST_F(Progress, IsDrawnOnATerminalAndWipedAtTheEnd)
{
    const std::string drawn = Drawn(true);
    EXPECT_EQ(drawn.rfind("\rtesting [##########..........] 50% 2 records, ", 0), 0U) << drawn;
    EXPECT_EQ(drawn.substr(drawn.size() - 7), "\033[K\r\033[K");
}

TEST_F(Progress, IsSilentInAPipe)
{
    EXPECT_EQ(Drawn(false), "");
}

TEST_F(Progress, IsSilentOnRequest)
{
    for (const auto& [key, value] : {std::pair{"--quiet", ""}, std::pair{"--progress", "never"}}) {
        tool::CArguments arguments;
        arguments.Set(key, {value});
        EXPECT_EQ(Drawn(true, arguments), "") << key;
    }
}

TEST_F(Progress, EndsWorkThatTheUserStops)
{
    qel::SetInterrupted(true);
    try {
        Drawn(false);
        FAIL() << "the work went on";
    } catch (const tool::SFailure& failure) {
        EXPECT_EQ(failure.exit, tool::EExit::eInterrupt);
    }
}

} // namespace
