// values_variant_test.cpp: values to variants and back.
#include "value_host.h"

#include <iomanip>
#include <sstream>

namespace outside {
namespace {

using namespace qeltest;

/// Type and value: "3:5", "5:1.5", "8:'text'", "11:-1", "0:".
std::string Shown(const VARIANT& value)
{
    std::string text = std::to_string(value.vt) + ":";
    if (value.vt == VT_I4)
        return text + std::to_string(value.lVal);
    if (value.vt == VT_R8 || value.vt == VT_DATE) {
        std::ostringstream number; // whatever the runtime's locale is by now
        number << std::setprecision(10) << value.dblVal;
        return text + number.str();
    }
    if (value.vt == VT_BOOL)
        return text + std::to_string(value.boolVal);
    if (value.vt == VT_BSTR)
        return text + "'" + Text(value.bstrVal).StringUTF8() + "'";
    return text;
}

struct SToRow
{
    const char* name;
    CQelProperty value;
    unsigned short type;
    bool taken;
    const char* shown;
};

class ToVariant : public testing::TestWithParam<SToRow>
{};

TEST_P(ToVariant, ReplacesWhatTheVariantHeld)
{
    const CLocaleEnvironment locale("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(locale);
    COleVariant out(L"previous");
    CQelProperty value = GetParam().value;
    EXPECT_EQ(value.ToVariant(&out, GetParam().type), GetParam().taken);
    EXPECT_EQ(Shown(out), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    OwnTypes, ToVariant,
    testing::Values(
        SToRow{"Null", CQelProperty(), 0, true, "0:"}, SToRow{"String", Text(L"ab"), 0, true, "8:'ab'"},
        SToRow{"EmptyString", Text(L""), 0, true, "8:''"}, SToRow{"Int", Int(-5), 0, true, "3:-5"},
        SToRow{"UIntAsSigned", UInt(4294967295u), 0, true, "3:-1"},
        SToRow{"Int64CutToItsLowWord", Int64(4294967297ll), 0, true, "3:1"},
        SToRow{"UInt64CutToItsLowWord", UInt64(~0ull), 0, true, "3:-1"},
        SToRow{"Double", Double(1.5), 0, true, "5:1.5"},
        SToRow{"Date", Moment(45000.75, CQelProperty::eDate), 0, true, "7:45000.75"},
        SToRow{"Time", Time(45000.75), 0, true, "7:0.75"},
        SToRow{"DateTime", DateTime(45000.75), 0, true, "7:45000.75"},
        SToRow{"True", Bool(true), 0, true, "11:-1"}, SToRow{"False", Bool(false), 0, true, "11:0"},
        SToRow{"AnyByteButZeroIsTrue", Bits(0x80, CQelProperty::eBool), 0, true, "11:-1"},
        SToRow{"CurrencyWithoutSymbol", Amount(-12.345, L"EUR"), 0, true, "5:-12.345"},
        SToRow{"Link", Link(L"ab"), 0, true, "8:'ab'"}, SToRow{"Reference", Reference(5), 0, false, "0:"},
        SToRow{"Blob", Blob("ab"), 0, false, "0:"},
        SToRow{"NoSuchType", Bits(5, static_cast<CQelProperty::EType>(15)), 0, true, "0:"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(AskedTypes, ToVariant,
                         testing::Values(SToRow{"IntAsText", Int(-5), VT_BSTR, true, "8:'-5'"},
                                         SToRow{"DoubleAsGermanText", Double(1.5), VT_BSTR, true, "8:'1,5'"},
                                         SToRow{"GermanTextAsDouble", Text(L"1,5"), VT_R8, true, "5:1.5"},
                                         SToRow{"NullAsText", CQelProperty(), VT_BSTR, true, "8:''"},
                                         SToRow{"NullAsNumber", CQelProperty(), VT_I4, true, "3:0"},
                                         SToRow{"ReferenceAsNumber", Reference(5), VT_I4, false, "3:0"},
                                         SToRow{"BlobAsText", Blob("ab"), VT_BSTR, false, "8:''"},
                                         SToRow{"NoSuchTypeAsText",
                                                Bits(5, static_cast<CQelProperty::EType>(15)), VT_BSTR, true,
                                                "8:''"},
                                         SToRow{"BoolAsNumber", Bool(true), VT_I4, true, "3:-1"}),
                         SRowName());

TEST(ToVariantFailure, PassesToTheCallerAsTheVariantClassRaisesIt)
{
    COleVariant out(5);
    bool raised = false;
    try {
        Text(L"abc").ToVariant(&out, VT_I4);
    } catch (COleException* exception) {
        raised = exception->m_sc == DISP_E_TYPEMISMATCH;
        exception->Delete();
    }
    EXPECT_TRUE(raised);
    EXPECT_EQ(out.vt, VT_EMPTY);
}

struct SFromRow
{
    const char* name;
    COleVariant in;
    int type;
    bool taken;
    CQelProperty result; ///< of a value that held the unsigned integer 99
};

class FromVariant : public testing::TestWithParam<SFromRow>
{};

TEST_P(FromVariant, ConvertsToTheTypeAsked)
{
    const CLocaleEnvironment locale("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(locale);
    CQelProperty value = UInt(99);
    COleVariant in(GetParam().in);
    EXPECT_EQ(value.FromVariant(&in, static_cast<CQelProperty::EType>(GetParam().type)), GetParam().taken);
    EXPECT_EQ(HexOf(value), HexOf(GetParam().result));
    EXPECT_EQ(value.TimeBIAS(), 9999);
    EXPECT_EQ(in.vt, GetParam().in.vt);
}

COleVariant OfBool(short held)
{
    COleVariant value(1, VT_BOOL);
    value.boolVal = held;
    return value;
}

COleVariant OfNothing(VARTYPE type)
{
    COleVariant value;
    value.bstrVal = nullptr;
    value.vt = type;
    return value;
}

COleVariant OfReference(LONG& number)
{
    COleVariant value;
    value.vt = VT_BYREF | VT_I4;
    value.plVal = &number;
    return value;
}

COleVariant OfReference(VARIANT& other)
{
    COleVariant value;
    value.vt = VT_BYREF | VT_VARIANT;
    value.pvarVal = &other;
    return value;
}

LONG g_seven = 7;
COleVariant g_sevenAsText(L"7");

const COleVariant kTwelve(L"12");
const COleVariant kLetters(L"abc");
const COleVariant kMoment(45000.75, VT_DATE);

INSTANTIATE_TEST_SUITE_P(
    FromText, FromVariant,
    testing::Values(
        SFromRow{"String", kTwelve, 1, true, Text(L"12")}, SFromRow{"Int", kTwelve, 2, true, Int(12)},
        SFromRow{"UInt", kTwelve, 3, true, UInt(12)}, SFromRow{"Int64", kTwelve, 4, true, Int64(12)},
        SFromRow{"UInt64", kTwelve, 5, true, UInt64(12)},
        SFromRow{"GermanDouble", COleVariant(L"1,5"), 6, true, Double(1.5)},
        SFromRow{"GermanCurrency", COleVariant(L"1,23456"), 10, true, Amount(1.23456)},
        SFromRow{"Link", kTwelve, 11, true, Link(L"12")}, SFromRow{"Reference", kTwelve, 12, true, UInt(99)},
        SFromRow{"Blob", kTwelve, 13, false, UInt(99)}, SFromRow{"OwnType", kTwelve, 0, true, UInt(12)},
        SFromRow{"NoSuchType", kTwelve, 15, false, UInt(99)},
        SFromRow{"LettersAsInt", kLetters, 2, false, UInt(99)},
        SFromRow{"LettersAsDouble", kLetters, 6, false, UInt(99)},
        SFromRow{"LettersAsDate", kLetters, 7, false, UInt(99)},
        SFromRow{"LettersAsBool", kLetters, 9, false, UInt(99)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    FromNumbers, FromVariant,
    testing::Values(SFromRow{"MinusOneAsUInt", COleVariant(-1), 3, true, UInt(4294967295u)},
                    SFromRow{"MinusOneAsInt64", COleVariant(-1), 4, true, Int64(-1)},
                    SFromRow{"MinusOneAsUInt64", COleVariant(-1), 5, true, UInt64(~0ull)},
                    SFromRow{"HalfToEven", COleVariant(2.5), 2, true, Int(2)},
                    SFromRow{"TooLargeForThirtyTwoBits", COleVariant(3e9), 3, false, UInt(99)},
                    SFromRow{"TooLargeForAnInt64Too", COleVariant(3e9), 4, false, UInt(99)},
                    SFromRow{"DoubleAsGermanText", COleVariant(1.5), 1, true, Text(L"1,5")},
                    SFromRow{"Date", kMoment, 7, true, Date(45000)},
                    SFromRow{"Time", kMoment, 8, true, Time(0.75)},
                    SFromRow{"DateTime", kMoment, 14, true, DateTime(45000.75)},
                    SFromRow{"DateOutsideTheCalendar", COleVariant(1e9, VT_DATE), 7, true, Date(0)},
                    SFromRow{"DateTimeAsItStands", COleVariant(1e9, VT_DATE), 14, true, DateTime(1e9)},
                    SFromRow{"NoTextAsText", OfNothing(VT_BSTR), 1, true, Text(L"")},
                    SFromRow{"NoTextAsLink", OfNothing(VT_BSTR), 11, true, Link(L"")},
                    SFromRow{"NumberAsBool", COleVariant(5), 9, true, Bool(true)},
                    SFromRow{"TrueAsBool", OfBool(-1), 9, true, Bool(true)},
                    SFromRow{"OneIsNotExactlyTrue", OfBool(1), 9, true, Bool(false)},
                    SFromRow{"FalseAsBool", OfBool(0), 9, true, Bool(false)},
                    SFromRow{"EmptyAsInt", COleVariant(), 2, true, Int(0)},
                    SFromRow{"EmptyAsText", COleVariant(), 1, true, Text(L"")},
                    SFromRow{"NothingAsInt", OfNothing(VT_NULL), 2, false, UInt(99)},
                    SFromRow{"IntBehindAReference", OfReference(g_seven), 4, true, Int64(7)},
                    SFromRow{"TextBehindAReference", OfReference(g_sevenAsText), 2, true, Int(7)},
                    SFromRow{"NothingAsReference", OfNothing(VT_NULL), 12, true, UInt(99)}),
    SRowName());

TEST(FromVariantState, NullValueWithoutATypeTakesText)
{
    CQelProperty value;
    COleVariant in(12);
    EXPECT_TRUE(value.FromVariant(&in, CQelProperty::eNull));
    EXPECT_TRUE(value == Text(L"12"));
}

TEST(FromVariantState, AmountLosesItsSymbol)
{
    CQelProperty value = Amount(1.0, L"EUR");
    COleVariant in(2.5);
    EXPECT_TRUE(value.FromVariant(&in, CQelProperty::eNull));
    EXPECT_EQ(value.Data().uValue.nCurrency, 25000);
    EXPECT_EQ(value.GetCurrencySymbol(), L"");
}

TEST(FromVariantState, FailureKeepsBufferAndBias)
{
    CQelProperty value = Text(L"kept");
    value.SetTimeBIAS(5);
    COleVariant in(L"abc");
    EXPECT_FALSE(value.FromVariant(&in, CQelProperty::eInt));
    EXPECT_EQ(value.String(), L"kept");
    EXPECT_EQ(value.TimeBIAS(), 5);
}

TEST(HostVariant, IsMadeOfALongAndOfADate)
{
    EXPECT_EQ(Shown(COleVariant(5L)), "3:5");
    EXPECT_EQ(Shown(COleVariant(1L, VT_BOOL)), "11:-1");
    EXPECT_EQ(Shown(COleVariant(COleDateTime(2023, 3, 15, 12, 0, 0))), "7:45000.5");
}

} // namespace
} // namespace outside
