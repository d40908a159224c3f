// environment.h: environment variables set for a while.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace qeltest {

/// Takes the variables that name a locale out of the environment and puts them back at its end.
class CLocaleEnvironment
{
public:
    /// @param all  becomes LC_ALL, if it is not empty
    explicit CLocaleEnvironment(const std::string& all = {});
    ~CLocaleEnvironment();
    CLocaleEnvironment(const CLocaleEnvironment&) = delete;
    CLocaleEnvironment& operator=(const CLocaleEnvironment&) = delete;

    /// Sets one variable, or takes it away when the value is empty; put back at the end as the others are.
    void Set(const std::string& variable, const std::string& value);

private:
    std::map<std::string, std::optional<std::string>> m_before;
};

} // namespace qeltest
