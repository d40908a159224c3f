// value_check.h: faults in values and in records, in both kinds of database.
#pragma once

#include "findings.h"

namespace tool {

/// Looks at values one by one.
class CValueCheck
{
public:
    /// @param file, findings  outlive the check
    CValueCheck(CPropertyFile& file, CFindings& findings) : m_file(file), m_findings(findings) {}

    /// Looks at the type, at the form of a text, and whether what a reference names is there.
    void Check(const CQelTable& table, const CQelTable::SQelColumn& column, unsigned long recordOid,
               const CQelProperty& value);

private:
    CPropertyFile& m_file;
    CFindings& m_findings;
};

/// Checks what only an SQLite database has: its engine, and rows that the library passes over. Every value
/// is read from its row.
void CheckSQLite(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked);
/// Checks what only a record store has: checksums, slots, and records under no table's selector. Every
/// record is read.
void CheckLegacy(CContext& context, CPropertyFile& file, const std::vector<CQelTable>& tables,
                 CFindings& findings, STally& checked);

} // namespace tool
