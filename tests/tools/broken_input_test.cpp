// broken_input_test.cpp: input that cannot be read to its end, or that no reader should follow to its depth.
#include "exchange/json_elements.h"
#include "exchange/json_value.h"
#include "program_run.h"

#include <gmock/gmock.h>

#include <stdexcept>

using testing::HasSubstr;

namespace qeltest {
namespace {

/// Gives a text, then fails, as a disk does that has gone bad.
class CBreakingBuffer : public std::streambuf
{
public:
    explicit CBreakingBuffer(std::string text) : m_text(std::move(text))
    {
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("broken"); }

private:
    std::string m_text;
};

class BrokenInput : public BothKinds
{
protected:
    /// Exit status and stderr of a run whose standard input breaks behind a text.
    std::string RunBroken(const std::string& text, const std::vector<std::string>& arguments)
    {
        CBreakingBuffer buffer(text);
        std::istream in(&buffer);
        std::ostringstream out;
        std::ostringstream err;
        const int exit = tool::RunProgram(arguments, {in, out, err});
        return std::to_string(exit) + " " + err.str();
    }
};

// What was read until then would pass for the whole file.
TEST_P(BrokenInput, IsNeverTakenForItsEnd)
{
    const std::string db = program.File(L"cars.db").u8string();
    const std::string before = Out("dump cars.db");
    const std::pair<const char*, const char*> formats[] = {{"--csv", "Name\nFiat\n"},
                                                           {"--tsv", "Name\nFiat\n"},
                                                           {"--jsonl", "{\"Name\":\"Fiat\"}\n"},
                                                           {"--json", "[{\"Name\":\"Fiat\"}"}};
    for (const auto& [format, text] : formats) {
        const std::string ended = RunBroken(text, {"import", db, "Makers", "-", format});
        EXPECT_EQ(ended.substr(0, 2), "1 ") << format << '\n' << ended;
        EXPECT_THAT(ended, HasSubstr("cannot read on")) << format;
    }
    const std::string loaded = RunBroken(before.substr(0, before.rfind("{\"end\"")),
                                         {"load", program.File(L"copy.db").u8string(), "-"});
    EXPECT_THAT(loaded, HasSubstr("cannot read on; nothing was loaded"));
    EXPECT_EQ(loaded.substr(0, 2), "1 ");
    EXPECT_EQ(Out("dump cars.db"), before);
    EXPECT_EQ(program.Names(), "cars.db");
}

INSTANTIATE_TEST_SUITE_P(Of, BrokenInput, testing::Values("sqlite", "legacy"), KindName);

TEST(DeepJson, IsRefusedInsteadOfFollowed)
{
    constexpr std::size_t kDeep = 200000;
    const std::string deep = std::string(kDeep, '[') + std::string(kDeep, ']');
    nlohmann::json json;
    std::string error;
    EXPECT_FALSE(tool::ParseJson("{\"Name\":" + deep + "}", json, error));
    EXPECT_EQ(error, "brackets stand in each other more than 100 deep");
    EXPECT_TRUE(tool::ParseJson(std::string(100, '[') + std::string(100, ']'), json, error));
}

TEST(LongJson, OfAnOpenQuoteIsNotGatheredToTheEnd)
{
    std::istringstream in("[{\"a\":\"" + std::string(5000, 'x'));
    tool::CJsonElements elements(in, 1024);
    std::string text;
    unsigned long long line = 0;
    try {
        elements.Next(text, line);
        FAIL() << "an element was read";
    } catch (const tool::SFailure& failure) {
        EXPECT_EQ(failure.message, "an object of over 1.0 KiB");
        EXPECT_LT(text.size(), 1100U);
    }
}

} // namespace
} // namespace qeltest
