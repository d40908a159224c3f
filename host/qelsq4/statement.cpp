// statement.cpp: one prepared statement: parameters, steps and result columns.
#include "connection.h"
#include "raw_result.h"

#include <qelplat4/utf16.h>

#include <sqlite3.h>

#include <cstdint>
#include <string_view>

namespace {

// The bytes of a result column.
struct SBytes
{
    bool isNull;
    const void* data;
    std::size_t size;
};

// Bytes that the engine has to make of another type or encoding.
SBytes ConvertedBytes(sqlite3_stmt* statement, int column, int type)
{
    const void* const bytes =
        type == SQLITE_TEXT ? sqlite3_column_text(statement, column) : sqlite3_column_blob(statement, column);
    if (bytes != nullptr)
        return {false, bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
    if (qel::Primary(sqlite3_errcode(sqlite3_db_handle(statement))) == SQLITE_NOMEM)
        qel::RaiseIfHard(SQLITE_NOMEM, __LINE__);
    return {false, nullptr, 0};
}

// A column as UTF-8 text or as a blob. What is stored so is taken as it stands in the row: finding it is the
// one call that takes the engine's lock.
template <int type>
SBytes BytesOf(sqlite3_stmt* statement, int column)
{
    sqlite3_value* const value = sqlite3_column_value(statement, column);
    const int stored = sqlite3_value_type(value);
    if (stored == SQLITE_NULL)
        return {true, nullptr, 0};
    const bool asItStands =
        stored == type && (type == SQLITE_BLOB || sqlite3_value_encoding(value) == SQLITE_UTF8);
    if (!asItStands)
        return ConvertedBytes(statement, column, type);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
    return {false, size != 0 ? sqlite3_value_blob(value) : nullptr, size};
}

constexpr std::uint64_t BitOf(int index)
{
    return std::uint64_t{1} << (static_cast<unsigned int>(index) & 63u);
}

} // namespace

CQelSQLite::CStatement::CStatement(CQelSQLite* db)
    : m_connection(db != nullptr ? db->m_connection.get() : nullptr), m_failure(SQLITE_MISUSE)
{
    if (m_connection == nullptr)
        return;
    m_next = m_connection->m_statements;
    if (m_next != nullptr)
        m_next->m_previous = this;
    m_connection->m_statements = this;
}

CQelSQLite::CStatement::~CStatement()
{
    if (m_connection == nullptr)
        return;
    GiveBack();
    (m_previous != nullptr ? m_previous->m_next : m_connection->m_statements) = m_next;
    if (m_next != nullptr)
        m_next->m_previous = m_previous;
}

void CQelSQLite::CStatement::GiveBack()
{
    if (m_kept != nullptr)
        m_connection->GiveBack(m_kept, m_bound);
    m_kept = nullptr;
    m_statement = nullptr;
    m_failure = SQLITE_MISUSE;
    m_bound = false;
    m_failedBinds = 0;
}

int CQelSQLite::CStatement::Prepare(const wchar_t* sql)
{
    if (m_connection == nullptr)
        return m_failure;
    GiveBack();
    m_failure = m_connection->Take(sql, m_kept);
    if (m_kept != nullptr)
        m_statement = m_kept->statement;
    return m_failure;
}

// Remembers a bind that failed, so that a caller who tests no bind stores no other value instead.
int CQelSQLite::CStatement::Bound(int index, int raw)
{
    if (raw == SQLITE_OK) {
        m_bound = true;
        m_failedBinds &= ~BitOf(index);
        return raw;
    }
    m_failedBinds |= BitOf(index);
    m_bindFailure = m_connection->Failed(raw, __LINE__);
    return m_bindFailure;
}

int CQelSQLite::CStatement::BindInt(int index, long long value)
{
    return m_statement == nullptr ? m_failure : Bound(index, sqlite3_bind_int64(m_statement, index, value));
}

int CQelSQLite::CStatement::BindString(int index, const wchar_t* text)
{
    if (m_statement == nullptr)
        return m_failure;
    if (text == nullptr)
        return Bound(index, sqlite3_bind_null(m_statement, index));
    return BindText(index, text);
}

int CQelSQLite::CStatement::BindString(int index, const std::wstring& text)
{
    return m_statement == nullptr ? m_failure : BindText(index, text);
}

int CQelSQLite::CStatement::BindText(int index, std::wstring_view text)
{
    constexpr std::size_t kWorthKeeping = 65536;
    std::string& bytes = m_connection->Scratch();
    try {
        bytes.clear();
        qel::AppendUtf8(text, bytes);
    } catch (...) {
        return Bound(index, SQLITE_NOMEM);
    }
    const int raw =
        sqlite3_bind_text64(m_statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (bytes.capacity() > kWorthKeeping)
        std::string().swap(bytes);
    return Bound(index, raw);
}

int CQelSQLite::CStatement::BindBlob(int index, const TavBlob* blob)
{
    if (m_statement == nullptr)
        return m_failure;
    if (blob == nullptr)
        return Bound(index, sqlite3_bind_null(m_statement, index));
    // The engine takes a null pointer for NULL, not for an empty blob.
    const void* const data = blob->GetSize() != 0 ? static_cast<const void*>(blob->GetData()) : "";
    return Bound(index, sqlite3_bind_blob64(m_statement, index, data, blob->GetSize(), SQLITE_TRANSIENT));
}

int CQelSQLite::CStatement::BindBytes(int index, const void* data, unsigned int size)
{
    if (m_statement == nullptr)
        return m_failure;
    return Bound(index, sqlite3_bind_blob64(m_statement, index, size != 0 ? data : "", size, SQLITE_STATIC));
}

int CQelSQLite::CStatement::Reset()
{
    if (m_statement == nullptr)
        return m_failure;
    sqlite3_reset(m_statement); // answers with the failure of the last run, which has been told
    return SQLITE_OK;
}

int CQelSQLite::CStatement::StepRaw()
{
    if (m_statement == nullptr)
        return m_failure;
    if (m_failedBinds != 0)
        return m_bindFailure;
    const int raw = qel::Primary(sqlite3_step(m_statement));
    return raw == SQLITE_ROW || raw == SQLITE_DONE ? raw : m_connection->Failed(raw, __LINE__);
}

int CQelSQLite::CStatement::Step()
{
    const int raw = StepRaw();
    return raw == SQLITE_ROW || raw == SQLITE_DONE ? raw : qel::RaiseIfHard(raw, __LINE__);
}

int CQelSQLite::CStatement::Execute()
{
    return Step();
}

long long CQelSQLite::CStatement::GetInt(int column)
{
    return m_statement == nullptr ? 0 : sqlite3_column_int64(m_statement, column);
}

bool CQelSQLite::CStatement::IsInt(int column)
{
    return m_statement != nullptr && sqlite3_column_type(m_statement, column) == SQLITE_INTEGER;
}

CString CQelSQLite::CStatement::GetString(int column)
{
    if (m_statement == nullptr)
        return {};
    const SBytes bytes = BytesOf<SQLITE_TEXT>(m_statement, column);
    if (bytes.size == 0)
        return {};
    return CString(qel::FromUtf8({static_cast<const char*>(bytes.data), bytes.size}));
}

bool CQelSQLite::CStatement::GetBlob(int column, TavBlob* blob)
{
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (blob == nullptr || !GetBytes(column, data, size))
        return false;
    blob->SetData(data, size);
    return true;
}

bool CQelSQLite::CStatement::GetBytes(int column, const unsigned char*& data, unsigned int& size)
{
    if (m_statement == nullptr)
        return false;
    const SBytes bytes = BytesOf<SQLITE_BLOB>(m_statement, column);
    if (bytes.isNull)
        return false;
    data = static_cast<const unsigned char*>(bytes.data);
    size = static_cast<unsigned int>(bytes.size);
    return true;
}
