// maintenance_test.cpp: compacting, self-test and what their callbacks are told.
#include "store_fixture.h"

#include <qelsq4/qelsq4.h>

#include <filesystem>

namespace fs = std::filesystem;
using namespace qeltest;

namespace {

std::string g_told;

void QEL_STDCALL Tell(CDovBlobDB::ECBMessage message, unsigned int done, unsigned int total,
                      unsigned int reserved, const std::wstring* text)
{
    g_told += (g_told.empty() ? "" : " ") + std::to_string(message) + "(" + std::to_string(done) + "," +
              std::to_string(total) + "," + std::to_string(reserved) + ")";
    EXPECT_TRUE(text != nullptr && !text->empty());
}

void QEL_STDCALL Throw(CDovBlobDB::ECBMessage message, unsigned int, unsigned int, unsigned int,
                       const std::wstring*)
{
    if (message == CDovBlobDB::eCBEnd)
        throw 7;
}

class StoreCare : public CStoreFixture
{
protected:
    void SetUp() override
    {
        g_told.clear();
        Create();
        for (unsigned int oid = 1; oid <= 250; ++oid)
            Put(store, 1000, oid, std::string(1000, 'x') + std::to_string(oid));
    }
    void RemoveMost()
    {
        for (unsigned int oid = 2; oid <= 249; ++oid)
            ASSERT_THAT(store.Remove({1000, oid}), Succeeds());
        Put(store, 2, 1, "", 50);
    }
    std::string SelfTest()
    {
        CQelMemFile report(false, 100, 100);
        unsigned long faults = 100;
        EXPECT_THAT(store.SelfTest(&report, faults, nullptr, 0), Succeeds());
        const auto size = static_cast<std::size_t>(report.GetFileSize());
        const unsigned char* const bytes = report.GetBuffer(0);
        return std::to_string(faults - 100) + "\n" + std::string(bytes, bytes + size);
    }
    /// Changes the closed file behind the store's back.
    void Tamper(const wchar_t* sql)
    {
        store.Close();
        CQelSQLite db;
        ASSERT_EQ(db.Open(path), 0);
        ASSERT_EQ(db.ExecSQL(sql), 0);
        ASSERT_EQ(db.Close(), 0);
        ASSERT_THAT(store.Open(path, false), Succeeds());
    }
};

TEST_F(StoreCare, CompactedCopyHoldsTheSameRecordsInLessRoom)
{
    RemoveMost();
    const std::string records = Dump(store, 1000);
    ASSERT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Succeeds());
    EXPECT_EQ(store.GetName(), path);
    CDovBlobDB copy;
    ASSERT_THAT(copy.Open(folder.Path(L"copy"), true), Succeeds());
    EXPECT_EQ(Dump(copy, 1000), records);
    EXPECT_EQ(Dump(copy, 2), "1=");
    store.Close();
    EXPECT_LT(fs::file_size(folder.File(L"copy")), fs::file_size(folder.File(L"s.qdb")));
    EXPECT_EQ(folder.Names(), "copy s.qdb");
}

TEST_F(StoreCare, CompactingInPlaceKeepsTheRecordsAndTheOpenStore)
{
    RemoveMost();
    const std::string records = Dump(store, 1000);
    store.Close();
    const auto before = fs::file_size(folder.File(L"s.qdb"));
    Reopen();
    ASSERT_THAT(store.Optimize(L"", nullptr, 0, false), Succeeds());
    EXPECT_LT(fs::file_size(folder.File(L"s.qdb")), before / 4);
    EXPECT_EQ(Dump(store, 1000), records);
    EXPECT_THAT(Put(store, 1, 1, "on"), Succeeds());
    Reopen();
    EXPECT_EQ(Dump(store, 1000), records);
    EXPECT_EQ(SelfTest(), "0\n");
}

TEST_F(StoreCare, CopyReplacesAStoreButNeverTheOpenOne)
{
    {
        CDovBlobDB other;
        ASSERT_THAT(other.Create(folder.Path(L"other"), 1), Succeeds());
        Put(other, 9, 9, "other");
        EXPECT_THAT(store.Optimize(folder.Path(L"other"), nullptr, 0, false), Gives(10015));
    }
    EXPECT_THAT(store.Optimize(folder.Path(L"other"), nullptr, 0, false), Succeeds());
    CDovBlobDB copy;
    ASSERT_THAT(copy.Open(folder.Path(L"other"), true), Succeeds());
    EXPECT_EQ(Dump(copy, 9), "");
    EXPECT_TRUE(copy.HasRecord({1000, 250}));
    EXPECT_THAT(store.Optimize(path, nullptr, 0, false), Gives(10015));
    std::error_code error;
    fs::create_symlink(folder.File(L"s.qdb"), folder.File(L"link"), error);
    if (error)
        GTEST_SKIP() << "no symbolic link can be made here";
    EXPECT_THAT(store.Optimize(folder.Path(L"link"), nullptr, 0, false), Gives(10015));
    EXPECT_TRUE(store.HasRecord({1000, 250}));
}

TEST_F(StoreCare, ReadOnlyStoreCanBeCopied)
{
    Reopen(true);
    ASSERT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Succeeds());
    EXPECT_THAT(store.Open(folder.Path(L"copy"), false), Succeeds());
    EXPECT_TRUE(store.HasRecord({1000, 250}));
}

TEST_F(StoreCare, CopyKeepsADamagedRecordDamaged)
{
    Tamper(L"UPDATE rec SET data=x'00' WHERE id=(1000<<32)+7");
    ASSERT_THAT(store.Optimize(folder.Path(L"copy"), nullptr, 0, false), Succeeds());
    CDovBlobDB copy;
    ASSERT_THAT(copy.Open(folder.Path(L"copy"), true), Succeeds());
    EXPECT_EQ(Take(copy, 1000, 7), "code 10016");
}

TEST_F(StoreCare, ProgressTellsStartStepsAndEnd)
{
    ASSERT_THAT(store.Optimize(folder.Path(L"copy"), Tell, 5, false), Succeeds());
    EXPECT_EQ(g_told, "0(0,250,0) 1(100,250,0) 1(200,250,0) 2(250,250,0)");
    g_told.clear();
    unsigned long faults = 0;
    ASSERT_THAT(store.SelfTest(nullptr, faults, Tell, 5), Succeeds());
    EXPECT_EQ(g_told, "0(0,250,0) 1(100,250,0) 1(200,250,0) 2(250,250,0)");
    g_told.clear();
    ASSERT_THAT(store.Optimize(L"", Tell, 5, false), Succeeds());
    EXPECT_EQ(g_told, "0(0,250,0) 2(250,250,0)");
}

TEST_F(StoreCare, CallbackThatThrowsEndsTheOperationWithACode)
{
    unsigned long faults = 0;
    EXPECT_THAT(store.SelfTest(nullptr, faults, Throw, 0), Gives(10002));
    EXPECT_THAT(store.Optimize(L"", Throw, 0, false), Gives(10002));
    EXPECT_TRUE(store.HasRecord({1000, 250}));
}

TEST_F(StoreCare, SoundStorePassesItsTest)
{
    EXPECT_EQ(SelfTest(), "0\n");
    Reopen(true);
    EXPECT_EQ(SelfTest(), "0\n");
}

TEST_F(StoreCare, EveryWrongChecksumIsALine)
{
    Tamper(
        L"UPDATE rec SET data=x'00' WHERE id=(1000<<32)+7; UPDATE rec SET crc=crc+1 WHERE id=(1000<<32)+9");
    EXPECT_EQ(SelfTest(), "2\nrecord 1000/7: checksum mismatch\nrecord 1000/9: checksum mismatch\n");
    unsigned int size = 9;
    std::string buffer(5000, '.');
    EXPECT_THAT(store.GetSize({1000, 7}, size), Gives(10016));
    EXPECT_THAT(store.Get({1000, 7}, buffer.data()), Gives(10016));
    EXPECT_EQ(size, 9U);
    EXPECT_EQ(buffer, std::string(5000, '.'));
    EXPECT_TRUE(store.HasRecord({1000, 7}));
    EXPECT_EQ(Take(store, 1000, 8), std::string(1000, 'x') + "8");
}

TEST_F(StoreCare, RecordMovedToAnotherAddressIsDamaged)
{
    Tamper(L"UPDATE rec SET id=(1000<<32)+999 WHERE id=(1000<<32)+7");
    EXPECT_EQ(Take(store, 1000, 999), "code 10016");
    EXPECT_EQ(SelfTest(), "1\nrecord 1000/999: checksum mismatch\n");
}

TEST_F(StoreCare, RowsThatAreNoRecordsAreLines)
{
    Tamper(L"INSERT INTO rec VALUES(-1,0,x''); INSERT INTO rec VALUES(1<<48,0,x'');"
           L"UPDATE rec SET crc='many' WHERE id=(1000<<32)+7; UPDATE rec SET data=5 WHERE id=(1000<<32)+8");
    EXPECT_EQ(SelfTest(), "4\nkey -1: no address of a record\nrecord 1000/7: checksum mismatch\n"
                          "record 1000/8: checksum mismatch\nkey 281474976710656: no address of a record\n");
    EXPECT_EQ(Take(store, 1000, 7), "code 10016");
    EXPECT_EQ(Take(store, 1000, 8), "code 10016");
}

TEST_F(StoreCare, ReportThatCannotBeWrittenEndsTheTest)
{
    Tamper(L"UPDATE rec SET data=x'00' WHERE id=(1000<<32)+7");
    CQelMemFile readOnly(true, 1, 1);
    unsigned long faults = 0;
    EXPECT_THAT(store.SelfTest(&readOnly, faults, nullptr, 0), Gives(17501));
}

TEST_F(StoreCare, TriggersAndViewsOfATamperedFileNeverRun)
{
    store.Close();
    CQelSQLite db;
    ASSERT_EQ(db.Open(path), 0);
    ASSERT_EQ(db.ExecSQL(L"CREATE TRIGGER t AFTER INSERT ON rec BEGIN DELETE FROM rec; END"), 0);
    db.Close();
    EXPECT_THAT(store.Open(path, false), Gives(17311));
}

TEST_F(StoreCare, StoreOfALaterFormatIsNotOpened)
{
    store.Close();
    CQelSQLite db;
    ASSERT_EQ(db.Open(path), 0);
    ASSERT_EQ(db.ExecSQL(L"PRAGMA user_version=2"), 0);
    db.Close();
    EXPECT_THAT(store.Open(path, false), Gives(10013));
}

} // namespace
