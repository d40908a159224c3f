// date_scan.cpp: dates as people type them, taken apart into numbers and words.
#include "date_scan.h"

#include "date_parts.h"
#include "text_scan.h"

namespace qel {
namespace {

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

/// Takes a typed date apart from left to right.
class CDateReader
{
public:
    CDateReader(std::wstring_view text, const SDateWords& words) : m_text(LowerCase(text)), m_words(words)
    {
        m_rest = m_text;
    }

    bool Read(SDateParts& parts)
    {
        while (!m_rest.empty())
            if (!ReadBlank() && !ReadNumber() && !ReadDateSign() && !ReadTimeSign() && !ReadWord())
                return false;
        // "1.2." is a date in full; every other sign wants something behind it.
        const bool isOpen =
            m_pending == EPending::eTime || (m_pending == EPending::eDate && !IsStopDateSign());
        parts = std::move(m_parts);
        return !isOpen;
    }

private:
    enum class EPending
    {
        eNothing,
        eDate,
        eTime,
    };

    bool Take(std::wstring_view sign)
    {
        if (sign.empty() || m_rest.substr(0, sign.size()) != sign)
            return false;
        m_rest.remove_prefix(sign.size());
        return true;
    }

    bool ReadBlank()
    {
        if (!IsBlank(m_rest[0]) && m_rest[0] != L',')
            return false;
        if (m_rest[0] == L',' && m_isFirst)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    bool ReadNumber()
    {
        if (!IsDigit(m_rest[0]))
            return false;
        SDateNumber number;
        number.continuesTime = m_pending == EPending::eTime;
        for (; !m_rest.empty() && IsDigit(m_rest[0]); m_rest.remove_prefix(1))
            if (number.value <= kLastYear)
                number.value = number.value * 10 + (m_rest[0] - L'0');
        m_parts.numbers.push_back(number);
        SetRead(true);
        return true;
    }

    bool IsStopDateSign() const { return m_words.dateSign == L"."; }

    bool ReadDateSign()
    {
        if (m_isFirst || m_pending == EPending::eTime)
            return false;
        if (!Take(L"-") && !Take(L"/") && !Take(m_words.dateSign))
            return false;
        m_pending = EPending::eDate;
        return true;
    }

    // A full stop is one unless it stands between the numbers of a date; after a word it means nothing.
    bool ReadTimeSign()
    {
        if (m_isFirst || m_pending == EPending::eDate)
            return false;
        if (!m_isAfterNumber)
            return m_pending == EPending::eNothing && Take(L".");
        if (!Take(L":") && !Take(L"."))
            return false;
        m_pending = EPending::eTime;
        return true;
    }

    void SetRead(bool isNumber)
    {
        m_pending = EPending::eNothing;
        m_isFirst = false;
        m_isAfterNumber = isNumber;
    }

    // The longest word counts; among equally long ones the first that was looked for.
    struct SWord
    {
        std::size_t length = 0;
        int month = 0;
        EHalfDay half = EHalfDay::eNone;
    };

    void Improve(SWord& best, const std::vector<std::wstring>& words, int month, EHalfDay half) const
    {
        for (const std::wstring& word : words)
            if (word.size() > best.length && m_rest.substr(0, word.size()) == word)
                best = {word.size(), month, half};
    }

    bool ReadWord()
    {
        if (m_pending == EPending::eTime)
            return false;
        SWord best;
        for (std::size_t i = 0; i < m_words.months.size(); ++i)
            Improve(best, m_words.months[i], static_cast<int>(i) + 1, EHalfDay::eNone);
        Improve(best, m_words.morning, 0, EHalfDay::eMorning);
        Improve(best, m_words.afternoon, 0, EHalfDay::eAfternoon);
        Improve(best, m_words.days, 0, EHalfDay::eNone); // looked for, and said nothing of
        return best.length != 0 && TakeWord(best);
    }

    bool TakeWord(const SWord& word)
    {
        if ((word.month != 0 && m_parts.month != 0) ||
            (word.half != EHalfDay::eNone && m_parts.half != EHalfDay::eNone))
            return false;
        if (word.month != 0)
            m_parts.month = word.month;
        if (word.half != EHalfDay::eNone) {
            m_parts.half = word.half;
            m_parts.halfAt = m_parts.numbers.size();
        }
        m_rest.remove_prefix(word.length);
        SetRead(false);
        return true;
    }

    std::wstring m_text;
    const SDateWords& m_words;
    std::wstring_view m_rest;
    SDateParts m_parts;
    EPending m_pending = EPending::eNothing;
    bool m_isFirst = true;
    bool m_isAfterNumber = false;
};

} // namespace

bool ReadDate(std::wstring_view text, const SDateWords& words, double& date)
{
    SDateParts parts;
    return CDateReader(text, words).Read(parts) && DateOfParts(parts, words.order, words.thisYear, date);
}

} // namespace qel
