// module_strings.cpp: the texts of the library's own string table.
#include "module_strings.h"

#include <algorithm>
#include <iterator>

namespace qel {
namespace {

struct SModuleString
{
    unsigned int id;
    const wchar_t* text;
};

// The names of the types stand at 15200 + type; a date-time has none.
constexpr SModuleString kStrings[] = {
    {15000, L"Global"},
    {15001, L"Image"},
    {15002, L"Yes"},
    {15003, L"No"},
    {15004, L"Binary Object"},
    {15200, L"Null"},
    {15201, L"String"},
    {15202, L"Signed Integer"},
    {15203, L"Unsigned Integer"},
    {15204, L"Signed Long Integer"},
    {15205, L"Unsigned Long Integer"},
    {15206, L"Double"},
    {15207, L"Date"},
    {15208, L"Time"},
    {15209, L"Boolean"},
    {15210, L"Currency"},
    {15211, L"Hyperlink"},
    {15212, L"Reference"},
    {15213, L"Binary Object"},
};

} // namespace

std::wstring ModuleString(unsigned int id)
{
    const auto found = std::find_if(std::begin(kStrings), std::end(kStrings),
                                    [id](const SModuleString& entry) { return entry.id == id; });
    return found != std::end(kStrings) ? found->text : L"";
}

} // namespace qel
