// sql_layer_test.cpp: the SQL layer as the property database needs it, and the statements that cross it.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideSqlLayer : public testing::Test
{
protected:
    OutsideSqlLayer()
    {
        sql.Open(L":memory:");
        outside::Run(sql.Handle(), "CREATE TABLE t (oid integer PRIMARY KEY, a, b)");
    }
    CQelSQLite sql;
};

TEST_F(OutsideSqlLayer, SuccessRowAndDoneMapToSuccessAndAllElseDoesNot)
{
    for (const int raw : {0, 100, 101})
        EXPECT_EQ(CQelSQLite::MapQelERR(raw), 10001u);
    for (int raw = 1; raw < 100; ++raw)
        EXPECT_EQ(CQelSQLite::MapQelERR(raw), 17300u + static_cast<unsigned int>(raw));
    EXPECT_EQ(CQelSQLite::MapQelERR(SQLITE_CONSTRAINT_UNIQUE), 17319u);
    EXPECT_EQ(CQelSQLite::MapQelERR(SQLITE_IOERR_FSYNC), 17310u);
    EXPECT_NE(CQelSQLite::MapQelERR(-1), 10001u);
}

TEST_F(OutsideSqlLayer, FailedPrepareGivesNoRowsNoSuccessAndHarmlessBinds)
{
    CQelSQLite::CStatement statement(&sql);
    EXPECT_NE(statement.Prepare(L"SELECT nonsense FROM nowhere"), 0);
    TavBlob blob;
    statement.BindInt(1, 5);
    statement.BindString(2, L"x");
    statement.BindBlob(3, &blob);
    EXPECT_NE(statement.Step(), 100);
    EXPECT_NE(statement.Step(), 101);
    EXPECT_NE(CQelSQLite::MapQelERR(statement.Execute()), 10001u);
    statement.Reset();
    EXPECT_NE(CQelSQLite::MapQelERR(statement.Execute()), 10001u);
    EXPECT_NE(sql.ExecStatement(&statement), 0);
    EXPECT_EQ(statement.Prepare(L"SELECT 1"), 0);
    EXPECT_EQ(statement.Step(), 100) << "and it can be prepared again";
}

TEST_F(OutsideSqlLayer, ValuesOfEveryKindGoInAndComeOut)
{
    CQelSQLite::CStatement statement(&sql);
    ASSERT_EQ(statement.Prepare(L"INSERT INTO t VALUES(?99,?1,?12)"), 0);
    TavBlob blob;
    blob.SetData("\0\1", 2);
    statement.BindInt(99, 4294967295ll);
    statement.BindString(1, std::wstring(L"\u00e9\U0001F4A1"));
    statement.BindBlob(12, &blob);
    EXPECT_EQ(statement.Execute(), 101);
    EXPECT_EQ(sql.GetLastInsertedRowID(), 4294967295ll);
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT typeof(a),hex(a),typeof(b),hex(b) FROM t"),
              "text|C3A9F09F92A1|blob|0001");
    ASSERT_EQ(statement.Prepare(L"SELECT oid,a,b,NULL FROM t"), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetInt(0), 4294967295ll);
    EXPECT_EQ(std::wstring(statement.GetString(1)), L"\u00e9\U0001F4A1");
    TavBlob read;
    EXPECT_TRUE(statement.GetBlob(2, &read));
    EXPECT_EQ(read.GetSize(), 2u);
    EXPECT_FALSE(statement.GetBlob(3, &read));
    EXPECT_EQ(statement.GetInt(3), 0);
    EXPECT_EQ(statement.Step(), 101);
}

TEST_F(OutsideSqlLayer, TextOfAColumnIsComparedByItsCharacters)
{
    CQelSQLite::CStatement statement(&sql);
    ASSERT_EQ(statement.Prepare(L"SELECT 'Lamps',NULL"), 0);
    ASSERT_EQ(statement.Step(), 100);
    EXPECT_EQ(statement.GetString(0), L"Lamps");
    EXPECT_EQ(L"Lamps", statement.GetString(0));
    EXPECT_NE(statement.GetString(0), L"lamps");
    EXPECT_EQ(statement.GetString(0), statement.GetString(0));
    EXPECT_NE(statement.GetString(0), statement.GetString(1));
    EXPECT_EQ(statement.GetString(1), L"");
}

TEST_F(OutsideSqlLayer, StatementRunsAgainAfterResetWithNewBindings)
{
    CQelSQLite::CStatement statement(&sql);
    statement.Prepare(L"INSERT INTO t (a) VALUES(?1)");
    for (int i = 1; i <= 3; ++i) {
        statement.Reset();
        statement.BindInt(1, i);
        EXPECT_EQ(statement.Execute(), 101);
    }
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT a FROM t"), "1 2 3");
}

TEST_F(OutsideSqlLayer, BatchRunsToItsFirstFailure)
{
    EXPECT_EQ(sql.ExecSQL(L"INSERT INTO t (a) VALUES(1); INSERT INTO t (a) VALUES(2)"), 0);
    EXPECT_EQ(sql.ExecSQL(L"INSERT INTO t (a) VALUES(3); nonsense; INSERT INTO t (a) VALUES(4)"), 1);
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT a FROM t"), "1 2 3");
}

TEST_F(OutsideSqlLayer, ExecutingAPreparedQueryOrChangeGivesZero)
{
    CQelSQLite::CStatement statement(&sql);
    statement.Prepare(L"INSERT INTO t (a) VALUES(1)");
    EXPECT_EQ(sql.ExecStatement(&statement), 0);
    statement.Prepare(L"INSERT INTO t (oid) VALUES(1)");
    EXPECT_EQ(sql.ExecStatement(&statement), 19);
    statement.Prepare(L"SELECT count(*) FROM t");
    EXPECT_EQ(statement.Execute(), 100);
    EXPECT_EQ(statement.GetInt(0), 1);
}

TEST_F(OutsideSqlLayer, GuardUndoesWhatWasNotCommitted)
{
    {
        CSQLiteTransaction guard(&sql, false);
        ASSERT_TRUE(guard.BeginTrans());
        sql.ExecSQL(L"INSERT INTO t (a) VALUES(1)");
    }
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT count(*) FROM t"), "0");
    {
        CSQLiteTransaction guard(&sql, true);
        ASSERT_TRUE(guard.BeginTrans());
        sql.ExecSQL(L"INSERT INTO t (a) VALUES(1)");
        EXPECT_TRUE(guard.Commit());
    }
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT count(*) FROM t"), "1");
}

TEST_F(OutsideSqlLayer, GuardThatNeverBeganChangesNothing)
{
    outside::Run(sql.Handle(), "BEGIN; INSERT INTO t (a) VALUES(1)");
    {
        CSQLiteTransaction guard(&sql, false);
        EXPECT_FALSE(guard.Commit());
        EXPECT_FALSE(guard.Rollback());
    }
    EXPECT_EQ(outside::Run(sql.Handle(), "COMMIT"), 0);
    EXPECT_EQ(outside::Ask(sql.Handle(), "SELECT count(*) FROM t"), "1");
}

/// A host that overrides the two virtual operations and hears what crosses them.
class CListeningSQLite : public CQelSQLite
{
public:
    int ExecSQL(const wchar_t* text) override
    {
        texts.emplace_back(text);
        return answer != 0 ? answer : CQelSQLite::ExecSQL(text);
    }
    int ExecStatement(CStatement* statement) override
    {
        ++statements;
        return answer != 0 ? answer : CQelSQLite::ExecStatement(statement);
    }
    std::vector<std::wstring> texts;
    int statements = 0;
    int answer = 0;
};

TEST(OutsideOverrides, SchemaGoesThroughExecSqlInThreeExactBatches)
{
    CListeningSQLite host;
    ASSERT_EQ(host.Open(L":memory:"), 0);
    CQelPropDB db(&host);
    ASSERT_EQ(db.Attach(true, nullptr), 10001u);
    ASSERT_EQ(host.texts.size(), 3u);
    EXPECT_EQ(host.texts[0],
              L"DROP TABLE IF EXISTS qeltpt; DROP TABLE IF EXISTS qeltpc; DROP TABLE IF EXISTS qeltpd");
    EXPECT_EQ(
        host.texts[1],
        L"CREATE TABLE qeltpt (oid integer PRIMARY KEY,tname Text,tdesc Text); CREATE TABLE qeltpc (oid "
        L"integer PRIMARY KEY,toid integer,ctype integer,cname Text,cdesc Text,crtt integer,crtc "
        L"integer,cdef blob,cdisph integer,cformat text,ccur text,cdo integer); CREATE TABLE qeltpd (oid "
        L"integer PRIMARY KEY,foid integer,toid integer,coid integer,data blob)");
    EXPECT_EQ(host.texts[2], L"CREATE INDEX idx_qeltpd_foid ON qeltpd(foid); CREATE UNIQUE INDEX "
                             L"idx_qeltpd_foidtoidcoid ON qeltpd(foid,toid,coid);");
}

TEST(OutsideOverrides, ColumnIsRemovedByOneBatchWithUnsignedOids)
{
    CListeningSQLite host;
    host.Open(L":memory:");
    CQelPropDB db(&host);
    db.Attach(true, nullptr);
    host.texts.clear();
    EXPECT_EQ(db.TableRemoveColumn(4294967295ul, 7), 10001u);
    ASSERT_EQ(host.texts.size(), 1u);
    EXPECT_EQ(host.texts[0],
              L"DELETE FROM qeltpd WHERE toid = 4294967295 AND coid = 7; DELETE FROM qeltpc WHERE "
              L"toid = 4294967295 AND oid = 7");
}

TEST(OutsideOverrides, AddingATableRunsItsInsertsThroughExecStatement)
{
    CListeningSQLite host;
    host.Open(L":memory:");
    CQelPropDB db(&host);
    db.Attach(true, nullptr);
    CQelTable table;
    table.Properties().name = L"Lamps";
    table.Properties().columns = {Column(L"a"), Column(L"b")};
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(host.statements, 3);
    host.answer = 19;
    CQelTable second(9);
    second.Properties().name = L"Fans";
    second.Properties().columns = {Column(L"a")};
    EXPECT_EQ(db.AddTable(second), 10001u) << "a refused row writes no column and stays success";
    EXPECT_EQ(host.statements, 4);
    EXPECT_EQ(second.Properties().oid, 9ul);
    EXPECT_FALSE(db.TableExists(L"Fans"));
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
}

/// Keeps the statements that the engine runs, without those of transactions.
class OutsideStatements : public CPropertyHost
{
protected:
    OutsideStatements()
    {
        Make(L"Lamps", {Column(L"a"), Column(L"b", CQelProperty::eInt, 1)});
        sqlite3_trace_v2(sql.Handle(), SQLITE_TRACE_STMT, Trace, &m_ran);
    }
    static int Trace(unsigned int, void* context, void*, void* text)
    {
        const std::string statement = static_cast<const char*>(text);
        for (const char* skipped : {"BEGIN", "COMMIT", "SAVEPOINT", "RELEASE", "ROLLBACK", "PRAGMA"})
            if (statement.rfind(skipped, 0) == 0)
                return 0;
        *static_cast<std::string*>(context) += statement + "\n";
        return 0;
    }
    std::string Ran() { return std::exchange(m_ran, std::string()); }

    const std::string load = "SELECT oid,tname,tdesc FROM qeltpt\nSELECT "
                             "oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo "
                             "FROM qeltpc WHERE toid = ?1\n";

private:
    std::string m_ran;
};

TEST_F(OutsideStatements, OfTheCatalogueAreTheseAndNoOthers)
{
    ASSERT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_EQ(Ran(), load);
    ASSERT_EQ(db.RenameTable(1, L"Lights"), 10001u);
    EXPECT_EQ(Ran(), "UPDATE qeltpt SET tname=?2 WHERE oid=?1\n" + load);
    ASSERT_EQ(db.RenameColumn(1, 1, L"c"), 10001u);
    EXPECT_EQ(Ran(), "UPDATE qeltpc SET cname=?2 WHERE oid=?1\n" + load);
    ASSERT_EQ(db.TableSwapDisplayOrder(1, 1, 2), 10001u);
    EXPECT_EQ(Ran(), "UPDATE qeltpc SET cdo=?2 WHERE oid=?1\nUPDATE qeltpc SET cdo=?2 WHERE oid=?1\n" + load);
    CQelTable::SQelColumn column;
    ASSERT_EQ(db.TableGetColumn(1, 1, column), 10001u);
    EXPECT_EQ(Ran(), "");
    ASSERT_EQ(db.TableModifyColumn(1, column), 10001u);
    EXPECT_EQ(Ran(), "UPDATE qeltpc SET ctype=?3, cname=?4, cdesc=?5, crtt=?6, crtc=?7, cdef=?8, cdisph=?9, "
                     "cformat=?10, ccur=?11, cdo=?12 WHERE toid=?1 AND oid=?2\n" +
                         load + load);
    column = Column(L"d", CQelProperty::eInt, 9999);
    ASSERT_EQ(db.TableAddColumn(1, column), 10001u);
    EXPECT_EQ(Ran(),
              "INSERT INTO qeltpc (toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) VALUES "
              "(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,(SELECT IFNULL(MAX(cdo)+1,0) from qeltpc where toid = "
              "?1))\n" +
                  load);
    ASSERT_EQ(db.RemoveTable(1), 10001u);
    EXPECT_EQ(Ran(), "DELETE FROM qeltpd WHERE toid=?1\nDELETE FROM qeltpc WHERE toid=?1\nDELETE FROM qeltpt "
                     "WHERE oid=?1\nSELECT oid,tname,tdesc FROM qeltpt\n");
}

TEST_F(OutsideStatements, OfRecordsAreTheseAndNoOthers)
{
    unsigned long oid = 0;
    ASSERT_EQ(db.AddRecord(1, oid, {Data(1, Number(1)), Data(2, Number(2))}, false), 10001u);
    EXPECT_EQ(Ran(),
              "INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES (IFNULL((SELECT MAX(foid)+1 FROM "
              "qeltpd WHERE toid = ?2),1),?2,?3,?4)\nSELECT MAX(foid) FROM qeltpd WHERE toid = "
              "?2\nINSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES (?1,?2,?3,?4)\n");
    EXPECT_EQ(Record(1, 1), "1=1 2=2");
    EXPECT_EQ(Ran(), "SELECT data,coid from qeltpd WHERE toid = ?1 AND foid = ?2 ORDER by coid ASC\n");
    EXPECT_TRUE(db.HasRecord(1, 1));
    EXPECT_EQ(Ran(), "SELECT oid FROM qeltpd WHERE toid = ?1 AND foid = ?2\n");
    unsigned int count = 0;
    db.GetRecordCount(1, count);
    EXPECT_EQ(Ran(), "SELECT COUNT(DISTINCT foid) FROM qeltpd WHERE toid = ?1\n");
    std::vector<unsigned long> oids;
    db.GetRecordOids(1, oids, nullptr);
    EXPECT_EQ(Ran(), "SELECT DISTINCT foid FROM qeltpd WHERE toid = ?1 ORDER BY oid\n");
    ASSERT_EQ(db.RemoveRecord(1, 1), 10001u);
    EXPECT_EQ(Ran(), "DELETE FROM qeltpd WHERE toid = ?1 AND foid = ?2\n");
}

} // namespace
