// engine_call.cpp: statements whose failures are thrown.
#include "engine_call.h"

#include "storefile.h"

#include <sqlite3.h>

namespace qel {
namespace {

void StepToRow(CQelSQLite::CStatement& statement, const wchar_t* sql)
{
    Check(statement.Prepare(sql), __LINE__);
    if (!Next(statement))
        Fail(kSqlBase + SQLITE_CORRUPT, __LINE__);
}

} // namespace

void Fail(unsigned int code, int line)
{
    throw new CQelException(code, 0, kSourceQelFDB, line, true);
}

void Check(int raw, int line)
{
    if (const unsigned int code = CQelSQLite::MapQelERR(raw); code != kSuccess)
        Fail(code, line);
}

void Run(CQelSQLite& db, const wchar_t* sql)
{
    Check(db.ExecSQL(sql), __LINE__);
}

std::wstring AskText(CQelSQLite& db, const wchar_t* sql)
{
    CQelSQLite::CStatement statement(&db);
    StepToRow(statement, sql);
    return statement.GetString(0).Text();
}

long long AskInt(CQelSQLite& db, const wchar_t* sql)
{
    CQelSQLite::CStatement statement(&db);
    StepToRow(statement, sql);
    return statement.GetInt(0);
}

bool Next(CQelSQLite::CStatement& statement)
{
    const int raw = statement.Step();
    Check(raw, __LINE__);
    return raw == SQLITE_ROW;
}

} // namespace qel
