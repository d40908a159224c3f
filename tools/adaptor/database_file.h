// database_file.h: what the views of both kinds of database share.
#pragma once

#include "display_order.h"
#include "property_file.h"
#include "text.h"

#include <algorithm>

namespace tool {

/// A view of one of the library's databases, for what both do under the same names.
/// @tparam Database, Table  CQelPropDB and CQelTable, or those of the earlier format
template <class Database, class Table>
class CDatabaseFile : public CPropertyFile
{
public:
    const std::wstring& Path() const override { return m_path; }

    void RenameTable(unsigned long tableOid, const std::wstring& name) override
    {
        BeginChange();
        Require(m_database.RenameTable(tableOid, name), "cannot rename the table to " + Quoted(name));
    }
    void RemoveTable(unsigned long tableOid) override
    {
        BeginChange();
        Require(m_database.RemoveTable(tableOid), "cannot remove the table");
    }
    void RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name) override
    {
        BeginChange();
        Require(m_database.RenameColumn(tableOid, columnOid, name),
                "cannot rename the column to " + Quoted(name));
    }

    bool HasRecord(unsigned long tableOid, unsigned long recordOid) override
    {
        return m_database.HasRecord(tableOid, recordOid);
    }
    unsigned int CountRecords(unsigned long tableOid) override
    {
        unsigned int count = 0;
        Require(m_database.GetRecordCount(tableOid, count), "cannot count the records");
        return count;
    }
    std::vector<unsigned long> RecordOids(unsigned long tableOid) override
    {
        std::vector<unsigned long> oids;
        Require(m_database.GetRecordOids(tableOid, oids, nullptr), "cannot list the records");
        std::sort(oids.begin(), oids.end());
        return oids;
    }

protected:
    /// @param arguments  of the database's constructor
    template <class... Arguments>
    CDatabaseFile(const std::wstring& path, const SOptions& options, Arguments... arguments)
        : m_path(path), m_options(options), m_database(arguments...)
    {
        m_database.SetLogfile(options.log);
    }

    /// Begins the transaction of the next change, if none is begun.
    virtual void Begin() = 0;
    /// The same for a change of tables or columns.
    void BeginChange()
    {
        Begin();
        ForgetTable();
    }

    void Require(unsigned int code, const std::string& doing) const
    {
        if (code != qel::kSuccess)
            throw FailureOf(code, Utf8(m_path), doing);
    }

    /// Every table as the database gives it, columns in display order.
    std::vector<Table> StoredTables()
    {
        std::vector<unsigned long> oids;
        Require(m_database.GetTables(oids), "cannot list the tables");
        std::vector<Table> tables;
        tables.reserve(oids.size());
        for (const unsigned long oid : oids)
            tables.push_back(Stored(oid, "cannot read a table"));
        return tables;
    }
    /// One table, read once as long as the same one is asked for; valid until a change of tables or columns.
    const Table& TableOf(unsigned long tableOid)
    {
        if (tableOid == 0 || m_table.Properties().oid != tableOid)
            m_table = Stored(tableOid, "no such table");
        return m_table;
    }
    void ForgetTable() { m_table = Table(); }

    std::wstring m_path;
    SOptions m_options;
    Database m_database;
    bool m_begun = false;

private:
    Table Stored(unsigned long oid, const char* doing)
    {
        Table table(oid);
        Require(m_database.GetTable(table), doing);
        SortByDisplayOrder(table.Properties().columns);
        return table;
    }

    Table m_table; // the one used last; oid 0 for none
};

} // namespace tool
