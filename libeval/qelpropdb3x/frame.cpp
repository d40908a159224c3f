// frame.cpp: the legacy database itself: construction, opening and closing, limits, names and notification.
#include "legacy_operation.h"

#include "../common/name_rule.h"
#include "../common/notification.h"

#include <qelprop4/qelpropdb3x.h>

using qel::CLegacyOperation;
using qel::kSuccess;

CQelPropDB3X::CQelPropDB3X() = default;

CQelPropDB3X::CQelPropDB3X(const CQelPropDB3X& other) = default;

// Assigning part by part would tear the object when memory runs out half-way.
CQelPropDB3X& CQelPropDB3X::operator=(const CQelPropDB3X& other)
{
    if (this == &other)
        return *this;
    TTables tables(other.m_tables);
    std::map<unsigned long, SRecordIds> recordIds(other.m_recordIds);
    CQelBase::operator=(other);
    m_log = other.m_log;
    m_callback = other.m_callback;
    m_callbackUser = other.m_callbackUser;
    m_store = other.m_store;
    m_tables.swap(tables);
    m_recordIds.swap(recordIds);
    m_unused = other.m_unused;
    return *this;
}

CQelPropDB3X::~CQelPropDB3X()
{
    Close();
}

unsigned int CQelPropDB3X::Create(const std::wstring& path)
{
    return qel::Perform(m_log, 2, L"+ Create Property Database", __LINE__, [&](CLegacyOperation&) {
        Close();
        m_store.SetLogFile(m_log);
        if (const unsigned int code = m_store.Create(path, 1); code != kSuccess)
            qel::LogFault(m_log, code, qel::LegacySite(__LINE__));
        const unsigned int code = StoreTables(m_tables);
        DoNotify(ePropDBOpened, 0, 0);
        return code;
    });
}

unsigned int CQelPropDB3X::Open(const std::wstring& path, bool readOnly)
{
    return qel::Perform(m_log, 2, L"+ Open Property Database", __LINE__, [&](CLegacyOperation&) {
        Close();
        m_store.SetLogFile(m_log);
        if (const unsigned int code = m_store.Open(path, readOnly); code != kSuccess)
            qel::LogFault(m_log, code, qel::LegacySite(__LINE__));
        const unsigned int code = LoadTables(m_tables);
        DoNotify(ePropDBOpened, 0, 0);
        return code;
    });
}

unsigned int CQelPropDB3X::Close()
{
    return qel::Perform(m_log, 2, L"+ Closing Property Database", __LINE__, [&](CLegacyOperation&) {
        m_tables.clear();
        m_recordIds.clear();
        if (!m_store.IsOpen())
            return kSuccess;
        const unsigned int code = m_store.Close();
        if (code != kSuccess)
            qel::LogFault(m_log, code, qel::LegacySite(__LINE__)); // and once more at the end
        DoNotify(ePropDBClosed, 0, 0);
        return code;
    });
}

void CQelPropDB3X::SetLogfile(CDovLogfile* log)
{
    m_log = log;
}

void CQelPropDB3X::SetNotifyCallback(TQelNotifyCallback callback, unsigned int user)
{
    m_callback = callback;
    m_callbackUser = user;
}

bool CQelPropDB3X::DoNotify(EPropDBMessage message, unsigned long first, unsigned long second)
{
    return qel::Notify(m_callback, m_callbackUser, message, first, second);
}

// Tells the host of a success after the closing line was written.
unsigned int CQelPropDB3X::Announce(unsigned int code, EPropDBMessage message, unsigned long first,
                                    unsigned long second) noexcept
{
    if (code != kSuccess)
        return code;
    return qel::RunOperation(m_log, qel::LegacySite(__LINE__), [&] {
        DoNotify(message, first, second);
        return kSuccess;
    });
}

unsigned int CQelPropDB3X::MaxTables() const
{
    return 1000;
}

unsigned int CQelPropDB3X::MaxColumns() const
{
    return 255;
}

bool CQelPropDB3X::IsValidName(const std::wstring& name) const
{
    return qel::IsValidName(name);
}

unsigned int CQelPropDB3X::Optimize(const std::wstring& path, CDovBlobDB::TProgress progress,
                                    unsigned int user)
{
    return qel::RunOperation(m_log, qel::LegacySite(__LINE__),
                             [&] { return m_store.Optimize(path, progress, user, false); });
}

unsigned int CQelPropDB3X::SelfTest(CQelFile* report, unsigned long& errors, CDovBlobDB::TProgress progress,
                                    unsigned int user)
{
    return qel::RunOperation(m_log, qel::LegacySite(__LINE__),
                             [&] { return m_store.SelfTest(report, errors, progress, user); });
}
