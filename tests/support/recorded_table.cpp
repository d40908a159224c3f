// recorded_table.cpp: reads the tables of recorded answers that tests run against.
#include "recorded_table.h"

#include <qelplat4/utf16.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace qeltest {
namespace {

SRecordedRow SplitRow(const std::string& line)
{
    SRecordedRow row;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        row.fields.push_back(field);
    return row;
}

char16_t PlainEscape(char16_t letter)
{
    switch (letter) {
    case u't':
        return u'\t';
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    default:
        return letter;
    }
}

// \uXXXX is one UTF-16 unit, so that pairs must be joined after all are read.
std::u16string ResolveEscapes(const std::u16string& text)
{
    std::u16string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\') {
            out += text[i];
        } else if (text.at(++i) == u'u') {
            const std::string digits(text.begin() + static_cast<long>(i) + 1,
                                     text.begin() + static_cast<long>(i) + 5);
            out += static_cast<char16_t>(std::stoul(digits, nullptr, 16));
            i += 4;
        } else {
            out += PlainEscape(text[i]);
        }
    }
    return out;
}

} // namespace

std::vector<SRecordedRow> ReadRecordedTable(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::vector<SRecordedRow> rows;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line[0] != '#')
            rows.push_back(SplitRow(line));
    return rows;
}

std::wstring QuotedText(const std::string& field)
{
    if (field.size() < 2 || field.front() != '"' || field.back() != '"')
        throw std::runtime_error("not a quoted text: " + field);
    const std::u16string text = qel::ToUtf16(qel::FromUtf8(field.substr(1, field.size() - 2)));
    const std::u16string units = ResolveEscapes(text);
    return qel::FromUtf16(units.data(), units.size());
}

double DoubleOfBits(const std::string& field)
{
    const std::uint64_t bits = std::stoull(field.substr(0, 16), nullptr, 16);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

float FloatOfBits(const std::string& field)
{
    const auto bits = static_cast<std::uint32_t>(std::stoul(field.substr(0, 8), nullptr, 16));
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace qeltest
