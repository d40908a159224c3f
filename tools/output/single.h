// single.h: one thing, shown as a list of its properties.
#pragma once

#include "row_writer.h"

namespace tool {

/// Names and values of one thing: a line for each in a table, one object in JSON, one row in CSV.
class CSingle
{
public:
    /// @param remark  stands behind the value for people; no other form has it
    void Add(const std::string& name, const CQelProperty& value, const std::string& remark = {});
    /// Prints to where the command line says.
    void Print(CContext& context) const;

private:
    std::vector<std::string> m_names;
    CRow m_values;
    std::vector<std::string> m_remarks;
};

} // namespace tool
