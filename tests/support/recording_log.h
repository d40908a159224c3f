// recording_log.h: a log that keeps its entries for expectations.
#pragma once

#include <qellib4/dovlogfile.h>

#include <string>
#include <vector>

namespace qeltest {

/// Keeps every entry; all levels pass unless told otherwise.
class CRecordingLog : public CDovLogfile
{
public:
    explicit CRecordingLog(int level = 100) { SetLevel(level); }

    bool Write(const SEntry& entry) override;

    const std::vector<SEntry>& Entries() const { return m_entries; }
    /// All entries as one text, a line each: "E 17500", "I3 + Adding table", "W1 text", "I2 17502",
    /// "E 10007 extra". The fixed texts behind codes are left out.
    std::string Text() const;
    /// The codes of the errors, in order.
    std::vector<unsigned int> ErrorCodes() const;
    void Forget() { m_entries.clear(); }

private:
    std::vector<SEntry> m_entries;
};

} // namespace qeltest
