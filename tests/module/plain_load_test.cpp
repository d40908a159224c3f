// plain_load_test.cpp: the built library loaded past the framework, as a linked one is.
#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>

namespace {

constexpr UINT kYes = 15002;

/// The library, loaded by the system's own function.
class PlainLoad : public testing::Test
{
public:
    ~PlainLoad() override
    {
        AfxSetModuleFilter(nullptr);
        if (library != nullptr)
            dlclose(library);
    }

protected:
    void Load()
    {
        const std::wstring wide = QEL_LIBRARY;
        library = dlopen(std::string(wide.begin(), wide.end()).c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr);
    }
    BOOL IsAttached()
    {
        void* const symbol = dlsym(library, "AfxModuleIsAttached");
        return symbol != nullptr ? reinterpret_cast<BOOL (*)()>(symbol)() : -1;
    }

    void* library = nullptr;
};

TEST_F(PlainLoad, RegistersToo)
{
    Load();
    EXPECT_EQ(IsAttached(), TRUE);
    EXPECT_EQ(static_cast<void*>(AfxFindStringResourceHandle(kYes)), library);
}

TEST_F(PlainLoad, ShowsThatItsRegistrationFailed)
{
    AfxSetModuleFilter([](HMODULE) { return FALSE; });
    Load();
    EXPECT_EQ(IsAttached(), FALSE);
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), nullptr);
}

TEST_F(PlainLoad, EndsTheRegistrationWhenItIsClosed)
{
    Load();
    dlclose(library);
    library = nullptr;
    EXPECT_EQ(AfxFindStringResourceHandle(kYes), nullptr);
}

} // namespace
