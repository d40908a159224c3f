// progress.cpp: draws a bar some times a second.
#include "progress.h"

#include "amount_text.h"
#include "screen_text.h"

#include <algorithm>
#include <cstdio>

namespace tool {
namespace {

constexpr std::chrono::milliseconds kPause(100);
constexpr double kShortest = 0.001; // seconds; a rate over less says nothing

std::string AmountText(const std::string& unit, unsigned long long amount)
{
    return unit == "bytes" ? SizeText(amount) : GroupedText(amount) + ' ' + unit;
}

std::string TimeText(double seconds)
{
    constexpr double kLongest = 359999; // 99:59:59
    const auto whole = static_cast<unsigned>(std::min(std::max(seconds, 0.0), kLongest));
    constexpr std::size_t kRoom = 32;
    char text[kRoom];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "%u:%02u:%02u", whole / 3600, whole / 60 % 60, whole % 60);
    else
        std::snprintf(text, sizeof text, "%u:%02u", whole / 60, whole % 60);
    return text;
}

std::string Bar(double part, std::size_t length)
{
    const auto full = static_cast<std::size_t>(part * static_cast<double>(length));
    return '[' + std::string(full, '#') + std::string(length - full, '.') + ']';
}

/// The longest bar that leaves the numbers their room; the usual one where they have none anyway.
std::size_t BarLength(std::size_t others, std::size_t columns)
{
    constexpr std::size_t kUsual = 20;
    constexpr std::size_t kEnds = 2;
    return columns > others + kEnds ? std::min(kUsual, columns - others - kEnds) : kUsual;
}

} // namespace

std::string ProgressLine(const std::string& what, const std::string& unit, unsigned long long done,
                         unsigned long long total, double seconds, std::size_t columns)
{
    const double rate = static_cast<double>(done) / std::max(seconds, kShortest);
    std::string numbers =
        AmountText(unit, done) + ", " + AmountText(unit, static_cast<unsigned long long>(rate)) + "/s";
    if (total > done && rate > 0)
        numbers += ", " + TimeText(static_cast<double>(total - done) / rate) + " left";
    std::string line = OneLine(Wide(what)) + ' ';
    if (total > 0) {
        const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
        numbers = ' ' + std::to_string(static_cast<int>(part * 100)) + "% " + numbers;
        line += Bar(part, BarLength(Columns(line) + numbers.size(), columns));
    }
    line += numbers;
    return Cut(line, columns);
}

CProgress::CProgress(CContext& context, std::string what, std::string unit, unsigned long long total)
    : m_context(context), m_what(std::move(what)), m_unit(std::move(unit)), m_total(total),
      m_visible(context.WantsProgress()), m_start(TClock::now()), m_next(m_start + kPause)
{}

CProgress::~CProgress()
{
    if (m_drawn)
        m_context.Err() << "\r\033[K" << std::flush;
}

void CProgress::Step(unsigned long long done)
{
    m_context.CheckInterrupt();
    if (!m_visible)
        return;
    const TClock::time_point now = TClock::now();
    if (now < m_next)
        return;
    m_next = now + kPause;
    Draw(done, std::chrono::duration<double>(now - m_start).count());
}

void CProgress::Draw(unsigned long long done, double seconds)
{
    // The last column stays free: some terminals go on to the next line there.
    const auto columns = static_cast<std::size_t>(std::max(m_context.Surroundings().columns, 2) - 1);
    m_context.Err() << '\r' << ProgressLine(m_what, m_unit, done, m_total, seconds, columns) << "\033[K"
                    << std::flush;
    m_drawn = true;
}

} // namespace tool
