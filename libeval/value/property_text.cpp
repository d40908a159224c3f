// property_text.cpp: the setters of texts and blobs.
#include <qelprop4/qelproperty.h>

#include "text_buffer.h"

#include <qellib4/tavcharconvert.h>
#include <qelplat4/utf16.h>

#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace qel {

unsigned int TextBytes(std::size_t units)
{
    if (units >= UINT32_MAX / sizeof(char16_t))
        throw std::bad_alloc(); // a longer text has no size that the value could hold
    return static_cast<unsigned int>((units + 1) * sizeof(char16_t));
}

void Adopt(CQelProperty& value, EType type, Buffer buffer, unsigned int size)
{
    value.ResetToType(type);
    CQelProperty::SData& data = SPropertyAccess::Data(value);
    data.pBuffer = buffer.release();
    data.nBufferSize = size;
}

namespace {

void AdoptText(CQelProperty& value, EType type, std::wstring_view text)
{
    const unsigned int size = TextBytes(Utf16Length(text));
    Buffer buffer(new unsigned char[size]);
    WriteUtf16(text, reinterpret_cast<char16_t*>(buffer.get()));
    std::memset(buffer.get() + size - sizeof(char16_t), 0, sizeof(char16_t));
    Adopt(value, type, std::move(buffer), size);
}

} // namespace
} // namespace qel

void CQelProperty::SetString(const std::wstring& text, unsigned int /*unused*/)
{
    qel::AdoptText(*this, eString, text);
}

void CQelProperty::SetString(const wchar_t* text, unsigned int /*unused*/)
{
    if (text == nullptr)
        Clear();
    else
        qel::AdoptText(*this, eString, text);
}

void CQelProperty::SetStringUTF8(const std::string& text)
{
    SetString(TavCharConvert().UTF8ToUnicode(text).c_str());
}

void CQelProperty::SetURL(const std::wstring& text)
{
    qel::AdoptText(*this, eURL, text);
}

void CQelProperty::SetURL(const wchar_t* text)
{
    SetString(text);
    m_data.eType = eURL;
}

void CQelProperty::SetBlob(const void* data, unsigned int size)
{
    const unsigned int held = data != nullptr ? size : 0;
    qel::Buffer buffer(new unsigned char[held]);
    if (held != 0)
        std::memcpy(buffer.get(), data, held);
    qel::Adopt(*this, eBlob, std::move(buffer), held);
}
