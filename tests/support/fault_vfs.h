// fault_vfs.h: the engine's file layer, made to fail at a chosen call and to tell what reached the disk.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qeltest {

/// Stands between SQLite and the files of every connection that is opened while it lives. One at a time, on
/// one thread. A connection may outlive it and then meets no more failures.
class CFaultVfs
{
public:
    /// One change of a file, in the order in which the engine made it.
    struct SEvent
    {
        enum EKind
        {
            eWrite,
            eTruncate,
            eSync,
            eDelete,
            eMark
        };
        EKind kind;
        std::string file; ///< name without its folder
        long long offset; ///< of a write; the new size of a truncation; the number of a mark
        std::string bytes;
    };

    CFaultVfs();
    CFaultVfs(const CFaultVfs&) = delete;
    CFaultVfs& operator=(const CFaultVfs&) = delete;
    ~CFaultVfs();

    /// Lets this many changes (writes, truncations, syncs, deletions, files made) pass and fails all that
    /// come after.
    /// @param raw  SQLite's code to fail with, such as SQLITE_IOERR or SQLITE_FULL
    void FailAfter(int passing, int raw);
    /// Fails the change after this many, and none that comes later.
    void FailOnceAfter(int passing, int raw);
    /// Whether a change was failed since the last FailAfter, FailOnceAfter or FailNothing.
    bool HasFailed() const;
    /// Lets everything pass again.
    void FailNothing();
    /// Changes asked for since the last FailAfter or FailNothing.
    int Changes() const;
    /// Syncs of any file so far.
    int Syncs() const;

    /// From now on keeps every event, or none further.
    void Record(bool on = true);
    /// Puts a mark between the events.
    void Mark(long long number);
    const std::vector<SEvent>& Events() const;

    struct SState;

private:
    std::shared_ptr<SState> m_state;
};

} // namespace qeltest
