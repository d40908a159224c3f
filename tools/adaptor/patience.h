// patience.h: waits for a file that another process holds, as long as the user wants to.
#pragma once

#include <qelsq4/qelsq4.h>

#include <algorithm>
#include <chrono>
#include <functional>

namespace tool {

/// How long the program waits for others; an interrupt ends the wait. Not copied.
class CPatience
{
public:
    explicit CPatience(int milliseconds) : m_time(milliseconds) {}
    CPatience(const CPatience&) = delete;
    CPatience& operator=(const CPatience&) = delete;

    /// Makes every statement of a connection wait.
    /// @param connection  does not outlive the patience
    void Lend(CQelSQLite& connection);
    /// Waits at least so long from now on.
    void Raise(int milliseconds) { m_time = std::max(m_time, std::chrono::milliseconds(milliseconds)); }
    /// Opens a store, for which the store itself does not wait.
    /// @param open  gives a result code
    /// @return what the last try gave
    unsigned int Open(const std::function<unsigned int()>& open);

private:
    using TClock = std::chrono::steady_clock;

    static int OnBusy(void* patience, int tries);
    bool Wait(bool first);

    std::chrono::milliseconds m_time;
    TClock::time_point m_end;
};

} // namespace tool
