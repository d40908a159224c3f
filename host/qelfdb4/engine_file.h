// engine_file.h: the file under a connection, past the engine's own reading and locking.
#pragma once

#include "store_format.h"

struct sqlite3;
struct sqlite3_file;

namespace qel {

/// Reads and locks the file of a connection that has read nothing yet. Not copied.
///
/// It goes through the engine's own file object: closing any other descriptor of the file would end all locks
/// that this process holds on it.
class CEngineFile
{
public:
    explicit CEngineFile(sqlite3* connection);
    CEngineFile(const CEngineFile&) = delete;
    CEngineFile& operator=(const CEngineFile&) = delete;
    /// Ends the lock.
    ~CEngineFile();

    /// The file's first bytes; zeros where they cannot be read.
    CStoreHeader Header() const;
    /// Takes the lock that a reader holds, or the one that keeps everybody else away.
    /// @return a result code; 10015 when others hold the file
    unsigned int LockForReading();
    unsigned int LockForWriting();

private:
    unsigned int Lock(int level);

    sqlite3_file* m_file = nullptr;
};

} // namespace qel
