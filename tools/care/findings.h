// findings.h: faults and differences, one to a line.
#pragma once

#include "cli/context.h"

#include <string>

namespace tool {

/// What was looked at.
struct STally
{
    unsigned long long tables = 0;
    unsigned long long records = 0;
    unsigned long long values = 0; ///< Nulls are none
};

/// "2 tables, 12,034 records, 96,272 values"
std::string CountsText(const STally& tally);

/// Something that is not as it should be, and where.
struct SFinding
{
    std::string kind;         ///< one word for programs: "dangling"
    std::string table;        ///< UTF-8; empty where no table is concerned
    unsigned long record = 0; ///< 0 for none
    std::string column;       ///< empty for none
    std::string message;
};

/// Prints findings as they come: a line of text, or a JSON object with --json and --jsonl.
class CFindings
{
public:
    /// @param limit  findings beyond are counted and not printed; 0 for any number
    /// @throws SFailure  2 for a format that a list of them has not
    CFindings(const CContext& context, std::ostream& out, unsigned long limit = 0);

    void Add(const SFinding& finding);
    /// Does a part of the work that may meet damage, which is a finding and no end of the rest.
    /// @param kind, table  of that finding
    template <class Part>
    void Try(const char* kind, const std::string& table, const Part& part)
    {
        try {
            part();
        } catch (const SFailure& failure) {
            AddDamage(kind, table, failure);
        }
    }
    unsigned long long Count() const { return m_count; }
    /// Whether bytes of the file are not what was written, so that no command can put them right.
    bool IsDamaged() const { return m_damaged; }
    /// Says how many findings were not printed.
    void Finish();

private:
    void AddDamage(const char* kind, const std::string& table, const SFailure& failure);

    std::ostream& m_out;
    bool m_json;
    unsigned long m_limit;
    unsigned long long m_count = 0;
    bool m_damaged = false;
};

} // namespace tool
