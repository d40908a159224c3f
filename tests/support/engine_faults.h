// engine_faults.h: a disk that fails on request, under every database that the engine opens meanwhile.
#pragma once

namespace qeltest {

/// Makes itself the engine's file system and lets writes through until told otherwise. Not copied; one at a
/// time. Databases opened meanwhile must be closed before it ends.
class CEngineFaults
{
public:
    CEngineFaults();
    CEngineFaults(const CEngineFaults&) = delete;
    CEngineFaults& operator=(const CEngineFaults&) = delete;
    ~CEngineFaults();

    /// The n-th write from now on fails, once; 1 is the next.
    void FailWrite(int n);
    /// The n-th write from now on and all after it fail: the disk is full.
    void FailWritesFrom(int n);
    /// Every read fails.
    void FailReads();
    /// Everything succeeds again.
    void Heal();
    /// Whether a failure was handed out since the last request.
    bool HasFailed() const;
};

} // namespace qeltest
