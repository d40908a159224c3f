// qelpropdb3x.h: the property database of the earlier format, in one record store that it opens itself.
#pragma once

#include <qelfdb4/qelfdb4.h>
#include <qellib4/qellib4.h>
#include <qelprop4/propdbtypes.h>
#include <qelprop4/qeltable3x.h>

#include <map>
#include <string>
#include <vector>

namespace qel {
class CColumnRemoval;
class CLegacyOperation;
} // namespace qel

/// User-defined tables, columns and records in a store file of their own.
///
/// Every operation that returns a code gives 10001 on success, 17500 when the store is not open, 17501 for a
/// change of a read-only one, 10002 and 10003 for exceptions (lack of memory is 10002), and codes of the
/// store unchanged; nothing is thrown. Object ids are 32-bit numbers; a wider one names nothing (10020).
///
/// Values are matched to columns by position: element n of a record's values belongs to the columns whose
/// `dataIndex` is n, whatever column oid the element names. The records of a table stand under the low 16
/// bits of its oid. While two tables of one catalogue meet there, what is stored under it is neither replaced
/// nor removed (17201); new records can be added, and removing one of the tables leaves the records.
///
/// A copy shares the open store, which is closed for all as soon as one of them closes it or ends; its
/// catalogue does not follow changes made through another. The log is the host's and must outlive the
/// object. One thread at a time.
class QELPROP4_API CQelPropDB3X : public CQelBase
{
public:
    /// One sort key.
    struct SSortItem
    {
        unsigned long column = 0; ///< column oid; one that the table lacks sorts by its first column
        bool ascending = true;    ///< false: from the largest value down
    };

    /// Makes a database object that is not open.
    CQelPropDB3X();
    /// Copies the catalogue and the settings; the copy works on the same open store.
    CQelPropDB3X(const CQelPropDB3X& other);
    /// The same; this object is unchanged when memory runs out.
    CQelPropDB3X& operator=(const CQelPropDB3X& other);
    /// Closes the database, and with it the store of every copy.
    ~CQelPropDB3X() override;

    /// Makes a new store file with an empty schema and leaves it open; an existing store is replaced.
    /// Message 0 is sent whatever the result.
    /// @return the code of writing the schema: 17500 when the store could not be made (its own code is in
    ///         the log)
    unsigned int Create(const std::wstring& path);
    /// Opens a store file and loads its catalogue. Message 0 is sent whatever the result.
    /// @return the code of loading the schema: 17500 when the store could not be opened (its own code is in
    ///         the log); 10007 its checksum does not match, 10011 it ends early: the store is open, and the
    ///         catalogue holds what could be read
    unsigned int Open(const std::wstring& path, bool readOnly);
    /// Empties the catalogue and closes the store if it is open, which sends message 1.
    /// @return 10001 also when nothing was open; codes of the store's Close
    unsigned int Close();

    /// The store, for the host's own work on it. A batch that the host opens there covers every operation but
    /// TableRemoveColumn; after rolling one back, Open the database again if it changed the catalogue.
    CDovBlobDB& BlobDB() { return m_store; }
    /// The same for a database that is only looked at.
    const CDovBlobDB& BlobDB() const { return m_store; }

    /// Sets the log that operations and failures are entered in.
    /// @param log  not owned; null switches logging off; the store takes it with the next Create or Open
    void SetLogfile(CDovLogfile* log);
    /// Sets whom to tell of every change.
    /// @param callback  null switches notification off
    /// @param user      handed back to the callback
    void SetNotifyCallback(TQelNotifyCallback callback, unsigned int user);

    /// 1000 tables.
    unsigned int MaxTables() const;
    /// 255 columns in a table.
    unsigned int MaxColumns() const;
    /// False for an empty name and for one with a blank or any of `#%()*,-./:;<>?@[\]|`.
    bool IsValidName(const std::wstring& name) const;
    /// Whether the catalogue in memory has a table of exactly this name.
    bool TableExists(const std::wstring& name) const;
    /// Compacts the store, or writes a compacted copy, as CDovBlobDB::Optimize does.
    unsigned int Optimize(const std::wstring& path, CDovBlobDB::TProgress progress, unsigned int user);
    /// Tests the store, as CDovBlobDB::SelfTest does.
    unsigned int SelfTest(CQelFile* report, unsigned long& errors, CDovBlobDB::TProgress progress,
                          unsigned int user);

    /// Lists the table oids in ascending order.
    /// @param oids  out: emptied first
    unsigned int GetTables(std::vector<unsigned long>& oids);
    /// Replaces `table` by the catalogue's table of its oid.
    /// @return 10020, leaving `table`, when there is none
    unsigned int GetTable(CQelTable3X& table);
    /// Stores a new table with its columns, whose oids, orders and slots are the caller's; a negative slot
    /// becomes the column's position in the order of column oids.
    /// @param table  out, on 10001: its oid, the first free one from 1000 on
    /// @return 17502 invalid name; 17503 name in use; 17504 1000 tables exist
    unsigned int AddTable(CQelTable3X& table);
    /// Removes a table with its records.
    /// @return 10020 no such table; 17509 a Reference column refers to it
    unsigned int RemoveTable(unsigned long tableOid);
    /// Gives a table another name.
    /// @return 10001 at once for the name that it has; 10020 no such table; 17503 name in use;
    ///         17502 invalid name
    unsigned int RenameTable(unsigned long tableOid, const std::wstring& name);

    /// Stores a new column. The records keep their slots, so a new column wants a `dataIndex` that no other
    /// has; a negative one becomes the column's position in the order of column oids, taken or not.
    /// @param column  out, on 10001: its oid, the first free one of the table from 1 on
    /// @return 10020 no such table; 17505 255 columns exist; 17503 name in use; 17502 invalid name
    unsigned int TableAddColumn(unsigned long tableOid, CQelTable3X::SQelColumn& column);
    /// Removes a column and rewrites every record without its slot. The store is closed, copied to its path
    /// with "#bak" appended and opened again first; on failure the copy is put back.
    /// @return 10020 no such table or column; 17509 a Reference column refers to it; 10210 the copy could not
    ///         be made, nothing is changed; 17201 the host has a batch open, or shares the records with
    ///         another table
    unsigned int TableRemoveColumn(unsigned long tableOid, unsigned long columnOid);
    /// Replaces every field of the column with `column`'s oid; the name is not tested.
    /// @return 10020 no such table or column; 17506 the type differs and the table holds records
    unsigned int TableModifyColumn(unsigned long tableOid, CQelTable3X::SQelColumn& column);
    /// Gives a column another name.
    /// @return 10020 no such table or column; 17503 name in use, by this column too; 17502 invalid name
    unsigned int RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name);
    /// Lets two columns change places.
    /// @return 10020 when table or columns are missing; the same column twice is success
    unsigned int TableSwapDisplayOrder(unsigned long tableOid, unsigned long columnOid1,
                                       unsigned long columnOid2);
    /// Gives the definition of one column.
    /// @param column  out: the column; unchanged unless the code is 10001
    /// @return 10020 no such table or column
    unsigned int TableGetColumn(unsigned long tableOid, unsigned long columnOid,
                                CQelTable3X::SQelColumn& column);

    /// Stores a record under a free oid or a given one. Sends message 6 and then 5.
    /// @param recordOid  in: the oid to write under if `useGivenOid`, an existing record being replaced;
    ///                   out: on 10001, the oid under which the record stands
    /// @param values     as SetRecord takes them
    /// @return 10020 no such table; 17201 no free oid can be had
    unsigned int AddRecord(unsigned long tableOid, unsigned long& recordOid,
                           const std::vector<SQelPropColumnData>& values, bool useGivenOid);
    /// Creates or replaces a record; it takes one slot per column of the table.
    /// @param values  by position; a missing one is stored as null and logged as 17507, one of another type
    ///                than its column's as null and logged as 17508; both still give 10001
    /// @return 10020 no such table
    unsigned int SetRecord(unsigned long tableOid, unsigned long recordOid,
                           const std::vector<SQelPropColumnData>& values);
    /// Reads a record, by position; slots that were never written are null.
    /// @param values  out: one element per column of the table, each named after the column whose slot it
    ///                is; on failure nulls, or untouched when the table is unknown
    /// @return 10020 no such table or record; 10011 the stored record is damaged
    unsigned int GetRecord(unsigned long tableOid, unsigned long recordOid,
                           std::vector<SQelPropColumnData>& values);
    /// Reads one value.
    /// @param data  out: the value; unchanged unless the code is 10001
    /// @return 10020 no such table, record or column; codes of GetRecord
    unsigned int GetColumn(unsigned long tableOid, unsigned long recordOid, unsigned long columnOid,
                           SQelPropColumnData& data);
    /// Removes one record.
    /// @return 10020 no such table or record
    unsigned int RemoveRecord(unsigned long tableOid, unsigned long recordOid);
    /// Whether the record is stored; false on any failure.
    bool HasRecord(unsigned long tableOid, unsigned long recordOid) const;
    /// Counts what is stored under the table's selector; the table need not be in the catalogue.
    unsigned int GetRecordCount(unsigned long tableOid, unsigned int& count);

    /// Lists a table's record oids. A sort key takes the column's place in display order and compares the
    /// values of the slot with that number.
    /// @param oids       out: emptied first; on failure of reading a record, unsorted
    /// @param sortItems  null or empty: ascending by oid
    /// @return 10020 no such table; codes of GetRecord
    unsigned int GetRecordOids(unsigned long tableOid, std::vector<unsigned long>& oids,
                               const std::vector<SSortItem>* sortItems);

protected:
    /// Calls the callback.
    /// @return its result; true without one
    bool DoNotify(EPropDBMessage message, unsigned long first, unsigned long second);
    /// Writes a catalogue as schema record and as its copy.
    /// @return the code of writing the copy
    unsigned int StoreTables(const std::map<unsigned long, CQelTable3X>& tables);
    /// Reads the schema record, or its copy when the first cannot be had.
    /// @param tables  out: emptied first; on 10007 and 10011, what could be read
    unsigned int LoadTables(std::map<unsigned long, CQelTable3X>& tables);

private:
    friend class qel::CColumnRemoval;
    using TTables = std::map<unsigned long, CQelTable3X>;

    // The ids of a table's records that are known to be in use, and where to look for the next.
    struct SRecordIds
    {
        CBitVector used; // empty: not loaded
        unsigned int hint = 1;
    };

    unsigned int Announce(unsigned int code, EPropDBMessage message, unsigned long first,
                          unsigned long second) noexcept;
    const CQelTable3X* FindTable(unsigned long tableOid) const;
    unsigned int FindOpenTable(qel::CLegacyOperation& operation, unsigned long tableOid,
                               const CQelTable3X*& table) const;
    unsigned int FindWritableTable(qel::CLegacyOperation& operation, unsigned long tableOid,
                                   const CQelTable3X*& table) const;
    unsigned int ReadSchemaRecord(CQelMemFile& file);
    unsigned int SaveTables(const TTables& tables, bool bothRecords);
    unsigned int StoreAndLoad(const TTables& tables);
    unsigned int ChangeTables(const TTables& tables, unsigned long tableOid, EPropDBMessage message);
    unsigned int RemoveRecordsOf(unsigned long tableOid);
    unsigned int StoreRecord(const CQelTable3X& table, const CDovBlobDB::SSelector& address,
                             const std::vector<SQelPropColumnData>& values);
    unsigned int ReadRecord(const CQelTable3X& table, const CDovBlobDB::SSelector& address,
                            std::vector<SQelPropColumnData>& values) const;
    unsigned int RefuseShared(unsigned long tableOid, const CDovBlobDB::SSelector& address) const;
    unsigned int TakeRecord(unsigned long tableOid, unsigned long recordOid);
    unsigned int ChooseRecordId(qel::CLegacyOperation& operation, unsigned long tableOid,
                                unsigned long& recordOid, bool useGivenOid);
    bool LoadRecordIds(unsigned long tableOid, SRecordIds& ids) const;
    unsigned int FindFreeRecordId(unsigned long tableOid, const SRecordIds& ids,
                                  unsigned long& recordOid) const;
    void MoveHint(unsigned long tableOid, unsigned long recordOid, bool givenOid);
    unsigned int SortRecords(const CQelTable3X& table, const std::vector<SSortItem>& sortItems,
                             std::vector<unsigned long>& oids);

    CDovLogfile* m_log = nullptr;
    TQelNotifyCallback m_callback = nullptr;
    unsigned int m_callbackUser = 0;
    CDovBlobDB m_store;
    TTables m_tables;
    std::map<unsigned long, SRecordIds> m_recordIds;
    bool m_unused = false; // copied, and read by nothing
};
