// separated_source.cpp: records out of CSV and TSV.
#include "cli/suggestion.h"
#include "csv_reader.h"
#include "neutral_text.h"
#include "output/amount_text.h"
#include "record_source.h"
#include "regional_text.h"

#include <algorithm>

namespace tool {
namespace {

class CSeparatedSource : public CRecordSource
{
public:
    CSeparatedSource(std::istream& in, const SSourceRules& rules, char separator)
        : CRecordSource(rules), m_reader(in, separator), m_separator(separator)
    {
        if (rules.header)
            ReadHeader();
        else
            TakeEveryColumn();
        m_reader.SetWidth(m_targets.size());
    }

    bool Next(SSourceRecord& record) override;
    std::string Header() const override { return m_header; }
    std::string Raw(const SSourceRecord&) const override { return CsvLine(m_row.fields, m_separator); }
    unsigned long long BytesRead() const override { return m_reader.BytesRead(); }

private:
    void ReadHeader();
    std::string HeaderHint() const;
    void CheckRenamed() const;
    void TakeEveryColumn();
    void Resolve(const SCsvRow& row);
    bool ReadField(const SCsvField& field, std::size_t index, SSourceRecord& record) const;

    CCsvReader m_reader;
    char m_separator;
    std::string m_header;
    std::vector<std::string> m_names;
    std::vector<CSourceColumns::STarget> m_targets;
    SCsvRow m_row;
};

void CSeparatedSource::ReadHeader()
{
    try {
        if (!m_reader.Next(m_row))
            throw Refusal(0, "the file is empty; a line of column names is wanted");
        Resolve(m_row);
    } catch (SFailure& failure) {
        // The mistake is in the file that was read, not in the database.
        failure.file = m_rules.fileName;
        failure.line = m_row.line;
        if (failure.exit == EExit::eNotFound && failure.hint.empty())
            failure.hint = HeaderHint();
        throw;
    }
    CheckRenamed();
    m_header = CsvLine(m_row.fields, m_separator);
}

std::string CSeparatedSource::HeaderHint() const
{
    constexpr const char* kOthers = ";\t,|";
    const std::string& unknown = m_row.fields[m_targets.size()].text;
    if (unknown.empty())
        return "--map = passes over values without a name, as behind a last separator";
    const std::size_t place = unknown.find_first_of(kOthers);
    if (m_row.fields.size() > 1 || place == std::string::npos)
        return "--map NAME=COLUMN takes a name in the file for another column, --map NAME= passes over it";
    const std::string separator = unknown[place] == '\t' ? "\\t" : std::string(1, unknown[place]);
    return "if '" + separator + "' parts the values: --separator '" + separator + "'";
}

void CSeparatedSource::CheckRenamed() const
{
    for (const auto& [name, column] : m_rules.renamed) {
        if (std::find(m_names.begin(), m_names.end(), name) != m_names.end())
            continue;
        SFailure failure = Refusal(m_row.line, "--map: no column " + Quoted(name) + " in the file");
        failure.exit = EExit::eNotFound;
        failure.hint = Suggestion(name, m_names);
        throw failure;
    }
}

void CSeparatedSource::Resolve(const SCsvRow& row)
{
    for (const SCsvField& field : row.fields) {
        const CSourceColumns::STarget& target = m_columns.Find(field.text);
        for (const CSourceColumns::STarget& other : m_targets) {
            if (!target.ignored && other.isOid == target.isOid && other.column == target.column)
                throw Refusal(row.line, "column " + Quoted(field.text) + " stands in the header twice");
        }
        m_names.push_back(field.text);
        m_targets.push_back(target);
    }
}

void CSeparatedSource::TakeEveryColumn()
{
    for (const CQelTable::SQelColumn& column : m_rules.table->Columns()) {
        m_names.push_back(Utf8(column.name));
        m_targets.push_back({false, false, &column});
    }
}

bool CSeparatedSource::ReadField(const SCsvField& field, std::size_t index, SSourceRecord& record) const
{
    const CSourceColumns::STarget& target = m_targets[index];
    if (target.ignored)
        return true;
    const bool null = field.null || (m_rules.null && field.text == *m_rules.null);
    std::string error;
    if (target.isOid) {
        if (!m_rules.takeOids || null || ReadOid(field.text, record.oid))
            return true;
        error = Quoted(field.text) + " is no oid of a record";
    } else {
        SQelPropColumnData data;
        data.columnOid = target.column->oid;
        const CQelProperty::EType type = target.column->type;
        const bool good = null || (m_rules.regional ? FromRegionalText(field.text, type, data.value, error)
                                                    : FromNeutralText(field.text, type, data.value, error));
        record.values.push_back(std::move(data));
        if (good)
            return true;
    }
    record.refusal = ColumnRefusal(record.line, m_names[index], error);
    return false;
}

bool CSeparatedSource::Next(SSourceRecord& record)
{
    if (!m_reader.Next(m_row))
        return false;
    record.line = m_row.line;
    record.oid = 0;
    record.values.clear();
    record.refusal.reset();
    if (m_row.fields.size() != m_targets.size())
        record.refusal = Refusal(m_row.line, Counted(m_row.fields.size(), "value") + " for " +
                                                 Counted(m_targets.size(), "column"));
    for (std::size_t index = 0; index < m_row.fields.size() && !record.refusal; ++index)
        ReadField(m_row.fields[index], index, record);
    return true;
}

} // namespace

std::unique_ptr<CRecordSource> MakeSeparatedSource(std::istream& in, const SSourceRules& rules,
                                                   char separator)
{
    return std::make_unique<CSeparatedSource>(in, rules, separator);
}

} // namespace tool
