// damage_test.cpp: whatever byte of a file is wrong, wrong records never come back.
#include "store_fixture.h"

#include <map>

using namespace qeltest;

namespace {

using Records = std::map<unsigned int, std::string>;

constexpr unsigned short kSelector = 1000;

Records MakeRecords()
{
    Records records;
    for (unsigned int oid = 1; oid <= 30; ++oid)
        records[oid] = std::string(oid * oid % 97, static_cast<char>('a' + oid % 26));
    records[31] = std::string(5000, '\x7a'); // has a page of its own
    return records;
}

class StoreDamage : public CStoreFixture
{
protected:
    void SetUp() override
    {
        Create();
        for (const auto& [oid, bytes] : records)
            ASSERT_THAT(Put(store, kSelector, oid, bytes), Succeeds());
        store.Close();
        sound = ReadFile(folder.File(L"s.qdb"));
    }

    /// Whether every record came back; a test failure when one came back wrong.
    bool ReadAll()
    {
        bool whole = true;
        for (const auto& [oid, bytes] : records) {
            TavBlob blob;
            if (store.Get({kSelector, oid}, blob) != qel::kSuccess)
                whole = false;
            else
                EXPECT_TRUE(std::string(blob.GetData(), blob.GetData() + blob.GetSize()) == bytes)
                    << "record " << oid;
        }
        std::vector<unsigned long> oids;
        return store.GetOids(kSelector, oids, false) == qel::kSuccess && oids.size() == records.size() &&
               whole;
    }

    /// Opens the damaged file both ways; what cannot be read must be a fault of the self-test.
    void Probe(const std::string& bytes, std::size_t at)
    {
        SCOPED_TRACE("byte " + std::to_string(at));
        for (const bool readOnly : {true, false}) {
            WriteFile(folder.File(L"s.qdb"), bytes);
            if (store.Open(path, readOnly) != qel::kSuccess)
                continue;
            const bool whole = ReadAll();
            unsigned long faults = 0;
            const unsigned int code = store.SelfTest(nullptr, faults, nullptr, 0);
            EXPECT_TRUE(whole || faults > 0 || code != qel::kSuccess);
            store.Close();
        }
    }

    const Records records = MakeRecords();
    std::string sound;
};

TEST_F(StoreDamage, OfAnySingleByteNeverGivesAWrongRecord)
{
    for (std::size_t at = 0; at < sound.size(); ++at) {
        if (sound[at] == '\0' && at % 16 != 0) // most of the room that is not used
            continue;
        std::string damaged = sound;
        damaged[at] = static_cast<char>(damaged[at] ^ (at % 2 == 0 ? 0xff : 0x01));
        Probe(damaged, at);
        if (HasFailure())
            return;
    }
}

TEST_F(StoreDamage, ByACutNeverGivesAWrongRecord)
{
    for (std::size_t size = 0; size < sound.size(); size += size < 200 ? 1 : 511)
        Probe(sound.substr(0, size), size);
}

TEST_F(StoreDamage, ByAPageOfZerosNeverGivesAWrongRecord)
{
    for (std::size_t page = 0; page < sound.size(); page += 4096)
        Probe(std::string(sound).replace(page, 4096, 4096, '\0'), page);
}

TEST_F(StoreDamage, ByPagesInEachOthersPlaceNeverGivesAWrongRecord)
{
    for (std::size_t page = 4096; page + 4096 < sound.size(); page += 4096)
        Probe(std::string(sound).replace(page, 4096, sound, page + 4096, 4096), page);
}

} // namespace
