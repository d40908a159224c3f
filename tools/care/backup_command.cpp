// backup_command.cpp: the command backup.
#include "care.h"
#include "exchange/new_file.h"
#include "output/amount_text.h"
#include "output/part_file.h"
#include "output/progress.h"

#include <sqlite3.h>

namespace tool {
namespace {

/// A connection of the engine, closed at the end. Not copied.
class CTargetConnection
{
public:
    explicit CTargetConnection(const std::string& path)
    {
        m_result =
            sqlite3_open_v2(path.c_str(), &m_handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    }
    CTargetConnection(const CTargetConnection&) = delete;
    CTargetConnection& operator=(const CTargetConnection&) = delete;
    ~CTargetConnection() { sqlite3_close(m_handle); }

    sqlite3* Handle() const { return m_handle; }
    int Result() const { return m_result; }

private:
    sqlite3* m_handle = nullptr;
    int m_result = 0;
};

/// A copy under way, ended at the end. Not copied.
class CCopying
{
public:
    CCopying(sqlite3* target, sqlite3* source) : m_copy(sqlite3_backup_init(target, "main", source, "main"))
    {}
    CCopying(const CCopying&) = delete;
    CCopying& operator=(const CCopying&) = delete;
    ~CCopying() { End(); }

    /// @return the engine's result: 0 while there is more, 101 when all is copied
    int Step(int pages) { return m_copy == nullptr ? SQLITE_ERROR : sqlite3_backup_step(m_copy, pages); }
    unsigned long long Total() const
    {
        return static_cast<unsigned long long>(sqlite3_backup_pagecount(m_copy));
    }
    unsigned long long Done() const
    {
        return Total() - static_cast<unsigned long long>(sqlite3_backup_remaining(m_copy));
    }
    int End()
    {
        const int result = m_copy == nullptr ? SQLITE_ERROR : sqlite3_backup_finish(m_copy);
        m_copy = nullptr;
        return result;
    }

private:
    sqlite3_backup* m_copy;
};

void Require(int raw, const std::string& file)
{
    const unsigned int code = CQelSQLite::MapQelERR(raw);
    if (code != qel::kSuccess)
        throw FailureOf(code, file, "cannot copy");
}

void CopySQLite(CContext& context, CPropertyFile& source, const CPartFile& part)
{
    const std::string name = context.Arguments().Text("FILE");
    const CTargetConnection target(Utf8(part.Path()));
    Require(target.Result(), context.Arguments().Text("TARGET"));
    CCopying copying(target.Handle(), source.Connection()->Handle());
    constexpr int kPages = 256;
    std::unique_ptr<CProgress> progress;
    int result = copying.Step(kPages);
    for (; result == SQLITE_OK; result = copying.Step(kPages)) {
        if (progress == nullptr) // the number of pages is known after the first step
            progress = std::make_unique<CProgress>(context, "copying", "pages", copying.Total());
        progress->Step(copying.Done());
    }
    Require(result, name);
    Require(copying.End(), name);
}

void CopyStore(CContext& context, CPropertyFile& source, const CPartFile& part)
{
    const unsigned int code = source.LegacyDatabase()->Optimize(part.Path(), nullptr, 0);
    const bool ofSource = ExitOf(code) == EExit::eFaults;
    if (code != qel::kSuccess)
        throw FailureOf(code, context.Arguments().Text(ofSource ? "FILE" : "TARGET"), "cannot copy");
}

} // namespace

EExit RunBackup(CContext& context)
{
    RequireOtherFile(context, "FILE", "TARGET");
    const std::unique_ptr<CPropertyFile> source = context.OpenFile(EAccess::eRead);
    const std::string target = context.Arguments().Text("TARGET");
    CPartFile part(target, context.Arguments().Has("--force"));
    RequireReplaceable(context, target, false);
    if (source->Kind() == EKind::eSQLite)
        CopySQLite(context, *source, part);
    else
        CopyStore(context, *source, part);
    context.CheckInterrupt();
    const unsigned long long size = part.Size();
    part.AllowLike(context.Arguments().Text("FILE"));
    if (context.IsDryRun())
        context.Tell("dry run: nothing was saved");
    else
        part.Publish();
    context.Tell((context.IsDryRun() ? "would have copied " : "copied ") + SizeText(size));
    return EExit::eDone;
}

} // namespace tool
