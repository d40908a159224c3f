// log_on_stream.h: the library's log as lines on a stream, and in its file as well.
#pragma once

#include <qellib4/qellib4.h>

#include <ostream>

namespace tool {

/// A log that goes to a stream up to one level, and to its own file, if it is open, up to another.
class CLogOnStream : public CDovLogfile
{
public:
    /// @param stream  may be null; outlives the log
    explicit CLogOnStream(std::ostream* stream) : m_stream(stream) {}

    void SetStreamLevel(int level) { m_streamLevel = level; }
    bool Write(const SEntry& entry) override;
    /// Whether an entry did not get into the file; always so while none is open.
    bool HasLost() const { return m_lost; }

private:
    std::ostream* m_stream;
    bool m_lost = false;
    int m_streamLevel = 0;
};

} // namespace tool
