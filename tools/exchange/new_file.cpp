// new_file.cpp: made in one transaction, under a name of its own.
#include "new_file.h"

#include <qelplat4/native_path.h>

#include <filesystem>

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

void RequireOtherFile(const CContext& context, const char* first, const char* second)
{
    std::error_code error;
    const auto path = [&](const char* argument) {
        return qel::NativePath(Wide(context.Arguments().Text(argument)));
    };
    if (std::filesystem::equivalent(path(first), path(second), error))
        throw UsageFailure(std::string(second) + " is " + first + " itself");
}

void RequireReplaceable(const CContext& context, const std::string& target, bool tablesAlone)
{
    std::error_code error;
    if (!std::filesystem::exists(qel::NativePath(Wide(target)), error))
        return;
    try {
        const std::unique_ptr<CPropertyFile> present =
            CPropertyFile::Open(Wide(target), context.FileOptions(EAccess::eRead));
        if (tablesAlone && present->HasOtherTables())
            throw CPropertyFile::NotReplaced(Wide(target), "the file holds other tables as well");
    } catch (const SFailure& failure) {
        if (failure.exit == EExit::eNotFound)
            throw CPropertyFile::NotReplaced(Wide(target), "the file is something else");
        if (failure.exit != EExit::eFaults) // a damaged one is what is to be replaced
            throw;
    }
}

CNewFile::CNewFile(CContext& context, const std::string& target, EKind kind)
    : m_context(context), m_target(target), m_part(target, context.Arguments().Has("--force"))
{
    RequireReplaceable(context, target, true);
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
