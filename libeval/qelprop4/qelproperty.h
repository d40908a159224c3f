// qelproperty.h: the typed value that every column of every record holds.
#pragma once

#include <qellib4/qelbase.h>
#include <qelplat4/mfc.h>
#include <qelplat4/oleauto.h>
#include <qelprop4/export.h>

#include <cstdint>
#include <string>

class COleDateTime;
class CQelFile;
class TavBlob;

/// A typed value that can be null.
///
/// It owns its text or bytes; copies are deep, and a value moved from is null. Text inside the value is
/// UTF-16 whatever the width of wchar_t. Setters report no failure but lack of memory (std::bad_alloc, the
/// value then being unchanged); a value is used by one thread at a time.
class QELPROP4_API CQelProperty : public CQelBase
{
public:
    /// Types of a value; stored as 32-bit signed numbers. A value read from stored bytes may carry a number
    /// that is none of these.
    enum EType : int
    {
        eNull = 0,
        eString = 1,
        eInt = 2,
        eUInt = 3,
        eInt64 = 4,
        eUInt64 = 5,
        eDouble = 6,
        eDate = 7,
        eTime = 8,
        eBool = 9,
        eCurrency = 10,
        eURL = 11,
        eReference = 12,
        eBlob = 13,
        eDateTime = 14
    };

    /// The scalar payload. Setters write zeros to the bytes that the type does not use.
    union UValue
    {
        unsigned long long nUInt64; // first, so that an empty initialiser clears all eight bytes
        long long nInt64;
        int nInt;
        unsigned int nUInt;
        std::uint32_t nULong; ///< object id of a reference
        double dDouble;       ///< also the OLE date of a date, a time and a date-time
        bool bBool;
        long long nCurrency; ///< in ten-thousandths
    };

    struct SData
    {
        EType eType = eNull;
        unsigned int nBufferSize = 0;     ///< bytes in pBuffer, the text's terminator included
        unsigned char* pBuffer = nullptr; ///< UTF-16 text with terminator, or the bytes of a blob; owned
        unsigned int nReserved = 0;
        std::wstring sCurrencySymbol; ///< outlives setters of other types
        int nTimeBias = 9999;         ///< minutes; 9999 means none
        UValue uValue{};
    };

    CQelProperty() noexcept;
    CQelProperty(const CQelProperty& other);
    CQelProperty(CQelProperty&& other) noexcept;
    const CQelProperty& operator=(const CQelProperty& other);
    const CQelProperty& operator=(CQelProperty&& other) noexcept;
    ~CQelProperty() override;

    EType GetType() const { return m_data.eType; }
    /// True for type 0 alone; an empty text is not null.
    bool IsNull() const { return m_data.eType == eNull; }
    void SetNull();
    /// Changes the type and nothing else: buffer, payload, bias and symbol are read under the new type from
    /// now on.
    void SetType(EType type) { m_data.eType = type; }
    /// Makes this an empty value of the type: zero payload, no buffer, no bias.
    void ResetToType(EType type);
    /// The value as it is held; the reference lives as long as the value, the buffer until it changes.
    const SData& Data() const { return m_data; }

    void SetInt(int value);
    void SetInt(unsigned int value);
    void SetInt64(long long value);
    void SetInt64(unsigned long long value);
    void SetBool(bool value);
    void SetDouble(double value);
    /// @param amount  in whole units; held as ten-thousandths cut toward zero (1.23456 -> 12345). An amount
    /// that
    ///                64 bits of ten-thousandths cannot hold becomes the smallest 64-bit number
    /// @param symbol  shown by String(); outlives later setters of other types
    void SetCurrency(double amount, const std::wstring& symbol);
    /// @param oid  object id of another record; a number wider than 32 bits names none and is held as 0
    void SetReference(unsigned long oid);
    void SetURL(const std::wstring& text);
    /// A null pointer gives a hyperlink without a buffer.
    void SetURL(const wchar_t* text);
    /// The second argument is ignored, here and below.
    void SetString(const std::wstring& text, unsigned int unused = 0);
    /// A null pointer empties the value and keeps its type.
    void SetString(const wchar_t* text, unsigned int unused = 0);
    /// @param codePage  code page of the bytes, as MultiByteToWideChar takes it; an unknown one gives an
    /// empty text
    void SetString(const std::string& text, unsigned int codePage);
    void SetStringUTF8(const std::string& text);
    /// @param data  copied; may be null when size is 0
    void SetBlob(const void* data, unsigned int size);
    /// Replaces the symbol alone, whatever the type.
    void SetCurrencySymbol(const std::wstring& symbol);
    std::wstring GetCurrencySymbol() const;

    /// Dates are OLE automation dates, or seconds since 1970-01-01 00:00 UTC broken down in the local time
    /// zone; a long is read as 32 bits. The bias is in minutes, 9999 for none; it is carried, never applied.
    /// What converts to no calendar date gives the payload 0.0.
    void SetDate(double oleDate, int bias);
    void SetDate(long seconds, int bias);
    void SetDate(long long seconds, int bias);
    void SetTime(double oleDate, int bias);
    void SetTime(long seconds, int bias);
    void SetTime(long long seconds, int bias);
    void SetDateTime(double oleDate, int bias);
    void SetDateTime(const COleDateTime& date, int bias);

    int TimeBIAS() const { return m_data.nTimeBias; }
    int& TimeBIAS() { return m_data.nTimeBias; }
    void SetTimeBIAS(int bias) { m_data.nTimeBias = bias; }
    /// The bias as sign, two digits of hours and two of minutes (90 -> +0130; the sign of less than an hour
    /// is lost: -30 -> +0030); empty for 9999.
    std::wstring GetTimeBIAS() const;
    /// Reads "+hhmm", "-hhmm" or "hhmm". The sign applies to the hours alone (-0130 -> -30 minutes).
    /// @param bias  out: minutes; 9999 when the text is refused
    /// @return false for any other length, a missing sign or a non-digit in the four-character form
    static bool ParseTimeBIAS(const std::wstring& text, int& bias);

    /// Compares the whole payload with an OLE date: -1 earlier, 1 later, 0 equal or not comparable.
    int CompareDate(double oleDate) const;
    /// The same comparison as CompareDate.
    int CompareTime(double oleDate) const;

    /// Equal in type and whole content; a currency without a symbol equals one with any.
    bool operator==(const CQelProperty& other) const;
    bool operator!=(const CQelProperty& other) const { return !(*this == other); }
    /// Null before everything; values of different types are unordered. Dates are compared by day alone,
    /// times by time of day alone, texts by code unit.
    bool operator<(const CQelProperty& other) const;

    /// The value as text for people: through the user's regional settings, or through a printf format.
    /// @param format  null or empty for the regional form; otherwise it reads the eight payload bytes (texts
    /// and
    ///                null ignore it); interpreted by this library, bounded at 4,096 characters, safe for any
    ///                text
    std::wstring String(const wchar_t* format = nullptr) const;
    std::string StringUTF8(const wchar_t* format = nullptr) const;
    /// Takes text as the user typed it.
    /// @param type  wanted type; eNull for the value's current one
    /// @return false when nothing could be read (a date, time or date-time never can: the value then becomes
    /// a
    ///         Double of its old payload); apart from that a failed scan leaves the value
    bool SetValue(const wchar_t* text, EType type);
    /// The value as a number: a currency in whole units, 0.0 for what has none.
    double Double() const;

    /// @param out      cleared first, filled, and the caller's to clear
    /// @param vartype  type to change to; 0 keeps the value's own
    /// @return false for references and blobs
    /// @throws COleException* (heap-allocated) when the change of type fails
    bool ToVariant(VARIANT* out, unsigned short vartype);
    /// @param type  wanted type; eNull for the value's current one, or text if that is null too
    /// @return false when the variant does not change to the type, leaving the value
    bool FromVariant(VARIANT* in, EType type);

    /// Display name of a type from this library's own resources; empty for eDateTime and for unknown types.
    static std::wstring GetTypeName(EType type);

protected:
    /// Frees the buffer and empties payload and bias; type and currency symbol stay.
    void Clear();
    /// Text of a null, a text or a hyperlink. @return false, with `out` empty, for every other type
    bool ToXString(std::wstring& out) const;

private:
    friend struct SPropertyAccess; // the parts of the value that live in files of their own

    SData m_data;
};

/// Writes the stored form of a value. Failures are the stream's.
QELPROP4_API CQelFile& operator<<(CQelFile& file, const CQelProperty& value);
/// Reads the stored form, any version; the time bias stays as it was.
/// @throws CQelException* 10011 when the stream ends early; the value is then null
QELPROP4_API CQelFile& operator>>(CQelFile& file, CQelProperty& value);
/// Replaces the blob's content by the stored form of the value.
QELPROP4_API TavBlob& operator<<(TavBlob& blob, const CQelProperty& value);
/// Reads a value from a blob, as from a stream.
QELPROP4_API TavBlob& operator>>(TavBlob& blob, CQelProperty& value);
