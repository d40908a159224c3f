// raw_propdb.h: the property database's statements run on the engine directly, as a twin to measure against.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

namespace qelbench {

/// A kept statement on the engine's own interface.
class CRawStatement
{
public:
    CRawStatement(sqlite3* db, const char* sql)
    {
        sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    }
    CRawStatement(const CRawStatement&) = delete;
    CRawStatement& operator=(const CRawStatement&) = delete;
    ~CRawStatement() { sqlite3_finalize(m_statement); }

    CRawStatement& Bind(int index, long long number)
    {
        sqlite3_bind_int64(m_statement, index, number);
        return *this;
    }
    CRawStatement& Bind(int index, const std::string& bytes)
    {
        sqlite3_bind_blob(m_statement, index, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC);
        return *this;
    }
    bool Row() { return sqlite3_step(m_statement) == SQLITE_ROW; }
    void Run()
    {
        sqlite3_step(m_statement);
        Reset();
    }
    void Reset() { sqlite3_reset(m_statement); }
    long long Int(int column) { return sqlite3_column_int64(m_statement, column); }
    /// Reads a column's bytes as a caller must, and gives their number.
    std::size_t Bytes(int column, const unsigned char*& data)
    {
        data = static_cast<const unsigned char*>(sqlite3_column_blob(m_statement, column));
        return static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    }
    /// The same for a text.
    std::size_t Text(int column, const unsigned char*& data)
    {
        data = sqlite3_column_text(m_statement, column);
        return static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    }

private:
    sqlite3_stmt* m_statement = nullptr;
};

/// The texts of the record operations, kept.
struct SRawPropDB
{
    explicit SRawPropDB(sqlite3* db)
        : savepoint(db, "SAVEPOINT qel_guard"), release(db, "RELEASE qel_guard"),
          insertNew(db, "INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES "
                        "(IFNULL((SELECT MAX(foid)+1 FROM qeltpd WHERE toid = ?2),1),?2,?3,?4)"),
          insert(db, "INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES (?1,?2,?3,?4)"),
          largest(db, "SELECT MAX(foid) FROM qeltpd WHERE toid = ?2"),
          read(db, "SELECT data,coid from qeltpd WHERE toid = ?1 AND foid = ?2 ORDER by coid ASC"),
          bulk(db, "SELECT foid,coid,data from qeltpd WHERE toid = ?1 ORDER by foid ASC, toid ASC, coid ASC"),
          list(db, "SELECT DISTINCT foid FROM qeltpd WHERE toid = ?1 ORDER BY oid"),
          columns(db, "SELECT oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo FROM qeltpc"),
          tables(db, "SELECT oid,tname,tdesc FROM qeltpt"),
          columnsOf(db, "SELECT oid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo FROM qeltpc "
                        "WHERE toid = ?1")
    {}

    /// Adds one record under the next oid; value i under the column first + i.
    void Add(long long table, long long firstColumn, const std::vector<std::string>& values)
    {
        savepoint.Run();
        insertNew.Bind(2, table).Bind(3, firstColumn).Bind(4, values[0]).Run();
        largest.Bind(2, table).Row();
        const long long oid = largest.Int(0);
        largest.Reset();
        for (std::size_t i = 1; i < values.size(); ++i)
            insert.Bind(1, oid)
                .Bind(2, table)
                .Bind(3, firstColumn + static_cast<long long>(i))
                .Bind(4, values[i])
                .Run();
        release.Run();
    }

    /// Calls `take` with the column and the bytes of every value of one record.
    template <class Take>
    void Read(long long table, long long oid, const Take& take)
    {
        read.Bind(1, table).Bind(2, oid);
        while (read.Row()) {
            const unsigned char* data = nullptr;
            const std::size_t size = read.Bytes(0, data);
            take(read.Int(1), data, size);
        }
        read.Reset();
    }

    CRawStatement savepoint, release, insertNew, insert, largest, read, bulk, list, columns, tables,
        columnsOf;
};

} // namespace qelbench
