// statement_cache.cpp: prepared statements kept by their text.
#include "statement_cache.h"

#include <sqlite3.h>

namespace qel {

std::size_t CStatementCache::SCoarseHash::operator()(std::wstring_view text) const noexcept
{
    constexpr std::size_t kLooks = 12;
    const std::size_t step = text.size() / kLooks + 1;
    std::uint32_t hash = static_cast<std::uint32_t>(text.size());
    for (std::size_t at = step - 1; at < text.size(); at += step)
        hash = hash * 31 + static_cast<std::uint32_t>(text[at]);
    return hash;
}

CStatementCache::~CStatementCache()
{
    Clear();
}

SKeptStatement* CStatementCache::FindIdle(std::wstring_view text)
{
    const auto [first, last] = m_statements.equal_range(text);
    for (auto it = first; it != last; ++it) {
        if (it->second->idle)
            return it->second.get();
    }
    return nullptr;
}

SKeptStatement* CStatementCache::Take(std::wstring_view text)
{
    SKeptStatement* const kept = FindIdle(text);
    if (kept != nullptr) {
        kept->idle = false;
        --m_idle;
    }
    return kept;
}

bool CStatementCache::Has(std::wstring_view text)
{
    SKeptStatement* const kept = FindIdle(text);
    if (kept != nullptr)
        kept->lastUse = ++m_clock;
    return kept != nullptr;
}

SKeptStatement* CStatementCache::Enter(std::wstring_view text, sqlite3_stmt* statement)
{
    try {
        auto kept = std::make_unique<SKeptStatement>();
        kept->text = text;
        const std::wstring_view key = kept->text;
        const auto it = m_statements.emplace(key, std::move(kept));
        it->second->statement = statement;
        return it->second.get();
    } catch (...) {
        sqlite3_finalize(statement);
        throw;
    }
}

void CStatementCache::GiveBack(SKeptStatement* kept, bool bound) noexcept
{
    sqlite3_reset(kept->statement);
    if (bound)
        sqlite3_clear_bindings(kept->statement);
    kept->idle = true;
    kept->lastUse = ++m_clock;
    if (++m_idle > kMostIdle)
        DropOldest();
}

void CStatementCache::DropOldest() noexcept
{
    auto oldest = m_statements.end();
    for (auto it = m_statements.begin(); it != m_statements.end(); ++it) {
        if (it->second->idle &&
            (oldest == m_statements.end() || it->second->lastUse < oldest->second->lastUse))
            oldest = it;
    }
    sqlite3_finalize(oldest->second->statement);
    m_statements.erase(oldest);
    --m_idle;
}

void CStatementCache::Clear() noexcept
{
    for (auto& [text, kept] : m_statements)
        sqlite3_finalize(kept->statement);
    m_statements.clear();
    m_idle = 0;
}

} // namespace qel
