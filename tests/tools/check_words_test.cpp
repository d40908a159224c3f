// check_words_test.cpp: what check says of a file whose faults the engine finds.
#include "program_run.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace qeltest {
namespace {

TEST(CheckWords, TellEveryFaultOfTheEngineInALineOfItsOwn)
{
    CProgram program;
    ASSERT_EQ(program.Run("init cars.db").exit, 0);
    std::string bytes = ReadFile(program.File(L"cars.db"));
    constexpr std::size_t kFreePages = 39; // last byte of their number in the header
    bytes[kFreePages] = 5;
    WriteFile(program.File(L"cars.db"), bytes);
    const SRun run = program.Run("check cars.db");
    EXPECT_EQ(run.exit, 5);
    EXPECT_THAT(run.out, HasSubstr("reelist"));
    EXPECT_THAT(run.out, Not(HasSubstr("***")));
    EXPECT_THAT(run.out, Not(HasSubstr("\u240a")));
    EXPECT_THAT(run.err, EndsWith("\nhint: 'qelprop dump --skip-damaged' carries out what can be read; "
                                  "a backup may have the rest\n"));
}

} // namespace
} // namespace qeltest
