// new_store.h: a store file in the making.
#pragma once

#include "store_place.h"

#include <qelsq4/qelsqlite.h>

namespace qel {

/// Makes a store file beside its place and moves it there when it is whole. Not copied.
///
/// Until then whatever stands in the place is as it was; a new file that is not moved is deleted.
class CNewStore
{
public:
    explicit CNewStore(const std::wstring& path);
    CNewStore(const CNewStore&) = delete;
    CNewStore& operator=(const CNewStore&) = delete;
    ~CNewStore();

    /// Tells whether the place may be taken.
    /// @param replace  whether a store that stands there may be replaced
    /// @return 10012 it may not; 10013 what stands there is no store; 10015 others hold it; 17501 it is
    ///         write-protected; 17314 the path is empty
    unsigned int Admit(bool replace) const;
    /// Makes an empty store and begins a transaction in it, or throws.
    unsigned int Begin();
    CQelSQLite& Database() { return m_db; }
    /// Commits, and moves the file into its place, or throws. No side file stays there.
    unsigned int PutInPlace();

private:
    std::wstring m_path;
    CStorePlace m_target;
    CStorePlace m_place;
    CQelSQLite m_db;
    bool m_begun = false;
};

} // namespace qel
