// input.cpp: opens what is to be read.
#include "input.h"

#include <qelplat4/native_path.h>

#include <filesystem>

namespace tool {
namespace {

bool BeginsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

/// Refuses what is no text, by its first bytes.
void CheckText(const std::string& start, const std::string& name)
{
    SFailure failure;
    failure.exit = EExit::eRefused;
    failure.file = name;
    if (BeginsWith(start, "\xFF\xFE") || BeginsWith(start, "\xFE\xFF")) {
        failure.message = "this is text in UTF-16, and UTF-8 is wanted";
        failure.hint = "iconv -f UTF-16 -t UTF-8 FILE, or save it as UTF-8";
    } else if (BeginsWith(start, "\x1F\x8B")) {
        failure.message = "this is packed";
        failure.hint = "gzip -dc FILE unpacks it; - reads what it prints";
    } else if (BeginsWith(start, std::string("SQLite format 3\0", 16))) {
        failure.message = "this is a database, and text is wanted";
        failure.hint = "'qelprop export' and 'qelprop dump' make text of one";
    }
    if (!failure.message.empty())
        throw failure;
}

} // namespace

CInput::CInput(CContext& context)
    : m_context(context), m_name(context.Arguments().Text("INPUT", "-")), m_isStandard(m_name == "-")
{
    if (m_isStandard)
        return;
    const std::filesystem::path path = qel::NativePath(Wide(m_name));
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    m_size = error ? 0 : size;
    m_file.open(path, std::ios::binary);
    const bool isFolder = std::filesystem::is_directory(path, error);
    if (m_file && !isFolder) {
        if (std::filesystem::is_regular_file(path, error)) // a pipe could not be read again
            CheckStart();
        return;
    }
    SFailure failure;
    failure.exit = EExit::eNotFound;
    failure.file = m_name;
    failure.message = isFolder                               ? "this is a folder"
                      : std::filesystem::exists(path, error) ? "cannot read this file"
                                                             : "no such file";
    throw failure;
}

void CInput::CheckStart()
{
    constexpr std::size_t kLongest = 16;
    std::string start(kLongest, '\0');
    m_file.read(start.data(), kLongest);
    start.resize(static_cast<std::size_t>(m_file.gcount()));
    m_file.clear();
    m_file.seekg(0);
    CheckText(start, m_name);
}

} // namespace tool
