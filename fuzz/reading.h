// reading.h: the one way in which reading any bytes may fail.
#pragma once

#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>

#include <cstdlib>

namespace qelfuzz {

/// Runs a read; any other end than the two below is a finding.
/// @return false when the bytes ended before their content did
template <class Read>
bool IsRead(Read&& read)
{
    try {
        read();
        return true;
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        if (code != qel::kEndOfStream)
            std::abort();
        return false;
    }
}

} // namespace qelfuzz
