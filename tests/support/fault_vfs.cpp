// fault_vfs.cpp: a file layer over the engine's own that counts, records and fails changes.
#include "fault_vfs.h"

#include <sqlite3.h>

#include <cstring>

namespace qeltest {

struct CFaultVfs::SState
{
    sqlite3_vfs vfs{};
    sqlite3_vfs* real = nullptr;
    int passing = -1; // below 0: all
    int raw = SQLITE_OK;
    bool once = false;
    bool hasFailed = false;
    int changes = 0;
    int syncs = 0;
    bool recording = false;
    std::vector<SEvent> events;
};

namespace {

using SState = CFaultVfs::SState;
using SEvent = CFaultVfs::SEvent;

/// A file of this layer; the real one lies behind it in the same memory.
struct SFile
{
    sqlite3_file base;
    SState* state;
    const char* name;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

SFile& Of(sqlite3_file* file)
{
    return *reinterpret_cast<SFile*>(file);
}

const char* BaseName(const char* path)
{
    if (path == nullptr)
        return "";
    const char* name = path;
    for (const char* at = path; *at != 0; ++at)
        if (*at == '/' || *at == '\\')
            name = at + 1;
    return name;
}

// Counts a change and tells whether it is to fail.
int Admit(SState& state)
{
    const int number = state.changes++;
    if (state.passing < 0 || number < state.passing || (state.once && number > state.passing))
        return SQLITE_OK;
    state.hasFailed = true;
    return state.raw;
}

void Note(SState& state, SEvent::EKind kind, const char* name, long long offset = 0, std::string bytes = {})
{
    if (state.recording)
        state.events.push_back({kind, name, offset, std::move(bytes)});
}

int Close(sqlite3_file* file)
{
    return Of(file).Real()->pMethods->xClose(Of(file).Real());
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    return Of(file).Real()->pMethods->xRead(Of(file).Real(), data, size, offset);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    SFile& own = Of(file);
    if (const int raw = Admit(*own.state); raw != SQLITE_OK)
        return raw;
    Note(*own.state, SEvent::eWrite, own.name, offset,
         std::string(static_cast<const char*>(data), static_cast<std::size_t>(size)));
    return own.Real()->pMethods->xWrite(own.Real(), data, size, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size)
{
    SFile& own = Of(file);
    if (const int raw = Admit(*own.state); raw != SQLITE_OK)
        return raw;
    Note(*own.state, SEvent::eTruncate, own.name, size);
    return own.Real()->pMethods->xTruncate(own.Real(), size);
}

int Sync(sqlite3_file* file, int)
{
    SFile& own = Of(file);
    if (const int raw = Admit(*own.state); raw != SQLITE_OK)
        return raw;
    ++own.state->syncs;
    Note(*own.state, SEvent::eSync, own.name);
    return SQLITE_OK; // the disk itself need not be troubled
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return Of(file).Real()->pMethods->xFileSize(Of(file).Real(), size);
}

int Lock(sqlite3_file* file, int level)
{
    return Of(file).Real()->pMethods->xLock(Of(file).Real(), level);
}

int Unlock(sqlite3_file* file, int level)
{
    return Of(file).Real()->pMethods->xUnlock(Of(file).Real(), level);
}

int CheckReservedLock(sqlite3_file* file, int* held)
{
    return Of(file).Real()->pMethods->xCheckReservedLock(Of(file).Real(), held);
}

int FileControl(sqlite3_file* file, int operation, void* argument)
{
    return Of(file).Real()->pMethods->xFileControl(Of(file).Real(), operation, argument);
}

int SectorSize(sqlite3_file* file)
{
    return Of(file).Real()->pMethods->xSectorSize(Of(file).Real());
}

int DeviceCharacteristics(sqlite3_file* file)
{
    return Of(file).Real()->pMethods->xDeviceCharacteristics(Of(file).Real());
}

// Version 1: without shared memory, which only connections in normal locking mode need.
constexpr sqlite3_io_methods kMethods = {1,
                                         Close,
                                         Read,
                                         Write,
                                         Truncate,
                                         Sync,
                                         FileSize,
                                         Lock,
                                         Unlock,
                                         CheckReservedLock,
                                         FileControl,
                                         SectorSize,
                                         DeviceCharacteristics,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr};

/// Keeps the state for the connections that are still open when the test has done with it.
void KeepForGood(std::shared_ptr<SState> state)
{
    static std::vector<std::shared_ptr<SState>> kept;
    kept.push_back(std::move(state));
}

SState& StateOf(sqlite3_vfs* vfs)
{
    return *static_cast<SState*>(vfs->pAppData);
}

int Open(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* outFlags)
{
    SState& state = StateOf(vfs);
    SFile& own = Of(file);
    own.base.pMethods = nullptr;
    constexpr int kSideFiles = SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL;
    if ((flags & kSideFiles) != 0) {
        if (const int raw = Admit(state); raw != SQLITE_OK)
            return raw;
    }
    own.state = &state;
    own.name = BaseName(path);
    const int raw = state.real->xOpen(state.real, path, own.Real(), flags, outFlags);
    if (own.Real()->pMethods != nullptr)
        own.base.pMethods = &kMethods;
    return raw;
}

int Delete(sqlite3_vfs* vfs, const char* path, int syncFolder)
{
    SState& state = StateOf(vfs);
    if (const int raw = Admit(state); raw != SQLITE_OK)
        return raw;
    Note(state, SEvent::eDelete, BaseName(path));
    return state.real->xDelete(state.real, path, syncFolder);
}

int Access(sqlite3_vfs* vfs, const char* path, int flags, int* answer)
{
    sqlite3_vfs* const real = StateOf(vfs).real;
    return real->xAccess(real, path, flags, answer);
}

int FullPathname(sqlite3_vfs* vfs, const char* path, int size, char* out)
{
    sqlite3_vfs* const real = StateOf(vfs).real;
    return real->xFullPathname(real, path, size, out);
}

} // namespace

CFaultVfs::CFaultVfs() : m_state(std::make_shared<SState>())
{
    KeepForGood(m_state);
    SState& state = *m_state;
    state.real = sqlite3_vfs_find(nullptr);
    state.vfs = *state.real;
    state.vfs.pNext = nullptr;
    state.vfs.zName = "faults";
    state.vfs.pAppData = &state;
    state.vfs.szOsFile = static_cast<int>(sizeof(SFile)) + state.real->szOsFile;
    state.vfs.xOpen = Open;
    state.vfs.xDelete = Delete;
    state.vfs.xAccess = Access;
    state.vfs.xFullPathname = FullPathname;
    sqlite3_vfs_register(&state.vfs, 1);
}

CFaultVfs::~CFaultVfs()
{
    FailNothing();
    Record(false);
    sqlite3_vfs_unregister(&m_state->vfs);
    sqlite3_vfs_register(m_state->real, 1);
}

void CFaultVfs::FailAfter(int passing, int raw)
{
    m_state->passing = passing;
    m_state->raw = raw;
    m_state->once = false;
    m_state->hasFailed = false;
    m_state->changes = 0;
}

void CFaultVfs::FailOnceAfter(int passing, int raw)
{
    FailAfter(passing, raw);
    m_state->once = true;
}

bool CFaultVfs::HasFailed() const
{
    return m_state->hasFailed;
}

void CFaultVfs::FailNothing()
{
    FailAfter(-1, SQLITE_OK);
}

int CFaultVfs::Changes() const
{
    return m_state->changes;
}

int CFaultVfs::Syncs() const
{
    return m_state->syncs;
}

void CFaultVfs::Record(bool on)
{
    m_state->recording = on;
}

void CFaultVfs::Mark(long long number)
{
    Note(*m_state, SEvent::eMark, "", number);
}

const std::vector<CFaultVfs::SEvent>& CFaultVfs::Events() const
{
    return m_state->events;
}

} // namespace qeltest
