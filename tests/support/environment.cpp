// environment.cpp: environment variables set for a while.
#include "environment.h"

#include <qelplat4/crt.h>

#include <cstdlib>

namespace qeltest {

CLocaleEnvironment::CLocaleEnvironment(const std::string& all)
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
