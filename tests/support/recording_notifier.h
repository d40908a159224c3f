// recording_notifier.h: a notification callback that keeps what it is told.
#pragma once

#include <qelprop4/propdbtypes.h>

#include <string>

namespace qeltest {

/// Keeps the messages of every database that Notify is set for; tests run one at a time.
class CRecordingNotifier
{
public:
    CRecordingNotifier() { Heard().clear(); }
    ~CRecordingNotifier() { Heard().clear(); }

    /// The callback; its answer is ignored by the databases.
    static bool QEL_STDCALL Notify(EPropDBMessage message, unsigned long tableOid, unsigned long recordOid,
                                   unsigned int user)
    {
        Heard() += (Heard().empty() ? "" : " ") + std::to_string(message) + "(" + std::to_string(tableOid) +
                   "," + std::to_string(recordOid) + (user == 0 ? "" : ";" + std::to_string(user)) + ")";
        return true;
    }

    /// What was heard, "2(1,0) 5(1,7)"; a user value other than 0 stands behind a semicolon.
    std::string Text() const { return Heard(); }
    void Forget() { Heard().clear(); }

private:
    static std::string& Heard()
    {
        static std::string heard;
        return heard;
    }
};

} // namespace qeltest
