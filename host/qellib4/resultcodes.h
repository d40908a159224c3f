// resultcodes.h: the result codes of the whole family and the texts behind them.
#pragma once

#include <qellib4/export.h>

#include <string>

namespace qel {

constexpr unsigned int kSuccess = 10001;
constexpr unsigned int kUnknownException = 10002;
constexpr unsigned int kFrameworkException = 10003;
constexpr unsigned int kChecksumMismatch = 10007;
constexpr unsigned int kEndOfStream = 10011;
constexpr unsigned int kFileExists = 10012;
constexpr unsigned int kNotAStore = 10013;
constexpr unsigned int kFileMissing = 10014;
constexpr unsigned int kFileInUse = 10015;
constexpr unsigned int kRecordDamaged = 10016;
constexpr unsigned int kNotFound = 10020;
constexpr unsigned int kNoBackupCopy = 10210;
constexpr unsigned int kCannotChange = 17201;
constexpr unsigned int kSqlBase = 17300; ///< plus SQLite's primary result code
constexpr unsigned int kNotOpen = 17500;
constexpr unsigned int kReadOnly = 17501;
constexpr unsigned int kInvalidName = 17502;
constexpr unsigned int kNameInUse = 17503;
constexpr unsigned int kTooManyTables = 17504;
constexpr unsigned int kTooManyColumns = 17505;
constexpr unsigned int kTypeFixedByRecords = 17506;
constexpr unsigned int kTooFewValues = 17507;
constexpr unsigned int kWrongValueType = 17508;
constexpr unsigned int kStillReferenced = 17509;

/// The text behind a result code, in English; for a code that has none, its number in words of one form.
QELLIB4_API std::wstring ResultText(unsigned int code);

} // namespace qel
