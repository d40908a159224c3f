// record_codec.h: the bytes of one stored record.
#pragma once

#include <qelprop4/qeltable3x.h>

#include <vector>

class TavBlob;

namespace qel {

/// The slots of a record about to be written; null pointers stand for null values.
using TSlots = std::vector<const CQelProperty*>;

/// Replaces the blob's content by slot count and slots.
/// @throws std::bad_alloc when 32 bits cannot hold the number of bytes
void WriteSlots(TavBlob& bytes, const TSlots& slots);

/// Makes a record ready for reading: one element per column of the table, each named after the column whose
/// slot it is (0 where there is none). The values are any.
void NameValues(const CQelTable3X& table, std::vector<SQelPropColumnData>& values);
/// Makes every value null.
void ClearValues(std::vector<SQelPropColumnData>& values);
/// Reads a record into named values; what the record does not hold, or no column owns, becomes null.
/// @throws CQelException* 10011 when the bytes end inside the count or inside a slot
void ReadSlots(const TavBlob& bytes, const CQelTable3X& table, std::vector<SQelPropColumnData>& values);

} // namespace qel
