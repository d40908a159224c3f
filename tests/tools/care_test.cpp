// care_test.cpp: what check finds in damaged files, and what an interrupt or a held file leaves behind.
#include "program_run.h"

#include <gtest/gtest.h>
#include <qelplat4/terminal.h>
#include <qelplat4/utf16.h>
#include <qelsq4/qelsq4.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace qeltest;

namespace {

/// A file with one table, Lamps, of a text and a reference to itself, and one record.
class Care : public testing::Test, protected CKeptRuns
{
public:
    ~Care() override { qel::SetInterrupted(false); }

protected:
    using CKeptRuns::Run;

    Care()
    {
        Run({"init", Path(L"a.db")});
        Run({"add-table", Path(L"a.db"), "Lamps"});
        Run({"add-column", Path(L"a.db"), "Lamps", "Name:string"});
        Run({"add-column", Path(L"a.db"), "Lamps", "Next:reference:Lamps.Name"});
        Run({"add", Path(L"a.db"), "Lamps", "Name=Desk"});
    }

    void Damage(const wchar_t* sql)
    {
        CQelSQLite connection;
        ASSERT_EQ(connection.Open(program.File(L"a.db").wstring()), 0);
        ASSERT_EQ(connection.ExecSQL(sql), 0);
    }
};

struct SDamage
{
    const char* name;
    const wchar_t* sql;
    const char* line;
};

class CareOf : public Care, public testing::WithParamInterface<SDamage>
{};

TEST_P(CareOf, IsFoundAndToldWithItsPlace)
{
    ASSERT_EQ(Run({"check", Path(L"a.db")}), 0) << m_out;
    Damage(GetParam().sql);
    EXPECT_EQ(Run({"check", Path(L"a.db")}), 5);
    EXPECT_EQ(m_out, std::string(GetParam().line) + '\n');
}

std::string RowName(const testing::TestParamInfo<SDamage>& row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Damage, CareOf,
    testing::Values(
        SDamage{"value_cut", L"UPDATE qeltpd SET data = x'0400' WHERE coid = 1",
                "Lamps @1 Name: the stored bytes end early"},
        SDamage{"value_missing", L"UPDATE qeltpd SET data = NULL WHERE coid = 1",
                "Lamps @1 Name: nothing is stored"},
        SDamage{"value_with_tail", L"UPDATE qeltpd SET data = CAST(data || x'00' AS BLOB) WHERE coid = 2",
                "Lamps @1 Next: bytes follow the end of the stored value"},
        SDamage{"value_of_another_type",
                L"UPDATE qeltpd SET data = (SELECT data FROM qeltpd WHERE coid = 1) WHERE coid = 2",
                "Lamps @1 Next: the value is of type string, the column of type reference"},
        SDamage{"value_of_no_table", L"UPDATE qeltpd SET toid = 9 WHERE coid = 1",
                "value of record @1, table @9, column @1: the table is not there"},
        SDamage{"value_of_no_column", L"UPDATE qeltpd SET coid = 9 WHERE coid = 1",
                "value of record @1, table @1, column @9: the column is not there"},
        SDamage{"record_without_oid", L"UPDATE qeltpd SET foid = -1 WHERE coid = 1",
                "value of record @-1, table @1, column @1: this is no oid of a record"},
        SDamage{"column_of_no_table", L"INSERT INTO qeltpc(oid, toid, ctype, cname) VALUES(7, 9, 1, 'x')",
                "column @7 belongs to table @9, which is not there"},
        SDamage{"name", L"UPDATE qeltpt SET tname = 'a b'", "a b: the name is not allowed"},
        SDamage{"name_twice", L"UPDATE qeltpc SET cname = 'Name' WHERE oid = 2",
                "Lamps Name: the name occurs more than once"},
        SDamage{"order", L"UPDATE qeltpc SET cdo = 1",
                "Lamps Next: the display order 1 is another column's, too"},
        SDamage{"column_type", L"UPDATE qeltpc SET ctype = 99 WHERE oid = 2",
                "Lamps Next: the column is of type 99, which is no type"},
        SDamage{"reference_to_no_table", L"UPDATE qeltpc SET crtt = 9 WHERE oid = 2",
                "Lamps Next: refers to table @9, which is not there"},
        SDamage{"reference_to_no_column", L"UPDATE qeltpc SET crtc = 9 WHERE oid = 2",
                "Lamps Next: refers to column @9 of table 'Lamps', which is not there"},
        SDamage{"name_of_a_column", L"UPDATE qeltpc SET cname = 'a,b' WHERE oid = 2",
                "Lamps a,b: the name is not allowed"},
        SDamage{"name_of_two_tables", L"INSERT INTO qeltpt(oid, tname) VALUES(9, 'Lamps')",
                "Lamps: the name occurs more than once"},
        SDamage{"order_below_zero", L"UPDATE qeltpc SET cdo = -1 WHERE oid = 1",
                "Lamps Name: the display order -1 is negative"},
        SDamage{"default_of_another_type",
                L"UPDATE qeltpc SET cdef = (SELECT data FROM qeltpd WHERE coid = 1) WHERE oid = 2",
                "Lamps Next: the default is of type string, the column of type reference"},
        SDamage{"reference_to_no_record",
                L"UPDATE qeltpd SET data = x'04000C00000000000000000000000000000009000000"
                L"00000000' WHERE coid = 2",
                "Lamps @1 Next: refers to record @9, which is not there"},
        SDamage{"text_without_end",
                L"UPDATE qeltpd SET data = x'040001000000000000000200000000000000"
                L"00000000000000004100' WHERE coid = 1",
                "Lamps @1 Name: the text has no end"},
        SDamage{"oid_of_a_table", L"UPDATE qeltpt SET oid = -5",
                "a table has the oid -5\n"
                "column @1 belongs to table @1, which is not there\n"
                "column @2 belongs to table @1, which is not there\n"
                "value of record @1, table @1, column @1: the table is not there\n"
                "value of record @1, table @1, column @2: the table is not there"},
        SDamage{"oid_of_a_column", L"UPDATE qeltpc SET oid = 4294967296 WHERE oid = 2",
                "a column has the oid 4294967296\n"
                "value of record @1, table @1, column @2: the column is not there"},
        SDamage{"table_of_the_engine", L"DROP TABLE qeltpc",
                "the engine's table 'qeltpc' is missing\n"
                "value of record @1, table @1, column @1: the column is not there\n"
                "value of record @1, table @1, column @2: the column is not there"},
        SDamage{"index", L"DROP INDEX idx_qeltpd_foidtoidcoid",
                "the index that keeps a value from being stored twice is missing"}),
    RowName);

TEST_F(Care, EnginesOwnTestIsPartOfACheck)
{
    Run({"add-table", Path(L"a.db"), "Shades"});
    constexpr std::streamoff kFreePages = 39; // the last byte of their number in the file's header
    std::fstream file(program.File(L"a.db"), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(kFreePages);
    file.put('\x03');
    file.close();
    EXPECT_EQ(Run({"check", Path(L"a.db")}), 5);
    EXPECT_NE(m_out.find("size is 0 but should be 3"), std::string::npos) << m_out;
}

TEST_F(Care, FileThatIsCutIsAFinding)
{
    std::filesystem::resize_file(program.File(L"a.db"), 5000);
    EXPECT_EQ(Run({"check", Path(L"a.db")}), 5);
    EXPECT_NE(m_out, "");
}

class CareOfListings : public testing::TestWithParam<const char*>
{};

// A page in the middle of the records, which their listing cannot pass.
TEST_P(CareOfListings, FindsWhatStopsThemAndKeepsItsReport)
{
    CProgram program;
    program.Run(std::string("init a.db --format ") + GetParam());
    program.Run("add-table a.db Lamps Name:string");
    std::string rows = "Name\n";
    for (int row = 0; row < 500; ++row)
        rows += std::string(100, 'x') + '\n';
    WriteFile(program.File(L"in.csv"), rows);
    ASSERT_EQ(program.Run("import a.db Lamps in.csv").exit, 0);
    std::fstream file(program.File(L"a.db"), std::ios::in | std::ios::out | std::ios::binary);
    constexpr std::streamoff kPage = 4096;
    for (const std::streamoff page : {9, 10, 11, 12, 13, 14}) {
        file.seekp(page * kPage);
        file.write("\0\0\0\0\0\0\0\0", 8);
    }
    file.close();
    EXPECT_EQ(program.Run("check a.db -O report.csv").exit, 5);
    EXPECT_EQ(program.Names(), "a.db in.csv report.csv");
    EXPECT_NE(program.Run("check a.db").out.find("malformed"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Of, CareOfListings, testing::Values("sqlite", "legacy"), KindName);

TEST_F(Care, InterruptedImportLeavesTheFileAsItWas)
{
    qel::SetInterrupted(true);
    EXPECT_EQ(Run({"import", Path(L"a.db"), "Lamps", "-"}, "Name\nWall\n"), 130);
    qel::SetInterrupted(false);
    EXPECT_EQ(Run({"count", Path(L"a.db"), "Lamps"}), 0);
    EXPECT_EQ(m_out, "1\n");
}

TEST_F(Care, InterruptedMigrationLeavesNoFile)
{
    qel::SetInterrupted(true);
    EXPECT_EQ(Run({"migrate", Path(L"a.db"), Path(L"b.store")}), 130);
    EXPECT_EQ(program.Names(), "a.db");
}

TEST_F(Care, HeldFileIsToldAndImportsNothing)
{
    CQelSQLite other;
    ASSERT_EQ(other.Open(program.File(L"a.db").wstring()), 0);
    ASSERT_EQ(other.ExecSQL(L"BEGIN EXCLUSIVE"), 0);
    EXPECT_EQ(Run({"import", Path(L"a.db"), "Lamps", "-"}, "Name\nWall\n"), 1);
    EXPECT_NE(m_err.find("(17305)"), std::string::npos) << m_err;
    ASSERT_EQ(other.ExecSQL(L"ROLLBACK"), 0);
    EXPECT_EQ(Run({"import", Path(L"a.db"), "Lamps", "-"}, "Name\nWall\n"), 0);
}

TEST_F(Care, MigrationThatIsNotAlikeSavesNothing)
{
    Damage(L"UPDATE qeltpd SET data = (SELECT data FROM qeltpd WHERE coid = 1) WHERE coid = 2");
    EXPECT_EQ(Run({"migrate", Path(L"a.db"), Path(L"b.store")}), 5);
    EXPECT_EQ(m_out, "Lamps @1 Next: \"Desk\" against null\n");
    EXPECT_EQ(program.Names(), "a.db");
}

TEST_F(Care, DumpCarriesAValueOfAnotherTypeThanItsColumns)
{
    Damage(L"UPDATE qeltpd SET data = (SELECT data FROM qeltpd WHERE coid = 1) WHERE coid = 2");
    ASSERT_EQ(Run({"dump", Path(L"a.db")}), 0);
    ASSERT_EQ(Run({"load", Path(L"b.db")}, m_out), 0) << m_err;
    EXPECT_EQ(Run({"compare", Path(L"a.db"), Path(L"b.db")}), 0) << m_out;
}

} // namespace
