// row_writer_test.cpp: rows in every format.
#include "output/row_writer.h"

#include "support/environment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace tool;

namespace {

class RowWriter : public testing::Test
{
protected:
    std::string Print(EFormat format, const std::vector<std::string>& headings, const std::vector<CRow>& rows)
    {
        style.format = format;
        std::ostringstream out;
        const auto writer = CRowWriter::Make(style, headings, out);
        for (const CRow& row : rows)
            writer->Write(row);
        writer->Finish();
        return out.str();
    }
    std::string PrintCell(EFormat format, const CQelProperty& value)
    {
        return Print(format, {"A"}, {{value}});
    }

    qeltest::CLocaleEnvironment locale{"C.UTF-8"};
    SRowStyle style;
};

CQelProperty Number(double number)
{
    CQelProperty value;
    value.SetDouble(number);
    return value;
}

TEST_F(RowWriter, TableHasNumbersToTheRightAndADotForNull)
{
    SKIP_UNLESS_EXACTLY_IN_FORCE(locale);
    EXPECT_EQ(Print(EFormat::eTable, {"Name", "Price"},
                    {{TextCell(std::string("Duett")), Number(1200)}, {CQelProperty(), CQelProperty()}}),
              "Name     Price\n"
              "-----  -------\n"
              "Duett  1200.00\n"
              "\u00b7            \u00b7\n");
}

TEST_F(RowWriter, TableNeverShowsAValueAsNothing)
{
    SKIP_UNLESS_IN_FORCE(locale);
    CQelProperty early;
    early.SetDateTime(-162434.0, 9999); // before the regional calendar begins
    early.SetType(CQelProperty::eDate);
    CQelProperty bytes;
    bytes.SetBlob("abc", 3);
    style.header = false;
    const std::pair<CQelProperty, const char*> cases[] = {{Number(std::nan("")), "nan\n"},
                                                          {Number(-HUGE_VAL), "-inf\n"},
                                                          {Number(1e-300), "1e-300\n"},
                                                          {Number(0.0035), "0.0035\n"},
                                                          {Number(0), "0.00\n"},
                                                          {early, "1455-04-08\n"},
                                                          {bytes, "3 bytes\n"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(PrintCell(EFormat::eTable, value), text);
}

TEST_F(RowWriter, TableLinesUpWideCharacters)
{
    EXPECT_EQ(Print(EFormat::eTable, {"Name", "N"},
                    {{TextCell(std::string("\u65e5\u672c")), NumberCell(1)},
                     {TextCell(std::string("e\u0301")), NumberCell(22)},
                     {TextCell(std::string("\U0001F697")), NumberCell(3)}}),
              "Name   N\n"
              "----  --\n"
              "\u65e5\u672c   1\n"
              "e\u0301     22\n"
              "\U0001F697     3\n");
}

TEST_F(RowWriter, TableIsCutToTheScreenAndNeverWithoutOne)
{
    const std::vector<CRow> rows = {
        {TextCell(std::string("a long text")), TextCell(std::string("another one"))}};
    EXPECT_EQ(Print(EFormat::eTable, {"A", "B"}, rows), "A            B\n"
                                                        "-----------  -----------\n"
                                                        "a long text  another one\n");
    style.width = 14;
    EXPECT_EQ(Print(EFormat::eTable, {"A", "B"}, rows), "A       B\n"
                                                        "------  ------\n"
                                                        "a lon\u2026  anoth\u2026\n");
}

TEST_F(RowWriter, TableCutsNoNumberAndSaysWhatItLeavesOut)
{
    SKIP_UNLESS_EXACTLY_IN_FORCE(locale);
    const std::vector<CRow> rows = {{NumberCell(1234567890), CQelProperty(),
                                     TextCell(std::string("a long text")), NumberCell(7), NumberCell(8)}};
    style.width = 28;
    EXPECT_EQ(Print(EFormat::eTable, {"A", "Empty", "Text", "N", "M"}, rows),
              "         A  Em\u2026  Text    N\n"
              "----------  ---  ------  -\n"
              "1234567890  \u00b7    a lon\u2026  7\n"
              "(1 more column at the right)\n");
}

TEST_F(RowWriter, TableWithColourMarksHeadingsAndNulls)
{
    style.color = true;
    EXPECT_EQ(Print(EFormat::eTable, {"A"}, {{CQelProperty()}}),
              "\033[1mA\033[0m\n-\n\033[2m\u00b7\033[0m\n");
}

TEST_F(RowWriter, HeaderIsLeftOutOnRequest)
{
    style.header = false;
    EXPECT_EQ(PrintCell(EFormat::eTable, NumberCell(1)), "1\n");
    EXPECT_EQ(PrintCell(EFormat::eCsv, NumberCell(1)), "1\n");
}

TEST_F(RowWriter, CsvTellsNullFromTheEmptyText)
{
    EXPECT_EQ(Print(EFormat::eCsv, {"A", "B"}, {{CQelProperty(), TextCell(std::string())}}), "A,B\n,\"\"\n");
}

TEST_F(RowWriter, CsvQuotesWhatWouldBeMisread)
{
    EXPECT_EQ(PrintCell(EFormat::eCsv, TextCell(std::string("a,b"))), "A\n\"a,b\"\n");
    EXPECT_EQ(PrintCell(EFormat::eCsv, TextCell(std::string("say \"x\""))), "A\n\"say \"\"x\"\"\"\n");
    EXPECT_EQ(PrintCell(EFormat::eCsv, TextCell(std::string("two\nlines"))), "A\n\"two\nlines\"\n");
    EXPECT_EQ(PrintCell(EFormat::eCsv, TextCell(std::string(" x "))), "A\n\" x \"\n");
    EXPECT_EQ(PrintCell(EFormat::eTsv, TextCell(std::string("a,b\tc"))), "A\n\"a,b\tc\"\n");
}

TEST_F(RowWriter, CsvKeepsATextApartFromTheChosenNull)
{
    style.null = "NULL";
    EXPECT_EQ(Print(EFormat::eCsv, {"A", "B"}, {{CQelProperty(), TextCell(std::string("NULL"))}}),
              "A,B\nNULL,\"NULL\"\n");
}

TEST_F(RowWriter, CsvHasItsHeaderWithoutAnyRow)
{
    EXPECT_EQ(Print(EFormat::eCsv, {"A", "B"}, {}), "A,B\n");
}

TEST_F(RowWriter, CsvFollowsALocaleOnRequestAlone)
{
    const qeltest::CLocaleEnvironment german("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(german);
    EXPECT_EQ(PrintCell(EFormat::eCsv, Number(1200.5)), "A\n1200.5\n");
    style.regional = true;
    EXPECT_EQ(PrintCell(EFormat::eCsv, Number(1200.5)), "A\n\"1.200,50\"\n");
}

TEST_F(RowWriter, JsonIsAnArrayOfObjectsInTheOrderOfTheColumns)
{
    const std::vector<CRow> rows = {{NumberCell(1), CQelProperty()}, {NumberCell(2), FlagCell(true)}};
    EXPECT_EQ(Print(EFormat::eJson, {"b", "a"}, rows), "[{\"b\":1,\"a\":null},\n {\"b\":2,\"a\":true}]\n");
    EXPECT_EQ(Print(EFormat::eJsonLines, {"b", "a"}, rows), "{\"b\":1,\"a\":null}\n{\"b\":2,\"a\":true}\n");
    EXPECT_EQ(Print(EFormat::eJson, {"a"}, {}), "[]\n");
}

TEST_F(RowWriter, JsonGivesBigIntegersAsTextOnRequest)
{
    EXPECT_EQ(PrintCell(EFormat::eJsonLines, NumberCell(18446744073709551615ULL)),
              "{\"A\":18446744073709551615}\n");
    style.bigAsText = true;
    EXPECT_EQ(PrintCell(EFormat::eJsonLines, NumberCell(18446744073709551615ULL)),
              "{\"A\":\"18446744073709551615\"}\n");
}

TEST_F(RowWriter, PlainHasValuesAlone)
{
    EXPECT_EQ(Print(EFormat::ePlain, {"A", "B", "C"},
                    {{TextCell(std::string("x y")), CQelProperty(), Number(0.1)}}),
              "x y\t\t0.1\n");
}

TEST_F(RowWriter, RefusesToGoOnWhenTheStreamIsFull)
{
    style.format = EFormat::eCsv;
    std::ostringstream out;
    const auto writer = CRowWriter::Make(style, {"A"}, out);
    out.setstate(std::ios::badbit);
    EXPECT_THROW(writer->Write({NumberCell(1)}), SFailure);
}

} // namespace
