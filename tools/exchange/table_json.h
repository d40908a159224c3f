// table_json.h: the definition of a table as JSON, for `schema`, `dump` and `load`.
#pragma once

#include <nlohmann/json.hpp>
#include <qelprop4/qelprop4.h>

namespace tool {

/// A table with its columns in display order; references name table and column by oid and by name.
/// @param all  every table of the database
nlohmann::ordered_json TableToJson(const CQelTable& table, const std::vector<CQelTable>& all);

} // namespace tool
