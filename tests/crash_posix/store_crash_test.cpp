// store_crash_test.cpp: a process that writes to a store is killed at any moment.
#include "killed_process.h"

#include <qelfdb4/store_fixture.h>

#include <random>

#include <unistd.h>

using namespace qeltest;

namespace {

constexpr unsigned int kOids = 40;
constexpr unsigned short kSingle = 1000;
constexpr unsigned short kBatch = 1001;
constexpr unsigned int kBatchSize = 5;

std::string Content(long long step)
{
    return std::to_string(step) + ":" + std::string(static_cast<std::size_t>(step * 37 % 5000), 'x');
}

long long StepOf(const std::string& content)
{
    const long long step = std::atoll(content.c_str());
    return content == Content(step) ? step : -1;
}

unsigned int OidOf(long long step)
{
    return static_cast<unsigned int>(step % kOids);
}

/// Step numbers count on from round to round; step n stands in record n % kOids, every tenth in a batch.
class StoreCrash : public CStoreFixture
{
protected:
    unsigned int DoStep(long long step)
    {
        if (step % 500 == 499)
            return store.Optimize(L"", nullptr, 0, false);
        if (step % 90 == 89)
            return store.Close() == qel::kSuccess ? store.Open(path, false) : qel::kNotOpen;
        if (step % 10 == 9)
            return WriteBatch(step);
        return Put(store, kSingle, OidOf(step), Content(step), step % 7 == 0 ? 50 : 0);
    }
    unsigned int WriteBatch(long long step)
    {
        store.BeginBatch();
        for (unsigned int oid = 0; oid < kBatchSize; ++oid)
            Put(store, kBatch, oid, Content(step));
        return store.CommitBatch();
    }
    void Work(long long step, const CKilledProcess::Acknowledge& acknowledge)
    {
        if (store.Open(path, false) != qel::kSuccess)
            return;
        for (; DoStep(step) == qel::kSuccess; ++step)
            acknowledge(step);
    }

    void Remember(const std::vector<long long>& steps)
    {
        for (const long long step : steps) {
            if (step % 500 == 499 || step % 90 == 89)
                continue;
            (step % 10 == 9 ? batch : single[OidOf(step)]) = step;
        }
    }
    /// Every record has what was acknowledged last, or the one step that was under way.
    void Check(long long underWay)
    {
        for (unsigned int oid = 0; oid < kOids; ++oid) {
            const long long found = store.HasRecord({kSingle, oid}) ? StepOf(Take(store, kSingle, oid)) : 0;
            ASSERT_TRUE(found == single[oid] || found == underWay) << oid << ": " << found;
            single[oid] = found;
        }
        const long long found = store.HasRecord({kBatch, 0}) ? StepOf(Take(store, kBatch, 0)) : 0;
        ASSERT_TRUE(found == batch || found == underWay) << "batch " << found;
        for (unsigned int oid = 0; oid < kBatchSize && found != 0; ++oid)
            ASSERT_EQ(StepOf(Take(store, kBatch, oid)), found);
        batch = found;
    }

    long long single[kOids] = {};
    long long batch = 0;
};

TEST_F(StoreCrash, LosesNoAcknowledgedWriteAndSplitsNoBatch)
{
    std::minstd_rand random(static_cast<unsigned int>(getpid()));
    long long next = 1;
    Create();
    store.Close();
    for (int round = 0; round < CrashRounds(); ++round) {
        SCOPED_TRACE(round);
        CKilledProcess child([&](const auto& acknowledge) { Work(next, acknowledge); });
        const std::vector<long long> steps = child.KillAfter(static_cast<int>(random() % 40000));
        ASSERT_FALSE(steps.empty());
        Remember(steps);
        next = steps.back() + 1;
        ASSERT_THAT(store.Open(path, false), Succeeds());
        ASSERT_NO_FATAL_FAILURE(Check(next));
        unsigned long faults = 0;
        ASSERT_THAT(store.SelfTest(nullptr, faults, nullptr, 0), Succeeds());
        ASSERT_EQ(faults, 0U);
        ASSERT_THAT(store.Close(), Succeeds());
        ASSERT_EQ(folder.Names(), "s.qdb");
        ++next;
    }
    RecordProperty("steps", std::to_string(next));
}

TEST_F(StoreCrash, WhileAStoreIsReplacedLeavesTheOldOrTheNew)
{
    std::minstd_rand random(static_cast<unsigned int>(getpid()));
    Create();
    Put(store, 1, 1, "0");
    store.Close();
    for (int round = 0; round < CrashRounds(); ++round) {
        CKilledProcess child([&](const auto& acknowledge) {
            for (long long step = 0; store.Create(path, 1) == qel::kSuccess; ++step) {
                Put(store, 1, 1, "new");
                acknowledge(step);
            }
        });
        ASSERT_FALSE(child.KillAfter(static_cast<int>(random() % 20000)).empty());
        ASSERT_THAT(store.Open(path, false), Succeeds()) << folder.Names();
        EXPECT_THAT(Dump(store, 1), testing::AnyOf("", "1=new"));
        ASSERT_THAT(store.Close(), Succeeds());
    }
    ASSERT_THAT(store.Create(path, 1), Succeeds());
    store.Close();
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(StoreCrash, OfTheWriterLetsTheNextProcessIn)
{
    Create();
    store.Close();
    CKilledProcess child([&](const auto& acknowledge) { Work(1, acknowledge); });
    CDovBlobDB other;
    child.KillAfter(1000);
    EXPECT_THAT(other.Open(path, false), Succeeds());
}

TEST_F(StoreCrash, IsNotMistakenForAWriterAtWork)
{
    Create();
    Put(store, 1, 1, "mine");
    CKilledProcess child([&](const auto& acknowledge) {
        CDovBlobDB other;
        acknowledge(other.Open(path, false));
        acknowledge(other.Open(path, true));
        acknowledge(other.Create(path, 1));
        pause();
    });
    EXPECT_THAT(child.KillAfter(300000), testing::ElementsAre(10015, 10015, 10015));
    EXPECT_EQ(Dump(store, 1), "1=mine");
}

} // namespace
