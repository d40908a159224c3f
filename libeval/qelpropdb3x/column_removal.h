// column_removal.h: the removal of a column, with every record of its table rewritten.
#pragma once

#include "backup_copy.h"
#include "record_codec.h"
#include "schema_codec.h"

#include <qelprop4/qelpropdb3x.h>

#include <vector>

namespace qel {

/// One removal of one column: Run does the work, Finish keeps or undoes it. Not copied.
///
/// The changes are one batch of the store, so that a process that ends in the middle leaves the store as it
/// was; the copy of the file is for failures that a batch cannot undo.
class CColumnRemoval
{
public:
    CColumnRemoval(CQelPropDB3X& db, unsigned long tableOid, unsigned long columnOid);
    CColumnRemoval(const CColumnRemoval&) = delete;
    CColumnRemoval& operator=(const CColumnRemoval&) = delete;

    /// @return 10001; a refusal or a failure, after which Finish must be called just the same
    /// @throws CQelException* with the code of a failure while records are rewritten
    unsigned int Run(CLegacyOperation& operation);
    /// Tells the host and drops the copy after success, puts the copy back after a failure.
    /// @param code  result of Run, or the code of what it threw
    /// @return the same code
    unsigned int Finish(unsigned int code);

private:
    unsigned int RefuseInsideBatch(CLegacyOperation& operation);
    unsigned int MakeCopy(CLegacyOperation& operation);
    void Reopen();
    unsigned int Examine(CLegacyOperation& operation);
    bool SharesRecords() const;
    void Change(CLegacyOperation& operation);
    void RewriteRecords();
    void ArrangeSlots(const std::vector<SQelPropColumnData>& values, TSlots& slots) const;
    void ShiftDataIndexes();
    void StoreCatalogue();
    void RemoveEmptyRecords();
    void TellOfRemovedRecords();
    void Restore();
    CQelTable3X& Table() { return m_tables[m_tableOid]; }

    CQelPropDB3X& m_db;
    unsigned long m_tableOid;
    unsigned long m_columnOid;
    CBackupCopy m_copy;
    TLegacyTables m_tables; // the catalogue without the column
    int m_removedSlot = 0;
    std::vector<unsigned long> m_records;
    std::size_t m_recordsGone = 0;
    bool m_copyMade = false;
    bool m_changing = false; // from here on a failure is undone by the copy
};

} // namespace qel
