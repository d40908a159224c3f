// catalogue.h: a catalogue of packages in a property database of either kind.
#pragma once

#include "package_list.h"
#include "text_table.h"

#include <qelprop4/qelprop4.h>

#include <map>
#include <string>
#include <vector>

/// Throws when an operation of the library did not give 10001.
/// @param doing  completes "failed while ..."
/// @throws std::runtime_error with the text of the code
void Require(unsigned int code, const std::string& doing);

/// Two tables, Sections and Packages, and one record for every section and package.
///
/// The same for both kinds of database, since both offer the same operations.
/// Every failure is thrown as std::runtime_error.
template <class Database, class Table>
class CCatalogue
{
public:
    /// @param db  open; must outlive the catalogue
    explicit CCatalogue(Database& db) : m_db(db) {}

    /// Adds both tables to a database that has neither.
    void Define();
    /// Finds both tables and their columns by name.
    void Find();
    /// Adds one record for every package, and one for every section among them.
    void Store(const std::vector<SPackage>& packages);
    /// Counts the packages whose record is missing or holds anything else than Store would write now.
    std::size_t CountDiffering(const std::vector<SPackage>& packages);

    /// Number of records in each table.
    unsigned int CountPackages() { return Count(m_packages); }
    unsigned int CountSections() { return Count(m_sections); }
    /// Every package, largest first, those of one size by name.
    std::vector<unsigned long> OidsBySize();
    /// The record of a package, one value per column in the order of the columns; the section by its name,
    /// since the oids of records are each database's own.
    std::vector<CQelProperty> Values(unsigned long recordOid);
    /// Prints some packages as people read them, through the regional settings of the environment.
    void Print(const std::vector<unsigned long>& recordOids, std::ostream& out);

private:
    using TRecord = std::vector<SQelPropColumnData>;
    using TColumn = typename Table::SQelColumn;

    Table AddTable(const std::wstring& name, const std::wstring& description, std::vector<TColumn> columns);
    Table FindTable(const std::wstring& name);
    unsigned int Count(const Table& table);
    std::map<std::wstring, unsigned long> OidsByName(const Table& table);
    unsigned long AddSection(const std::wstring& name);
    TRecord RecordOf(const SPackage& package, unsigned long section, unsigned long long allBytes) const;
    CQelProperty SectionName(const CQelProperty& reference);
    TRecord Read(const Table& table, unsigned long recordOid);

    Database& m_db;
    Table m_sections;
    Table m_packages;
};

using CSqlCatalogue = CCatalogue<CQelPropDB, CQelTable>;
using CLegacyCatalogue = CCatalogue<CQelPropDB3X, CQelTable3X>;
