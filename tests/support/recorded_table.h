// recorded_table.h: reads the tables of recorded answers that tests run against.
#pragma once

#include <string>
#include <vector>

namespace qeltest {

/// One row of a table: its fields as they stand, the last one being the mark.
struct SRecordedRow
{
    std::vector<std::string> fields;

    const std::string& operator[](std::size_t index) const { return fields.at(index); }
    const std::string& Number() const { return fields.front(); }
    /// True when the recorded answer must be given.
    bool IsBinding() const { return fields.back() == "-"; }
};

/// Rows of a file of tab-separated fields, comment lines left out. Throws when the file cannot be read.
std::vector<SRecordedRow> ReadRecordedTable(const std::string& path);

/// A quoted field as wide text, its escapes resolved. Throws for a field that is not quoted.
std::wstring QuotedText(const std::string& field);

/// A field of 16 or 8 hexadecimal digits, which may be followed by a blank and the number in decimal.
double DoubleOfBits(const std::string& field);
float FloatOfBits(const std::string& field);

} // namespace qeltest
