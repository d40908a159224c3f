// lamps.h: a small database that the tests of this folder start from.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qelprop4/qelprop4.h>
#include <support/dump.h>
#include <support/recording_log.h>
#include <support/recording_notifier.h>
#include <support/result_matchers.h>
#include <support/sample_values.h>
#include <support/sql_text.h>
#include <support/temporary_folder.h>

namespace qeltest {

using TRecord = std::vector<SQelPropColumnData>;
using TOids = std::vector<unsigned long>;

constexpr unsigned long kLargestOid = 4294967295UL;

inline CQelTable::SQelColumn Column(const std::wstring& name,
                                    CQelProperty::EType type = CQelProperty::eString, int displayOrder = 0)
{
    CQelTable::SQelColumn column;
    column.name = name;
    column.type = type;
    column.displayOrder = displayOrder;
    return column;
}

inline CQelTable TableOf(const std::wstring& name, std::vector<CQelTable::SQelColumn> columns = {},
                         unsigned long oid = 0)
{
    CQelTable table(oid);
    table.Properties().name = name;
    table.Properties().columns = std::move(columns);
    return table;
}

inline SQelPropColumnData Value(unsigned long columnOid, CQelProperty value)
{
    SQelPropColumnData data;
    data.columnOid = columnOid;
    data.value = std::move(value);
    return data;
}

/// A database in memory, attached, with a log and a notifier that have heard nothing yet.
class PropDB : public testing::Test
{
protected:
    PropDB()
    {
        sql.Open(L":memory:");
        db.Attach(true, nullptr);
        db.SetLogfile(&log);
        db.SetNotifyCallback(&CRecordingNotifier::Notify, 0);
        Forget();
    }

    void Forget()
    {
        log.Forget();
        notifier.Forget();
    }

    /// Adds a table and gives its oid, with nothing heard of it.
    unsigned long Add(CQelTable table)
    {
        EXPECT_THAT(db.AddTable(table), Succeeds());
        Forget();
        return table.Properties().oid;
    }

    /// Adds a record with the next oid and gives that oid, with nothing heard of it.
    unsigned long Add(unsigned long tableOid, const TRecord& values)
    {
        unsigned long recordOid = 0;
        EXPECT_THAT(db.AddRecord(tableOid, recordOid, values, false), Succeeds());
        Forget();
        return recordOid;
    }

    /// One record as "1=40 2='red'", by column oid; a code in the place of a record that cannot be read.
    std::string Record(unsigned long tableOid, unsigned long recordOid)
    {
        TRecord record;
        const unsigned int code = db.GetRecord(tableOid, recordOid, record);
        if (code != qel::kSuccess)
            return std::to_string(code);
        std::string text;
        for (const SQelPropColumnData& data : record)
            text += (text.empty() ? "" : " ") + std::to_string(data.columnOid) + "=" + Show(data.value);
        return text;
    }

    CQelSQLite sql;
    CRecordingLog log;
    CRecordingNotifier notifier;
    CQelPropDB db{&sql};
};

/// The table Lamps (1) with the columns Power (1, integer) and Colour (2, text).
class Lamps : public PropDB
{
protected:
    Lamps() { lamps = Add(TableOf(L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour")})); }

    unsigned long AddLamp(int power, const wchar_t* colour)
    {
        return Add(lamps, {Value(1, Int(power)), Value(2, Text(colour))});
    }

    unsigned long lamps = 0;
};

/// The table Lamps (1) with the column Power (1), in a file that a second connection holds open as well.
class LampsOfALockedFile : public PropDB
{
protected:
    LampsOfALockedFile()
    {
        sql.Open(folder.Path(L"lamps.db"));
        db.Attach(true, nullptr);
        db.Close();
        db.Attach(false, nullptr);
        other.Open(folder.Path(L"lamps.db"));
        lamps = Add(TableOf(L"Lamps", {Column(L"Power")}));
    }

    CTemporaryFolder folder;
    CQelSQLite other;
    unsigned long lamps = 0;
};

} // namespace qeltest
