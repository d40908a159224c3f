// column_rows.h: how a column definition is written.
#pragma once

#include "frame.h"

namespace qel {

/// The display order that asks for a place behind all others; never stored by adding a column.
constexpr int kDisplayLast = 9999;

/// The statement that adds a column, with ?1 the table, ?2 to ?11 the fields and ?99 a given oid.
const wchar_t* InsertColumnText(bool withOid, bool displayLast);
/// The statement that replaces a column's fields, with ?1 the table, ?2 the column and ?3 to ?12 the fields.
const wchar_t* UpdateColumnText();

/// Binds the fields from the type to the currency text, in the order of the stored table.
/// @param first  parameter of the type
/// @return the parameter after the last one bound, that of the display order
int BindColumn(CQelSQLite::CStatement& statement, int first, const CQelTable::SQelColumn& column);

/// False when the column refers to an oid wider than 32 bits.
bool HasOidReferences(const CQelTable::SQelColumn& column);

} // namespace qel
