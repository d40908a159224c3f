// get.cpp: records by their oids, or the bytes of one value.
#include "exchange/neutral_text.h"
#include "exchange/value_parts.h"
#include "look.h"
#include "names/record_list.h"
#include "output/output.h"
#include "output/single.h"
#include "record_rows.h"

namespace tool {
namespace {

/// What a command that shows records has found.
struct SFound
{
    CPropertyFile& file;
    const CNames& names;
    const CQelTable& table;
    std::vector<unsigned long> oids;
    bool single; ///< one record was asked for by its oid
};

CRecord ReadRecord(const SFound& found, unsigned long oid)
{
    CRecord record;
    if (!found.file.GetRecord(found.table.Properties().oid, oid, record))
        throw found.names.NoRecord(found.table, oid);
    return record;
}

void PrintRows(CContext& context, const SFound& found)
{
    CRecordRows rows(context, found.names, found.table);
    if (context.Format() == EFormat::eTable)
        rows.ShowReferences(found.file);
    if (found.single) {
        CSingle single;
        const std::vector<std::string> headings = rows.Headings();
        const CRow row = rows.Row(found.oids.front(), ReadRecord(found, found.oids.front()));
        for (std::size_t index = 0; index < row.size(); ++index)
            single.Add(headings[index], row[index]);
        single.Print(context);
        return;
    }
    // All are read before anything is printed: a record that is missing prints nothing.
    std::vector<CRow> lines;
    for (const unsigned long oid : found.oids)
        lines.push_back(rows.Row(oid, ReadRecord(found, oid)));
    COutput output(context);
    const auto writer = CRowWriter::Make(StyleOf(context), rows.Headings(), output.Stream());
    for (const CRow& line : lines)
        writer->Write(line);
    writer->Finish();
    output.Finish();
}

std::string BytesOf(const CQelProperty& value, const std::string& column)
{
    switch (value.GetType()) {
    case CQelProperty::eBlob:
        return std::string(BufferOf(value));
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return ToNeutralText(value);
    default:
        break;
    }
    if (value.IsNull())
        throw MakeFailure(EExit::eNotFound, "column " + Quoted(column) + ": the record has no value here");
    throw MakeFailure(EExit::eRefused, "column " + Quoted(column) + ": holds neither bytes nor text");
}

void PrintBytes(CContext& context, const SFound& found)
{
    if (!found.single)
        throw UsageFailure("--blob takes one record");
    const std::string name = context.Arguments().Text("--blob");
    const CQelTable::SQelColumn column = found.names.Column(found.table, name);
    const CRecord record = ReadRecord(found, found.oids.front());
    CQelProperty value;
    for (const SQelPropColumnData& data : record) {
        if (data.columnOid == column.oid)
            value = data.value;
    }
    const bool toScreen = context.Surroundings().outIsTerminal && !context.Arguments().Has("--output");
    if (toScreen && value.GetType() == CQelProperty::eBlob)
        throw UsageFailure("raw bytes are not for a terminal", "-O FILE writes them to a file");
    const std::string bytes = BytesOf(value, name);
    COutput output(context);
    output.Stream().write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    output.Finish();
}

} // namespace

EExit RunGet(CContext& context)
{
    const CRecordList records(context.Arguments().All("RECORD"));
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    const SFound found{*file, names, table, records.Oids(*file, names, table), records.IsSingle()};
    if (context.Arguments().Has("--blob"))
        PrintBytes(context, found);
    else
        PrintRows(context, found);
    return EExit::eDone;
}

} // namespace tool
