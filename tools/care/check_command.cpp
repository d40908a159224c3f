// check_command.cpp: the command check.
#include "care.h"
#include "definition_check.h"
#include "names/names.h"
#include "output/amount_text.h"
#include "output/output.h"
#include "value_check.h"

namespace tool {
namespace {

void CheckFile(CContext& context, CPropertyFile& file, CFindings& findings, STally& checked)
{
    const std::vector<CQelTable> tables = file.Tables();
    checked.tables = tables.size();
    CheckDefinitions(tables, findings);
    if (file.Kind() == EKind::eSQLite)
        CheckSQLite(context, file, tables, findings, checked);
    else
        CheckLegacy(context, file, tables, findings, checked);
}

} // namespace

EExit RunCheck(CContext& context)
{
    constexpr unsigned long kUsual = 1000;
    COutput output(context);
    CFindings findings(context, output.Stream(), context.Arguments().Number("--limit", kUsual));
    STally checked;
    std::unique_ptr<CPropertyFile> file;
    findings.Try("open", "", [&] { file = context.OpenFile(EAccess::eRead); });
    if (file != nullptr)
        findings.Try("engine", "", [&] { CheckFile(context, *file, findings, checked); });
    findings.Finish();
    output.Finish();
    context.Tell((findings.Count() == 0 ? "no faults" : Counted(findings.Count(), "fault")) + " in " +
                 CountsText(checked));
    if (findings.IsDamaged())
        context.Tell(
            "hint: 'qelprop dump --skip-damaged' carries out what can be read; a backup may have the rest");
    return findings.Count() == 0 ? EExit::eDone : EExit::eFaults;
}

} // namespace tool
