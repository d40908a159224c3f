// legacy_operation.h: the frame of the legacy database's operations, which close with "- Done" whatever came.
#pragma once

#include "../common/operation.h"

#include <qelfdb4/qelfdb4.h>

namespace qel {

/// What one operation tells the log between its first and its last line. Not copied.
///
/// A result that was already told as a refusal or a fault is not logged a second time at the end.
class CLegacyOperation
{
public:
    CLegacyOperation(CDovLogfile* log, int level, SSite site) : m_log(log), m_level(level), m_site(site) {}
    CLegacyOperation(const CLegacyOperation&) = delete;
    CLegacyOperation& operator=(const CLegacyOperation&) = delete;

    /// Logs a refusal as an informal entry.
    /// @return the code
    unsigned int Refuse(unsigned int code);
    /// Logs a fault as an error.
    /// @return the code
    unsigned int Fail(unsigned int code);
    /// Writes an informal line of the operation's own level.
    void Note(const wchar_t* text);
    /// Keeps a code out of the error lines at the end.
    void KeepQuiet(unsigned int code) { m_told = code; }
    /// The code that is not to be logged at the end; 10001 when there is none.
    unsigned int Told() const { return m_told; }

private:
    CDovLogfile* m_log;
    int m_level;
    SSite m_site;
    unsigned int m_told = kSuccess;
};

/// A place in the legacy database's sources.
constexpr SSite LegacySite(int line)
{
    return {kSourceQelPropDB3X, line};
}

/// Refuses with 17500 when the store is closed, else gives 10001.
unsigned int RefuseUnlessOpen(CLegacyOperation& operation, const CDovBlobDB& store);
/// Refuses with 17500 when the store is closed and with 17501 when it is read-only, else gives 10001.
unsigned int RefuseUnlessWritable(CLegacyOperation& operation, const CDovBlobDB& store);

/// Runs the work of an operation between its entry line and "- Done"; `work` takes the CLegacyOperation&.
/// @param entry  a literal text that begins with "+ "
/// @return the work's result, or the code of the exception that ended it
template <class Work>
unsigned int Perform(CDovLogfile* log, int level, const wchar_t* entry, int line, Work&& work) noexcept
{
    const SSite site = LegacySite(line);
    return RunOperation(log, site, [&] {
        COperation lines(log, level, entry, site);
        CLegacyOperation operation(log, level, site);
        const unsigned int code = RunOperation(log, site, [&] { return work(operation); });
        return lines.Done(code, operation.Told());
    });
}

/// Runs the work of an operation that has no lines of its own.
/// @return as Perform
template <class Work>
unsigned int LookUp(CDovLogfile* log, int line, Work&& work) noexcept
{
    const SSite site = LegacySite(line);
    return RunOperation(log, site, [&] {
        CLegacyOperation operation(log, 4, site);
        const unsigned int code = work(operation);
        return code == kSuccess || code == operation.Told() ? code : LogFault(log, code, site);
    });
}

} // namespace qel
