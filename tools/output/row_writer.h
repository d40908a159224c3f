// row_writer.h: rows of values, printed as a table for people or in a form for programs.
#pragma once

#include "cli/context.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tool {

/// A row: one value for each heading.
using CRow = std::vector<CQelProperty>;

/// How rows are printed.
struct SRowStyle
{
    EFormat format = EFormat::eTable;
    bool header = true;
    bool color = false;
    bool regional = false;  ///< csv, tsv and plain follow the user's locale
    bool bigAsText = false; ///< JSON: 64-bit integers as text
    std::size_t width = 0;  ///< columns of the screen for a table; 0 for any number
    std::optional<std::string> null = {};
    std::optional<char> separator = {}; ///< csv and tsv: what parts the values, where it is not their own
};

/// The style that the command line asks for.
SRowStyle StyleOf(CContext& context, EFormat absent = EFormat::eTable);

/// The character that --separator gives.
/// @throws SFailure  2 for more than one character, or one that separates nothing
std::optional<char> SeparatorOf(const CArguments& arguments);

/// Takes rows one by one and prints them; a table waits for the last, all others print at once.
class CRowWriter
{
public:
    /// @param headings  UTF-8
    /// @param out       outlives the writer
    static std::unique_ptr<CRowWriter> Make(const SRowStyle& style, std::vector<std::string> headings,
                                            std::ostream& out);
    virtual ~CRowWriter();
    /// @throws SFailure  1 when the stream takes no more; 4 for a value that the format cannot hold
    void Write(const CRow& row);
    /// Prints what is left; to be called once, after the last row.
    void Finish();

protected:
    CRowWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out);
    virtual void Print(const CRow& row) = 0;
    virtual void End() {}

    SRowStyle m_style;
    std::vector<std::string> m_headings;
    std::ostream& m_out;
};

/// A value as people see it in one line: by the user's regional settings, Null as a visible mark.
std::string ScreenText(const CQelProperty& value, const SRowStyle& style);

/// A value for a row that holds no record: a text, a number, an oid.
CQelProperty TextCell(const std::wstring& text);
CQelProperty TextCell(const std::string& utf8);
CQelProperty NumberCell(unsigned long long number);
CQelProperty OidCell(unsigned long oid);
CQelProperty FlagCell(bool flag);

} // namespace tool
