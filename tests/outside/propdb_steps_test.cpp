// propdb_steps_test.cpp: what every operation says, runs and tells, step by step in one row.
#include "property_host.h"

using namespace outside;

namespace {

constexpr const char* kNull = "x'0400000000000000000000000000000000000000000000000000'";
constexpr const char* kReadBack = "I3 + Loading Tables\n"
                                  "S SELECT oid,tname,tdesc FROM qeltpt\n"
                                  "S SELECT oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo "
                                  "FROM qeltpc WHERE toid = 1\n"
                                  "I3 - Done\n";

struct SSteps
{
    const char* name;
    unsigned int (*work)(CQelPropDB& db);
    std::string told;
};

void PrintTo(const SSteps& row, std::ostream* out)
{
    *out << row.name;
}

/// Statements go into the transcript too, with what is bound to them: "S BEGIN IMMEDIATE".
class OutsideSteps : public CPropertyHost, public testing::WithParamInterface<SSteps>
{
public:
    ~OutsideSteps() override { sqlite3_trace_v2(sql.Handle(), 0, nullptr, nullptr); }

protected:
    OutsideSteps()
    {
        Make(L"Lamps", {Column(L"a"), Column(L"b", CQelProperty::eString, 1)});
        Put(1, 1, 1, Number(5));
        sqlite3_trace_v2(sql.Handle(), SQLITE_TRACE_STMT, Trace, nullptr);
        Told();
    }

private:
    static int Trace(unsigned int, void*, void* statement, void*)
    {
        char* expanded = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
        Transcript() += std::string("S ") + expanded + "\n";
        sqlite3_free(expanded);
        return 0;
    }
};

TEST_P(OutsideSteps, ComeInThisOrder)
{
    EXPECT_EQ(GetParam().work(db), 10001u);
    EXPECT_EQ(Told(), GetParam().told);
}

std::string Change(const std::string& opening, const std::string& statements)
{
    return "I3 + " + opening + "\nS BEGIN IMMEDIATE\n" + statements + "S COMMIT\n";
}

std::vector<SSteps> CatalogueSteps()
{
    const std::string done = "I3 - Done\n";
    const std::string changed = kReadBack + done + "> 3(1,0)\n";
    const std::string intoColumns =
        "S INSERT INTO qeltpc (toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) VALUES ";
    return {
        {"AddTable",
         [](CQelPropDB& db) {
             db.RemoveTable(1);
             Told();
             CQelTable table;
             table.Properties().name = L"Fans";
             table.Properties().description = L"d";
             table.Properties().columns = {Column(L"a"), Column(L"b", CQelProperty::eString, -2)};
             return db.AddTable(table);
         },
         Change("Adding table", "S INSERT INTO qeltpt (tname,tdesc) VALUES('Fans','d')\n" + intoColumns +
                                    "(1,2,'a','',0,0," + kNull + ",1,'','',0)\n" + intoColumns +
                                    "(1,1,'b','',0,0," + kNull + ",1,'','',-2)\n") +
             kReadBack + done + "> 2(1,0)\n"},
        {"RemoveTable", [](CQelPropDB& db) { return db.RemoveTable(1); },
         Change("Removing table", "S DELETE FROM qeltpd WHERE toid=1\n"
                                  "S DELETE FROM qeltpc WHERE toid=1\n"
                                  "S DELETE FROM qeltpt WHERE oid=1\n") +
             "I3 + Loading Tables\nS SELECT oid,tname,tdesc FROM qeltpt\n" + done + done + "> 4(1,0)\n"},
        {"RenameTable", [](CQelPropDB& db) { return db.RenameTable(1, L"Fans"); },
         Change("Renaming Table", "S UPDATE qeltpt SET tname='Fans' WHERE oid=1\n") + changed},
        {"TableAddColumn",
         [](CQelPropDB& db) {
             CQelTable::SQelColumn column = Column(L"c", CQelProperty::eInt, 9999);
             column.oid = 7;
             return db.TableAddColumn(1, column);
         },
         Change("Adding Column",
                "S INSERT INTO qeltpc (oid,toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) "
                "VALUES (7,1,2,'c','',0,0," +
                    std::string(kNull) +
                    ",1,'','',(SELECT IFNULL(MAX(cdo)+1,0) from qeltpc where toid = 1))\n") +
             changed},
        {"TableRemoveColumn", [](CQelPropDB& db) { return db.TableRemoveColumn(1, 2); },
         Change("Removing Column", "S DELETE FROM qeltpd WHERE toid = 1 AND coid = 2;\n"
                                   "S DELETE FROM qeltpc WHERE toid = 1 AND oid = 2\n") +
             changed},
        {"RenameColumn", [](CQelPropDB& db) { return db.RenameColumn(1, 1, L"c"); },
         Change("Renaming Column", "S UPDATE qeltpc SET cname='c' WHERE oid=1\n") + changed},
        {"TableSwapDisplayOrder", [](CQelPropDB& db) { return db.TableSwapDisplayOrder(1, 2, 1); },
         Change("TableSwapDisplayOrder", "S UPDATE qeltpc SET cdo=0 WHERE oid=2\n"
                                         "S UPDATE qeltpc SET cdo=1 WHERE oid=1\n") +
             changed},
        {"TableModifyColumn",
         [](CQelPropDB& db) {
             db.RemoveRecord(1, 1);
             Told();
             CQelTable::SQelColumn column = Column(L"c", CQelProperty::eDouble, 9999);
             column.oid = 1;
             return db.TableModifyColumn(1, column);
         },
         "I3 + Updating Column\nS SELECT COUNT(DISTINCT foid) FROM qeltpd WHERE toid = 1\n"
         "S BEGIN IMMEDIATE\nS UPDATE qeltpc SET ctype=6, cname='c', cdesc='', crtt=0, crtc=0, cdef=" +
             std::string(kNull) + ", cdisph=1, cformat='', ccur='', cdo=9999 WHERE toid=1 AND oid=1\n" +
             "S COMMIT\n" + kReadBack + changed},
    };
}

std::vector<SSteps> RecordSteps()
{
    const std::string seven = "x'0400020000000000000000000000000000000700000000000000'";
    const std::string insert = "S INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES (";
    return {
        {"AddRecord",
         [](CQelPropDB& db) {
             unsigned long oid = 0;
             return db.AddRecord(1, oid, {Data(1, Number(7)), Data(0, Number(8)), Data(2, Number(7))}, false);
         },
         "I4 + Adding record\nS BEGIN IMMEDIATE\n" + insert +
             "IFNULL((SELECT MAX(foid)+1 FROM qeltpd WHERE toid = 1),1),1,1," + seven + ")\n" +
             "S SELECT MAX(foid) FROM qeltpd WHERE toid = 1\n" + insert + "2,1,2," + seven + ")\n" +
             "S COMMIT\nI4 - Done\n> 5(1,2)\n"},
        {"SetRecord", [](CQelPropDB& db) { return db.SetRecord(1, 1, {Data(1, Number(7))}); },
         "I4 + Setting record\nI4 + Adding record\nS BEGIN IMMEDIATE\n" + insert + "1,1,1," + seven + ")\n" +
             "S COMMIT\nI4 - Done\n> 6(1,1)\n"},
        {"RemoveRecord", [](CQelPropDB& db) { return db.RemoveRecord(1, 1); },
         "I4 + Removing Record\nS BEGIN IMMEDIATE\nS DELETE FROM qeltpd WHERE toid = 1 AND foid = 1\n"
         "S COMMIT\nI4 - Done\n> 7(1,1)\n"},
        {"SortedListing",
         [](CQelPropDB& db) {
             std::vector<unsigned long> oids;
             const std::vector<CQelPropDB::SSortItem> keys(1);
             return db.GetRecordOids(1, oids, &keys);
         },
         "S SELECT DISTINCT foid FROM qeltpd WHERE toid = 1 ORDER BY oid\n"
         "S SELECT data,coid from qeltpd WHERE toid = 1 AND foid = 1 ORDER by coid ASC\n"},
        {"ListingByNoKey",
         [](CQelPropDB& db) {
             std::vector<unsigned long> oids;
             const std::vector<CQelPropDB::SSortItem> keys;
             return db.GetRecordOids(1, oids, &keys);
         },
         "S SELECT DISTINCT foid FROM qeltpd WHERE toid = 1 ORDER BY oid\n"
         "S SELECT data,coid from qeltpd WHERE toid = 1 AND foid = 1 ORDER by coid ASC\n"},
    };
}

struct SStepsName
{
    std::string operator()(const testing::TestParamInfo<SSteps>& row) const { return row.param.name; }
};

INSTANTIATE_TEST_SUITE_P(Catalogue, OutsideSteps, testing::ValuesIn(CatalogueSteps()), SStepsName());
INSTANTIATE_TEST_SUITE_P(Records, OutsideSteps, testing::ValuesIn(RecordSteps()), SStepsName());

/// A database in a file, and a second connection that takes the file for itself when told to.
class OutsideReadBack : public testing::Test
{
public:
    ~OutsideReadBack() override
    {
        db.SetNotifyCallback(nullptr, 0);
        db.SetLogfile(nullptr);
        sqlite3_close(other);
    }

protected:
    /// Takes the file when the library says that it begins to read the catalogue.
    class CTakingLog : public CHostLog
    {
    public:
        explicit CTakingLog(sqlite3*& other) : m_other(other) {}
        bool Write(const SEntry& entry) override
        {
            if (entry.text == L"+ Loading Tables") {
                EXPECT_EQ(outside::Run(m_other, "BEGIN EXCLUSIVE"), 0) << "the file is still locked";
            }
            return CHostLog::Write(entry);
        }

    private:
        sqlite3*& m_other;
    };

    OutsideReadBack()
    {
        sql.Open(file.Path());
        db.Attach(true, nullptr);
        CQelTable table;
        table.Properties().name = L"Lamps";
        db.AddTable(table);
        sqlite3_open(file.Name().c_str(), &other);
        db.SetNotifyCallback(Hear, 0);
        db.SetLogfile(&log);
        Told();
    }

    CDatabaseFile file;
    CQelSQLite sql;
    CDerivedDB db{&sql};
    sqlite3* other = nullptr;
    CTakingLog log{other};
};

TEST_F(OutsideReadBack, ThatFailsIsTheResultWhileTheChangeStands)
{
    EXPECT_EQ(db.RenameTable(1, L"Fans"), 17305u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI3 + Loading Tables\nE 17305\nE 17305\nI3 - Done\n");
    EXPECT_TRUE(db.TableExists(L"Lamps")) << "the catalogue in memory stays";
    outside::Run(other, "ROLLBACK");
    EXPECT_EQ(outside::Ask(other, "SELECT tname FROM qeltpt"), "Fans");
    db.SetLogfile(nullptr);
    EXPECT_EQ(db.Attach(false, nullptr), 10001u);
    EXPECT_TRUE(db.TableExists(L"Fans"));
}

TEST_F(OutsideReadBack, IsNotTriedAfterACommitThatFails)
{
    sqlite3_stmt* reader = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(other, "SELECT oid FROM qeltpt", -1, &reader, nullptr), 0);
    ASSERT_EQ(sqlite3_step(reader), SQLITE_ROW);
    EXPECT_EQ(db.RenameTable(1, L"Fans"), 17305u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nE 17305\n");
    sqlite3_finalize(reader);
    EXPECT_EQ(outside::Ask(other, "SELECT tname FROM qeltpt"), "Lamps");
}

} // namespace
