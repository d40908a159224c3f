// init.cpp: makes an empty property database.
#include "define.h"
#include "output/part_file.h"

#include <qelplat4/native_path.h>

namespace tool {
namespace {

/// Removes a file that the command itself has made, unless all went well.
class CMadeFile
{
public:
    explicit CMadeFile(const std::wstring& path) : m_path(FollowedLink(qel::NativePath(path)))
    {
        std::error_code error;
        m_remove = !std::filesystem::exists(m_path, error);
    }
    CMadeFile(const CMadeFile&) = delete;
    CMadeFile& operator=(const CMadeFile&) = delete;
    ~CMadeFile()
    {
        std::error_code error;
        if (m_remove)
            std::filesystem::remove(m_path, error);
    }
    bool IsNew() const { return m_remove; }
    void Keep() { m_remove = false; }

private:
    std::filesystem::path m_path;
    bool m_remove;
};

} // namespace

EExit RunInit(CContext& context)
{
    const CArguments& arguments = context.Arguments();
    const EKind kind = arguments.Text("--format") == "legacy" ? EKind::eLegacy : EKind::eSQLite;
    if (kind == EKind::eLegacy && arguments.Has("--no-indexes"))
        throw UsageFailure("--no-indexes is for SQLite");
    const std::wstring path = Wide(arguments.Text("FILE"));
    CMadeFile made(path);
    const CPropertyFile::SOptions options = context.FileOptions(EAccess::eWrite);
    // Making a legacy store replaces the file at once, so that the old one is only asked whether it could be.
    const bool replaces = kind == EKind::eLegacy && !made.IsNew() && arguments.Has("--force");
    if (context.IsDryRun() && replaces) {
        if (CPropertyFile::Open(path, options)->Kind() != EKind::eLegacy)
            throw CPropertyFile::NotReplaced(path, "the file is something else");
        context.Tell("dry run: nothing was saved");
        return EExit::eDone;
    }
    const std::unique_ptr<CPropertyFile> file =
        CPropertyFile::Create(path, kind, !arguments.Has("--no-indexes"), arguments.Has("--force"), options);
    context.Finish(*file);
    if (!context.IsDryRun())
        made.Keep();
    return EExit::eDone;
}

} // namespace tool
