// files.cpp: copying, moving and deleting whole files.
#include <qelplat4/files.h>
#include <qelplat4/utf16.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t kChunk = 1 << 16;

/// An open file that is closed once.
class CDescriptor
{
public:
    explicit CDescriptor(int number) : m_number(number) {}
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    ~CDescriptor() { Close(); }

    bool IsOpen() const { return m_number >= 0; }
    int Number() const { return m_number; }
    // A full disk can show itself as late as here.
    bool Close()
    {
        const int number = m_number;
        m_number = -1;
        return number < 0 || close(number) == 0;
    }

private:
    int m_number;
};

bool WriteAll(int file, const char* data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(file, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool CopyBytes(int from, int to)
{
    std::array<char, kChunk> chunk;
    for (;;) {
        const ssize_t got = read(from, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0;
        if (!WriteAll(to, chunk.data(), static_cast<std::size_t>(got)))
            return false;
    }
}

bool CopyAttributes(const struct stat& source, int to)
{
    const struct timespec times[2] = {source.st_atim, source.st_mtim};
    return fchmod(to, source.st_mode & 07777) == 0 && futimens(to, times) == 0;
}

// Copies to a file that must not exist yet; leaves none behind on failure.
bool CopyToNew(const CDescriptor& source, const struct stat& attributes, const std::string& path)
{
    CDescriptor target(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!target.IsOpen())
        return false;
    const bool copied =
        CopyBytes(source.Number(), target.Number()) && CopyAttributes(attributes, target.Number());
    if (target.Close() && copied)
        return true;
    unlink(path.c_str());
    return false;
}

bool IsSameFile(const struct stat& attributes, const std::string& path)
{
    struct stat other;
    return stat(path.c_str(), &other) == 0 && other.st_dev == attributes.st_dev &&
           other.st_ino == attributes.st_ino;
}

// The copy takes the target's place in one step, so that a failure leaves the old target whole.
bool CopyOver(const CDescriptor& source, const struct stat& attributes, const std::string& target)
{
    const std::string temporary = target + ".copy" + std::to_string(getpid());
    unlink(temporary.c_str()); // left by a process that was killed and had the same number
    if (!CopyToNew(source, attributes, temporary))
        return false;
    if (std::rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    unlink(temporary.c_str());
    return false;
}

bool Copy(const std::string& existing, const std::string& target, bool failIfExists)
{
    // Not blocking: a named pipe is refused instead of waited for.
    const CDescriptor source(open(existing.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat attributes;
    if (!source.IsOpen() || fstat(source.Number(), &attributes) != 0 || !S_ISREG(attributes.st_mode) ||
        IsSameFile(attributes, target))
        return false;
    return failIfExists ? CopyToNew(source, attributes, target) : CopyOver(source, attributes, target);
}

bool RenameToNew(const std::string& existing, const std::string& target)
{
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, existing.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS) // the file system does not know the flag
        return false;
#endif
    struct stat attributes;
    if (lstat(target.c_str(), &attributes) == 0) {
        errno = EEXIST;
        return false;
    }
    return std::rename(existing.c_str(), target.c_str()) == 0;
}

} // namespace

BOOL CopyFileW(LPCWSTR existing, LPCWSTR target, BOOL failIfExists)
{
    if (existing == nullptr || target == nullptr)
        return FALSE;
    return Copy(qel::ToUtf8(existing), qel::ToUtf8(target), failIfExists != FALSE) ? TRUE : FALSE;
}

BOOL MoveFileW(LPCWSTR existing, LPCWSTR target)
{
    if (existing == nullptr || target == nullptr)
        return FALSE;
    const std::string from = qel::ToUtf8(existing);
    const std::string to = qel::ToUtf8(target);
    if (RenameToNew(from, to))
        return TRUE;
    if (errno != EXDEV || !Copy(from, to, true))
        return FALSE;
    unlink(from.c_str()); // the move has succeeded even if the source must stay
    return TRUE;
}

BOOL DeleteFileW(LPCWSTR path)
{
    return path != nullptr && unlink(qel::ToUtf8(path).c_str()) == 0 ? TRUE : FALSE;
}
