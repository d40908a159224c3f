// json_value.h: values as JSON, without loss.
#pragma once

#include <nlohmann/json.hpp>
#include <qelprop4/qelprop4.h>

#include <string>

namespace tool {

/// A value as JSON; never holds what a writer of JSON could not write (NaN, a lone surrogate).
nlohmann::json ToJson(const CQelProperty& value);

/// Reads JSON as a value of a column's type; null gives Null for every type.
/// @param value  out: unchanged on failure
/// @param error  out, on failure: what was there and what is wanted
bool FromJson(const nlohmann::json& json, CQelProperty::EType type, CQelProperty& value, std::string& error);

} // namespace tool
