// log_on_stream.cpp: one short line for every entry of the log.
#include "log_on_stream.h"

#include "output/screen_text.h"

namespace tool {

bool CLogOnStream::Write(const SEntry& entry)
{
    if (m_stream != nullptr && entry.level <= m_streamLevel) {
        const char* const kind = entry.kind == eError ? "error: " : entry.kind == eWarning ? "warning: " : "";
        const std::wstring code = entry.code == 0 ? L"" : L" (" + std::to_wstring(entry.code) + L")";
        *m_stream << "log: " << kind << OneLine(entry.text + code) << '\n';
    }
    m_lost = !CDovLogfile::Write(entry) || m_lost;
    return true; // a log is no reason to end what it is about
}

} // namespace tool
