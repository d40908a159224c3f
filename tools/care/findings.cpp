// findings.cpp: where first, then what.
#include "findings.h"

#include "output/amount_text.h"
#include "output/json_writer.h"
#include "output/output.h"
#include "output/screen_text.h"

namespace tool {
namespace {

std::string Where(const SFinding& finding)
{
    std::string where = finding.table;
    if (finding.record != 0)
        where += (where.empty() ? "@" : " @") + std::to_string(finding.record);
    if (!finding.column.empty())
        where += ' ' + finding.column;
    return where.empty() ? where : where + ": ";
}

std::string Json(const SFinding& finding)
{
    nlohmann::ordered_json json;
    json["fault"] = finding.kind;
    if (!finding.table.empty())
        json["table"] = finding.table;
    if (finding.record != 0)
        json["record"] = finding.record;
    if (!finding.column.empty())
        json["column"] = finding.column;
    json["message"] = finding.message;
    return JsonText(json);
}

bool WantsJson(const CContext& context)
{
    const EFormat format = context.Format();
    if (format == EFormat::eCsv || format == EFormat::eTsv)
        throw UsageFailure("faults and differences are text, json or jsonl");
    return format == EFormat::eJson || format == EFormat::eJsonLines;
}

} // namespace

CFindings::CFindings(const CContext& context, std::ostream& out, unsigned long limit)
    : m_out(out), m_json(WantsJson(context)), m_limit(limit)
{}

std::string CountsText(const STally& tally)
{
    return Counted(tally.tables, "table") + ", " + Counted(tally.records, "record") + ", " +
           Counted(tally.values, "value");
}

void CFindings::Add(const SFinding& finding)
{
    for (const char* const kind : {"open", "engine", "damaged"})
        m_damaged = m_damaged || finding.kind == kind;
    if (++m_count > m_limit && m_limit != 0)
        return;
    m_out << (m_json ? Json(finding) : OneLine(Wide(Where(finding) + finding.message))) << '\n';
    RequireWritten(m_out);
}

void CFindings::AddDamage(const char* kind, const std::string& table, const SFailure& failure)
{
    if (failure.exit != EExit::eFaults)
        throw failure;
    Add({kind, table, 0, "", failure.message + " (" + std::to_string(failure.code) + ")"});
}

void CFindings::Finish()
{
    if (m_limit != 0 && m_count > m_limit && !m_json)
        m_out << "and " << GroupedText(m_count - m_limit) << " more\n";
}

} // namespace tool
