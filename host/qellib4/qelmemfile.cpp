// qelmemfile.cpp: a stream held in memory that is only filled where it is written.
#include <qellib4/qelexception.h>
#include <qellib4/qelmemfile.h>
#include <qellib4/resultcodes.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kMostRoom = std::numeric_limits<std::size_t>::max() / 2;

// The room to take for `size` bytes: whole steps, and half as much again as before, so that a long row of
// small writes does not move the content each time.
std::size_t RoomFor(std::size_t size, std::size_t room, std::size_t initial, std::size_t growth)
{
    const std::size_t wanted = std::max({size, initial, room + room / 2});
    return std::max(size, std::min(kMostRoom, (wanted + growth - 1) / growth * growth));
}

} // namespace

CQelMemFile::CQelMemFile(bool readOnly, unsigned int initial, unsigned int growth)
    : m_initial(initial), m_growth(std::max(growth, 1u)), m_readOnly(readOnly)
{}

CQelMemFile::~CQelMemFile()
{
    std::free(m_data);
}

void CQelMemFile::MakeRoom(std::size_t size)
{
    if (size <= m_room)
        return;
    if (size > kMostRoom)
        throw std::bad_alloc();
    std::size_t room = RoomFor(size, m_room, m_initial, m_growth);
    void* data = std::realloc(m_data, room);
    if (data == nullptr) {
        room = size;
        data = std::realloc(m_data, room);
    }
    if (data == nullptr)
        throw std::bad_alloc();
    m_data = static_cast<unsigned char*>(data);
    m_room = room;
}

void CQelMemFile::Write(const void* data, unsigned int size)
{
    if (m_readOnly)
        throw new CQelException(qel::kReadOnly, 0, L"qelmemfile.cpp", __LINE__, true);
    if (size == 0)
        return;
    if (size > m_room - m_position) {
        if (size > kMostRoom - m_position)
            throw std::bad_alloc();
        // The bytes may be this file's own, and growing moves them.
        const auto offset = reinterpret_cast<std::uintptr_t>(data) - reinterpret_cast<std::uintptr_t>(m_data);
        const bool own = m_data != nullptr && offset < m_room;
        MakeRoom(m_position + size);
        if (own)
            data = m_data + offset;
    }
    assert(m_data != nullptr); // there is room for at least one byte
    std::memmove(m_data + m_position, data, size);
    m_position += size;
    m_size = std::max(m_size, m_position);
    AddToCheckSum(m_data + m_position - size, size);
}

void CQelMemFile::Read(void* data, unsigned int size)
{
    if (size > m_size - m_position)
        throw new CQelException(qel::kEndOfStream, 0, L"qelmemfile.cpp", __LINE__, true);
    if (size == 0)
        return;
    std::memmove(data, m_data + m_position, size);
    AddToCheckSum(m_data + m_position, size);
    m_position += size;
}

void CQelMemFile::Rewind()
{
    m_position = 0;
}

long long CQelMemFile::GetFileSize() const
{
    return static_cast<long long>(m_size);
}

bool CQelMemFile::GetFilePosition(long long& position) const
{
    position = static_cast<long long>(m_position);
    return true;
}

void CQelMemFile::SetSize(unsigned int size)
{
    MakeRoom(size);
    // What the caller put into room that was handed out stays; nothing else but zeros may come to light.
    const std::size_t known = std::max(m_size, m_handedOut);
    if (size > known)
        std::memset(m_data + known, 0, size - known);
    m_size = size;
    m_handedOut = 0;
    m_position = std::min(m_position, m_size);
}

unsigned char* CQelMemFile::GetBuffer(unsigned int size)
{
    MakeRoom(size);
    const std::size_t known = std::max(m_size, m_handedOut);
    if (size > known) {
        std::memset(m_data + known, 0, size - known);
        m_handedOut = size;
    }
    return m_data;
}
