// hex.h: bytes as text, for literal expectations.
#pragma once

#include <qellib4/qelmemfile.h>
#include <qellib4/tavblob.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace qeltest {

/// Bytes as hexadecimal digits, "0a1bff"; a blank stands wherever `groups` puts one.
/// @param groups  sizes of the groups in bytes, "2 4 8"; the last holds for the rest; "" writes one run
std::string HexOf(const void* data, std::size_t size, std::string_view groups = "");
std::string HexOf(const std::string& bytes, std::string_view groups = "");
std::string HexOf(const std::vector<unsigned char>& bytes, std::string_view groups = "");
std::string HexOf(const TavBlob& blob, std::string_view groups = "");
/// The whole stream, wherever its position stands, which it leaves.
std::string HexOf(CQelMemFile& file, std::string_view groups = "");

/// Any object that has a stream operator, as the bytes that it writes.
template <class Value, class = std::enable_if_t<std::is_class_v<Value>>,
          class = decltype(std::declval<CQelMemFile&>() << std::declval<const Value&>())>
std::string HexOf(const Value& value, std::string_view groups = "")
{
    CQelMemFile file(false, 64, 64);
    file << value;
    return HexOf(file, groups);
}

/// The bytes that hexadecimal digits stand for; blanks are skipped.
std::string BytesOf(std::string_view hex);

/// Fills a stream with the bytes that hexadecimal digits stand for and rewinds it.
void Fill(CQelMemFile& file, std::string_view hex);

} // namespace qeltest
