// values_damaged_test.cpp: values read from damaged bytes answer every question and take every order.
#include "value_host.h"

namespace outside {
namespace {

using namespace qeltest;

struct SDamagedRow
{
    const char* name;
    const char* hex;
};

class DamagedValues : public testing::TestWithParam<SDamagedRow>
{
protected:
    CQelProperty value = Stored(GetParam().hex);
};

TEST_P(DamagedValues, KeepTheirBytesWhenStoredAgain)
{
    EXPECT_EQ(HexOf(value, "2 4 4 4 4 8 100"), GetParam().hex);
}

TEST_P(DamagedValues, AreReadUnderEveryType)
{
    const CLocaleEnvironment locale("C");
    const CQelProperty other = Text(L"ab");
    for (int type = -1; type <= 15; ++type) {
        CQelProperty retagged = Retagged(value, type);
        EXPECT_LE(retagged.String().size(), 512u);
        EXPECT_LE(retagged.String(L"%d").size(), 512u);
        retagged.Double();
        EXPECT_FALSE(retagged < retagged);
        EXPECT_FALSE(retagged < Retagged(other, type) && Retagged(other, type) < retagged);
        COleVariant variant;
        retagged.ToVariant(&variant, VT_EMPTY);
        CQelProperty read;
        TavBlob blob;
        blob << retagged;
        blob >> read;
        EXPECT_EQ(HexOf(read), HexOf(retagged));
    }
}

TEST_P(DamagedValues, TakeEveryNewContent)
{
    for (const CQelProperty& content : {Text(L"ab"), Link(L"ab"), Blob("ab"), Int(5), Amount(1.5)}) {
        CQelProperty target = value;
        target = content;
        EXPECT_EQ(HexOf(target), HexOf(content));
    }
    CQelProperty text = value;
    text.SetString(L"ab");
    EXPECT_EQ(HexOf(text), HexOf(Text(L"ab")));
    CQelProperty link = value;
    link.SetURL(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(BufferOf(link), "none");
}

INSTANTIATE_TEST_SUITE_P(
    Records, DamagedValues,
    testing::Values(
        SDamagedRow{"TextWithoutTerminator",
                    "0400 01000000 00000000 04000000 00000000 0000000000000000 61006200"},
        SDamagedRow{"TextOfHalfAUnit", "0400 01000000 00000000 01000000 00000000 0000000000000000 61"},
        SDamagedRow{"LinkOfThreeBytes", "0400 0b000000 00000000 03000000 00000000 0000000000000000 610062"},
        SDamagedRow{"TextWithoutBytes", "0400 01000000 00000000 00000000 00000000 0000000000000000"},
        SDamagedRow{"TextBehindItsTerminator",
                    "0400 01000000 00000000 06000000 00000000 0000000000000000 610000006200"},
        SDamagedRow{"TextWithAPayload", "0400 01000000 00000000 02000000 00000000 ffffffffffffffff 0000"},
        SDamagedRow{"NumberWithASize", "0400 02000000 00000000 ffffffff 00000000 0500000000000000"},
        SDamagedRow{"NullWithASize", "0400 00000000 00000000 10000000 00000000 0500000000000000"},
        SDamagedRow{"UnknownType", "0400 0f000000 ffffffff ffffffff 00000000 ffffffffffffffff"},
        SDamagedRow{"NegativeType", "0400 ffffffff 00000000 04000000 00000000 ffffffffffffffff"},
        SDamagedRow{"DateThatIsNone", "0400 07000000 00000000 00000000 00000000 000000000000f87f"},
        SDamagedRow{"TrueOfAllBits", "0400 09000000 00000000 00000000 00000000 ffffffffffffffff"}),
    SRowName());

TEST(DamagedText, UnknownTypesShowTheirPayloadThroughAFormatAlone)
{
    const CQelProperty value = Bits(5, static_cast<CQelProperty::EType>(15));
    EXPECT_EQ(value.String(nullptr), L"");
    EXPECT_EQ(value.String(L"%d"), L"5");
}

TEST(ResourceHandle, IsTheHostsAgainAfterEveryText)
{
    HINSTANCE before = AfxGetResourceHandle();
    CQelProperty::GetTypeName(CQelProperty::eInt);
    CQelProperty::GetTypeName(CQelProperty::eDateTime);
    Bool(true).String();
    EXPECT_EQ(AfxGetResourceHandle(), before);
}

} // namespace
} // namespace outside
