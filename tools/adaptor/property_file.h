// property_file.h: one property database in a file, of either kind, as every command sees it.
#pragma once

#include "failure.h"

#include <qelprop4/qelprop4.h>

#include <memory>
#include <string>
#include <vector>

namespace tool {

enum class EKind
{
    eSQLite,
    eLegacy
};

enum class EAccess
{
    eRead, ///< never changes the file, not even to repair display orders
    eWrite
};

/// Values of a record, each naming its column.
using CRecord = std::vector<SQelPropColumnData>;

/// One property database in a file. Failures are thrown as SFailure; codes of the library become its texts.
///
/// Columns come in display order in both kinds, and values name their column, so that no command needs to
/// know which kind it works on. A file opened for writing is inside one transaction from the start, so that
/// even the repair of display orders that comes with opening is undone with the rest; what is not committed
/// is rolled back at the end.
class CPropertyFile
{
public:
    struct SOptions
    {
        EAccess access = EAccess::eRead;
        int busyTimeout = 0;        ///< milliseconds
        CDovLogfile* log = nullptr; ///< outlives the file
    };

    /// Opens an existing file and tells by its content which kind it is.
    static std::unique_ptr<CPropertyFile> Open(const std::wstring& path, const SOptions& options);
    /// Makes an empty property database; keeps other tables of an SQLite file.
    /// @param force  false: refuses a file that holds property tables already
    static std::unique_ptr<CPropertyFile> Create(const std::wstring& path, EKind kind, bool lookupIndexes,
                                                 bool force, const SOptions& options);
    /// The refusal of a file that is not what could be replaced.
    static SFailure NotReplaced(const std::wstring& path, const std::string& why);
    /// The failure to read one record, which says which.
    static SFailure UnreadableRecord(unsigned int code, const std::wstring& path, const std::wstring& table,
                                     unsigned long recordOid);
    virtual ~CPropertyFile();

    virtual EKind Kind() const = 0;
    virtual const std::wstring& Path() const = 0;
    virtual bool IsReadOnly() const = 0;

    /// Whether the file holds tables of the engine that are not the property database's.
    virtual bool HasOtherTables() = 0;

    /// Every table in ascending oid, columns in display order.
    virtual std::vector<CQelTable> Tables() = 0;
    /// Adds a table with its columns, in the order in which they stand; sets its oid.
    virtual void AddTable(CQelTable& table) = 0;
    virtual void RenameTable(unsigned long tableOid, const std::wstring& name) = 0;
    virtual void RemoveTable(unsigned long tableOid) = 0;

    /// Adds a column after all others. @return its oid
    virtual unsigned long AddColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) = 0;
    virtual void ModifyColumn(unsigned long tableOid, const CQelTable::SQelColumn& column) = 0;
    virtual void RenameColumn(unsigned long tableOid, unsigned long columnOid, const std::wstring& name) = 0;
    virtual void RemoveColumn(unsigned long tableOid, unsigned long columnOid) = 0;
    /// Moves a column so that it stands at `position`, counted from 0, in display order.
    virtual void MoveColumn(unsigned long tableOid, unsigned long columnOid, unsigned int position) = 0;

    /// Adds a record; columns that `record` does not name are stored as null.
    /// @param givenOid  0 for the next free one; a record that stands under it is replaced
    /// @return the oid under which the record stands
    virtual unsigned long AddRecord(unsigned long tableOid, const CRecord& record,
                                    unsigned long givenOid) = 0;
    /// Writes the named columns of an existing record; others keep their values.
    virtual void SetRecord(unsigned long tableOid, unsigned long recordOid, const CRecord& record) = 0;
    virtual void RemoveRecord(unsigned long tableOid, unsigned long recordOid) = 0;
    virtual bool HasRecord(unsigned long tableOid, unsigned long recordOid) = 0;
    /// @param record  out: one value per column in display order, null where nothing is stored
    /// @return false when there is no such record
    virtual bool GetRecord(unsigned long tableOid, unsigned long recordOid, CRecord& record) = 0;
    virtual unsigned int CountRecords(unsigned long tableOid) = 0;
    /// Record oids in ascending order.
    virtual std::vector<unsigned long> RecordOids(unsigned long tableOid) = 0;

    /// Saves everything so far; the next change begins another transaction.
    virtual void Commit() = 0;
    /// Undoes everything since the last commit; the catalogue is read anew. Never throws.
    virtual void Rollback() noexcept = 0;

    /// The library's objects, for what only one kind has; null for the other kind.
    virtual CQelPropDB* SQLiteDatabase() = 0;
    virtual CQelSQLite* Connection() = 0;
    virtual CQelPropDB3X* LegacyDatabase() = 0;
};

} // namespace tool
