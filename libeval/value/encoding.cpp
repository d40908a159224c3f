// encoding.cpp: the stored form of a value, in streams and blobs.
//
//   version    16 bits   4; versions below 4 hold dates and times as 64-bit seconds since 1970
//   type       32 bits   signed
//   reserved   32 bits
//   size       32 bits   bytes of the last field; other types than 1, 11 and 13 carry it without the field
//   symbol     text      currency symbol of any type: 32-bit count of UTF-16 units, then the units
//   payload    8 bytes   as in memory
//   buffer     size      types 1, 11 and 13 alone: UTF-16 text with its terminator, or the bytes of a blob
//
// All numbers are little-endian. The time bias is no part of it.
#include "encoding.h"

#include "byte_io.h"
#include "dates.h"
#include "property_access.h"

#include <qellib4/qelexception.h>
#include <qellib4/qelfile.h>
#include <qellib4/resultcodes.h>
#include <qellib4/tavblob.h>

#include <utility>

namespace qel {
namespace {

using SData = CQelProperty::SData;

constexpr std::uint16_t kVersion = 4;
constexpr std::uint16_t kFirstVersionWithOleDates = 4;

/// The size field: what a text or a blob really holds, what any other type says.
unsigned int StoredSize(const SData& data)
{
    return HasBuffer(data.eType) ? HeldBytes(data) : data.nBufferSize;
}

template <class Sink>
void WriteFields(Sink& sink, const SData& data)
{
    sink << kVersion << static_cast<int>(data.eType) << data.nReserved << StoredSize(data)
         << data.sCurrencySymbol;
    sink.Write(&data.uValue, sizeof data.uValue);
    if (HasBuffer(data.eType))
        sink.Write(data.pBuffer, HeldBytes(data));
}

template <class Source>
void ReadBuffer(Source& source, SData& data)
{
    if (data.nBufferSize > source.BytesRemaining())
        throw new CQelException(kEndOfStream, 0, L".\\qelproperty", __LINE__, true);
    Buffer buffer(new unsigned char[data.nBufferSize]);
    source.Read(buffer.get(), data.nBufferSize);
    data.pBuffer = buffer.release();
}

template <class... Numbers>
void ReadNumbers(CQelFile& file, Numbers&... numbers)
{
    (file >> ... >> numbers);
}

template <class... Numbers>
void ReadNumbers(CByteReader& reader, Numbers&... numbers)
{
    reader.ReadNumbers(numbers...);
}

template <class Source>
void ReadFields(Source& source, SData& data)
{
    unsigned short version = 0;
    int type = 0;
    ReadNumbers(source, version, type, data.nReserved, data.nBufferSize);
    source >> data.sCurrencySymbol;
    data.eType = static_cast<EType>(type);
    source.Read(&data.uValue, sizeof data.uValue);
    if (HasBuffer(data.eType))
        ReadBuffer(source, data);
    const bool isMoment = data.eType == CQelProperty::eDate || data.eType == CQelProperty::eTime;
    if (isMoment && version < kFirstVersionWithOleDates)
        data.uValue.dDouble = LocalOleDate(SignedBits(data)).value_or(0.0);
}

/// Reads over what the value holds; a value whose bytes end early becomes null.
template <class Source>
void ReadValue(Source& source, CQelProperty& value)
{
    SData& data = SPropertyAccess::Data(value);
    delete[] std::exchange(data.pBuffer, nullptr);
    data.nBufferSize = 0;
    try {
        ReadFields(source, data);
    } catch (...) {
        data.nBufferSize = 0;
        value.SetNull();
        throw;
    }
}

} // namespace

void EncodeInto(TavBlob& blob, const CQelProperty& value)
{
    EncodeTo(blob.Resize(EncodedSize(value)), value);
}

unsigned int EncodedSize(const CQelProperty& value)
{
    CByteCounter counter;
    WriteFields(counter, value.Data());
    return counter.Size();
}

unsigned char* EncodeTo(unsigned char* out, const CQelProperty& value)
{
    CByteWriter writer(out);
    WriteFields(writer, value.Data());
    return writer.End();
}

std::size_t DecodeFrom(const unsigned char* data, std::size_t size, CQelProperty& value)
{
    CByteReader reader(data, size);
    ReadValue(reader, value);
    return size - reader.BytesRemaining();
}

void CheckStored(const unsigned char* data, std::size_t size)
{
    unsigned short version = 0;
    int type = 0;
    unsigned int reserved = 0;
    unsigned int bufferSize = 0;
    std::uint32_t symbolUnits = 0;
    CByteReader reader(data, size);
    reader.ReadNumbers(version, type, reserved, bufferSize, symbolUnits);
    reader.Skip(std::uint64_t{symbolUnits} * sizeof(char16_t));
    reader.Skip(sizeof(CQelProperty::UValue));
    if (HasBuffer(static_cast<EType>(type)))
        reader.Skip(bufferSize);
}

} // namespace qel

CQelFile& operator<<(CQelFile& file, const CQelProperty& value)
{
    qel::WriteFields(file, value.Data());
    return file;
}

CQelFile& operator>>(CQelFile& file, CQelProperty& value)
{
    qel::ReadValue(file, value);
    return file;
}

TavBlob& operator<<(TavBlob& blob, const CQelProperty& value)
{
    qel::EncodeInto(blob, value);
    return blob;
}

TavBlob& operator>>(TavBlob& blob, CQelProperty& value)
{
    qel::DecodeFrom(blob.GetData(), blob.GetSize(), value);
    return blob;
}
