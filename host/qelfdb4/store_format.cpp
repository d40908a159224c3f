// store_format.cpp: checksum of a record and identity of a file.
#include "store_format.h"

#include <algorithm>
#include <string_view>

#include <zlib.h>

namespace qel {
namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr std::size_t kWriteVersionAt = 18;
constexpr std::size_t kReadVersionAt = 19;
constexpr std::size_t kApplicationIdAt = 68;
constexpr unsigned char kRollbackForm = 1;

} // namespace

long long RecordChecksum(long long key, const void* data, unsigned int size)
{
    std::array<Bytef, 8> address;
    for (std::size_t i = 0; i < address.size(); ++i)
        address[i] = static_cast<Bytef>(static_cast<unsigned long long>(key) >> (8 * i));
    uLong checksum = crc32(0, address.data(), address.size());
    if (size > 0) // zlib takes a null pointer for a wish to begin anew
        checksum = crc32(checksum, static_cast<const Bytef*>(data), size);
    return static_cast<long long>(checksum);
}

bool CStoreHeader::IsStore() const
{
    if (!std::equal(kMagic.begin(), kMagic.end(), m_bytes.begin(), [](char wanted, unsigned char found) {
            return static_cast<unsigned char>(wanted) == found;
        }))
        return false;
    unsigned int id = 0;
    for (std::size_t i = 0; i < 4; ++i)
        id = id << 8 | m_bytes[kApplicationIdAt + i];
    return id == kApplicationId;
}

bool CStoreHeader::IsAtRest() const
{
    return m_bytes[kWriteVersionAt] == kRollbackForm && m_bytes[kReadVersionAt] == kRollbackForm;
}

} // namespace qel
