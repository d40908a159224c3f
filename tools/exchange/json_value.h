// json_value.h: values as JSON, without loss.
#pragma once

#include <nlohmann/json.hpp>
#include <qelprop4/qelprop4.h>

#include <string>
#include <string_view>

namespace tool {

/// A value as JSON; never holds what a writer of JSON could not write (NaN, a lone surrogate).
nlohmann::json ToJson(const CQelProperty& value);

/// Reads JSON as a value of a column's type; null gives Null for every type.
/// @param value  out: unchanged on failure
/// @param error  out, on failure: what was there and what is wanted
bool FromJson(const nlohmann::json& json, CQelProperty::EType type, CQelProperty& value, std::string& error);

/// A value of a column as JSON that gives back the very same stored bytes: what ToJson gives where that
/// does, else {"$stored": base64 of the stored bytes}. For a value of another type than its column's, a
/// NaN with bits of its own, a text without its terminator.
nlohmann::json ToExactJson(const CQelProperty& value, CQelProperty::EType columnType);
/// Reads what ToExactJson writes. Parameters as FromJson.
bool FromExactJson(const nlohmann::json& json, CQelProperty::EType columnType, CQelProperty& value,
                   std::string& error);

/// A text as a JSON string, or as {"$utf16": base64 of its units} if it holds a lone surrogate.
nlohmann::json TextToJson(const std::wstring& text);
/// @param text  out: unchanged on failure
bool TextFromJson(const nlohmann::json& json, std::wstring& text);

/// A whole number within bounds; `most` is not negative.
/// @throws std::invalid_argument  for any other JSON
long long WholeIn(const nlohmann::json& json, long long least, long long most);

/// Reads one JSON text; refuses keys that occur twice, numbers that no double holds, and brackets in each
/// other beyond a depth that no value has.
/// @param json   out: unchanged on failure
/// @param error  out, on failure
bool ParseJson(std::string_view text, nlohmann::json& json, std::string& error);

} // namespace tool
