// stray_memory_test.cpp: no byte that was never written reaches the file.
#include <qelfdb4/store_fixture.h>

#include <malloc.h>

using namespace qeltest;

namespace {

class StrayMemory : public CStoreFixture
{
protected:
    /// The file that the same work leaves when fresh memory holds this byte, and freed memory its opposite.
    std::string FileOver(int byte)
    {
        mallopt(M_PERTURB, byte);
        Create();
        for (unsigned int round = 0; round < 3; ++round) {
            for (unsigned int oid = 0; oid < 200; ++oid)
                Put(store, 1, oid, std::string(oid * (round + 3) % 7000, 'x'), oid % 50);
            for (unsigned int oid = 0; oid < 200; oid += 3)
                store.Remove({1, oid});
            store.BeginBatch();
            Put(store, 2, round, std::string(20000, 'y'), 50);
            store.CommitBatch();
        }
        EXPECT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Succeeds());
        EXPECT_THAT(store.Close(), Succeeds());
        mallopt(M_PERTURB, 0);
        return ReadFile(folder.File(L"s.qdb")) + ReadFile(folder.File(L"copy"));
    }
};

TEST_F(StrayMemory, NeverReachesTheFile)
{
    const std::string zeros = FileOver(0xff); // fresh memory holds the complement
    const std::string ones = FileOver(0x100);
    const std::string others = FileOver(0xa5);
    EXPECT_GT(zeros.size(), 100000U);
    EXPECT_TRUE(zeros == ones);
    EXPECT_TRUE(zeros == others);
}

} // namespace
