// record_list.cpp: reads ranges, and looks which of their records are there.
#include "record_list.h"

#include "cli/arguments.h"

#include <algorithm>

namespace tool {

CRecordList::CRecordList(const std::vector<std::string>& given)
{
    for (const std::string& list : given) {
        for (const std::string& part : SplitList(list))
            m_ranges.push_back(Range(part));
    }
}

CRecordList::SRange CRecordList::Range(const std::string& text)
{
    const std::size_t dash = text.find('-');
    if (dash == std::string::npos) {
        const unsigned long oid = CNames::RecordOid(text);
        return {oid, oid, false};
    }
    const SRange range{CNames::RecordOid(text.substr(0, dash)), CNames::RecordOid(text.substr(dash + 1)),
                       true};
    if (range.first > range.last)
        throw UsageFailure(Quoted(text) + " ends before it begins");
    return range;
}

std::vector<unsigned long> CRecordList::Oids(CPropertyFile& file, const CNames& names,
                                             const CQelTable& table) const
{
    std::vector<unsigned long> oids;
    std::vector<unsigned long> present;
    for (const SRange& range : m_ranges) {
        if (!range.open) {
            oids.push_back(range.first);
            continue;
        }
        if (present.empty())
            present = file.RecordOids(table.Properties().oid);
        const auto begin = std::lower_bound(present.begin(), present.end(), range.first);
        const auto end = std::upper_bound(begin, present.end(), range.last);
        if (begin == end)
            throw names.NoRecord(table, range.first, range.last);
        oids.insert(oids.end(), begin, end);
    }
    return oids;
}

} // namespace tool
