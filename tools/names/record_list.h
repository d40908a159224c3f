// record_list.h: "1-5,@9" as records of a table.
#pragma once

#include "names.h"

namespace tool {

/// The records that a command line names: oids, and ranges of them, parted by commas or given one by one.
class CRecordList
{
public:
    /// @throws SFailure  2 for a text of another form
    explicit CRecordList(const std::vector<std::string>& given);

    /// Whether it is one oid, which stands for one record whatever the table holds.
    bool IsSingle() const { return m_ranges.size() == 1 && !m_ranges.front().open; }

    /// The oids in the order given: each that is named by itself, and of a range those that are there.
    /// @throws SFailure  3 for a range in which no record is
    std::vector<unsigned long> Oids(CPropertyFile& file, const CNames& names, const CQelTable& table) const;

private:
    struct SRange
    {
        unsigned long first = 0;
        unsigned long last = 0;
        bool open = false; ///< which of its oids are meant is the table's to say
    };

    static SRange Range(const std::string& text);

    std::vector<SRange> m_ranges;
};

} // namespace tool
