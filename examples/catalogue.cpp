// catalogue.cpp: what the catalogue writes to a property database, and how it reads it again.
#include "catalogue.h"

#include <algorithm>
#include <stdexcept>

namespace {

struct SColumnPlan
{
    const wchar_t* name;
    CQelProperty::EType type;
    const wchar_t* description;
};

// In the order in which RecordOf fills them.
constexpr SColumnPlan kPackageColumns[] = {
    {L"Name", CQelProperty::eString, L"As the package is asked for"},
    {L"Version", CQelProperty::eString, L"As installed"},
    {L"Section", CQelProperty::eReference, L"Record of the table Sections"},
    {L"Size", CQelProperty::eUInt64, L"Bytes on the disk"},
    {L"Needs", CQelProperty::eInt, L"Number of packages that it depends on"},
    {L"Essential", CQelProperty::eBool, L"Whether the system cannot do without it"},
    {L"Share", CQelProperty::eDouble, L"Per cent of the bytes of all packages"},
    {L"Unpacked", CQelProperty::eDate, L"Day of the last change"},
    {L"Homepage", CQelProperty::eURL, L"Where its makers are"},
    {L"Summary", CQelProperty::eString, L"What it is, in one line"},
};

std::wstring Wide(const std::string& text)
{
    return TavCharConvert().UTF8ToUnicode(text);
}

std::string Narrow(const std::wstring& text)
{
    return TavCharConvert().ToUTF8(text);
}

CQelProperty TextValue(const std::wstring& text)
{
    CQelProperty value;
    value.SetString(text);
    return value;
}

template <class Table>
unsigned long ColumnOid(const Table& table, const std::wstring& name)
{
    for (const auto& column : table.Columns())
        if (column.name == name)
            return column.oid;
    throw std::runtime_error("the table has no column '" + Narrow(name) + "'");
}

const CQelProperty& ValueOf(const std::vector<SQelPropColumnData>& record, unsigned long columnOid)
{
    static const CQelProperty null;
    for (const SQelPropColumnData& element : record)
        if (element.columnOid == columnOid)
            return element.value;
    return null;
}

unsigned long long SumOfBytes(const std::vector<SPackage>& packages)
{
    unsigned long long bytes = 0;
    for (const SPackage& package : packages)
        bytes += package.bytes;
    return bytes;
}

} // namespace

void Require(unsigned int code, const std::string& doing)
{
    if (code == qel::kSuccess)
        return;
    throw std::runtime_error("failed while " + doing + ": " + Narrow(qel::ResultText(code)) + " (" +
                             std::to_string(code) + ")");
}

template <class Database, class Table>
Table CCatalogue<Database, Table>::AddTable(const std::wstring& name, const std::wstring& description,
                                            std::vector<TColumn> columns)
{
    Table table;
    table.Properties().name = name;
    table.Properties().description = description;
    Require(m_db.AddTable(table), "adding a table");
    int place = 0;
    for (TColumn& column : columns) {
        column.displayOrder = place++;
        Require(m_db.TableAddColumn(table.Properties().oid, column), "adding a column");
    }
    return FindTable(name);
}

template <class Database, class Table>
Table CCatalogue<Database, Table>::FindTable(const std::wstring& name)
{
    std::vector<unsigned long> oids;
    Require(m_db.GetTables(oids), "listing the tables");
    for (const unsigned long oid : oids) {
        Table table(oid);
        Require(m_db.GetTable(table), "reading a table");
        if (table.Properties().name == name)
            return table;
    }
    throw std::runtime_error("the database has no table '" + Narrow(name) + "'");
}

template <class Database, class Table>
void CCatalogue<Database, Table>::Define()
{
    TColumn name;
    name.name = L"Name";
    m_sections = AddTable(L"Sections", L"Groups of packages", {name});

    std::vector<TColumn> columns;
    for (const SColumnPlan& plan : kPackageColumns) {
        TColumn column;
        column.name = plan.name;
        column.type = plan.type;
        column.description = plan.description;
        if (plan.type == CQelProperty::eReference) {
            column.refTable = m_sections.Properties().oid;
            column.refColumn = ColumnOid(m_sections, L"Name");
        }
        columns.push_back(column);
    }
    m_packages = AddTable(L"Packages", L"What is installed on this machine", columns);
}

template <class Database, class Table>
void CCatalogue<Database, Table>::Find()
{
    m_sections = FindTable(L"Sections");
    m_packages = FindTable(L"Packages");
}

template <class Database, class Table>
unsigned long CCatalogue<Database, Table>::AddSection(const std::wstring& name)
{
    unsigned long oid = 0;
    const TRecord record = {{ColumnOid(m_sections, L"Name"), TextValue(name)}};
    Require(m_db.AddRecord(m_sections.Properties().oid, oid, record, false), "adding a section");
    return oid;
}

template <class Database, class Table>
typename CCatalogue<Database, Table>::TRecord
CCatalogue<Database, Table>::RecordOf(const SPackage& package, unsigned long section,
                                      unsigned long long allBytes) const
{
    TRecord record;
    const auto next = [&]() -> CQelProperty& {
        const unsigned long oid = ColumnOid(m_packages, kPackageColumns[record.size()].name);
        record.push_back({oid, CQelProperty()});
        return record.back().value;
    };
    next().SetStringUTF8(package.name);
    next().SetStringUTF8(package.version);
    next().SetReference(section);
    next().SetInt64(package.bytes);
    next().SetInt(package.dependencies);
    next().SetBool(package.essential);
    next().SetDouble(100.0 * static_cast<double>(package.bytes) / static_cast<double>(allBytes));
    CQelProperty& unpacked = next(); // stays null when not known
    if (package.unpacked != 0)
        unpacked.SetDate(package.unpacked, 9999);
    CQelProperty& homepage = next();
    if (!package.homepage.empty())
        homepage.SetURL(Wide(package.homepage));
    next().SetStringUTF8(package.summary);
    return record;
}

template <class Database, class Table>
void CCatalogue<Database, Table>::Store(const std::vector<SPackage>& packages)
{
    const unsigned long long allBytes = SumOfBytes(packages);
    std::map<std::string, unsigned long> sections;
    for (const SPackage& package : packages) {
        unsigned long& section = sections[package.section];
        if (section == 0)
            section = AddSection(Wide(package.section));
        unsigned long oid = 0;
        const TRecord record = RecordOf(package, section, allBytes);
        Require(m_db.AddRecord(m_packages.Properties().oid, oid, record, false), "adding " + package.name);
    }
}

template <class Database, class Table>
typename CCatalogue<Database, Table>::TRecord CCatalogue<Database, Table>::Read(const Table& table,
                                                                                unsigned long recordOid)
{
    TRecord record;
    Require(m_db.GetRecord(table.Properties().oid, recordOid, record), "reading a record");
    return record;
}

template <class Database, class Table>
unsigned int CCatalogue<Database, Table>::Count(const Table& table)
{
    unsigned int count = 0;
    Require(m_db.GetRecordCount(table.Properties().oid, count), "counting the records");
    return count;
}

template <class Database, class Table>
std::map<std::wstring, unsigned long> CCatalogue<Database, Table>::OidsByName(const Table& table)
{
    std::vector<unsigned long> oids;
    Require(m_db.GetRecordOids(table.Properties().oid, oids, nullptr), "listing the records");
    std::map<std::wstring, unsigned long> byName;
    for (const unsigned long oid : oids)
        byName[ValueOf(Read(table, oid), ColumnOid(table, L"Name")).String()] = oid;
    return byName;
}

template <class Database, class Table>
std::size_t CCatalogue<Database, Table>::CountDiffering(const std::vector<SPackage>& packages)
{
    const auto sections = OidsByName(m_sections);
    const auto stored = OidsByName(m_packages);
    const unsigned long long allBytes = SumOfBytes(packages);
    std::size_t differing = 0;
    for (const SPackage& package : packages) {
        const auto section = sections.find(Wide(package.section));
        const auto found = stored.find(Wide(package.name));
        if (section == sections.end() || found == stored.end()) {
            ++differing;
            continue;
        }
        const TRecord now = RecordOf(package, section->second, allBytes);
        const TRecord kept = Read(m_packages, found->second);
        const bool same = std::all_of(now.begin(), now.end(), [&](const SQelPropColumnData& element) {
            return element.value == ValueOf(kept, element.columnOid);
        });
        differing += same ? 0 : 1;
    }
    return differing;
}

template <class Database, class Table>
std::vector<unsigned long> CCatalogue<Database, Table>::OidsBySize()
{
    std::vector<typename Database::SSortItem> order(2);
    order[0].column = ColumnOid(m_packages, L"Size");
    order[0].ascending = false;
    order[1].column = ColumnOid(m_packages, L"Name");
    order[1].ascending = true;
    std::vector<unsigned long> oids;
    Require(m_db.GetRecordOids(m_packages.Properties().oid, oids, &order), "sorting the packages");
    return oids;
}

template <class Database, class Table>
CQelProperty CCatalogue<Database, Table>::SectionName(const CQelProperty& reference)
{
    const TRecord section = Read(m_sections, reference.Data().uValue.nULong);
    return ValueOf(section, ColumnOid(m_sections, L"Name"));
}

template <class Database, class Table>
std::vector<CQelProperty> CCatalogue<Database, Table>::Values(unsigned long recordOid)
{
    const TRecord record = Read(m_packages, recordOid);
    std::vector<CQelProperty> values;
    for (const SColumnPlan& plan : kPackageColumns) {
        const CQelProperty& value = ValueOf(record, ColumnOid(m_packages, plan.name));
        values.push_back(plan.type == CQelProperty::eReference ? SectionName(value) : value);
    }
    return values;
}

template <class Database, class Table>
void CCatalogue<Database, Table>::Print(const std::vector<unsigned long>& recordOids, std::ostream& out)
{
    CTextTable table({L"Package", L"Section", L">Bytes", L">Share %", L">Needs", L"Essential", L"Unpacked"});
    for (const unsigned long oid : recordOids) {
        const TRecord record = Read(m_packages, oid);
        const auto value = [&](const wchar_t* column) {
            return ValueOf(record, ColumnOid(m_packages, column));
        };
        table.Add({value(L"Name").String(), SectionName(value(L"Section")).String(), value(L"Size").String(),
                   value(L"Share").String(), value(L"Needs").String(), value(L"Essential").String(),
                   value(L"Unpacked").String()});
    }
    table.Print(out);
}

template class CCatalogue<CQelPropDB, CQelTable>;
template class CCatalogue<CQelPropDB3X, CQelTable3X>;
