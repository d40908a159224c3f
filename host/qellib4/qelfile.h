// qelfile.h: the abstract binary stream and its byte forms.
#pragma once

#include <qellib4/qelbase.h>

#include <cstdint>
#include <string>

/// A binary stream with typed operators and a running checksum.
///
/// Byte forms, the same on every machine: 16- and 32-bit integers little-endian; unsigned long as 32 bits;
/// bool one byte, 0 or 1; a wide string as a 32-bit count of UTF-16 units followed by the units, without a
/// terminator. Any byte other than 0 is read as true. Failures are thrown as heap-allocated CQelException:
/// 10011 when a read would pass the end (a count is tested against the bytes that remain before memory is
/// taken), 17501 for a write to a read-only stream. A value wider than 32 bits in an unsigned long is refused
/// with 10020 and nothing is written: it names nothing. A value whose read failed is unchanged.
class QELLIB4_API CQelFile : public CQelBase
{
public:
    CQelFile() = default;
    CQelFile(const CQelFile&) = default;
    CQelFile& operator=(const CQelFile&) = default;
    ~CQelFile() override;

    /// Writes raw bytes at the position and moves it; `data` may be null when size is 0.
    virtual void Write(const void* data, unsigned int size) = 0;
    /// Reads exactly `size` raw bytes or throws 10011 and leaves the position where it was.
    virtual void Read(void* data, unsigned int size) = 0;
    /// Sets the position back to the start.
    virtual void Rewind() = 0;
    /// Number of bytes in the stream.
    virtual long long GetFileSize() const = 0;
    /// Gives the position.
    /// @param position  out: in bytes from the start; unchanged on failure
    /// @return false when the stream has none
    virtual bool GetFilePosition(long long& position) const = 0;

    /// Writes a value in its byte form and moves the position behind it.
    /// @{
    CQelFile& operator<<(const unsigned short& value);
    CQelFile& operator<<(const int& value);
    CQelFile& operator<<(const unsigned int& value);
    CQelFile& operator<<(const unsigned long& value);
    CQelFile& operator<<(const bool& value);
    CQelFile& operator<<(const std::wstring& value);
    /// @}

    /// Reads a value from its byte form.
    /// When the bytes of a text end early, the position stands behind its count.
    /// @{
    CQelFile& operator>>(unsigned short& value);
    CQelFile& operator>>(int& value);
    CQelFile& operator>>(unsigned int& value);
    CQelFile& operator>>(unsigned long& value);
    CQelFile& operator>>(bool& value);
    CQelFile& operator>>(std::wstring& value);
    /// @}

    /// Starts a CRC-32 over every byte written or read from now on.
    void BeginCheckSum();
    /// Stops the checksum.
    /// @return its value; 0 when none was begun
    unsigned long EndCheckSum();
    /// Stops the checksum and writes it as 32 bits.
    /// @return its value
    unsigned long WriteCheckSum();

    /// Bytes between the position and the end; 0 when the position is unknown or past the end.
    unsigned long long BytesRemaining() const;

protected:
    /// To be called by Write and Read of every stream with the bytes that really passed.
    void AddToCheckSum(const void* data, unsigned int size)
    {
        if (m_checkSumOn)
            Accumulate(data, size);
    }

private:
    void Accumulate(const void* data, unsigned int size);

    bool m_checkSumOn = false;
    std::uint32_t m_checkSum = 0;
};
