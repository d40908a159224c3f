// names.cpp: names and @OIDs, and what was perhaps meant where there is no such thing.
#include "names.h"

#include "cli/arguments.h"
#include "cli/context.h"
#include "cli/suggestion.h"

#include <algorithm>
#include <charconv>

namespace tool {
namespace {

/// Reads digits as an object id. @return 0 for anything else
unsigned long OidIn(const char* begin, const char* end)
{
    unsigned int oid = 0;
    const auto [stop, error] = std::from_chars(begin, end, oid);
    return error == std::errc() && stop == end ? oid : 0;
}

/// The oid in "@7"; 0 where the text is a name.
unsigned long OidOf(const std::string& given)
{
    if (given.size() < 2 || given[0] != '@')
        return 0;
    return OidIn(given.data() + 1, given.data() + given.size());
}

} // namespace

CNames::CNames(CPropertyFile& file) : m_file(Utf8(file.Path())), m_tables(file.Tables())
{}

SFailure CNames::NotFound(const std::string& message, const std::string& given,
                          const std::vector<std::string>& known) const
{
    SFailure failure = FileFailure(EExit::eNotFound, m_file, message, Suggestion(given, known));
    failure.code = qel::kNotFound;
    return failure;
}

const CQelTable* CNames::FindTable(unsigned long oid) const
{
    for (const CQelTable& table : m_tables) {
        if (table.Properties().oid == oid)
            return &table;
    }
    return nullptr;
}

const CQelTable& CNames::Table(const std::string& given) const
{
    const unsigned long oid = OidOf(given);
    const std::wstring name = Wide(given);
    std::vector<std::string> known;
    for (const CQelTable& table : m_tables) {
        if (oid != 0 ? table.Properties().oid == oid : table.Properties().name == name)
            return table;
        known.push_back(Utf8(table.Properties().name));
    }
    SFailure failure = NotFound("no table " + Quoted(given), given, known);
    if (failure.hint.empty() && m_tables.empty())
        failure.hint = "the file has no tables yet; 'qelprop add-table' makes one";
    throw failure;
}

const CQelTable::SQelColumn& CNames::Column(const CQelTable& table, const std::string& given) const
{
    const unsigned long oid = OidOf(given);
    const std::wstring name = Wide(given);
    std::vector<std::string> known;
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        if (oid != 0 ? column.oid == oid : column.name == name)
            return column;
        known.push_back(Utf8(column.name));
    }
    throw NotFound("no column " + Quoted(given) + " in table " + Quoted(table.Properties().name), given,
                   known);
}

std::vector<CQelTable::SQelColumn> CNames::Columns(const CQelTable& table, const std::string& list) const
{
    std::vector<CQelTable::SQelColumn> columns;
    for (const std::string& name : SplitList(list)) {
        if (name == "@oid") {
            columns.emplace_back();
            columns.back().name = L"@oid";
        } else {
            columns.push_back(Column(table, name));
        }
    }
    return columns;
}

void CNames::Reference(const std::string& given, CQelTable::SQelColumn& column) const
{
    const std::size_t point = given.find('.');
    const CQelTable& table = Table(given.substr(0, point));
    column.refTable = table.Properties().oid;
    if (point != std::string::npos) {
        column.refColumn = Column(table, given.substr(point + 1)).oid;
        return;
    }
    if (table.Columns().empty())
        throw NotFound("table " + Quoted(table.Properties().name) + " has no column to refer to", given, {});
    column.refColumn = table.Columns().front().oid;
}

unsigned long CNames::RecordOid(const std::string& given)
{
    const char* const end = given.data() + given.size();
    const unsigned long oid = OidOf(given) != 0 ? OidOf(given) : OidIn(given.data(), end);
    if (oid == 0)
        throw UsageFailure(Quoted(given) + " is no oid of a record",
                           "an oid is a number from 1 to 4294967295: @7");
    return oid;
}

SFailure CNames::NoRecord(const CQelTable& table, unsigned long oid, unsigned long last) const
{
    const std::string range = last == 0 ? "" : " to @" + std::to_string(last);
    return NotFound(
        "no record @" + std::to_string(oid) + range + " in table " + Quoted(table.Properties().name), {}, {});
}

void RequireValidName(const std::wstring& name)
{
    const CQelPropDB rules(nullptr); // the rule needs no database
    if (rules.IsValidName(name))
        return;
    SFailure failure = MakeFailure(EExit::eRefused,
                                   name.empty() ? "a name cannot be empty" : "invalid name " + Quoted(name));
    failure.code = qel::kInvalidName;
    const auto wrong = std::find_if_not(
        name.begin(), name.end(), [&](wchar_t letter) { return rules.IsValidName(std::wstring(1, letter)); });
    if (wrong != name.end())
        failure.hint = "names hold no " + (*wrong == L' ' ? "blank" : Quoted(std::wstring(1, *wrong)));
    throw failure;
}

std::vector<std::string> SplitList(const std::string& list, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = list.find(separator); end != std::string::npos;
         end = list.find(separator, begin)) {
        parts.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(list.substr(begin));
    return parts;
}

} // namespace tool
