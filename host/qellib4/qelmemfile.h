// qelmemfile.h: a stream held in memory.
#pragma once

#include <qellib4/qelfile.h>

#include <cstddef>

/// A stream in memory that grows as it is written. Not copied.
///
/// Memory that cannot be had throws std::bad_alloc and leaves the stream as it was.
class QELLIB4_API CQelMemFile : public CQelFile
{
public:
    /// Makes an empty stream.
    /// @param readOnly  true: every write throws 17501 (fill it through GetBuffer and SetSize)
    /// @param initial   bytes for which room is made with the first write
    /// @param growth    step in which the room grows, in bytes; 0 counts as 1
    CQelMemFile(bool readOnly, unsigned int initial, unsigned int growth);
    CQelMemFile(const CQelMemFile&) = delete;
    CQelMemFile& operator=(const CQelMemFile&) = delete;
    ~CQelMemFile() override;

    void Write(const void* data, unsigned int size) override;
    void Read(void* data, unsigned int size) override;
    void Rewind() override;
    long long GetFileSize() const override;
    bool GetFilePosition(long long& position) const override;

    /// Makes the file that many bytes long; a position past the end moves to the end. New bytes are zero, or
    /// what the caller put into room that GetBuffer handed out since the size was last set.
    void SetSize(unsigned int size);
    /// Makes room for `size` bytes without changing the file's length.
    /// @return the file's memory, valid until the file grows or ends; may be null for an empty file and a
    ///         size of 0
    unsigned char* GetBuffer(unsigned int size);

private:
    void MakeRoom(std::size_t size);

    unsigned char* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_room = 0;
    std::size_t m_handedOut = 0; // by GetBuffer, beyond the size, since the size was last set
    std::size_t m_position = 0;
    std::size_t m_initial;
    std::size_t m_growth;
    bool m_readOnly;
};
