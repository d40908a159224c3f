// set_value_fuzz.cpp: any text taken as any type under several locales, and everything asked of the result.
#include <qellib4/tavblob.h>
#include <qelplat4/utf16.h>
#include <qelprop4/qelproperty.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr const char* kLocales[] = {"C",           "de_DE.UTF-8", "en_US.UTF-8", "fr_FR.UTF-8",
                                    "en_IN.UTF-8", "ar_EG.UTF-8", "th_TH.UTF-8", "ja_JP.UTF-8"};
constexpr int kTypes = 17; // two of them unknown

/// Every other octet pair is a character, so that all scripts and lone surrogates come.
std::wstring TextOf(const std::uint8_t* data, std::size_t size)
{
    std::u16string units;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        units += static_cast<char16_t>(data[i] | data[i + 1] << 8);
    return qel::FromUtf16(units.data(), units.size());
}

void Ask(const CQelProperty& value)
{
    value.String();
    value.StringUTF8(L"%d %f");
    value.Double();
    TavBlob blob;
    blob << value;
    CQelProperty back;
    blob >> back;
    const bool isUnordered = value.GetType() == CQelProperty::eDouble; // it may be no number
    if (value.GetType() <= CQelProperty::eDateTime && !isUnordered && !(back == value))
        std::abort();
    if (back < value || value < back)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    setenv("LC_ALL", kLocales[data[0] % std::size(kLocales)], 1);
    const auto type = static_cast<CQelProperty::EType>(data[1] % kTypes);
    const auto before = static_cast<CQelProperty::EType>(data[2] % kTypes);
    const std::wstring text = TextOf(data + 3, size - 3);
    CQelProperty value;
    value.SetString(text);
    value.SetType(before);
    value.SetValue(text.c_str(), type);
    Ask(value);
    value.SetValue(text.c_str(), CQelProperty::eNull);
    Ask(value);
    return 0;
}
