// new_file.h: a property database that is made whole, then gets its name.
#pragma once

#include "cli/context.h"
#include "output/part_file.h"

namespace tool {

/// The format that --format names; `absent` without it.
EKind KindAsked(const CContext& context, EKind absent);
/// "SQLite" or "legacy"
std::string KindName(EKind kind);

/// Refuses two arguments that name one and the same file, by whatever path or link.
/// @throws SFailure  2
void RequireOtherFile(const CContext& context, const char* first, const char* second);

/// Refuses to replace what is no property database, whatever --force says.
/// @param tablesAlone  also one in whose file other tables stand
/// @throws SFailure  4
void RequireReplaceable(const CContext& context, const std::string& target, bool tablesAlone);

/// A new property database beside its place. Not copied.
class CNewFile
{
public:
    CNewFile(CContext& context, const std::string& target, EKind kind);

    CPropertyFile& File() { return *m_file; }
    /// Saves, closes and opens what was made for reading.
    CPropertyFile& Reopen();
    /// Lets only those read it who may read the file that an argument names.
    void AllowLike(const std::string& argument) { m_part.AllowLike(m_context.Arguments().Text(argument)); }
    /// Gives the file its name, but for a dry run, and says so.
    void Publish();
    /// Names the file as the user knows it.
    SFailure Renamed(SFailure failure) const;

private:
    CContext& m_context;
    std::string m_target;
    CPartFile m_part; // ends after what is open in it
    std::unique_ptr<CPropertyFile> m_file;
};

} // namespace tool
