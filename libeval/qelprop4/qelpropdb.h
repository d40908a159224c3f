// qelpropdb.h: the property database over an SQLite database of the host's.
#pragma once

#include <qelfdb4/qelfdb4.h>
#include <qellib4/qellib4.h>
#include <qelprop4/propdbtypes.h>
#include <qelprop4/qeltable.h>

#include <map>
#include <string>
#include <vector>

class CQelSQLite;
class CSQLiteTransaction;

namespace qel {
class COperation;
}

/// User-defined tables, columns and records inside an SQLite database that the host opens and keeps.
///
/// Every operation that returns a code gives 10001 on success, 17500 when the database is not open, 17501 for
/// a change of a read-only one, 17201 for one whose transaction could not be begun, 10002 and 10003 for
/// exceptions (lack of memory is 10002), and codes of the SQL layer (17300 plus SQLite's) unchanged; nothing
/// is thrown. A change is written whole or not at all. A change to tables or columns is committed before the
/// catalogue is read back: where that reading fails, its code is the result, while the change stands and the
/// catalogue in memory stays as it was; Attach reads it again.
///
/// Object ids are 32-bit numbers; a wider one names nothing (10020), and rows that others wrote under wider
/// or negative ones are left alone: listings and the catalogue pass them over with a warning in the log.
///
/// Database and log are the host's and must outlive the object; copies share both. One thread at a time.
class QELPROP4_API CQelPropDB : public CQelBase
{
public:
    /// One sort key.
    struct SSortItem
    {
        unsigned long column = 0; ///< column oid; one that the table lacks sorts by its first column
        bool ascending = true;    ///< false: from the largest value down
    };

    /// Makes a database object that is not open yet.
    /// @param db  may be null; Attach can supply it
    explicit CQelPropDB(CQelSQLite* db);
    /// Copies the catalogue and the settings; the copy works on the same SQLite database.
    CQelPropDB(const CQelPropDB& other);
    /// The same; this object is unchanged when memory runs out.
    CQelPropDB& operator=(const CQelPropDB& other);
    /// Closes this object; the database stays open.
    ~CQelPropDB() override;

    /// Creates an empty schema, dropping any old one, or loads the catalogue and repairs display orders.
    ///
    /// A database without the schema loads as an empty catalogue. Of columns that share the display order 0,
    /// all but the first are moved behind the table's last one, unless the database is read-only.
    /// @param create  true drops every table, column and record, or none when it fails; the catalogue in
    ///                memory stays as it was
    /// @param db      replaces the database unless it is null
    /// @return 17201 when the schema could not be created or a repair failed; 10011 when a column's default
    ///         value is damaged: the catalogue is loaded, with null in its place
    unsigned int Attach(bool create, CQelSQLite* db);
    /// Empties catalogue and cache; sends message 1 if the database is open. Always 10001.
    unsigned int Close();
    /// Adds the look-up indexes over values by table and record and over columns by table, where missing.
    /// They change no answer, and make large databases load and grow faster.
    unsigned int CreateLookupIndexes();

    /// Sets the log that operations and failures are entered in.
    /// @param log  not owned; null switches logging off
    void SetLogfile(CDovLogfile* log);
    /// Sets whom to tell of every change.
    /// @param callback  null switches notification off. It may call any operation of this object, but must
    ///                  not end or assign to it; an exception that it throws turns the operation's result
    ///                  into 10002, while the change that it was told of stands
    /// @param user      handed back to the callback
    void SetNotifyCallback(TQelNotifyCallback callback, unsigned int user);

    /// 1000; a figure for the host, not enforced by this database.
    unsigned int MaxTables() const;
    /// 255 columns in a table.
    unsigned int MaxColumns() const;
    /// False for an empty name and for one with a blank or any of `#%()*,-./:;<>?@[\]|`.
    bool IsValidName(const std::wstring& name) const;
    /// Whether the catalogue in memory has a table of exactly this name.
    bool TableExists(const std::wstring& name) const;
    /// The SQLite database, which is the host's; null while there is none.
    CQelSQLite* DBInstance() { return m_db; }
    /// The same for a database object that is only looked at.
    const CQelSQLite* DBInstance() const { return m_db; }
    /// Empties the bulk cache; the arguments are those of the legacy database and not used.
    unsigned int Optimize(const std::wstring& path, CDovBlobDB::TProgress progress, unsigned int user);
    /// Empties the bulk cache; the arguments are those of the legacy database and not touched.
    unsigned int SelfTest(CQelFile* report, unsigned long& errors, CDovBlobDB::TProgress progress,
                          unsigned int user);

    /// Lists the table oids in ascending order.
    /// @param oids  out: emptied first unless the code is 17500
    unsigned int GetTables(std::vector<unsigned long>& oids);
    /// Replaces `table` by the catalogue's table of its oid.
    /// @return 10020, leaving `table`, when there is none
    unsigned int GetTable(CQelTable& table);
    /// Stores a new table with its columns, which get oids of their own. An oid that is taken, and a
    /// transaction that cannot be begun, store nothing and still give 10001.
    /// @param table  in: oid 0 for the next free one; out, on 10001: its oid
    /// @return 17502 invalid name; 17503 name in use; 10020 an oid wider than 32 bits
    unsigned int AddTable(CQelTable& table);
    /// Removes a table with its columns and records.
    /// @return 10020 no such table; 17509 some table has a Reference column that refers to that same table
    unsigned int RemoveTable(unsigned long tableOid);
    /// Gives a table another name.
    /// @return 17503 name in use, by this table too; 17502 invalid name
    unsigned int RenameTable(unsigned long tableOid, const std::wstring& name);

    /// Stores a new column.
    /// @param column  oid 0 for the next free one, known from the catalogue afterwards; display order 9999
    ///                places it last
    /// @return 17502 invalid name; 10020 no such table; 17505 255 columns exist; 17503 name in use
    unsigned int TableAddColumn(unsigned long tableOid, CQelTable::SQelColumn& column);
    /// Removes a column with its values; one that does not exist is success.
    unsigned int TableRemoveColumn(unsigned long tableOid, unsigned long columnOid);
    /// Replaces the definition of the column with `column`'s oid; the name is not tested.
    /// @return 10020 no such table or column; 17506 the type differs and the table holds records
    unsigned int TableModifyColumn(unsigned long tableOid, CQelTable::SQelColumn& column);
    /// Gives a column another name.
    /// @return 17502 invalid name; 10020 no such table or column; 17503 name in use, by this column too
    unsigned int RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name);
    /// Lets two columns change places.
    /// @return 10020 when table or columns are missing or both oids are the same
    unsigned int TableSwapDisplayOrder(unsigned long tableOid, unsigned long columnOid1,
                                       unsigned long columnOid2);
    /// Gives the definition of one column.
    /// @param column  out: the column; unchanged when the table has none of that oid, which still gives 10001
    /// @return 10020 no such table
    unsigned int TableGetColumn(unsigned long tableOid, unsigned long columnOid,
                                CQelTable::SQelColumn& column);

    /// Stores one record, whole or not at all.
    ///
    /// A new oid is one more than the largest in the table. The message sent is 6 when `recordOid` was handed
    /// in as anything but 0, whether it was used or not, and 5 otherwise.
    /// @param recordOid  in: the oid to write under if `useGivenOid`, 0 for the next free one;
    ///                   out: on 10001, the oid under which the record stands; otherwise as it was, or 0
    ///                   once the database was found writable and `useGivenOid` is false
    /// @param values     copied; an element whose column oid is 0 is skipped
    /// @return 10020 no such table, or an oid wider than 32 bits; 17201 also when no new oid can be had
    unsigned int AddRecord(unsigned long tableOid, unsigned long& recordOid,
                           const std::vector<SQelPropColumnData>& values, bool useGivenOid);
    /// Writes values of one record; columns that are not named keep theirs. Codes as AddRecord.
    unsigned int SetRecord(unsigned long tableOid, unsigned long recordOid,
                           const std::vector<SQelPropColumnData>& values);
    /// Reads one record: one element per column in the table's order, null where nothing is stored.
    /// @param out  keeps its memory where it fits; on failure in an unspecified but valid state
    /// @return 10001 for a record that does not exist, too; 10020 no such table; 10011 a stored value
    ///         is damaged
    unsigned int GetRecord(unsigned long tableOid, unsigned long recordOid,
                           std::vector<SQelPropColumnData>& out);
    /// Reads one value; null where nothing is stored.
    /// @return 10020 no such table or column
    unsigned int GetColumn(unsigned long tableOid, unsigned long recordOid, unsigned long columnOid,
                           SQelPropColumnData& out);
    /// Removes one record; one that does not exist is success, and so is a transaction that cannot begin.
    unsigned int RemoveRecord(unsigned long tableOid, unsigned long recordOid);
    /// Whether any value of the record is stored; false on any failure.
    bool HasRecord(unsigned long tableOid, unsigned long recordOid) const;
    /// Counts the records with at least one value.
    /// @param count  out: 0 on failure and for an unknown table
    unsigned int GetRecordCount(unsigned long tableOid, unsigned int& count);

    /// Every record of the table with oid 1000, by record oid; filled on first use.
    /// The reference is good until the next operation that changes anything.
    const std::map<unsigned long, std::vector<SQelPropColumnData>>& GetBulkRecords();
    /// Lists a table's record oids.
    /// @param oids       out: unchanged with 17500 and 10020, empty with any other failure
    /// @param sortItems  null: in the order in which the records were first stored; an empty list: no oids
    /// @return 10020 no such table; codes of GetRecord
    unsigned int GetRecordOids(unsigned long tableOid, std::vector<unsigned long>& oids,
                               const std::vector<SSortItem>* sortItems);

protected:
    /// Calls the callback.
    /// @return its result; true without one
    bool DoNotify(EPropDBMessage message, unsigned long first, unsigned long second);
    /// Rebuilds a catalogue from the database.
    /// @param tables  out: the catalogue; empty after a failure other than 10011
    /// @return 10011 when a column's default value is damaged; null stands in its place
    unsigned int LoadTables(std::map<unsigned long, CQelTable>& tables);
    /// Reads every record of the table with oid 1000 into the bulk cache.
    /// @return 10020 when there is no such table; the cache is then empty, as after any failure
    unsigned int FillBulkCache();
    /// Empties the bulk cache, so that GetBulkRecords reads anew.
    void ClearBulkCache();

private:
    unsigned int FindOpenTable(unsigned long tableOid, const CQelTable*& table, qel::SSite site) const;
    unsigned int CreateSchema();
    unsigned int OpenSchema();
    unsigned int RepairDisplayOrders();
    unsigned int InsertTable(const CQelTable& table, unsigned long& tableOid);
    unsigned int CommitAndReload(CSQLiteTransaction& transaction, int loads = 1);
    template <class Statements>
    unsigned int ChangeCatalogue(const Statements& statements, int loads = 1);
    unsigned int EndTableChange(qel::COperation& operation, unsigned long tableOid, unsigned int code);
    unsigned int ReadBulkRecords(const CQelTable& table);

    CDovLogfile* m_log = nullptr;
    TQelNotifyCallback m_callback = nullptr;
    unsigned int m_callbackUser = 0;
    std::map<unsigned long, CQelTable> m_tables;
    unsigned int m_fillTime = 0;
    CQelSQLite* m_db;
    std::map<unsigned long, std::vector<SQelPropColumnData>> m_bulk;
};
