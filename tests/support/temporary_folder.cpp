// temporary_folder.cpp: a folder of a test's own.
#include "temporary_folder.h"

#include <qelplat4/native_path.h>
#include <qelplat4/utf16.h>

#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <system_error>

namespace qeltest {

namespace fs = std::filesystem;

CTemporaryFolder::CTemporaryFolder()
{
    std::random_device random;
    do {
        m_root = fs::temp_directory_path() / ("qeltest-" + std::to_string(random()));
    } while (!fs::create_directory(m_root));
}

CTemporaryFolder::~CTemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

std::wstring CTemporaryFolder::Path(const std::wstring& name) const
{
    const auto root = m_root.u8string();
    return qel::FromUtf8(std::string(root.begin(), root.end())) + L"/" + name;
}

fs::path CTemporaryFolder::File(const std::wstring& name) const
{
    return qel::NativePath(Path(name));
}

std::string CTemporaryFolder::Names() const
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_root))
        names.insert(entry.path().filename().u8string());
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " ") + name;
    return text;
}

std::string ReadFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteFile(const fs::path& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        throw std::system_error(std::make_error_code(std::errc::io_error));
}

} // namespace qeltest
