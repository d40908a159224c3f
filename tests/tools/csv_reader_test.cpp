// csv_reader_test.cpp: rows of separated text, and where they stand.
#include "exchange/csv_reader.h"

#include "adaptor/failure.h"
#include "support/row_name.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace qeltest;

namespace {

/// "1[a|-] 2[b|]": line and fields of every row, "-" for Null; "4: message" where reading fails.
std::string RowsOf(const std::string& text, char separator = ',', std::size_t width = 0)
{
    std::istringstream in(text);
    tool::CCsvReader reader(in, separator);
    reader.SetWidth(width);
    std::string shown;
    tool::SCsvRow row;
    try {
        while (reader.Next(row)) {
            shown += (shown.empty() ? "" : " ") + std::to_string(row.line) + '[';
            for (std::size_t index = 0; index < row.fields.size(); ++index)
                shown += (index > 0 ? "|" : "") + (row.fields[index].null ? "-" : row.fields[index].text);
            shown += ']';
        }
    } catch (const tool::SFailure& failure) {
        shown += (shown.empty() ? "" : " ") + std::to_string(failure.line) + ": " + failure.message;
    }
    return shown;
}

struct SText
{
    const char* name;
    const char* text;
    const char* rows;
};

class CsvReader : public testing::TestWithParam<SText>
{};

TEST_P(CsvReader, ReadsRows)
{
    EXPECT_EQ(RowsOf(GetParam().text), GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(
    Of, CsvReader,
    testing::Values(SText{"nothing", "", ""}, SText{"one_line", "a,b\n", "1[a|b]"},
                    SText{"no_last_line_end", "a,b\nc,d", "1[a|b] 2[c|d]"},
                    SText{"mark",
                          "\xef\xbb\xbf"
                          "a,b\n",
                          "1[a|b]"},
                    SText{"mark_before_quotes", "\xef\xbb\xbf\"a\",b\n", "1[a|b]"},
                    SText{"mark_further_down",
                          "a\n\xef\xbb\xbf"
                          "b\n",
                          "1[a] 2[\xef\xbb\xbf"
                          "b]"},
                    SText{"null_and_empty", ",\"\",x\n", "1[-||x]"},
                    SText{"windows_line_ends", "a\r\nb\r\n", "1[a] 2[b]"},
                    SText{"old_line_ends", "a\rb\r", "1[a] 2[b]"},
                    SText{"empty_lines", "a,b\n\n\nc,d\n", "1[a|b] 4[c|d]"},
                    SText{"empty_windows_lines", "a,b\r\n\r\nc,d\r\n", "1[a|b] 3[c|d]"},
                    SText{"line_ends_in_quotes", "\"a\nb\",c\nd,e\n", "1[a\nb|c] 3[d|e]"},
                    SText{"quotes_in_quotes", "\"a \"\"b\"\"\"\n", "1[a \"b\"]"},
                    SText{"separator_in_quotes", "\"a,b\",c\n", "1[a,b|c]"},
                    SText{"blanks", " a , b \n", "1[ a | b ]"},
                    SText{"rows_of_any_width", "a\nb,c,d\n", "1[a] 2[b|c|d]"},
                    SText{"zero_byte_free_of_meaning", "a;b\n", "1[a;b]"},
                    SText{"quote_inside", "a,b\nc\"d,e\n", "1[a|b] 2: a quote stands where none may be"},
                    SText{"text_behind_quotes", "\"a\"b\n", "1: a quote stands where none may be"},
                    SText{"open_quotes", "a,b\n\"c,d\ne\n", "1[a|b] 2: a quoted text is not closed"}),
    SRowName());

TEST(CsvReaderOf, OtherSeparators)
{
    EXPECT_EQ(RowsOf("a;b,c\n", ';'), "1[a|b,c]");
    EXPECT_EQ(RowsOf("a\tb c\n", '\t'), "1[a|b c]");
}

TEST(CsvReaderOf, OneFieldTakesAnEmptyLineForNull)
{
    EXPECT_EQ(RowsOf("a\n\nb\n", ',', 1), "1[a] 2[-] 3[b]");
    EXPECT_EQ(RowsOf("a\r\n\r\nb\r\n", ',', 1), "1[a] 2[-] 3[b]");
}

// What is read at once ends at 65,536 bytes: inside a field, between CR and LF, inside a text in quotes.
TEST(CsvReaderOf, RowsAcrossWhatIsReadAtOnce)
{
    for (const std::size_t size : {65534, 65535, 65536, 65537}) {
        const std::string field(size, 'x');
        EXPECT_EQ(RowsOf(field + "\r\nb\r\n"), "1[" + field + "] 2[b]") << size;
        EXPECT_EQ(RowsOf('"' + field + "\n\",y\nb,c\n"), "1[" + field + "\n|y] 3[b|c]") << size;
    }
}

TEST(CsvReaderOf, BytesAreCounted)
{
    std::istringstream in("a,b\nc,d\n");
    tool::CCsvReader reader(in, ',');
    tool::SCsvRow row;
    while (reader.Next(row)) {
    }
    EXPECT_EQ(reader.BytesRead(), 8U);
}

TEST(CsvReaderOf, AStreamThatBreaksFails)
{
    std::istringstream in("a,b\n");
    in.setstate(std::ios::badbit);
    tool::CCsvReader reader(in, ',');
    tool::SCsvRow row;
    try {
        reader.Next(row);
        FAIL() << "a row was read";
    } catch (const tool::SFailure& failure) {
        EXPECT_EQ(failure.exit, tool::EExit::eFailed);
    }
}

TEST(CsvLine, IsReadBackAsItWas)
{
    const std::vector<tool::SCsvField> fields = {
        {false, "a \"b\", c"}, {true, ""}, {false, ""}, {false, "two\nlines"}, {false, " "}};
    const std::string line = tool::CsvLine(fields, ',');
    EXPECT_EQ(line, "\"a \"\"b\"\", c\",,\"\",\"two\nlines\",\" \"");
    EXPECT_EQ(RowsOf(line + "\n"), "1[a \"b\", c|-||two\nlines| ]");
}

} // namespace
