// environment.cpp: environment variables set for a while.
#include "environment.h"

#include <qelplat4/crt.h>
#include <qelplat4/nls.h>

#include <cstdlib>

namespace qeltest {
namespace {

std::string AtStart()
{
    const char* const all = std::getenv("LC_ALL");
    return all != nullptr ? all : "";
}

const std::string g_atStart = AtStart();

bool IsNeutral(const std::string& locale)
{
    return locale.empty() || locale == "POSIX" || locale.front() == 'C';
}

std::string WithoutCodeset(const std::string& locale)
{
    return locale.substr(0, locale.find('.'));
}

std::wstring DecimalSeparator()
{
    wchar_t text[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, 8);
    return text;
}

} // namespace

bool CLocaleEnvironment::CanSwitch()
{
    CLocaleEnvironment german("de_DE.UTF-8");
    const std::wstring comma = DecimalSeparator();
    german.Set("LC_ALL", "en_US.UTF-8");
    return DecimalSeparator() != comma;
}

bool CLocaleEnvironment::IsExactlyInForce() const
{
    static const bool follows = CanSwitch();
    return follows || (WithoutCodeset(m_all) == WithoutCodeset(g_atStart) && !IsNeutral(m_all));
}

bool CLocaleEnvironment::IsInForce() const
{
    return IsExactlyInForce() || (IsNeutral(m_all) && DecimalSeparator() == L".");
}

CLocaleEnvironment::CLocaleEnvironment(const std::string& all) : m_all(all)
{
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LC_MONETARY", "LC_TIME", "LC_CTYPE", "LANG"})
        Set(variable, "");
    Set("LC_ALL", all);
}

CLocaleEnvironment::~CLocaleEnvironment()
{
    for (const auto& [variable, value] : m_before)
        _putenv_s(variable.c_str(), value.value_or("").c_str());
}

void CLocaleEnvironment::Set(const std::string& variable, const std::string& value)
{
    const char* before = std::getenv(variable.c_str());
    m_before.emplace(variable, before != nullptr ? std::optional<std::string>(before) : std::nullopt);
    _putenv_s(variable.c_str(), value.c_str());
}

} // namespace qeltest
