// name_rule.cpp: the rule of both databases.
#include "name_rule.h"

namespace qel {
namespace {
constexpr std::wstring_view kRefused = L" #%()*,-./:;<>?@[\\]|";
static_assert(kRefused.size() == 20);
} // namespace

bool IsValidName(std::wstring_view name)
{
    return !name.empty() && name.find_first_of(kRefused) == std::wstring_view::npos;
}

} // namespace qel
