// exceptionguard.h: the one place where what an operation throws becomes its result code.
#pragma once

#include <qellib4/dovlogfile.h>
#include <qellib4/export.h>

namespace qel {

/// A place in the sources, as log entries name it.
struct SSite
{
    const wchar_t* file; ///< the fixed name of a library's sources
    int line;            ///< in it
};

/// Turns the exception that is being handled into a result code and logs it; to be called in a catch clause.
///
/// A CQelException gives its own code, any other framework exception 10003, anything else 10002.
/// @param log  may be null
QELLIB4_API unsigned int ResultOfCurrentException(CDovLogfile* log, SSite site) noexcept;

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
