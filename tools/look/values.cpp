// values.cpp: the different values of one column.
#include "exchange/value_parts.h"
#include "look.h"
#include "names/names.h"
#include "output/output.h"
#include "output/row_writer.h"
#include "value_order.h"

#include <algorithm>
#include <map>

namespace tool {
namespace {

/// Values are the same when their stored bytes are.
struct SCountedValue
{
    CQelProperty value;
    unsigned long long count = 0;
};

std::vector<SCountedValue> CountValues(CContext& context, CPropertyFile& file, unsigned long table,
                                       unsigned long column)
{
    std::map<std::string, SCountedValue> different;
    CRecord record;
    for (const unsigned long oid : file.RecordOids(table)) {
        context.CheckInterrupt();
        if (!file.GetRecord(table, oid, record))
            continue;
        for (const SQelPropColumnData& data : record) {
            if (data.columnOid != column)
                continue;
            SCountedValue& counted = different[StoredBytes(data.value)];
            counted.value = data.value;
            ++counted.count;
        }
    }
    std::vector<SCountedValue> values;
    values.reserve(different.size());
    for (auto& entry : different)
        values.push_back(std::move(entry.second));
    return values;
}

} // namespace

EExit RunValues(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const CQelTable::SQelColumn& column = names.Column(table, context.Arguments().Text("COLUMN"));
    std::vector<SCountedValue> values = CountValues(context, *file, table.Properties().oid, column.oid);
    std::stable_sort(values.begin(), values.end(), [](const SCountedValue& left, const SCountedValue& right) {
        return CompareValues(left.value, right.value) < 0;
    });
    COutput output(context);
    const auto writer = CRowWriter::Make(StyleOf(context), {Utf8(column.name), "@records"}, output.Stream());
    for (const SCountedValue& counted : values)
        writer->Write({counted.value, NumberCell(counted.count)});
    writer->Finish();
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
