// resultcodes.h: the result codes of the whole family and the texts behind them.
#pragma once

#include <qellib4/export.h>

#include <string>

namespace qel {

/// @name Result codes
/// @{
constexpr unsigned int kSuccess = 10001;            ///< the only one that means success
constexpr unsigned int kUnknownException = 10002;   ///< lack of memory among others
constexpr unsigned int kFrameworkException = 10003; ///< a CException without a code of its own
constexpr unsigned int kChecksumMismatch = 10007;   ///< of the schema record
constexpr unsigned int kEndOfStream = 10011;        ///< data ends before its content does
constexpr unsigned int kFileExists = 10012;         ///< and is not to be replaced
constexpr unsigned int kNotAStore = 10013;          ///< the file is no record store
constexpr unsigned int kFileMissing = 10014;        ///< no such file
constexpr unsigned int kFileInUse = 10015;          ///< elsewhere
constexpr unsigned int kRecordDamaged = 10016;      ///< its bytes fail their checksum
constexpr unsigned int kNotFound = 10020;           ///< no such table, column or record
constexpr unsigned int kNoBackupCopy = 10210;       ///< of the store file, which is needed before a change
constexpr unsigned int kCannotChange = 17201;       ///< no transaction could be begun or ended
constexpr unsigned int kSqlBase = 17300;            ///< plus SQLite's primary result code
constexpr unsigned int kNotOpen = 17500;            ///< the database or the store
constexpr unsigned int kReadOnly = 17501;           ///< a change of what was opened for reading
constexpr unsigned int kInvalidName = 17502;        ///< of a table or a column
constexpr unsigned int kNameInUse = 17503;          ///< by another table, or another column of the table
constexpr unsigned int kTooManyTables = 17504;      ///< 1000 in a legacy database
constexpr unsigned int kTooManyColumns = 17505;     ///< 255 in a table
constexpr unsigned int kTypeFixedByRecords = 17506; ///< a column's type cannot change while there are records
constexpr unsigned int kTooFewValues = 17507;       ///< only logged: null is stored for the others
constexpr unsigned int kWrongValueType = 17508;     ///< only logged: null is stored instead
constexpr unsigned int kStillReferenced = 17509;    ///< a Reference column keeps it from being removed
/// @}

/// The text behind a result code, in English; for a code without one, a text that names its number.
QELLIB4_API std::wstring ResultText(unsigned int code);

} // namespace qel
