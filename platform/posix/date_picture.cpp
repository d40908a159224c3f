// date_picture.cpp: pictures of dates and times taken apart.
#include "date_picture.h"

#include <algorithm>

namespace qel {

bool CPictureReader::Next(SPicturePiece& piece)
{
    if (!m_inQuotes && !m_rest.empty() && m_rest.front() == L'\'') {
        m_inQuotes = true;
        m_rest.remove_prefix(1);
    }
    if (m_rest.empty())
        return false;
    if (m_inQuotes) {
        piece = Quoted();
        return true;
    }
    const wchar_t first = m_rest.front();
    const bool isField = m_letters.find(first) != std::wstring_view::npos;
    const std::size_t count = isField ? std::min(m_rest.find_first_not_of(first), m_rest.size()) : 1;
    piece = {isField ? first : L'\0', isField ? count : 0, m_rest.substr(0, count), false};
    m_rest.remove_prefix(count);
    return true;
}

/// The text up to the closing quote, or up to and with the first quote of a doubled one.
SPicturePiece CPictureReader::Quoted()
{
    const std::size_t quote = std::min(m_rest.find(L'\''), m_rest.size());
    const bool doubled = quote + 1 < m_rest.size() && m_rest[quote + 1] == L'\'';
    const std::wstring_view text = m_rest.substr(0, doubled ? quote + 1 : quote);
    m_rest.remove_prefix(std::min(m_rest.size(), doubled ? quote + 2 : quote + 1));
    m_inQuotes = doubled;
    return {L'\0', 0, text, true};
}

} // namespace qel
