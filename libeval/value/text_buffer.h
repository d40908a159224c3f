// text_buffer.h: how a value comes to hold a buffer.
#pragma once

#include "property_access.h"

#include <cstddef>

namespace qel {

/// Bytes of a buffer for that many UTF-16 units and a terminator.
/// @throws std::bad_alloc when the size does not fit into 32 bits
unsigned int TextBytes(std::size_t units);

/// Makes this a value of the type that holds the buffer.
///
/// The buffer is ready before the old one goes, so that a text may come out of the value's own bytes.
void Adopt(CQelProperty& value, EType type, Buffer buffer, unsigned int size);

} // namespace qel
