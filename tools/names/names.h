// names.h: finds tables, columns and records by what the user wrote.
#pragma once

#include "adaptor/property_file.h"
#include "adaptor/text.h"

#include <string>
#include <vector>

namespace tool {

/// The names of one database, read once.
///
/// Every name may be given as @OID. What is not there is thrown as SFailure 3, with the nearest name as hint.
class CNames
{
public:
    explicit CNames(CPropertyFile& file);

    const std::vector<CQelTable>& Tables() const { return m_tables; }
    const CQelTable& Table(const std::string& given) const;
    /// The table of an oid; null when there is none.
    const CQelTable* FindTable(unsigned long oid) const;
    const CQelTable::SQelColumn& Column(const CQelTable& table, const std::string& given) const;
    /// Columns out of "Model,@4"; oid 0 stands for "@oid", the record's own.
    std::vector<CQelTable::SQelColumn> Columns(const CQelTable& table, const std::string& list) const;
    /// Table and column out of "Makers.Name".
    void Reference(const std::string& given, CQelTable::SQelColumn& column) const;

    /// The oid of a record written as @7 or 7. @throws SFailure  2 for anything else
    static unsigned long RecordOid(const std::string& given);
    /// A failure 3 about a record that is not there, or a range in which there is none.
    /// @param last  0 for one record
    SFailure NoRecord(const CQelTable& table, unsigned long oid, unsigned long last = 0) const;

private:
    SFailure NotFound(const std::string& message, const std::string& given,
                      const std::vector<std::string>& known) const;

    std::string m_file;
    std::vector<CQelTable> m_tables;
};

/// Refuses a new name of a table or a column that the databases would refuse, and says what is wrong with it.
/// @throws SFailure  4
void RequireValidName(const std::wstring& name);

/// Parts of a list, "a,b" -> a, b; empty parts are kept.
std::vector<std::string> SplitList(const std::string& list, char separator = ',');

} // namespace tool
