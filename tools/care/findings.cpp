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

} // namespace

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

void CFindings::Finish()
{
    if (m_limit != 0 && m_count > m_limit && !m_json)
        m_out << "and " << GroupedText(m_count - m_limit) << " more\n";
}

} // namespace tool
