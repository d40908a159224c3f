// frame.h: what every operation of the SQLite property database begins and ends with.
#pragma once

#include "../common/object_id.h"
#include "../common/operation.h"

#include <qelprop4/qelpropdb.h>
#include <qelsq4/qelsq4.h>

#define QEL_SITE                                                                                             \
    qel::SSite                                                                                               \
    {                                                                                                        \
        qel::kSourceQelPropDB, __LINE__                                                                      \
    }

namespace qel {

using TCatalogue = std::map<unsigned long, CQelTable>;
using TRecord = std::vector<SQelPropColumnData>;

constexpr int kRow = 100; ///< what a step gives while there are rows

/// False for a number in a row that is no oid, since it is negative or wider than 32 bits.
constexpr bool IsStoredOid(long long number)
{
    return number >= 0 && IsOid(static_cast<unsigned long long>(number));
}

bool IsOpen(const CQelSQLite* db);
/// Logs and gives 17500 when the database is not open; otherwise gives success.
unsigned int RefuseUnlessOpen(const CQelSQLite* db, CDovLogfile* log, SSite site);
/// As RefuseUnlessOpen, and 17501 when the database is read-only.
unsigned int RefuseUnlessWritable(const CQelSQLite* db, CDovLogfile* log, SSite site);

/// @return null when the catalogue has no table of this oid
const CQelTable* FindTable(const TCatalogue& tables, unsigned long tableOid);
/// @return null when the table has no column of this oid
const CQelTable::SQelColumn* FindColumn(const CQelTable& table, unsigned long columnOid);

/// Throws a failure on its way to the frame of the operation.
[[noreturn]] void Raise(unsigned int code, SSite site);

/// Logs, as one warning, that rows under oids that are no 32-bit numbers were passed over.
void WarnOfSkippedRows(CDovLogfile* log, unsigned long count, SSite site);

} // namespace qel
