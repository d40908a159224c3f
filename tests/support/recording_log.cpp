// recording_log.cpp: a log that keeps its entries for expectations.
#include "recording_log.h"

#include <qellib4/resultcodes.h>
#include <qelplat4/utf16.h>

namespace qeltest {
namespace {

std::wstring TextBesideCode(const CDovLogfile::SEntry& entry)
{
    const std::wstring fixed = entry.code == 0 ? L"" : qel::ResultText(entry.code);
    if (entry.text.compare(0, fixed.size(), fixed) != 0)
        return entry.text;
    const std::wstring rest = entry.text.substr(fixed.size());
    return rest.compare(0, 2, L": ") == 0 ? rest.substr(2) : rest;
}

std::string LineOf(const CDovLogfile::SEntry& entry)
{
    std::string line;
    if (entry.kind == CDovLogfile::eError)
        line = "E";
    else
        line = (entry.kind == CDovLogfile::eWarning ? "W" : "I") + std::to_string(entry.level);
    if (entry.code != 0)
        line += " " + std::to_string(entry.code);
    const std::string text = qel::ToUtf8(TextBesideCode(entry));
    return text.empty() ? line : line + " " + text;
}

} // namespace

bool CRecordingLog::Write(const SEntry& entry)
{
    m_entries.push_back(entry);
    return true;
}

std::string CRecordingLog::Text() const
{
    std::string text;
    for (const SEntry& entry : m_entries)
        text += LineOf(entry) + "\n";
    return text;
}

std::vector<unsigned int> CRecordingLog::ErrorCodes() const
{
    std::vector<unsigned int> codes;
    for (const SEntry& entry : m_entries) {
        if (entry.kind == eError)
            codes.push_back(entry.code);
    }
    return codes;
}

} // namespace qeltest
