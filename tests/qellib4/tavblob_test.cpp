// tavblob_test.cpp: the byte buffer: content, memory kept, streams in and out.
#include "../support/hex.h"
#include "../support/result_matchers.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

using qeltest::HexOf;

TavBlob BlobOf(const std::string& bytes)
{
    TavBlob blob;
    blob.SetData(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return blob;
}

TEST(Blob, StartsEmpty)
{
    const TavBlob blob;
    EXPECT_EQ(blob.GetData(), nullptr);
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST(Blob, HoldsACopyOfTheBytes)
{
    std::string bytes = "abc";
    const TavBlob blob = BlobOf(bytes);
    bytes = "xyz";
    EXPECT_EQ(HexOf(blob), "616263");
}

TEST(Blob, BecomesEmptyAgain)
{
    TavBlob blob = BlobOf("abc");
    blob.SetData(nullptr, 0);
    EXPECT_EQ(blob.GetData(), nullptr);
    EXPECT_EQ(blob.GetSize(), 0u);
    EXPECT_EQ(blob.Resize(0), nullptr);
}

TEST(Blob, KeepsItsMemoryWhenTheContentIsReplaced)
{
    TavBlob blob = BlobOf(std::string(1000, 'a'));
    const unsigned char* const memory = blob.GetData();
    blob.SetData("b", 1);
    EXPECT_EQ(blob.GetData(), memory);
    blob.SetData(nullptr, 0);
    blob.SetData(std::string(1000, 'c').data(), 1000);
    EXPECT_EQ(blob.GetData(), memory);
    EXPECT_EQ(blob.Resize(1000), memory);
    blob = BlobOf("copied");
    const TavBlob other = BlobOf("x");
    blob = other;
    EXPECT_EQ(HexOf(blob), "78");
}

TEST(Blob, CopyAssignedKeepsItsMemory)
{
    TavBlob blob = BlobOf(std::string(1000, 'a'));
    const unsigned char* const memory = blob.GetData();
    const TavBlob other = BlobOf("xyz");
    blob = other;
    EXPECT_EQ(blob.GetData(), memory);
    EXPECT_EQ(HexOf(blob), "78797a");
    EXPECT_EQ(HexOf(other), "78797a");
}

TEST(Blob, ItsOwnBytesMayBeItsNewContent)
{
    TavBlob blob = BlobOf("abcdef");
    blob.SetData(blob.GetData() + 2, 3);
    EXPECT_EQ(HexOf(blob), "636465");
    blob.SetData(blob.GetData(), 3);
    EXPECT_EQ(HexOf(blob), "636465");
    TavBlob& itself = blob;
    blob = itself;
    EXPECT_EQ(HexOf(blob), "636465");
}

TEST(Blob, CopiesAreApart)
{
    TavBlob blob = BlobOf("abc");
    const TavBlob copy(blob);
    blob.Resize(3)[0] = 'Z';
    EXPECT_EQ(HexOf(copy), "616263");
}

TEST(Blob, MoveTakesTheMemoryAndLeavesAnEmptyBlob)
{
    const auto from = std::make_unique<TavBlob>(BlobOf("abc"));
    const unsigned char* const memory = from->GetData();
    const auto made = std::make_unique<TavBlob>(std::move(*from));
    EXPECT_EQ(made->GetData(), memory);
    EXPECT_EQ(from->GetSize(), 0u);
    TavBlob assigned = BlobOf("old");
    assigned = std::move(*made);
    EXPECT_EQ(assigned.GetData(), memory);
    EXPECT_EQ(made->GetSize(), 0u);
    EXPECT_EQ(made->GetData(), nullptr);
    *made = BlobOf("again");
    EXPECT_EQ(HexOf(*made), "616761696e");
}

TEST(Blob, MovedToItselfKeepsItsContent)
{
    TavBlob blob = BlobOf("abc");
    TavBlob& itself = blob;
    blob = std::move(itself);
    EXPECT_EQ(HexOf(blob), "616263");
}

TEST(Blob, ResizedOneIsFilledByTheCaller)
{
    TavBlob blob;
    unsigned char* const bytes = blob.Resize(2);
    bytes[0] = 1;
    bytes[1] = 2;
    EXPECT_EQ(HexOf(blob), "0102");
    EXPECT_EQ(bytes, blob.GetData());
}

TEST(BlobStream, LoadTakesFromThePositionToTheEnd)
{
    CQelMemFile file(false, 16, 16);
    qeltest::Fill(file, "01020304");
    unsigned short skipped = 0;
    file >> skipped;
    TavBlob blob = BlobOf("old content");
    EXPECT_TRUE(blob.Load(&file));
    EXPECT_EQ(HexOf(blob), "0304");
    EXPECT_EQ(file.BytesRemaining(), 0u);
}

TEST(BlobStream, LoadAtTheEndGivesAnEmptyBlob)
{
    CQelMemFile file(false, 16, 16);
    file.Write("abc", 3);
    TavBlob blob = BlobOf("old");
    EXPECT_TRUE(blob.Load(&file));
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST(BlobStream, StoreWritesTheBytesAlone)
{
    CQelMemFile file(false, 16, 16);
    file << true;
    EXPECT_TRUE(BlobOf("ab").Store(&file));
    EXPECT_TRUE(TavBlob().Store(&file));
    EXPECT_EQ(HexOf(file), "016162");
}

TEST(BlobStream, NullStreamIsRefused)
{
    TavBlob blob = BlobOf("kept");
    EXPECT_FALSE(blob.Load(nullptr));
    EXPECT_FALSE(blob.Store(nullptr));
    EXPECT_EQ(blob.GetSize(), 4u);
}

// A stream that says more than it gives.
class CBoastful : public CQelMemFile
{
public:
    CBoastful() : CQelMemFile(false, 16, 16) {}
    long long GetFileSize() const override { return size; }
    long long size = 1000;
};

TEST(BlobStream, StreamThatFailsHalfWayLeavesAnEmptyBlob)
{
    CBoastful file;
    TavBlob blob = BlobOf("old");
    EXPECT_THAT(qeltest::CodeThrownBy([&] { blob.Load(&file); }), qeltest::Gives(10011));
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST(BlobStream, MoreThanABlobCanHoldIsRefused)
{
    CBoastful file;
    file.size = 4294967296;
    TavBlob blob = BlobOf("kept");
    EXPECT_FALSE(blob.Load(&file));
    EXPECT_EQ(blob.GetSize(), 4u);
}

} // namespace
