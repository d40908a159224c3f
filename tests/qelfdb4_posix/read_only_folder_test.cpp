// read_only_folder_test.cpp: a store in a folder, or a file, without write permission.
#include <qelfdb4/store_fixture.h>

#include <filesystem>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace qeltest;

namespace {

/// Answer of work done by a user who owns nothing; root would be let through every permission.
unsigned int AsNobody(const std::function<unsigned int()>& work)
{
    int ends[2];
    if (pipe(ends) != 0)
        return 0;
    const pid_t child = fork();
    if (child == 0) {
        unsigned int code = 1;
        if (getuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0))
            code = work();
        _exit(write(ends[1], &code, sizeof code) == sizeof code ? 0 : 1);
    }
    unsigned int code = 0;
    close(ends[1]);
    if (read(ends[0], &code, sizeof code) != sizeof code)
        code = 0;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return code;
}

class ProtectedStore : public CStoreFixture
{
protected:
    void SetUp() override
    {
        Create();
        Put(store, 1, 1, "one");
        store.Close();
        fs::permissions(folder.File(L"s.qdb"), static_cast<fs::perms>(0444));
        fs::permissions(folder.Root(), static_cast<fs::perms>(0555));
    }
    void TearDown() override { fs::permissions(folder.Root(), static_cast<fs::perms>(0755)); }
};

TEST_F(ProtectedStore, IsReadFromAFolderWithoutWritePermission)
{
    EXPECT_THAT(AsNobody([&] {
                    const unsigned int code = store.Open(path, true);
                    return code != qel::kSuccess || Dump(store, 1) == "1=one" ? code : 2;
                }),
                Succeeds());
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(ProtectedStore, IsNotOpenedForWriting)
{
    EXPECT_THAT(AsNobody([&] { return store.Open(path, false); }), Gives(17501));
    EXPECT_THAT(AsNobody([&] { return store.Create(path, 1); }), Gives(17501));
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(ProtectedStore, TakesNoFileBesideIt)
{
    EXPECT_THAT(AsNobody([&] {
                    store.Open(path, true);
                    return store.Optimize(folder.Path(L"copy"), nullptr, 0, false);
                }),
                Gives(17314));
    EXPECT_THAT(AsNobody([&] { return store.Create(folder.Path(L"t.qdb"), 1); }), Gives(17314));
    EXPECT_EQ(folder.Names(), "s.qdb");
}

TEST_F(ProtectedStore, CannotBeReadWithoutReadPermission)
{
    fs::permissions(folder.File(L"s.qdb"), static_cast<fs::perms>(0200));
    EXPECT_THAT(AsNobody([&] { return store.Open(path, true); }), Gives(17314));
}

TEST_F(ProtectedStore, ChangeInAFolderThatTakesNoSideFileGivesACode)
{
    fs::permissions(folder.File(L"s.qdb"), static_cast<fs::perms>(0666));
    EXPECT_THAT(AsNobody([&] {
                    const unsigned int code = store.Open(path, false);
                    return code == qel::kSuccess ? Put(store, 1, 1, "two") : 2;
                }),
                Gives(17308));
    ASSERT_THAT(store.Open(path, true), Succeeds());
    EXPECT_EQ(Dump(store, 1), "1=one");
}

} // namespace
