// progress.h: what a progress callback is told of work on records.
#pragma once

#include <qelfdb4/dovblobdb.h>

namespace qel {

/// Tells the start when made, every so many records, and the end. Not copied.
class CProgress
{
public:
    /// @param callback  null tells nobody
    /// @param total     records there are; counted only where somebody is told
    template <class Count>
    CProgress(CDovBlobDB::TProgress callback, const wchar_t* text, Count&& total)
        : m_callback(callback), m_text(text), m_total(callback != nullptr ? total() : 0)
    {
        Tell(CDovBlobDB::eCBStart);
    }
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    /// One record is done.
    void Step()
    {
        if (++m_done % kRecordsPerStep == 0)
            Tell(CDovBlobDB::eCBStep);
    }
    void End()
    {
        m_done = m_total;
        Tell(CDovBlobDB::eCBEnd);
    }

private:
    static constexpr unsigned int kRecordsPerStep = 100;

    void Tell(CDovBlobDB::ECBMessage message) const
    {
        if (m_callback != nullptr)
            m_callback(message, m_done, m_total, 0, &m_text);
    }

    CDovBlobDB::TProgress m_callback;
    std::wstring m_text;
    unsigned int m_total;
    unsigned int m_done = 0;
};

} // namespace qel
