// notification.h: messages to the host.
#pragma once

#include <qelprop4/propdbtypes.h>

namespace qel {

/// Calls the host's callback.
/// @return its result; true without one
inline bool Notify(TQelNotifyCallback callback, unsigned int user, EPropDBMessage message,
                   unsigned long first, unsigned long second)
{
    return callback == nullptr || callback(message, first, second, user);
}

} // namespace qel
