// definition_check.cpp: what a database would have refused, had it been asked.
#include "definition_check.h"

#include "exchange/type_name.h"

#include <algorithm>
#include <set>

namespace tool {
namespace {

class CDefinitionCheck
{
public:
    CDefinitionCheck(const std::vector<CQelTable>& tables, CFindings& findings)
        : m_tables(tables), m_findings(findings)
    {}

    void Check()
    {
        for (const CQelTable& table : m_tables) {
            CheckName(table.Properties().name, m_names, Utf8(table.Properties().name), "");
            CheckColumns(table);
        }
    }

private:
    void Add(const char* kind, const std::string& table, const std::string& column,
             const std::string& message)
    {
        m_findings.Add({kind, table, 0, column, message});
    }

    void CheckName(const std::wstring& name, std::set<std::wstring>& seen, const std::string& table,
                   const std::string& column)
    {
        if (!m_rules.IsValidName(name))
            Add("name", table, column, "the name is not allowed");
        if (!seen.insert(name).second)
            Add("name", table, column, "the name occurs more than once");
    }

    void CheckColumns(const CQelTable& table)
    {
        std::set<std::wstring> names;
        std::set<int> orders;
        const std::string tableName = Utf8(table.Properties().name);
        for (const CQelTable::SQelColumn& column : table.Columns()) {
            const std::string name = Utf8(column.name);
            CheckName(column.name, names, tableName, name);
            if (column.displayOrder < 0 || !orders.insert(column.displayOrder).second)
                Add("order", tableName, name,
                    "the display order " + std::to_string(column.displayOrder) +
                        (column.displayOrder < 0 ? " is negative" : " is another column's, too"));
            CheckType(column, tableName, name);
            CheckReference(column, tableName, name);
        }
    }

    void CheckType(const CQelTable::SQelColumn& column, const std::string& table, const std::string& name)
    {
        if (column.type < CQelProperty::eString || column.type > CQelProperty::eDateTime)
            Add("type", table, name, "the column is of " + TypeName(column.type) + ", which is no type");
        const CQelProperty::EType type = column.defaultValue.GetType();
        if (type != CQelProperty::eNull && type != column.type)
            Add("type", table, name,
                "the default is of type " + TypeName(type) + ", the column of type " + TypeName(column.type));
    }

    void CheckReference(const CQelTable::SQelColumn& column, const std::string& table,
                        const std::string& name)
    {
        if (column.type != CQelProperty::eReference)
            return;
        const auto target = std::find_if(m_tables.begin(), m_tables.end(), [&](const CQelTable& other) {
            return other.Properties().oid == column.refTable;
        });
        CQelTable::SQelColumn found;
        if (target == m_tables.end())
            Add("dangling", table, name,
                "refers to table @" + std::to_string(column.refTable) + ", which is not there");
        else if (!target->GetColumn(column.refColumn, found))
            Add("dangling", table, name,
                "refers to column @" + std::to_string(column.refColumn) + " of table '" +
                    Utf8(target->Properties().name) + "', which is not there");
    }

    const std::vector<CQelTable>& m_tables;
    CFindings& m_findings;
    CQelPropDB m_rules{nullptr}; // the name rule, which needs no database
    std::set<std::wstring> m_names;
};

} // namespace

void CheckDefinitions(const std::vector<CQelTable>& tables, CFindings& findings)
{
    CDefinitionCheck(tables, findings).Check();
}

} // namespace tool
