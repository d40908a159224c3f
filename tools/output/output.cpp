// output.cpp: writes beside a file and renames when all is written.
#include "output.h"

#include <qelplat4/native_path.h>
#include <qelplat4/replace_file.h>

#include <random>

namespace tool {
namespace {

std::filesystem::path Beside(const std::filesystem::path& target)
{
    std::filesystem::path beside = target;
    beside += "." + std::to_string(std::random_device()()) + ".part";
    return beside;
}

/// A terminal, a pipe or a device is written to as it stands: there is nothing to rename.
bool IsPlace(const std::filesystem::path& target)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(target, error);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

/// A link stays; what it leads to is replaced.
std::filesystem::path Followed(const std::filesystem::path& target)
{
    std::error_code error;
    const std::filesystem::path end = std::filesystem::canonical(target, error);
    return error ? target : end;
}

} // namespace

COutput::COutput(CContext& context) : m_context(context)
{
    const std::string name = context.Arguments().Text("--output");
    if (name.empty() || name == "-")
        return;
    m_target = Followed(qel::NativePath(Wide(name)));
    if (IsPlace(m_target))
        m_beside = Beside(m_target);
    m_file.open(m_beside.empty() ? m_target : m_beside, std::ios::binary | std::ios::trunc);
    if (!m_file)
        Fail("cannot write this file");
}

COutput::~COutput()
{
    if (m_beside.empty())
        return;
    m_file.close();
    std::error_code error;
    std::filesystem::remove(m_beside, error);
}

std::ostream& COutput::Stream()
{
    return m_target.empty() ? m_context.Out() : m_file;
}

void COutput::Fail(const char* message) const
{
    SFailure failure;
    failure.file = m_context.Arguments().Text("--output");
    failure.message = message;
    throw failure;
}

void COutput::Finish()
{
    if (m_target.empty()) {
        m_context.Out().flush();
        return;
    }
    m_file.close();
    if (!m_file)
        Fail("cannot write all of the output");
    if (m_beside.empty())
        return;
    std::error_code error;
    const std::filesystem::file_status old = std::filesystem::status(m_target, error);
    if (std::filesystem::exists(old))
        std::filesystem::permissions(m_beside, old.permissions(), error);
    if (!qel::ReplaceFileDurably(m_beside, m_target))
        Fail("cannot put the finished file in its place");
    m_beside.clear();
}

} // namespace tool
