// values_model_test.cpp: a value's fields, copies, null state and life, as a host sees them.
#include "value_host.h"

#include <type_traits>
#include <utility>

namespace outside {
namespace {

using namespace qeltest;

TEST(ValueModel, FreshValueHoldsTheDefaults)
{
    const CQelProperty value;
    EXPECT_EQ(value.Data().eType, CQelProperty::eNull);
    EXPECT_EQ(value.Data().nBufferSize, 0u);
    EXPECT_EQ(value.Data().pBuffer, nullptr);
    EXPECT_EQ(value.Data().nReserved, 0u);
    EXPECT_EQ(value.Data().sCurrencySymbol, L"");
    EXPECT_EQ(value.Data().nTimeBias, 9999);
    EXPECT_EQ(value.Data().uValue.nUInt64, 0ull);
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(value.String(nullptr), L"");
}

TEST(ValueModel, ValueStandsOnTheCommonBase)
{
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelProperty>));
    EXPECT_TRUE((std::is_base_of_v<CObject, CQelBase>));
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelTable>));
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelTable3X>));
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelPropDB>));
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelPropDB3X>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CQelProperty>);
    EXPECT_EQ(sizeof(CQelProperty::EType), 4u);
    EXPECT_EQ(sizeof(CQelProperty().Data().uValue), 8u);
}

TEST(ValueModel, AssignmentGivesAConstReferenceToItself)
{
    CQelProperty value;
    const CQelProperty other = Int(5);
    EXPECT_TRUE((std::is_same_v<decltype(value = other), const CQelProperty&>));
    EXPECT_EQ(&(value = other), &value);
}

TEST(ValueModel, AssignmentOfItselfChangesNothing)
{
    CQelProperty value = Text(L"kept");
    const unsigned char* const buffer = value.Data().pBuffer;
    const CQelProperty& same = value;
    value = same;
    EXPECT_EQ(value.Data().pBuffer, buffer);
    EXPECT_EQ(value.String(), L"kept");
}

TEST(ValueModel, CopyTakesEveryField)
{
    CQelProperty source = Stored("0400"
                                 "01000000"
                                 "07000000"
                                 "04000000"
                                 "01000000"
                                 "ac20"
                                 "0102030405060708"
                                 "61000000");
    source.SetTimeBIAS(60);
    CQelProperty target = Text(L"longer than the other");
    target = source;
    EXPECT_EQ(target.GetType(), CQelProperty::eString);
    EXPECT_EQ(target.Data().nReserved, 7u);
    EXPECT_EQ(target.Data().uValue.nUInt64, 0x0807060504030201ull);
    EXPECT_EQ(target.GetCurrencySymbol(), L"\u20ac");
    EXPECT_EQ(target.TimeBIAS(), 60);
    EXPECT_EQ(BufferOf(target), "61000000");
    EXPECT_NE(target.Data().pBuffer, source.Data().pBuffer);
}

TEST(ValueModel, CopyOfABlobWithoutBytesHasNoBuffer)
{
    const CQelProperty source = Blob("");
    EXPECT_NE(source.Data().pBuffer, nullptr);
    const CQelProperty copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.GetType(), CQelProperty::eBlob);
    EXPECT_EQ(copy.Data().nBufferSize, 0u);
    EXPECT_EQ(copy.Data().pBuffer, nullptr);
}

TEST(ValueModel, BufferSizeWithoutABufferIsCopiedAsItStands)
{
    const CQelProperty source = Stored("0400"
                                       "02000000"
                                       "00000000"
                                       "64000000"
                                       "00000000"
                                       "0500000000000000");
    const CQelProperty copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.Data().nBufferSize, 100u);
    EXPECT_EQ(copy.Data().pBuffer, nullptr);
}

TEST(ValueModel, ClearEmptiesAllButTypeAndSymbol)
{
    CDerivedValue value;
    value.SetCurrency(2.0, L"CHF");
    value.SetTimeBIAS(30);
    value.Clear();
    EXPECT_EQ(value.GetType(), CQelProperty::eCurrency);
    EXPECT_EQ(value.GetCurrencySymbol(), L"CHF");
    EXPECT_EQ(value.Data().uValue.nUInt64, 0ull);
    EXPECT_EQ(value.TimeBIAS(), 9999);
}

TEST(ValueModel, ClearFreesTheBufferAndItsSize)
{
    CDerivedValue value;
    value.SetString(L"text");
    value.Clear();
    EXPECT_EQ(value.GetType(), CQelProperty::eString);
    EXPECT_EQ(value.Data().pBuffer, nullptr);
    EXPECT_EQ(value.Data().nBufferSize, 0u);
}

TEST(ValueModel, BufferSizeWithoutABufferOutlivesTheSettersOfNumbers)
{
    CQelProperty value = Stored("0400"
                                "02000000"
                                "00000000"
                                "64000000"
                                "00000000"
                                "0500000000000000");
    value.SetInt(6);
    EXPECT_EQ(value.Data().nBufferSize, 100u);
    value.SetNull();
    EXPECT_EQ(value.Data().nBufferSize, 100u);
    value.SetString(L"ab");
    EXPECT_EQ(value.Data().nBufferSize, 6u);
    value.SetInt(6);
    EXPECT_EQ(value.Data().nBufferSize, 0u);
}

TEST(ValueModel, ReservedWordIsDroppedByTheNextSetter)
{
    CQelProperty value = Stored("0400"
                                "02000000"
                                "09000000"
                                "00000000"
                                "00000000"
                                "0500000000000000");
    EXPECT_EQ(value.Data().nReserved, 9u);
    value.SetBool(true);
    EXPECT_EQ(value.Data().nReserved, 0u);
}

TEST(ValueModel, SetNullKeepsTheSymbolAlone)
{
    CQelProperty value = Amount(1.0, L"EUR");
    value.SetNull();
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(value.Data().uValue.nUInt64, 0ull);
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
}

TEST(ValueModel, EmptyTextIsNotNull)
{
    const CQelProperty value = Text(L"");
    EXPECT_FALSE(value.IsNull());
    EXPECT_EQ(value.GetType(), CQelProperty::eString);
    EXPECT_EQ(value.Data().nBufferSize, 2u);
    EXPECT_EQ(BufferOf(value), "0000");
}

TEST(ValueModel, SetTypeChangesTheTypeAlone)
{
    CQelProperty value = Int64(1);
    value.SetTimeBIAS(15);
    value.SetCurrencySymbol(L"x");
    value.SetType(CQelProperty::eDouble);
    EXPECT_EQ(value.Data().uValue.dDouble, 4.9406564584124654e-324);
    EXPECT_EQ(value.TimeBIAS(), 15);
    EXPECT_EQ(value.GetCurrencySymbol(), L"x");
}

TEST(ValueModel, SetTypeKeepsTheBuffer)
{
    const CQelProperty value = Retagged(Text(L"ab"), CQelProperty::eBlob);
    EXPECT_EQ(BufferOf(value), "610062000000");
}

TEST(ValueModel, ResetToTypeGivesAnEmptyValueOfTheType)
{
    CQelProperty value = Text(L"text");
    value.SetCurrencySymbol(L"EUR");
    value.SetTimeBIAS(15);
    value.ResetToType(CQelProperty::eDate);
    EXPECT_EQ(value.GetType(), CQelProperty::eDate);
    EXPECT_EQ(value.Data().uValue.nUInt64, 0ull);
    EXPECT_EQ(value.Data().pBuffer, nullptr);
    EXPECT_EQ(value.Data().nBufferSize, 0u);
    EXPECT_EQ(value.TimeBIAS(), 9999);
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
}

TEST(ValueModel, SymbolOutlivesTheSettersOfOtherTypes)
{
    CQelProperty value = Amount(1.23456, L"EUR");
    EXPECT_EQ(value.Data().uValue.nCurrency, 12345);
    value.SetInt(1);
    value.SetString(L"text");
    value.SetBlob("x", 1);
    value.SetDate(45000.0, 0);
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
}

TEST(ValueModel, SetCurrencySymbolChangesTheSymbolAlone)
{
    CQelProperty value = Text(L"text");
    value.SetCurrencySymbol(L"JPY");
    EXPECT_EQ(value.String(), L"text");
    EXPECT_EQ(value.GetCurrencySymbol(), L"JPY");
}

TEST(ValueModel, EveryOtherSetterRemovesTheBias)
{
    CQelProperty value;
    value.SetDate(45000.0, 60);
    value.SetInt(1);
    EXPECT_EQ(value.TimeBIAS(), 9999);
}

TEST(ValueModel, ReferenceWiderThanThirtyTwoBitsNamesNothing)
{
    if constexpr (sizeof(unsigned long) > 4) {
        EXPECT_EQ(Reference(static_cast<unsigned long>(0x100000005ull)).Data().uValue.nUInt64, 0ull);
    }
}

struct STypeRow
{
    const char* name;
    int type;
    const wchar_t* text;
};

class ValueTypeNames : public testing::TestWithParam<STypeRow>
{};

TEST_P(ValueTypeNames, ComeFromTheLibrarysOwnStrings)
{
    EXPECT_EQ(CQelProperty::GetTypeName(static_cast<CQelProperty::EType>(GetParam().type)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Types, ValueTypeNames,
    testing::Values(STypeRow{"Null", 0, L"Null"}, STypeRow{"String", 1, L"String"},
                    STypeRow{"Int", 2, L"Signed Integer"}, STypeRow{"UInt", 3, L"Unsigned Integer"},
                    STypeRow{"Int64", 4, L"Signed Long Integer"},
                    STypeRow{"UInt64", 5, L"Unsigned Long Integer"}, STypeRow{"Double", 6, L"Double"},
                    STypeRow{"Date", 7, L"Date"}, STypeRow{"Time", 8, L"Time"},
                    STypeRow{"Bool", 9, L"Boolean"}, STypeRow{"Currency", 10, L"Currency"},
                    STypeRow{"Url", 11, L"Hyperlink"}, STypeRow{"Reference", 12, L"Reference"},
                    STypeRow{"Blob", 13, L"Binary Object"}, STypeRow{"DateTime", 14, L""},
                    STypeRow{"Fifteen", 15, L""}, STypeRow{"Negative", -198, L""},
                    STypeRow{"Huge", 2147483647, L""}),
    SRowName());

struct SStringRow
{
    const char* name;
    unsigned int id;
    const wchar_t* text;
};

class LibraryStrings : public testing::TestWithParam<SStringRow>
{};

TEST_P(LibraryStrings, AreFoundThroughTheChainOfResourceModules)
{
    CString text;
    EXPECT_EQ(text.LoadString(GetParam().id), *GetParam().text != 0);
    EXPECT_EQ(text.Text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Ids, LibraryStrings,
                         testing::Values(SStringRow{"Global", 15000, L"Global"},
                                         SStringRow{"Image", 15001, L"Image"},
                                         SStringRow{"Yes", 15002, L"Yes"}, SStringRow{"No", 15003, L"No"},
                                         SStringRow{"Bytes", 15004, L"Binary Object"},
                                         SStringRow{"First", 15200, L"Null"},
                                         SStringRow{"Last", 15213, L"Binary Object"},
                                         SStringRow{"None", 15214, L""}, SStringRow{"Between", 15005, L""}),
                         SRowName());

} // namespace
} // namespace outside
