// load_test.cpp: dumps that were changed on their way, and what load says of them.
#include "program_run.h"

#include "support/row_name.h"

namespace qeltest {
namespace {

struct SChange
{
    const char* name;
    std::string from; ///< a text of the dump
    std::string to;   ///< what stands there instead
    std::string refusal;
};

class ChangedDump : public testing::TestWithParam<SChange>
{
protected:
    std::string Load()
    {
        program.Run("init a.db");
        program.Run("add-table a.db Lamps Name:string");
        program.Run("add a.db Lamps Name=Desk");
        std::string dump = program.Run("dump a.db").out;
        const std::size_t place = dump.find(GetParam().from);
        EXPECT_NE(place, std::string::npos) << dump;
        WriteFile(program.File(L"dump.csv"), dump.replace(place, GetParam().from.size(), GetParam().to));
        const SRun run = program.Run("load b.db dump.csv");
        const std::size_t message = run.err.find("dump.csv:");
        return std::to_string(run.exit) + " " + run.err.substr(std::min(message, run.err.size()));
    }

    CProgram program;
};

TEST_P(ChangedDump, IsRefusedWithItsLine)
{
    EXPECT_EQ(Load(), "4 dump.csv:" + GetParam().refusal + "; nothing was loaded\n");
    EXPECT_EQ(program.Names(), "a.db dump.csv");
}

INSTANTIATE_TEST_SUITE_P(
    Of, ChangedDump,
    testing::Values(
        SChange{"table_oid_beyond_32_bits", R"({"oid":1,"name":"Lamps")",
                R"({"oid":4294967297,"name":"Lamps")",
                "2: this is no table: 'oid': 4294967297 is no whole number from 1 to 4294967295"},
        SChange{"table_oid_below_zero", R"({"oid":1,"name":"Lamps")", R"({"oid":-1,"name":"Lamps")",
                "2: this is no table: 'oid': -1 is no whole number from 1 to 4294967295"},
        SChange{"table_without_oid", R"({"oid":1,"name":"Lamps")", R"({"oid":0,"name":"Lamps")",
                "2: this is no table: 'oid': 0 is no whole number from 1 to 4294967295"},
        SChange{"column_oid_with_a_fraction", R"({"oid":1,"name":"Name")", R"({"oid":1.5,"name":"Name")",
                "2: this is no table: 'oid': 1.5 is no whole number from 0 to 4294967295"},
        SChange{"hint_beyond_32_bits", R"("hint":1)", R"("hint":4294967298)",
                "2: this is no table: 'hint': 4294967298 is no whole number from 0 to 4294967295"},
        SChange{"order_beyond_32_bits", R"("order":0)", R"("order":2147483648)",
                "2: this is no table: 'order': 2147483648 is no whole number from -2147483648 to 2147483647"},
        SChange{"record_of_no_oid", R"({"record":1,)", R"({"record":0,)",
                "3: this is no oid: 0 is no whole number from 1 to 4294967295"},
        SChange{"record_of_another_table", R"("table":1,"values")", R"("table":9,"values")",
                "3: the dump has no table 9"},
        SChange{"number_of_records", R"("records":1)", R"("records":2)",
                "4: the dump holds other numbers of tables and records than its last line says"}),
    SRowName());

} // namespace
} // namespace qeltest
