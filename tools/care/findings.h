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
    CFindings(const CContext& context, std::ostream& out, unsigned long limit = 0)
        : m_out(out), m_json(context.Format() == EFormat::eJson || context.Format() == EFormat::eJsonLines),
          m_limit(limit)
    {}

    void Add(const SFinding& finding);
    unsigned long long Count() const { return m_count; }
    /// Whether bytes of the file are not what was written, so that no command can put them right.
    bool IsDamaged() const { return m_damaged; }
    /// Says how many findings were not printed.
    void Finish();

private:
    std::ostream& m_out;
    bool m_json;
    unsigned long m_limit;
    unsigned long long m_count = 0;
    bool m_damaged = false;
};

} // namespace tool
