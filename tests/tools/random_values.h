// random_values.h: values of every type for property tests, the unlikely ones often.
#pragma once

#include "exchange/value_parts.h"

#include <qelplat4/oleauto.h>
#include <qelplat4/utf16.h>
#include <rapidcheck.h>

#include <cstring>
#include <limits>

namespace qeltest {

/// How much of a text's range is drawn.
enum class ETexts
{
    eWellFormed,
    eAny ///< lone surrogates as well
};

inline std::wstring RandomText(ETexts texts)
{
    const auto units = *rc::gen::container<std::vector<char16_t>>(rc::gen::weightedOneOf<char16_t>(
        {{8, rc::gen::inRange<char16_t>(u' ', 127)},
         {4, rc::gen::element<char16_t>(u'"', u',', u'\n', u'\r', u'\t', u';', u' ', u'\'', u'\\')},
         {3, rc::gen::inRange<char16_t>(0, 0xD800)},
         {1, rc::gen::inRange<char16_t>(0xD800, 0xE000)}}));
    std::u16string text(units.begin(), units.end());
    if (texts == ETexts::eWellFormed && !tool::IsWellFormed(text))
        text = u"\U0001F697 " + std::u16string(text.size(), u'x');
    return qel::FromUtf16(text.data(), text.size());
}

inline double RandomDouble()
{
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    double any = 0.0;
    std::memcpy(&any, &bits, sizeof any);
    const double usual = *rc::gen::arbitrary<double>();
    using Limits = std::numeric_limits<double>;
    const double number = *rc::gen::element(any, usual, 0.1, -0.0, Limits::infinity(), -Limits::infinity(),
                                            Limits::denorm_min(), Limits::max());
    return number != number ? Limits::quiet_NaN() : number;
}

inline double RandomDate()
{
    const double day = *rc::gen::inRange(-657434, 2958466);
    const double second = *rc::gen::inRange(0, 86400);
    SYSTEMTIME fields{};
    double whole = day + second / 86400.0;
    if (VariantTimeToSystemTime(day, &fields) != 0) {
        fields.wHour = static_cast<WORD>(second / 3600);
        fields.wMinute = 17;
        SystemTimeToVariantTime(&fields, &whole);
    }
    return *rc::gen::element(day, whole, day + second / 86400.0, RandomDouble());
}

template <class Number>
Number RandomNumber()
{
    using Limits = std::numeric_limits<Number>;
    return *rc::gen::element(*rc::gen::arbitrary<Number>(), Limits::min(), Limits::max(), Number{0});
}

/// A value of the type; Null now and then.
inline CQelProperty RandomValue(CQelProperty::EType type, ETexts texts)
{
    CQelProperty value;
    if (*rc::gen::inRange(0, 8) == 0)
        return value;
    switch (type) {
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return tool::TextOf(type, RandomText(texts));
    case CQelProperty::eInt:
        value.SetInt(RandomNumber<int>());
        break;
    case CQelProperty::eUInt:
        value.SetInt(RandomNumber<unsigned int>());
        break;
    case CQelProperty::eInt64:
        value.SetInt64(RandomNumber<long long>());
        break;
    case CQelProperty::eUInt64:
        value.SetInt64(RandomNumber<unsigned long long>());
        break;
    case CQelProperty::eDouble:
        value.SetDouble(RandomDouble());
        break;
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return tool::DateOf(type, RandomDate());
    case CQelProperty::eBool:
        value.SetBool(*rc::gen::arbitrary<bool>());
        break;
    case CQelProperty::eCurrency:
        return tool::CurrencyOf(RandomNumber<long long>(), RandomText(texts));
    case CQelProperty::eReference:
        value.SetReference(RandomNumber<std::uint32_t>());
        break;
    case CQelProperty::eBlob:
        return tool::BlobOf(*rc::gen::arbitrary<std::string>());
    case CQelProperty::eNull:
        break;
    }
    return value;
}

inline CQelProperty::EType RandomType()
{
    return static_cast<CQelProperty::EType>(*rc::gen::inRange(1, 15));
}

} // namespace qeltest
