// dump_reader.h: the lines of a dump as tables and records.
#pragma once

#include "adaptor/property_file.h"

#include <nlohmann/json.hpp>

#include <istream>
#include <string>

namespace tool {

/// Reads a dump line by line. Not copied.
class CDumpReader
{
public:
    /// @param in  outlives the reader
    CDumpReader(std::istream& in, std::string fileName) : m_in(in), m_fileName(std::move(fileName)) {}
    CDumpReader(const CDumpReader&) = delete;
    CDumpReader& operator=(const CDumpReader&) = delete;

    /// Reads up to the first record.
    /// @throws SFailure  4 with the line for what is no dump
    void ReadTables();
    EKind Kind() const { return m_kind; }
    const std::vector<CQelTable>& Tables() const { return m_tables; }

    /// @param record  out: one value per column of the table, in its order
    /// @return false at the end of a dump that is complete
    /// @throws SFailure  4 with the line
    bool Next(unsigned long& table, unsigned long& recordOid, CRecord& record);
    unsigned long long BytesRead() const { return m_bytesRead; }

private:
    [[noreturn]] void Fail(const std::string& message, EExit exit = EExit::eRefused) const;
    void ReadLine();
    void ReadEnd();
    const CQelTable& TableOf(unsigned long oid) const;

    std::istream& m_in;
    std::string m_fileName;
    std::string m_text;
    nlohmann::json m_line;
    unsigned long long m_number = 0;
    unsigned long long m_bytesRead = 0;
    unsigned long long m_records = 0;
    bool m_pending = false; // m_line was read and not used
    EKind m_kind = EKind::eSQLite;
    std::vector<CQelTable> m_tables;
};

/// Reads what TableToJson writes.
/// @throws nlohmann::json::exception, std::invalid_argument  where something is missing or of another kind
CQelTable TableFromJson(const nlohmann::json& json);

} // namespace tool
