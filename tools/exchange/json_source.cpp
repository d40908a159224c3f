// json_source.cpp: records out of JSON objects.
#include "json_elements.h"
#include "json_value.h"
#include "record_source.h"

namespace tool {
namespace {

class CJsonSource : public CRecordSource
{
public:
    CJsonSource(std::istream& in, const SSourceRules& rules, bool lines)
        : CRecordSource(rules), m_in(in), m_elements(in), m_lines(lines)
    {}

    bool Next(SSourceRecord& record) override;
    unsigned long long BytesRead() const override { return m_lines ? m_bytesRead : m_elements.BytesRead(); }

private:
    bool NextLine(SSourceRecord& record);
    void ReadObject(SSourceRecord& record);
    void ReadMember(const std::string& name, const nlohmann::json& json, SSourceRecord& record);

    std::istream& m_in;
    CJsonElements m_elements;
    bool m_lines;
    unsigned long long m_line = 0;
    unsigned long long m_bytesRead = 0;
};

bool CJsonSource::NextLine(SSourceRecord& record)
{
    constexpr const char* kBlanks = " \t\r";
    while (std::getline(m_in, record.raw)) {
        m_bytesRead += record.raw.size() + 1;
        if (++m_line == 1 && record.raw.compare(0, 3, "\xef\xbb\xbf") == 0)
            record.raw.erase(0, 3);
        if (record.raw.find_first_not_of(kBlanks) == std::string::npos)
            continue;
        record.line = m_line;
        return true;
    }
    if (m_in.bad())
        throw LineFailure(EExit::eFailed, m_line, "cannot read on");
    return false;
}

void CJsonSource::ReadMember(const std::string& name, const nlohmann::json& json, SSourceRecord& record)
{
    std::string error;
    const CSourceColumns::STarget& target = m_columns.Find(name);
    if (target.ignored)
        return;
    if (!target.isOid) {
        SQelPropColumnData data;
        data.columnOid = target.column->oid;
        if (!FromJson(json, target.column->type, data.value, error))
            record.refusal = ColumnRefusal(record.line, name, error);
        for (const SQelPropColumnData& other : record.values) {
            if (other.columnOid == data.columnOid)
                record.refusal = ColumnRefusal(record.line, name, "the object names the column twice");
        }
        record.values.push_back(std::move(data));
        return;
    }
    if (!m_rules.takeOids || json.is_null())
        return;
    if (!ReadOid(json.is_string() ? json.get<std::string>() : json.dump(), record.oid))
        record.refusal = ColumnRefusal(record.line, name, json.dump() + " is no oid of a record");
}

void CJsonSource::ReadObject(SSourceRecord& record)
{
    nlohmann::json object;
    std::string error;
    if (!ParseJson(record.raw, object, error)) {
        record.refusal = Refusal(record.line, error);
        return;
    }
    if (!object.is_object()) {
        record.refusal = Refusal(record.line, "this is no JSON object");
        return;
    }
    for (auto member = object.cbegin(); member != object.cend() && !record.refusal; ++member) {
        try {
            ReadMember(member.key(), member.value(), record);
        } catch (SFailure& failure) {
            failure.file = m_rules.fileName;
            failure.line = record.line;
            record.refusal = failure;
        }
    }
}

bool CJsonSource::Next(SSourceRecord& record)
{
    record.oid = 0;
    record.values.clear();
    record.refusal.reset();
    if (m_lines ? !NextLine(record) : !m_elements.Next(record.raw, record.line))
        return false;
    record.number = m_lines ? 0 : m_elements.Count();
    ReadObject(record);
    return true;
}

} // namespace

std::unique_ptr<CRecordSource> MakeJsonSource(std::istream& in, const SSourceRules& rules, bool lines)
{
    return std::make_unique<CJsonSource>(in, rules, lines);
}

} // namespace tool
