// reference_watch.h: how many references of imported records lead to no record.
#pragma once

#include "adaptor/property_file.h"

#include <map>
#include <set>

namespace tool {

/// Looks after references while records come in. What a reference names may be imported behind it, so that
/// those which lead nowhere are asked for again at the end; the others are forgotten.
class CReferenceWatch
{
public:
    /// @param file, table  outlive the watch
    CReferenceWatch(CPropertyFile& file, const CQelTable& table);

    /// @param record  as it stands in the file now
    void See(const CRecord& record);
    /// References seen that lead to no record now.
    unsigned long long Dangling();

private:
    using TTarget = std::pair<unsigned long, unsigned long>; // table and record

    bool IsThere(const TTarget& target);

    CPropertyFile& m_file;
    std::map<unsigned long, unsigned long> m_tables; // referred to, by the oid of the column
    std::set<TTarget> m_present;                     // of late
    std::map<TTarget, unsigned long long> m_missing;
};

} // namespace tool
