// bitvector_test.cpp: the sparse set of bits.
#include <gtest/gtest.h>
#include <qellib4/bitvector.h>

namespace {

TEST(BitVector, StartsEmpty)
{
    const CBitVector bits;
    EXPECT_EQ(bits.Size(), 0u);
    EXPECT_FALSE(bits.Test(0));
    EXPECT_FALSE(bits.Test(4294967295u));
}

TEST(BitVector, GrowsInStepsUntilItHoldsTheBit)
{
    CBitVector bits;
    bits.Set(0, 32);
    EXPECT_EQ(bits.Size(), 32u);
    bits.Set(31, 32);
    EXPECT_EQ(bits.Size(), 32u);
    bits.Set(32, 32);
    EXPECT_EQ(bits.Size(), 64u);
    bits.Set(5, 32);
    EXPECT_EQ(bits.Size(), 64u);
    bits.Set(1000, 100);
    EXPECT_EQ(bits.Size(), 1100u);
}

TEST(BitVector, StepOfNoneCountsAsOne)
{
    CBitVector bits;
    bits.Set(6, 0);
    EXPECT_EQ(bits.Size(), 7u);
}

TEST(BitVector, HoldsExactlyTheBitsThatWereSet)
{
    CBitVector bits;
    for (const unsigned int bit : {0u, 31u, 32u, 1023u, 1024u, 70000u})
        bits.Set(bit, 32);
    for (unsigned int bit = 0; bit < 80000; ++bit) {
        const bool set = bit == 0 || bit == 31 || bit == 32 || bit == 1023 || bit == 1024 || bit == 70000;
        ASSERT_EQ(bits.Test(bit), set) << bit;
    }
}

TEST(BitVector, HighestBitCostsLittleAndIsHeld)
{
    CBitVector bits;
    bits.Set(4294967295u, 32);
    EXPECT_TRUE(bits.Test(4294967295u));
    EXPECT_FALSE(bits.Test(4294967294u));
    EXPECT_EQ(bits.Size(), 4294967264u);
}

TEST(BitVector, SizeStopsAtTheLargestMultiple)
{
    CBitVector ones;
    ones.Set(4294967295u, 1);
    EXPECT_EQ(ones.Size(), 4294967295u);
    CBitVector huge;
    huge.Set(4294967295u, 3000000000u);
    EXPECT_EQ(huge.Size(), 3000000000u);
    CBitVector last;
    last.Set(4294967263u, 32);
    EXPECT_EQ(last.Size(), 4294967264u);
}

TEST(BitVector, TakesStoredWordsLowestBitFirst)
{
    CBitVector bits;
    bits = std::vector<unsigned long>{0x80000001ul, 0, 0x00000002ul};
    EXPECT_EQ(bits.Size(), 96u);
    for (unsigned int bit = 0; bit < 96; ++bit)
        ASSERT_EQ(bits.Test(bit), bit == 0 || bit == 31 || bit == 65) << bit;
}

TEST(BitVector, TakesOnlyTheLow32BitsOfAWord)
{
    CBitVector bits;
    bits = std::vector<unsigned long>{~0ul, 0};
    EXPECT_EQ(bits.Size(), 64u);
    EXPECT_TRUE(bits.Test(31));
    EXPECT_FALSE(bits.Test(32));
}

TEST(BitVector, AssignedWordsReplaceWhatWasHeld)
{
    CBitVector bits;
    bits.Set(5000, 32);
    bits = std::vector<unsigned long>{1};
    EXPECT_EQ(bits.Size(), 32u);
    EXPECT_FALSE(bits.Test(5000));
    bits = std::vector<unsigned long>{};
    EXPECT_EQ(bits.Size(), 0u);
}

TEST(BitVector, ManyWordsAreAllTaken)
{
    std::vector<unsigned long> words(100, 0xFFFFFFFFul);
    words[50] = 0xFFFFFFFEul;
    CBitVector bits;
    bits = words;
    EXPECT_EQ(bits.Size(), 3200u);
    for (unsigned int bit = 0; bit < 3200; ++bit)
        ASSERT_EQ(bits.Test(bit), bit != 1600) << bit;
}

TEST(BitVector, ClearDropsEverything)
{
    CBitVector bits;
    bits.Set(7, 32);
    bits.Clear();
    EXPECT_EQ(bits.Size(), 0u);
    EXPECT_FALSE(bits.Test(7));
}

TEST(BitVector, CopiesAreApart)
{
    CBitVector bits;
    bits.Set(7, 32);
    const CBitVector copy(bits);
    bits.Set(8, 32);
    EXPECT_TRUE(copy.Test(7));
    EXPECT_FALSE(copy.Test(8));
}

} // namespace
