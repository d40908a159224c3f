// sqlite_check.cpp: reads the rows themselves, since the library passes over what it cannot make sense of.
#include "exchange/value_parts.h"
#include "names/names.h"
#include "output/progress.h"
#include "value_check.h"

#include <limits>
#include <map>

namespace tool {
namespace {

constexpr int kRow = 100;
constexpr long long kLargestOid = std::numeric_limits<std::uint32_t>::max();

bool IsOid(long long number)
{
    return number >= 1 && number <= kLargestOid;
}

class CSQLiteCheck
{
public:
    CSQLiteCheck(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked)
        : m_context(context), m_connection(*file.Connection()), m_findings(findings), m_checked(checked),
          m_values(file, findings)
    {
        for (const CQelTable& table : tables)
            m_tables[static_cast<long long>(table.Properties().oid)] = &table;
    }

    void CheckEngine();
    void CheckSchema();
    void CheckCatalogueRows();
    void CheckValueRows();

private:
    struct SRowPlace
    {
        long long record = 0;
        long long table = 0;
        long long column = 0;
    };

    void Add(const char* kind, const std::string& message) { m_findings.Add({kind, "", 0, "", message}); }
    void CheckValueRow(CQelSQLite::CStatement& row);
    bool FindColumn(const SRowPlace& place, const CQelTable*& table, CQelTable::SQelColumn& column);
    static std::string Name(const SRowPlace& place)
    {
        return "value of record @" + std::to_string(place.record) + ", table @" +
               std::to_string(place.table) + ", column @" + std::to_string(place.column);
    }
    long long Count(const wchar_t* sql);

    CContext& m_context;
    CQelSQLite& m_connection;
    CFindings& m_findings;
    STally& m_checked;
    CValueCheck m_values;
    std::map<long long, const CQelTable*> m_tables;
};

void CSQLiteCheck::CheckEngine()
{
    CQelSQLite::CStatement statement(&m_connection);
    statement.Prepare(L"PRAGMA integrity_check");
    while (statement.Step() == kRow) {
        m_context.CheckInterrupt();
        const CString text = statement.GetString(0);
        // One answer may hold a title and many faults.
        for (const std::string& line : SplitList(Utf8(std::wstring(text.GetString())), '\n')) {
            if (!line.empty() && line != "ok" && line.compare(0, 3, "***") != 0)
                Add("engine", line);
        }
    }
}

long long CSQLiteCheck::Count(const wchar_t* sql)
{
    CQelSQLite::CStatement statement(&m_connection);
    statement.Prepare(sql);
    return statement.Step() == kRow ? statement.GetInt(0) : 0;
}

void CSQLiteCheck::CheckSchema()
{
    for (const wchar_t* const name : {L"qeltpt", L"qeltpc", L"qeltpd"}) {
        CQelSQLite::CStatement statement(&m_connection);
        statement.Prepare(L"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1");
        statement.BindString(1, name);
        if (statement.Step() != kRow)
            Add("schema", "the engine's table '" + Utf8(name) + "' is missing");
    }
    CQelSQLite::CStatement statement(&m_connection);
    statement.Prepare(
        L"SELECT 1 FROM sqlite_master WHERE type = 'index' AND name = 'idx_qeltpd_foidtoidcoid'");
    if (statement.Step() != kRow)
        Add("schema", "the index that keeps a value from being stored twice is missing");
}

void CSQLiteCheck::CheckCatalogueRows()
{
    CQelSQLite::CStatement table(&m_connection);
    table.Prepare(L"SELECT oid FROM qeltpt");
    while (table.Step() == kRow) {
        if (!IsOid(table.GetInt(0)))
            Add("oid", "a table has the oid " + std::to_string(table.GetInt(0)));
    }
    CQelSQLite::CStatement column(&m_connection);
    column.Prepare(L"SELECT oid,toid FROM qeltpc");
    while (column.Step() == kRow) {
        const long long oid = column.GetInt(0);
        if (!IsOid(oid))
            Add("oid", "a column has the oid " + std::to_string(oid));
        if (m_tables.count(column.GetInt(1)) == 0)
            Add("stray", "column @" + std::to_string(oid) + " belongs to table @" +
                             std::to_string(column.GetInt(1)) + ", which is not there");
    }
}

bool CSQLiteCheck::FindColumn(const SRowPlace& place, const CQelTable*& table, CQelTable::SQelColumn& column)
{
    const auto found = m_tables.find(place.table);
    if (found == m_tables.end()) {
        Add("stray", Name(place) + ": the table is not there");
        return false;
    }
    table = found->second;
    const bool known =
        IsOid(place.column) && table->GetColumn(static_cast<unsigned long>(place.column), column);
    if (!known)
        Add("stray", Name(place) + ": the column is not there");
    else if (!IsOid(place.record))
        Add("oid", Name(place) + ": this is no oid of a record");
    return known && IsOid(place.record);
}

/// @return what is wrong; empty for a value that can be read
std::string Decode(CQelSQLite::CStatement& row, int column, CQelProperty& value)
{
    TavBlob blob;
    if (!row.GetBlob(column, &blob))
        return "nothing is stored";
    CQelMemFile file(false, 0, 256);
    file.Write(blob.GetData(), blob.GetSize());
    file.Rewind();
    try {
        file >> value;
    } catch (CQelException* exception) {
        exception->Delete();
        return "the stored bytes end early";
    }
    long long end = 0;
    if (!file.GetFilePosition(end) || end != file.GetFileSize())
        return "bytes follow the end of the stored value";
    return {};
}

void CSQLiteCheck::CheckValueRow(CQelSQLite::CStatement& row)
{
    const SRowPlace place{row.GetInt(0), row.GetInt(1), row.GetInt(2)};
    const CQelTable* table = nullptr;
    CQelTable::SQelColumn column;
    if (!FindColumn(place, table, column))
        return;
    const auto oid = static_cast<unsigned long>(place.record);
    CQelProperty value;
    constexpr int kData = 3;
    const std::string fault = Decode(row, kData, value);
    if (!fault.empty()) {
        m_findings.Add({"damaged", Utf8(table->Properties().name), oid, Utf8(column.name), fault});
        return;
    }
    m_checked.values += value.IsNull() ? 0 : 1;
    m_values.Check(*table, column, oid, value);
}

void CSQLiteCheck::CheckValueRows()
{
    const auto total = static_cast<unsigned long long>(Count(L"SELECT count(*) FROM qeltpd"));
    CProgress progress(m_context, "checking", "values", total);
    CQelSQLite::CStatement row(&m_connection);
    row.Prepare(L"SELECT foid,toid,coid,data FROM qeltpd");
    for (unsigned long long done = 0; row.Step() == kRow; ++done) {
        progress.Step(done);
        CheckValueRow(row);
    }
}

/// Runs a part of the check; what the engine throws becomes a failure.
void Run(CSQLiteCheck& check, void (CSQLiteCheck::*part)(), const CPropertyFile& file)
{
    try {
        (check.*part)();
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        throw FailureOf(code, Utf8(file.Path()), "cannot read on");
    }
}

} // namespace

void CheckSQLite(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked)
{
    CSQLiteCheck check(context, file, tables, findings, checked);
    for (const auto part : {&CSQLiteCheck::CheckEngine, &CSQLiteCheck::CheckSchema,
                            &CSQLiteCheck::CheckCatalogueRows, &CSQLiteCheck::CheckValueRows})
        findings.Try("engine", "", [&] { Run(check, part, file); });
    for (const CQelTable& table : tables)
        findings.Try("engine", Utf8(table.Properties().name),
                     [&] { checked.records += file.CountRecords(table.Properties().oid); });
}

} // namespace tool
