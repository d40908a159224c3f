// output.cpp: writes to standard output, to a device, or beside a file that is renamed when all is written.
#include "output.h"

#include <qelplat4/native_path.h>

namespace tool {
namespace {

/// Whether a name stands for a stream that is open already, whatever lies behind it.
bool IsStreamName(const std::filesystem::path& target, const char* number, const char* word)
{
    const std::filesystem::path devices = "/dev";
    return target == devices / word || target == devices / "fd" / number;
}

/// Whether a name is that of a device or a pipe, for which there is nothing to rename.
bool IsDevice(const std::filesystem::path& target)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(target, error);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

} // namespace

COutput::COutput(CContext& context, const std::string& option) : m_context(context), m_option(option)
{
    const std::string name = context.Arguments().Text(option);
    if (name.empty() || name == "-")
        return;
    const std::filesystem::path target = qel::NativePath(Wide(name)).lexically_normal();
    if (IsStreamName(target, "1", "stdout"))
        return;
    m_toErr = IsStreamName(target, "2", "stderr");
    if (m_toErr)
        return;
    RequireOtherThanArguments(context.Arguments(), option);
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
    if (m_file.is_open())
        return m_file;
    return m_toErr ? m_context.Err() : m_context.Out();
}

void COutput::Fail(const char* message) const
{
    throw FileFailure(EExit::eFailed, m_context.Arguments().Text(m_option), message);
}

void COutput::Finish()
{
    if (!m_file.is_open()) {
        Stream().flush();
        return;
    }
    m_file.close();
    if (!m_file)
        Fail("cannot write all of the output");
    if (m_part)
        m_part->Publish();
}

void RequireWritten(const std::ostream& out)
{
    if (!out)
        throw MakeFailure(EExit::eFailed, "cannot write the output");
}

} // namespace tool
