// runtime_scan_test.cpp: numbers read as the original C runtime reads them, under its current locale.
#include <gtest/gtest.h>
#include <qelplat4/nls.h>
#include <qelplat4/runtime_locale.h>

#include "support/environment.h"
#include "support/recorded_table.h"

#include <cmath>
#include <limits>

using namespace qeltest;

namespace {

/// A locale of the runtime's; puts it back to what it is at the start of a program.
class CRuntimeLocale
{
public:
    /// @param user  the user's locale, if the environment tells it
    /// @param name  the runtime's own name of the same locale
    CRuntimeLocale(const std::string& user, const wchar_t* name) : m_environment(user)
    {
        _wsetlocale(LC_ALL, CLocaleEnvironment::CanSwitch() ? L"" : name);
    }
    CRuntimeLocale(const CRuntimeLocale&) = delete;
    CRuntimeLocale& operator=(const CRuntimeLocale&) = delete;
    ~CRuntimeLocale() { _wsetlocale(LC_ALL, L"C"); }

private:
    CLocaleEnvironment m_environment;
};

template <class Number>
std::string Scanned(bool (*scan)(const wchar_t*, Number&), const std::wstring& text)
{
    Number number = 77;
    return scan(text.c_str(), number) ? std::to_string(number) : number == 77 ? "-" : "changed";
}

std::string Scanned(const std::string& format, const std::wstring& text)
{
    if (format == "\"%ld\"")
        return Scanned<std::int32_t>(qel::ScanInt32, text);
    if (format == "\"%lu\"")
        return Scanned<std::uint32_t>(qel::ScanUInt32, text);
    if (format == "\"%I64d\"")
        return Scanned<long long>(qel::ScanInt64, text);
    return Scanned<unsigned long long>(qel::ScanUInt64, text);
}

void ExpectFloat(const SRecordedRow& row)
{
    float number = 77.0F;
    const bool converted = qel::ScanFloat(QuotedText(row[3]).c_str(), number);
    EXPECT_EQ(converted, row[4] == "1") << row.Number();
    EXPECT_EQ(number, converted ? FloatOfBits(row[5]) : 77.0F) << row.Number();
}

} // namespace

TEST(RuntimeScan, AgreesWithEveryRecordedAnswer)
{
    int rows = 0;
    for (const SRecordedRow& row : ReadRecordedTable(QEL_TEST_DATA "/runtime_scan.tsv")) {
        const bool plain = row[1] == "C";
        const CRuntimeLocale locale(plain ? "C" : "de_DE.UTF-8", plain ? L"C" : L"German_Germany.1252");
        if (row[2] == "\"%f\"")
            ExpectFloat(row);
        else
            EXPECT_EQ(Scanned(row[2], QuotedText(row[3])), row[5]) << row.Number();
        ++rows;
    }
    EXPECT_EQ(rows, 266);
}

TEST(RuntimeScan, NullTextHoldsNoNumber)
{
    std::int32_t number = 5;
    float real = 5.0F;
    EXPECT_FALSE(qel::ScanInt32(nullptr, number));
    EXPECT_FALSE(qel::ScanFloat(nullptr, real));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(real, 5.0F);
}

TEST(RuntimeScan, FloatBeyondItsReachBecomesInfiniteOrZero)
{
    float number = 1.0F;
    EXPECT_TRUE(qel::ScanFloat(L"1e99999999999999999999", number));
    EXPECT_EQ(number, std::numeric_limits<float>::infinity());
    EXPECT_TRUE(qel::ScanFloat(L"1e-99999999999999999999", number));
    EXPECT_EQ(number, 0.0F);
    EXPECT_TRUE(qel::ScanFloat(L"0e99999", number));
    EXPECT_EQ(number, 0.0F);
    EXPECT_TRUE(qel::ScanFloat(L"-0", number));
    EXPECT_TRUE(std::signbit(number));
    EXPECT_TRUE(qel::ScanFloat((std::wstring(400, L'0') + L"1" + std::wstring(30, L'0')).c_str(), number));
    EXPECT_EQ(number, 1e30F);
}

TEST(RuntimeLocale, DecimalPointIsAFullStopAtFirst)
{
    const CLocaleEnvironment environment("de_DE.UTF-8");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L'.');
}

TEST(RuntimeLocale, DecimalPointFollowsTheLocaleThatWasSetLast)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    CLocaleEnvironment environment("de_DE.UTF-8");
    _wsetlocale(LC_ALL, L"");
    environment.Set("LC_ALL", "en_US.UTF-8");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L',');
    _wsetlocale(LC_ALL, L"");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L'.');
    environment.Set("LC_ALL", "");
    environment.Set("LC_NUMERIC", "fr_FR.UTF-8");
    _wsetlocale(LC_ALL, L"");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L',');
    _wsetlocale(LC_ALL, L"C");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L'.');
}
