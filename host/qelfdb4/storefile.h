// storefile.h: an open store file, shared by the copies of a store object.
#pragma once

#include "store_place.h"

#include <qelfdb4/dovblobdb.h>
#include <qelsq4/qelsq4.h>

#include <memory>

namespace qel {

/// The file name under which the store's sources stand in the log.
inline constexpr const wchar_t* kSourceQelFDB = L".\\qelfdb4";

/// A write of this priority or above is on the disk when it returns.
inline constexpr unsigned int kDurablePriority = 50;

/// One store file. Not copied.
///
/// While it is open for writing nobody else can open it; readers keep writers away. At rest the file is in
/// rollback-journal form; the first change puts it into write-ahead form and Close takes it back.
///
/// Operations return result codes; failures of the engine may also leave as CQelException with such a code.
/// They expect an open store, and changes one that is open for writing.
class CStoreFile
{
public:
    CStoreFile() = default;
    CStoreFile(const CStoreFile&) = delete;
    CStoreFile& operator=(const CStoreFile&) = delete;
    /// Closes as Close does.
    ~CStoreFile();

    /// Never throws a CQelException. On failure the store is closed.
    unsigned int Open(const std::wstring& path, bool readOnly);
    /// Never throws.
    unsigned int Close();

    bool IsOpen() const { return m_db.IsOpen(); }
    bool IsReadOnly() const { return m_readOnly; }
    const std::wstring& Name() const { return m_name; }

    unsigned int Set(const CDovBlobDB::SSelector& record, const void* data, unsigned int size,
                     unsigned int priority);
    unsigned int GetSize(const CDovBlobDB::SSelector& record, unsigned int& size);
    unsigned int Get(const CDovBlobDB::SSelector& record, void* buffer);
    unsigned int Get(const CDovBlobDB::SSelector& record, TavBlob& blob);
    bool HasRecord(const CDovBlobDB::SSelector& record);
    unsigned int Remove(const CDovBlobDB::SSelector& record);
    unsigned int RemoveSelector(unsigned short selector);
    unsigned int GetOids(unsigned short selector, std::vector<unsigned long>& oids);
    unsigned int GetNumberOfRecords(unsigned short selector, unsigned int& count);

    unsigned int Flush();
    unsigned int BeginBatch();
    unsigned int CommitBatch();
    unsigned int RollbackBatch();

    unsigned int CompactInPlace(CDovBlobDB::TProgress progress);
    unsigned int CompactTo(const std::wstring& path, CDovBlobDB::TProgress progress);
    unsigned int SelfTest(CQelFile* report, unsigned long& errors, CDovBlobDB::TProgress progress);

private:
    unsigned int OpenFile(const std::wstring& path, bool readOnly);
    void Harden();
    unsigned int TakeOver();
    unsigned int RefuseUnlessAtRest();
    unsigned int CheckContent();
    unsigned int Leave();

    template <class Work>
    unsigned int Change(bool durable, Work&& work);
    template <class Work>
    unsigned int ChangeInBatch(bool durable, Work&& work);
    template <class Work>
    unsigned int ChangeDurably(Work&& work);
    template <class Use>
    unsigned int ReadRecord(const CDovBlobDB::SSelector& record, Use&& use);
    void PrepareChange(bool durable);
    void EnterWal();
    void SetSafety(bool durable);
    unsigned int WriteRecord(long long key, const void* data, unsigned int size);
    unsigned int MoveCounter();
    bool BatchWasUndone() const;
    unsigned int CodeOfRefusedBegin() const;
    unsigned int CountRecords();

    CQelSQLite m_db;
    CStorePlace m_place;
    std::wstring m_name;
    bool m_readOnly = false;
    bool m_wal = false;                          // in write-ahead form
    bool m_durable = true;                       // what the engine's safety level now promises
    bool m_batchDurable = false;                 // something in the open batch asked for it
    std::unique_ptr<CSQLiteTransaction> m_batch; // null while none is open
};

} // namespace qel
