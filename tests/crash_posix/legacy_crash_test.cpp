// legacy_crash_test.cpp: a process that works on a legacy store is killed at any moment.
#include "killed_process.h"

#include "support/legacy_database.h"

#include <chrono>
#include <random>

using namespace qeltest;
using namespace std::chrono;

namespace {

class LegacyCrash : public testing::Test
{
protected:
    /// Makes the store that every round begins with.
    void Make(int records)
    {
        CQelPropDB3X db;
        ASSERT_THAT(db.Create(path), Succeeds());
        CQelTable3X table;
        table.Properties().name = L"Lamps";
        for (unsigned long oid = 1; oid <= 3; ++oid) {
            table.Properties().columns.push_back(
                Column(L"c" + std::to_wstring(oid), CQelProperty::eInt, static_cast<int>(oid) - 1));
            table.Properties().columns.back().oid = oid;
            table.Properties().columns.back().displayOrder = static_cast<int>(oid);
        }
        ASSERT_THAT(db.AddTable(table), Succeeds());
        ASSERT_THAT(db.BlobDB().BeginBatch(), Succeeds());
        for (int i = 0; i < records; ++i) {
            unsigned long record = 0;
            ASSERT_THAT(db.AddRecord(1000, record, Values({Int(i), Int(-i), Int(7 * i)}), false), Succeeds());
        }
        ASSERT_THAT(db.BlobDB().CommitBatch(), Succeeds());
        before = Dump(db);
        db.Close();
        m_file = ReadFile(File(L""));
    }
    void PutBackTheStore()
    {
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal", L"#bak", L"#old"})
            std::filesystem::remove(File(suffix));
        WriteFile(File(L""), m_file);
    }
    std::filesystem::path File(const std::wstring& suffix) const { return folder.File(L"store" + suffix); }

    // What docs/legacy-recovery.md tells a host to do. Gives the state that it then has.
    std::string Recover()
    {
        if (!std::filesystem::exists(File(L""))) {
            for (const wchar_t* side : {L"-wal", L"-shm", L"-journal"})
                std::filesystem::remove(File(side));
            std::filesystem::rename(File(L"#bak"), File(L""));
        }
        CQelPropDB3X db;
        const unsigned int code = db.Open(path, false);
        EXPECT_THAT(code, Succeeds());
        std::filesystem::remove(File(L"#bak"));
        std::string state = Dump(db);
        unsigned long errors = 0;
        EXPECT_THAT(db.SelfTest(nullptr, errors, nullptr, 0), Succeeds());
        EXPECT_EQ(errors, 0U);
        EXPECT_THAT(db.Close(), Succeeds());
        return state;
    }
    // A moment of the time that the work takes when nobody kills it.
    int SomeMoment(microseconds longest)
    {
        return static_cast<int>(random() % static_cast<unsigned long>(longest.count() + 1));
    }
    void KillWhileRemovingTheColumn(microseconds longest)
    {
        CKilledProcess process([&](const CKilledProcess::Acknowledge& acknowledge) {
            CQelPropDB3X db;
            db.Open(path, false);
            acknowledge(0);
            db.TableRemoveColumn(1000, 2);
        });
        process.KillAfter(SomeMoment(longest));
    }

    CTemporaryFolder folder;
    std::wstring path = folder.Path(L"store");
    std::string before;
    std::mt19937_64 random{std::random_device{}()};

private:
    std::string m_file;
};

} // namespace

TEST_F(LegacyCrash, LeavesAColumnThereOrGoneAndNothingBetween)
{
    Make(3000);
    const auto started = steady_clock::now();
    std::string after;
    {
        CQelPropDB3X db;
        ASSERT_THAT(db.Open(path, false), Succeeds());
        ASSERT_THAT(db.TableRemoveColumn(1000, 2), Succeeds());
        after = Dump(db);
    }
    const auto longest = duration_cast<microseconds>(steady_clock::now() - started);
    for (int round = 0; round < CrashRounds(); ++round) {
        PutBackTheStore();
        KillWhileRemovingTheColumn(longest);
        const std::string state = Recover();
        ASSERT_TRUE(state == before || state == after) << "round " << round << ": " << state.substr(0, 200);
    }
}

TEST_F(LegacyCrash, LeavesTheOldStateWhileACopyIsPutBack)
{
    Make(2000);
    {
        CQelPropDB3X db;
        ASSERT_THAT(db.Open(path, false), Succeeds());
        ASSERT_THAT(db.BlobDB().Set({1000, 3000}, "\3", 1, 50), Succeeds()); // no record: the removal fails
        before = Dump(db);
    }
    const std::string file = ReadFile(File(L""));
    const auto started = steady_clock::now();
    {
        CQelPropDB3X db;
        ASSERT_THAT(db.Open(path, false), Succeeds());
        ASSERT_THAT(db.TableRemoveColumn(1000, 2), Gives(10011));
    }
    const auto longest = duration_cast<microseconds>(steady_clock::now() - started);
    for (int round = 0; round < CrashRounds(); ++round) {
        PutBackTheStore();
        WriteFile(File(L""), file);
        KillWhileRemovingTheColumn(longest);
        ASSERT_EQ(Recover(), before) << "round " << round;
    }
}

TEST_F(LegacyCrash, LeavesEveryRecordThatWasAcknowledged)
{
    Make(10);
    for (int round = 0; round < CrashRounds(); ++round) {
        PutBackTheStore();
        CKilledProcess process([&](const CKilledProcess::Acknowledge& acknowledge) {
            CQelPropDB3X db;
            db.Open(path, false);
            unsigned long record = 0;
            for (int i = 0;
                 db.AddRecord(1000, record, Values({Int(i), Int(i), Int(i)}), false) == qel::kSuccess; ++i)
                acknowledge(static_cast<long long>(record));
        });
        const std::vector<long long> acknowledged = process.KillAfter(SomeMoment(milliseconds(30)));
        ASSERT_FALSE(acknowledged.empty());
        Recover();
        CQelPropDB3X db;
        ASSERT_THAT(db.Open(path, true), Succeeds());
        for (const long long record : acknowledged) {
            TRecord values;
            ASSERT_THAT(db.GetRecord(1000, static_cast<unsigned long>(record), values), Succeeds())
                << record << " of round " << round;
            ASSERT_EQ(values[0].value, values[2].value);
        }
    }
}
