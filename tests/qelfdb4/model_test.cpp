// model_test.cpp: random operations give what a map in memory gives.
#include "store_fixture.h"

#include <support/fault_vfs.h>

#include <map>
#include <random>

using namespace qeltest;

namespace {

using Key = std::pair<unsigned short, unsigned int>;
using Model = std::map<Key, std::string>;

class StoreModel : public CStoreFixture, public testing::WithParamInterface<unsigned int>
{
protected:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(random() % bound); }
    Key SomeKey()
    {
        constexpr unsigned short kSelectors[] = {0, 2, 3, 1000, 1001, 65535};
        constexpr unsigned int kFar[] = {0, 2147483648, 4294967295};
        const unsigned int oid = Below(10) == 0 ? kFar[Below(3)] : Below(40);
        return {kSelectors[Below(6)], oid};
    }
    std::string SomeBytes()
    {
        constexpr unsigned int kBounds[] = {1, 40, 40, 40, 500, 5000, 30000};
        std::string bytes(Below(kBounds[Below(7)]), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        return bytes;
    }

    void Write()
    {
        const auto [selector, oid] = SomeKey();
        const std::string bytes = SomeBytes();
        ASSERT_THAT(Put(store, selector, oid, bytes, Below(20) == 0 ? 50 : 0), Succeeds());
        model[{selector, oid}] = bytes;
    }
    void Read()
    {
        const auto [selector, oid] = SomeKey();
        const auto found = model.find({selector, oid});
        ASSERT_EQ(store.HasRecord({selector, oid}), found != model.end());
        ASSERT_EQ(Take(store, selector, oid), found != model.end() ? found->second : "code 10020");
    }
    void Remove()
    {
        const auto [selector, oid] = SomeKey();
        const bool known = model.erase({selector, oid}) > 0;
        ASSERT_THAT(store.Remove({selector, oid}), Gives(known ? 10001 : 10020));
    }
    void List()
    {
        const unsigned short selector = SomeKey().first;
        std::vector<unsigned long> oids, expected;
        for (auto it = model.lower_bound({selector, 0}); it != model.end() && it->first.first == selector;
             ++it)
            expected.push_back(it->first.second);
        unsigned int count = 0;
        ASSERT_THAT(store.GetOids(selector, oids, false), Succeeds());
        ASSERT_EQ(oids, expected);
        ASSERT_THAT(store.GetNumberOfRecords(selector, count), Succeeds());
        ASSERT_EQ(count, expected.size());
    }
    void RemoveSelector()
    {
        const unsigned short selector = SomeKey().first;
        ASSERT_THAT(store.RemoveSelector(selector), Succeeds());
        model.erase(model.lower_bound({selector, 0}), model.upper_bound({selector, 4294967295}));
    }
    void Batch()
    {
        if (!inBatch) {
            ASSERT_THAT(store.BeginBatch(), Succeeds());
            before = model;
        } else if (Below(2) == 0) {
            ASSERT_THAT(store.CommitBatch(), Succeeds());
        } else {
            ASSERT_THAT(store.RollbackBatch(), Succeeds());
            model = before;
        }
        inBatch = !inBatch;
    }
    void CloseAndOpen()
    {
        if (inBatch)
            model = before;
        inBatch = false;
        ASSERT_THAT(store.Close(), Succeeds());
        ASSERT_THAT(store.Open(path, false), Succeeds());
    }
    void Compact() { ASSERT_THAT(store.Optimize(L"", nullptr, 0, false), Gives(inBatch ? 17201 : 10001)); }
    void Step()
    {
        const unsigned int pick = Below(1000);
        if (pick < 450)
            Write();
        else if (pick < 700)
            Read();
        else if (pick < 850)
            Remove();
        else if (pick < 930)
            List();
        else if (pick < 945)
            RemoveSelector();
        else if (pick < 985)
            Batch();
        else if (pick < 997)
            CloseAndOpen();
        else
            Compact();
    }
    void CompareAll()
    {
        for (const auto& [key, bytes] : model)
            ASSERT_EQ(Take(store, key.first, key.second), bytes);
        unsigned long faults = 0;
        ASSERT_THAT(store.SelfTest(nullptr, faults, nullptr, 0), Succeeds());
        ASSERT_EQ(faults, 0U);
    }

    std::minstd_rand random{GetParam()};
    Model model, before;
    bool inBatch = false;
};

TEST_P(StoreModel, AgreesAfterEveryOperation)
{
    CFaultVfs vfs; // spares the disk its syncs
    Create();
    for (int step = 0; step < 5000 && !HasFatalFailure(); ++step) {
        SCOPED_TRACE(step);
        Step();
    }
    CloseAndOpen();
    CompareAll();
    store.Close();
}

INSTANTIATE_TEST_SUITE_P(Seed, StoreModel, testing::Range(1U, 5U));

} // namespace
