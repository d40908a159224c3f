// load_command.cpp: the command load: a database out of a dump.
#include "dump_reader.h"
#include "exchange_commands.h"
#include "input.h"
#include "new_file.h"
#include "output/amount_text.h"
#include "output/progress.h"
#include "transfer.h"

namespace tool {
namespace {

unsigned long long LoadAll(CContext& context, CDumpReader& reader, unsigned long long size,
                           CPropertyFile& target)
{
    CTransfer transfer(target, reader.Tables());
    CProgress progress(context, "loading", "bytes", size);
    unsigned long table = 0;
    unsigned long recordOid = 0;
    CRecord record;
    while (reader.Next(table, recordOid, record)) {
        progress.Step(reader.BytesRead());
        transfer.Put(table, recordOid, record);
    }
    return transfer.Records();
}

} // namespace

EExit RunLoad(CContext& context)
{
    RequireOtherFile(context, "FILE", "INPUT");
    CInput input(context);
    CDumpReader reader(input.Stream(), input.Name());
    reader.ReadTables();
    CNewFile target(context, context.Arguments().Text("FILE"), KindAsked(context, reader.Kind()));
    unsigned long long records = 0;
    try {
        records = LoadAll(context, reader, input.Size(), target.File());
        target.Reopen();
    } catch (SFailure& failure) {
        throw target.Renamed(failure);
    }
    target.Publish();
    context.Tell(std::string(context.IsDryRun() ? "would have loaded " : "loaded ") +
                 Counted(reader.Tables().size(), "table") + ", " + Counted(records, "record"));
    return EExit::eDone;
}

} // namespace tool
