// result_matchers.h: result codes in expectations.
#pragma once

#include <gmock/gmock.h>
#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>
#include <qelplat4/utf16.h>

#include <functional>

namespace qeltest {

inline void Explain(unsigned int code, testing::MatchResultListener* listener)
{
    *listener << code << " (" << qel::ToUtf8(qel::ResultText(code)) << ")";
}

/// The result code is 10001; a failure names the code in words.
MATCHER(Succeeds, "is 10001 (Success)")
{
    Explain(arg, result_listener);
    return arg == qel::kSuccess;
}

/// The result code is this one.
MATCHER_P(Gives, code, "is " + std::to_string(code) + " (" + qel::ToUtf8(qel::ResultText(code)) + ")")
{
    Explain(arg, result_listener);
    return arg == static_cast<unsigned int>(code);
}

/// Runs the work and gives the code of the CQelException that it threw, 0 when it threw none.
inline unsigned int CodeThrownBy(const std::function<void()>& work)
{
    try {
        work();
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        return code;
    }
    return 0;
}

} // namespace qeltest
