// referrers.h: what keeps a table or a column from being removed or added.
#pragma once

#include "names/names.h"

namespace tool {

/// @throws SFailure  4 (17509) when a Reference column of another table refers to the table, or when the
///                   kind of file lets no table go
void RefuseIfReferredTo(CPropertyFile& file, const CNames& names, const CQelTable& table);
/// @throws SFailure  4 (17509) when a Reference column refers to the column
void RefuseIfReferredTo(CPropertyFile& file, const CNames& names, const CQelTable& table,
                        const CQelTable::SQelColumn& column);
/// @throws SFailure  4 (17503) when two columns have one name
void RefuseTwins(const std::vector<CQelTable::SQelColumn>& columns);

} // namespace tool
