// locale_name.cpp: locale names of the environment, and what ICU calls the same locales.
#include "locale_name.h"

#include <unicode/localebuilder.h>
#include <unicode/locid.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace qel {
namespace {

constexpr std::size_t kLongestName = 100; // ICU's own limit is 157; real names have at most some twenty

struct SPosixName
{
    std::string base;
    std::string_view modifier;
};

/// language[_region][.codeset][@modifier]; the code set says nothing about regional settings.
SPosixName Split(std::string_view name)
{
    const std::size_t at = name.find('@');
    const std::string_view modifier = at == std::string_view::npos ? std::string_view() : name.substr(at + 1);
    return {std::string(name.substr(0, std::min(name.find('.'), at))), modifier};
}

struct SScriptModifier
{
    std::string_view modifier;
    const char* script;
};
constexpr std::array<SScriptModifier, 4> kScripts = {
    {{"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}, {"arabic", "Arab"}}};

bool IsKnownLanguage(const icu::Locale& locale)
{
    std::int32_t count = 0;
    const icu::Locale* available = icu::Locale::getAvailableLocales(count);
    return std::any_of(available, available + count, [&locale](const icu::Locale& candidate) {
        return std::strcmp(candidate.getLanguage(), locale.getLanguage()) == 0;
    });
}

/// The region decides the currency, so a language alone gets its usual one.
const char* RegionOf(const icu::Locale& locale, icu::Locale& filled, UErrorCode& status)
{
    if (*locale.getCountry() != '\0')
        return locale.getCountry();
    filled.addLikelySubtags(status);
    return filled.getCountry();
}

} // namespace

bool IsNeutralName(std::string_view posixName)
{
    const std::string base = Split(posixName).base;
    return base.empty() || base == "C" || base == "POSIX";
}

std::string IcuLocaleId(std::string_view posixName)
{
    if (IsNeutralName(posixName) || posixName.size() > kLongestName)
        return {};
    const SPosixName name = Split(posixName);
    const icu::Locale locale = icu::Locale::createCanonical(name.base.c_str());
    if (locale.isBogus() || *locale.getLanguage() == '\0' || !IsKnownLanguage(locale))
        return {};

    UErrorCode status = U_ZERO_ERROR;
    icu::Locale filled = locale;
    icu::LocaleBuilder builder;
    builder.setLocale(locale).setRegion(RegionOf(locale, filled, status));
    builder.setUnicodeLocaleKeyword("nu", "latn");
    for (const SScriptModifier& known : kScripts)
        if (known.modifier == name.modifier)
            builder.setScript(known.script);
    if (name.modifier == "euro")
        builder.setUnicodeLocaleKeyword("cu", "eur");
    const icu::Locale built = builder.build(status);
    return U_SUCCESS(status) != 0 ? std::string(built.getName()) : std::string();
}

} // namespace qel
