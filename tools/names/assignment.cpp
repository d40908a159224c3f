// assignment.cpp: finds the column of an assignment and reads its value.
#include "assignment.h"

#include "exchange/input.h"
#include "exchange/neutral_text.h"
#include "exchange/regional_text.h"
#include "exchange/value_parts.h"

#include <qelplat4/native_path.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>

namespace tool {
namespace {

SFailure Refusal(const CQelTable::SQelColumn& column, const std::string& message)
{
    return MakeFailure(EExit::eRefused, "column " + Quoted(column.name) + ": " + message);
}

std::string ReadWhole(const std::string& path)
{
    std::ifstream file(qel::NativePath(Wide(path)), std::ios::binary);
    file.peek(); // fails where the name is that of a folder
    if (file.is_open() && !file.bad())
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    throw UnreadableFile(path);
}

CQelProperty ValueFromFile(const std::string& path, const CQelTable::SQelColumn& column)
{
    if (column.type != CQelProperty::eBlob && !IsTextType(column.type))
        throw Refusal(column, "only text and binary values are read from a file");
    const std::string bytes = ReadWhole(path);
    if (bytes.size() > std::numeric_limits<unsigned int>::max() / 2)
        throw Refusal(column, "the file is too large for a value");
    CQelProperty value;
    std::string error;
    if (column.type == CQelProperty::eBlob)
        value.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
    else if (!FromNeutralText(bytes, column.type, value, error))
        throw Refusal(column, Quoted(path) + " is no text in UTF-8");
    return value;
}

/// What stands before the "=" of an assignment, and what kind of "=" it is.
struct SMatch
{
    const CQelTable::SQelColumn* column = nullptr;
    std::size_t length = 0; ///< of the name and its "=" or "@="
    bool file = false;
};

void Try(const std::string& given, const CQelTable::SQelColumn& column, const std::string& name, SMatch& best)
{
    for (const bool file : {false, true}) {
        const std::string start = name + (file ? "@=" : "=");
        if (given.compare(0, start.size(), start) == 0 && start.size() > best.length)
            best = {&column, start.size(), file};
    }
}

SMatch Match(const std::string& given, const CQelTable& table, const CNames& names)
{
    SMatch best;
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        Try(given, column, Utf8(column.name), best);
        Try(given, column, "@" + std::to_string(column.oid), best);
    }
    if (best.column != nullptr)
        return best;
    const std::size_t equals = given.find('=');
    if (equals == std::string::npos)
        throw UsageFailure(Quoted(given) + " gives no column a value", "write NAME=VALUE");
    const bool file = equals > 1 && given[equals - 1] == '@';
    // Throws, with a hint, unless it is an oid in other digits: "@01".
    const CQelTable::SQelColumn& column = names.Column(table, given.substr(0, file ? equals - 1 : equals));
    return {&column, equals + 1, file};
}

void CheckReference(CPropertyFile& file, const CQelTable::SQelColumn& column, const CNames& names,
                    const CQelProperty& value)
{
    const CQelTable* target = names.FindTable(column.refTable);
    // A column that refers to no table says nothing of its values.
    if (value.GetType() != CQelProperty::eReference || target == nullptr)
        return;
    const unsigned long oid = value.Data().uValue.nULong;
    if (!file.HasRecord(column.refTable, oid))
        throw Refusal(column,
                      "no record @" + std::to_string(oid) + " in table " + Quoted(target->Properties().name));
}

} // namespace

SValueRules ValueRulesOf(const CContext& context)
{
    SValueRules rules;
    rules.regional = context.IsRegional();
    rules.hasNullText = context.Arguments().Has("--null-text");
    rules.nullText = context.Arguments().Text("--null-text", "null");
    return rules;
}

CQelProperty ParseValue(const std::string& text, const CQelTable::SQelColumn& column,
                        const SValueRules& rules)
{
    CQelProperty value;
    if (text == rules.nullText && (rules.hasNullText || !IsTextType(column.type)))
        return value;
    if (text == "null" && !IsTextType(column.type))
        return value;
    const bool isOid = column.type == CQelProperty::eReference && text.size() > 1 && text[0] == '@';
    const std::string bare = isOid ? text.substr(1) : text;
    std::string error;
    const auto parse = rules.regional ? FromRegionalText : FromNeutralText;
    if (!parse(bare, column.type, value, error))
        throw Refusal(column, error);
    if (column.type == CQelProperty::eCurrency && value.GetCurrencySymbol().empty())
        value.SetCurrencySymbol(column.currency);
    return value;
}

CRecord ParseAssignments(const std::vector<std::string>& given, const CQelTable& table, const CNames& names,
                         const SValueRules& rules)
{
    CRecord record;
    for (const std::string& assignment : given) {
        const SMatch match = Match(assignment, table, names);
        const bool named = std::any_of(record.begin(), record.end(), [&](const SQelPropColumnData& data) {
            return data.columnOid == match.column->oid;
        });
        if (named)
            throw Refusal(*match.column, "given twice");
        const std::string text = assignment.substr(match.length);
        record.push_back({match.column->oid, match.file ? ValueFromFile(text, *match.column)
                                                        : ParseValue(text, *match.column, rules)});
    }
    return record;
}

void CheckReferences(CPropertyFile& file, const CQelTable& table, const CNames& names, const CRecord& record)
{
    for (const SQelPropColumnData& data : record) {
        CQelTable::SQelColumn column;
        if (table.GetColumn(data.columnOid, column))
            CheckReference(file, column, names, data.value);
    }
}

void CheckDefault(CPropertyFile& file, const CQelTable::SQelColumn& column, const CNames& names)
{
    CheckReference(file, column, names, column.defaultValue);
}

void AddDefaults(const CQelTable& table, CRecord& record)
{
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        const bool named = std::any_of(record.begin(), record.end(), [&](const SQelPropColumnData& data) {
            return data.columnOid == column.oid;
        });
        // Nothing keeps a host from storing a default that its own column could not hold.
        if (!named && column.defaultValue.GetType() == column.type)
            record.push_back({column.oid, column.defaultValue});
    }
}

} // namespace tool
