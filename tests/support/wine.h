// wine.h: tests of what Wine's own functions answer otherwise than those of the system whose place it takes.
#pragma once

#include <cstdlib>

namespace qeltest {

/// Whether this is a Windows program under Wine, which tells its programs so by variables of its own.
inline bool RunsUnderWine()
{
    return sizeof(wchar_t) == 2 && std::getenv("WINECONFIGDIR") != nullptr;
}

} // namespace qeltest

/// Leaves a test of a function that is the system's own on Windows; `how` tells what Wine's does.
#define SKIP_WHERE_WINE_DIFFERS(how)                                                                         \
    if (qeltest::RunsUnderWine())                                                                            \
    GTEST_SKIP() << "Wine's own function " how
