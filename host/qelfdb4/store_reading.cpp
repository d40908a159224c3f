// store_reading.cpp: records read from a store file.
#include "engine_call.h"
#include "store_format.h"
#include "storefile.h"

#include <sqlite3.h>

#include <cstring>

namespace qel {
namespace {

void BindSelector(CQelSQLite::CStatement& query, unsigned short selector)
{
    Check(query.BindInt(1, KeyOf(selector, 0)), __LINE__);
    Check(query.BindInt(2, KeyOf(selector, 0xFFFFFFFF)), __LINE__);
}

} // namespace

/// Hands the bytes of a record that passes its checksum to `use`.
template <class Use>
unsigned int CStoreFile::ReadRecord(const CDovBlobDB::SSelector& record, Use&& use)
{
    CQelSQLite::CStatement query(&m_db);
    query.Prepare(L"SELECT crc,data FROM rec WHERE id=?1");
    query.BindInt(1, KeyOf(record));
    if (!Next(query))
        return kNotFound;
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (!query.GetBytes(1, data, size) || query.GetInt(0) != RecordChecksum(KeyOf(record), data, size))
        return kRecordDamaged;
    use(data, size);
    return kSuccess;
}

unsigned int CStoreFile::GetSize(const CDovBlobDB::SSelector& record, unsigned int& size)
{
    return ReadRecord(record, [&](const unsigned char*, unsigned int found) { size = found; });
}

unsigned int CStoreFile::Get(const CDovBlobDB::SSelector& record, void* buffer)
{
    bool hasRoom = true;
    const unsigned int code = ReadRecord(record, [&](const unsigned char* data, unsigned int size) {
        hasRoom = size == 0 || buffer != nullptr;
        if (hasRoom && size > 0)
            std::memcpy(buffer, data, size);
    });
    return code == kSuccess && !hasRoom ? kSqlBase + SQLITE_MISUSE : code;
}

unsigned int CStoreFile::Get(const CDovBlobDB::SSelector& record, TavBlob& blob)
{
    return ReadRecord(record,
                      [&](const unsigned char* data, unsigned int size) { blob.SetData(data, size); });
}

bool CStoreFile::HasRecord(const CDovBlobDB::SSelector& record)
{
    CQelSQLite::CStatement query(&m_db);
    query.Prepare(L"SELECT 1 FROM rec WHERE id=?1");
    query.BindInt(1, KeyOf(record));
    return Next(query);
}

// Keys that leave the range or do not ascend come from a damaged page; cut to an object id they would name
// records that are not there.
unsigned int CStoreFile::GetOids(unsigned short selector, std::vector<unsigned long>& oids)
{
    oids.clear();
    CQelSQLite::CStatement query(&m_db);
    query.Prepare(L"SELECT id FROM rec WHERE id BETWEEN ?1 AND ?2 ORDER BY id");
    BindSelector(query, selector);
    for (long long least = KeyOf(selector, 0); Next(query);) {
        const long long key = query.GetInt(0);
        if (key < least || key > KeyOf(selector, 0xFFFFFFFF))
            return kSqlBase + SQLITE_CORRUPT;
        oids.push_back(AddressOf(key).oid);
        least = key + 1;
    }
    return kSuccess;
}

unsigned int CStoreFile::GetNumberOfRecords(unsigned short selector, unsigned int& count)
{
    CQelSQLite::CStatement query(&m_db);
    query.Prepare(L"SELECT COUNT(*) FROM rec WHERE id BETWEEN ?1 AND ?2");
    BindSelector(query, selector);
    if (!Next(query))
        return kSqlBase + SQLITE_CORRUPT;
    count = static_cast<unsigned int>(query.GetInt(0));
    return kSuccess;
}

} // namespace qel
