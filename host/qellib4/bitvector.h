// bitvector.h: a set of bits for object ids in use.
#pragma once

#include <qellib4/export.h>

#include <array>
#include <cstdint>
#include <map>
#include <vector>

/// A set of bits indexed from 0; memory goes with the number of bits set, not with the highest.
class QELLIB4_API CBitVector
{
public:
    CBitVector() = default;
    CBitVector(const CBitVector&) = default;
    CBitVector(CBitVector&&) noexcept = default;
    CBitVector& operator=(const CBitVector&) = default;
    CBitVector& operator=(CBitVector&&) noexcept = default;
    virtual ~CBitVector();

    /// Takes stored words, the low 32 bits of each, bit 0 the lowest of the first word.
    CBitVector& operator=(const std::vector<unsigned long>& words);
    /// Drops every bit; the size becomes 0.
    void Clear();
    /// Number of bits held, a multiple of the growth step; 0 when nothing was ever set. At the top of the
    /// range, the largest multiple that an unsigned int holds.
    unsigned int Size() const { return m_size; }
    /// Whether the bit is set; false for any bit that is not held.
    bool Test(unsigned int bit) const;
    /// Sets one bit and grows the vector to the next multiple of `growth` bits that holds it.
    /// @param growth  0 counts as 1
    void Set(unsigned int bit, unsigned int growth);

private:
    static constexpr unsigned int kWordsOfPage = 32;
    using TPage = std::array<std::uint32_t, kWordsOfPage>;

    std::map<unsigned int, TPage> m_pages; // by page number; a page without bits is not held
    unsigned int m_size = 0;
};
