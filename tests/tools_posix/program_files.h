// program_files.h: a database of each kind for runs of the built program.
#pragma once

#include "program_process.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace qeltest {

/// A test that runs on both kinds of file: the parameter is what --format takes. Lamps has a text and one
/// record.
class ProgramOnFiles : public testing::TestWithParam<const char*>
{
public:
    ~ProgramOnFiles() override { Allow(std::filesystem::perms::owner_all, folder.Root()); }

protected:
    ProgramOnFiles()
    {
        Out({"init", db, "--format", GetParam()});
        Out({"add-table", db, "Lamps", "Name:string"});
        Out({"add", db, "Lamps", "--oid", "7", "Name=Desk"});
    }

    std::string Name(const std::wstring& name) const { return folder.File(name).string(); }

    /// The output of a run that must end well.
    static std::string Out(const std::vector<std::string>& arguments)
    {
        const SEnded ended = RunToEnd(arguments);
        EXPECT_EQ(ended.status, 0) << arguments.front() << '\n' << ended.err;
        return ended.out;
    }

    std::string Records() { return Out({"list", db, "Lamps", "--csv"}); }

    /// Puts a record into the database whose text no pipe takes at once.
    void AddLargeRecord()
    {
        WriteFile(folder.File(L"large.txt"), std::string(400000, 'x'));
        Out({"add", db, "Lamps", "--oid", "8", "Name@=" + Name(L"large.txt")});
        std::filesystem::remove(folder.File(L"large.txt"));
    }

    static void Allow(std::filesystem::perms permissions, const std::filesystem::path& path)
    {
        std::filesystem::permissions(path, permissions);
    }

    CTemporaryFolder folder;
    const std::string db = Name(L"lamps.db");
};

/// Rows for a CSV file of Lamps, each with a text of a hundred letters.
inline std::string ManyRows(int count)
{
    std::string rows = "Name\n";
    for (int row = 0; row < count; ++row)
        rows += std::string(100, 'n') + '\n';
    return rows;
}

inline std::string KindOf(const testing::TestParamInfo<const char*>& kind)
{
    return kind.param;
}

} // namespace qeltest
