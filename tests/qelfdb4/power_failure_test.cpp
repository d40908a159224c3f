// power_failure_test.cpp: what the disk may hold when the power fails at any moment, and what is found then.
#include "store_fixture.h"

#include <support/fault_vfs.h>

#include <map>
#include <random>

using namespace qeltest;

namespace {

using SEvent = CFaultVfs::SEvent;

/// A file of which the disk surely has some bytes and may have others.
struct SDiskFile
{
    std::string sure;
    std::vector<SEvent> pending;
    bool gone = false; // deleted, which the disk may not know yet
    bool isNew = true; // never synced, so that its folder may not know it yet
};

using Disk = std::map<std::string, SDiskFile>;

void Apply(std::string& bytes, const SEvent& event)
{
    const auto offset = static_cast<std::size_t>(event.offset);
    if (event.kind == SEvent::eTruncate) {
        bytes.resize(offset);
        return;
    }
    if (bytes.size() < offset + event.bytes.size())
        bytes.resize(offset + event.bytes.size());
    bytes.replace(offset, event.bytes.size(), event.bytes);
}

/// The first sync of a new file also syncs its folder, and with it the deletions before.
void SyncFolder(Disk& disk)
{
    for (auto it = disk.begin(); it != disk.end();)
        it = it->second.gone ? disk.erase(it) : std::next(it);
}

void Sync(Disk& disk, SDiskFile& file)
{
    for (const SEvent& change : file.pending)
        Apply(file.sure, change);
    file.pending.clear();
    if (file.isNew)
        SyncFolder(disk);
    file.isNew = false;
}

void Follow(Disk& disk, const SEvent& event)
{
    if (event.kind == SEvent::eMark)
        return;
    SDiskFile& file = disk[event.file];
    if (file.gone)
        file = SDiskFile(); // made anew
    if (event.kind == SEvent::eDelete)
        file.gone = true;
    else if (event.kind == SEvent::eSync)
        Sync(disk, file);
    else
        file.pending.push_back(event);
}

/// Of the changes that were not synced, each sector reaches the disk or does not.
std::string Survivor(const SDiskFile& file, std::minstd_rand& random)
{
    constexpr std::size_t kSector = 512;
    std::string bytes = file.sure;
    const unsigned int keep = static_cast<unsigned int>(random() % 5); // of four, how many survive
    for (const SEvent& change : file.pending) {
        for (std::size_t at = 0; at == 0 || at < change.bytes.size(); at += kSector) {
            SEvent part = change;
            part.offset += static_cast<long long>(at);
            part.bytes = change.bytes.substr(at, kSector);
            if (change.kind == SEvent::eTruncate)
                part.offset = change.offset;
            if (random() % 4 < keep)
                Apply(bytes, part);
        }
    }
    return bytes;
}

class PowerFailure : public CStoreFixture, public testing::WithParamInterface<unsigned int>
{
protected:
    /// Writes records; the mark after each tells how many are durable from there on.
    void WriteRecords(CFaultVfs& vfs)
    {
        for (unsigned int oid = 1; oid <= 120; ++oid) {
            const bool durable = random() % 4 == 0;
            ASSERT_THAT(Put(store, 1, oid, Content(oid), durable ? 50 : 0), Succeeds());
            if (oid % 40 == 0) {
                ASSERT_THAT(store.Close(), Succeeds());
                vfs.Mark(oid);
                ASSERT_THAT(store.Open(path, false), Succeeds());
            } else if (oid % 33 == 0) {
                ASSERT_THAT(store.Flush(), Succeeds());
                vfs.Mark(oid);
            } else if (durable) {
                vfs.Mark(oid);
            }
        }
    }
    static std::string Content(unsigned int oid)
    {
        return std::string(oid * 37 % 6000, static_cast<char>(oid));
    }

    /// The records from 1 on, without a gap, at least as many as were durable.
    void Check(unsigned int durable)
    {
        CDovBlobDB after;
        ASSERT_THAT(after.Open(folder.Path(L"after/s.qdb"), false), Succeeds());
        std::vector<unsigned long> oids;
        ASSERT_THAT(after.GetOids(1, oids, false), Succeeds());
        ASSERT_GE(oids.size(), durable);
        for (unsigned int oid = 1; oid <= oids.size(); ++oid)
            ASSERT_TRUE(Take(after, 1, oid) == Content(oid)) << oid;
        ASSERT_THAT(after.Close(), Succeeds());
    }

    std::minstd_rand random{GetParam()};
};

TEST_P(PowerFailure, KeepsEveryDurableWriteAndNoHalfOne)
{
    Create();
    store.Close();
    Disk disk;
    disk["s.qdb"] = {ReadFile(folder.File(L"s.qdb")), {}, false, false};
    CFaultVfs vfs; // also spares the real disk the syncs of every recovery
    ASSERT_THAT(store.Open(path, false), Succeeds());
    vfs.Record();
    WriteRecords(vfs);
    store.Close();
    vfs.Record(false);
    const std::vector<SEvent>& events = vfs.Events();
    unsigned int durable = 0;
    for (const SEvent& event : events) {
        Follow(disk, event);
        if (event.kind == SEvent::eMark)
            durable = static_cast<unsigned int>(event.offset);
        if (random() % 4 != 0)
            continue;
        std::filesystem::remove_all(folder.File(L"after"));
        std::filesystem::create_directory(folder.File(L"after"));
        for (const auto& [name, file] : disk) {
            if (!file.gone || random() % 2 == 0)
                WriteFile(folder.Root() / "after" / name, Survivor(file, random));
        }
        ASSERT_NO_FATAL_FAILURE(Check(durable));
    }
    EXPECT_EQ(durable, 120U);
}

INSTANTIATE_TEST_SUITE_P(Seed, PowerFailure, testing::Range(1U, 7U));

using StorePromise = CStoreFixture;

TEST_F(StorePromise, OnlyDurableWritesSync)
{
    CFaultVfs vfs;
    Create();
    Put(store, 1, 1, "first change puts the file into write-ahead form");
    Put(store, 1, 1, "and begins the log");
    const auto syncs = [&vfs](auto&& work) {
        const int before = vfs.Syncs();
        EXPECT_THAT(work(), Succeeds());
        return vfs.Syncs() - before;
    };
    EXPECT_EQ(syncs([&] { return Put(store, 1, 1, "x", 0); }), 0);
    EXPECT_EQ(syncs([&] { return Put(store, 1, 1, "y", 49); }), 0);
    EXPECT_GE(syncs([&] { return Put(store, 1, 1, "z", 50); }), 1);
    EXPECT_GE(syncs([&] { return Put(store, 1, 1, "z", 50); }), 1)
        << "nor when no byte of the record changes";
    EXPECT_GE(syncs([&] { return Put(store, 1, 1, "z", 4294967295); }), 1);
    EXPECT_EQ(syncs([&] { return Put(store, 1, 1, "x", 0); }), 0);
    EXPECT_GE(syncs([&] { return store.Flush(); }), 1);
    EXPECT_GE(syncs([&] { return store.Flush(); }), 1);
    EXPECT_EQ(syncs([&] { return store.Remove({1, 1}); }), 0);
}

TEST_F(StorePromise, OfAWriteInsideABatchIsKeptByItsCommit)
{
    CFaultVfs vfs;
    Create();
    Put(store, 1, 1, "x");
    for (const unsigned int priority : {0U, 50U}) {
        const int before = vfs.Syncs();
        ASSERT_THAT(store.BeginBatch(), Succeeds());
        Put(store, 1, 1, "y", priority);
        Put(store, 1, 2, "z", 0);
        EXPECT_EQ(vfs.Syncs(), before);
        ASSERT_THAT(store.CommitBatch(), Succeeds());
        EXPECT_EQ(vfs.Syncs() > before, priority >= 50);
    }
}

TEST_F(StorePromise, OfAFlushInsideABatchIsKeptByItsCommit)
{
    CFaultVfs vfs;
    Create();
    Put(store, 1, 1, "x");
    const int before = vfs.Syncs();
    ASSERT_THAT(store.BeginBatch(), Succeeds());
    EXPECT_THAT(store.Flush(), Succeeds());
    EXPECT_EQ(vfs.Syncs(), before);
    ASSERT_THAT(store.CommitBatch(), Succeeds());
    EXPECT_GT(vfs.Syncs(), before);
}

TEST_F(StorePromise, OfAWholeJournalIsKeptBeforeItsHeaderMakesItCount)
{
    CFaultVfs vfs;
    Create();
    Put(store, 1, 1, "x", 0); // leaves the engine at its lower safety level
    vfs.Record();
    ASSERT_THAT(store.Close(), Succeeds());
    vfs.Record(false);
    int syncs = 0;
    bool journal = false;
    for (const SEvent& event : vfs.Events()) {
        journal = journal || event.file == "s.qdb-journal";
        if (journal && event.file == "s.qdb")
            break;
        if (event.kind == SEvent::eSync && event.file == "s.qdb-journal")
            ++syncs;
    }
    EXPECT_EQ(syncs, 2);
}

} // namespace
