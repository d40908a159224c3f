// module_load_test.cpp: the built library loaded, refused and unloaded by a host of the framework alone.
#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr UINT kYes = 15002;
const std::wstring kLibrary = QEL_LIBRARY;

class ModuleLoad : public testing::Test
{
public:
    ~ModuleLoad() override
    {
        AfxSetModuleFilter(nullptr);
        if (library != nullptr)
            AfxFreeLibrary(library);
    }

protected:
    HINSTANCE library = nullptr;
};

TEST_F(ModuleLoad, RegistersTheLibraryUntilItIsUnloaded)
{
    ASSERT_EQ(AfxFindStringResourceHandle(kYes), nullptr);
    library = AfxLoadLibrary(kLibrary.c_str());
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), library);
    EXPECT_NE(AfxFreeLibrary(library), FALSE);
    library = nullptr;
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), nullptr);
}

TEST_F(ModuleLoad, TextsAreFoundThroughTheChainAndThroughTheHandle)
{
    library = AfxLoadLibrary(kLibrary.c_str());
    ASSERT_NE(library, nullptr);
    CString text;
    EXPECT_NE(text.LoadString(kYes), FALSE);
    EXPECT_STREQ(text.GetString(), L"Yes");
    EXPECT_NE(text.LoadString(library, 15213), FALSE);
    EXPECT_STREQ(text.GetString(), L"Binary Object");
    EXPECT_EQ(text.LoadString(library, 15214), FALSE);
}

TEST_F(ModuleLoad, FailsWhenTheRegistrationFails)
{
    AfxSetModuleFilter([](HMODULE) { return FALSE; });
    library = AfxLoadLibrary(kLibrary.c_str());
    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), nullptr);
}

TEST_F(ModuleLoad, SucceedsAgainAfterARefusal)
{
    AfxSetModuleFilter([](HMODULE) { return FALSE; });
    ASSERT_EQ(AfxLoadLibrary(kLibrary.c_str()), nullptr);
    AfxSetModuleFilter(nullptr);
    library = AfxLoadLibrary(kLibrary.c_str());
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), library);
}

TEST_F(ModuleLoad, IsUndoneByTheLastOfSeveralUnloads)
{
    library = AfxLoadLibrary(kLibrary.c_str());
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(AfxLoadLibrary(kLibrary.c_str()), library);
    EXPECT_NE(AfxFreeLibrary(library), FALSE);
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), library);
}

} // namespace
