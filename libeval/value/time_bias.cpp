// time_bias.cpp: a time bias as text.
#include <qelprop4/qelproperty.h>

#include "property_access.h"

#include <qelplat4/crt.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kMinutesPerHour = 60;
constexpr int kMostHours = 24;
constexpr int kMostMinutes = 60;

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

int NumberIn(const std::wstring& text, std::size_t from, int most)
{
    return std::min(_wtoi(text.substr(from, 2).c_str()), most);
}

} // namespace

std::wstring CQelProperty::GetTimeBIAS() const
{
    if (m_data.nTimeBias == qel::kNoBias)
        return {};
    const long minutes = std::labs(m_data.nTimeBias % kMinutesPerHour);
    char text[32];
    const int length =
        std::snprintf(text, sizeof text, "%+03d%02ld", m_data.nTimeBias / kMinutesPerHour, minutes);
    return {text, text + length};
}

bool CQelProperty::ParseTimeBIAS(const std::wstring& text, int& bias)
{
    bias = qel::kNoBias;
    std::wstring digits = text;
    int sign = 1;
    if (text.size() == 5) {
        if (text[0] != L'+' && text[0] != L'-')
            return false;
        sign = text[0] == L'-' ? -1 : 1;
        digits.erase(0, 1);
    } else if (text.size() != 4 || !std::all_of(text.begin(), text.end(), IsDigit)) {
        return false;
    }
    // The sign is the hours' alone: biases stored so far were read this way.
    bias = NumberIn(digits, 2, kMostMinutes) + sign * NumberIn(digits, 0, kMostHours) * kMinutesPerHour;
    return true;
}
