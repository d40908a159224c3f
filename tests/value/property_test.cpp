// property_test.cpp: construction, copying, the null state and the setters of a value.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include "support/hex.h"
#include "support/sample_values.h"

#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

using namespace qeltest;

namespace {

/// Every field of a value as one text: type, buffer, reserved word, symbol, bias, payload.
std::string StateOf(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    std::string buffer = "none";
    if (data.pBuffer != nullptr)
        buffer = "[" + HexOf(data.pBuffer, data.nBufferSize) + "]";
    return std::to_string(data.eType) + " size " + std::to_string(data.nBufferSize) + " buffer " + buffer +
           " reserved " + std::to_string(data.nReserved) + " symbol '" +
           std::string(data.sCurrencySymbol.begin(), data.sCurrencySymbol.end()) + "' bias " +
           std::to_string(data.nTimeBias) + " payload " + HexOf(&data.uValue, 8);
}

/// Reaches the operation that is left to derived classes.
class CClearable : public CQelProperty
{
public:
    using CQelProperty::Clear;
};

const char* const kNullState = "0 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000";

} // namespace

TEST(PropertyModel, FreshValueIsNull)
{
    const CQelProperty value;
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(StateOf(value), kNullState);
    EXPECT_EQ(value.TimeBIAS(), 9999);
}

TEST(PropertyModel, FreshValueOverDirtyMemoryHasAnEmptyPayload)
{
    alignas(CQelProperty) unsigned char memory[sizeof(CQelProperty)];
    std::memset(memory, 0xFF, sizeof memory);
    auto* value = new (memory) CQelProperty;
    EXPECT_EQ(StateOf(*value), kNullState);
    value->~CQelProperty();
}

TEST(PropertyModel, TypesHaveTheirStoredNumbers)
{
    EXPECT_EQ(CQelProperty::eNull, 0);
    EXPECT_EQ(CQelProperty::eString, 1);
    EXPECT_EQ(CQelProperty::eInt, 2);
    EXPECT_EQ(CQelProperty::eUInt, 3);
    EXPECT_EQ(CQelProperty::eInt64, 4);
    EXPECT_EQ(CQelProperty::eUInt64, 5);
    EXPECT_EQ(CQelProperty::eDouble, 6);
    EXPECT_EQ(CQelProperty::eDate, 7);
    EXPECT_EQ(CQelProperty::eTime, 8);
    EXPECT_EQ(CQelProperty::eBool, 9);
    EXPECT_EQ(CQelProperty::eCurrency, 10);
    EXPECT_EQ(CQelProperty::eURL, 11);
    EXPECT_EQ(CQelProperty::eReference, 12);
    EXPECT_EQ(CQelProperty::eBlob, 13);
    EXPECT_EQ(CQelProperty::eDateTime, 14);
}

TEST(PropertyModel, DerivesFromTheCommonBaseAndMovesWithoutFailing)
{
    EXPECT_TRUE((std::is_base_of_v<CQelBase, CQelProperty>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CQelProperty>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<CQelProperty>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<CQelProperty>);
}

struct SSetterRow
{
    const char* name;
    CQelProperty value;
    const char* state;
};

class PropertySetters : public testing::TestWithParam<SSetterRow>
{};

TEST_P(PropertySetters, HoldTheirArgument)
{
    EXPECT_EQ(StateOf(GetParam().value), GetParam().state);
}

INSTANTIATE_TEST_SUITE_P(
    Values, PropertySetters,
    testing::Values(
        SSetterRow{"Int", Int(5),
                   "2 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0500000000000000"},
        SSetterRow{"IntNegative", Int(-2),
                   "2 size 0 buffer none reserved 0 symbol '' bias 9999 payload feffffff00000000"},
        SSetterRow{"UInt", UInt(0xFFFFFFFF),
                   "3 size 0 buffer none reserved 0 symbol '' bias 9999 payload ffffffff00000000"},
        SSetterRow{"Int64", Int64(-2),
                   "4 size 0 buffer none reserved 0 symbol '' bias 9999 payload feffffffffffffff"},
        SSetterRow{"UInt64", UInt64(0x0102030405060708),
                   "5 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0807060504030201"},
        SSetterRow{"Double", Double(1.5),
                   "6 size 0 buffer none reserved 0 symbol '' bias 9999 payload 000000000000f83f"},
        SSetterRow{"BoolTrue", Bool(true),
                   "9 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0100000000000000"},
        SSetterRow{"BoolFalse", Bool(false),
                   "9 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000"},
        SSetterRow{"Currency", Amount(1.23456, L"EUR"),
                   "10 size 0 buffer none reserved 0 symbol 'EUR' bias 9999 payload 3930000000000000"},
        SSetterRow{"Reference", Reference(7),
                   "12 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0700000000000000"},
        SSetterRow{"Text", Text(L"AB"),
                   "1 size 6 buffer [410042000000] reserved 0 symbol '' bias 9999 payload 0000000000000000"},
        SSetterRow{"EmptyText", Text(L""),
                   "1 size 2 buffer [0000] reserved 0 symbol '' bias 9999 payload 0000000000000000"},
        SSetterRow{"Link", Link(L"A"),
                   "11 size 4 buffer [41000000] reserved 0 symbol '' bias 9999 payload 0000000000000000"},
        SSetterRow{"Blob", Blob("\x01\xFF"),
                   "13 size 2 buffer [01ff] reserved 0 symbol '' bias 9999 payload 0000000000000000"},
        SSetterRow{"CopyOfAnEmptyBlob", Blob(""),
                   "13 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(PropertySetters, ReplaceATextAndItsBias)
{
    CQelProperty value = Text(L"a long text that has a buffer of its own");
    value.SetTimeBIAS(60);
    value = GetParam().value;
    EXPECT_EQ(StateOf(value), GetParam().state);
}

TEST(PropertyModel, SettersEmptyWhatWasHeldBefore)
{
    CQelProperty value = Date(45000.75, 60);
    value.SetInt(1);
    EXPECT_EQ(StateOf(value), "2 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0100000000000000");
    value.SetString(L"text");
    value.SetDouble(0.0);
    EXPECT_EQ(StateOf(value), "6 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, EmptyTextIsNotNull)
{
    EXPECT_FALSE(Text(L"").IsNull());
}

TEST(PropertyModel, TextWithEmbeddedZeroKeepsAllItsCharacters)
{
    EXPECT_EQ(HexOf(Text(std::wstring(L"A\0B", 3)).Data().pBuffer, 8), "4100000042000000");
}

TEST(PropertyModel, CharacterOutsideTheBasicPlaneIsHeldAsSurrogatePair)
{
    const CQelProperty value = Text(L"\U0001F600");
    EXPECT_EQ(value.Data().nBufferSize, 6U);
    EXPECT_EQ(HexOf(value.Data().pBuffer, 6), "3dd800de0000");
}

TEST(PropertyModel, NullTextPointerEmptiesTheValueAndKeepsItsType)
{
    CQelProperty value = Int(5);
    value.SetString(static_cast<const wchar_t*>(nullptr), 0);
    EXPECT_EQ(StateOf(value), "2 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, NullLinkPointerGivesALinkWithoutBuffer)
{
    CQelProperty value = Int(5);
    value.SetURL(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(StateOf(value),
              "11 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, TextPointerIsReadUpToItsTerminator)
{
    CQelProperty value;
    value.SetString(L"AB\0C", 77);
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize), "410042000000");
    value.SetURL(L"X\0Y");
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize), "58000000");
}

TEST(PropertyModel, Utf8TextIsConverted)
{
    CQelProperty value;
    value.SetStringUTF8("\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(value.GetType(), CQelProperty::eString);
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize), "e400ac200000");
}

TEST(PropertyModel, Utf8TextEndsAtAnEmbeddedZero)
{
    CQelProperty value;
    value.SetStringUTF8(std::string("A\0B", 3));
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize), "41000000");
}

TEST(PropertyModel, BlobOfNullPointerIsEmpty)
{
    CQelProperty value;
    value.SetBlob(nullptr, 0);
    EXPECT_EQ(value.GetType(), CQelProperty::eBlob);
    EXPECT_EQ(value.Data().nBufferSize, 0U);
    EXPECT_NE(value.Data().pBuffer, nullptr);
}

TEST(PropertyModel, ValueCanBeSetFromItsOwnBytes)
{
    CQelProperty value = Blob("abcdef");
    value.SetBlob(value.Data().pBuffer + 2, 3);
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize), "636465");
}

TEST(PropertyModel, CurrencySymbolOutlivesOtherSetters)
{
    CQelProperty value = Amount(1.0, L"EUR");
    value.SetInt(1);
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
    value.SetNull();
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
    value.SetString(L"x");
    EXPECT_EQ(value.GetCurrencySymbol(), L"EUR");
}

TEST(PropertyModel, CurrencySymbolIsSetWithoutTouchingTheRest)
{
    CQelProperty value = Int(5);
    value.SetTimeBIAS(30);
    value.SetCurrencySymbol(L"$");
    EXPECT_EQ(StateOf(value), "2 size 0 buffer none reserved 0 symbol '$' bias 30 payload 0500000000000000");
}

TEST(PropertyModel, CurrencyCanTakeItsOwnSymbol)
{
    CQelProperty value = Amount(1.0, L"a symbol of some length");
    value.SetCurrency(2.0, value.Data().sCurrencySymbol);
    EXPECT_EQ(value.GetCurrencySymbol(), L"a symbol of some length");
    EXPECT_EQ(value.Data().uValue.nCurrency, 20000);
}

TEST(PropertyModel, ReferenceWiderThanThirtyTwoBitsNamesNothing)
{
    if constexpr (sizeof(unsigned long) > 4) {
        EXPECT_EQ(Reference(static_cast<unsigned long>(0x100000007ULL)).Data().uValue.nULong, 0U);
        EXPECT_EQ(Reference(static_cast<unsigned long>(0x100000000ULL)).Data().uValue.nULong, 0U);
    }
    EXPECT_EQ(Reference(0xFFFFFFFFUL).Data().uValue.nULong, 0xFFFFFFFFU);
}

TEST(PropertyModel, RetaggingKeepsEverythingElse)
{
    CQelProperty value = Int64(1);
    value.SetTimeBIAS(5);
    value.SetType(CQelProperty::eDouble);
    EXPECT_EQ(StateOf(value), "6 size 0 buffer none reserved 0 symbol '' bias 5 payload 0100000000000000");
    EXPECT_EQ(value.Data().uValue.dDouble, std::numeric_limits<double>::denorm_min());

    value = Retagged(Text(L"A"), CQelProperty::eInt);
    EXPECT_EQ(StateOf(value),
              "2 size 4 buffer [41000000] reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, RetaggedNullIsNull)
{
    EXPECT_TRUE(Retagged(Text(L"A"), CQelProperty::eNull).IsNull());
    EXPECT_FALSE(Retagged(CQelProperty(), 99).IsNull());
}

TEST(PropertyModel, ResetGivesAnEmptyValueOfTheType)
{
    CQelProperty value = Amount(3.0, L"EUR");
    value.SetString(L"text");
    value.SetTimeBIAS(5);
    value.ResetToType(CQelProperty::eDate);
    EXPECT_EQ(StateOf(value),
              "7 size 0 buffer none reserved 0 symbol 'EUR' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, ClearKeepsTypeAndSymbol)
{
    CClearable value;
    value.SetCurrency(3.0, L"EUR");
    value.SetTimeBIAS(5);
    value.Clear();
    EXPECT_EQ(StateOf(value),
              "10 size 0 buffer none reserved 0 symbol 'EUR' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, CopyIsDeepAndComplete)
{
    CQelProperty original = Amount(1.0, L"EUR");
    original.SetString(L"AB");
    original.SetTimeBIAS(90);
    const CQelProperty copy(original);
    EXPECT_EQ(StateOf(copy),
              "1 size 6 buffer [410042000000] reserved 0 symbol 'EUR' bias 90 payload 0000000000000000");
    EXPECT_NE(copy.Data().pBuffer, original.Data().pBuffer);
    original.SetString(L"other");
    EXPECT_EQ(HexOf(copy.Data().pBuffer, 6), "410042000000");
}

TEST(PropertyModel, AssignmentReplacesTheWholeValue)
{
    CQelProperty value = Text(L"a text that goes");
    const CQelProperty& result = (value = Amount(2.0, L"$"));
    EXPECT_EQ(&result, &value);
    EXPECT_EQ(StateOf(value),
              "10 size 0 buffer none reserved 0 symbol '$' bias 9999 payload 204e000000000000");
}

TEST(PropertyModel, AssignmentToItselfChangesNothing)
{
    CQelProperty value = Text(L"AB");
    const unsigned char* buffer = value.Data().pBuffer;
    const CQelProperty& same = value;
    value = same;
    EXPECT_EQ(value.Data().pBuffer, buffer);
    EXPECT_EQ(HexOf(buffer, 6), "410042000000");
}

TEST(PropertyModel, CopyOfAnEmptyBlobHasNoBuffer)
{
    CQelProperty original = Blob("");
    const CQelProperty copy = original;
    original.SetString(L"other");
    EXPECT_EQ(StateOf(copy), "13 size 0 buffer none reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, CopyOfARetaggedTextKeepsItsBuffer)
{
    CQelProperty original = Retagged(Text(L"A"), CQelProperty::eDouble);
    const CQelProperty copy = original;
    original.SetNull();
    EXPECT_EQ(StateOf(copy),
              "6 size 4 buffer [41000000] reserved 0 symbol '' bias 9999 payload 0000000000000000");
}

TEST(PropertyModel, MovedFromValueIsNullAndTheBufferIsHandedOver)
{
    const auto original = std::make_unique<CQelProperty>(Amount(1.0, L"a symbol of some length"));
    original->SetString(L"AB");
    const unsigned char* buffer = original->Data().pBuffer;
    CQelProperty target(std::move(*original));
    EXPECT_EQ(target.Data().pBuffer, buffer);
    EXPECT_EQ(target.GetCurrencySymbol(), L"a symbol of some length");
    EXPECT_EQ(StateOf(*original), kNullState);
}

TEST(PropertyModel, MoveAssignmentFreesTheOldBufferAndLeavesNull)
{
    const auto original = std::make_unique<CQelProperty>(Blob("abc"));
    CQelProperty target = Text(L"old");
    target = std::move(*original);
    EXPECT_EQ(HexOf(target.Data().pBuffer, target.Data().nBufferSize), "616263");
    EXPECT_EQ(StateOf(*original), kNullState);
}

TEST(PropertyModel, MoveToItselfKeepsTheValue)
{
    CQelProperty value = Text(L"A");
    CQelProperty& same = value;
    value = std::move(same);
    EXPECT_EQ(HexOf(value.Data().pBuffer, 4), "41000000");
}
