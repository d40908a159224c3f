// string_table.cpp: every text of the library that people see.
#include "string_table.h"

#include "resources.h"

#include <iterator>

namespace qel {
namespace {

constexpr AFX_STRING_RESOURCE kStrings[] = {
    {kStringGlobal, L"Global"},
    {kStringImage, L"Image"},
    {kStringYes, L"Yes"},
    {kStringNo, L"No"},
    {kStringBlob, L"Binary Object"},
    {kStringTypeName + 0, L"Null"},
    {kStringTypeName + 1, L"String"},
    {kStringTypeName + 2, L"Signed Integer"},
    {kStringTypeName + 3, L"Unsigned Integer"},
    {kStringTypeName + 4, L"Signed Long Integer"},
    {kStringTypeName + 5, L"Unsigned Long Integer"},
    {kStringTypeName + 6, L"Double"},
    {kStringTypeName + 7, L"Date"},
    {kStringTypeName + 8, L"Time"},
    {kStringTypeName + 9, L"Boolean"},
    {kStringTypeName + 10, L"Currency"},
    {kStringTypeName + 11, L"Hyperlink"},
    {kStringTypeName + 12, L"Reference"},
    {kStringTypeName + 13, L"Binary Object"}, // the last: a date with a time has no name
};

} // namespace

SStringTable StringTable()
{
    return {kStrings, static_cast<unsigned int>(std::size(kStrings))};
}

} // namespace qel
