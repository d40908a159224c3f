// export_command.cpp: the command export.
#include "exchange_commands.h"

#include "look/record_filter.h"
#include "look/record_rows.h"
#include "output/output.h"
#include "output/progress.h"
#include "record_walk.h"
#include "type_name.h"

namespace tool {
namespace {

/// A value of another type than its column's would come back as something else.
void CheckTypes(const CQelTable& table, unsigned long oid, const CRecord& record)
{
    for (std::size_t index = 0; index < record.size(); ++index) {
        const CQelTable::SQelColumn& column = table.Columns()[index];
        const CQelProperty::EType type = record[index].value.GetType();
        if (type == CQelProperty::eNull || type == column.type)
            continue;
        throw MakeFailure(EExit::eRefused,
                          "record @" + std::to_string(oid) + ", column " + Quoted(column.name) +
                              ": the value is of type " + TypeName(type) + ", the column of type " +
                              TypeName(column.type),
                          "'check' lists such values, 'dump' carries them");
    }
}

} // namespace

EExit RunExport(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const unsigned long tableOid = table.Properties().oid;
    CRecordRows rows(context, names, table);
    const CRecordFilter filter(context, names, table);
    const std::vector<unsigned long> oids = file->RecordOids(tableOid);
    COutput output(context);
    const auto writer = CRowWriter::Make(StyleOf(context, EFormat::eCsv), rows.Headings(), output.Stream());
    CProgress progress(context, "exporting", "records", oids.size());
    unsigned long long done = 0;
    CRecordWalk walk(context);
    CRecord record;
    for (const unsigned long oid : oids) {
        progress.Step(done++);
        if (!walk.Read(*file, tableOid, oid, record) || !filter.Meets(record))
            continue;
        CheckTypes(table, oid, record);
        writer->Write(rows.Row(oid, record));
    }
    writer->Finish();
    output.Finish();
    return walk.Exit();
}

} // namespace tool
