// dump_format.h: the keys of a dump's lines.
#pragma once

namespace tool::dump {

constexpr const char* kMark = "qelprop";
constexpr const char* kMarkValue = "dump";
constexpr const char* kVersion = "version";
constexpr int kNewest = 1;
constexpr const char* kKind = "kind";
constexpr const char* kSQLite = "sqlite";
constexpr const char* kLegacy = "legacy";
constexpr const char* kTable = "table";
constexpr const char* kFlag = "flag";
constexpr const char* kRecord = "record";
constexpr const char* kValues = "values";
constexpr const char* kEnd = "end";
constexpr const char* kTables = "tables";
constexpr const char* kRecords = "records";

} // namespace tool::dump
