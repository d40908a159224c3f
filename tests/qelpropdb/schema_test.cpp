// schema_test.cpp: attaching: the schema, repaired display orders, look-up indexes.
#include "lamps.h"

namespace {

using namespace qeltest;

using Schema = PropDB;

TEST_F(Schema, IsCreatedToTheLetter)
{
    EXPECT_EQ(
        Rows(sql, "SELECT sql FROM sqlite_master ORDER BY rowid"),
        "CREATE TABLE qeltpt (oid integer PRIMARY KEY,tname Text,tdesc Text)\n"
        "CREATE TABLE qeltpc (oid integer PRIMARY KEY,toid integer,ctype integer,cname Text,cdesc Text,crtt "
        "integer,crtc integer,cdef blob,cdisph integer,cformat text,ccur text,cdo integer)\n"
        "CREATE TABLE qeltpd (oid integer PRIMARY KEY,foid integer,toid integer,coid integer,data blob)\n"
        "CREATE INDEX idx_qeltpd_foid ON qeltpd(foid)\n"
        "CREATE UNIQUE INDEX idx_qeltpd_foidtoidcoid ON qeltpd(foid,toid,coid)\n");
}

TEST_F(Schema, CreatingTellsThatItIsOpen)
{
    EXPECT_THAT(db.Attach(true, nullptr), Succeeds());
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Schema, CreatingDropsWhatIsStoredAndKeepsTheCatalogueInMemory)
{
    Add(TableOf(L"Lamps", {Column(L"Power")}));
    EXPECT_THAT(db.Attach(true, nullptr), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpt"), "");
    EXPECT_EQ(Rows(sql, "SELECT * FROM qeltpc"), "");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_FALSE(db.TableExists(L"Lamps"));
}

TEST_F(Schema, CreatingLeavesTablesOfTheHostAlone)
{
    ASSERT_TRUE(Execute(sql, "CREATE TABLE host(a); INSERT INTO host VALUES(1)"));
    EXPECT_THAT(db.Attach(true, nullptr), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT * FROM host"), "1\n");
}

TEST_F(Schema, DatabaseWithoutSchemaOpensEmpty)
{
    CQelSQLite empty;
    empty.Open(L":memory:");
    EXPECT_THAT(db.Attach(false, &empty), Succeeds());
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(log.Text(), "I3 + Loading Tables\nI3 - Done\n");
    EXPECT_EQ(DumpDefinitions(db), "");
    db.Attach(false, &sql);
}

TEST_F(Schema, DatabaseHandedInReplacesTheOneBefore)
{
    CQelPropDB late(nullptr);
    EXPECT_THAT(late.Attach(false, &sql), Succeeds());
    EXPECT_EQ(late.DBInstance(), &sql);
    EXPECT_THAT(late.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(late.DBInstance(), &sql);
}

TEST_F(Schema, WithoutAnOpenDatabaseNothingIsAttached)
{
    CQelPropDB none(nullptr);
    none.SetNotifyCallback(&CRecordingNotifier::Notify, 0);
    EXPECT_THAT(none.Attach(false, nullptr), Gives(17500));
    EXPECT_THAT(none.Attach(true, nullptr), Gives(17201));
    Add(TableOf(L"Lamps"));
    sql.Close();
    EXPECT_THAT(db.Attach(false, nullptr), Gives(17500));
    EXPECT_FALSE(db.TableExists(L"Lamps"));
    EXPECT_THAT(db.Attach(true, nullptr), Gives(17201));
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(Schema, FailureGoesToTheLogOfTheDatabase)
{
    CRecordingLog sqlLog;
    ASSERT_TRUE(Execute(sql, "DROP TABLE qeltpd; CREATE VIEW qeltpd AS SELECT 1"));
    sql.SetLogfile(&sqlLog);
    EXPECT_THAT(db.Attach(true, nullptr), Gives(17201));
    EXPECT_NE(sqlLog.Text().find("E 17301 CT\nE 17201\n"), std::string::npos) << sqlLog.Text();
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(notifier.Text(), "");
    sql.SetLogfile(nullptr);
}

TEST_F(Schema, FailureToMakeAnIndexIsNamedApart)
{
    CRecordingLog sqlLog;
    ASSERT_TRUE(Execute(sql, "DROP INDEX idx_qeltpd_foid; CREATE TABLE idx_qeltpd_foid(a)"));
    sql.SetLogfile(&sqlLog);
    EXPECT_THAT(db.Attach(true, nullptr), Gives(17201));
    EXPECT_NE(sqlLog.Text().find("E 17301 CI\nE 17201\n"), std::string::npos) << sqlLog.Text();
    sql.SetLogfile(nullptr);
}

TEST_F(Schema, SchemaThatCannotBeMadeCostsNothing)
{
    Add(TableOf(L"Lamps", {Column(L"Power")}));
    ASSERT_TRUE(Execute(sql, "DROP INDEX idx_qeltpd_foid; CREATE TABLE idx_qeltpd_foid(a)"));
    EXPECT_THAT(db.Attach(true, nullptr), Gives(17201));
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 1\n");
}

TEST_F(Schema, IsMadeInsideATransactionOfTheHost)
{
    ASSERT_TRUE(Execute(sql, "BEGIN"));
    Add(TableOf(L"Lamps"));
    EXPECT_THAT(db.Attach(true, nullptr), Succeeds());
    ASSERT_TRUE(Execute(sql, "ROLLBACK"));
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM sqlite_master"), "5\n");
}

class DisplayOrderRepair : public PropDB
{
protected:
    // Stores a table with these display orders, opens the database anew and gives the orders as stored then.
    std::string Repaired(const std::vector<int>& orders)
    {
        std::vector<CQelTable::SQelColumn> columns;
        columns.reserve(orders.size());
        for (const int order : orders)
            columns.push_back(Column(L"c" + std::to_wstring(columns.size()), CQelProperty::eInt, order));
        const unsigned long oid = Add(TableOf(L"t" + std::to_wstring(++tables), columns));
        EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
        return Rows(sql, "SELECT group_concat(cdo,' ') FROM qeltpc WHERE toid=" + std::to_string(oid));
    }

    int tables = 0;
};

TEST_F(DisplayOrderRepair, MovesFurtherZerosBehindTheLargest)
{
    EXPECT_EQ(Repaired({0, 0, 3, 0}), "0 4 3 5\n");
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(DumpDefinitions(db), "1 t1\n  1 c0 type 2\n  2 c1 type 2 order 4\n"
                                   "  3 c2 type 2 order 3\n  4 c3 type 2 order 5\n");
}

TEST_F(DisplayOrderRepair, LeavesOtherDoublesAlone)
{
    EXPECT_EQ(Repaired({7, 7, 0, -2}), "7 7 0 -2\n");
    EXPECT_EQ(Repaired({0}), "0\n");
    EXPECT_EQ(Repaired({0, 0}), "0 1\n");
    EXPECT_EQ(Repaired({-5, 0, 0}), "-5 0 1\n");
    EXPECT_EQ(Repaired({}), "NULL\n");
}

TEST_F(DisplayOrderRepair, ReloadsTheCatalogueOnlyAfterARepair)
{
    Repaired({0, 1});
    EXPECT_EQ(log.Text(), "I3 + Loading Tables\nI3 - Done\n");
    Repaired({0, 0});
    EXPECT_EQ(log.Text(), "I3 + Loading Tables\nI3 - Done\nI3 + Loading Tables\nI3 - Done\n");
}

TEST_F(DisplayOrderRepair, GoesPastTheLargestIntWithoutWrapping)
{
    EXPECT_EQ(Repaired({2147483647, 0, 0}), "2147483647 0 2147483648\n");
    CQelTable::SQelColumn column;
    EXPECT_THAT(db.TableGetColumn(1, 3, column), Succeeds());
    EXPECT_EQ(column.displayOrder, 2147483647);
}

TEST_F(DisplayOrderRepair, IsSkippedWhileReadOnly)
{
    CTemporaryFolder folder;
    sql.Open(folder.Path(L"x.db"));
    db.Attach(true, nullptr);
    db.Close();
    db.Attach(false, nullptr);
    Add(TableOf(L"t", {Column(L"a"), Column(L"b")}));
    sql.Open(folder.Path(L"x.db"), true);
    Forget();
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(Rows(sql, "SELECT cdo FROM qeltpc"), "0\n0\n");
}

constexpr const char* kRefuseColumns = "CREATE TRIGGER no BEFORE UPDATE ON qeltpc WHEN OLD.oid IN (%s) "
                                       "BEGIN SELECT RAISE(ABORT,'no'); END";

std::string RefuseColumn(const char* oids)
{
    std::string text = kRefuseColumns;
    return text.replace(text.find("%s"), 2, oids);
}

TEST_F(DisplayOrderRepair, FailureOfOneTableIsForgottenWhenALaterOneSucceeds)
{
    Add(TableOf(L"first", {Column(L"a"), Column(L"b")}));
    Add(TableOf(L"second", {Column(L"c"), Column(L"d")}));
    ASSERT_TRUE(Execute(sql, RefuseColumn("1,2")));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT cdo FROM qeltpc"), "0\n0\n0\n1\n");
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>{17319});
}

TEST_F(DisplayOrderRepair, FailureOfTheLastTableIsTheResult)
{
    CRecordingLog sqlLog;
    Add(TableOf(L"first", {Column(L"a"), Column(L"b")}));
    Add(TableOf(L"second", {Column(L"c"), Column(L"d")}));
    ASSERT_TRUE(Execute(sql, RefuseColumn("4")));
    sql.SetLogfile(&sqlLog);
    EXPECT_THAT(db.Attach(false, nullptr), Gives(17319));
    EXPECT_EQ(Rows(sql, "SELECT cdo FROM qeltpc"), "0\n1\n0\n0\n")
        << "a table is repaired whole or not at all";
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(sqlLog.Text().substr(sqlLog.Text().rfind("E ")), "E 17319\n");
    sql.SetLogfile(nullptr);
}

using LookupIndexes = Lamps;

TEST_F(LookupIndexes, AreMadeOnceAndOnlyWhereMissing)
{
    EXPECT_THAT(db.CreateLookupIndexes(), Succeeds());
    EXPECT_EQ(log.Text(), "I3 + Creating look-up indexes\nI3 - Done\n");
    EXPECT_THAT(db.CreateLookupIndexes(), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT sql FROM sqlite_master ORDER BY rowid LIMIT -1 OFFSET 5"),
              "CREATE INDEX idx_qeltpd_toidfoid ON qeltpd(toid,foid)\n"
              "CREATE INDEX idx_qeltpc_toid ON qeltpc(toid)\n");
    EXPECT_EQ(notifier.Text(), "");
}

TEST_F(LookupIndexes, ChangeNoAnswerAndNoOrder)
{
    for (const unsigned long oid : {5UL, 2UL, 9UL, 3UL})
        ASSERT_THAT(db.SetRecord(lamps, oid, {Value(2, Text(L"b")), Value(1, Int(1))}), Succeeds());
    ASSERT_THAT(db.SetRecord(lamps, 2, {Value(2, Text(L"a"))}), Succeeds());
    const std::string before = Dump(db);
    ASSERT_THAT(db.CreateLookupIndexes(), Succeeds());
    EXPECT_EQ(Dump(db), before);
    EXPECT_EQ(AddLamp(1, L"c"), 10u);
}

TEST_F(LookupIndexes, AreGoneWithTheTablesThatAreDropped)
{
    ASSERT_THAT(db.CreateLookupIndexes(), Succeeds());
    ASSERT_THAT(db.Attach(true, nullptr), Succeeds());
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM sqlite_master"), "5\n");
}

TEST_F(LookupIndexes, FailureToMakeThemChangesNothing)
{
    ASSERT_TRUE(Execute(sql, "DROP TABLE qeltpc"));
    EXPECT_THAT(db.CreateLookupIndexes(), Gives(17301));
    EXPECT_EQ(log.Text(), "I3 + Creating look-up indexes\nE 17301\nI3 - Done\n");
    EXPECT_EQ(Rows(sql, "SELECT COUNT(*) FROM sqlite_master WHERE name = 'idx_qeltpd_toidfoid'"), "0\n");
}

} // namespace
