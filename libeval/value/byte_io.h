// byte_io.h: a stream's operators over flat bytes, for values that need no stream object.
#pragma once

#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>
#include <qelplat4/utf16.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>

namespace qel {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "stored numbers are taken from memory as they are");

/// Adds up what a writer will need.
class CByteCounter
{
public:
    template <class Number>
    CByteCounter& operator<<(const Number&)
    {
        m_size += sizeof(Number);
        return *this;
    }
    CByteCounter& operator<<(const std::wstring& text)
    {
        m_size += sizeof(std::uint32_t) + Units(text) * sizeof(char16_t);
        return *this;
    }
    void Write(const void*, unsigned int size) { m_size += size; }

    /// @throws std::bad_alloc when the sum does not fit into 32 bits
    unsigned int Size() const
    {
        if (m_size > std::numeric_limits<unsigned int>::max())
            throw std::bad_alloc();
        return static_cast<unsigned int>(m_size);
    }

private:
    static std::uint64_t Units(const std::wstring& text) { return text.empty() ? 0 : Utf16Length(text); }

    std::uint64_t m_size = 0;
};

/// Writes to bytes that a counter has found to be enough.
class CByteWriter
{
public:
    explicit CByteWriter(unsigned char* out) : m_out(out) {}

    template <class Number>
    CByteWriter& operator<<(const Number& number)
    {
        Write(&number, sizeof number);
        return *this;
    }
    CByteWriter& operator<<(const std::wstring& text)
    {
        if (text.empty())
            return *this << std::uint32_t{0};
        const std::u16string units = ToUtf16(text);
        *this << static_cast<std::uint32_t>(units.size());
        Write(units.data(), static_cast<unsigned int>(units.size() * sizeof(char16_t)));
        return *this;
    }
    void Write(const void* data, unsigned int size)
    {
        if (size == 0)
            return;
        std::memcpy(m_out, data, size);
        m_out += size;
    }
    unsigned char* End() const { return m_out; }

private:
    unsigned char* m_out;
};

/// Reads from bytes that somebody else holds; throws CQelException* 10011 where they end.
class CByteReader
{
public:
    CByteReader(const unsigned char* data, std::size_t size) : m_data(data), m_remaining(size) {}

    template <class Number>
    CByteReader& operator>>(Number& number)
    {
        Read(&number, sizeof number);
        return *this;
    }
    /// Reads several numbers after one look at what remains; none of them when they are not all there.
    template <class... Numbers>
    void ReadNumbers(Numbers&... numbers)
    {
        Require((sizeof(Numbers) + ...));
        (Take(&numbers, sizeof(Numbers)), ...);
    }
    CByteReader& operator>>(std::wstring& text)
    {
        std::uint32_t count = 0;
        *this >> count;
        if (count == 0) {
            text.clear();
            return *this;
        }
        const std::uint64_t bytes = std::uint64_t{count} * sizeof(char16_t);
        Require(bytes);
        std::u16string units(count, u'\0');
        Read(units.data(), static_cast<std::size_t>(bytes));
        text = FromUtf16(units.data(), units.size());
        return *this;
    }
    void Read(void* out, std::size_t size)
    {
        Require(size);
        if (size != 0)
            Take(out, size);
    }
    void Skip(std::uint64_t size)
    {
        Require(size);
        m_data += size;
        m_remaining -= static_cast<std::size_t>(size);
    }
    std::size_t BytesRemaining() const { return m_remaining; }

private:
    void Take(void* out, std::size_t size)
    {
        std::memcpy(out, m_data, size);
        m_data += size;
        m_remaining -= size;
    }
    void Require(std::uint64_t size) const
    {
        if (size > m_remaining)
            throw new CQelException(kEndOfStream, 0, L".\\qelproperty", __LINE__, true);
    }

    const unsigned char* m_data;
    std::size_t m_remaining;
};

} // namespace qel
