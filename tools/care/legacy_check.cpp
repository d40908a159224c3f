// legacy_check.cpp: the store's own test, then every record of every table.
#include "names/stored_values.h"
#include "output/progress.h"
#include "value_check.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <string_view>

namespace tool {
namespace {

constexpr unsigned short kSchemaSelectors[] = {2, 3}; // the schema record and its copy
constexpr unsigned long kSchemaOid = 1;

unsigned short SelectorOf(unsigned long tableOid)
{
    return static_cast<unsigned short>(tableOid & 0xFFFFUL);
}

class CLegacyCheck
{
public:
    CLegacyCheck(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked)
        : m_context(context), m_file(file), m_database(*file.LegacyDatabase()), m_tables(tables),
          m_findings(findings), m_checked(checked), m_values(file, findings)
    {}

    void CheckStore();
    void CheckSlots();
    void CheckSelectors();
    void CheckRecords(const CQelTable& table);

private:
    void Add(const char* kind, const std::string& table, const std::string& column,
             const std::string& message)
    {
        m_findings.Add({kind, table, 0, column, message});
    }
    void CheckRecord(const CQelTable& table, unsigned long oid);
    void CheckStrays(unsigned short selector);
    bool IsToldByItsTable(const std::string& line) const;

    CContext& m_context;
    CPropertyFile& m_file;
    CQelPropDB3X& m_database;
    const std::vector<CQelTable>& m_tables;
    CFindings& m_findings;
    STally& m_checked;
    CValueCheck m_values;
};

/// Whether a line of the store's own test is about a record of a table, "record 1000/2: ...": the record is
/// read as well, and the fault then told by the table's name.
bool CLegacyCheck::IsToldByItsTable(const std::string& line) const
{
    constexpr std::string_view kStart = "record ";
    unsigned short selector = 0;
    if (line.compare(0, kStart.size(), kStart) != 0)
        return false;
    const auto [end, error] =
        std::from_chars(line.data() + kStart.size(), line.data() + line.size(), selector);
    return error == std::errc() && *end == '/' &&
           std::any_of(m_tables.begin(), m_tables.end(), [&, number = selector](const CQelTable& table) {
               return SelectorOf(table.Properties().oid) == number;
           });
}

void CLegacyCheck::CheckStore()
{
    CQelMemFile report(false, 0, 4096);
    unsigned long errors = 0;
    const unsigned int code = m_database.SelfTest(&report, errors, nullptr, 0);
    const auto* bytes = reinterpret_cast<const char*>(report.GetBuffer(0));
    const std::string text(bytes == nullptr ? "" : bytes, static_cast<std::size_t>(report.GetFileSize()));
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
        const std::string line = text.substr(begin, end - begin);
        if (!IsToldByItsTable(line))
            Add("engine", "", "", line);
        begin = end + 1;
    }
    if (code != qel::kSuccess)
        Add("engine", "", "", "the store cannot be tested: " + FailureOf(code, "", "").message);
}

void CLegacyCheck::CheckSlots()
{
    for (const CQelTable& table : m_tables) {
        CQelTable3X stored(table.Properties().oid);
        if (m_database.GetTable(stored) != qel::kSuccess)
            continue;
        std::set<int> seen;
        const auto count = static_cast<int>(stored.Columns().size());
        for (const CQelTable3X::SQelColumn& column : stored.Columns()) {
            const std::string slot = "slot " + std::to_string(column.dataIndex);
            if (column.dataIndex < 0 || column.dataIndex >= count)
                Add("slot", Utf8(table.Properties().name), Utf8(column.name),
                    slot + " is none of the table's records");
            else if (!seen.insert(column.dataIndex).second)
                Add("slot", Utf8(table.Properties().name), Utf8(column.name),
                    slot + " is another column's, too");
        }
    }
}

void CLegacyCheck::CheckStrays(unsigned short selector)
{
    std::vector<unsigned long> oids;
    if (m_database.BlobDB().GetOids(selector, oids, false) != qel::kSuccess)
        return;
    const bool schema = selector == kSchemaSelectors[0] || selector == kSchemaSelectors[1];
    for (const unsigned long oid : oids) {
        if (!schema || oid != kSchemaOid)
            m_findings.Add(
                {"stray", "", oid, "",
                 "the record stands under selector " + std::to_string(selector) + ", which is no table's"});
    }
}

void CLegacyCheck::CheckSelectors()
{
    std::map<unsigned short, const CQelTable*> owners;
    for (const CQelTable& table : m_tables) {
        const auto [place, isNew] = owners.emplace(SelectorOf(table.Properties().oid), &table);
        if (!isNew)
            Add("selector", Utf8(table.Properties().name), "",
                "the records stand among those of table '" + Utf8(place->second->Properties().name) + "'");
    }
    constexpr unsigned kSelectors = 65536;
    for (unsigned selector = 0; selector < kSelectors; ++selector) {
        m_context.CheckInterrupt();
        if (owners.count(static_cast<unsigned short>(selector)) == 0)
            CheckStrays(static_cast<unsigned short>(selector));
    }
}

void CLegacyCheck::CheckRecord(const CQelTable& table, unsigned long oid)
{
    CRecord record;
    try {
        if (!m_file.GetRecord(table.Properties().oid, oid, record))
            return;
    } catch (const SFailure& failure) {
        m_findings.Add(
            {"damaged", Utf8(table.Properties().name), oid, "", FailureOf(failure.code, "", "").message});
        return;
    }
    m_checked.values += CountValues(record);
    for (std::size_t index = 0; index < record.size(); ++index)
        m_values.Check(table, table.Columns()[index], oid, record[index].value);
}

void CLegacyCheck::CheckRecords(const CQelTable& table)
{
    const std::vector<unsigned long> oids = m_file.RecordOids(table.Properties().oid);
    m_checked.records += oids.size();
    CProgress progress(m_context, "checking " + Utf8(table.Properties().name), "records", oids.size());
    unsigned long long done = 0;
    for (const unsigned long oid : oids) {
        progress.Step(done++);
        CheckRecord(table, oid);
    }
}

} // namespace

void CheckLegacy(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked)
{
    CLegacyCheck check(context, file, tables, findings, checked);
    check.CheckStore();
    check.CheckSlots();
    check.CheckSelectors();
    for (const CQelTable& table : tables)
        findings.Try("engine", Utf8(table.Properties().name), [&] { check.CheckRecords(table); });
}

} // namespace tool
