// migrate_command.cpp: the command migrate.
#include "exchange_commands.h"

#include "care/comparison.h"
#include "names/names.h"
#include "new_file.h"
#include "output/amount_text.h"
#include "output/output.h"
#include "output/progress.h"
#include "transfer.h"

namespace tool {
namespace {

void CopyAll(CContext& context, CPropertyFile& source, CPropertyFile& target)
{
    const std::vector<CQelTable> tables = source.Tables();
    CTransfer transfer(target, tables);
    CRecord record;
    for (const CQelTable& table : tables) {
        const unsigned long tableOid = table.Properties().oid;
        const std::vector<unsigned long> oids = source.RecordOids(tableOid);
        CProgress progress(context, "copying " + Utf8(table.Properties().name), "records", oids.size());
        unsigned long long done = 0;
        for (const unsigned long oid : oids) {
            progress.Step(done++);
            if (source.GetRecord(tableOid, oid, record))
                transfer.Put(tableOid, oid, record);
        }
    }
}

} // namespace

EExit RunMigrate(CContext& context)
{
    RequireOtherFile(context, "FILE", "TARGET");
    const std::unique_ptr<CPropertyFile> source = context.OpenFile(EAccess::eRead);
    const EKind other = source->Kind() == EKind::eLegacy ? EKind::eSQLite : EKind::eLegacy;
    const std::string name = context.Arguments().Text("TARGET");
    CNewFile target(context, name, KindAsked(context, other));
    const std::string kind = KindName(target.File().Kind());
    COutput output(context);
    CFindings findings(context, output.Stream());
    STally compared;
    try {
        CopyAll(context, *source, target.File());
        compared = Compare(context, *source, target.Reopen(), findings);
    } catch (SFailure& failure) {
        throw target.Renamed(failure);
    }
    output.Finish();
    if (findings.Count() > 0) {
        context.Tell("the copy would not be alike in " + Counted(findings.Count(), "place") +
                     "; nothing was saved");
        return EExit::eFaults;
    }
    target.AllowLike("FILE");
    target.Publish();
    context.Tell(std::string(context.IsDryRun() ? "would have migrated " : "migrated ") +
                 CountsText(compared) + " to " + kind + "; both files are alike");
    return EExit::eDone;
}

} // namespace tool
