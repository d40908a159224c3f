// engine_faults.cpp: a disk that fails on request, under every database that the engine opens meanwhile.
#include "engine_faults.h"

#include <limits>

#include <sqlite3.h>

namespace qeltest {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();

// The engine's callbacks have no place for an object of ours.
struct SFaults
{
    sqlite3_vfs* real = nullptr;
    sqlite3_vfs shim{};
    int writesLeft = kNever; // before the first that fails
    bool failsForGood = false;
    bool failsReads = false;
    bool hasFailed = false;
};

SFaults& Faults()
{
    static SFaults faults;
    return faults;
}

struct SFile
{
    sqlite3_file base;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* Real(sqlite3_file* file)
{
    return reinterpret_cast<SFile*>(file)->Real();
}

bool FailsNow()
{
    SFaults& faults = Faults();
    if (faults.writesLeft == kNever || --faults.writesLeft > 0)
        return false;
    faults.writesLeft = faults.failsForGood ? 1 : kNever;
    faults.hasFailed = true;
    return true;
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    return FailsNow() ? SQLITE_FULL : Real(file)->pMethods->xWrite(Real(file), data, size, offset);
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    if (Faults().failsReads) {
        Faults().hasFailed = true;
        return SQLITE_IOERR_READ;
    }
    return Real(file)->pMethods->xRead(Real(file), data, size, offset);
}

int Close(sqlite3_file* file)
{
    const int code = Real(file)->pMethods->xClose(Real(file));
    file->pMethods = nullptr;
    return code;
}

const sqlite3_io_methods& Methods()
{
    static const sqlite3_io_methods methods = [] {
        sqlite3_io_methods m{};
        m.iVersion = 2;
        m.xClose = Close;
        m.xRead = Read;
        m.xWrite = Write;
        m.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) {
            return Real(f)->pMethods->xTruncate(Real(f), size);
        };
        m.xSync = [](sqlite3_file* f, int flags) { return Real(f)->pMethods->xSync(Real(f), flags); };
        m.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
            return Real(f)->pMethods->xFileSize(Real(f), size);
        };
        m.xLock = [](sqlite3_file* f, int level) { return Real(f)->pMethods->xLock(Real(f), level); };
        m.xUnlock = [](sqlite3_file* f, int level) { return Real(f)->pMethods->xUnlock(Real(f), level); };
        m.xCheckReservedLock = [](sqlite3_file* f, int* out) {
            return Real(f)->pMethods->xCheckReservedLock(Real(f), out);
        };
        m.xFileControl = [](sqlite3_file* f, int op, void* arg) {
            return Real(f)->pMethods->xFileControl(Real(f), op, arg);
        };
        m.xSectorSize = [](sqlite3_file* f) { return Real(f)->pMethods->xSectorSize(Real(f)); };
        m.xDeviceCharacteristics = [](sqlite3_file* f) {
            return Real(f)->pMethods->xDeviceCharacteristics(Real(f));
        };
        m.xShmMap = [](sqlite3_file* f, int region, int size, int extend, void volatile** out) {
            return Real(f)->pMethods->xShmMap(Real(f), region, size, extend, out);
        };
        m.xShmLock = [](sqlite3_file* f, int offset, int n, int flags) {
            return Real(f)->pMethods->xShmLock(Real(f), offset, n, flags);
        };
        m.xShmBarrier = [](sqlite3_file* f) { Real(f)->pMethods->xShmBarrier(Real(f)); };
        m.xShmUnmap = [](sqlite3_file* f, int remove) {
            return Real(f)->pMethods->xShmUnmap(Real(f), remove);
        };
        return m;
    }();
    return methods;
}

int OpenFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    Real(file)->pMethods = nullptr;
    const int code = Faults().real->xOpen(Faults().real, name, Real(file), flags, outFlags);
    if (Real(file)->pMethods != nullptr)
        file->pMethods = &Methods();
    return code;
}

} // namespace

CEngineFaults::CEngineFaults()
{
    SFaults& faults = Faults();
    faults = SFaults();
    sqlite3_initialize();
    faults.real = sqlite3_vfs_find(nullptr);
    faults.shim = *faults.real;
    faults.shim.pNext = nullptr;
    faults.shim.zName = "qeltest-faults";
    faults.shim.szOsFile = static_cast<int>(sizeof(SFile)) + faults.real->szOsFile;
    faults.shim.xOpen = OpenFile;
    sqlite3_vfs_register(&faults.shim, 1);
}

CEngineFaults::~CEngineFaults()
{
    sqlite3_vfs_unregister(&Faults().shim);
    sqlite3_vfs_register(Faults().real, 1);
}

void CEngineFaults::FailWrite(int n)
{
    Heal();
    Faults().writesLeft = n;
}

void CEngineFaults::FailWritesFrom(int n)
{
    FailWrite(n);
    Faults().failsForGood = true;
}

void CEngineFaults::FailReads()
{
    Heal();
    Faults().failsReads = true;
}

void CEngineFaults::Heal()
{
    Faults().writesLeft = kNever;
    Faults().failsForGood = false;
    Faults().failsReads = false;
    Faults().hasFailed = false;
}

bool CEngineFaults::HasFailed() const
{
    return Faults().hasFailed;
}

} // namespace qeltest
