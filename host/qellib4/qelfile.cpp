// qelfile.cpp: byte forms and checksum of a binary stream.
#include <qellib4/qelexception.h>
#include <qellib4/qelfile.h>
#include <qellib4/resultcodes.h>

#include <qelplat4/utf16.h>

#include <zlib.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr unsigned long long kLargest32 = 0xFFFFFFFFULL;
constexpr std::size_t kChunk = 256; // characters or units of text that pass through the stack at once

template <class Integer>
void WriteLittleEndian(CQelFile& file, Integer value)
{
    const std::uint32_t wide = value;
    unsigned char bytes[sizeof(Integer)];
    for (std::size_t i = 0; i < sizeof(bytes); ++i)
        bytes[i] = static_cast<unsigned char>(wide >> 8 * i & 0xFFu);
    file.Write(bytes, sizeof(bytes));
}

template <class Integer>
Integer ReadLittleEndian(CQelFile& file)
{
    unsigned char bytes[sizeof(Integer)];
    file.Read(bytes, sizeof(bytes));
    std::uint32_t value = 0;
    for (std::size_t i = sizeof(bytes); i-- > 0;)
        value = (value << 8) | bytes[i];
    return static_cast<Integer>(value);
}

void RefuseAbove32Bits(unsigned long long value)
{
    if (value > kLargest32)
        throw new CQelException(qel::kNotFound, 0, L"qelfile.cpp", __LINE__, true);
}

void WriteUnits(CQelFile& file, std::wstring_view text)
{
    char16_t units[2 * kChunk];
    unsigned char bytes[sizeof(units)];
    const std::size_t count = qel::Utf16Length(text);
    qel::WriteUtf16(text, units);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[2 * i] = static_cast<unsigned char>(units[i] & 0xFF);
        bytes[2 * i + 1] = static_cast<unsigned char>(units[i] >> 8);
    }
    file.Write(bytes, static_cast<unsigned int>(2 * count));
}

void ReadUnits(CQelFile& file, std::size_t count, std::wstring& text)
{
    unsigned char bytes[2 * kChunk];
    char16_t units[kChunk];
    file.Read(bytes, static_cast<unsigned int>(2 * count));
    for (std::size_t i = 0; i < count; ++i)
        units[i] = static_cast<char16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
    qel::AppendUtf16(units, count, text);
}

} // namespace

CQelFile::~CQelFile() = default;

CQelFile& CQelFile::operator<<(const unsigned short& value)
{
    WriteLittleEndian<std::uint16_t>(*this, value);
    return *this;
}

CQelFile& CQelFile::operator<<(const int& value)
{
    WriteLittleEndian(*this, static_cast<std::uint32_t>(value));
    return *this;
}

CQelFile& CQelFile::operator<<(const unsigned int& value)
{
    WriteLittleEndian<std::uint32_t>(*this, value);
    return *this;
}

CQelFile& CQelFile::operator<<(const unsigned long& value)
{
    RefuseAbove32Bits(value);
    WriteLittleEndian(*this, static_cast<std::uint32_t>(value));
    return *this;
}

CQelFile& CQelFile::operator<<(const bool& value)
{
    WriteLittleEndian(*this, static_cast<std::uint8_t>(value ? 1 : 0));
    return *this;
}

CQelFile& CQelFile::operator<<(const std::wstring& value)
{
    const std::size_t units = qel::Utf16Length(value);
    RefuseAbove32Bits(units);
    *this << static_cast<unsigned int>(units);
    const std::wstring_view text = value;
    for (std::size_t at = 0; at < text.size(); at += kChunk)
        WriteUnits(*this, text.substr(at, kChunk));
    return *this;
}

CQelFile& CQelFile::operator>>(unsigned short& value)
{
    value = ReadLittleEndian<std::uint16_t>(*this);
    return *this;
}

CQelFile& CQelFile::operator>>(int& value)
{
    value = static_cast<int>(ReadLittleEndian<std::uint32_t>(*this));
    return *this;
}

CQelFile& CQelFile::operator>>(unsigned int& value)
{
    value = ReadLittleEndian<std::uint32_t>(*this);
    return *this;
}

CQelFile& CQelFile::operator>>(unsigned long& value)
{
    value = ReadLittleEndian<std::uint32_t>(*this);
    return *this;
}

CQelFile& CQelFile::operator>>(bool& value)
{
    value = ReadLittleEndian<std::uint8_t>(*this) != 0;
    return *this;
}

CQelFile& CQelFile::operator>>(std::wstring& value)
{
    std::size_t count = ReadLittleEndian<std::uint32_t>(*this);
    if (2ULL * count > BytesRemaining())
        throw new CQelException(qel::kEndOfStream, 0, L"qelfile.cpp", __LINE__, true);
    std::wstring text;
    text.reserve(count);
    for (; count > 0; count -= std::min(count, kChunk))
        ReadUnits(*this, std::min(count, kChunk), text);
    value = std::move(text);
    return *this;
}

void CQelFile::BeginCheckSum()
{
    m_checkSumOn = true;
    m_checkSum = static_cast<std::uint32_t>(crc32(0, nullptr, 0));
}

unsigned long CQelFile::EndCheckSum()
{
    const std::uint32_t sum = m_checkSumOn ? m_checkSum : 0;
    m_checkSumOn = false;
    return sum;
}

unsigned long CQelFile::WriteCheckSum()
{
    const unsigned long sum = EndCheckSum();
    *this << sum;
    return sum;
}

void CQelFile::Accumulate(const void* data, unsigned int size)
{
    if (size != 0)
        m_checkSum = static_cast<std::uint32_t>(crc32(m_checkSum, static_cast<const Bytef*>(data), size));
}

unsigned long long CQelFile::BytesRemaining() const
{
    long long position = 0;
    const long long size = GetFileSize();
    if (!GetFilePosition(position) || position < 0 || position >= size)
        return 0;
    return static_cast<unsigned long long>(size) - static_cast<unsigned long long>(position);
}
