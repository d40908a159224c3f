// values_stored_test.cpp: the stored bytes of every type, written and read.
#include "value_host.h"

namespace outside {
namespace {

using namespace qeltest;

struct SBytesRow
{
    const char* name;
    CQelProperty value;
    const char* hex;
};

class StoredForm : public testing::TestWithParam<SBytesRow>
{};

constexpr const char* kFields = "2 4 4 4 4 8 100";

TEST_P(StoredForm, IsWrittenByteByByte)
{
    EXPECT_EQ(HexOf(GetParam().value, kFields), GetParam().hex);
}

TEST_P(StoredForm, IsReadBackIntoAFreshValue)
{
    const CQelProperty read = Stored(GetParam().hex);
    EXPECT_EQ(HexOf(read, kFields), GetParam().hex);
    EXPECT_EQ(read.GetType(), GetParam().value.GetType());
    EXPECT_EQ(read.TimeBIAS(), 9999);
}

TEST_P(StoredForm, IsTheContentOfABlob)
{
    TavBlob blob;
    blob.SetData("previous content that is longer than any value here, and goes away whole", 72);
    EXPECT_EQ(&(blob << GetParam().value), &blob);
    EXPECT_EQ(HexOf(blob, kFields), GetParam().hex);
    CQelProperty read = Text(L"previous");
    EXPECT_EQ(&(blob >> read), &blob);
    EXPECT_EQ(HexOf(read, kFields), GetParam().hex);
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, StoredForm,
    testing::Values(
        SBytesRow{"Null", CQelProperty(), "0400 00000000 00000000 00000000 00000000 0000000000000000"},
        SBytesRow{"Int", Int(-2), "0400 02000000 00000000 00000000 00000000 feffffff00000000"},
        SBytesRow{"UInt", UInt(4000000000u), "0400 03000000 00000000 00000000 00000000 00286bee00000000"},
        SBytesRow{"Int64", Int64(-2), "0400 04000000 00000000 00000000 00000000 feffffffffffffff"},
        SBytesRow{"UInt64", UInt64(0x0102030405060708ull),
                  "0400 05000000 00000000 00000000 00000000 0807060504030201"},
        SBytesRow{"Double", Double(1.5), "0400 06000000 00000000 00000000 00000000 000000000000f83f"},
        SBytesRow{"Date", Date(45000.75, 60), "0400 07000000 00000000 00000000 00000000 0000000000f9e540"},
        SBytesRow{"Time", Time(45000.75, 60), "0400 08000000 00000000 00000000 00000000 000000000000e83f"},
        SBytesRow{"True", Bool(true), "0400 09000000 00000000 00000000 00000000 0100000000000000"},
        SBytesRow{"False", Bool(false), "0400 09000000 00000000 00000000 00000000 0000000000000000"},
        SBytesRow{"Currency", Amount(1.23456), "0400 0a000000 00000000 00000000 00000000 3930000000000000"},
        SBytesRow{"NegativeCurrency", Amount(-1.0),
                  "0400 0a000000 00000000 00000000 00000000 f0d8ffffffffffff"},
        SBytesRow{"Reference", Reference(4294967295ul),
                  "0400 0c000000 00000000 00000000 00000000 ffffffff00000000"},
        SBytesRow{"DateTime", DateTime(45000.75),
                  "0400 0e000000 00000000 00000000 00000000 0000000018f9e540"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Buffers, StoredForm,
    testing::Values(
        SBytesRow{"EmptyText", Text(L""), "0400 01000000 00000000 02000000 00000000 0000000000000000 0000"},
        SBytesRow{"Text", Text(L"a\u20ac"),
                  "0400 01000000 00000000 06000000 00000000 0000000000000000 6100ac200000"},
        SBytesRow{"Surrogates", Text(L"\U0001F600"),
                  "0400 01000000 00000000 06000000 00000000 0000000000000000 3dd800de0000"},
        SBytesRow{"Link", Link(L"a"), "0400 0b000000 00000000 04000000 00000000 0000000000000000 61000000"},
        SBytesRow{"LinkWithoutBuffer", Retagged(CQelProperty(), 11),
                  "0400 0b000000 00000000 00000000 00000000 0000000000000000"},
        SBytesRow{"Blob", Blob(std::string("\0\xff", 2)),
                  "0400 0d000000 00000000 02000000 00000000 0000000000000000 00ff"},
        SBytesRow{"EmptyBlob", Blob(""), "0400 0d000000 00000000 00000000 00000000 0000000000000000"}),
    SRowName());

TEST(StoredSymbol, IsWrittenForEveryType)
{
    CQelProperty value = Amount(1.0, L"EUR");
    EXPECT_EQ(HexOf(value, "2 4 4 4 4 6 8"),
              "0400 0a000000 00000000 00000000 03000000 450055005200 1027000000000000");
    value.SetInt(1);
    EXPECT_EQ(HexOf(value, "2 4 4 4 4 6 8"),
              "0400 02000000 00000000 00000000 03000000 450055005200 0100000000000000");
    value.SetString(L"");
    value.SetCurrencySymbol(L"\U0001F600");
    EXPECT_EQ(HexOf(value, "2 4 4 4 4 4 8 2"),
              "0400 01000000 00000000 02000000 02000000 3dd800de 0000000000000000 0000");
}

TEST(StoredReading, ReplacesAllButTheBias)
{
    CQelProperty value = Text(L"before");
    value.SetCurrencySymbol(L"EUR");
    value.SetTimeBIAS(120);
    TavBlob blob;
    blob << Date(45000.0, 60);
    blob >> value;
    EXPECT_EQ(value.GetType(), CQelProperty::eDate);
    EXPECT_EQ(value.Data().uValue.dDouble, 45000.0);
    EXPECT_EQ(value.TimeBIAS(), 120);
    EXPECT_EQ(value.GetCurrencySymbol(), L"");
    EXPECT_EQ(BufferOf(value), "none");
    EXPECT_EQ(value.Data().nBufferSize, 0u);
}

TEST(StoredReading, FreshValueHasNoBias)
{
    TavBlob blob;
    blob << Date(45000.0, 60);
    CQelProperty value;
    blob >> value;
    EXPECT_EQ(value.TimeBIAS(), 9999);
}

TEST(StoredReading, KeepsTheReservedWord)
{
    const char* const hex = "0400 02000000 78563412 00000000 00000000 0500000000000000";
    EXPECT_EQ(Stored(hex).Data().nReserved, 0x12345678u);
    EXPECT_EQ(HexOf(Stored(hex), kFields), hex);
}

TEST(StoredReading, AcceptsAnyVersionAndWritesTheFourth)
{
    const std::string rest = " 02000000 00000000 00000000 00000000 0500000000000000";
    for (const char* version : {"0000", "0100", "0300", "0500", "ffff"})
        EXPECT_EQ(HexOf(Stored(version + rest), kFields), "0400" + rest);
}

TEST(StoredReading, TypesBeyondTheLastAreReadAsTheyStand)
{
    const CQelProperty value = Stored("0400 0f000000 00000000 64000000 00000000 0500000000000000");
    EXPECT_EQ(static_cast<int>(value.GetType()), 15);
    EXPECT_EQ(value.Data().nBufferSize, 100u);
    EXPECT_EQ(value.Data().pBuffer, nullptr);
    EXPECT_EQ(value.Data().uValue.nUInt64, 5ull);
    EXPECT_EQ(static_cast<int>(Stored(Scalar("0400", "ffffffff", "0100000000000000")).GetType()), -1);
}

TEST(StoredRetag, TextAsANumberWritesItsSizeAndNoBuffer)
{
    EXPECT_EQ(HexOf(Retagged(Text(L"a"), CQelProperty::eInt), kFields),
              "0400 02000000 00000000 04000000 00000000 0000000000000000");
}

TEST(StoredRetag, TextAsABlobIsTheBytesOfItsUnits)
{
    EXPECT_EQ(HexOf(Retagged(Text(L"a"), CQelProperty::eBlob), kFields),
              "0400 0d000000 00000000 04000000 00000000 0000000000000000 61000000");
}

TEST(StoredReading, TakesNoBufferForAScalar)
{
    const CQelProperty value = Stored("0400 02000000 00000000 04000000 00000000 0500000000000000 61000000");
    EXPECT_EQ(BufferOf(value), "none");
    EXPECT_EQ(value.Data().nBufferSize, 4u);
}

TEST(StoredReading, GoesOnBehindTheValueBefore)
{
    CQelMemFile file(false, 4096, 4096);
    file << Int(1) << Text(L"ab") << Int(2);
    file.Rewind();
    CQelProperty first;
    CQelProperty second;
    CQelProperty third;
    EXPECT_EQ(&(file >> first), &file);
    file >> second >> third;
    EXPECT_TRUE(first == Int(1));
    EXPECT_TRUE(second == Text(L"ab"));
    EXPECT_TRUE(third == Int(2));
}

TEST(StoredReading, BytesBehindTheValueInABlobAreLeft)
{
    TavBlob blob;
    const std::string bytes = BytesOf(Scalar("0400", "02000000", "0500000000000000") + "ffff");
    blob.SetData(bytes.data(), static_cast<unsigned int>(bytes.size()));
    CQelProperty value;
    blob >> value;
    EXPECT_TRUE(value == Int(5));
    EXPECT_EQ(blob.GetSize(), 28u);
}

struct SOldRow
{
    const char* name;
    const char* zone;
    const char* version;
    int type;
    const char* payload;
    double date;
};

class EarlierVersions : public testing::TestWithParam<SOldRow>
{};

TEST_P(EarlierVersions, HoldSecondsInDatesAndTimes)
{
    const CScopedTimeZone zone(GetParam().zone);
    const std::string type = HexOf(&GetParam().type, 4);
    const CQelProperty value = Stored(Scalar(GetParam().version, type, GetParam().payload));
    EXPECT_EQ(value.GetType(), GetParam().type);
    EXPECT_DOUBLE_EQ(value.Data().uValue.dDouble, GetParam().date);
}

INSTANTIATE_TEST_SUITE_P(
    Records, EarlierVersions,
    testing::Values(SOldRow{"StartOf1970", "UTC0", "0300", 7, "0000000000000000", 25569.0},
                    SOldRow{"StartWestOfGreenwich", "EST5", "0300", 7, "0000000000000000",
                            25568.0 + 19.0 / 24},
                    SOldRow{"DateKeepsItsTime", "UTC0", "0100", 7, "40b3116400000000", 45000.5},
                    SOldRow{"TimeKeepsItsDate", "UTC0", "0000", 8, "40b3116400000000", 45000.5},
                    SOldRow{"Before1970", "UTC0", "0300", 7, "ffffffffffffffff", 0.0},
                    SOldRow{"TooLarge", "UTC0", "0300", 8, "ffffffffffffff7f", 0.0},
                    SOldRow{"DateTimeIsNotConverted", "UTC0", "0300", 14, "0000000018f9e540", 45000.75},
                    SOldRow{"FourthVersionIsNotConverted", "UTC0", "0400", 7, "0000000018f9e540", 45000.75},
                    SOldRow{"LaterVersionIsNotConverted", "UTC0", "0500", 8, "0000000018f9e540", 45000.75},
                    SOldRow{"DoubleIsNotConverted", "UTC0", "0300", 6, "0000000018f9e540", 45000.75}),
    SRowName());

class ShortStreams : public testing::TestWithParam<const char*>
{};

TEST_P(ShortStreams, GiveTheStreamsOwnFailure)
{
    CQelProperty value;
    unsigned int code = 0;
    try {
        value = Stored(GetParam());
    } catch (CQelException* exception) {
        code = exception->GetCode();
        exception->Delete();
    }
    EXPECT_EQ(code, 10011u);
}

INSTANTIATE_TEST_SUITE_P(Ends, ShortStreams,
                         testing::Values("", "04", "040002", "0400020000000000", "040002000000000000000000",
                                         "0400 02000000 00000000 00000000 00000000 05",
                                         "0400 02000000 00000000 00000000 ffffffff 4500",
                                         "0400 01000000 00000000 04000000 00000000 0000000000000000 610000",
                                         "0400 0d000000 00000000 ffffffff 00000000 0000000000000000 00"));

} // namespace
} // namespace outside
