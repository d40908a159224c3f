// compact_command.cpp: the command compact.
#include "adaptor/patience.h"
#include "care.h"
#include "output/amount_text.h"
#include "output/output.h"
#include "output/part_file.h"

#include <qelplat4/native_path.h>
#include <qelplat4/terminal.h>
#include <sqlite3.h>

namespace tool {
namespace {

unsigned long long SizeOf(const std::string& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(qel::NativePath(Wide(file)), error);
    return error ? 0 : size;
}

void Require(CContext& context, unsigned int code)
{
    if (code == qel::kSuccess)
        return;
    context.CheckInterrupt(); // what the user stopped is no failure
    throw FailureOf(code, context.Arguments().Text("FILE"), "cannot compact");
}

int StopWhenInterrupted(void*)
{
    return qel::WasInterrupted() ? 1 : 0;
}

void OpenConnection(CContext& context, CPatience& patience, CQelSQLite& connection, bool readOnly)
{
    Require(context,
            CQelSQLite::MapQelERR(connection.Open(Wide(context.Arguments().Text("FILE")), readOnly)));
    connection.SetLogfile(context.Log());
    patience.Lend(connection);
    constexpr int kInstructions = 10000; // some times in a millisecond
    sqlite3_progress_handler(connection.Handle(), kInstructions, StopWhenInterrupted, nullptr);
}

void CompactSQLite(CContext& context)
{
    CPatience patience(context.FileOptions(EAccess::eRead).busyTimeout);
    CQelSQLite connection;
    OpenConnection(context, patience, connection, false);
    Require(context, connection.IsReadOnly() ? qel::kReadOnly : qel::kSuccess);
    Require(context, CQelSQLite::MapQelERR(connection.ExecSQL(L"VACUUM")));
    // In a file with a write-ahead log the shorter content stands there until now.
    Require(context, CQelSQLite::MapQelERR(connection.ExecSQL(L"PRAGMA wal_checkpoint(TRUNCATE)")));
}

void CompactSQLiteInto(CContext& context, const CPartFile& part)
{
    CPatience patience(context.FileOptions(EAccess::eRead).busyTimeout);
    CQelSQLite connection;
    OpenConnection(context, patience, connection, true);
    CQelSQLite::CStatement statement(&connection);
    statement.Prepare(L"VACUUM INTO ?1");
    statement.BindString(1, part.Path());
    Require(context, CQelSQLite::MapQelERR(connection.ExecStatement(&statement)));
}

/// @param path  empty: where it stands
void CompactStore(CContext& context, const std::wstring& path)
{
    CDovBlobDB store;
    store.SetLogFile(context.Log());
    const bool readOnly = !path.empty();
    const std::wstring file = Wide(context.Arguments().Text("FILE"));
    CPatience patience(context.FileOptions(EAccess::eRead).busyTimeout);
    Require(context, patience.Open([&] { return store.Open(file, readOnly); }));
    Require(context, store.Optimize(path, nullptr, 0, false));
    Require(context, store.Close());
}

} // namespace

EExit RunCompact(CContext& context)
{
    COutput output(context); // before the work: a name that cannot be written to must not follow it
    // Opening tells the kind, and refuses a file that holds no properties; a store that a killed process has
    // left is put right by being opened for writing.
    const EKind kind = context.OpenFile(context.IsDryRun() ? EAccess::eRead : EAccess::eWrite)->Kind();
    const std::string file = context.Arguments().Text("FILE");
    const unsigned long long before = SizeOf(file);
    unsigned long long after = 0;
    if (context.IsDryRun()) {
        constexpr bool kReplace = true; // the file itself stands under the name
        const CPartFile part(file, kReplace);
        if (kind == EKind::eSQLite)
            CompactSQLiteInto(context, part);
        else
            CompactStore(context, part.Path());
        after = part.Size();
        context.Tell("dry run: nothing was saved");
    } else {
        if (kind == EKind::eSQLite)
            CompactSQLite(context);
        else
            CompactStore(context, {});
        after = SizeOf(file);
    }
    output.Stream() << SizeText(before) << " -> " << SizeText(after) << '\n';
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
