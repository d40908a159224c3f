// runtime_scan.cpp: numbers read by the system's own runtime.
#include <qelplat4/runtime_locale.h>

#include <clocale>
#include <cstdlib>
#include <cwchar>

namespace qel {
namespace {

// Not swscanf: under that name the compiler's own library has one that knows "inf" and "0x".
template <class Number>
bool Scan(const wchar_t* text, const wchar_t* format, Number& out)
{
    Number number{};
    if (text == nullptr || __ms_swscanf(text, format, &number) != 1)
        return false;
    out = number;
    return true;
}

} // namespace

wchar_t RuntimeDecimalPoint()
{
    const std::lconv* const conventions = std::localeconv();
    wchar_t point = L'.';
    std::mbtowc(&point, conventions->decimal_point, MB_CUR_MAX);
    return point;
}

bool ScanInt32(const wchar_t* text, std::int32_t& out)
{
    return Scan(text, L"%ld", out);
}

bool ScanUInt32(const wchar_t* text, std::uint32_t& out)
{
    return Scan(text, L"%lu", out);
}

bool ScanInt64(const wchar_t* text, long long& out)
{
    return Scan(text, L"%I64d", out);
}

bool ScanUInt64(const wchar_t* text, unsigned long long& out)
{
    return Scan(text, L"%I64u", out);
}

bool ScanFloat(const wchar_t* text, float& out)
{
    return Scan(text, L"%f", out);
}

} // namespace qel
