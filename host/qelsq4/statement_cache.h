// statement_cache.h: prepared statements kept by their text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3_stmt;

namespace qel {

/// A prepared statement with the text that it came from.
struct SKeptStatement
{
    std::wstring text;
    sqlite3_stmt* statement = nullptr;
    std::uint64_t lastUse = 0;
    bool idle = false;
};

/// The prepared statements of one connection, idle and in use; several may have the same text. Not copied.
///
/// Finding an idle one takes no memory. The number of idle ones is bounded: the one that was not used for
/// the longest time is finalised first.
class CStatementCache
{
public:
    static constexpr std::size_t kMostIdle = 128;

    CStatementCache() = default;
    CStatementCache(const CStatementCache&) = delete;
    CStatementCache& operator=(const CStatementCache&) = delete;
    ~CStatementCache();

    /// Hands out an idle statement of this text; null when there is none.
    SKeptStatement* Take(std::wstring_view text);
    /// Enters a statement that was just prepared and hands it out; finalises it if memory runs out.
    SKeptStatement* Enter(std::wstring_view text, sqlite3_stmt* statement);
    /// Whether an idle statement of this text is kept; it then counts as used.
    bool Has(std::wstring_view text);
    /// Takes a statement back: reset, so that it holds no lock, and without bindings, so that the next user
    /// finds it as a fresh one.
    /// @param bound  whether anything was bound since it was handed out
    void GiveBack(SKeptStatement* kept, bool bound) noexcept;
    /// Finalises every statement, those in use as well.
    void Clear() noexcept;

    std::size_t Count() const { return m_statements.size(); }

private:
    // Texts differ in their length or in some character that a coarse look meets; equality does the rest.
    struct SCoarseHash
    {
        std::size_t operator()(std::wstring_view text) const noexcept;
    };
    using TStatements =
        std::unordered_multimap<std::wstring_view, std::unique_ptr<SKeptStatement>, SCoarseHash>;

    SKeptStatement* FindIdle(std::wstring_view text);
    void DropOldest() noexcept;

    TStatements m_statements; // keys are views of the texts inside
    std::size_t m_idle = 0;
    std::uint64_t m_clock = 0;
};

} // namespace qel
