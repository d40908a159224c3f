// record_filter.h: which records of a table are meant.
#pragma once

#include "cli/context.h"
#include "names/names.h"

#include <string>
#include <vector>

namespace tool {

/// The conditions of --where and --where-null, all of which a record must meet.
///
/// Values are the same when their stored bytes are.
class CRecordFilter
{
public:
    /// @throws SFailure  as ParseAssignments
    CRecordFilter(const CContext& context, const CNames& names, const CQelTable& table);

    bool IsEmpty() const { return m_wanted.empty(); }
    bool Meets(const CRecord& record) const;
    /// The oids of the records that are meant, in ascending order.
    std::vector<unsigned long> Oids(CContext& context, CPropertyFile& file) const;

private:
    struct SWanted
    {
        unsigned long column;
        bool null;
        std::string bytes; ///< of a value that is not null
    };

    unsigned long m_table;
    std::vector<SWanted> m_wanted;
};

} // namespace tool
