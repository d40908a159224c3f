// regional_text_test.cpp: values as a locale's users write them.
#include "exchange/regional_text.h"

#include "exchange/neutral_text.h"
#include "support/environment.h"
#include "support/row_name.h"

#include <gtest/gtest.h>

using namespace qeltest;

namespace {

using EType = CQelProperty::EType;

struct SCase
{
    const char* name;
    const char* locale;
    EType type;
    const char* text;
    const char* neutral; ///< "-" where the text is refused
};

class RegionalText : public testing::TestWithParam<SCase>
{};

TEST_P(RegionalText, MeansWhatTheLocaleSays)
{
    const CLocaleEnvironment locale(GetParam().locale + std::string(".UTF-8"));
    SKIP_UNLESS_IN_FORCE(locale);
    CQelProperty value;
    std::string error;
    const bool read = tool::FromRegionalText(GetParam().text, GetParam().type, value, error);
    EXPECT_EQ(read ? tool::ToNeutralText(value) : "-", GetParam().neutral) << error;
}

INSTANTIATE_TEST_SUITE_P(
    Of, RegionalText,
    testing::Values(SCase{"GermanDouble", "de_DE", CQelProperty::eDouble, "-1.234,5", "-1234.5"},
                    SCase{"GermanDoubleUngrouped", "de_DE", CQelProperty::eDouble, "1234,5", "1234.5"},
                    SCase{"EnglishTextInGermany", "de_DE", CQelProperty::eDouble, "12.50", "-"},
                    SCase{"GroupOfFour", "de_DE", CQelProperty::eInt, "1.2345", "-"},
                    SCase{"WideInteger", "de_DE", CQelProperty::eUInt64, "18.446.744.073.709.551.615",
                          "18446744073709551615"},
                    SCase{"FrenchBlanks", "fr_FR", CQelProperty::eDouble, "1 234 567,25", "1234567.25"},
                    SCase{"IndianGroups", "en_IN", CQelProperty::eInt, "12,34,567", "1234567"},
                    SCase{"GermanAmount", "de_DE", CQelProperty::eCurrency, "1.200,50 EUR", "1200.5000 EUR"},
                    SCase{"AmericanAmount", "en_US", CQelProperty::eCurrency, "$1,200.50", "1200.5000 $"},
                    SCase{"GermanDate", "de_DE", CQelProperty::eDate, "29.02.2024", "2024-02-29"},
                    SCase{"AmericanDate", "en_US", CQelProperty::eDate, "2/29/2024", "2024-02-29"},
                    SCase{"NeutralDateAnywhere", "de_DE", CQelProperty::eDate, "2024-02-29", "2024-02-29"},
                    SCase{"NoDate", "de_DE", CQelProperty::eDate, "31.02.2024x", "-"},
                    SCase{"ShownBoolean", "de_DE", CQelProperty::eBool, "Yes", "true"},
                    SCase{"NoBoolean", "de_DE", CQelProperty::eBool, "vielleicht", "-"},
                    SCase{"MinusBehind", "de_DE", CQelProperty::eCurrency, "5-", "-"},
                    SCase{"MinusAsBrackets", "en_US", CQelProperty::eCurrency, "(5)", "-"},
                    SCase{"TwoNumbers", "en_US", CQelProperty::eCurrency, "5;6", "-"},
                    SCase{"SymbolOfSeveralSigns", "sv_SE", CQelProperty::eCurrency, "1 200,50 kr.",
                          "1200.5000 kr."},
                    SCase{"TimeInADate", "de_DE", CQelProperty::eDate, "12:30", "-"},
                    SCase{"Exponent", "de_DE", CQelProperty::eDouble, "1,5e-300", "1.5e-300"},
                    SCase{"NoNumber", "de_DE", CQelProperty::eDouble, "nan", "nan"},
                    SCase{"Words", "de_DE", CQelProperty::eDouble, "zwei", "-"}),
    SRowName());

} // namespace
