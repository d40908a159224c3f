// tavblob.h: a byte buffer passed between values and the SQL layer.
#pragma once

#include <qellib4/export.h>

#include <cstddef>

class CQelFile;

/// A growable run of bytes; keeps its memory when its content is replaced.
class QELLIB4_API TavBlob
{
public:
    TavBlob() = default;
    /// Copies the bytes.
    TavBlob(const TavBlob& other);
    /// Leaves the other blob empty.
    TavBlob(TavBlob&& other) noexcept;
    /// Copies the bytes.
    TavBlob& operator=(const TavBlob& other);
    /// Leaves the other blob empty.
    TavBlob& operator=(TavBlob&& other) noexcept;
    virtual ~TavBlob();

    /// Replaces the content by the bytes from the stream's position to its end.
    /// @return false, leaving the content, for a null stream and for more than 4,294,967,295 bytes
    bool Load(CQelFile* file);
    /// Writes the content to the stream.
    /// @return false for a null stream
    bool Store(CQelFile* file) const;

    /// The bytes, valid until the content changes; null when the blob is empty.
    const unsigned char* GetData() const { return m_size == 0 ? nullptr : m_data; }
    /// Number of bytes.
    unsigned int GetSize() const { return m_size; }
    /// Replaces the content by a copy of bytes.
    /// @param data  may lie inside this blob; may be null when size is 0
    void SetData(const void* data, unsigned int size);
    /// Replaces the content by `size` bytes for the caller to fill: they hold anything until then.
    /// @return the bytes, as GetData gives them
    unsigned char* Resize(unsigned int size);

private:
    unsigned char* m_data = nullptr; // raw memory: room that is about to be filled is not filled twice
    unsigned int m_size = 0;
    std::size_t m_room = 0;
};
