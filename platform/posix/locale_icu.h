// locale_icu.h: reading a locale's settings from ICU's data.
#pragma once

#include "locale_data.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <string>

namespace qel {

/// All settings of the locale; what ICU cannot give stays as the neutral locale has it.
SLocaleData ReadLocale(const std::string& icuId);

/// The parts of ReadLocale.
void ReadNumbers(const icu::Locale& locale, SLocaleData& data);
void ReadMoney(const icu::Locale& locale, SLocaleData& data);
void ReadDates(const icu::Locale& locale, SLocaleData& data);

/// ICU's text as wide text.
std::wstring WideOf(const icu::UnicodeString& text);

/// The Windows code page of the locale's language and script; "0" where it has none.
std::wstring AnsiCodePageOf(const icu::Locale& locale);

} // namespace qel
