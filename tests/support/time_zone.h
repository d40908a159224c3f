// time_zone.h: the local time zone for a while.
#pragma once

#include "environment.h"

#include <ctime>
#include <optional>

namespace qeltest {

/// Sets the local time zone, as the variable TZ takes it, and puts back what it was. Not copied.
class CScopedTimeZone
{
public:
    explicit CScopedTimeZone(const char* zone)
    {
        m_environment.emplace();
        m_environment->Set("TZ", zone);
        tzset();
    }
    CScopedTimeZone(const CScopedTimeZone&) = delete;
    CScopedTimeZone& operator=(const CScopedTimeZone&) = delete;
    ~CScopedTimeZone()
    {
        m_environment.reset();
        tzset();
    }

private:
    std::optional<CLocaleEnvironment> m_environment;
};

} // namespace qeltest
