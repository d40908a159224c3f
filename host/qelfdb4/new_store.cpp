// new_store.cpp: making a store file and moving it into its place.
#include "new_store.h"

#include "engine_call.h"
#include "engine_file.h"
#include "store_format.h"
#include "storefile.h"

#include <qelplat4/replace_file.h>

#include <sqlite3.h>

namespace qel {
namespace {

bool IsStore(const CStorePlace& place)
{
    CQelSQLite db;
    if (!place.IsRegularFile())
        return false;
    Check(db.Open(place.EnginePath(), true), __LINE__);
    return CEngineFile(db.Handle()).Header().IsStore();
}

// A damaged store may be replaced; one that others hold, or that must not be written, may not.
bool IsHeldBack(unsigned int code)
{
    return code == kFileInUse || code == kReadOnly || code == kUnknownException;
}

} // namespace

CNewStore::CNewStore(const std::wstring& path) : m_path(path), m_target(path), m_place(m_target.Beside())
{}

CNewStore::~CNewStore()
{
    m_db.Close();
    if (m_begun)
        m_place.DeleteAll();
}

unsigned int CNewStore::Admit(bool replace) const
{
    if (m_target.File().empty())
        return kSqlBase + SQLITE_CANTOPEN;
    if (!m_target.Exists())
        return kSuccess;
    if (!IsStore(m_target))
        return kNotAStore;
    if (!replace)
        return kFileExists;
    CStoreFile existing;
    const unsigned int code = existing.Open(m_path, false);
    return IsHeldBack(code) ? code : kSuccess;
}

// No journal is needed for a file that is thrown away when it cannot be finished.
unsigned int CNewStore::Begin()
{
    if (m_place.Exists() && !m_place.IsEmptyFile() && !IsStore(m_place))
        return kNotAStore;
    if (!m_place.DeleteAll())
        return kSqlBase + SQLITE_IOERR;
    m_begun = true;
    Check(m_db.Open(m_place.EnginePath(), false), __LINE__);
    Run(m_db, L"PRAGMA page_size=4096; PRAGMA encoding='UTF-8'; PRAGMA auto_vacuum=NONE;"
              L"PRAGMA journal_mode=OFF; PRAGMA synchronous=FULL; PRAGMA locking_mode=EXCLUSIVE; BEGIN");
    Run(m_db, (L"PRAGMA application_id=" + std::to_wstring(kApplicationId)).c_str());
    Run(m_db, (L"PRAGMA user_version=" + std::to_wstring(kFormatVersion)).c_str());
    Run(m_db, kCreateRec);
    Run(m_db, kCreateSync);
    Run(m_db, L"INSERT INTO sync(id,count) VALUES(1,0)");
    return kSuccess;
}

// Side files in the place would be mixed into the new store, so that they go before it comes.
unsigned int CNewStore::PutInPlace()
{
    Run(m_db, L"COMMIT");
    Check(m_db.Close(), __LINE__);
    if (!m_target.DeleteSideFiles() || !ReplaceFileDurably(m_place.File(), m_target.File()))
        return kSqlBase + SQLITE_IOERR;
    m_begun = false;
    return kSuccess;
}

} // namespace qel
