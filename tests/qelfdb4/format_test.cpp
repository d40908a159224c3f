// format_test.cpp: what stands in the file, as the page on its format says.
#include "store_fixture.h"

#include <qelsq4/qelsq4.h>
#include <support/hex.h>

using namespace qeltest;

namespace {

class StoreFormat : public CStoreFixture
{
protected:
    /// Rows of a query on the closed file, columns separated by blanks.
    std::string Query(const wchar_t* sql)
    {
        store.Close();
        CQelSQLite db;
        EXPECT_EQ(db.Open(path, true), 0);
        CQelSQLite::CStatement query(&db);
        query.Prepare(sql);
        std::string rows;
        while (query.Step() == 100)
            rows += qel::ToUtf8(query.GetString(0).Text()) + "\n";
        return rows;
    }
};

TEST_F(StoreFormat, KeepsARecordUnderItsKeyWithAChecksumOverBoth)
{
    Create();
    Put(store, 2, 1, std::string("\1\0\0\0\0\0", 6));
    Put(store, 0, 0, "");
    EXPECT_EQ(Query(L"SELECT id||' '||crc||' '||hex(data) FROM rec ORDER BY id"),
              "0 1696784233 \n8589934593 2199755561 010000000000\n");
}

TEST_F(StoreFormat, HasExactlyTwoTables)
{
    Create();
    EXPECT_EQ(Query(L"SELECT sql FROM sqlite_master ORDER BY rowid"),
              "CREATE TABLE rec(id INTEGER PRIMARY KEY, crc INTEGER NOT NULL, data BLOB NOT NULL)\n"
              "CREATE TABLE sync(id INTEGER PRIMARY KEY, count INTEGER NOT NULL)\n");
}

TEST_F(StoreFormat, CountsEveryWriteWithAPromise)
{
    Create();
    EXPECT_EQ(Query(L"SELECT id||' '||count FROM sync"), "1 0\n");
    Reopen();
    Put(store, 1, 1, "x", 0);
    Put(store, 1, 1, "x", 50);
    store.Flush();
    store.BeginBatch();
    Put(store, 1, 1, "x", 50);
    Put(store, 1, 1, "x", 50);
    store.CommitBatch();
    EXPECT_EQ(Query(L"SELECT id||' '||count FROM sync"), "1 3\n");
}

TEST_F(StoreFormat, IsToldByItsHeader)
{
    Create();
    store.Close();
    const std::string bytes = ReadFile(folder.File(L"s.qdb"));
    EXPECT_EQ(HexOf(bytes.substr(0, 20)), "53514c69746520666f726d6174203300"
                                          "10000101");
    EXPECT_EQ(HexOf(bytes.substr(56, 16), "4"),
              "00000001 00000001 00000000 51464442"); // UTF-8, version, -, id
    EXPECT_EQ(bytes.size(), 3U * 4096);
}

TEST_F(StoreFormat, CounterThatIsLostOrAtItsEndStillMoves)
{
    Create();
    for (const wchar_t* damage : {L"DELETE FROM sync", L"UPDATE sync SET count=9223372036854775807",
                                  L"UPDATE sync SET count='many'", L"UPDATE sync SET count=2147483647"}) {
        store.Close();
        CQelSQLite db;
        ASSERT_EQ(db.Open(path), 0);
        ASSERT_EQ(db.ExecSQL(damage), 0);
        db.Close();
        const std::string before = Query(L"SELECT count FROM sync WHERE id=1");
        Reopen();
        ASSERT_THAT(Put(store, 1, 1, "x", 50), Succeeds());
        EXPECT_NE(Query(L"SELECT count FROM sync WHERE id=1"), before);
    }
}

} // namespace
