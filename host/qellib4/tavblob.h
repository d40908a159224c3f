// tavblob.h: a byte buffer passed between values and the SQL layer.
#pragma once

#include <qellib4/export.h>

#include <vector>

class CQelFile;

/// A growable run of bytes; keeps its memory when its content is replaced.
class QELLIB4_API TavBlob
{
public:
    TavBlob() = default;
    TavBlob(const TavBlob&) = default;
    TavBlob(TavBlob&&) noexcept = default;
    TavBlob& operator=(const TavBlob&) = default;
    TavBlob& operator=(TavBlob&&) noexcept = default;
    virtual ~TavBlob();

    /// Replaces the content by the bytes from the stream's position to its end. @return false for a null
    /// stream
    bool Load(CQelFile* file);
    /// Writes the content to the stream. @return false for a null stream
    bool Store(CQelFile* file) const;

    /// The bytes, valid until the content changes; null when the blob is empty.
    const unsigned char* GetData() const;
    unsigned int GetSize() const;
    /// Replaces the content by a copy of the bytes, which may lie inside this blob; `data` may be null when
    /// size is 0.
    void SetData(const void* data, unsigned int size);
    /// Replaces the content by `size` bytes for the caller to fill. @return the bytes, as GetData gives them
    unsigned char* Resize(unsigned int size);

private:
    std::vector<unsigned char> m_bytes;
};
