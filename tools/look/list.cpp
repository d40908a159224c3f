// list.cpp: records in the order of their oids or sorted by keys.
#include "look.h"
#include "names/names.h"
#include "output/output.h"
#include "record_filter.h"
#include "record_rows.h"
#include "value_order.h"

#include <algorithm>
#include <limits>

namespace tool {
namespace {

struct SSortKey
{
    unsigned long column = 0; ///< 0 for the record's oid
    bool descending = false;
};

std::vector<SSortKey> SortKeysOf(const CContext& context, const CNames& names, const CQelTable& table)
{
    std::vector<SSortKey> keys;
    if (!context.Arguments().Has("--sort"))
        return keys;
    for (const std::string& part : SplitList(context.Arguments().Text("--sort"))) {
        const std::size_t colon = part.find(':');
        const std::string direction = colon == std::string::npos ? "asc" : part.substr(colon + 1);
        if (direction != "asc" && direction != "desc")
            throw UsageFailure("--sort: " + Quoted(direction) + " is neither asc nor desc");
        const std::string name = part.substr(0, colon);
        keys.push_back({names.Columns(table, name).front().oid, direction == "desc"});
    }
    return keys;
}

/// The sort keys of one record.
struct SKeyed
{
    unsigned long oid;
    CRow keys;
};

CQelProperty KeyOf(const SSortKey& key, unsigned long oid, const CRecord& record)
{
    if (key.column == 0)
        return OidCell(oid);
    CRecord::const_iterator found;
    return !record.empty() && CQelTable::GetColumnData(key.column, record, found) && found != record.end()
               ? found->value
               : CQelProperty();
}

bool ComesBefore(const SKeyed& left, const SKeyed& right, const std::vector<SSortKey>& keys)
{
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const int order = CompareValues(left.keys[index], right.keys[index]);
        if (order != 0)
            return keys[index].descending ? order > 0 : order < 0;
    }
    return left.oid < right.oid;
}

/// The library's own listing leaves the order of equal records open; here it is that of the oids, so that
/// pages made by --offset fit together, and both kinds of file answer alike.
std::vector<unsigned long> SortedOids(CContext& context, CPropertyFile& file, unsigned long table,
                                      std::vector<unsigned long> oids, const std::vector<SSortKey>& keys)
{
    if (keys.empty())
        return oids;
    std::vector<SKeyed> records;
    records.reserve(oids.size());
    CRecord record;
    for (const unsigned long oid : oids) {
        context.CheckInterrupt();
        if (!file.GetRecord(table, oid, record))
            continue;
        records.push_back({oid, {}});
        for (const SSortKey& key : keys)
            records.back().keys.push_back(KeyOf(key, oid, record));
    }
    std::sort(records.begin(), records.end(),
              [&](const SKeyed& left, const SKeyed& right) { return ComesBefore(left, right, keys); });
    oids.clear();
    for (const SKeyed& keyed : records)
        oids.push_back(keyed.oid);
    return oids;
}

void KeepPage(const CContext& context, std::vector<unsigned long>& oids)
{
    constexpr unsigned long kAny = std::numeric_limits<unsigned int>::max();
    const std::size_t offset = std::min<std::size_t>(context.Arguments().Number("--offset", 0), oids.size());
    oids.erase(oids.begin(), oids.begin() + static_cast<std::ptrdiff_t>(offset));
    oids.resize(std::min<std::size_t>(context.Arguments().Number("--limit", kAny), oids.size()));
}

} // namespace

EExit RunList(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const unsigned long tableOid = table.Properties().oid;
    CRecordRows rows(context, names, table);
    if (context.Format() == EFormat::eTable)
        rows.ShowReferences(*file);
    std::vector<unsigned long> oids =
        SortedOids(context, *file, tableOid, CRecordFilter(context, names, table).Oids(context, *file),
                   SortKeysOf(context, names, table));
    KeepPage(context, oids);
    COutput output(context);
    const auto writer = CRowWriter::Make(StyleOf(context), rows.Headings(), output.Stream());
    CRecord record;
    for (const unsigned long oid : oids) {
        context.CheckInterrupt();
        if (file->GetRecord(tableOid, oid, record))
            writer->Write(rows.Row(oid, record));
    }
    writer->Finish();
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
