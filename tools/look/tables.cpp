// tables.cpp: the tables of a file.
#include "look.h"
#include "output/output.h"
#include "output/row_writer.h"

namespace tool {

EExit RunTables(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    COutput output(context);
    const auto writer = CRowWriter::Make(
        StyleOf(context), {"@oid", "name", "columns", "records", "description"}, output.Stream());
    for (const CQelTable& table : file->Tables()) {
        const CQelTable::SData& data = table.Properties();
        writer->Write({OidCell(data.oid), TextCell(data.name), NumberCell(data.columns.size()),
                       NumberCell(file->CountRecords(data.oid)), TextCell(data.description)});
    }
    writer->Finish();
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
