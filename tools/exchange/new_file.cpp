// new_file.cpp: made in one transaction, under a name of its own.
#include "new_file.h"

namespace tool {

EKind KindAsked(const CContext& context, EKind absent)
{
    const std::string name = context.Arguments().Text("--format");
    if (name.empty())
        return absent;
    return name == "legacy" ? EKind::eLegacy : EKind::eSQLite;
}

std::string KindName(EKind kind)
{
    return kind == EKind::eLegacy ? "legacy" : "SQLite";
}

CNewFile::CNewFile(CContext& context, const std::string& target, EKind kind)
    : m_context(context), m_target(target), m_part(target, context.Arguments().Has("--force"))
{
    constexpr bool kIndexes = true;
    constexpr bool kForce = false;
    try {
        m_file = CPropertyFile::Create(m_part.Path(), kind, kIndexes, kForce,
                                       context.FileOptions(EAccess::eWrite));
    } catch (SFailure& failure) {
        throw Renamed(failure);
    }
}

CPropertyFile& CNewFile::Reopen()
{
    m_context.CheckInterrupt();
    m_file->Commit();
    m_file.reset();
    m_file = CPropertyFile::Open(m_part.Path(), m_context.FileOptions(EAccess::eRead));
    return *m_file;
}

void CNewFile::Publish()
{
    m_file.reset();
    m_context.CheckInterrupt();
    if (m_context.IsDryRun())
        m_context.Tell("dry run: nothing was saved");
    else
        m_part.Publish();
}

SFailure CNewFile::Renamed(SFailure failure) const
{
    if (failure.file == Utf8(m_part.Path()))
        failure.file = m_target;
    return failure;
}

} // namespace tool
