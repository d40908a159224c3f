// number_orders.h: the places of sign, number and currency symbol, by the numbers that settings give them.
#pragma once

#include <array>
#include <string_view>

namespace qel {

// In every pattern "#" is the number and "$" the currency symbol; anything else stands for itself.

constexpr std::array<std::wstring_view, 5> kNegativeNumbers = {L"(#)", L"-#", L"- #", L"#-", L"# -"};

constexpr std::array<std::wstring_view, 4> kPositiveAmounts = {L"$#", L"#$", L"$ #", L"# $"};

constexpr std::array<std::wstring_view, 16> kNegativeAmounts = {
    L"($#)", L"-$#",  L"$-#",  L"$#-",  L"(#$)", L"-#$",  L"#-$",   L"#$-",
    L"-# $", L"-$ #", L"# $-", L"$ #-", L"$ -#", L"#- $", L"($ #)", L"(# $)"};

} // namespace qel
