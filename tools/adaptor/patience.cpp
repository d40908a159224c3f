// patience.cpp: short sleeps until the time is over.
#include "patience.h"

#include <qellib4/qellib4.h>
#include <qelplat4/terminal.h>
#include <sqlite3.h>

#include <thread>

namespace tool {

bool CPatience::Wait(bool first)
{
    constexpr std::chrono::milliseconds kPause(10);
    if (first)
        m_end = TClock::now() + m_time;
    if (qel::WasInterrupted() || TClock::now() >= m_end)
        return false;
    std::this_thread::sleep_for(kPause);
    return true;
}

int CPatience::OnBusy(void* patience, int tries)
{
    return static_cast<CPatience*>(patience)->Wait(tries == 0) ? 1 : 0;
}

void CPatience::Lend(CQelSQLite& connection)
{
    sqlite3_busy_handler(connection.Handle(), OnBusy, this);
}

unsigned int CPatience::Open(const std::function<unsigned int()>& open)
{
    unsigned int code = open();
    for (bool first = true; code == qel::kFileInUse && Wait(first); first = false)
        code = open();
    return code;
}

} // namespace tool
