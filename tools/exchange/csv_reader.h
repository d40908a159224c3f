// csv_reader.h: rows out of separated text, one at a time.
#pragma once

#include <csv.h>

#include <istream>
#include <string>
#include <vector>

namespace tool {

struct SCsvField
{
    bool null = true; ///< nothing stood there, not even quotes
    std::string text;
};

struct SCsvRow
{
    unsigned long long line = 0; ///< where the row begins, counted from 1
    std::vector<SCsvField> fields;
};

/// Reads CSV, or the same with another separator, holding one row at a time. Not copied.
///
/// A byte-order mark is dropped; lines end with LF, CR LF or CR; empty lines are passed over, but where rows
/// have one field they are a row whose only field is null.
class CCsvReader
{
public:
    /// @param in  outlives the reader
    CCsvReader(std::istream& in, char separator);
    CCsvReader(const CCsvReader&) = delete;
    CCsvReader& operator=(const CCsvReader&) = delete;
    ~CCsvReader();

    /// @return false at the end
    /// @throws SFailure  4 with the line where quotes are wrong; 1 when reading fails
    bool Next(SCsvRow& row);
    /// Tells how many fields rows have.
    void SetWidth(std::size_t fields) { m_width = fields; }
    unsigned long long BytesRead() const { return m_bytesRead; }

private:
    static void OnField(void* text, std::size_t size, void* reader);
    static void OnRow(int end, void* reader);

    bool Fill();
    bool FeedLine();
    void Feed(const char* begin, std::size_t size);
    void End();

    std::istream& m_in;
    csv_parser m_parser;
    std::vector<char> m_buffer;
    std::size_t m_place = 0;
    std::size_t m_size = 0;
    unsigned long long m_bytesRead = 0;
    unsigned long long m_line = 1;
    std::size_t m_width = 0;
    std::size_t m_rowBytes = 0;
    bool m_afterReturn = false;
    bool m_inRow = false;
    bool m_complete = false;
    bool m_atEnd = false;
    SCsvRow m_row;
};

/// Fields as one line that a CCsvReader reads back; texts in quotes, null as nothing.
std::string CsvLine(const std::vector<SCsvField>& fields, char separator);

} // namespace tool
