// string_table.h: the table behind the texts.
#pragma once

#include <qelplat4/afxmodule.h>

namespace qel {

/// Every text of the library.
struct SStringTable
{
    const AFX_STRING_RESOURCE* strings;
    unsigned int count;
};

SStringTable StringTable();

} // namespace qel
