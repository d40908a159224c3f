// record_source.h: records of one table out of a file, whatever its format.
#pragma once

#include "cli/context.h"
#include "names/names.h"

#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace tool {

/// One record as it was read.
struct SSourceRecord
{
    unsigned long long line = 0;
    unsigned long long number = 0; ///< of the record, counted from 1, where its line does not tell; else 0
    unsigned long oid = 0;         ///< 0 where none is given
    CRecord values;
    std::string raw;                 ///< its text, where the source has it in one piece
    std::optional<SFailure> refusal; ///< why it cannot be taken; `values` is then incomplete
};

/// What a file's values are taken for.
struct SSourceRules
{
    const CNames* names = nullptr;
    const CQelTable* table = nullptr;
    std::string fileName;
    std::map<std::string, std::string>
        renamed;                     ///< names in the file that stand for other columns; "" for none
    bool header = true;              ///< of separated text; without one all columns follow
    bool regional = false;           ///< text by the user's locale
    bool takeOids = true;            ///< false: "@oid" is read over
    std::optional<std::string> null; ///< a text that means Null
    std::optional<char> separator;   ///< of separated text; the format's own where none is given
};

/// Finds what a name in a file stands for.
class CSourceColumns
{
public:
    struct STarget
    {
        bool isOid = false;
        bool ignored = false; ///< its values are passed over
        const CQelTable::SQelColumn* column = nullptr;
    };

    explicit CSourceColumns(const SSourceRules& rules) : m_rules(rules) {}
    /// @throws SFailure  3, with the nearest name as hint
    const STarget& Find(const std::string& name);

private:
    const SSourceRules& m_rules;
    std::unordered_map<std::string, STarget> m_targets;
};

/// Gives the records of a file one by one, so that memory does not grow with the file.
class CRecordSource
{
public:
    /// @param rules  outlives the source
    static std::unique_ptr<CRecordSource> Make(EFormat format, std::istream& in, const SSourceRules& rules);
    virtual ~CRecordSource();
    /// @return false at the end
    /// @throws SFailure  where reading cannot go on
    virtual bool Next(SSourceRecord& record) = 0;
    /// What stands before the records in a file of the same form; empty for nothing.
    virtual std::string Header() const { return {}; }
    /// The record that was read last as it stood, without a line end, so that it can be put aside.
    virtual std::string Raw(const SSourceRecord& record) const { return record.raw; }
    virtual unsigned long long BytesRead() const = 0;

protected:
    explicit CRecordSource(const SSourceRules& rules) : m_rules(rules), m_columns(rules) {}

    SFailure Refusal(unsigned long long line, const std::string& message) const;
    SFailure ColumnRefusal(unsigned long long line, const std::string& column,
                           const std::string& message) const;
    /// Reads the text of an "@oid". @return false for one that is none
    static bool ReadOid(const std::string& text, unsigned long& oid);

    const SSourceRules& m_rules;
    CSourceColumns m_columns;
};

std::unique_ptr<CRecordSource> MakeSeparatedSource(std::istream& in, const SSourceRules& rules,
                                                   char separator);
/// @param lines  one object to a line; false: an array of objects
std::unique_ptr<CRecordSource> MakeJsonSource(std::istream& in, const SSourceRules& rules, bool lines);

} // namespace tool
