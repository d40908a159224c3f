// last_error.cpp: each thread's last error.
#include <qelplat4/types.h>

namespace {
thread_local DWORD lastError = 0;
} // namespace

DWORD GetLastError()
{
    return lastError;
}

void SetLastError(DWORD code)
{
    lastError = code;
}
