// content.cpp: what travels between systems: tables of odd names and values of every type.
#include "content.h"

#include "../support/sample_values.h"

#include <qelplat4/utf16.h>

#include <limits>
#include <stdexcept>

namespace interchange {

using namespace qeltest;

void Check(unsigned int code, const char* what)
{
    if (code != qel::kSuccess)
        throw std::runtime_error(std::string(what) + " gives " + std::to_string(code));
}

std::vector<std::wstring> OddNames()
{
    return {L"=",
            L"O'Brien",
            L"\"quoted\"",
            L"Gr\u00F6\u00DFe",
            L"\u65E5\u672C\u8A9E",
            L"\U0001F600",
            L"\u0645\u0631\u062D\u0628\u0627",
            L"e\u0301",
            L"\u00E9",
            L"{}&!~`^+$",
            L"null",
            L"rowid",
            std::wstring(300, L'x')};
}

namespace {

std::wstring LoneSurrogates()
{
    const char16_t units[] = {0xD800, u'a', 0xDC00, 0xD83D, 0xDE00};
    return qel::FromUtf16(units, std::size(units));
}

std::string EveryByte(std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += static_cast<char>(i * 31 + i / 256);
    return bytes;
}

constexpr long long kLeast = std::numeric_limits<long long>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Bits of a double under a type, as a host's own arithmetic may have left them.
CQelProperty NotANumber(CQelProperty::EType type)
{
    return Bits(0x7FF8000000000000u, type);
}

std::vector<SSample> Numbers()
{
    return {{CQelProperty::eInt, {Int(0), Int(-1), Int(2147483647), Int(-2147483647 - 1)}},
            {CQelProperty::eUInt, {UInt(0), UInt(4294967295u)}},
            {CQelProperty::eInt64, {Int64(kLeast), Int64(-1), Int64(9007199254740993)}},
            {CQelProperty::eUInt64, {UInt64(18446744073709551615u), UInt64(1)}},
            {CQelProperty::eDouble,
             {Double(0.1), Double(-0.0), Double(kInfinity), Double(-kInfinity), Double(4.9e-324),
              Double(1.7976931348623157e308), NotANumber(CQelProperty::eDouble)}},
            {CQelProperty::eBool, {Bool(true), Bool(false)}},
            {CQelProperty::eReference, {Reference(0), Reference(4294967295u), Reference(1)}},
            // amounts that a multiplication in more or fewer digits would cut elsewhere
            {CQelProperty::eCurrency,
             {Amount(1.23, L"EUR"), Amount(0.07), Amount(-1.1, L"\u20AC"), Amount(4.35), Amount(1e15),
              Retagged(Int64(kLeast), CQelProperty::eCurrency)}}};
}

std::vector<SSample> Dates()
{
    return {{CQelProperty::eDate, {Date(45351), Date(-1.25), Date(0), Date(2958465)}},
            {CQelProperty::eTime, {Time(0.5), Time(0.999988425925926), Time(0)}},
            {CQelProperty::eDateTime,
             {DateTime(45351.54524), DateTime(-0.5), NotANumber(CQelProperty::eDateTime)}}};
}

std::vector<SSample> Texts()
{
    return {{CQelProperty::eString,
             {Text(std::wstring(70000, L'\u00FC')), Text(L"plain"), Text(L""), Text(L"line\r\nline\ttab"),
              Text(L"\U0001F600 \u65E5\u672C\u8A9E"), Text(LoneSurrogates())}},
            {CQelProperty::eURL, {Link(L"https://example.org/?q=\u00FC#x"), Link(L"")}},
            {CQelProperty::eBlob, {Blob(EveryByte(300000)), Blob(""), Blob(EveryByte(256))}},
            {CQelProperty::eNull, {CQelProperty()}}};
}

} // namespace

std::vector<SSample> Samples()
{
    std::vector<SSample> all;
    for (std::vector<SSample> part : {Numbers(), Dates(), Texts()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace interchange
