// values_format_test.cpp: values through a caller's printf format, which reads the eight payload bytes.
#include "value_host.h"

#include <qelplat4/runtime_locale.h>

namespace outside {
namespace {

using namespace qeltest;

struct SFormatRow
{
    const char* name;
    CQelProperty value;
    const wchar_t* format;
    const wchar_t* text;
};

class PayloadFormat : public testing::TestWithParam<SFormatRow>
{
protected:
    /// The runtime's locale outlives the tests that parse text.
    PayloadFormat()
    {
        const CLocaleEnvironment neutral("C");
        CQelProperty().SetValue(L"", CQelProperty::eString);
    }
};

TEST_P(PayloadFormat, DecidesHowThePayloadIsRead)
{
    const CLocaleEnvironment locale("de_DE.UTF-8"); // no regional formatting takes place
    if (!CLocaleEnvironment::CanSwitch() && qel::RuntimeDecimalPoint() != L'.')
        GTEST_SKIP() << "the system's user has another locale, which no process changes for itself";
    ASSERT_EQ(qel::RuntimeDecimalPoint(), L'.');
    EXPECT_EQ(GetParam().value.String(GetParam().format), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Types, PayloadFormat,
                         testing::Values(SFormatRow{"NullIsEmpty", CQelProperty(), L"%d", L""},
                                         SFormatRow{"TextIgnoresIt", Text(L"a"), L"%d", L"a"},
                                         SFormatRow{"LinkIgnoresIt", Link(L"a"), L"%d", L"a"},
                                         SFormatRow{"Int", Int(-5), L"%d", L"-5"},
                                         SFormatRow{"UInt", UInt(4294967295u), L"%u", L"4294967295"},
                                         SFormatRow{"Int64", Int64(-5), L"%I64d", L"-5"},
                                         SFormatRow{"Int64LowWord", Int64(0x500000007ll), L"%d", L"7"},
                                         SFormatRow{"Int64BothWords", Int64(0x500000007ll), L"%d %d", L"7 5"},
                                         SFormatRow{"UInt64", UInt64(18446744073709551615ull), L"%I64u",
                                                    L"18446744073709551615"},
                                         SFormatRow{"Double", Double(1234.5), L"%.2f", L"1234.50"},
                                         SFormatRow{"Date", Date(45000.75), L"%.0f", L"45000"},
                                         SFormatRow{"Time", Time(45000.75), L"%f", L"0.750000"},
                                         SFormatRow{"DateTime", DateTime(45000.75), L"%g", L"45000.8"},
                                         SFormatRow{"Bool", Bool(true), L"%d", L"1"},
                                         SFormatRow{"Currency", Amount(1.2345, L"EUR"), L"%I64d", L"12345"},
                                         SFormatRow{"Reference", Reference(255), L"%lu", L"255"},
                                         SFormatRow{"BlobHasNoPayload", Blob("ab"), L"%d", L"0"}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(
    Grammar, PayloadFormat,
    testing::Values(
        SFormatRow{"Plain", Int(1), L"abc", L"abc"}, SFormatRow{"Percent", Int(1), L"%d%%", L"1%"},
        SFormatRow{"Width", Int(42), L"[%5d]", L"[   42]"},
        SFormatRow{"Left", Int(42), L"[%-5d]", L"[42   ]"}, SFormatRow{"Zeros", Int(42), L"%05d", L"00042"},
        SFormatRow{"Plus", Int(42), L"%+d", L"+42"}, SFormatRow{"Blank", Int(42), L"% d", L" 42"},
        SFormatRow{"Hash", Int(255), L"%#x", L"0xff"}, SFormatRow{"Upper", Int(255), L"%X", L"FF"},
        SFormatRow{"Octal", Int(8), L"%o", L"10"}, SFormatRow{"Signed", Int(-1), L"%i", L"-1"},
        SFormatRow{"Precision", Int(7), L"%.3d", L"007"}, SFormatRow{"Half", Int(0x12345), L"%hx", L"2345"},
        SFormatRow{"LongLong", Int64(-1), L"%lld", L"-1"},
        SFormatRow{"I32", Int64(0x100000002ll), L"%I32d", L"2"},
        SFormatRow{"Character", Int(65), L"%c", L"A"},
        SFormatRow{"Exponent", Double(1234.5), L"%.2e", L"1.23e+003"},
        SFormatRow{"ZerosOnceUsedUp", Int64(-1), L"%d %d %d", L"-1 -1 0"},
        SFormatRow{"WordThenTheRestAsAllBits", Int64(0x1234567800000000ll), L"%x %I64x", L"0 12345678"},
        SFormatRow{"WideLongIsOneWord", Int64(-1), L"%ld %ld %ld", L"-1 -1 0"},
        SFormatRow{"PercentAtTheEnd", Int(1), L"%d%", L"1"},
        SFormatRow{"DoubleThenZero", Double(1.5), L"%.1f %d", L"1.5 0"},
        SFormatRow{"TextWritesNothing", Int(1), L"[%s%S%n]", L"[]"}),
    SRowName());

TEST(PayloadFormatBound, HoldsAtFourThousandAndNinetySixCharacters)
{
    EXPECT_EQ(Int(1).String(L"%5000d").size(), 4096u);
    EXPECT_EQ(Int(1).String(std::wstring(5000, L'x').c_str()).size(), 4096u);
    EXPECT_EQ(Double(1).String(L"%.100000f").size(), 4096u);
}

} // namespace
} // namespace outside
