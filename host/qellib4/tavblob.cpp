// tavblob.cpp: a byte buffer that keeps its memory when its content is replaced.
#include <qellib4/qelfile.h>
#include <qellib4/tavblob.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kLeastRoom = 64;

unsigned char* Allocate(std::size_t room)
{
    void* data = std::malloc(room);
    if (data == nullptr)
        throw std::bad_alloc();
    return static_cast<unsigned char*>(data);
}

} // namespace

TavBlob::TavBlob(const TavBlob& other)
{
    SetData(other.m_data, other.m_size);
}

TavBlob::TavBlob(TavBlob&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr)), m_size(std::exchange(other.m_size, 0)),
      m_room(std::exchange(other.m_room, 0))
{}

TavBlob& TavBlob::operator=(const TavBlob& other)
{
    if (this != &other)
        SetData(other.m_data, other.m_size);
    return *this;
}

TavBlob& TavBlob::operator=(TavBlob&& other) noexcept
{
    // The memory changes hands, so that both keep some to write into.
    std::swap(m_data, other.m_data);
    std::swap(m_room, other.m_room);
    std::swap(m_size, other.m_size);
    if (this != &other)
        other.m_size = 0;
    return *this;
}

TavBlob::~TavBlob()
{
    std::free(m_data);
}

bool TavBlob::Load(CQelFile* file)
{
    if (file == nullptr)
        return false;
    const unsigned long long remaining = file->BytesRemaining();
    if (remaining > std::numeric_limits<unsigned int>::max())
        return false;
    const auto size = static_cast<unsigned int>(remaining);
    unsigned char* const bytes = Resize(size);
    m_size = 0; // stays so when the stream throws half-way
    file->Read(bytes, size);
    m_size = size;
    return true;
}

bool TavBlob::Store(CQelFile* file) const
{
    if (file == nullptr)
        return false;
    file->Write(GetData(), m_size);
    return true;
}

void TavBlob::SetData(const void* data, unsigned int size)
{
    if (size > m_room) {
        const std::size_t room = std::max({std::size_t{size}, m_room + m_room / 2, kLeastRoom});
        unsigned char* const fresh = Allocate(room);
        std::memcpy(fresh, data, size);
        std::free(m_data); // only now: the bytes may have been this blob's own
        m_data = fresh;
        m_room = room;
    } else if (size != 0) {
        std::memmove(m_data, data, size);
    }
    m_size = size;
}

unsigned char* TavBlob::Resize(unsigned int size)
{
    if (size > m_room) {
        const std::size_t room = std::max({std::size_t{size}, m_room + m_room / 2, kLeastRoom});
        unsigned char* const fresh = Allocate(room);
        std::free(m_data);
        m_data = fresh;
        m_room = room;
    }
    m_size = size;
    return size == 0 ? nullptr : m_data;
}
