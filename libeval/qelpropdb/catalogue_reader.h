// catalogue_reader.h: tables and columns as the database holds them.
#pragma once

#include "frame.h"

namespace qel {

/// Reads a whole catalogue, once. Failures of the engine are thrown.
///
/// Rows under oids that are no 32-bit numbers are passed over with a warning; so is, with an error, a default
/// value that cannot be decoded, in whose place stands null.
class CCatalogueReader
{
public:
    /// @param log  may be null
    CCatalogueReader(CQelSQLite* db, CDovLogfile* log);

    /// @param tables  out: the tables are added
    /// @return 10001, or 10011 when a default value is damaged
    unsigned int Read(TCatalogue& tables);

private:
    void ReadColumns(CQelTable::SData& table);
    void ReadColumn(CQelTable::SQelColumn& column);
    void ReadDefault(CQelProperty& value);
    unsigned long ReadReference(int position);

    CDovLogfile* m_log;
    CQelSQLite::CStatement m_tableRows;
    CQelSQLite::CStatement m_columnRows;
    std::size_t m_likelyColumns = 0; // the number that the table before has
    unsigned long m_skipped = 0;
    unsigned int m_code = kSuccess;
};

} // namespace qel
