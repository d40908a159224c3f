// input.cpp: opens what is to be read.
#include "input.h"

#include <qelplat4/native_path.h>

#include <filesystem>

namespace tool {

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
    if (m_file && !std::filesystem::is_directory(path, error))
        return;
    SFailure failure;
    failure.exit = EExit::eNotFound;
    failure.file = m_name;
    failure.message = std::filesystem::exists(path, error) ? "cannot read this file" : "no such file";
    throw failure;
}

} // namespace tool
