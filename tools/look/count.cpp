// count.cpp: the number of a table's records.
#include "look.h"
#include "names/names.h"
#include "output/output.h"
#include "output/single.h"
#include "record_filter.h"

namespace tool {

EExit RunCount(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const CRecordFilter filter(context, names, table);
    const unsigned long long count =
        filter.IsEmpty() ? file->CountRecords(table.Properties().oid) : filter.Oids(context, *file).size();
    if (context.Format(EFormat::ePlain) != EFormat::ePlain) {
        CSingle single;
        single.Add("table", TextCell(table.Properties().name));
        single.Add("records", NumberCell(count));
        single.Print(context);
        return EExit::eDone;
    }
    COutput output(context);
    output.Stream() << count << '\n';
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
