// record_source.cpp: what sources of all formats share.
#include "record_source.h"

#include <charconv>

namespace tool {
namespace {

constexpr const char* kOid = "@oid";

} // namespace

CRecordSource::~CRecordSource() = default;

std::unique_ptr<CRecordSource> CRecordSource::Make(EFormat format, std::istream& in,
                                                   const SSourceRules& rules)
{
    if (format == EFormat::eJson || format == EFormat::eJsonLines)
        return MakeJsonSource(in, rules, format == EFormat::eJsonLines);
    return MakeSeparatedSource(in, rules, rules.separator.value_or(format == EFormat::eTsv ? '\t' : ','));
}

const CSourceColumns::STarget& CSourceColumns::Find(const std::string& name)
{
    const auto known = m_targets.find(name);
    if (known != m_targets.end())
        return known->second;
    const auto renamed = m_rules.renamed.find(name);
    const std::string& meant = renamed == m_rules.renamed.end() ? name : renamed->second;
    STarget target;
    target.isOid = meant == kOid;
    target.ignored = meant.empty() && renamed != m_rules.renamed.end();
    if (!target.isOid && !target.ignored)
        target.column = &m_rules.names->Column(*m_rules.table, meant);
    return m_targets.emplace(name, target).first->second;
}

SFailure CRecordSource::Refusal(unsigned long long line, const std::string& message) const
{
    SFailure failure = FileFailure(EExit::eRefused, m_rules.fileName, message);
    failure.line = line;
    return failure;
}

SFailure CRecordSource::ColumnRefusal(unsigned long long line, const std::string& column,
                                      const std::string& message) const
{
    return Refusal(line, "column " + Quoted(column) + ": " + message);
}

bool CRecordSource::ReadOid(const std::string& text, unsigned long& oid)
{
    const bool marked = !text.empty() && text[0] == '@';
    const char* const end = text.data() + text.size();
    std::uint32_t number = 0;
    const auto [stop, error] = std::from_chars(text.data() + (marked ? 1 : 0), end, number);
    if (error != std::errc() || stop != end || number == 0)
        return false;
    oid = number;
    return true;
}

} // namespace tool
