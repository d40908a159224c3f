// store_batch.h: a guard that makes several changes of a store one atomic unit.
#pragma once

#include <qelfdb4/qelfdb4.h>

namespace qel {

/// A batch of the store that is undone unless it is committed. Not copied.
///
/// Inside a batch that the host has open on the same store it begins none: the changes are then the host's to
/// commit or to undo.
class CStoreBatch
{
public:
    explicit CStoreBatch(CDovBlobDB& store);
    CStoreBatch(const CStoreBatch&) = delete;
    CStoreBatch& operator=(const CStoreBatch&) = delete;
    ~CStoreBatch();

    /// @return the code of beginning: 10001 also inside the host's batch
    unsigned int BeginCode() const { return m_beginCode; }
    /// @return 10001 at once inside the host's batch
    unsigned int Commit();

private:
    CDovBlobDB& m_store;
    unsigned int m_beginCode;
    bool m_begun;
};

} // namespace qel
