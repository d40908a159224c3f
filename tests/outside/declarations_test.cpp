// declarations_test.cpp: the declarations that hosts are compiled against, values and host libraries.
#include "value_host.h"

#include <qelsq4/qelsq4.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

namespace outside {
namespace {

/// Can be asked only of a function that may be had under exactly this signature, whatever its overloads.
/// @{
template <class Signature, class Class>
std::true_type Has(Signature Class::*);
template <class Signature>
std::true_type Has(Signature*);
/// @}

// A value's state.
static_assert(decltype(Has<void()>(&CQelProperty::SetNull))::value);
static_assert(decltype(Has<bool() const>(&CQelProperty::IsNull))::value);
static_assert(decltype(Has<CQelProperty::EType() const>(&CQelProperty::GetType))::value);
static_assert(decltype(Has<void(CQelProperty::EType)>(&CQelProperty::SetType))::value);
static_assert(decltype(Has<void(CQelProperty::EType)>(&CQelProperty::ResetToType))::value);
static_assert(decltype(Has<const CQelProperty::SData&() const>(&CQelProperty::Data))::value);
static_assert(decltype(Has<void()>(&CDerivedValue::Clear))::value);
static_assert(decltype(Has<std::wstring(CQelProperty::EType)>(&CQelProperty::GetTypeName))::value);

// What a value is set to.
static_assert(decltype(Has<void(int)>(&CQelProperty::SetInt))::value);
static_assert(decltype(Has<void(unsigned int)>(&CQelProperty::SetInt))::value);
static_assert(decltype(Has<void(long long)>(&CQelProperty::SetInt64))::value);
static_assert(decltype(Has<void(unsigned long long)>(&CQelProperty::SetInt64))::value);
static_assert(decltype(Has<void(bool)>(&CQelProperty::SetBool))::value);
static_assert(decltype(Has<void(double)>(&CQelProperty::SetDouble))::value);
static_assert(decltype(Has<void(double, const std::wstring&)>(&CQelProperty::SetCurrency))::value);
static_assert(decltype(Has<void(const std::wstring&)>(&CQelProperty::SetCurrencySymbol))::value);
static_assert(decltype(Has<void(unsigned long)>(&CQelProperty::SetReference))::value);
static_assert(decltype(Has<void(const std::wstring&)>(&CQelProperty::SetURL))::value);
static_assert(decltype(Has<void(const wchar_t*)>(&CQelProperty::SetURL))::value);
static_assert(decltype(Has<void(const std::wstring&, unsigned int)>(&CQelProperty::SetString))::value);
static_assert(decltype(Has<void(const wchar_t*, unsigned int)>(&CQelProperty::SetString))::value);
static_assert(decltype(Has<void(const std::string&, unsigned int)>(&CQelProperty::SetString))::value);
static_assert(decltype(Has<void(const std::string&)>(&CQelProperty::SetStringUTF8))::value);
static_assert(decltype(Has<void(double, int)>(&CQelProperty::SetDate))::value);
static_assert(decltype(Has<void(long, int)>(&CQelProperty::SetDate))::value);
static_assert(decltype(Has<void(long long, int)>(&CQelProperty::SetDate))::value);
static_assert(decltype(Has<void(double, int)>(&CQelProperty::SetTime))::value);
static_assert(decltype(Has<void(long, int)>(&CQelProperty::SetTime))::value);
static_assert(decltype(Has<void(long long, int)>(&CQelProperty::SetTime))::value);
static_assert(decltype(Has<void(double, int)>(&CQelProperty::SetDateTime))::value);
static_assert(decltype(Has<void(const COleDateTime&, int)>(&CQelProperty::SetDateTime))::value);
static_assert(decltype(Has<void(int)>(&CQelProperty::SetTimeBIAS))::value);

// What a value answers, and what it takes from text and variants.
static_assert(decltype(Has<std::wstring() const>(&CQelProperty::GetCurrencySymbol))::value);
static_assert(decltype(Has<int() const>(&CQelProperty::TimeBIAS))::value);
static_assert(decltype(Has<std::wstring() const>(&CQelProperty::GetTimeBIAS))::value);
static_assert(decltype(Has<int(double) const>(&CQelProperty::CompareDate))::value);
static_assert(decltype(Has<int(double) const>(&CQelProperty::CompareTime))::value);
static_assert(decltype(Has<std::wstring(const wchar_t*) const>(&CQelProperty::String))::value);
static_assert(decltype(Has<std::string(const wchar_t*) const>(&CQelProperty::StringUTF8))::value);
static_assert(decltype(Has<double() const>(&CQelProperty::Double))::value);
static_assert(decltype(Has<bool(const CQelProperty&) const>(&CQelProperty::operator==))::value);
static_assert(decltype(Has<bool(const CQelProperty&) const>(&CQelProperty::operator<))::value);
static_assert(decltype(Has<bool(std::wstring&) const>(&CDerivedValue::ToXString))::value);
static_assert(decltype(Has<int&()>(&CQelProperty::TimeBIAS))::value);
static_assert(decltype(Has<bool(const std::wstring&, int&)>(&CQelProperty::ParseTimeBIAS))::value);
static_assert(decltype(Has<bool(const wchar_t*, CQelProperty::EType)>(&CQelProperty::SetValue))::value);
static_assert(decltype(Has<bool(VARIANT*, unsigned short)>(&CQelProperty::ToVariant))::value);
static_assert(decltype(Has<bool(VARIANT*, CQelProperty::EType)>(&CQelProperty::FromVariant))::value);
static_assert(decltype(Has<CQelFile&(CQelFile&, const CQelProperty&)>(&operator<<))::value);
static_assert(decltype(Has<CQelFile&(CQelFile&, CQelProperty&)>(&operator>>))::value);
static_assert(decltype(Has<TavBlob&(TavBlob&, const CQelProperty&)>(&operator<<))::value);
static_assert(decltype(Has<TavBlob&(TavBlob&, CQelProperty&)>(&operator>>))::value);

// Streams and blobs.
static_assert(decltype(Has<CQelFile&(const unsigned short&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(unsigned short&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<CQelFile&(const int&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(int&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<CQelFile&(const unsigned int&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(unsigned int&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<CQelFile&(const unsigned long&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(unsigned long&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<CQelFile&(const bool&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(bool&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<CQelFile&(const std::wstring&)>(&CQelFile::operator<<))::value);
static_assert(decltype(Has<CQelFile&(std::wstring&)>(&CQelFile::operator>>))::value);
static_assert(decltype(Has<unsigned long()>(&CQelFile::EndCheckSum))::value);
static_assert(decltype(Has<unsigned long()>(&CQelFile::WriteCheckSum))::value);
static_assert(decltype(Has<long long() const>(&CQelMemFile::GetFileSize))::value);
static_assert(decltype(Has<unsigned char*(unsigned int)>(&CQelMemFile::GetBuffer))::value);
static_assert(decltype(Has<bool(CQelFile*)>(&TavBlob::Load))::value);
static_assert(decltype(Has<const unsigned char*() const>(&TavBlob::GetData))::value);
static_assert(decltype(Has<unsigned int() const>(&TavBlob::GetSize))::value);
static_assert(decltype(Has<void(const void*, unsigned int)>(&TavBlob::SetData))::value);

// The log, the exception, text conversion and the bit vector.
static_assert(decltype(Has<bool(unsigned int, int, const wchar_t*)>(&CDovLogfile::AddError))::value);
static_assert(
    decltype(Has<bool(unsigned int, const wchar_t*, int, const wchar_t*)>(&CDovLogfile::AddError))::value);
static_assert(decltype(Has<bool(const wchar_t*, int, const wchar_t*)>(&CDovLogfile::AddError))::value);
static_assert(decltype(Has<bool(CException*, int, const wchar_t*)>(&CDovLogfile::AddError))::value);
static_assert(decltype(Has<bool(CQelException*, int, const wchar_t*)>(&CDovLogfile::AddError))::value);
static_assert(decltype(Has<bool(const wchar_t*, int, int, const wchar_t*)>(&CDovLogfile::AddWarning))::value);
static_assert(decltype(Has<bool(unsigned int, int, int, const wchar_t*)>(&CDovLogfile::AddInformal))::value);
static_assert(
    decltype(Has<bool(const wchar_t*, int, int, const wchar_t*)>(&CDovLogfile::AddInformal))::value);
static_assert(decltype(Has<bool(const std::wstring&)>(&CDovLogfile::Open))::value);
static_assert(decltype(Has<void()>(&CDovLogfile::Close))::value);
static_assert(decltype(Has<void(int)>(&CDovLogfile::SetLevel))::value);
static_assert(decltype(Has<unsigned int() const>(&CQelException::GetCode))::value);
static_assert(decltype(Has<std::string(const std::wstring&) const>(&TavCharConvert::ToUTF8))::value);
static_assert(decltype(Has<std::wstring(const std::string&) const>(&TavCharConvert::UTF8ToUnicode))::value);
static_assert(decltype(Has<double(const wchar_t*)>(&TavCharConvert::StringToFloat))::value);
static_assert(decltype(Has<unsigned int() const>(&CBitVector::Size))::value);
static_assert(decltype(Has<bool(unsigned int) const>(&CBitVector::Test))::value);

// The SQL layer.
static_assert(decltype(Has<bool() const>(&CQelSQLite::IsOpen))::value);
static_assert(decltype(Has<bool() const>(&CQelSQLite::IsReadOnly))::value);
static_assert(decltype(Has<sqlite3*() const>(&CQelSQLite::Handle))::value);
static_assert(decltype(Has<int(const std::wstring&, bool)>(&CQelSQLite::Open))::value);
static_assert(decltype(Has<int()>(&CQelSQLite::Close))::value);
static_assert(decltype(Has<int(const wchar_t*)>(&CQelSQLite::ExecSQL))::value);
static_assert(decltype(Has<int(CQelSQLite::CStatement*)>(&CQelSQLite::ExecStatement))::value);
static_assert(decltype(Has<void(sqlite3*)>(&CQelSQLite::Use))::value);
static_assert(decltype(Has<void(CDovLogfile*)>(&CQelSQLite::SetLogfile))::value);
static_assert(decltype(Has<void(int)>(&CQelSQLite::SetBusyTimeout))::value);
static_assert(decltype(Has<unsigned int(int)>(&CQelSQLite::MapQelERR))::value);
static_assert(decltype(Has<int(const wchar_t*)>(&CQelSQLite::CStatement::Prepare))::value);
static_assert(decltype(Has<int(int, long long)>(&CQelSQLite::CStatement::BindInt))::value);
static_assert(decltype(Has<int(int, const wchar_t*)>(&CQelSQLite::CStatement::BindString))::value);
static_assert(decltype(Has<int(int, const std::wstring&)>(&CQelSQLite::CStatement::BindString))::value);
static_assert(decltype(Has<int(int, const TavBlob*)>(&CQelSQLite::CStatement::BindBlob))::value);
static_assert(decltype(Has<int()>(&CQelSQLite::CStatement::Reset))::value);
static_assert(decltype(Has<int()>(&CQelSQLite::CStatement::Step))::value);
static_assert(decltype(Has<int()>(&CQelSQLite::CStatement::Execute))::value);
static_assert(decltype(Has<long long(int)>(&CQelSQLite::CStatement::GetInt))::value);
static_assert(decltype(Has<CString(int)>(&CQelSQLite::CStatement::GetString))::value);
static_assert(decltype(Has<bool(int, TavBlob*)>(&CQelSQLite::CStatement::GetBlob))::value);
static_assert(decltype(Has<bool()>(&CSQLiteTransaction::BeginTrans))::value);
static_assert(decltype(Has<bool()>(&CSQLiteTransaction::Commit))::value);
static_assert(decltype(Has<bool()>(&CSQLiteTransaction::Rollback))::value);

// What is made of what, and what is copied.
static_assert(std::is_constructible_v<CQelMemFile, bool, unsigned int, unsigned int>);
static_assert(std::is_constructible_v<CQelException, unsigned int, unsigned long, const wchar_t*, int, bool>);
static_assert(std::is_constructible_v<CDovLogfileMethodTracker, CDovLogfile*, int, const wchar_t*, int,
                                      const wchar_t*>);
static_assert(std::is_constructible_v<CQelSQLite::CStatement, CQelSQLite*>);
static_assert(std::is_constructible_v<CSQLiteTransaction, CQelSQLite*, bool>);
static_assert(std::is_assignable_v<CBitVector&, std::vector<unsigned long>>);
static_assert(std::is_abstract_v<CQelFile> && std::has_virtual_destructor_v<CQelFile>);
static_assert(std::has_virtual_destructor_v<TavBlob> && std::has_virtual_destructor_v<TavCharConvert>);
static_assert(std::has_virtual_destructor_v<CBitVector> && std::has_virtual_destructor_v<CQelException>);
static_assert(!std::is_copy_constructible_v<CQelSQLite> && !std::is_copy_assignable_v<CQelSQLite>);

// Numbers of enumerations travel as plain numbers.
static_assert(std::is_convertible_v<CQelProperty::EType, int> && sizeof(CQelProperty::EType) == 4);
static_assert(std::is_convertible_v<EPropDBMessage, int>);
static_assert(sizeof(CQelProperty::SData::uValue) == 8 &&
              std::is_union_v<decltype(CQelProperty::SData::uValue)>);

/// The place of an operation in its class's table of virtual ones, as the C++ ABI writes it into a pointer to
/// a member; -1 for one that is not virtual.
template <class Member>
std::ptrdiff_t PlaceOf(Member member)
{
    std::array<std::ptrdiff_t, 2> words{};
    static_assert(sizeof member == sizeof words);
    std::memcpy(words.data(), &member, sizeof member);
    const auto slot = static_cast<std::ptrdiff_t>(sizeof(void*));
    return words[0] % 2 != 0 ? (words[0] - 1) / slot : -1;
}

TEST(VirtualOperations, OfAStreamWriteBeforeTheyRead)
{
    EXPECT_GE(PlaceOf(&CQelFile::Write), 0);
    EXPECT_LT(PlaceOf(&CQelFile::Write), PlaceOf(&CQelFile::Read));
}

TEST(VirtualOperations, OfAConnectionRunATextDirectlyBeforeAStatement)
{
    EXPECT_GE(PlaceOf(&CQelSQLite::ExecSQL), 0);
    EXPECT_EQ(PlaceOf(&CQelSQLite::ExecStatement), PlaceOf(&CQelSQLite::ExecSQL) + 1);
}

TEST(VirtualOperations, OfAValueAreNoneButTheDestructor)
{
    EXPECT_EQ(PlaceOf(&CQelProperty::SetNull), -1);
    EXPECT_EQ(PlaceOf(&CQelProperty::String), -1);
    EXPECT_EQ(PlaceOf(&CQelProperty::SetValue), -1);
    EXPECT_EQ(PlaceOf(&CQelProperty::operator<), -1);
    EXPECT_EQ(PlaceOf(&CDerivedValue::Clear), -1);
    EXPECT_EQ(PlaceOf(&CDerivedValue::ToXString), -1);
}

TEST(ValueRecord, IsTheOneDataMemberOfAValue)
{
    struct SRecordOnTheBase : CQelBase
    {
        CQelProperty::SData data;
    };
    EXPECT_EQ(sizeof(CQelProperty), sizeof(SRecordOnTheBase));
}

TEST(ValueRecord, HasItsFieldsInThisOrder)
{
    const CQelProperty value;
    const CQelProperty::SData& data = value.Data();
    const std::array<const void*, 7> fields{&data.eType,     &data.nBufferSize,     &data.pBuffer,
                                            &data.nReserved, &data.sCurrencySymbol, &data.nTimeBias,
                                            &data.uValue};
    for (std::size_t i = 1; i < fields.size(); ++i)
        EXPECT_LT(fields[i - 1], fields[i]) << i;
}

} // namespace
} // namespace outside
