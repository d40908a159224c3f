// encoding.h: the stored form of a value, in and out of flat bytes.
#pragma once

#include <cstddef>

class CQelProperty;
class TavBlob;

namespace qel {

/// Replaces the blob's content by the stored form of the value.
void EncodeInto(TavBlob& blob, const CQelProperty& value);

/// Bytes that the stored form takes.
/// @throws std::bad_alloc when 32 bits cannot hold the number
unsigned int EncodedSize(const CQelProperty& value);
/// Writes the stored form to memory that holds EncodedSize bytes.
/// @return the end of what was written
unsigned char* EncodeTo(unsigned char* out, const CQelProperty& value);

/// Reads a value from its stored form; bytes after it are left alone, and the time bias stays as it was.
/// @return the bytes that the value takes
/// @throws CQelException* 10011 when the bytes end early; the value is then null
std::size_t DecodeFrom(const unsigned char* data, std::size_t size, CQelProperty& value);

/// Tests a stored form as DecodeFrom does, without making a value of it.
/// @throws CQelException* 10011 when the bytes end early
void CheckStored(const unsigned char* data, std::size_t size);

} // namespace qel
