// variant_test.cpp: the life of variants and of texts with their length.
#include "support/variant_support.h"
#include "support/wine.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace qeltest;

TEST(LengthText, HoldsZerosAndATerminator)
{
    BSTR text = SysAllocStringLen(L"a\0b", 3);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ(std::wstring(text, 4), std::wstring(L"a\0b\0", 4));
    SysFreeString(text);
}

TEST(LengthText, OfNothingIsNothing)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);
    BSTR empty = SysAllocString(L"");
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(SysStringLen(empty), 0u);
    SysFreeString(empty);
}

TEST(LengthText, WithoutATextIsZeros)
{
    BSTR text = SysAllocStringLen(nullptr, 2);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::wstring(text, 3), std::wstring(3, L'\0'));
    SysFreeString(text);
}

TEST(LengthText, LongerThanItsLengthCanSayIsRefused)
{
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
}

TEST(Variant, CopyHasATextOfItsOwn)
{
    CTestVariant source(TextVariant(std::wstring(L"a\0b", 3)));
    CTestVariant copy;
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_NE(copy.bstrVal, source.bstrVal);
    EXPECT_EQ(SysStringLen(copy.bstrVal), 3u);
    EXPECT_EQ(VariantClear(&source), S_OK);
    EXPECT_EQ(std::wstring(copy.bstrVal, 3), std::wstring(L"a\0b", 3));
}

TEST(Variant, CopyFreesWhatTheTargetHeld)
{
    CTestVariant source(IntVariant(5));
    CTestVariant target(TextVariant(L"freed"));
    EXPECT_EQ(VariantCopy(&target, &source), S_OK);
    EXPECT_EQ(ShowVariant(target), "VT_I4 5");
}

TEST(Variant, CopyOntoItselfChangesNothing)
{
    CTestVariant value(TextVariant(L"kept"));
    EXPECT_EQ(VariantCopy(&value, &value), S_OK);
    EXPECT_EQ(ShowVariant(value), "VT_BSTR \"kept\"");
    EXPECT_EQ(VariantCopyInd(&value, &value), S_OK);
    EXPECT_EQ(ShowVariant(value), "VT_BSTR \"kept\"");
}

TEST(Variant, CopyOfAReferenceSharesAndCopyOfItsValueDoesNot)
{
    BSTR text = SysAllocString(L"shared");
    VARIANT reference{};
    reference.vt = VT_BSTR | VT_BYREF;
    reference.pbstrVal = &text;
    CTestVariant shared;
    EXPECT_EQ(VariantCopy(&shared, &reference), S_OK);
    EXPECT_EQ(shared.pbstrVal, &text);
    CTestVariant own;
    EXPECT_EQ(VariantCopyInd(&own, &reference), S_OK);
    SysFreeString(text);
    EXPECT_EQ(ShowVariant(own), "VT_BSTR \"shared\"");
}

TEST(Variant, ClearLeavesAnEmptyOne)
{
    SKIP_WHERE_WINE_DIFFERS("leaves the old value behind and reads where a null pointer leads");
    CTestVariant value(TextVariant(L"freed"));
    EXPECT_EQ(VariantClear(&value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
    EXPECT_EQ(value.bstrVal, nullptr);
    EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
}

TEST(Variant, TypesThatDoNotExistAreNeitherClearedNorCopied)
{
    VARIANT odd{};
    odd.vt = 99;
    CTestVariant target(IntVariant(1));
    EXPECT_EQ(VariantClear(&odd), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantCopy(&target, &odd), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantCopyInd(&target, &odd), DISP_E_BADVARTYPE);
    EXPECT_EQ(ShowVariant(target), "VT_I4 1");
}

} // namespace
