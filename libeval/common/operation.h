// operation.h: the frame of every database operation: entry line and closing line; what it throws becomes its
// code in qellib4's exceptionguard.h.
#pragma once

#include <qellib4/dovlogfile.h>
#include <qellib4/exceptionguard.h>
#include <qellib4/resultcodes.h>

namespace qel {

inline constexpr const wchar_t* kSourceQelPropDB = L".\\qelpropdb";
inline constexpr const wchar_t* kSourceQelPropDB3X = L".\\qelpropdb3x";

/// Logs a fault as an error.
/// @return the code
unsigned int LogFault(CDovLogfile* log, unsigned int code, SSite site);
/// Logs the refusal of a caller's request as an informal entry of level 2.
/// @return the code
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

    /// Logs a result other than success and `quiet` as an error, and then "- Done".
    /// @return the code
    unsigned int Done(unsigned int code, unsigned int quiet = kSuccess);

private:
    CDovLogfile* m_log;
    int m_level;
    SSite m_site;
};

} // namespace qel
