// legacy_host.h: a host of the legacy database: its store file, its log and its callback.
#pragma once

#include "property_host.h"

#include <initializer_list>

namespace outside {

/// A host that derives, and so reaches what is protected.
class CDerivedLegacyDB : public CQelPropDB3X
{
public:
    using CQelPropDB3X::CQelPropDB3X;
    using CQelPropDB3X::DoNotify;
    using CQelPropDB3X::LoadTables;
    using CQelPropDB3X::StoreTables;
};

/// A file name that is free, and free again with all that lies beside it when the test ends.
class CStorePath
{
public:
    CStorePath()
        : m_path(std::filesystem::temp_directory_path() /
                 ("qel-outside-" + std::to_string(std::random_device{}()) + ".qdb"))
    {}
    CStorePath(const CStorePath&) = delete;
    CStorePath& operator=(const CStorePath&) = delete;
    ~CStorePath()
    {
        std::error_code ignored;
        for (const char* tail : {"", "#bak", "#new", "#old", "-wal", "-shm", "-journal"})
            std::filesystem::remove_all(m_path.string() + tail, ignored);
    }

    std::wstring Path() const { return m_path.wstring(); }
    std::filesystem::path Backup() const { return m_path.string() + "#bak"; }

private:
    std::filesystem::path m_path;
};

inline CQelTable3X::SQelColumn LegacyColumn(const std::wstring& name, CQelProperty::EType type,
                                            unsigned long oid = 0, int displayOrder = 0, int dataIndex = -1)
{
    CQelTable3X::SQelColumn column;
    column.oid = oid;
    column.name = name;
    column.type = type;
    column.displayOrder = displayOrder;
    column.dataIndex = dataIndex;
    return column;
}

/// The bytes of a stored record as a text of hexadecimal digits, or "code N" where they cannot be had.
inline std::string StoredBytes(const CDovBlobDB& store, unsigned short selector, unsigned long oid)
{
    unsigned int size = 0;
    if (const unsigned int code = store.GetSize({selector, oid}, size); code != 10001)
        return "code " + std::to_string(code);
    std::vector<unsigned char> bytes(size + 1u);
    EXPECT_EQ(store.Get({selector, oid}, bytes.data()), 10001u);
    std::string text;
    for (unsigned int i = 0; i < size; ++i) {
        text += "0123456789abcdef"[bytes[i] / 16];
        text += "0123456789abcdef"[bytes[i] % 16];
    }
    return text;
}

/// A new, empty legacy database, with nothing told so far. Entries above level 4 do not pass.
class CLegacyHost : public testing::Test
{
public:
    ~CLegacyHost() override
    {
        db.SetLogfile(nullptr);
        db.SetNotifyCallback(nullptr, 0);
    }

protected:
    CLegacyHost()
    {
        CallbackAnswer() = true;
        log.SetLevel(4);
        EXPECT_EQ(db.Create(path.Path()), 10001u);
        db.SetLogfile(&log);
        db.SetNotifyCallback(Hear, 0);
        Told();
    }

    /// Adds a table and forgets what that told. Columns without an order or a slot stand as they are listed.
    unsigned long Make(const std::wstring& name, std::vector<CQelTable3X::SQelColumn> columns = {})
    {
        CQelTable3X table;
        table.Properties().name = name;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            columns[i].oid = columns[i].oid != 0 ? columns[i].oid : static_cast<unsigned long>(i) + 1;
            columns[i].displayOrder = columns[i].displayOrder != 0 ? columns[i].displayOrder : int(i);
        }
        table.Properties().columns = columns;
        EXPECT_EQ(db.AddTable(table), 10001u);
        Told();
        return table.Properties().oid;
    }

    unsigned long MakeLamps()
    {
        return Make(L"Lamps", {LegacyColumn(L"Power", CQelProperty::eInt),
                               LegacyColumn(L"Maker", CQelProperty::eString),
                               LegacyColumn(L"Age", CQelProperty::eInt)});
    }

    /// Adds a record under an automatic oid and forgets what that told.
    unsigned long Add(unsigned long table, const std::vector<CQelProperty>& values)
    {
        unsigned long oid = 0;
        EXPECT_EQ(db.AddRecord(table, oid, Positional(values), false), 10001u);
        Told();
        return oid;
    }

    /// Values by position; column oids are not looked at.
    static std::vector<SQelPropColumnData> Positional(const std::vector<CQelProperty>& values)
    {
        std::vector<SQelPropColumnData> record;
        record.reserve(values.size());
        for (const CQelProperty& value : values)
            record.push_back(Data(4711, value));
        return record;
    }

    std::string Record(unsigned long table, unsigned long record)
    {
        std::vector<SQelPropColumnData> values;
        const unsigned int code = db.GetRecord(table, record, values);
        Told();
        return code == 10001 ? Show(values) : std::to_string(code);
    }

    /// The columns of a table as "oid:name@displayOrder/dataIndex".
    std::string Columns(unsigned long table)
    {
        CQelTable3X found(table);
        if (db.GetTable(found) != 10001)
            return "none";
        std::string text;
        for (const auto& column : found.Columns())
            text += (text.empty() ? "" : " ") + std::to_string(column.oid) + ":" + Narrow(column.name) + "@" +
                    std::to_string(column.displayOrder) + "/" + std::to_string(column.dataIndex);
        return text;
    }

    std::string Tables()
    {
        std::vector<unsigned long> oids;
        EXPECT_EQ(db.GetTables(oids), 10001u);
        Told();
        return Show(oids);
    }

    CStorePath path;
    CHostLog log;
    CDerivedLegacyDB db;
};

} // namespace outside
