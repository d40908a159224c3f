// sql_fixture.h: a database of a test's own, and its content as text.
#pragma once

#include "recording_log.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>
#include <qelplat4/utf16.h>
#include <qelsq4/qelsq4.h>

namespace qeltest {

/// All rows that a query gives: columns separated by "|", rows by blanks; NULL and missing rows are empty.
inline std::string Rows(CQelSQLite& db, const wchar_t* sql, int columns = 1)
{
    CQelSQLite::CStatement statement(&db);
    statement.Prepare(sql);
    std::string text;
    while (statement.Step() == 100) {
        text += text.empty() ? "" : " ";
        for (int column = 0; column < columns; ++column)
            text += (column == 0 ? "" : "|") + qel::ToUtf8(statement.GetString(column).Text());
    }
    return text;
}

/// A database in memory with an empty table t(a, b), and a log for it.
class CSqlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(db.Open(L":memory:"), 0);
        ASSERT_EQ(db.ExecSQL(L"CREATE TABLE t (a, b)"), 0);
        db.SetLogfile(&log);
    }

    std::string Content() { return Rows(db, L"SELECT a FROM t ORDER BY rowid"); }

    CRecordingLog log;
    CQelSQLite db;
};

/// The same in a file, for what needs a second connection.
class CSqlFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(db.Open(folder.Path(L"test.db")), 0);
        ASSERT_EQ(db.ExecSQL(L"CREATE TABLE t (a, b); INSERT INTO t VALUES (1, 'one')"), 0);
        db.SetLogfile(&log);
        ASSERT_EQ(other.Open(folder.Path(L"test.db")), 0);
    }

    std::string Content() { return Rows(db, L"SELECT a FROM t ORDER BY rowid"); }

    CTemporaryFolder folder;
    CRecordingLog log;
    CQelSQLite db;
    CQelSQLite other;
};

} // namespace qeltest
