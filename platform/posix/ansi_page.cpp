// ansi_page.cpp: which single- or double-byte Windows code page a language uses.
#include "locale_icu.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace qel {
namespace {

// ICU has the pages but not which language uses which. Anything not listed is written with 1252.

struct SPage
{
    const wchar_t* page;
    std::string_view languages; ///< each between blanks; with a script where the language has several
};
constexpr std::array<SPage, 13> kPages = {{
    {L"874", " th "},
    {L"932", " ja "},
    {L"936", " zh-Hans "},
    {L"949", " ko "},
    {L"950", " zh-Hant "},
    {L"1250", " bs cs hr hsb dsb hu pl ro sk sl sq sr-Latn tk "},
    {L"1251", " ba be bg ky mk mn mn-Cyrl ru sah sr tg tt uk uz-Cyrl bs-Cyrl kk "},
    {L"1253", " el "},
    {L"1254", " az tr uz "},
    {L"1255", " he yi "},
    {L"1256", " ar az-Arab ckb fa ks ku-Arab mzn lrc pa-Arab ps sd ug ur uz-Arab "},
    {L"1257", " et lt lv "},
    {L"1258", " vi "},
}};

constexpr std::string_view kUnicodeOnly = " am as bn bo brx ccp chr doi dv dz gu hi hy ii iu ka km kn kok lo "
                                          "mai ml mni mr mt my ne or pa sa sat si su ta te ti zgh ";

bool Lists(std::string_view languages, const std::string& language)
{
    return languages.find(" " + language + " ") != std::string_view::npos;
}

std::wstring PageOf(const std::string& language)
{
    const auto* found = std::find_if(kPages.begin(), kPages.end(), [&language](const SPage& page) {
        return Lists(page.languages, language);
    });
    if (found != kPages.end())
        return found->page;
    return Lists(kUnicodeOnly, language) ? L"0" : L"";
}

} // namespace

std::wstring AnsiCodePageOf(const icu::Locale& locale)
{
    icu::Locale filled = locale;
    UErrorCode status = U_ZERO_ERROR;
    filled.addLikelySubtags(status);
    const std::string language = filled.getLanguage();
    for (const std::string& name : {language + '-' + filled.getScript(), language})
        if (std::wstring page = PageOf(name); !page.empty())
            return page;
    return L"1252";
}

} // namespace qel
