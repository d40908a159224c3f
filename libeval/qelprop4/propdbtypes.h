// propdbtypes.h: what both databases tell and take.
#pragma once

#include <qelplat4/export.h>
#include <qelprop4/qelproperty.h>

#include <vector>

/// Messages of the notification callback, sent as (message, table oid or 0, record oid or 0).
enum EPropDBMessage
{
    ePropDBOpened = 0, ///< attached, created or opened
    ePropDBClosed = 1,
    ePropDBTableAdded = 2,
    ePropDBTableChanged = 3, ///< the table or one of its columns
    ePropDBTableRemoved = 4,
    ePropDBRecordAdded = 5,
    ePropDBRecordSet = 6,
    ePropDBRecordRemoved = 7
};

/// Called on the caller's thread after a change was committed.
/// @param user  the number that the host gave with the callback
/// @return handed on by DoNotify; no operation looks at it
using TQelNotifyCallback = bool(QEL_STDCALL*)(EPropDBMessage message, unsigned long tableOid,
                                              unsigned long recordOid, unsigned int user);

/// One value of a record. A record is a vector of these.
struct SQelPropColumnData
{
    unsigned long columnOid = 0; ///< whose value it is; each database says what it makes of 0
    CQelProperty value;          ///< owned by the record
};
