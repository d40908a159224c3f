// propdb_exceptions_test.cpp: what is thrown inside an operation becomes its result.
#include "property_host.h"

#include <new>
#include <stdexcept>

using namespace outside;

namespace {

/// Any exception of the framework that carries no code.
class CHostException : public CException
{};

/// A connection whose two virtual operations throw on demand.
class CThrowingSQLite : public CQelSQLite
{
public:
    int ExecSQL(const wchar_t* sql) override
    {
        const int raw = CQelSQLite::ExecSQL(sql);
        if (act)
            act();
        return raw;
    }
    int ExecStatement(CStatement* statement) override
    {
        const int raw = CQelSQLite::ExecStatement(statement);
        if (act)
            act();
        return raw;
    }
    std::function<void()> act;
};

struct SThrow
{
    const char* name;
    std::function<void()> act;
    unsigned int code;
};

class OutsideExceptions : public testing::TestWithParam<SThrow>
{
public:
    ~OutsideExceptions() override { db.SetNotifyCallback(nullptr, 0); }

protected:
    OutsideExceptions()
    {
        CallbackAnswer() = true;
        sql.Open(L":memory:");
        db.Attach(true, nullptr);
        CQelTable table;
        table.Properties().name = L"Lamps";
        table.Properties().columns = {Column(L"a")};
        db.AddTable(table);
        db.SetRecord(1, 1, {Data(1, Number(5))});
        db.SetLogfile(&log);
        db.SetNotifyCallback(Hear, 0);
        Told();
    }

    CThrowingSQLite sql;
    CHostLog log;
    CDerivedDB db{&sql};
};

TEST_P(OutsideExceptions, EndAnOperationWithTheirCodeAndUndoItsChanges)
{
    sql.act = GetParam().act;
    const std::string error = "E " + std::to_string(GetParam().code) + "\n";
    CQelTable table;
    table.Properties().name = L"Fans";
    EXPECT_EQ(db.AddTable(table), GetParam().code);
    EXPECT_EQ(Told(), "I3 + Adding table\n" + error);
    EXPECT_EQ(db.TableRemoveColumn(1, 1), GetParam().code);
    EXPECT_EQ(Told(), "I3 + Removing Column\n" + error);
    sql.act = nullptr;
    EXPECT_EQ(Ask(sql.Handle(), "SELECT tname FROM qeltpt"), "Lamps");
    EXPECT_EQ(Ask(sql.Handle(), "SELECT count(*) FROM qeltpd"), "1");
    EXPECT_FALSE(db.TableExists(L"Fans"));
    EXPECT_EQ(sqlite3_get_autocommit(sql.Handle()), 1);
}

TEST_P(OutsideExceptions, OfACreationGive17201AndLoseNothing)
{
    sql.act = GetParam().act;
    EXPECT_EQ(db.Attach(true, nullptr), 17201u);
    EXPECT_EQ(Told(), "");
    sql.act = nullptr;
    EXPECT_EQ(Ask(sql.Handle(), "SELECT tname FROM qeltpt"), "Lamps");
}

INSTANTIATE_TEST_SUITE_P(
    Thrown, OutsideExceptions,
    testing::Values(SThrow{"CodedOne", [] { throw new CQelException(12345, 0, L"host", 1, true); }, 12345},
                    SThrow{"FrameworkOne", [] { throw new CHostException; }, 10003},
                    SThrow{"StandardOne", [] { throw std::runtime_error("host"); }, 10002},
                    SThrow{"LackOfMemory", [] { throw std::bad_alloc(); }, 10002},
                    SThrow{"Number", [] { throw 5; }, 10002}),
    [](const testing::TestParamInfo<SThrow>& row) { return row.param.name; });

class OutsideThrowingCallback : public CPropertyHost
{
protected:
    static bool QEL_STDCALL Throw(EPropDBMessage, unsigned long, unsigned long, unsigned int) { throw 5; }
};

TEST_F(OutsideThrowingCallback, TurnsTheResultInto10002WhileTheChangeStands)
{
    db.SetNotifyCallback(Throw, 0);
    CQelTable table;
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 10002u);
    EXPECT_TRUE(db.TableExists(L"Lamps"));
    ASSERT_FALSE(log.entries.empty());
    EXPECT_EQ(log.entries.back().kind, CDovLogfile::eError);
    EXPECT_NE(Narrow(log.entries.back().text).find("..."), std::string::npos);
    EXPECT_EQ(db.Attach(false, nullptr), 17201u);
    EXPECT_EQ(db.Close(), 10001u);
}

class CThrowingLog : public CDovLogfile
{
public:
    bool Write(const SEntry&) override { throw std::runtime_error("full"); }
};

TEST_F(OutsideThrowingCallback, LogThatThrowsHindersNothing)
{
    CThrowingLog throwing;
    db.SetLogfile(&throwing);
    CQelTable table;
    table.Properties().name = L"Lamps";
    EXPECT_EQ(db.AddTable(table), 10001u);
    EXPECT_EQ(db.RemoveTable(9), 10020u);
    EXPECT_TRUE(db.GetBulkRecords().empty());
    db.SetLogfile(nullptr);
}

} // namespace
