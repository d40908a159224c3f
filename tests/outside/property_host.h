// property_host.h: a host of the property database: its connection, its log, its callback and raw SQL.
#pragma once

#include <gtest/gtest.h>
#include <qelprop4/qelprop4.h>
#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace outside {

/// What log and callback were told, in order: "I3 + Adding table", "I2 17502", "E 17500", "> 2(1,0)".
inline std::string& Transcript()
{
    static std::string text;
    return text;
}

/// Takes what was told and starts anew.
inline std::string Told()
{
    return std::exchange(Transcript(), std::string());
}

inline std::string Narrow(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t unit : text)
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    return narrow;
}

/// Writes its entries into the transcript; every level passes.
class CHostLog : public CDovLogfile
{
public:
    explicit CHostLog(std::string mark = "") : m_mark(std::move(mark)) { SetLevel(100); }

    bool Write(const SEntry& entry) override
    {
        const char* const kinds = "EWI";
        Transcript() += m_mark + kinds[entry.kind] +
                        (entry.kind == eError ? "" : std::to_string(entry.level)) + " " +
                        (entry.code != 0 ? std::to_string(entry.code) : Narrow(entry.text)) + "\n";
        entries.push_back(entry);
        return true;
    }

    std::vector<SEntry> entries;

private:
    std::string m_mark;
};

inline bool& CallbackAnswer()
{
    static bool answer = true;
    return answer;
}

inline bool QEL_STDCALL Hear(EPropDBMessage message, unsigned long first, unsigned long second,
                             unsigned int user)
{
    Transcript() += "> " + std::to_string(message) + "(" + std::to_string(first) + "," +
                    std::to_string(second) + (user == 0 ? "" : ";" + std::to_string(user)) + ")\n";
    return CallbackAnswer();
}

/// A host that derives, and so reaches what is protected.
class CDerivedDB : public CQelPropDB
{
public:
    using CQelPropDB::ClearBulkCache;
    using CQelPropDB::CQelPropDB;
    using CQelPropDB::DoNotify;
    using CQelPropDB::FillBulkCache;
    using CQelPropDB::LoadTables;
};

/// Runs statements beside the library. @return SQLite's result
inline int Run(sqlite3* handle, const std::string& statements)
{
    return sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr);
}

inline std::string Cell(sqlite3_stmt* statement, int column)
{
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_NULL)
        return "NULL";
    if (type != SQLITE_BLOB)
        return reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    std::string text = "x";
    const auto* bytes = static_cast<const unsigned char*>(sqlite3_column_blob(statement, column));
    for (int i = 0; i < sqlite3_column_bytes(statement, column); ++i) {
        text += "0123456789abcdef"[bytes[i] / 16];
        text += "0123456789abcdef"[bytes[i] % 16];
    }
    return text;
}

/// The rows of a query, cells joined by "|", rows by a blank.
inline std::string Ask(sqlite3* handle, const std::string& query)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, query.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        return std::string("error: ") + sqlite3_errmsg(handle);
    std::string text;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        text += text.empty() ? "" : " ";
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            text += (column == 0 ? "" : "|") + Cell(statement, column);
    }
    sqlite3_finalize(statement);
    return text;
}

/// A file that is gone when the test ends.
class CDatabaseFile
{
public:
    CDatabaseFile()
        : m_path(std::filesystem::temp_directory_path() /
                 ("qel-outside-" + std::to_string(std::random_device{}()) + ".db"))
    {}
    CDatabaseFile(const CDatabaseFile&) = delete;
    CDatabaseFile& operator=(const CDatabaseFile&) = delete;
    ~CDatabaseFile()
    {
        std::error_code ignored;
        for (const char* tail : {"", "-journal", "-wal", "-shm"})
            std::filesystem::remove(m_path.string() + tail, ignored);
    }

    std::wstring Path() const { return m_path.wstring(); }
    std::string Name() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

/// Lets a host work on an empty database that is open for reading alone, as long as it lives. Not copied.
class CReadOnlyAttachment
{
public:
    /// @param before  what the host goes back to at the end
    CReadOnlyAttachment(CQelPropDB& db, CQelSQLite& before) : m_db(db), m_before(before)
    {
        CQelSQLite writer;
        EXPECT_EQ(writer.Open(m_file.Path()), 0);
        CQelPropDB(&writer).Attach(true, nullptr);
        writer.Close();
        EXPECT_EQ(m_reader.Open(m_file.Path(), true), 0);
        EXPECT_EQ(m_db.Attach(false, &m_reader), 10001u);
        Told();
    }
    CReadOnlyAttachment(const CReadOnlyAttachment&) = delete;
    CReadOnlyAttachment& operator=(const CReadOnlyAttachment&) = delete;
    ~CReadOnlyAttachment() { m_db.Attach(false, &m_before); }

private:
    CQelPropDB& m_db;
    CQelSQLite& m_before;
    CDatabaseFile m_file;
    CQelSQLite m_reader;
};

inline CQelProperty Number(int value)
{
    CQelProperty property;
    property.SetInt(value);
    return property;
}

inline CQelProperty Text(const std::wstring& value)
{
    CQelProperty property;
    property.SetString(value);
    return property;
}

inline SQelPropColumnData Data(unsigned long columnOid, const CQelProperty& value)
{
    SQelPropColumnData data;
    data.columnOid = columnOid;
    data.value = value;
    return data;
}

inline CQelTable::SQelColumn Column(const std::wstring& name, CQelProperty::EType type = CQelProperty::eInt,
                                    int displayOrder = 0)
{
    CQelTable::SQelColumn column;
    column.name = name;
    column.type = type;
    column.displayOrder = displayOrder;
    return column;
}

/// A record as text: "1=5 2=null 3=text"; other types are written with their type number.
inline std::string Show(const std::vector<SQelPropColumnData>& record)
{
    std::string text;
    for (const SQelPropColumnData& data : record) {
        text += (text.empty() ? "" : " ") + std::to_string(data.columnOid) + "=";
        const CQelProperty& value = data.value;
        if (value.IsNull())
            text += "null";
        else if (value.GetType() == CQelProperty::eInt)
            text += std::to_string(value.Data().uValue.nInt);
        else if (value.GetType() == CQelProperty::eString)
            text += Narrow(value.String());
        else
            text += "type" + std::to_string(value.GetType());
    }
    return text;
}

inline std::string Show(const std::vector<unsigned long>& oids)
{
    std::string text;
    for (const unsigned long oid : oids)
        text += (text.empty() ? "" : " ") + std::to_string(oid);
    return text;
}

/// An attached database in memory, with nothing told so far.
class CPropertyHost : public testing::Test
{
public:
    ~CPropertyHost() override { db.SetNotifyCallback(nullptr, 0); }

protected:
    CPropertyHost()
    {
        CallbackAnswer() = true;
        sql.Open(L":memory:");
        db.Attach(true, nullptr);
        db.SetLogfile(&log);
        db.SetNotifyCallback(Hear, 0);
        Told();
    }
    int Run(const std::string& statements) { return outside::Run(sql.Handle(), statements); }
    std::string Ask(const std::string& query) { return outside::Ask(sql.Handle(), query); }

    /// Adds a table and forgets what that told.
    unsigned long Make(const std::wstring& name, const std::vector<CQelTable::SQelColumn>& columns = {},
                       unsigned long oid = 0)
    {
        CQelTable table(oid);
        table.Properties().name = name;
        table.Properties().columns = columns;
        EXPECT_EQ(db.AddTable(table), 10001u);
        Told();
        return table.Properties().oid;
    }

    /// Stores a record of one value under a given oid and forgets what that told.
    void Put(unsigned long table, unsigned long record, unsigned long column, const CQelProperty& value)
    {
        EXPECT_EQ(db.SetRecord(table, record, {Data(column, value)}), 10001u);
        Told();
    }

    std::string Record(unsigned long table, unsigned long record)
    {
        std::vector<SQelPropColumnData> values;
        const unsigned int code = db.GetRecord(table, record, values);
        return code == 10001 ? Show(values) : std::to_string(code);
    }

    std::string Columns(unsigned long table)
    {
        CQelTable found(table);
        if (db.GetTable(found) != 10001)
            return "none";
        std::string text;
        for (const auto& column : found.Columns())
            text += (text.empty() ? "" : " ") + std::to_string(column.oid) + ":" + Narrow(column.name) + "@" +
                    std::to_string(column.displayOrder);
        return text;
    }

    CQelSQLite sql;
    CHostLog log;
    CDerivedDB db{&sql};
};

} // namespace outside
