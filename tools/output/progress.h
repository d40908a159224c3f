// progress.h: how far long work has come, for a person at a terminal.
#pragma once

#include "cli/context.h"

#include <chrono>
#include <string>

namespace tool {

/// A bar on stderr with rate and time left; nothing is drawn where no terminal is. Not copied.
///
/// It also looks whether the user wants to stop, so that work which shows its progress can be ended.
class CProgress
{
public:
    /// @param what   "importing"
    /// @param unit   what is counted: "records"; "bytes" are shown in multiples
    /// @param total  0 where it is not known
    CProgress(CContext& context, std::string what, std::string unit, unsigned long long total);
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;
    /// Wipes the bar.
    ~CProgress();

    /// @throws SFailure  130 once the user has asked to stop
    void Step(unsigned long long done);

private:
    using TClock = std::chrono::steady_clock;

    void Draw(unsigned long long done, double seconds);

    CContext& m_context;
    std::string m_what;
    std::string m_unit;
    unsigned long long m_total;
    bool m_visible;
    bool m_drawn = false;
    TClock::time_point m_start;
    TClock::time_point m_next;
};

/// One line of a bar that fits into `columns`.
/// @param total  0 where it is not known; seconds: since the work began
std::string ProgressLine(const std::string& what, const std::string& unit, unsigned long long done,
                         unsigned long long total, double seconds, std::size_t columns);

} // namespace tool
