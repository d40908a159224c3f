// dump_command.cpp: the command dump: a whole database as lines of JSON.
//
// First {"qelprop":"dump","version":1,"kind":...}, then {"table":{...},"flag":...} for every table, then
// {"record":OID,"table":OID,"values":[...]} with the values in the order of the table's columns, at last
// {"end":{"tables":N,"records":N}}, by which a reader knows that nothing is missing.
#include "dump_format.h"
#include "exchange_commands.h"

#include "json_value.h"
#include "names/names.h"
#include "output/json_writer.h"
#include "output/output.h"
#include "output/progress.h"
#include "record_walk.h"
#include "table_json.h"

namespace tool {
namespace {

class CDumper
{
public:
    CDumper(CContext& context, CPropertyFile& file, std::ostream& out)
        : m_context(context), m_file(file), m_out(out), m_tables(file.Tables()), m_walk(context)
    {}

    EExit Dump()
    {
        const bool legacy = m_file.Kind() == EKind::eLegacy;
        Line({{dump::kMark, dump::kMarkValue},
              {dump::kVersion, dump::kNewest},
              {dump::kKind, legacy ? dump::kLegacy : dump::kSQLite}});
        for (const CQelTable& table : m_tables)
            Line({{dump::kTable, TableToJson(table, m_tables)}, {dump::kFlag, table.Properties().flag}});
        for (const CQelTable& table : m_tables)
            DumpRecords(table);
        Line({{dump::kEnd, {{dump::kTables, m_tables.size()}, {dump::kRecords, m_records}}}});
        return m_walk.Exit();
    }

private:
    void Line(const nlohmann::ordered_json& json)
    {
        m_out << JsonText(json) << '\n';
        RequireWritten(m_out);
    }

    void DumpRecords(const CQelTable& table)
    {
        const unsigned long tableOid = table.Properties().oid;
        const std::vector<unsigned long> oids = m_file.RecordOids(tableOid);
        CProgress progress(m_context, "dumping " + Utf8(table.Properties().name), "records", oids.size());
        unsigned long long done = 0;
        for (const unsigned long oid : oids) {
            progress.Step(done++);
            if (!m_walk.Read(m_file, tableOid, oid, m_record))
                continue;
            nlohmann::ordered_json values = nlohmann::ordered_json::array();
            for (std::size_t index = 0; index < m_record.size(); ++index)
                values.emplace_back(ToExactJson(m_record[index].value, table.Columns()[index].type));
            Line({{dump::kRecord, oid}, {dump::kTable, tableOid}, {dump::kValues, values}});
            ++m_records;
        }
    }

    CContext& m_context;
    CPropertyFile& m_file;
    std::ostream& m_out;
    std::vector<CQelTable> m_tables;
    CRecordWalk m_walk;
    CRecord m_record;
    unsigned long long m_records = 0;
};

} // namespace

EExit RunDump(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    COutput output(context);
    const EExit exit = CDumper(context, *file, output.Stream()).Dump();
    output.Finish();
    return exit;
}

} // namespace tool
