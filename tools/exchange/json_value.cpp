// json_value.cpp: numbers as numbers, what JSON lacks as small objects.
#include "json_value.h"

#include "base64.h"
#include "neutral_text.h"
#include "value_parts.h"

#include <qelplat4/utf16.h>

#include <cmath>
#include <limits>
#include <set>
#include <stdexcept>

namespace tool {
namespace {

constexpr const char* kUtf16 = "$utf16";
constexpr const char* kBase64 = "$base64";
constexpr const char* kEncoded = "encoded";
constexpr const char* kStored = "$stored";
constexpr const char* kAmount = "amount";
constexpr const char* kSymbol = "symbol";
constexpr int kDeepest = 100;

nlohmann::json UnitsToJson(const std::u16string& units)
{
    if (IsWellFormed(units))
        return qel::ToUtf8(qel::FromUtf16(units.data(), units.size()));
    std::string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF); // little-endian, whatever the machine
        bytes += static_cast<char>(unit >> 8);
    }
    return {{kUtf16, ToBase64(bytes)}};
}

nlohmann::json DoubleToJson(double number)
{
    if (std::isnan(number))
        return "NaN";
    if (std::isinf(number))
        return number < 0 ? "-Infinity" : "Infinity";
    return number;
}

nlohmann::json StoredToJson(const CQelProperty& value)
{
    return {{kStored, ToBase64(StoredBytes(value))}};
}

/// The text under a key of an object with just so many keys; null when there is none.
const std::string* Member(const nlohmann::json& json, const char* key, std::size_t keys)
{
    if (!json.is_object() || json.size() != keys || !json.contains(key) || !json[key].is_string())
        return nullptr;
    return json[key].get_ptr<const std::string*>();
}

std::string Shown(const nlohmann::json& json)
{
    constexpr std::size_t kLongest = 40;
    const std::string text = json.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
    return text.size() <= kLongest ? text : text.substr(0, kLongest) + "...";
}

bool ReadText(const nlohmann::json& json, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    std::wstring text;
    if (!TextFromJson(json, text)) {
        error = Shown(json) + " is no text (want a string)";
        return false;
    }
    value = TextOf(type, text);
    return true;
}

bool ReadBlob(const nlohmann::json& json, CQelProperty& value, std::string& error)
{
    const std::string* encoded = Member(json, kEncoded, 2);
    std::string bytes;
    const bool marked = encoded != nullptr && json.contains(kBase64) && json[kBase64] == true;
    if (!marked || !FromBase64(*encoded, bytes) || bytes.size() > std::numeric_limits<unsigned int>::max()) {
        error = Shown(json) + R"( is no binary value (want {"$base64":true,"encoded":"..."}))";
        return false;
    }
    value = BlobOf(bytes);
    return true;
}

bool ReadCurrency(const nlohmann::json& json, CQelProperty& value, std::string& error)
{
    long long amount = 0;
    std::wstring symbol;
    const bool hasSymbol = json.contains(kSymbol);
    const std::string* text = Member(json, kAmount, hasSymbol ? 2 : 1);
    const bool good = text != nullptr && AmountFromText(*text, amount) &&
                      (!hasSymbol || TextFromJson(json[kSymbol], symbol));
    if (!good) {
        error = Shown(json) + R"( is no amount (want {"amount":"12.3400","symbol":"EUR"}))";
        return false;
    }
    value = CurrencyOf(amount, symbol);
    return true;
}

bool ReadDouble(const nlohmann::json& json, CQelProperty& value)
{
    if (!json.is_number())
        return false;
    value = CQelProperty();
    value.SetDouble(json.get<double>());
    return true;
}

/// Forgets the first words of the reader's messages, which name its own classes.
std::string PlainMessage(const std::string& message)
{
    const std::size_t end = message.find("] ");
    return end == std::string::npos ? message : message.substr(end + 2);
}

/// The reader counts lines in the piece of a file that it was given, so that a place is told in its bytes.
std::string PlainMessage(const nlohmann::json::parse_error& failure)
{
    const std::string message = PlainMessage(std::string(failure.what()));
    const std::size_t place = message.find(": ");
    const std::string words = place == std::string::npos ? message : message.substr(place + 2);
    return "no JSON at byte " + std::to_string(failure.byte) + ": " + words;
}

/// Watches a reader for keys that occur twice in one object.
class CKeyWatch
{
public:
    void See(nlohmann::json::parse_event_t event, const nlohmann::json& parsed)
    {
        if (event == nlohmann::json::parse_event_t::object_start)
            m_objects.emplace_back();
        else if (event == nlohmann::json::parse_event_t::object_end)
            m_objects.pop_back();
        else if (event == nlohmann::json::parse_event_t::key && !m_objects.empty())
            Add(parsed.get_ref<const std::string&>());
    }
    const std::string* Twice() const { return m_found ? &m_twice : nullptr; }

private:
    void Add(const std::string& key)
    {
        if (m_objects.back().insert(key).second || m_found)
            return;
        m_twice = key;
        m_found = true;
    }

    std::vector<std::set<std::string>> m_objects;
    std::string m_twice;
    bool m_found = false;
};

} // namespace

nlohmann::json TextToJson(const std::wstring& text)
{
    return UnitsToJson(qel::ToUtf16(text));
}

bool TextFromJson(const nlohmann::json& json, std::wstring& text)
{
    if (json.is_string())
        return ReadUtf8(json.get_ref<const std::string&>(), text);
    const std::string* encoded = Member(json, kUtf16, 1);
    std::string bytes;
    if (encoded == nullptr || !FromBase64(*encoded, bytes) || bytes.size() % 2 != 0)
        return false;
    std::u16string units;
    for (std::size_t place = 0; place < bytes.size(); place += 2)
        units += static_cast<char16_t>(static_cast<unsigned char>(bytes[place]) |
                                       (static_cast<unsigned char>(bytes[place + 1]) << 8));
    text = qel::FromUtf16(units.data(), units.size());
    return true;
}

nlohmann::json ToJson(const CQelProperty& value)
{
    const CQelProperty::UValue& payload = value.Data().uValue;
    switch (value.GetType()) {
    case CQelProperty::eNull:
        return nullptr;
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return UnitsToJson(UnitsOf(value));
    case CQelProperty::eInt:
        return payload.nInt;
    case CQelProperty::eUInt:
        return payload.nUInt;
    case CQelProperty::eInt64:
        return payload.nInt64;
    case CQelProperty::eUInt64:
        return payload.nUInt64;
    case CQelProperty::eDouble:
        return DoubleToJson(payload.dDouble);
    case CQelProperty::eBool:
        return (PayloadOf(value) & 0xFF) != 0;
    case CQelProperty::eCurrency:
        return {{kAmount, AmountToText(payload.nCurrency)},
                {kSymbol, TextToJson(value.Data().sCurrencySymbol)}};
    case CQelProperty::eReference:
        return payload.nULong;
    case CQelProperty::eBlob:
        return {{kBase64, true}, {kEncoded, ToBase64(BufferOf(value))}};
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return ToNeutralText(value);
    }
    return StoredToJson(value);
}

bool FromJson(const nlohmann::json& json, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    if (json.is_null()) {
        value = CQelProperty();
        return true;
    }
    if (IsTextType(type))
        return ReadText(json, type, value, error);
    if (type == CQelProperty::eBlob)
        return ReadBlob(json, value, error);
    if (type == CQelProperty::eCurrency && json.is_object())
        return ReadCurrency(json, value, error);
    if (type == CQelProperty::eDouble && ReadDouble(json, value))
        return true;
    const bool plain = json.is_string() || json.is_number() || json.is_boolean();
    if (!plain) {
        error = Shown(json) + " is no value of this column";
        return false;
    }
    // A number is written as it was read, so that a fraction is refused where a whole number is wanted.
    return FromNeutralText(json.is_string() ? json.get<std::string>() : json.dump(), type, value, error);
}

nlohmann::json ToExactJson(const CQelProperty& value, CQelProperty::EType columnType)
{
    nlohmann::json json = ToJson(value);
    CQelProperty back;
    std::string error;
    if (FromExactJson(json, columnType, back, error) && IsSameValue(back, value))
        return json;
    return StoredToJson(value);
}

bool FromExactJson(const nlohmann::json& json, CQelProperty::EType columnType, CQelProperty& value,
                   std::string& error)
{
    const std::string* stored = Member(json, kStored, 1);
    if (stored == nullptr)
        return FromJson(json, columnType, value, error);
    std::string bytes;
    if (FromBase64(*stored, bytes) && FromStoredBytes(bytes, value))
        return true;
    error = Shown(json) + " is no stored value";
    return false;
}

bool ParseJson(std::string_view text, nlohmann::json& json, std::string& error)
{
    CKeyWatch keys;
    const auto watch = [&](int depth, nlohmann::json::parse_event_t event, nlohmann::json& parsed) {
        if (depth > kDeepest) // what is read is followed into its depth, for which the stack has an end
            throw std::length_error("brackets stand in each other more than " + std::to_string(kDeepest) +
                                    " deep");
        keys.See(event, parsed);
        return true;
    };
    try {
        nlohmann::json read = nlohmann::json::parse(text.begin(), text.end(), watch);
        if (keys.Twice() == nullptr) {
            json = std::move(read);
            return true;
        }
        error = "the key '" + *keys.Twice() + "' occurs twice";
    } catch (const nlohmann::json::parse_error& failure) {
        error = PlainMessage(failure);
    } catch (const nlohmann::json::exception& failure) {
        error = PlainMessage(std::string(failure.what()));
    } catch (const std::length_error& failure) {
        error = failure.what();
    }
    return false;
}

long long WholeIn(const nlohmann::json& json, long long least, long long most)
{
    const bool inRange = json.is_number_unsigned()
                             ? json.get<unsigned long long>() <= static_cast<unsigned long long>(most)
                             : json.is_number_integer() && json.get<long long>() <= most;
    if (!inRange || json.get<long long>() < least)
        throw std::invalid_argument(Shown(json) + " is no whole number from " + std::to_string(least) +
                                    " to " + std::to_string(most));
    return json.get<long long>();
}

} // namespace tool
