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
    /// Types of a value; stored as 32-bit signed numbers.
    ///
    /// A value read from stored bytes may carry a number that is none of these.
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
        unsigned long long nUInt64; ///< first, so that an empty initialiser clears all eight bytes
        long long nInt64;           ///< of eInt64
        int nInt;                   ///< of eInt
        unsigned int nUInt;         ///< of eUInt
        std::uint32_t nULong;       ///< object id of a reference
        double dDouble;             ///< also the OLE date of a date, a time and a date-time
        bool bBool;                 ///< of eBool
        long long nCurrency;        ///< in ten-thousandths
    };

    /// All that a value holds.
    struct SData
    {
        EType eType = eNull;              ///< which of the payload's members counts
        unsigned int nBufferSize = 0;     ///< bytes in pBuffer, the text's terminator included
        unsigned char* pBuffer = nullptr; ///< UTF-16 text with terminator, or the bytes of a blob; owned
        unsigned int nReserved = 0;       ///< stored and copied, and read by nothing
        std::wstring sCurrencySymbol;     ///< outlives setters of other types
        int nTimeBias = 9999;             ///< minutes; 9999 means none
        UValue uValue{};                  ///< zero for types without a number
    };

    /// Makes a null value.
    CQelProperty() noexcept;
    /// Copies text or bytes as well; a value moved from is null, without a currency symbol.
    /// @{
    CQelProperty(const CQelProperty& other);
    CQelProperty(CQelProperty&& other) noexcept;
    const CQelProperty& operator=(const CQelProperty& other);
    const CQelProperty& operator=(CQelProperty&& other) noexcept;
    /// @}
    ~CQelProperty() override;

    /// One of EType, or another number that was read from stored bytes or set by SetType.
    EType GetType() const { return m_data.eType; }
    /// True for type 0 alone; an empty text is not null.
    bool IsNull() const { return m_data.eType == eNull; }
    /// Empties the value: no buffer, zero payload, no bias. The currency symbol stays.
    void SetNull();
    /// Changes the type and nothing else: buffer, payload, bias and symbol are read under the new type.
    void SetType(EType type) { m_data.eType = type; }
    /// Makes this an empty value of the type: zero payload, no buffer, no bias.
    void ResetToType(EType type);
    /// The value as it is held; the reference lives as long as the value, the buffer until it changes.
    const SData& Data() const { return m_data; }

    /// Makes this value a number of the type that the argument has: eInt or eUInt, eInt64 or eUInt64.
    /// @{
    void SetInt(int value);
    void SetInt(unsigned int value);
    void SetInt64(long long value);
    void SetInt64(unsigned long long value);
    /// @}
    /// Makes this value a Boolean.
    void SetBool(bool value);
    /// Makes this value a Double; infinities and NaN are held as they are.
    void SetDouble(double value);
    /// Makes this value a currency amount.
    /// @param amount  in whole units; held as ten-thousandths cut toward zero (1.23456 -> 12345). An amount
    ///                that 64 bits of ten-thousandths cannot hold becomes the smallest 64-bit number
    /// @param symbol  shown by String(); outlives later setters of other types
    void SetCurrency(double amount, const std::wstring& symbol);
    /// Makes this value a reference.
    /// @param oid  object id of another record; a number wider than 32 bits names none and is held as 0
    void SetReference(unsigned long oid);
    /// Makes this value a hyperlink; the text is copied and not looked at.
    void SetURL(const std::wstring& text);
    /// The same; a null pointer gives a hyperlink without a buffer.
    void SetURL(const wchar_t* text);
    /// Makes this value a text, which is copied; the second argument is ignored.
    void SetString(const std::wstring& text, unsigned int unused = 0);
    /// The same; a null pointer empties the value and keeps its type.
    void SetString(const wchar_t* text, unsigned int unused = 0);
    /// Makes this value a text given as bytes.
    /// @param codePage  of the bytes, as MultiByteToWideChar takes it; an unknown one gives an empty text
    void SetString(const std::string& text, unsigned int codePage);
    /// The same from UTF-8; what is no character becomes U+FFFD.
    void SetStringUTF8(const std::string& text);
    /// Makes this value a run of bytes.
    /// @param data  copied; may be null when size is 0
    void SetBlob(const void* data, unsigned int size);
    /// Replaces the symbol alone, whatever the type.
    void SetCurrencySymbol(const std::wstring& symbol);
    /// The symbol that was set last, whatever the type is now.
    std::wstring GetCurrencySymbol() const;

    /// Makes this value a date, a time or a date-time.
    ///
    /// Dates are OLE automation dates, or seconds since 1970-01-01 00:00 UTC broken down in the local time
    /// zone; a long is read as 32 bits. The bias is in minutes, 9999 for none; it is carried, never applied.
    /// What converts to no calendar date gives the payload 0.0.
    /// @{
    void SetDate(double oleDate, int bias);
    void SetDate(long seconds, int bias);
    void SetDate(long long seconds, int bias);
    void SetTime(double oleDate, int bias);
    void SetTime(long seconds, int bias);
    void SetTime(long long seconds, int bias);
    void SetDateTime(double oleDate, int bias);
    void SetDateTime(const COleDateTime& date, int bias);
    /// @}

    /// The time bias in minutes, 9999 for none; the reference lives as long as the value.
    /// @{
    int TimeBIAS() const { return m_data.nTimeBias; }
    int& TimeBIAS() { return m_data.nTimeBias; }
    void SetTimeBIAS(int bias) { m_data.nTimeBias = bias; }
    /// @}
    /// The bias as sign, two digits of hours and two of minutes: 90 -> +0130; empty for 9999.
    /// The sign of less than an hour is lost: -30 -> +0030.
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
    /// The opposite of `==`.
    bool operator!=(const CQelProperty& other) const { return !(*this == other); }
    /// Null before everything; values of different types are unordered. Dates are compared by day alone,
    /// times by time of day alone, texts by code unit.
    bool operator<(const CQelProperty& other) const;

    /// The value as text for people: through the user's regional settings, or through a printf format.
    /// @param format  null or empty for the regional form; otherwise it reads the eight payload bytes (texts
    ///                and null ignore it). Interpreted by this library, so that no text can do harm; the
    ///                result is bounded at 4,096 characters
    std::wstring String(const wchar_t* format = nullptr) const;
    /// The same in UTF-8.
    std::string StringUTF8(const wchar_t* format = nullptr) const;
    /// Takes text as the user typed it.
    /// @param type  wanted type; eNull for the value's current one
    /// @return false when nothing could be read. The value is then as it was, with two exceptions: what is no
    ///         Boolean makes it a Boolean that is false, and a date, a time or a date-time, which can never
    ///         be read, makes it a Double of its old payload
    bool SetValue(const wchar_t* text, EType type);
    /// The value as a number; 0.0 for what has none.
    /// A currency is cut to whole units, and unsigned 64-bit numbers from 2^63 on come out negative.
    double Double() const;

    /// Gives the value as a variant.
    /// @param out      cleared first, filled, and the caller's to clear
    /// @param vartype  type to change to; 0 keeps the value's own
    /// @return false for references and blobs
    /// @throws COleException* (heap-allocated) when the change of type fails
    bool ToVariant(VARIANT* out, unsigned short vartype);
    /// Takes what a variant holds.
    /// @param type  wanted type; eNull for the value's current one, or text if that is null too
    /// @return false when the variant does not change to the type, leaving the value
    bool FromVariant(VARIANT* in, EType type);

    /// Display name of a type from this library's own resources; empty for eDateTime and for unknown types.
    static std::wstring GetTypeName(EType type);

protected:
    /// Frees the buffer with its size and empties payload and bias; type and currency symbol stay.
    void Clear();
    /// Gives the text of a null, a text or a hyperlink.
    /// @return false, with `out` empty, for every other type
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
