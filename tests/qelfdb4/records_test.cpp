// records_test.cpp: records written, read, listed and removed.
#include "store_fixture.h"

#include <random>

using namespace qeltest;

namespace {

class StoreRecords : public CStoreFixture
{
protected:
    void SetUp() override { Create(); }
};

TEST_F(StoreRecords, RecordComesBackByteForByte)
{
    const std::string bytes("a\0b\xff", 4);
    ASSERT_THAT(Put(store, 1000, 7, bytes), Succeeds());
    unsigned int size = 0;
    ASSERT_THAT(store.GetSize({1000, 7}, size), Succeeds());
    EXPECT_EQ(size, 4U);
    std::string buffer(6, '.');
    ASSERT_THAT(store.Get({1000, 7}, buffer.data()), Succeeds());
    EXPECT_EQ(buffer, bytes + "..");
}

TEST_F(StoreRecords, EmptyRecordIsARecord)
{
    ASSERT_THAT(store.Set({1, 1}, nullptr, 0, 0), Succeeds());
    unsigned int size = 9;
    EXPECT_TRUE(store.HasRecord({1, 1}));
    ASSERT_THAT(store.GetSize({1, 1}, size), Succeeds());
    EXPECT_EQ(size, 0U);
    EXPECT_THAT(store.Get({1, 1}, nullptr), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=");
}

TEST_F(StoreRecords, SecondSetReplacesTheFirst)
{
    for (const char* text : {"a long first text", "short", "", "again longer"}) {
        ASSERT_THAT(Put(store, 1, 1, text), Succeeds());
        EXPECT_EQ(Take(store, 1, 1), text);
    }
    EXPECT_EQ(Dump(store, 1), "1=again longer");
}

TEST_F(StoreRecords, MissingRecordIsNotFoundAndChangesNoArgument)
{
    unsigned int size = 9;
    char byte = 'x';
    TavBlob blob;
    blob.SetData("old", 3);
    EXPECT_THAT(store.GetSize({1, 1}, size), Gives(10020));
    EXPECT_THAT(store.Get({1, 1}, &byte), Gives(10020));
    EXPECT_THAT(store.Get({1, 1}, blob), Gives(10020));
    EXPECT_THAT(store.Remove({1, 1}), Gives(10020));
    EXPECT_FALSE(store.HasRecord({1, 1}));
    EXPECT_EQ(size, 9U);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(blob.GetSize(), 3U);
}

TEST_F(StoreRecords, WholeRangeOfAddressesIsKeptApart)
{
    const std::vector<CDovBlobDB::SSelector> corners = {
        {0, 0}, {0, 4294967295}, {1, 0}, {32768, 2147483648}, {65535, 0}, {65535, 4294967295}};
    for (const auto& at : corners)
        ASSERT_THAT(
            Put(store, at.selector, at.oid, std::to_string(at.selector) + ":" + std::to_string(at.oid)),
            Succeeds());
    EXPECT_EQ(Dump(store, 0), "0=0:0 4294967295=0:4294967295");
    EXPECT_EQ(Dump(store, 1), "0=1:0");
    EXPECT_EQ(Dump(store, 32768), "2147483648=32768:2147483648");
    EXPECT_EQ(Dump(store, 65535), "0=65535:0 4294967295=65535:4294967295");
}

TEST_F(StoreRecords, NumberWiderThan32BitsNamesNoRecordAndIsNeverCut)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "every unsigned long is an object id here";
    const CDovBlobDB::SSelector wide = {7, static_cast<unsigned long>(0x100000001ULL)};
    ASSERT_THAT(Put(store, 7, 1, "one"), Succeeds());
    unsigned int size = 9;
    char byte = 'x';
    EXPECT_THAT(store.Set(wide, "two", 3, 0), Gives(10020));
    EXPECT_THAT(store.GetSize(wide, size), Gives(10020));
    EXPECT_THAT(store.Get(wide, &byte), Gives(10020));
    EXPECT_THAT(store.Remove(wide), Gives(10020));
    EXPECT_FALSE(store.HasRecord(wide));
    EXPECT_EQ(Dump(store, 7), "1=one");
    Reopen(true);
    EXPECT_THAT(store.Set(wide, "two", 3, 0), Gives(17501));
    store.Close();
    EXPECT_THAT(store.Get(wide, &byte), Gives(17500));
}

TEST_F(StoreRecords, OidsComeAscending)
{
    for (const unsigned int oid : {40U, 7U, 4294967295U, 1U, 2147483648U})
        ASSERT_THAT(Put(store, 5, oid, "x"), Succeeds());
    std::vector<unsigned long> oids = {99};
    ASSERT_THAT(store.GetOids(5, oids, false), Succeeds());
    EXPECT_THAT(oids, testing::ElementsAre(1, 7, 40, 2147483648, 4294967295));
    ASSERT_THAT(store.GetOids(6, oids, true), Succeeds());
    EXPECT_THAT(oids, testing::IsEmpty());
}

TEST_F(StoreRecords, NumberCountsOneSelectorOnly)
{
    Put(store, 4, 1, "x");
    Put(store, 5, 1, "x");
    Put(store, 5, 2, "x");
    Put(store, 6, 1, "x");
    unsigned int count = 99;
    ASSERT_THAT(store.GetNumberOfRecords(5, count), Succeeds());
    EXPECT_EQ(count, 2U);
    ASSERT_THAT(store.GetNumberOfRecords(7, count), Succeeds());
    EXPECT_EQ(count, 0U);
}

TEST_F(StoreRecords, RemovedRecordIsGone)
{
    Put(store, 1, 1, "one");
    Put(store, 1, 2, "two");
    EXPECT_THAT(store.Remove({1, 1}), Succeeds());
    EXPECT_THAT(store.Remove({1, 1}), Gives(10020));
    EXPECT_EQ(Dump(store, 1), "2=two");
}

TEST_F(StoreRecords, RemovingASelectorSparesItsNeighbours)
{
    Put(store, 4, 4294967295, "before");
    Put(store, 5, 0, "first");
    Put(store, 5, 4294967295, "last");
    Put(store, 6, 0, "after");
    EXPECT_THAT(store.RemoveSelector(5), Succeeds());
    EXPECT_THAT(store.RemoveSelector(5), Succeeds());
    EXPECT_EQ(Dump(store, 4) + "|" + Dump(store, 5) + "|" + Dump(store, 6), "4294967295=before||0=after");
}

TEST_F(StoreRecords, EverythingIsThereAfterReopening)
{
    Put(store, 2, 1, "schema", 50);
    Put(store, 1000, 1, "record");
    Reopen();
    EXPECT_EQ(Dump(store, 2) + "|" + Dump(store, 1000), "1=schema|1=record");
    Reopen(true);
    EXPECT_EQ(Dump(store, 2) + "|" + Dump(store, 1000), "1=schema|1=record");
}

TEST_F(StoreRecords, LargeRecordsComeBackWhole)
{
    std::string bytes;
    bytes.resize(20'000'000);
    std::minstd_rand random(1);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    ASSERT_THAT(Put(store, 1, 1, bytes), Succeeds());
    Reopen();
    EXPECT_TRUE(Take(store, 1, 1) == bytes);
}

TEST_F(StoreRecords, SizeBeyondTheEnginesLimitIsRefusedWithoutReadingTheBytes)
{
    Put(store, 1, 1, "kept");
    for (const unsigned int size : {1'000'000'001U, 4294967295U})
        EXPECT_THAT(store.Set({1, 1}, "x", size, 0), Gives(17318));
    EXPECT_THAT(store.Set({1, 1}, nullptr, 1, 0), Gives(17321));
    EXPECT_EQ(Dump(store, 1), "1=kept");
}

TEST_F(StoreRecords, NullBufferTakesAnEmptyRecordAlone)
{
    ASSERT_THAT(Put(store, 2, 1, "one"), Succeeds());
    ASSERT_THAT(Put(store, 2, 2, ""), Succeeds());
    EXPECT_THAT(store.Get({2, 1}, nullptr), Gives(17321));
    EXPECT_THAT(store.Get({2, 2}, nullptr), Succeeds());
}

TEST_F(StoreRecords, SizesAroundPageBoundsComeBackWhole)
{
    for (unsigned int size = 3900; size < 4200; ++size)
        ASSERT_THAT(Put(store, 1, size, std::string(size, static_cast<char>(size))), Succeeds());
    Reopen();
    for (unsigned int size = 3900; size < 4200; ++size)
        EXPECT_EQ(Take(store, 1, size), std::string(size, static_cast<char>(size)));
}

} // namespace
