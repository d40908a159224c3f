// encoding_test.cpp: the stored form of a value.
#include <gtest/gtest.h>
#include <qellib4/qellib4.h>
#include <qelprop4/qelproperty.h>

#include "libeval/value/encoding.h"
#include "support/hex.h"
#include "support/result_matchers.h"
#include "support/row_name.h"
#include "support/sample_values.h"
#include "support/time_zone.h"

#include <memory>

using namespace qeltest;

namespace {

constexpr const char* kFields = "2 4 4 4 4 8 4096";

struct SFormRow
{
    const char* name;
    CQelProperty value;
    const char* bytes; ///< version type reserved size symbol(length) payload buffer
};

class PropertyEncoding : public testing::TestWithParam<SFormRow>
{};

/// Reads a value from bytes that end where memory does, so that a sanitizer sees a byte too many.
CQelProperty Decoded(const std::string& bytes, CQelProperty value = {})
{
    const std::unique_ptr<unsigned char[]> exact(new unsigned char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    qel::DecodeFrom(exact.get(), bytes.size(), value);
    return value;
}

CQelProperty DecodedHex(std::string_view hex)
{
    return Decoded(BytesOf(hex));
}

std::string BlobBytes(const CQelProperty& value)
{
    TavBlob blob;
    blob << value;
    return std::string(reinterpret_cast<const char*>(blob.GetData()), blob.GetSize());
}

std::string Summary(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    const std::string buffer = data.pBuffer == nullptr ? "none" : HexOf(data.pBuffer, data.nBufferSize);
    return std::to_string(data.eType) + " " + std::to_string(data.nReserved) + " " +
           std::to_string(data.nBufferSize) + " [" + buffer + "] " + HexOf(&data.uValue, 8);
}

} // namespace

TEST_P(PropertyEncoding, WritesTheseBytesToAStream)
{
    EXPECT_EQ(HexOf(GetParam().value, kFields), GetParam().bytes);
}

TEST_P(PropertyEncoding, WritesTheSameBytesToABlob)
{
    TavBlob blob;
    blob.SetData("what was there before, and longer than any of the values here is when it is stored", 80);
    EXPECT_EQ(&(blob << GetParam().value), &blob);
    EXPECT_EQ(HexOf(blob, kFields), GetParam().bytes);
}

TEST_P(PropertyEncoding, ComesBackFromAStream)
{
    CQelMemFile file(false, 4096, 4096);
    file << GetParam().value << Int(77);
    file.Rewind();
    CQelProperty value = Text(L"before");
    file >> value;
    EXPECT_EQ(HexOf(value, kFields), GetParam().bytes);
    file >> value;
    EXPECT_EQ(value.Data().uValue.nInt, 77);
}

TEST_P(PropertyEncoding, ComesBackFromABlob)
{
    TavBlob blob;
    blob << GetParam().value;
    CQelProperty value = Blob("before");
    EXPECT_EQ(&(blob >> value), &blob);
    EXPECT_EQ(HexOf(value, kFields), GetParam().bytes);
}

TEST_P(PropertyEncoding, CutAnywhereGivesTheCodeOfAShortStream)
{
    const std::string whole = BlobBytes(GetParam().value);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CQelProperty value = Text(L"before");
        value.SetTimeBIAS(60);
        EXPECT_EQ(CodeThrownBy([&] { value = Decoded(whole.substr(0, length), value); }), 10011U) << length;
    }
}

TEST_P(PropertyEncoding, CutStreamLeavesNull)
{
    const std::string whole = BlobBytes(GetParam().value);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CQelMemFile file(false, 64, 64);
        file.Write(whole.data(), static_cast<unsigned int>(length));
        file.Rewind();
        CQelProperty value = Text(L"before");
        EXPECT_EQ(CodeThrownBy([&] { file >> value; }), 10011U) << length;
        EXPECT_EQ(Summary(value), "0 0 0 [none] 0000000000000000");
    }
}

TEST_P(PropertyEncoding, IgnoresBytesThatFollow)
{
    EXPECT_EQ(HexOf(Decoded(BlobBytes(GetParam().value) + "more"), kFields), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Types, PropertyEncoding,
    testing::Values(
        SFormRow{"Null", {}, "0400 00000000 00000000 00000000 00000000 0000000000000000"},
        SFormRow{"String", Text(L"A\u20AC"),
                 "0400 01000000 00000000 06000000 00000000 0000000000000000 4100ac200000"},
        SFormRow{"EmptyString", Text(L""), "0400 01000000 00000000 02000000 00000000 0000000000000000 0000"},
        SFormRow{"StringWithSurrogates", Text(L"\U0001F600"),
                 "0400 01000000 00000000 06000000 00000000 0000000000000000 3dd800de0000"},
        SFormRow{"Int", Int(-2), "0400 02000000 00000000 00000000 00000000 feffffff00000000"},
        SFormRow{"UInt", UInt(0x12345678), "0400 03000000 00000000 00000000 00000000 7856341200000000"},
        SFormRow{"Int64", Int64(-2), "0400 04000000 00000000 00000000 00000000 feffffffffffffff"},
        SFormRow{"UInt64", UInt64(1), "0400 05000000 00000000 00000000 00000000 0100000000000000"},
        SFormRow{"Double", Double(1.5), "0400 06000000 00000000 00000000 00000000 000000000000f83f"},
        SFormRow{"Date", Date(45000.75, 60), "0400 07000000 00000000 00000000 00000000 0000000000f9e540"},
        SFormRow{"Time", Time(45000.75, 60), "0400 08000000 00000000 00000000 00000000 000000000000e83f"},
        SFormRow{"BoolTrue", Bool(true), "0400 09000000 00000000 00000000 00000000 0100000000000000"},
        SFormRow{"BoolFalse", Bool(false), "0400 09000000 00000000 00000000 00000000 0000000000000000"},
        SFormRow{"Currency", Amount(1.23456), "0400 0a000000 00000000 00000000 00000000 3930000000000000"},
        SFormRow{"Link", Link(L"A"), "0400 0b000000 00000000 04000000 00000000 0000000000000000 41000000"},
        SFormRow{"LinkWithoutBuffer", Retagged(CQelProperty(), 11),
                 "0400 0b000000 00000000 00000000 00000000 0000000000000000"},
        SFormRow{"Reference", Reference(0xFFFFFFFF),
                 "0400 0c000000 00000000 00000000 00000000 ffffffff00000000"},
        SFormRow{"Blob", Blob("\x01\xFF"), "0400 0d000000 00000000 02000000 00000000 0000000000000000 01ff"},
        SFormRow{"EmptyBlob", Blob(""), "0400 0d000000 00000000 00000000 00000000 0000000000000000"},
        SFormRow{"DateTime", DateTime(45000.75, 60),
                 "0400 0e000000 00000000 00000000 00000000 0000000018f9e540"},
        SFormRow{"UnknownType", Retagged(Int(1), 99),
                 "0400 63000000 00000000 00000000 00000000 0100000000000000"},
        SFormRow{"NegativeType", Retagged(Int(1), -1),
                 "0400 ffffffff 00000000 00000000 00000000 0100000000000000"},
        SFormRow{"TextAsInt", Retagged(Text(L"A"), 2),
                 "0400 02000000 00000000 04000000 00000000 0000000000000000"}),
    SRowName());

TEST(PropertyEncoding, EveryTypeCarriesTheCurrencySymbol)
{
    CQelProperty value = Amount(0.0, L"\u20ACx");
    value.SetInt(1);
    EXPECT_EQ(HexOf(value, "2 4 4 4 4 4 8"),
              "0400 02000000 00000000 00000000 02000000 ac207800 0100000000000000");
    EXPECT_EQ(Decoded(BlobBytes(value)).GetCurrencySymbol(), L"\u20ACx");
}

TEST(PropertyEncoding, LongSymbolOutsideTheBasicPlaneComesBack)
{
    const std::wstring symbol = L"a long symbol \U0001F4B0 with a coin bag";
    EXPECT_EQ(Decoded(BlobBytes(Amount(1.5, symbol))).GetCurrencySymbol(), symbol);
    EXPECT_EQ(HexOf(Amount(1.5, symbol)), HexOf(BlobBytes(Amount(1.5, symbol))));
}

TEST(PropertyEncoding, ReadingReplacesTheSymbol)
{
    CQelProperty value = Amount(1.0, L"EUR");
    value = Decoded(BlobBytes(Int(1)), value);
    EXPECT_EQ(value.GetCurrencySymbol(), L"");
}

TEST(PropertyEncoding, BiasIsNotStored)
{
    const std::string bytes = BlobBytes(Date(45000.0, 60));
    EXPECT_EQ(Decoded(bytes).TimeBIAS(), 9999);
    CQelProperty value;
    value.SetTimeBIAS(120);
    value = Decoded(bytes, value);
    EXPECT_EQ(value.TimeBIAS(), 120);
    EXPECT_EQ(value.Data().uValue.dDouble, 45000.0);
}

TEST(PropertyEncoding, ReservedWordIsCarried)
{
    const CQelProperty value = DecodedHex("0400 02000000 78563412 00000000 00000000 0500000000000000");
    EXPECT_EQ(value.Data().nReserved, 0x12345678U);
    EXPECT_EQ(HexOf(value, kFields), "0400 02000000 78563412 00000000 00000000 0500000000000000");
}

TEST(PropertyEncoding, AnyVersionIsRead)
{
    for (const char* version : {"0000", "0100", "0300", "0500", "ff00", "ffff"}) {
        const CQelProperty value =
            DecodedHex(std::string(version) + "02000000 00000000 00000000 00000000 0500000000000000");
        EXPECT_EQ(Summary(value), "2 0 0 [none] 0500000000000000") << version;
    }
}

TEST(PropertyEncoding, OldDatesAreSecondsSince1970)
{
    const CScopedTimeZone zone("EST5");
    for (const char* version : {"0000", "0100", "0200", "0300"}) {
        const std::string head(version);
        EXPECT_EQ(
            DecodedHex(head + "07000000 00000000 00000000 00000000 0000000000000000").Data().uValue.dDouble,
            25568.0 + 19.0 / 24);
        EXPECT_EQ(
            DecodedHex(head + "08000000 00000000 00000000 00000000 8051010000000000").Data().uValue.dDouble,
            25569.0 + 19.0 / 24);
    }
}

TEST(PropertyEncoding, OldDatesOutsideTheLocalCalendarBecomeZero)
{
    const CScopedTimeZone zone("UTC");
    EXPECT_EQ(Summary(DecodedHex("0300 07000000 00000000 00000000 00000000 ffffffffffffffff")),
              "7 0 0 [none] 0000000000000000");
    EXPECT_EQ(Summary(DecodedHex("0300 08000000 00000000 00000000 00000000 ffffffffffffff7f")),
              "8 0 0 [none] 0000000000000000");
}

TEST(PropertyEncoding, OtherTypesOfOldVersionsAreNotConverted)
{
    EXPECT_EQ(Summary(DecodedHex("0300 0e000000 00000000 00000000 00000000 8051010000000000")),
              "14 0 0 [none] 8051010000000000");
    EXPECT_EQ(Summary(DecodedHex("0300 04000000 00000000 00000000 00000000 8051010000000000")),
              "4 0 0 [none] 8051010000000000");
    EXPECT_EQ(Summary(DecodedHex("0400 07000000 00000000 00000000 00000000 8051010000000000")),
              "7 0 0 [none] 8051010000000000");
}

TEST(PropertyEncoding, SizeWithoutABufferIsReadAsItStands)
{
    const CQelProperty value = DecodedHex("0400 02000000 00000000 ffffffff 00000000 0500000000000000");
    EXPECT_EQ(Summary(CQelProperty(value)), "2 0 4294967295 [none] 0500000000000000" + std::string());
}

TEST(PropertyEncoding, SizeThatTheBytesCannotFillIsRefusedBeforeMemoryIsTaken)
{
    for (const char* type : {"01000000", "0b000000", "0d000000"}) {
        const std::string form =
            "0400" + std::string(type) + "00000000 ffffffff 00000000 0000000000000000 41000000";
        EXPECT_EQ(CodeThrownBy([&] { DecodedHex(form); }), 10011U);
        CQelMemFile file(false, 64, 64);
        Fill(file, form);
        CQelProperty value;
        EXPECT_EQ(CodeThrownBy([&] { file >> value; }), 10011U);
    }
}

TEST(PropertyEncoding, SymbolThatTheBytesCannotFillIsRefusedBeforeMemoryIsTaken)
{
    EXPECT_EQ(
        CodeThrownBy([] { DecodedHex("0400 02000000 00000000 00000000 ffffffff 4100 0500000000000000"); }),
        10011U);
}

TEST(PropertyEncoding, RetaggedTextLeavesItsSizeButNotItsBytes)
{
    const CQelProperty value = Decoded(BlobBytes(Retagged(Text(L"AB"), CQelProperty::eInt)));
    EXPECT_EQ(Summary(value), "2 0 6 [none] 0000000000000000");
    EXPECT_EQ(HexOf(value, kFields), "0400 02000000 00000000 06000000 00000000 0000000000000000");
}

TEST(PropertyEncoding, SizeWithoutABufferBecomesNoneUnderATextType)
{
    const CQelProperty lying = DecodedHex("0400 02000000 00000000 64000000 00000000 0500000000000000");
    EXPECT_EQ(HexOf(Retagged(lying, 1), kFields),
              "0400 01000000 00000000 00000000 00000000 0500000000000000");
    EXPECT_EQ(HexOf(Retagged(lying, 13), kFields),
              "0400 0d000000 00000000 00000000 00000000 0500000000000000");
    EXPECT_EQ(Retagged(lying, 1), Text(L""));
}

TEST(PropertyEncoding, OddTextBuffersAreKeptAndNeverReadOutside)
{
    for (const char* form : {"0400 01000000 00000000 01000000 00000000 0000000000000000 41",
                             "0400 01000000 00000000 03000000 00000000 0000000000000000 410042",
                             "0400 0b000000 00000000 02000000 00000000 0000000000000000 4100",
                             "0400 01000000 00000000 00000000 00000000 0000000000000000"}) {
        const CQelProperty value = DecodedHex(form);
        EXPECT_EQ(HexOf(value), HexOf(BytesOf(form)));
        EXPECT_EQ(value, CQelProperty(value));
        EXPECT_FALSE(value < value);
    }
}

TEST(PropertyEncoding, EmptyBlobReferenceIsAShortStream)
{
    TavBlob blob;
    CQelProperty value = Int(1);
    EXPECT_EQ(CodeThrownBy([&] { blob >> value; }), 10011U);
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(CodeThrownBy([&] { qel::DecodeFrom(nullptr, 0, value); }), 10011U);
}

TEST(StoredForm, IsCheckedExactlyAsItIsRead)
{
    for (const CQelProperty& value :
         {CQelProperty(), Int(5), Text(L"red"), Amount(1.5, L"EUR"), Blob("abc"), Link(L"")}) {
        TavBlob blob;
        qel::EncodeInto(blob, value);
        for (unsigned int size = 0; size <= blob.GetSize(); ++size) {
            for (unsigned int flipped = 0; flipped < size; ++flipped) {
                std::vector<unsigned char> bytes(blob.GetData(), blob.GetData() + size);
                bytes[flipped] ^= 0xFF;
                CQelProperty read;
                EXPECT_EQ(CodeThrownBy([&] { qel::CheckStored(bytes.data(), size); }),
                          CodeThrownBy([&] { qel::DecodeFrom(bytes.data(), size, read); }))
                    << size << " " << flipped;
            }
        }
        EXPECT_EQ(CodeThrownBy([&] { qel::CheckStored(blob.GetData(), blob.GetSize()); }), 0u);
    }
}
