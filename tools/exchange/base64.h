// base64.h: bytes as base64 with padding, the form of binary values in exchanged text.
#pragma once

#include <string>
#include <string_view>

namespace tool {

std::string ToBase64(std::string_view bytes);

/// Reads base64; line breaks are passed over.
/// @param bytes  out: unchanged on failure
/// @return false for other characters, missing padding, or bits that no byte could have given
bool FromBase64(std::string_view text, std::string& bytes);

} // namespace tool
