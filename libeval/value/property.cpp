// property.cpp: construction, copying, the null state and the setters of scalars.
#include <qelprop4/qelproperty.h>

#include "property_access.h"

#include <utility>

namespace {

/// Amounts from here on do not fit into 64 bits of ten-thousandths.
constexpr double kAmountLimit = 9223372036854775808.0;

long long CurrencyCount(double amount)
{
    const double count = amount * qel::kCurrencyScale;
    if (!(count >= -kAmountLimit && count < kAmountLimit))
        return INT64_MIN; // what the conversion of a number out of range has always given
    return static_cast<long long>(count);
}

qel::Buffer CopyOfBuffer(const CQelProperty::SData& data)
{
    const unsigned int size = qel::HeldBytes(data);
    if (size == 0)
        return nullptr;
    qel::Buffer copy(new unsigned char[size]);
    std::memcpy(copy.get(), data.pBuffer, size);
    return copy;
}

} // namespace

CQelProperty::CQelProperty() noexcept = default;

CQelProperty::CQelProperty(const CQelProperty& other) : CQelBase(other), m_data(other.m_data)
{
    m_data.pBuffer = nullptr; // not ours, should the copy fail
    m_data.pBuffer = CopyOfBuffer(other.m_data).release();
}

CQelProperty::CQelProperty(CQelProperty&& other) noexcept : m_data(std::move(other.m_data))
{
    other.m_data.pBuffer = nullptr;
    other.m_data.nBufferSize = 0;
    other.m_data.sCurrencySymbol.clear();
    other.SetNull();
}

const CQelProperty& CQelProperty::operator=(const CQelProperty& other)
{
    if (this == &other)
        return *this;
    qel::Buffer copy = CopyOfBuffer(other.m_data);
    m_data.sCurrencySymbol = other.m_data.sCurrencySymbol;
    delete[] m_data.pBuffer;
    m_data.eType = other.m_data.eType;
    m_data.nBufferSize = other.m_data.nBufferSize;
    m_data.pBuffer = copy.release();
    m_data.nReserved = other.m_data.nReserved;
    m_data.nTimeBias = other.m_data.nTimeBias;
    m_data.uValue = other.m_data.uValue;
    return *this;
}

const CQelProperty& CQelProperty::operator=(CQelProperty&& other) noexcept
{
    if (this == &other)
        return *this;
    delete[] m_data.pBuffer;
    m_data = std::move(other.m_data);
    other.m_data.pBuffer = nullptr;
    other.m_data.nBufferSize = 0;
    other.m_data.sCurrencySymbol.clear();
    other.SetNull();
    return *this;
}

CQelProperty::~CQelProperty()
{
    Clear();
}

void CQelProperty::Clear()
{
    if (m_data.pBuffer != nullptr) { // a size that was read without a buffer stays
        delete[] std::exchange(m_data.pBuffer, nullptr);
        m_data.nBufferSize = 0;
    }
    m_data.uValue.nUInt64 = 0;
    m_data.nReserved = 0;
    m_data.nTimeBias = qel::kNoBias;
}

void CQelProperty::SetNull()
{
    ResetToType(eNull);
}

void CQelProperty::ResetToType(EType type)
{
    Clear();
    m_data.eType = type;
}

void CQelProperty::SetInt(int value)
{
    SetInt(static_cast<unsigned int>(value));
    m_data.eType = eInt;
}

void CQelProperty::SetInt(unsigned int value)
{
    ResetToType(eUInt);
    m_data.uValue.nUInt64 = value;
}

void CQelProperty::SetInt64(long long value)
{
    ResetToType(eInt64);
    m_data.uValue.nInt64 = value;
}

void CQelProperty::SetInt64(unsigned long long value)
{
    ResetToType(eUInt64);
    m_data.uValue.nUInt64 = value;
}

void CQelProperty::SetBool(bool value)
{
    ResetToType(eBool);
    m_data.uValue.nUInt64 = value ? 1 : 0;
}

void CQelProperty::SetDouble(double value)
{
    ResetToType(eDouble);
    m_data.uValue.dDouble = value;
}

void CQelProperty::SetCurrency(double amount, const std::wstring& symbol)
{
    m_data.sCurrencySymbol = symbol;
    ResetToType(eCurrency);
    m_data.uValue.nCurrency = CurrencyCount(amount);
}

void CQelProperty::SetReference(unsigned long oid)
{
    ResetToType(eReference);
    m_data.uValue.nUInt64 = oid <= UINT32_MAX ? oid : 0;
}

void CQelProperty::SetCurrencySymbol(const std::wstring& symbol)
{
    m_data.sCurrencySymbol = symbol;
}

std::wstring CQelProperty::GetCurrencySymbol() const
{
    return m_data.sCurrencySymbol;
}
