// column_spec.cpp: takes the definition of a column apart.
#include "column_spec.h"

#include "cli/suggestion.h"
#include "exchange/type_name.h"

#include <algorithm>

namespace tool {
namespace {

CQelProperty::EType ParseTypeName(const std::string& name)
{
    CQelProperty::EType type = CQelProperty::eNull;
    if (TypeOfName(name, type))
        return type;
    std::string hint = Suggestion(name, TypeNames());
    if (hint.empty()) {
        for (const std::string& known : TypeNames())
            hint += (hint.empty() ? "types are " : ", ") + known;
    }
    throw UsageFailure("no type " + Quoted(name), hint);
}

/// Reads the target of a reference. Names may hold "=", so the longest text that names something is it.
/// @return its length
std::size_t ParseTarget(const std::string& text, const CNames& names, CQelTable::SQelColumn& column)
{
    for (std::size_t end = text.size(); end != std::string::npos && end > 0; end = text.rfind('=', end - 1)) {
        try {
            names.Reference(text.substr(0, end), column);
            return end;
        } catch (const SFailure&) {
            if (text.find('=') >= end)
                throw; // the shortest text says best what is missing
        }
    }
    throw UsageFailure("a reference wants the table that it refers to", "write NAME:reference:TABLE.COLUMN");
}

/// Reads TYPE[:MORE]. @return the length of what was read
std::size_t ParseTypeAndMore(const std::string& text, const CNames& names, CQelTable::SQelColumn& column)
{
    const std::size_t typeEnd = std::min(text.find_first_of(":="), text.size());
    column.type = ParseTypeName(text.substr(0, typeEnd));
    const bool hasMore = typeEnd < text.size() && text[typeEnd] == ':';
    const std::size_t moreBegin = hasMore ? typeEnd + 1 : typeEnd;
    if (column.type == CQelProperty::eReference)
        return moreBegin + ParseTarget(hasMore ? text.substr(moreBegin) : std::string(), names, column);
    if (!hasMore)
        return typeEnd;
    if (column.type != CQelProperty::eCurrency)
        throw UsageFailure("type " + Quoted(TypeName(column.type)) + " takes nothing after it");
    const std::size_t end = std::min(text.find('=', moreBegin), text.size());
    const std::string currency = text.substr(moreBegin, end - moreBegin);
    if (currency.find(':') != std::string::npos)
        throw UsageFailure("currency " + Quoted(currency) + ": nothing follows the currency but =DEFAULT");
    column.currency = Wide(currency);
    return end;
}

} // namespace

void ParseType(const std::string& spec, const CNames& names, CQelTable::SQelColumn& column)
{
    column.refTable = 0;
    column.refColumn = 0;
    if (ParseTypeAndMore(spec, names, column) != spec.size())
        throw UsageFailure("--type takes no default", "--default VALUE gives one");
}

CQelTable::SQelColumn ParseColumn(const std::string& spec, const CNames& names, const SValueRules& rules)
{
    const std::size_t colon = spec.find(':');
    if (colon == std::string::npos)
        throw UsageFailure("column " + Quoted(spec) + " has no type",
                           "write NAME:TYPE, such as " + spec.substr(0, spec.find('=')) + ":string");
    CQelTable::SQelColumn column;
    column.name = Wide(spec.substr(0, colon));
    RequireValidName(column.name);
    const std::string rest = spec.substr(colon + 1);
    const std::size_t end = ParseTypeAndMore(rest, names, column);
    if (end < rest.size())
        column.defaultValue = ParseValue(rest.substr(end + 1), column, rules);
    return column;
}

} // namespace tool
