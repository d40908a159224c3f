// dovblobdb.cpp: the record store as its users see it: refusals, results and log lines.
#include "engine_call.h"
#include "new_store.h"
#include "storefile.h"

#include <qelfdb4/dovblobdb.h>

#include <sqlite3.h>

namespace qel {
namespace {

/// What is done to what, for the log.
struct SCall
{
    const wchar_t* method;
    int line;
    const CDovBlobDB::SSelector* record = nullptr;
    const std::wstring* path = nullptr;
};

std::wstring SubjectOf(const SCall& call)
{
    std::wstring subject = call.method;
    if (call.record != nullptr)
        subject += L" " + std::to_wstring(call.record->selector) + L"/" + std::to_wstring(call.record->oid);
    if (call.path != nullptr)
        subject += L" " + *call.path;
    return subject;
}

// A line lost for lack of memory, or refused by the host's log, changes no result.
template <class Line>
void Log(CDovLogfile* log, Line&& line) noexcept
{
    if (log == nullptr)
        return;
    RunOperation(nullptr, {kSourceQelFDB, __LINE__}, [&] {
        line();
        return kSuccess;
    });
}

// The caller logs the code as the error that it is to it; the store tells what it was about. A record that
// does not exist is an answer like any other.
void LogFailure(CDovLogfile* log, const SCall& call, unsigned int code)
{
    Log(log, [&] {
        const std::wstring text = SubjectOf(call) + L": " + std::to_wstring(code) + L" " + ResultText(code);
        log->AddWarning(text.c_str(), 1, call.line, kSourceQelFDB);
    });
}

void LogStep(CDovLogfile* log, const wchar_t* step, const std::wstring& path, int line)
{
    Log(log, [&] { log->AddInformal((step + path).c_str(), 5, line, kSourceQelFDB); });
}

/// Runs one operation: whatever leaves it becomes a result code, and a failure is logged.
template <class Body>
unsigned int Answer(CDovLogfile* log, const SCall& call, Body&& body) noexcept
{
    unsigned int code = RunOperation(nullptr, {kSourceQelFDB, call.line}, body);
    if (code == kSqlBase + SQLITE_NOMEM)
        code = kUnknownException;
    if (code != kSuccess && code != kNotFound)
        LogFailure(log, call, code);
    return code;
}

// Cut to 32 bits, a wider object id would name another record.
bool CanExist(const CDovBlobDB::SSelector* record)
{
    constexpr unsigned long long kLargestOid = 0xFFFFFFFF;
    return record == nullptr || kLargestOid >= record->oid;
}

template <class Body>
unsigned int Read(const std::shared_ptr<CStoreFile>& file, CDovLogfile* log, const SCall& call, Body&& body)
{
    return Answer(log, call, [&] {
        if (!file->IsOpen())
            return kNotOpen;
        return CanExist(call.record) ? body(*file) : kNotFound;
    });
}

template <class Body>
unsigned int Change(const std::shared_ptr<CStoreFile>& file, CDovLogfile* log, const SCall& call, Body&& body)
{
    return Answer(log, call, [&] {
        if (!file->IsOpen())
            return kNotOpen;
        if (file->IsReadOnly())
            return kReadOnly;
        return CanExist(call.record) ? body(*file) : kNotFound;
    });
}

} // namespace
} // namespace qel

using qel::CStoreFile;
using qel::kSuccess;
using qel::SCall;

CDovBlobDB::CDovBlobDB() : m_file(std::make_shared<CStoreFile>())
{}
CDovBlobDB::CDovBlobDB(const CDovBlobDB& other) = default;
CDovBlobDB& CDovBlobDB::operator=(const CDovBlobDB& other) = default;
CDovBlobDB::~CDovBlobDB() = default;

void CDovBlobDB::SetLogFile(CDovLogfile* log)
{
    m_log = log;
}

unsigned int CDovBlobDB::Create(const std::wstring& path, unsigned int replace)
{
    m_file->Close();
    const unsigned int made = qel::Answer(m_log, {L"CDovBlobDB::Create", __LINE__, nullptr, &path}, [&] {
        qel::CNewStore store(path);
        unsigned int code = store.Admit(replace != 0);
        if (code == kSuccess)
            code = store.Begin();
        return code == kSuccess ? store.PutInPlace() : code;
    });
    return made == kSuccess ? Open(path, false) : made;
}

unsigned int CDovBlobDB::Open(const std::wstring& path, bool readOnly)
{
    m_file->Close();
    return qel::Answer(m_log, {L"CDovBlobDB::Open", __LINE__, nullptr, &path}, [&] {
        auto file = std::make_shared<CStoreFile>();
        const unsigned int code = file->Open(path, readOnly);
        if (code == kSuccess) {
            m_file = std::move(file);
            qel::LogStep(m_log, L"Store opened: ", path, __LINE__);
        }
        return code;
    });
}

unsigned int CDovBlobDB::Close()
{
    const SCall call{L"CDovBlobDB::Close", __LINE__};
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) {
        const std::wstring path = file.Name();
        const unsigned int code = file.Close();
        qel::LogStep(m_log, L"Store closed: ", path, __LINE__);
        return code;
    });
}

bool CDovBlobDB::IsOpen() const
{
    return m_file->IsOpen();
}

bool CDovBlobDB::IsReadOnly() const
{
    return m_file->IsReadOnly();
}

std::wstring CDovBlobDB::GetName() const
{
    return m_file->Name();
}

unsigned int CDovBlobDB::Set(const SSelector& selector, const void* data, unsigned int size,
                             unsigned int priority)
{
    const SCall call{L"CDovBlobDB::Set", __LINE__, &selector};
    return qel::Change(m_file, m_log, call,
                       [&](CStoreFile& file) { return file.Set(selector, data, size, priority); });
}

unsigned int CDovBlobDB::GetSize(const SSelector& selector, unsigned int& size) const
{
    const SCall call{L"CDovBlobDB::GetSize", __LINE__, &selector};
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) { return file.GetSize(selector, size); });
}

unsigned int CDovBlobDB::Get(const SSelector& selector, void* buffer) const
{
    const SCall call{L"CDovBlobDB::Get", __LINE__, &selector};
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) { return file.Get(selector, buffer); });
}

unsigned int CDovBlobDB::Get(const SSelector& selector, TavBlob& blob) const
{
    const SCall call{L"CDovBlobDB::Get", __LINE__, &selector};
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) { return file.Get(selector, blob); });
}

bool CDovBlobDB::HasRecord(const SSelector& selector) const
{
    const SCall call{L"CDovBlobDB::HasRecord", __LINE__, &selector};
    bool found = false;
    qel::Read(m_file, m_log, call, [&](CStoreFile& file) {
        found = file.HasRecord(selector);
        return kSuccess;
    });
    return found;
}

unsigned int CDovBlobDB::Remove(const SSelector& selector)
{
    const SCall call{L"CDovBlobDB::Remove", __LINE__, &selector};
    return qel::Change(m_file, m_log, call, [&](CStoreFile& file) { return file.Remove(selector); });
}

unsigned int CDovBlobDB::RemoveSelector(const unsigned short& selector)
{
    const SCall call{L"CDovBlobDB::RemoveSelector", __LINE__};
    return qel::Change(m_file, m_log, call, [&](CStoreFile& file) { return file.RemoveSelector(selector); });
}

unsigned int CDovBlobDB::GetOids(unsigned short selector, std::vector<unsigned long>& oids, bool) const
{
    const SCall call{L"CDovBlobDB::GetOids", __LINE__};
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) { return file.GetOids(selector, oids); });
}

unsigned int CDovBlobDB::GetNumberOfRecords(const unsigned short& selector, unsigned int& count) const
{
    const SCall call{L"CDovBlobDB::GetNumberOfRecords", __LINE__};
    return qel::Read(m_file, m_log, call,
                     [&](CStoreFile& file) { return file.GetNumberOfRecords(selector, count); });
}

unsigned int CDovBlobDB::Flush()
{
    const SCall call{L"CDovBlobDB::Flush", __LINE__};
    return qel::Read(m_file, m_log, call, [](CStoreFile& file) { return file.Flush(); });
}

unsigned int CDovBlobDB::BeginBatch()
{
    const SCall call{L"CDovBlobDB::BeginBatch", __LINE__};
    return qel::Change(m_file, m_log, call, [](CStoreFile& file) { return file.BeginBatch(); });
}

unsigned int CDovBlobDB::CommitBatch()
{
    const SCall call{L"CDovBlobDB::CommitBatch", __LINE__};
    return qel::Change(m_file, m_log, call, [](CStoreFile& file) { return file.CommitBatch(); });
}

unsigned int CDovBlobDB::RollbackBatch()
{
    const SCall call{L"CDovBlobDB::RollbackBatch", __LINE__};
    return qel::Change(m_file, m_log, call, [](CStoreFile& file) { return file.RollbackBatch(); });
}

unsigned int CDovBlobDB::Optimize(const std::wstring& path, TProgress progress, unsigned int, bool)
{
    const SCall call{L"CDovBlobDB::Optimize", __LINE__, nullptr, &path};
    if (path.empty())
        return qel::Change(m_file, m_log, call,
                           [&](CStoreFile& file) { return file.CompactInPlace(progress); });
    return qel::Read(m_file, m_log, call, [&](CStoreFile& file) { return file.CompactTo(path, progress); });
}

unsigned int CDovBlobDB::SelfTest(CQelFile* report, unsigned long& errors, TProgress progress, unsigned int)
{
    const SCall call{L"CDovBlobDB::SelfTest", __LINE__};
    const unsigned long before = errors;
    const unsigned int code = qel::Read(
        m_file, m_log, call, [&](CStoreFile& file) { return file.SelfTest(report, errors, progress); });
    if (errors != before)
        qel::LogStep(m_log, L"Faults found by the self-test: ", std::to_wstring(errors - before), __LINE__);
    return code;
}
