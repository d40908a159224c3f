// dovblobdb.h: a keyed store of byte records in one file.
#pragma once

#include <qelfdb4/export.h>
#include <qellib4/qellib4.h>

#include <memory>
#include <string>
#include <vector>

namespace qel {
class CStoreFile;
}

/// A record store: every record is a run of bytes under a 16-bit selector and a 32-bit object id.
///
/// Copies share the open store; it is closed when any of them closes it or the last one ends. One thread at
/// a time. Every operation that returns a code gives 10001 on success, 17500 on a closed store, 17501 for a
/// change of a read-only one, 17300 plus the engine's code for a failure of the engine, 10002 for lack of
/// memory; nothing is thrown. A change that fails leaves the record as it was. The store is a single file
/// when closed; while it is open for writing nobody else can open it, and readers keep writers away.
class QELFDB4_API CDovBlobDB
{
public:
    /// Address of one record.
    struct SSelector
    {
        unsigned short selector; ///< the group that the record belongs to
        unsigned long oid;       ///< its number in the group; one wider than 32 bits names no record (10020)
    };

    /// What a progress callback is told.
    enum ECBMessage
    {
        eCBStart = 0,
        eCBStep = 1,
        eCBEnd = 2
    };

    /// A progress callback; may be null everywhere.
    /// @param reserved  0
    /// @param text      names the work; lives for the call
    using TProgress = void(QEL_STDCALL*)(ECBMessage message, unsigned int done, unsigned int total,
                                         unsigned int reserved, const std::wstring* text);

    /// Makes a closed store object.
    CDovBlobDB();
    /// Shares the other's open store.
    CDovBlobDB(const CDovBlobDB& other);
    /// Lets go of the store held until now, and shares the other's.
    CDovBlobDB& operator=(const CDovBlobDB& other);
    virtual ~CDovBlobDB();

    /// Sets the log for the store's own lines; not owned, may be null.
    void SetLogFile(CDovLogfile* log);

    /// Makes a new, empty store and leaves it open; closes what was open before.
    ///
    /// It is made beside its place, under the path with "#new" added, and moved there when it is whole.
    /// @param replace  1: an existing store is replaced; 0: it is refused
    /// @return 10012 a store exists and `replace` is 0; 10013 a file that is no store exists, there or under
    ///         the name in the making (it is never replaced); 10015 the store is in use; 17501 it is
    ///         write-protected; 17314 no file can be made there. Closed on failure
    unsigned int Create(const std::wstring& path, unsigned int replace);
    /// Opens an existing store; closes what was open before.
    ///
    /// A store left by a process that was killed is recovered when it is opened for writing.
    /// @return 10013 no store; 10014 no such file; 10015 in use: open for writing elsewhere, or open at all
    ///         if not `readOnly`; 17501 write-protected; 17308 if `readOnly`: left by a process that was
    ///         killed, and to be opened for writing once; 17311 damaged. Closed on failure
    unsigned int Open(const std::wstring& path, bool readOnly);
    /// Closes the store for every copy; an open batch is rolled back.
    /// @return 17500 when it was not open; 17310 or the engine's failure when a side file could not be
    ///         cleared away: the store is closed all the same, and the next opening for writing finds every
    ///         record
    unsigned int Close();

    /// Whether this object has a store open that no copy has closed.
    bool IsOpen() const;
    /// Whether the open store takes no changes; false when closed.
    bool IsReadOnly() const;
    /// Path of the open store, as it was given; empty when closed.
    std::wstring GetName() const;

    /// Creates or replaces a record with exactly these bytes.
    /// @param data      may be null when size is 0
    /// @param priority  50 or above: on the disk when Set returns; below: survives the end of the process at
    ///                  once and a power failure from the next Set of 50, Flush or Close on. Inside a batch
    ///                  CommitBatch keeps the promise
    /// @return 17318 more bytes than the engine takes (about 1,000,000,000); 17321 null data
    unsigned int Set(const SSelector& selector, const void* data, unsigned int size, unsigned int priority);
    /// Gives a record's size.
    /// @param size  out: in bytes; unchanged on failure
    /// @return 10020 no such record; 10016 its bytes fail their checksum
    unsigned int GetSize(const SSelector& selector, unsigned int& size) const;
    /// Copies the whole record to a buffer of GetSize bytes; nothing is copied on failure.
    /// @param buffer  may be null when the record is empty
    /// @return as GetSize; 17321 null buffer
    unsigned int Get(const SSelector& selector, void* buffer) const;
    /// Gives the whole record in one step. Codes as GetSize; `blob` is unchanged on failure.
    unsigned int Get(const SSelector& selector, TavBlob& blob) const;
    /// Whether the record exists; false on a closed store.
    bool HasRecord(const SSelector& selector) const;
    /// Removes one record.
    /// @return 10020 no such record
    unsigned int Remove(const SSelector& selector);
    /// Removes every record of the selector; none is success.
    unsigned int RemoveSelector(const unsigned short& selector);
    /// Lists the object ids of a selector.
    /// @param oids      out: in ascending order; emptied first
    /// @param reserved  pass false
    unsigned int GetOids(unsigned short selector, std::vector<unsigned long>& oids, bool reserved) const;
    /// Counts the records of a selector.
    unsigned int GetNumberOfRecords(const unsigned short& selector, unsigned int& count) const;

    /// Makes everything written so far safe against a power failure; inside a batch, CommitBatch does.
    unsigned int Flush();
    /// Makes the changes up to CommitBatch one atomic unit; batches do not nest (17201).
    ///
    /// A failure of the engine may undo the whole batch; its later changes are then refused with 17201.
    unsigned int BeginBatch();
    /// Ends the batch; on failure nothing of it has happened, except that a failure to keep the promise of a
    /// priority-50 write is told after it has.
    /// @return 17201 when no batch is open, or it was undone
    unsigned int CommitBatch();
    /// Undoes the changes since BeginBatch and ends the batch.
    /// @return 17201 when no batch is open
    unsigned int RollbackBatch();

    /// Writes a compacted copy to `path`, or compacts in place where `path` is empty.
    ///
    /// Damaged records stay as they are.
    /// @param progress  told the start, every hundredth record of a copy, and the end
    /// @param user      not used
    /// @param reserved  pass false
    /// @return for a copy as Create with 1, and 10015 for the open store itself; 17201 inside a batch
    unsigned int Optimize(const std::wstring& path, TProgress progress, unsigned int user, bool reserved);
    /// Tests the engine's structure and every checksum; faults are no failure of the test.
    /// @param report    one UTF-8 line per fault is written to it; may be null
    /// @param errors    the number of faults is added to it
    /// @param progress  told the start, every hundredth record, and the end
    unsigned int SelfTest(CQelFile* report, unsigned long& errors, TProgress progress, unsigned int user);

private:
    std::shared_ptr<qel::CStoreFile> m_file;
    CDovLogfile* m_log = nullptr;
};
