// transfer.h: builds the tables of one database in another, empty one, and writes records into them.
#pragma once

#include "adaptor/property_file.h"

#include <map>

namespace tool {

/// Makes tables, and knows which of their oids stand for which of the source's.
///
/// Records keep their oids. Oids of tables and columns are the target's own, so what columns refer to is
/// written anew; a reference to what the source does not have stays as it is.
class CTransfer
{
public:
    /// Makes the tables.
    /// @param target  without tables; outlives the transfer
    CTransfer(CPropertyFile& target, const std::vector<CQelTable>& tables);

    /// @param table   an oid of the source
    /// @param record  one value per column, in the order of the source's columns
    void Put(unsigned long table, unsigned long recordOid, CRecord record);

    unsigned long long Records() const { return m_records; }

private:
    struct SPlace
    {
        unsigned long table = 0;
        std::vector<unsigned long> columns;
        std::map<unsigned long, unsigned long> columnOfSource;
    };

    void AddTable(const CQelTable& source);
    void WriteReferences(const CQelTable& source);

    CPropertyFile& m_target;
    std::map<unsigned long, SPlace> m_places; // by the source's table oid
    unsigned long long m_records = 0;
};

} // namespace tool
