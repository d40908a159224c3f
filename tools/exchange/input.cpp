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
    const auto refuse = [&](const char* message, const char* hint) {
        throw FileFailure(EExit::eRefused, name, message, hint);
    };
    if (BeginsWith(start, "\xFF\xFE") || BeginsWith(start, "\xFE\xFF"))
        refuse("this is text in UTF-16, and UTF-8 is wanted",
               "iconv -f UTF-16 -t UTF-8 FILE, or save it as UTF-8");
    if (BeginsWith(start, "\x1F\x8B"))
        refuse("this is packed", "gzip -dc FILE unpacks it; - reads what it prints");
    if (BeginsWith(start, std::string("SQLite format 3\0", 16)))
        refuse("this is a database, and text is wanted",
               "'qelprop export' and 'qelprop dump' make text of one");
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
    throw UnreadableFile(m_name);
}

SFailure UnreadableFile(const std::string& name)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(qel::NativePath(Wide(name)), error);
    return FileFailure(EExit::eNotFound, name,
                       std::filesystem::is_directory(status) ? "this is a folder"
                       : std::filesystem::exists(status)     ? "cannot read this file"
                                                             : "no such file");
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
