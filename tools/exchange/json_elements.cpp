// json_elements.cpp: counts brackets outside of strings.
#include "json_elements.h"

#include "adaptor/failure.h"
#include "output/amount_text.h"

namespace tool {
namespace {

constexpr int kEnd = std::char_traits<char>::eof();

bool IsBlank(int letter)
{
    return letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
}

} // namespace

void CJsonElements::Fail(const std::string& message) const
{
    throw LineFailure(EExit::eRefused, m_line, message);
}

int CJsonElements::Take()
{
    const int letter = m_in.get();
    if (letter == kEnd && m_in.bad())
        throw LineFailure(EExit::eFailed, m_line, "cannot read on");
    if (letter == '\n')
        ++m_line;
    m_bytesRead += letter == kEnd ? 0 : 1;
    return letter;
}

int CJsonElements::TakeSolid()
{
    int letter = Take();
    while (IsBlank(letter))
        letter = Take();
    return letter;
}

int CJsonElements::Begin()
{
    int letter = TakeSolid();
    constexpr int kMark[] = {0xEF, 0xBB, 0xBF};
    if (letter == kMark[0] && Take() == kMark[1] && Take() == kMark[2])
        letter = TakeSolid();
    m_single = letter == '{';
    if (letter != '[' && !m_single)
        Fail("no array of JSON objects begins here");
    m_place = EPlace::eArray;
    return m_single ? letter : TakeSolid();
}

void CJsonElements::Put(int letter, std::string& text) const
{
    if (text.size() >= m_largest)
        Fail("an object of over " + SizeText(m_largest));
    text += static_cast<char>(letter);
}

void CJsonElements::TakeText(std::string& text)
{
    for (int letter = Take(); letter != kEnd; letter = Take()) {
        Put(letter, text);
        if (letter == '"')
            return;
        if (letter == '\\')
            Put(Take(), text);
    }
    Fail("the file ends inside a text");
}

void CJsonElements::TakeElement(int first, std::string& text)
{
    text.clear();
    std::size_t depth = 0;
    for (int letter = first; letter != kEnd; letter = Take()) {
        Put(letter, text);
        if (letter == '"')
            TakeText(text);
        else if (letter == '{' || letter == '[')
            ++depth;
        else if ((letter == '}' || letter == ']') && depth > 0)
            --depth;
        const int next = m_in.peek();
        if (depth == 0 && (letter == '}' || letter == ']' || next == ',' || next == ']' || IsBlank(next)))
            return;
    }
    Fail("the file ends inside an object");
}

bool CJsonElements::Next(std::string& text, unsigned long long& line)
{
    if (m_place == EPlace::eEnd)
        return false;
    const bool first = m_place == EPlace::eBegin;
    int letter = first ? Begin() : TakeSolid();
    if (m_place == EPlace::eElement && !m_single) {
        if (letter == ',') {
            letter = TakeSolid();
            if (letter == ']')
                Fail("no object follows the comma");
        } else if (letter != ']') {
            Fail("a comma or a closing bracket is missing here");
        } else {
            m_place = EPlace::eEnd;
        }
    } else if (letter == ']' || (m_single && !first)) {
        m_place = EPlace::eEnd;
    }
    if (m_place == EPlace::eEnd) {
        if ((m_single ? letter : TakeSolid()) != kEnd)
            Fail("something follows the end of the JSON text");
        return false;
    }
    line = m_line;
    ++m_count;
    TakeElement(letter, text);
    m_place = EPlace::eElement;
    return true;
}

} // namespace tool
