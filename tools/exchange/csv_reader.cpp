// csv_reader.cpp: feeds a parser line by line, so that each row's place is known.
#include "csv_reader.h"

#include "adaptor/failure.h"

#include <algorithm>
#include <new>

namespace tool {
namespace {

constexpr std::size_t kChunk = 1 << 16;
constexpr std::size_t kLargestRow = std::size_t{1} << 30; // an open quote would gather the rest of the file
constexpr char kMark[] = "\xef\xbb\xbf";

/// Blanks around a field belong to it.
int NoSpace(unsigned char)
{
    return 0;
}

bool IsLineEnd(char letter)
{
    return letter == '\n' || letter == '\r';
}

} // namespace

CCsvReader::CCsvReader(std::istream& in, char separator) : m_in(in), m_buffer(kChunk)
{
    if (csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL) != 0)
        throw std::bad_alloc();
    csv_set_delim(&m_parser, static_cast<unsigned char>(separator));
    csv_set_space_func(&m_parser, NoSpace);
}

CCsvReader::~CCsvReader()
{
    csv_free(&m_parser);
}

void CCsvReader::OnField(void* text, std::size_t size, void* reader)
{
    SCsvField field;
    field.null = text == nullptr;
    if (text != nullptr)
        field.text.assign(static_cast<const char*>(text), size);
    static_cast<CCsvReader*>(reader)->m_row.fields.push_back(std::move(field));
}

void CCsvReader::OnRow(int, void* reader)
{
    auto* self = static_cast<CCsvReader*>(reader);
    self->m_complete = true;
    self->m_inRow = false;
}

bool CCsvReader::Fill()
{
    m_in.read(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    if (m_in.bad())
        throw LineFailure(EExit::eFailed, m_line, "cannot read on");
    m_place = 0;
    m_size = static_cast<std::size_t>(m_in.gcount());
    const bool first = m_bytesRead == 0;
    m_bytesRead += m_size;
    if (first && m_size >= 3 && std::equal(kMark, kMark + 3, m_buffer.data()))
        m_place = 3;
    return m_size > 0;
}

void CCsvReader::Feed(const char* begin, std::size_t size)
{
    m_rowBytes += size;
    if (m_rowBytes > kLargestRow)
        throw LineFailure(EExit::eRefused, m_row.line, "a row of over 1 GiB", "is a quote left open?");
    const std::size_t taken = csv_parse(&m_parser, begin, size, OnField, OnRow, this);
    if (taken == size)
        return;
    if (csv_error(&m_parser) == CSV_ENOMEM)
        throw std::bad_alloc();
    throw LineFailure(EExit::eRefused, m_line, "a quote stands where none may be",
                      "a text with quotes is written in quotes, with each quote inside twice");
}

bool CCsvReader::FeedLine()
{
    if (m_place >= m_size && !Fill())
        return false;
    const auto begin = m_buffer.begin() + static_cast<std::ptrdiff_t>(m_place);
    const auto limit = m_buffer.begin() + static_cast<std::ptrdiff_t>(m_size);
    const auto end = std::find_if(begin, limit, IsLineEnd);
    const bool hasEnd = end != limit;
    const std::size_t size = static_cast<std::size_t>(end - begin) + (hasEnd ? 1 : 0);
    const bool secondHalf = size == 1 && *begin == '\n' && m_afterReturn; // of CR LF
    const bool blank = hasEnd && size == 1 && !m_inRow && !secondHalf;
    if (!m_inRow && !(hasEnd && size == 1)) {
        m_inRow = size > 0;
        m_row.line = m_line;
        m_rowBytes = 0;
    }
    if (size > 0)
        Feed(&*begin, size);
    if (blank && m_width == 1) {
        m_row.line = m_line;
        m_row.fields.assign(1, {});
        m_complete = true;
    }
    m_place += size;
    if (hasEnd && !secondHalf)
        ++m_line;
    m_afterReturn = hasEnd && *end == '\r';
    return true;
}

void CCsvReader::End()
{
    m_atEnd = true;
    if (csv_fini(&m_parser, OnField, OnRow, this) != 0)
        throw LineFailure(EExit::eRefused, m_row.line, "a quoted text is not closed");
}

bool CCsvReader::Next(SCsvRow& row)
{
    m_row.fields.clear();
    m_complete = false;
    while (!m_complete && !m_atEnd) {
        if (!FeedLine())
            End();
    }
    if (m_complete)
        std::swap(row, m_row);
    return m_complete;
}

std::string CsvLine(const std::vector<SCsvField>& fields, char separator)
{
    std::string line;
    for (std::size_t index = 0; index < fields.size(); ++index) {
        if (index > 0)
            line += separator;
        const std::string& text = fields[index].text;
        if (fields[index].null)
            continue;
        const std::size_t start = line.size();
        line.resize(start + csv_write(nullptr, 0, text.data(), text.size()));
        csv_write(&line[start], line.size() - start, text.data(), text.size());
    }
    return line;
}

} // namespace tool
