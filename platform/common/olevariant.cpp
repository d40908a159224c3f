// olevariant.cpp: the framework's variant class and the exception of its failures.
#include <qelplat4/oledatetime.h>
#include <qelplat4/olevariant.h>

#include <cwchar>

namespace {

void ThrowUnlessDone(HRESULT result)
{
    if (FAILED(result))
        AfxThrowOleException(result);
}

// The system's functions take what they only read without const.
VARIANT* Readable(const VARIANT& variant)
{
    return const_cast<VARIANT*>(&variant);
}

// Null comes of a lack of memory alone.
BSTR NewText(const wchar_t* text, std::size_t length)
{
    BSTR copy = SysAllocStringLen(text, static_cast<UINT>(length));
    if (copy == nullptr)
        AfxThrowOleException(E_OUTOFMEMORY);
    return copy;
}

} // namespace

COleException::~COleException() = default;

std::wstring COleException::GetErrorText() const
{
    switch (m_sc) {
    case DISP_E_TYPEMISMATCH:
        return L"The value cannot be changed to this type.";
    case DISP_E_OVERFLOW:
        return L"The value is too large for this type.";
    case DISP_E_BADVARTYPE:
        return L"There is no such type of value.";
    case E_OUTOFMEMORY:
        return L"There is not enough memory.";
    default:
        return L"The value is not valid.";
    }
}

void AfxThrowOleException(SCODE code)
{
    throw new COleException(code);
}

COleVariant::COleVariant(const COleVariant& other) : COleVariant(static_cast<const VARIANT&>(other))
{}

COleVariant::COleVariant(const VARIANT& source)
{
    VariantInit(this);
    ThrowUnlessDone(VariantCopy(this, Readable(source)));
}

COleVariant::COleVariant(const wchar_t* text)
{
    VariantInit(this);
    bstrVal = NewText(text, text != nullptr ? std::wcslen(text) : 0);
    vt = VT_BSTR;
}

COleVariant::COleVariant(const std::wstring& text)
{
    VariantInit(this);
    bstrVal = NewText(text.data(), text.size());
    vt = VT_BSTR;
}

COleVariant::COleVariant(int value, VARTYPE type) : COleVariant(static_cast<long>(value), type)
{}

COleVariant::COleVariant(long value, VARTYPE type)
{
    VariantInit(this);
    if (type == VT_BOOL)
        boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    else
        lVal = static_cast<LONG>(value);
    vt = type;
}

COleVariant::COleVariant(double value, VARTYPE type)
{
    VariantInit(this);
    dblVal = value; // a date is held as a real is
    vt = type;
}

COleVariant::COleVariant(const COleDateTime& moment) : COleVariant(moment.m_dt, VT_DATE)
{}

COleVariant& COleVariant::operator=(const COleVariant& other)
{
    return *this = static_cast<const VARIANT&>(other);
}

COleVariant& COleVariant::operator=(const VARIANT& source)
{
    ThrowUnlessDone(VariantCopy(this, Readable(source)));
    return *this;
}

void COleVariant::Clear()
{
    ThrowUnlessDone(VariantClear(this));
}

void COleVariant::ChangeType(VARTYPE type, const VARIANT* source)
{
    ThrowUnlessDone(VariantChangeType(this, source != nullptr ? Readable(*source) : this, 0, type));
}

VARIANT COleVariant::Detach()
{
    const VARIANT value = *this;
    VariantInit(this);
    return value;
}

COleDateTime::COleDateTime(const VARIANT& value)
{
    COleVariant date;
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) {
        m_status = null;
    } else if (FAILED(VariantChangeType(&date, Readable(value), 0, VT_DATE))) {
        m_status = invalid;
    } else {
        m_dt = date.date;
    }
}
