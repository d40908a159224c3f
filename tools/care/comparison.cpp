// comparison.cpp: walks through two databases side by side.
#include "comparison.h"

#include "exchange/json_value.h"
#include "exchange/type_name.h"
#include "exchange/value_parts.h"
#include "names/stored_values.h"
#include "output/progress.h"

#include <algorithm>

namespace tool {
namespace {

using TTables = std::vector<CQelTable>;
using SColumn = CQelTable::SQelColumn;

constexpr const char* kOnlyFirst = "only in the first file";
constexpr const char* kOnlySecond = "only in the second file";

std::string Shown(const CQelProperty& value)
{
    constexpr std::size_t kLongest = 60;
    const std::string text = ToJson(value).dump(-1, ' ', true);
    return text.size() <= kLongest ? text : text.substr(0, kLongest) + "...";
}

std::string Against(const CQelProperty& left, const CQelProperty& right)
{
    const bool types = left.GetType() != right.GetType() && !left.IsNull() && !right.IsNull();
    const auto text = [&](const CQelProperty& value) {
        return (types ? TypeName(value.GetType()) + ' ' : "") + Shown(value);
    };
    return text(left) + " against " + text(right);
}

/// What a column refers to, in names; the same for everything that is not there.
std::string ReferenceOf(const SColumn& column, const TTables& tables)
{
    if (column.refTable == 0 && column.refColumn == 0)
        return "nothing";
    for (const CQelTable& table : tables) {
        SColumn target;
        if (table.Properties().oid != column.refTable)
            continue;
        const bool found = table.GetColumn(column.refColumn, target);
        return Utf8(table.Properties().name) + '.' + (found ? Utf8(target.name) : "?");
    }
    return "?";
}

/// One table of both files.
class CTablePair
{
public:
    CTablePair(CContext& context, CPropertyFile& left, CPropertyFile& right, const CQelTable& leftTable,
               const CQelTable& rightTable, CFindings& findings)
        : m_context(context), m_left(left), m_right(right), m_leftTable(leftTable), m_rightTable(rightTable),
          m_findings(findings), m_name(Utf8(leftTable.Properties().name))
    {}

    void CompareDefinition(const TTables& leftTables, const TTables& rightTables);
    void CompareRecords(STally& compared);

private:
    void Differ(unsigned long record, const std::string& column, const std::string& message)
    {
        m_findings.Add({"different", m_name, record, column, message});
    }
    void CompareText(const std::wstring& left, const std::wstring& right, const std::string& column,
                     const char* what);
    void CompareColumns(const SColumn& left, const SColumn& right, const TTables& leftTables,
                        const TTables& rightTables);
    void MatchColumns();
    void CompareRecord(unsigned long oid, STally& compared);

    CContext& m_context;
    CPropertyFile& m_left;
    CPropertyFile& m_right;
    const CQelTable& m_leftTable;
    const CQelTable& m_rightTable;
    CFindings& m_findings;
    std::string m_name;
    std::vector<std::pair<std::size_t, std::size_t>> m_columns; // places in both tables
    CRecord m_leftRecord;
    CRecord m_rightRecord;
};

void CTablePair::CompareText(const std::wstring& left, const std::wstring& right, const std::string& column,
                             const char* what)
{
    if (left != right)
        Differ(0, column, std::string(what) + " '" + Utf8(left) + "' against '" + Utf8(right) + "'");
}

void CTablePair::MatchColumns()
{
    const std::vector<SColumn>& lefts = m_leftTable.Columns();
    const std::vector<SColumn>& rights = m_rightTable.Columns();
    std::vector<bool> taken(rights.size(), false);
    for (std::size_t place = 0; place < lefts.size(); ++place) {
        std::size_t other = 0;
        while (other < rights.size() && (taken[other] || rights[other].name != lefts[place].name))
            ++other;
        if (other == rights.size()) {
            Differ(0, Utf8(lefts[place].name), kOnlyFirst);
            continue;
        }
        taken[other] = true;
        m_columns.emplace_back(place, other);
    }
    for (std::size_t other = 0; other < rights.size(); ++other) {
        if (!taken[other])
            Differ(0, Utf8(rights[other].name), kOnlySecond);
    }
    const bool ordered =
        std::is_sorted(m_columns.begin(), m_columns.end(),
                       [](const auto& first, const auto& second) { return first.second < second.second; });
    if (!ordered)
        Differ(0, "", "the columns stand in another order");
}

void CTablePair::CompareColumns(const SColumn& left, const SColumn& right, const TTables& leftTables,
                                const TTables& rightTables)
{
    const std::string name = Utf8(left.name);
    if (left.type != right.type)
        Differ(0, name, "type " + TypeName(left.type) + " against " + TypeName(right.type));
    CompareText(left.description, right.description, name, "description");
    CompareText(left.format, right.format, name, "format");
    CompareText(left.currency, right.currency, name, "currency");
    if (left.displayHint != right.displayHint)
        Differ(0, name,
               "hint " + std::to_string(left.displayHint) + " against " + std::to_string(right.displayHint));
    if (!IsSameValue(left.defaultValue, right.defaultValue))
        Differ(0, name, "default " + Against(left.defaultValue, right.defaultValue));
    CompareText(Wide(ReferenceOf(left, leftTables)), Wide(ReferenceOf(right, rightTables)), name,
                "reference to");
}

void CTablePair::CompareDefinition(const TTables& leftTables, const TTables& rightTables)
{
    CompareText(m_leftTable.Properties().description, m_rightTable.Properties().description, "",
                "description");
    MatchColumns();
    for (const auto& [left, right] : m_columns)
        CompareColumns(m_leftTable.Columns()[left], m_rightTable.Columns()[right], leftTables, rightTables);
}

void CTablePair::CompareRecord(unsigned long oid, STally& compared)
{
    const bool inLeft = m_left.GetRecord(m_leftTable.Properties().oid, oid, m_leftRecord);
    const bool inRight = m_right.GetRecord(m_rightTable.Properties().oid, oid, m_rightRecord);
    if (!inLeft || !inRight) {
        Differ(oid, "", inLeft ? kOnlyFirst : kOnlySecond);
        return;
    }
    ++compared.records;
    compared.values += CountValues(m_leftRecord);
    for (const auto& [left, right] : m_columns) {
        const CQelProperty& leftValue = m_leftRecord[left].value;
        const CQelProperty& rightValue = m_rightRecord[right].value;
        if (!IsSameValue(leftValue, rightValue))
            Differ(oid, Utf8(m_leftTable.Columns()[left].name), Against(leftValue, rightValue));
    }
}

void CTablePair::CompareRecords(STally& compared)
{
    std::vector<unsigned long> oids = m_left.RecordOids(m_leftTable.Properties().oid);
    const std::vector<unsigned long> others = m_right.RecordOids(m_rightTable.Properties().oid);
    const auto middle = static_cast<std::ptrdiff_t>(oids.size());
    oids.insert(oids.end(), others.begin(), others.end());
    std::inplace_merge(oids.begin(), oids.begin() + middle, oids.end());
    oids.erase(std::unique(oids.begin(), oids.end()), oids.end());
    CProgress progress(m_context, "comparing " + m_name, "records", oids.size());
    unsigned long long done = 0;
    for (const unsigned long oid : oids) {
        progress.Step(done++);
        CompareRecord(oid, compared);
    }
}

const CQelTable* TableNamed(const TTables& tables, const std::wstring& name)
{
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const CQelTable& table) { return table.Properties().name == name; });
    return found == tables.end() ? nullptr : &*found;
}

} // namespace

STally Compare(CContext& context, CPropertyFile& left, CPropertyFile& right, CFindings& findings)
{
    STally compared;
    const TTables leftTables = left.Tables();
    const TTables rightTables = right.Tables();
    for (const CQelTable& table : leftTables) {
        const CQelTable* other = TableNamed(rightTables, table.Properties().name);
        if (other == nullptr) {
            findings.Add({"different", Utf8(table.Properties().name), 0, "", kOnlyFirst});
            continue;
        }
        ++compared.tables;
        CTablePair pair(context, left, right, table, *other, findings);
        pair.CompareDefinition(leftTables, rightTables);
        pair.CompareRecords(compared);
    }
    for (const CQelTable& table : rightTables) {
        if (TableNamed(leftTables, table.Properties().name) == nullptr)
            findings.Add({"different", Utf8(table.Properties().name), 0, "", kOnlySecond});
    }
    return compared;
}

} // namespace tool
