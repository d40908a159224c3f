// store_format.h: what a store file holds, fixed for all time.
#pragma once

#include <qelfdb4/dovblobdb.h>

#include <array>

namespace qel {

// The file is an SQLite database of UTF-8 encoding with the application id and the user version below and
// exactly these two tables:
//
//   rec   one row per record: its key, its checksum, its bytes
//   sync  one row, id 1: a counter that every write with a promise against power failure moves, since the
//         engine syncs nothing for a transaction that changes no byte
//
// key       selector << 32 | object id, so that a selector is a range of keys
// checksum  CRC-32 over the key, 8 bytes little-endian, and then the record's bytes: neither the bytes nor
//           the address under which they stand can change unseen

inline constexpr unsigned int kApplicationId = 0x51464442; // "QFDB"
inline constexpr long long kFormatVersion = 1;

inline constexpr const wchar_t* kCreateRec =
    L"CREATE TABLE rec(id INTEGER PRIMARY KEY, crc INTEGER NOT NULL, data BLOB NOT NULL)";
inline constexpr const wchar_t* kCreateSync =
    L"CREATE TABLE sync(id INTEGER PRIMARY KEY, count INTEGER NOT NULL)";

/// Key of a record.
constexpr long long KeyOf(unsigned short selector, unsigned long oid)
{
    return (static_cast<long long>(selector) << 32) | static_cast<long long>(oid);
}

constexpr long long KeyOf(const CDovBlobDB::SSelector& record)
{
    return KeyOf(record.selector, record.oid);
}

inline constexpr long long kLargestKey = KeyOf(0xFFFF, 0xFFFFFFFF);

/// Address behind a key from 0 to kLargestKey.
constexpr CDovBlobDB::SSelector AddressOf(long long key)
{
    return {static_cast<unsigned short>(key >> 32), static_cast<unsigned long>(key & 0xFFFFFFFF)};
}

/// Checksum of a record; `data` may be null when size is 0.
long long RecordChecksum(long long key, const void* data, unsigned int size);

/// The first bytes of a file, as far as they tell what it is.
class CStoreHeader
{
public:
    static constexpr unsigned int kSize = 100;

    /// Where the bytes are to be read to; zeros at first.
    unsigned char* Bytes() { return m_bytes.data(); }
    /// Whether the file is an SQLite database with the store's application id.
    bool IsStore() const;
    /// Whether the file is in rollback-journal form, in which a closed store is left.
    bool IsAtRest() const;

private:
    std::array<unsigned char, kSize> m_bytes{};
};

} // namespace qel
