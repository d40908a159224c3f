// store_batch.cpp: a guard that makes several changes of a store one atomic unit.
#include "store_batch.h"

#include <qellib4/resultcodes.h>

namespace qel {

CStoreBatch::CStoreBatch(CDovBlobDB& store) : m_store(store), m_beginCode(store.BeginBatch())
{
    m_begun = m_beginCode == kSuccess;
    if (m_beginCode == kCannotChange) // the host's batch is open
        m_beginCode = kSuccess;
}

CStoreBatch::~CStoreBatch()
{
    if (m_begun)
        m_store.RollbackBatch();
}

unsigned int CStoreBatch::Commit()
{
    if (!m_begun)
        return m_beginCode;
    m_begun = false; // a failed commit ends the batch, too
    return m_store.CommitBatch();
}

} // namespace qel
