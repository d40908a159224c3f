// memory_test.cpp: what memory values take, and what they are when there is none.
#include <gtest/gtest.h>
#include <qellib4/qelmemfile.h>
#include <qellib4/tavblob.h>
#include <qelprop4/qelproperty.h>

#include "libeval/value/encoding.h"
#include "support/allocations.h"
#include "support/row_name.h"
#include "support/sample_values.h"

#include <functional>
#include <new>
#include <utility>

using namespace qeltest;

namespace {

std::size_t Allocations(const std::function<void()>& work)
{
    const std::size_t before = AllocationCount();
    work();
    return AllocationCount() - before;
}

struct SScalarRow
{
    const char* name;
    CQelProperty value;
};

class ScalarMemory : public testing::TestWithParam<SScalarRow>
{};

} // namespace

TEST_P(ScalarMemory, IsNeverTaken)
{
    TavBlob blob;
    blob << GetParam().value; // takes the blob's own
    CQelProperty other;
    EXPECT_EQ(Allocations([&] {
                  CQelProperty copy(GetParam().value);
                  other = copy;
                  CQelProperty moved(std::move(copy));
                  other = std::move(moved);
                  blob << other;
                  qel::DecodeFrom(blob.GetData(), blob.GetSize(), other);
                  other.SetNull();
              }),
              0U);
}

INSTANTIATE_TEST_SUITE_P(Types, ScalarMemory,
                         testing::Values(SScalarRow{"Null", {}}, SScalarRow{"Int", Int(5)},
                                         SScalarRow{"UInt", UInt(5)}, SScalarRow{"Int64", Int64(5)},
                                         SScalarRow{"UInt64", UInt64(5)}, SScalarRow{"Double", Double(5)},
                                         SScalarRow{"Date", Date(5)}, SScalarRow{"Time", Time(0.5)},
                                         SScalarRow{"Bool", Bool(true)}, SScalarRow{"Currency", Amount(5.0)},
                                         SScalarRow{"Reference", Reference(5)},
                                         SScalarRow{"DateTime", DateTime(5.5)}),
                         SRowName());

TEST(ValueMemory, SettersOfScalarsTakeNone)
{
    CQelProperty value;
    EXPECT_EQ(Allocations([&] {
                  value.SetInt(1);
                  value.SetInt64(1LL);
                  value.SetDouble(1.0);
                  value.SetBool(true);
                  value.SetDate(45000.75, 60);
                  value.SetTime(45000.75, 60);
                  value.SetDateTime(45000.75, 60);
                  value.SetReference(7);
                  value.SetNull();
              }),
              0U);
}

TEST(ValueMemory, TextsAndBlobsTakeTheirBufferAlone)
{
    const std::wstring text = L"a text that no string holds in itself";
    CQelProperty value;
    EXPECT_EQ(Allocations([&] { value.SetString(text); }), 1U);
    EXPECT_EQ(Allocations([&] { value.SetURL(text.c_str()); }), 1U);
    EXPECT_EQ(Allocations([&] { value.SetBlob("abc", 3); }), 1U);
    EXPECT_EQ(Allocations([&] { static_cast<void>(CQelProperty(value)); }), 1U);
    EXPECT_EQ(Allocations([&] { CQelProperty moved(std::move(value)); }), 0U);
}

TEST(ValueMemory, StoredTextTakesItsBufferAloneWhenRead)
{
    TavBlob blob;
    blob << Text(L"a text that no string holds in itself");
    CQelProperty value;
    EXPECT_EQ(Allocations([&] { blob >> value; }), 1U);
    EXPECT_EQ(Allocations([&] { blob << value; }), 0U);
}

TEST(ValueMemory, ComparisonTakesNone)
{
    const CQelProperty left = Text(L"a text that no string holds in itself");
    const CQelProperty right = Text(L"a text that no string holds in itself either");
    EXPECT_EQ(Allocations([&] {
                  EXPECT_TRUE(left < right);
                  EXPECT_FALSE(left == right);
              }),
              0U);
}

TEST(ValueMemory, LackOfItLeavesTheValueAsItWas)
{
    const std::wstring text = L"a text that no string holds in itself";
    const CQelProperty other = Text(text);
    const std::function<void(CQelProperty&)> changes[] = {
        [&](CQelProperty& value) { value.SetString(text); },
        [&](CQelProperty& value) { value.SetURL(text.c_str()); },
        [&](CQelProperty& value) { value.SetBlob("abc", 3); },
        [&](CQelProperty& value) { value.SetCurrency(2.0, text); },
        [&](CQelProperty& value) { value.SetString(std::string("abc"), 1252); },
        [&](CQelProperty& value) { value = other; },
    };
    for (const auto& change : changes) {
        CQelProperty value = Amount(1.5, L"EUR");
        const CFailingMemory memory(0);
        EXPECT_THROW(change(value), std::bad_alloc);
        EXPECT_EQ(value.Data().uValue.nCurrency, 15000);
        EXPECT_EQ(value.GetType(), CQelProperty::eCurrency);
    }
}

TEST(ValueMemory, LackOfItWhileReadingLeavesNull)
{
    TavBlob blob;
    blob << Text(L"text");
    CQelProperty value = Int(5);
    const CFailingMemory memory(0);
    EXPECT_THROW(blob >> value, std::bad_alloc);
    EXPECT_TRUE(value.IsNull());
}
