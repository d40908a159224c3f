// environment.cpp: environment variables set for a while.
#include "environment.h"

#include <cstdlib>

namespace qeltest {
namespace {

void Put(const std::string& variable, const std::string& value)
{
#ifdef _WIN32
    _putenv_s(variable.c_str(), value.c_str());
#else
    if (value.empty())
        unsetenv(variable.c_str());
    else
        setenv(variable.c_str(), value.c_str(), 1);
#endif
}

} // namespace

CLocaleEnvironment::CLocaleEnvironment(const std::string& all)
{
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LC_MONETARY", "LC_TIME", "LC_CTYPE", "LANG"})
        Set(variable, "");
    Set("LC_ALL", all);
}

CLocaleEnvironment::~CLocaleEnvironment()
{
    for (const auto& [variable, value] : m_before)
        Put(variable, value.value_or(""));
}

void CLocaleEnvironment::Set(const std::string& variable, const std::string& value)
{
    const char* before = std::getenv(variable.c_str());
    m_before.emplace(variable, before != nullptr ? std::optional<std::string>(before) : std::nullopt);
    Put(variable, value);
}

} // namespace qeltest
