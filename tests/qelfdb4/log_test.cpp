// log_test.cpp: what the store writes to the log that it is given.
#include "store_fixture.h"

#include <support/recording_log.h>

using namespace qeltest;

namespace {

class StoreLog : public CStoreFixture
{
protected:
    void SetUp() override { store.SetLogFile(&log); }
    static std::string Narrow(const std::wstring& text) { return qel::ToUtf8(text); }

    CRecordingLog log;
};

TEST_F(StoreLog, TellsOpeningAndClosing)
{
    Create();
    store.Close();
    EXPECT_EQ(log.Text(), "I5 Store opened: " + Narrow(path) + "\nI5 Store closed: " + Narrow(path) + "\n");
}

TEST_F(StoreLog, TellsWhatAFailureWasAbout)
{
    store.Open(path, false);
    EXPECT_EQ(log.Text(), "W1 CDovBlobDB::Open " + Narrow(path) + ": 10014 No such file\n");
    log.Forget();
    Put(store, 1000, 7, "x");
    EXPECT_EQ(log.Text(), "W1 CDovBlobDB::Set 1000/7: 17500 Not open\n");
}

TEST_F(StoreLog, TakesAMissingRecordForAnAnswer)
{
    Create();
    log.Forget();
    EXPECT_EQ(Take(store, 1, 1), "code 10020");
    EXPECT_THAT(store.Remove({1, 1}), Gives(10020));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(StoreLog, CanBeTakenAwayAgain)
{
    store.SetLogFile(nullptr);
    EXPECT_THAT(store.Open(path, false), Gives(10014));
    EXPECT_EQ(log.Text(), "");
}

class CThrowingLog : public CDovLogfile
{
public:
    bool Write(const SEntry&) override { throw 7; }
};

TEST_F(StoreLog, ThatThrowsChangesNoResult)
{
    CThrowingLog throwing;
    throwing.SetLevel(100);
    store.SetLogFile(&throwing);
    EXPECT_THAT(store.Open(path, false), Gives(10014));
    EXPECT_THAT(store.Create(path, 1), Succeeds());
    EXPECT_THAT(store.Close(), Succeeds());
}

} // namespace
