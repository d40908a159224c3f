// bitvector.cpp: a sparse set of bits, held in pages.
#include <qellib4/bitvector.h>

#include <algorithm>
#include <limits>

namespace {

constexpr unsigned int kBitsOfWord = 32;
constexpr unsigned long long kMostBits = std::numeric_limits<unsigned int>::max();

} // namespace

CBitVector::~CBitVector() = default;

CBitVector& CBitVector::operator=(const std::vector<unsigned long>& words)
{
    Clear();
    // What stands behind the last 32-bit number has no index.
    const std::size_t count = std::min<std::size_t>(words.size(), std::size_t{1} << (32 - 5));
    for (std::size_t i = 0; i < count; ++i) {
        const auto word = static_cast<std::uint32_t>(words[i] & 0xFFFFFFFFUL);
        if (word != 0)
            m_pages[static_cast<unsigned int>(i / kWordsOfPage)][i % kWordsOfPage] = word;
    }
    constexpr unsigned long long kMostWords = kMostBits / kBitsOfWord;
    m_size = static_cast<unsigned int>(std::min<unsigned long long>(count, kMostWords) * kBitsOfWord);
    return *this;
}

void CBitVector::Clear()
{
    m_pages.clear();
    m_size = 0;
}

bool CBitVector::Test(unsigned int bit) const
{
    const unsigned int word = bit / kBitsOfWord;
    const auto page = m_pages.find(word / kWordsOfPage);
    return page != m_pages.end() && (page->second[word % kWordsOfPage] >> bit % kBitsOfWord & 1u) != 0;
}

void CBitVector::Set(unsigned int bit, unsigned int growth)
{
    const unsigned int word = bit / kBitsOfWord;
    m_pages[word / kWordsOfPage][word % kWordsOfPage] |= 1u << bit % kBitsOfWord;
    const unsigned long long step = std::max(growth, 1u);
    const unsigned long long steps = std::min((bit + step) / step, kMostBits / step);
    m_size = std::max(m_size, static_cast<unsigned int>(steps * step));
}
