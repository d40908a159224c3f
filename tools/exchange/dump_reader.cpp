// dump_reader.cpp: reads a dump, and notices what is missing.
#include "dump_reader.h"

#include "dump_format.h"
#include "json_value.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace tool {
namespace {

unsigned long OidIn(const nlohmann::json& json)
{
    return static_cast<unsigned long>(WholeIn(json, 1, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace

void CDumpReader::Fail(const std::string& message, EExit exit) const
{
    SFailure failure = LineFailure(exit, m_number, message + "; nothing was loaded");
    failure.file = m_fileName;
    throw failure;
}

void CDumpReader::ReadLine()
{
    if (m_pending) {
        m_pending = false;
        return;
    }
    if (!std::getline(m_in, m_text)) {
        if (m_in.bad())
            Fail("cannot read on", EExit::eFailed);
        Fail("the dump is cut short: its last line is missing");
    }
    ++m_number;
    m_bytesRead += m_text.size() + 1;
    std::string error;
    if (!ParseJson(m_text, m_line, error))
        Fail(error);
    if (!m_line.is_object())
        Fail("this is no line of a dump");
}

void CDumpReader::ReadTables()
{
    ReadLine();
    if (m_line.value(dump::kMark, nlohmann::json()) != dump::kMarkValue)
        Fail("this is no dump of qelprop");
    if (m_line.value(dump::kVersion, nlohmann::json()) != dump::kNewest)
        Fail("this dump is of a version that is not known here");
    if (m_line.value(dump::kKind, nlohmann::json()) == dump::kLegacy)
        m_kind = EKind::eLegacy;
    for (ReadLine(); m_line.contains(dump::kTable) && !m_line.contains(dump::kRecord); ReadLine()) {
        try {
            m_tables.push_back(TableFromJson(m_line[dump::kTable]));
            m_tables.back().Properties().flag = m_line.value(dump::kFlag, true);
        } catch (const std::exception& exception) {
            Fail(std::string("this is no table: ") + exception.what());
        }
    }
    m_pending = true;
}

const CQelTable& CDumpReader::TableOf(unsigned long oid) const
{
    const auto found = std::find_if(m_tables.begin(), m_tables.end(),
                                    [=](const CQelTable& table) { return table.Properties().oid == oid; });
    if (found == m_tables.end())
        Fail("the dump has no table " + std::to_string(oid));
    return *found;
}

void CDumpReader::ReadEnd()
{
    const nlohmann::json& end = m_line[dump::kEnd];
    const bool counted = end.is_object() && end.contains(dump::kRecords) && end.contains(dump::kTables);
    if (!counted || end[dump::kRecords] != m_records || end[dump::kTables] != m_tables.size())
        Fail("the dump holds other numbers of tables and records than its last line says");
    if (m_in.peek() != std::char_traits<char>::eof())
        Fail("something follows the dump's last line");
}

bool CDumpReader::Next(unsigned long& table, unsigned long& recordOid, CRecord& record)
{
    ReadLine();
    if (m_line.contains(dump::kEnd)) {
        ReadEnd();
        return false;
    }
    const bool whole = m_line.contains(dump::kRecord) && m_line.contains(dump::kTable) &&
                       m_line.contains(dump::kValues) && m_line[dump::kValues].is_array();
    if (!whole)
        Fail("this is no line of a dump");
    try {
        recordOid = OidIn(m_line[dump::kRecord]);
        table = OidIn(m_line[dump::kTable]);
    } catch (const std::exception& exception) {
        Fail(std::string("this is no oid: ") + exception.what());
    }
    const std::vector<CQelTable::SQelColumn>& columns = TableOf(table).Columns();
    const nlohmann::json& values = m_line[dump::kValues];
    if (values.size() != columns.size())
        Fail("there are " + std::to_string(values.size()) + " values for " + std::to_string(columns.size()) +
             " columns");
    record.assign(columns.size(), {});
    for (std::size_t index = 0; index < columns.size(); ++index) {
        std::string error;
        record[index].columnOid = columns[index].oid;
        if (!FromExactJson(values[index], columns[index].type, record[index].value, error))
            Fail("value " + std::to_string(index + 1) + ": " + error);
    }
    ++m_records;
    return true;
}

} // namespace tool
