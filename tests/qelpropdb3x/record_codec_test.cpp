// record_codec_test.cpp: stored records that are short, long, old or damaged.
#include "support/hex.h"
#include "support/legacy_database.h"

using namespace qeltest;

namespace {

class LegacyRecordBytes : public CLegacyTest
{
protected:
    unsigned long lamps = AddTable(
        L"Lamps", {Column(L"Power", CQelProperty::eInt, 0), Column(L"Colour", CQelProperty::eString, 1)});

    std::string Read(const std::string& bytes)
    {
        StoreBytes(1000, 1, bytes);
        return Record(lamps, 1);
    }
    const std::string forty = BytesOf(HexOf(Int(40)));
    const std::string red = BytesOf(HexOf(Text(L"red")));
};

std::string Count(unsigned int count)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(count >> 8 * i);
    return bytes;
}

} // namespace

TEST_F(LegacyRecordBytes, FewerSlotsThanColumnsReadAsNull)
{
    EXPECT_EQ(Read(Count(0)), "1=null 2=null");
    EXPECT_EQ(Read(Count(1) + forty), "1=40 2=null");
    EXPECT_EQ(Read(Count(1) + forty + red), "1=40 2=null"); // the count holds
}

TEST_F(LegacyRecordBytes, SlotsBeyondTheBytesReadAsNull)
{
    EXPECT_EQ(Read(Count(2) + forty), "1=40 2=null");
    EXPECT_EQ(Read(Count(2)), "1=null 2=null");
}

TEST_F(LegacyRecordBytes, CountThatLiesTakesNoMemory)
{
    EXPECT_EQ(Read(Count(0xFFFFFFFF) + forty + red), "1=40 2='red'");
    EXPECT_EQ(Read(Count(0x7FFFFFFF)), "1=null 2=null");
}

TEST_F(LegacyRecordBytes, MoreSlotsThanColumnsAreReadAndLeftOut)
{
    EXPECT_EQ(Read(Count(3) + forty + red + red), "1=40 2='red'");
    EXPECT_EQ(Read(Count(3) + forty + red + red.substr(0, 9)), "code 10011");
}

TEST_F(LegacyRecordBytes, EndInsideTheCountOrInsideASlotIsTheStreamsCode)
{
    const std::string whole = Count(2) + forty + red;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const bool betweenSlots = size == 4 || size == 4 + forty.size();
        log.Forget();
        EXPECT_EQ(Read(whole.substr(0, size)) == "code 10011", !betweenSlots) << size;
        EXPECT_EQ(log.ErrorCodes().empty(), betweenSlots) << size;
    }
}

TEST_F(LegacyRecordBytes, NothingOfADamagedRecordIsHandedOut)
{
    StoreBytes(1000, 1, Count(2) + forty + red.substr(0, 9));
    TRecord values;
    EXPECT_THAT(db.GetRecord(lamps, 1, values), Gives(10011));
    EXPECT_EQ(Show(values), "1=null 2=null");
}

TEST_F(LegacyRecordBytes, AnyFlippedByteIsReadOrRefused)
{
    const std::string whole = Count(2) + forty + red;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(~damaged[at]);
        StoreBytes(1000, 1, damaged);
        TRecord values;
        const unsigned int code = db.GetRecord(lamps, 1, values);
        EXPECT_TRUE(code == 10001 || code == 10011) << at << ": " << code;
        EXPECT_EQ(values.size(), 2U) << at;
    }
}

TEST_F(LegacyRecordBytes, ValuesOfOlderVersionsAreRead)
{
    const unsigned long days = AddTable(L"Days", {Column(L"Day", CQelProperty::eDate, 0)});
    StoreBytes(1001, 1, BytesOf("01000000 0300 07000000 00000000 00000000 00000000 0000000000000000"));
    TRecord values;
    ASSERT_THAT(db.GetRecord(days, 1, values), Succeeds());
    EXPECT_EQ(values[0].value.GetType(), CQelProperty::eDate);
    EXPECT_NEAR(values[0].value.Data().uValue.dDouble, 25569.0, 1.0); // 1970-01-01 in the local time zone
}

TEST_F(LegacyRecordBytes, BytesThatFailTheStoresChecksumAre10016)
{
    Add(lamps, {Int(1), Text(L"seldom")});
    db.Close();
    std::string file = ReadFile(folder.File(L"legacy.store"));
    const std::string text("s\0e\0l\0d\0o\0m", 11);
    const std::size_t at = file.find(text);
    ASSERT_NE(at, std::string::npos);
    file[at] = 'S';
    WriteFile(folder.File(L"legacy.store"), file);
    ASSERT_THAT(db.Open(path, false), Succeeds());
    log.Forget();
    EXPECT_EQ(Record(lamps, 2), "code 10016");
    EXPECT_EQ(log.Take(), "I4 + Getting record\nE 10016\nI4 - Done\n");
}
