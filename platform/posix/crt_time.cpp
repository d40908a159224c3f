// crt_time.cpp: the original runtime's 64-bit calendar functions, and its millisecond clock.
#include <qelplat4/crt.h>
#include <qelplat4/files.h>

#include <cerrno>
#include <chrono>

namespace {

constexpr long long kEndOfYear3000 = 32535215999; // 3000-12-31 23:59:59 UTC

bool InRange(long long seconds)
{
    return seconds >= 0 && seconds <= kEndOfYear3000;
}

void MarkInvalid(std::tm& out)
{
    out.tm_sec = out.tm_min = out.tm_hour = -1;
    out.tm_mday = out.tm_mon = out.tm_year = -1;
    out.tm_wday = out.tm_yday = out.tm_isdst = -1;
}

} // namespace

int _localtime64_s(std::tm* out, const long long* seconds)
{
    if (out == nullptr)
        return EINVAL;
    MarkInvalid(*out);
    if (seconds == nullptr || !InRange(*seconds))
        return EINVAL;
    tzset(); // a change of TZ counts at once, as localtime() would have it
    const std::time_t time = *seconds;
    if (localtime_r(&time, out) != nullptr)
        return 0;
    MarkInvalid(*out);
    return EINVAL;
}

long long _mktime64(std::tm* local)
{
    if (local == nullptr)
        return -1;
    std::tm normal = *local;
    const long long seconds = std::mktime(&normal);
    if (!InRange(seconds))
        return -1;
    *local = normal;
    return seconds;
}

DWORD GetTickCount()
{
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    return static_cast<DWORD>(now.count());
}
