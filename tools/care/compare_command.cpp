// compare_command.cpp: the command compare.
#include "care.h"
#include "comparison.h"
#include "output/amount_text.h"
#include "output/output.h"

namespace tool {

EExit RunCompare(CContext& context)
{
    const std::unique_ptr<CPropertyFile> left = context.OpenFile(EAccess::eRead);
    const std::unique_ptr<CPropertyFile> right = context.OpenFile(EAccess::eRead, "OTHER");
    constexpr unsigned long kUsual = 1000;
    COutput output(context);
    CFindings findings(context, output.Stream(), context.Arguments().Number("--limit", kUsual));
    const STally compared = Compare(context, *left, *right, findings);
    findings.Finish();
    output.Finish();
    if (findings.Count() > 0) {
        context.Tell(Counted(findings.Count(), "difference"));
        return EExit::eFaults;
    }
    context.Tell("alike: " + CountsText(compared));
    return EExit::eDone;
}

} // namespace tool
