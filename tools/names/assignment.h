// assignment.h: "NAME=VALUE" as the value of a column.
#pragma once

#include "cli/context.h"
#include "names.h"

namespace tool {

/// How given texts become values.
struct SValueRules
{
    bool regional = false; ///< by the user's locale instead of the neutral form
    bool hasNullText = false;
    std::string nullText = "null"; ///< means Null; in text columns only if hasNullText
};

SValueRules ValueRulesOf(const CContext& context);

/// Turns "NAME=VALUE", "@OID=VALUE" and "NAME@=FILE" into values; the longest column name that fits wins,
/// since names may hold "=".
/// @throws SFailure  2 without a "=", 3 for an unknown column or file, 4 for a value that does not fit or a
///                   column named twice
CRecord ParseAssignments(const std::vector<std::string>& given, const CQelTable& table, const CNames& names,
                         const SValueRules& rules);

/// A text as a value of a column's type; a currency without a symbol takes the column's.
/// @throws SFailure  4 for a text that does not fit
CQelProperty ParseValue(const std::string& text, const CQelTable::SQelColumn& column,
                        const SValueRules& rules);

/// Refuses values that refer to records that are not there.
/// @throws SFailure  4
void CheckReferences(CPropertyFile& file, const CQelTable& table, const CNames& names, const CRecord& record);

/// Refuses a default that refers to a record that is not there.
/// @throws SFailure  4
void CheckDefault(CPropertyFile& file, const CQelTable::SQelColumn& column, const CNames& names);

/// Adds the defaults of columns that a record does not name.
void AddDefaults(const CQelTable& table, CRecord& record);

} // namespace tool
