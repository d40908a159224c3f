// store_compacting.cpp: a store without the room that removed records left, in place or as a copy.
#include "engine_call.h"
#include "new_store.h"
#include "progress.h"
#include "store_format.h"
#include "storefile.h"

#include <sqlite3.h>

namespace qel {
namespace {

constexpr const wchar_t* kText = L"Compacting the store";

// Stored checksums are copied as they stand: a damaged record stays a damaged record.
void CopyRecords(CQelSQLite& from, CQelSQLite& to, CProgress& progress)
{
    CQelSQLite::CStatement query(&from);
    CQelSQLite::CStatement insert(&to);
    query.Prepare(L"SELECT id,crc,data FROM rec ORDER BY id");
    insert.Prepare(L"INSERT INTO rec(id,crc,data) VALUES(?1,?2,?3)");
    while (Next(query)) {
        const unsigned char* data = nullptr;
        unsigned int size = 0;
        if (!query.GetBytes(2, data, size))
            Fail(kRecordDamaged, __LINE__);
        insert.BindInt(1, query.GetInt(0));
        insert.BindInt(2, query.GetInt(1));
        insert.BindBytes(3, size > 0 ? data : reinterpret_cast<const unsigned char*>(""), size);
        Check(insert.Execute(), __LINE__);
        insert.Reset();
        progress.Step();
    }
}

} // namespace

unsigned int CStoreFile::CountRecords()
{
    return static_cast<unsigned int>(AskInt(m_db, L"SELECT MIN(COUNT(*),4294967295) FROM rec"));
}

unsigned int CStoreFile::CompactTo(const std::wstring& path, CDovBlobDB::TProgress progress)
{
    if (m_batch != nullptr)
        return kCannotChange;
    if (CStorePlace(path).IsSameFileAs(m_place))
        return kFileInUse;
    CNewStore copy(path);
    if (const unsigned int code = copy.Admit(true); code != kSuccess)
        return code;
    if (const unsigned int code = copy.Begin(); code != kSuccess)
        return code;
    CProgress told(progress, kText, [this] { return CountRecords(); });
    CopyRecords(m_db, copy.Database(), told);
    if (const unsigned int code = copy.PutInPlace(); code != kSuccess)
        return code;
    told.End();
    return kSuccess;
}

// The engine rewrites the file as one transaction of its own, so that it is old or new whatever happens.
unsigned int CStoreFile::CompactInPlace(CDovBlobDB::TProgress progress)
{
    if (m_batch != nullptr)
        return kCannotChange;
    CProgress told(progress, kText, [this] { return CountRecords(); });
    PrepareChange(true);
    Run(m_db, L"VACUUM; PRAGMA wal_checkpoint(TRUNCATE)");
    told.End();
    return kSuccess;
}

} // namespace qel
