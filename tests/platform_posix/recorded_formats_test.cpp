// recorded_formats_test.cpp: the national-language functions against recorded answers, row by row.
#include "support/environment.h"
#include "support/hex.h"
#include "support/recorded_table.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace qeltest;

constexpr const char* kFailed = "FAIL";

/// What a function answered: the text, or that it failed.
struct SAnswer
{
    int returned;
    DWORD error;
    std::wstring text;
};

/// Calls a function with a buffer of the capacity and with 0 as the last error.
template <typename Function>
SAnswer AnswerOf(int capacity, Function function)
{
    std::vector<wchar_t> buffer(static_cast<std::size_t>(std::max(capacity, 1)), L'?');
    SetLastError(0);
    const int returned = function(buffer.data(), capacity);
    return {returned, GetLastError(), returned > 0 ? std::wstring(buffer.data()) : std::wstring()};
}

/// Expects the text, or the failure with its error where one was recorded.
void ExpectAnswer(const SRecordedRow& row, const SAnswer& answer, const std::string& result,
                  const std::string& error)
{
    if (result == kFailed) {
        EXPECT_EQ(answer.returned, 0) << "row " << row.Number();
        if (error != "-") {
            EXPECT_EQ(answer.error, std::stoul(error)) << "row " << row.Number();
        }
        return;
    }
    const std::wstring text = QuotedText(result);
    EXPECT_EQ(answer.text, text) << "row " << row.Number();
    EXPECT_EQ(answer.returned, static_cast<int>(text.size()) + 1) << "row " << row.Number();
    EXPECT_EQ(answer.error, 0U) << "row " << row.Number();
}

std::vector<SRecordedRow> Table(const std::string& name)
{
    return ReadRecordedTable(QEL_TEST_DATA "/" + name);
}

UINT NumberIn(const std::string& field)
{
    return static_cast<UINT>(std::stoul(field));
}

void ExpectNumberRow(const SRecordedRow& row)
{
    std::wstring decimal = QuotedText(row[6]);
    std::wstring thousand = QuotedText(row[7]);
    const NUMBERFMTW format{NumberIn(row[3]), NumberIn(row[4]), NumberIn(row[5]),
                            decimal.data(),   thousand.data(),  NumberIn(row[8])};
    const std::wstring number = QuotedText(row[2]);
    const SAnswer answer = AnswerOf(std::stoi(row[9]), [&](wchar_t* out, int capacity) {
        return GetNumberFormatW(LOCALE_USER_DEFAULT, 0, number.c_str(), &format, out, capacity);
    });
    ExpectAnswer(row, answer, row[10], row[11]);
}

TEST(RecordedFormats, NumbersAreWrittenAsRecorded)
{
    const std::vector<SRecordedRow> rows = Table("number_format.tsv");
    for (const SRecordedRow& row : rows)
        ExpectNumberRow(row);
    EXPECT_EQ(rows.size(), 369U);
}

void ExpectCurrencyRow(const SRecordedRow& row)
{
    std::wstring decimal = QuotedText(row[6]);
    std::wstring thousand = QuotedText(row[7]);
    std::wstring symbol = QuotedText(row[10]);
    const CURRENCYFMTW format{NumberIn(row[3]), NumberIn(row[4]), NumberIn(row[5]), decimal.data(),
                              thousand.data(),  NumberIn(row[8]), NumberIn(row[9]), symbol.data()};
    const std::wstring number = QuotedText(row[2]);
    const SAnswer answer = AnswerOf(std::stoi(row[11]), [&](wchar_t* out, int capacity) {
        return GetCurrencyFormatW(LOCALE_USER_DEFAULT, 0, number.c_str(), &format, out, capacity);
    });
    ExpectAnswer(row, answer, row[12], row[13]);
}

TEST(RecordedFormats, AmountsAreWrittenAsRecorded)
{
    const std::vector<SRecordedRow> rows = Table("currency_format.tsv");
    for (const SRecordedRow& row : rows)
        ExpectCurrencyRow(row);
    EXPECT_EQ(rows.size(), 298U);
}

/// "de-CH" as the environment names it.
std::string EnvironmentName(std::string locale)
{
    std::replace(locale.begin(), locale.end(), '-', '_');
    return locale + ".UTF-8";
}

TEST(RecordedFormats, BytesOfCodePagesAreReadAsRecorded)
{
    CLocaleEnvironment environment;
    const std::vector<SRecordedRow> rows = Table("code_page.tsv");
    for (const SRecordedRow& row : rows) {
        environment.Set("LC_ALL", row[1] == "-" ? "" : EnvironmentName(row[1]));
        const std::string bytes = BytesOf(row[4].substr(1, row[4].size() - 2));
        const SAnswer answer = AnswerOf(256, [&](wchar_t* out, int capacity) {
            return MultiByteToWideChar(NumberIn(row[2]), 0, bytes.c_str(), -1, out, capacity);
        });
        ExpectAnswer(row, answer, row[5], row[6]);
    }
    EXPECT_EQ(rows.size(), 258U);
}

TEST(RecordedFormats, SettingsOfLocalesAreThoseRecorded)
{
    CLocaleEnvironment environment;
    const std::vector<SRecordedRow> rows = Table("locale_info.tsv");
    for (const SRecordedRow& row : rows) {
        environment.Set("LC_ALL", EnvironmentName(row[1]));
        const LCTYPE type = static_cast<LCTYPE>(std::stoul(row[3], nullptr, 16));
        const SAnswer answer = AnswerOf(80, [&](wchar_t* out, int capacity) {
            return GetLocaleInfoW(LOCALE_USER_DEFAULT, type, out, capacity);
        });
        SCOPED_TRACE(row[1] + " " + row[2]);
        ExpectAnswer(row, answer, row[4], "0");
    }
    EXPECT_EQ(rows.size(), 330U);
}

TEST(RecordedFormats, DatesAndTimesAreWrittenAsRecorded)
{
    CLocaleEnvironment environment;
    const std::vector<SRecordedRow> rows = Table("datetime_format.tsv");
    for (const SRecordedRow& row : rows) {
        environment.Set("LC_ALL", EnvironmentName(row[1]));
        WORD fields[6];
        for (std::size_t i = 0; i < 6; ++i)
            fields[i] = static_cast<WORD>(std::stoul(row[i + 2]));
        const SYSTEMTIME time{fields[0], fields[1], 0, fields[2], fields[3], fields[4], fields[5], 0};
        const SAnswer date = AnswerOf(256, [&](wchar_t* out, int capacity) {
            return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &time, nullptr, out, capacity);
        });
        const SAnswer timeOfDay = AnswerOf(256, [&](wchar_t* out, int capacity) {
            return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, out, capacity);
        });
        ExpectAnswer(row, date, row[8], "87");
        ExpectAnswer(row, timeOfDay, row[9], "0");
    }
    EXPECT_EQ(rows.size(), 225U);
}

} // namespace
