// operation.h: the frame of every database operation: entry line, closing line, and exceptions turned into
// codes.
#pragma once

#include <qellib4/dovlogfile.h>
#include <qellib4/resultcodes.h>

namespace qel {

/// A place in the sources, as log entries name it.
struct SSite
{
    const wchar_t* file; ///< one of the two fixed source names
    int line;
};

inline constexpr const wchar_t* kSourceQelPropDB = L".\\qelpropdb";
inline constexpr const wchar_t* kSourceQelPropDB3X = L".\\qelpropdb3x";

/// Logs a fault as an error. @return the code
unsigned int LogFault(CDovLogfile* log, unsigned int code, SSite site);
/// Logs the refusal of a caller's request as an informal entry of level 2. @return the code
unsigned int LogRefusal(CDovLogfile* log, unsigned int code, SSite site);

/// The lines that open and close an operation. Not copied.
///
/// The entry line is written when it is made; the closing line only through Done, so that a refusal that
/// returns early leaves none.
class COperation
{
public:
    /// @param log    may be null
    /// @param entry  a literal text that begins with "+ "
    COperation(CDovLogfile* log, int level, const wchar_t* entry, SSite site);
    COperation(const COperation&) = delete;
    COperation& operator=(const COperation&) = delete;

    /// Logs a result other than success and `quiet` as an error, and then "- Done". @return the code
    unsigned int Done(unsigned int code, unsigned int quiet = kSuccess);

private:
    CDovLogfile* m_log;
    int m_level;
    SSite m_site;
};

/// Turns the exception that is being handled into a result code and logs it; to be called in a catch clause.
///
/// A CQelException gives its own code, any other framework exception 10003, anything else 10002. Never
/// throws.
unsigned int ResultOfCurrentException(CDovLogfile* log, SSite site) noexcept;

/// Runs the body of an operation and gives its result, or the code of the exception that ended it.
template <class Body>
unsigned int RunOperation(CDovLogfile* log, SSite site, Body&& body) noexcept
{
    try {
        return body();
    } catch (...) {
        return ResultOfCurrentException(log, site);
    }
}

} // namespace qel
