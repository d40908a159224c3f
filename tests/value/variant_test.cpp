// variant_test.cpp: values to and from OLE variants.
#include "support/environment.h"
#include "support/show_value.h"
#include "support/variant_support.h"

#include <qelprop4/qelproperty.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace qeltest;

/// What ToVariant gives: the variant, and whether it said true.
std::string ToVariant(CQelProperty value, VARTYPE type = VT_EMPTY)
{
    CTestVariant out(TextVariant(L"replaced"));
    const bool result = value.ToVariant(&out, type);
    return ShowVariant(out) + (result ? "" : ", false");
}

template <class Set>
CQelProperty Made(Set&& set)
{
    CQelProperty value;
    set(value);
    return value;
}

/// What a value of no type becomes, or "refused".
std::string FromVariant(const VARIANT& variant, CQelProperty::EType type, CQelProperty value = {})
{
    CTestVariant in(variant);
    const std::string before = Show(value);
    if (value.FromVariant(&in, type))
        return Show(value);
    EXPECT_EQ(Show(value), before);
    return "refused";
}

/// The result code of the exception that a change of type throws.
std::string ThrownBy(CQelProperty value, VARTYPE type)
{
    CTestVariant out;
    try {
        value.ToVariant(&out, type);
        return "nothing";
    } catch (COleException* exception) {
        std::string name = NameOfResult(exception->m_sc);
        EXPECT_FALSE(exception->GetErrorText().empty());
        exception->Delete();
        EXPECT_EQ(out.vt, VT_EMPTY);
        return name;
    }
}

class ValueVariant : public testing::Test
{
protected:
    void SetUp() override { SKIP_UNLESS_IN_FORCE(locale); }

    CLocaleEnvironment locale{"en_US.UTF-8"};
};

TEST_F(ValueVariant, EachTypeHasItsOwnVariant)
{
    EXPECT_EQ(ToVariant(CQelProperty()), "VT_EMPTY -");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetString(L"lamp"); })), "VT_BSTR \"lamp\"");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetInt(-5); })), "VT_I4 -5");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetDouble(1.5); })), "VT_R8 1.5");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetDate(45000.75, 60); })), "VT_DATE 45000");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetTime(45000.75, 60); })), "VT_DATE 0.75");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetDateTime(45000.75, 60); })), "VT_DATE 45000.75");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetBool(true); })), "VT_BOOL -1");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetBool(false); })), "VT_BOOL 0");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetCurrency(1.2345, L"EUR"); })), "VT_R8 1.2344999999999999");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetURL(L"http://x"); })), "VT_BSTR \"http://x\"");
}

TEST_F(ValueVariant, IntegersKeepTheirLowThirtyTwoBits)
{
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetInt64(4294967297LL); })), "VT_I4 1");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetInt64(18446744073709551615ULL); })), "VT_I4 -1");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetInt(4294967295u); })), "VT_I4 -1");
}

TEST_F(ValueVariant, ReferencesAndBlobsBecomeNothing)
{
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetReference(7); })), "VT_EMPTY -, false");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetBlob("ab", 2); })), "VT_EMPTY -, false");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetReference(7); }), VT_I4), "VT_I4 0, false");
}

TEST_F(ValueVariant, TypesThatDoNotExistHaveNothingToGive)
{
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetType(static_cast<CQelProperty::EType>(99)); })),
              "VT_EMPTY -");
}

TEST_F(ValueVariant, AnotherTypeCanBeAskedFor)
{
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetString(L"12"); }), VT_I4), "VT_I4 12");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetDouble(2.5); }), VT_I2), "VT_I2 2");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetCurrency(1.2345, L""); }), VT_CY), "VT_CY 12345");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetBool(true); }), VT_BSTR), "VT_BSTR \"-1\"");
    EXPECT_EQ(ToVariant(CQelProperty(), VT_BSTR), "VT_BSTR \"\"");
}

TEST_F(ValueVariant, AFailedChangeOfTypeIsThrown)
{
    EXPECT_EQ(ThrownBy(Made([](auto& v) { v.SetString(L"lamp"); }), VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ThrownBy(Made([](auto& v) { v.SetDouble(1e10); }), VT_I4), "DISP_E_OVERFLOW");
    EXPECT_EQ(ThrownBy(Made([](auto& v) { v.SetInt(1); }), 0xFFFF), "DISP_E_BADVARTYPE");
}

TEST_F(ValueVariant, ANullPointerIsRefused)
{
    CQelProperty value;
    value.SetInt(5);
    EXPECT_FALSE(value.ToVariant(nullptr, VT_EMPTY));
    EXPECT_FALSE(value.ToVariant(nullptr, VT_BSTR));
    EXPECT_FALSE(value.FromVariant(nullptr, CQelProperty::eInt));
    EXPECT_EQ(Show(value), "5");
}

TEST_F(ValueVariant, EveryTargetIsSetFromItsOwnType)
{
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eInt), "12");
    EXPECT_EQ(FromVariant(IntVariant(12), CQelProperty::eString), "'12'");
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eUInt), "12u");
    EXPECT_EQ(FromVariant(TextVariant(L"12.5"), CQelProperty::eDouble), "12.5");
    EXPECT_EQ(FromVariant(DateVariant(45000.75), CQelProperty::eDate), "date 45000");
    EXPECT_EQ(FromVariant(DateVariant(45000.75), CQelProperty::eTime), "time 0.75");
    EXPECT_EQ(FromVariant(TextVariant(L"3/15/2023 6:00 PM"), CQelProperty::eDateTime), "stamp 45000.75");
    EXPECT_EQ(FromVariant(TextVariant(L"x"), CQelProperty::eURL), "<x>");
    EXPECT_EQ(FromVariant(CurrencyVariant(12345), CQelProperty::eCurrency), "1.2345");
}

TEST_F(ValueVariant, WideIntegersAreExtendedFromThirtyTwoBits)
{
    EXPECT_EQ(FromVariant(IntVariant(-1), CQelProperty::eInt64), "-1L");
    EXPECT_EQ(FromVariant(IntVariant(-1), CQelProperty::eUInt64), "18446744073709551615uL");
    EXPECT_EQ(FromVariant(IntVariant(-1), CQelProperty::eUInt), "4294967295u");
    EXPECT_EQ(FromVariant(RealVariant(4294967296.0), CQelProperty::eInt64), "refused");
}

TEST_F(ValueVariant, OnlyVariantTrueIsTrue)
{
    EXPECT_EQ(FromVariant(BoolVariant(-1), CQelProperty::eBool), "true");
    EXPECT_EQ(FromVariant(BoolVariant(1), CQelProperty::eBool), "false");
    EXPECT_EQ(FromVariant(IntVariant(1), CQelProperty::eBool), "true"); // changed to true first
    EXPECT_EQ(FromVariant(BoolVariant(0), CQelProperty::eBool), "false");
}

TEST_F(ValueVariant, WithoutATypeTheValueKeepsItsOwn)
{
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eNull), "'12'");
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eNull, Made([](auto& v) { v.SetDouble(1); })),
              "12");
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eNull, Made([](auto& v) { v.SetReference(7); })),
              "#7");
}

TEST_F(ValueVariant, ReferencesAreLeftAndBlobsRefused)
{
    const CQelProperty five = Made([](auto& v) { v.SetInt(5); });
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eReference, five), "5");
    EXPECT_EQ(FromVariant(TextVariant(L"12"), CQelProperty::eBlob, five), "refused");
    EXPECT_EQ(FromVariant(TextVariant(L"12"), static_cast<CQelProperty::EType>(15), five), "refused");
}

TEST_F(ValueVariant, AVariantThatDoesNotChangeLeavesTheValue)
{
    const CQelProperty lamp = Made([](auto& v) { v.SetString(L"lamp"); });
    EXPECT_EQ(FromVariant(TextVariant(L"twelve"), CQelProperty::eInt, lamp), "refused");
    EXPECT_EQ(FromVariant(RealVariant(1e300), CQelProperty::eInt, lamp), "refused");
    VARIANT odd{};
    odd.vt = 99;
    CQelProperty value = lamp;
    EXPECT_FALSE(value.FromVariant(&odd, CQelProperty::eInt));
    odd.vt = VT_NULL;
    EXPECT_FALSE(value.FromVariant(&odd, CQelProperty::eString));
    EXPECT_EQ(Show(value), "'lamp'");
}

TEST_F(ValueVariant, AnEmptyVariantIsZeroOrAnEmptyText)
{
    EXPECT_EQ(FromVariant(VARIANT{}, CQelProperty::eInt), "0");
    EXPECT_EQ(FromVariant(VARIANT{}, CQelProperty::eString), "''");
    EXPECT_EQ(FromVariant(VARIANT{}, CQelProperty::eNull), "''");
}

TEST_F(ValueVariant, TheSourceIsLeftAsItWas)
{
    CTestVariant in(TextVariant(L"12"));
    CQelProperty value;
    EXPECT_TRUE(value.FromVariant(&in, CQelProperty::eInt));
    EXPECT_EQ(ShowVariant(in), "VT_BSTR \"12\"");
}

TEST_F(ValueVariant, NumbersAreReadAsTheUserWritesThem)
{
    const CLocaleEnvironment german("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(german);
    EXPECT_EQ(FromVariant(TextVariant(L"1.234,5"), CQelProperty::eDouble), "1234.5");
    EXPECT_EQ(ToVariant(Made([](auto& v) { v.SetDouble(1234.5); }), VT_BSTR), "VT_BSTR \"1234,5\"");
}

} // namespace
