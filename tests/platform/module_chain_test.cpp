// module_chain_test.cpp: registration of extension modules and the chain of their resources.
#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

constexpr AFX_STRING_RESOURCE kFirstTexts[] = {{7, L"first seven"}, {8, L"first eight"}};
constexpr AFX_STRING_RESOURCE kSecondTexts[] = {{7, L"second seven"}};

class ModuleChain : public testing::Test
{
public:
    ~ModuleChain() override
    {
        AfxTermExtensionModule(first);
        AfxTermExtensionModule(second);
        AfxSetModuleFilter(nullptr);
        AfxSetResourceHandle(nullptr);
    }

protected:
    void Join(AFX_EXTENSION_MODULE& state, HINSTANCE handle)
    {
        ASSERT_NE(AfxInitExtensionModule(state, handle), FALSE);
        new CDynLinkLibrary(state);
    }
    std::wstring Load(UINT id)
    {
        std::wstring text;
        AfxLoadString(id, text);
        return text;
    }

    HINSTANCE firstHandle = reinterpret_cast<HINSTANCE>(&first);
    HINSTANCE secondHandle = reinterpret_cast<HINSTANCE>(&second);
    AFX_EXTENSION_MODULE first{kFirstTexts, 2};
    AFX_EXTENSION_MODULE second{kSecondTexts, 1};
};

TEST_F(ModuleChain, IsAskedFromTheNewestOn)
{
    Join(first, firstHandle);
    Join(second, secondHandle);
    EXPECT_EQ(Load(7), L"second seven");
    EXPECT_EQ(Load(8), L"first eight");
    EXPECT_EQ(AfxFindStringResourceHandle(8), firstHandle);
}

TEST_F(ModuleChain, AsksTheResourceHandlesModuleBefore)
{
    Join(first, firstHandle);
    Join(second, secondHandle);
    AfxSetResourceHandle(firstHandle);
    EXPECT_EQ(Load(7), L"first seven");
    EXPECT_EQ(AfxFindStringResourceHandle(7), firstHandle);
}

TEST_F(ModuleChain, OneModuleAnswersForItselfAlone)
{
    Join(first, firstHandle);
    Join(second, secondHandle);
    CString text;
    EXPECT_NE(text.LoadString(firstHandle, 7), FALSE);
    EXPECT_STREQ(text.GetString(), L"first seven");
    EXPECT_EQ(text.LoadString(secondHandle, 8), FALSE);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.LoadString(nullptr, 7), FALSE);
}

TEST_F(ModuleChain, LosesAModuleWhoseRegistrationEnds)
{
    Join(first, firstHandle);
    Join(second, secondHandle);
    AfxTermExtensionModule(second);
    EXPECT_EQ(second.bInitialized, FALSE);
    EXPECT_EQ(Load(7), L"first seven");
    AfxTermExtensionModule(second); // nothing is left to end
    AfxTermExtensionModule(first);
    EXPECT_EQ(Load(7), L"");
    EXPECT_EQ(AfxFindStringResourceHandle(7), nullptr);
}

TEST_F(ModuleChain, RegistrationNeedsAHandleAndTheHostsConsent)
{
    EXPECT_EQ(AfxInitExtensionModule(first, nullptr), FALSE);
    AfxSetModuleFilter([](HMODULE) { return FALSE; });
    EXPECT_EQ(AfxInitExtensionModule(first, firstHandle), FALSE);
    EXPECT_EQ(first.bInitialized, FALSE);
    AfxSetModuleFilter(nullptr);
    EXPECT_NE(AfxInitExtensionModule(first, firstHandle), FALSE);
}

TEST_F(ModuleChain, RegisteringTwiceChangesNothing)
{
    Join(first, firstHandle);
    EXPECT_NE(AfxInitExtensionModule(first, secondHandle), FALSE);
    EXPECT_EQ(first.hModule, firstHandle);
}

TEST_F(ModuleChain, ResourceHandleIsTheThreadsOwn)
{
    AfxSetResourceHandle(firstHandle);
    HINSTANCE seen = firstHandle;
    std::thread([&] { seen = AfxGetResourceHandle(); }).join();
    EXPECT_EQ(seen, nullptr);
}

TEST(LibraryLoading, WhatIsNoLibraryIsNotLoaded)
{
    EXPECT_EQ(AfxLoadLibrary(nullptr), nullptr);
    EXPECT_EQ(AfxLoadLibrary(L"/nowhere/libnothing.so"), nullptr);
    EXPECT_EQ(AfxFreeLibrary(nullptr), FALSE);
}

} // namespace
