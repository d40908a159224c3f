// output.cpp: writes to standard output, to a device, or beside a file that is renamed when all is written.
#include "output.h"

#include <qelplat4/native_path.h>

namespace tool {
namespace {

/// Whether a name is that of a device or a pipe, for which there is nothing to rename.
bool IsDevice(const std::filesystem::path& target)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(target, error);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

void RefuseDatabase(const CContext& context, const std::filesystem::path& target)
{
    std::error_code error;
    const std::filesystem::path file = qel::NativePath(Wide(context.Arguments().Text("FILE")));
    if (std::filesystem::equivalent(file, target, error))
        throw UsageFailure("--output: this is the database itself");
}

} // namespace

COutput::COutput(CContext& context) : m_context(context)
{
    const std::string name = context.Arguments().Text("--output");
    if (name.empty() || name == "-")
        return;
    const std::filesystem::path target = qel::NativePath(Wide(name));
    RefuseDatabase(context, target);
    if (!IsDevice(target))
        m_part.emplace(name, true);
    m_file.open(m_part ? qel::NativePath(m_part->Path()) : target, std::ios::binary | std::ios::trunc);
    if (!m_file)
        Fail("cannot write this file");
}

COutput::~COutput()
{
    m_file.close(); // before the part goes
}

std::ostream& COutput::Stream()
{
    return m_file.is_open() ? m_file : m_context.Out();
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
    if (!m_file.is_open()) {
        m_context.Out().flush();
        return;
    }
    m_file.close();
    if (!m_file)
        Fail("cannot write all of the output");
    if (m_part)
        m_part->Publish();
}

} // namespace tool
