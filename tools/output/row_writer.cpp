// row_writer.cpp: which writer prints which format, and with which settings.
#include "row_writer.h"

#include "json_writer.h"
#include "output.h"
#include "separated_writer.h"
#include "table_writer.h"

namespace tool {

SRowStyle StyleOf(CContext& context, EFormat absent)
{
    const CArguments& arguments = context.Arguments();
    SRowStyle style;
    style.format = context.Format(absent);
    style.header = !arguments.Has("--no-header");
    style.color = context.WantsColor();
    style.regional = context.IsRegional();
    style.bigAsText = arguments.Has("--big-as-text");
    if (arguments.Has("--width"))
        style.width = arguments.Number("--width", 0);
    else if (context.Surroundings().outIsTerminal && !arguments.Has("--output"))
        style.width = static_cast<std::size_t>(context.Surroundings().columns);
    if (arguments.Has("--null"))
        style.null = arguments.Text("--null");
    style.separator = SeparatorOf(arguments);
    return style;
}

std::optional<char> SeparatorOf(const CArguments& arguments)
{
    if (!arguments.Has("--separator"))
        return {};
    const std::string given = arguments.Text("--separator");
    const std::string text = given == "\\t" ? "\t" : given;
    const bool good = text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80 &&
                      std::string("\"\r\n").find(text[0]) == std::string::npos;
    if (!good)
        throw UsageFailure("--separator: '" + given + "' is no separator",
                           "it is one character, such as ';'");
    return text[0];
}

std::unique_ptr<CRowWriter> CRowWriter::Make(const SRowStyle& style, std::vector<std::string> headings,
                                             std::ostream& out)
{
    switch (style.format) {
    case EFormat::eCsv:
        return std::make_unique<CSeparatedWriter>(style, std::move(headings), out,
                                                  style.separator.value_or(','));
    case EFormat::eTsv:
        return std::make_unique<CSeparatedWriter>(style, std::move(headings), out,
                                                  style.separator.value_or('\t'));
    case EFormat::eJson:
        return std::make_unique<CJsonWriter>(style, std::move(headings), out);
    case EFormat::eJsonLines:
        return std::make_unique<CJsonLinesWriter>(style, std::move(headings), out);
    case EFormat::ePlain:
        return std::make_unique<CPlainWriter>(style, std::move(headings), out);
    case EFormat::eTable:
        break;
    }
    return std::make_unique<CTableWriter>(style, std::move(headings), out);
}

CRowWriter::CRowWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out)
    : m_style(style), m_headings(std::move(headings)), m_out(out)
{}

CRowWriter::~CRowWriter() = default;

void CRowWriter::Write(const CRow& row)
{
    Print(row);
    RequireWritten(m_out);
}

void CRowWriter::Finish()
{
    End();
}

CQelProperty TextCell(const std::wstring& text)
{
    CQelProperty value;
    value.SetString(text);
    return value;
}

CQelProperty TextCell(const std::string& utf8)
{
    return TextCell(Wide(utf8));
}

CQelProperty NumberCell(unsigned long long number)
{
    CQelProperty value;
    value.SetInt64(number);
    return value;
}

CQelProperty OidCell(unsigned long oid)
{
    CQelProperty value;
    value.SetReference(oid);
    return value;
}

CQelProperty FlagCell(bool flag)
{
    CQelProperty value;
    value.SetBool(flag);
    return value;
}

} // namespace tool
