// kill_test.cpp: a process that is killed while it works on a legacy store, at random moments.
#include "support/legacy_database.h"

#include <chrono>
#include <cstdlib>
#include <random>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qeltest;
using namespace std::chrono;

namespace {

/// A process that runs some work and is killed.
class CVictim
{
public:
    template <class Work>
    explicit CVictim(Work&& work) : m_process(fork())
    {
        if (m_process == 0) {
            work();
            _exit(0);
        }
    }
    CVictim(const CVictim&) = delete;
    CVictim& operator=(const CVictim&) = delete;
    ~CVictim() { Kill(); }

    void Kill()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process;
};

// 20 rounds in the suite, more where someone asks for them.
int Rounds()
{
    const char* const rounds = std::getenv("QEL_KILL_ROUNDS");
    return rounds != nullptr ? std::atoi(rounds) : 20;
}

class KilledProcess : public testing::Test
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
    void Sleep(microseconds longest)
    {
        usleep(static_cast<useconds_t>(random() % static_cast<unsigned long>(longest.count() + 1)));
    }

    CTemporaryFolder folder;
    std::wstring path = folder.Path(L"store");
    std::string before;
    std::mt19937_64 random{std::random_device{}()};

private:
    std::string m_file;
};

} // namespace

TEST_F(KilledProcess, LeavesAColumnThereOrGoneAndNothingBetween)
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
    for (int round = 0; round < Rounds(); ++round) {
        PutBackTheStore();
        CVictim victim([&] {
            CQelPropDB3X db;
            db.Open(path, false);
            db.TableRemoveColumn(1000, 2);
        });
        Sleep(longest);
        victim.Kill();
        const std::string state = Recover();
        ASSERT_TRUE(state == before || state == after) << "round " << round << ": " << state.substr(0, 200);
    }
}

TEST_F(KilledProcess, LeavesTheOldStateWhileACopyIsPutBack)
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
    for (int round = 0; round < Rounds(); ++round) {
        PutBackTheStore();
        WriteFile(File(L""), file);
        CVictim victim([&] {
            CQelPropDB3X db;
            db.Open(path, false);
            db.TableRemoveColumn(1000, 2);
        });
        Sleep(longest);
        victim.Kill();
        ASSERT_EQ(Recover(), before) << "round " << round;
    }
}

TEST_F(KilledProcess, LeavesEveryRecordThatWasAcknowledged)
{
    Make(10);
    for (int round = 0; round < Rounds(); ++round) {
        PutBackTheStore();
        int pipeEnds[2];
        ASSERT_EQ(pipe(pipeEnds), 0);
        CVictim victim([&] {
            CQelPropDB3X db;
            db.Open(path, false);
            for (int i = 0;; ++i) {
                unsigned long record = 0;
                if (db.AddRecord(1000, record, Values({Int(i), Int(i), Int(i)}), false) == qel::kSuccess &&
                    write(pipeEnds[1], &record, sizeof record) != sizeof record)
                    return;
            }
        });
        close(pipeEnds[1]);
        Sleep(milliseconds(30));
        victim.Kill();
        std::vector<unsigned long> acknowledged;
        for (unsigned long record = 0; read(pipeEnds[0], &record, sizeof record) == sizeof record;)
            acknowledged.push_back(record);
        close(pipeEnds[0]);
        Recover();
        CQelPropDB3X db;
        ASSERT_THAT(db.Open(path, true), Succeeds());
        for (const unsigned long record : acknowledged) {
            TRecord values;
            ASSERT_THAT(db.GetRecord(1000, record, values), Succeeds()) << record << " of round " << round;
            ASSERT_EQ(values[0].value, values[2].value);
        }
    }
}
