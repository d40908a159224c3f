// module_string_test.cpp: the library's own string table.
#include "libeval/resources/resources.h"

#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

namespace {

TEST(ModuleStrings, EveryTextStandsUnderItsNumber)
{
    const std::pair<unsigned int, const wchar_t*> texts[] = {
        {15000, L"Global"},
        {15001, L"Image"},
        {15002, L"Yes"},
        {15003, L"No"},
        {15004, L"Binary Object"},
        {15200, L"Null"},
        {15201, L"String"},
        {15202, L"Signed Integer"},
        {15203, L"Unsigned Integer"},
        {15204, L"Signed Long Integer"},
        {15205, L"Unsigned Long Integer"},
        {15206, L"Double"},
        {15207, L"Date"},
        {15208, L"Time"},
        {15209, L"Boolean"},
        {15210, L"Currency"},
        {15211, L"Hyperlink"},
        {15212, L"Reference"},
        {15213, L"Binary Object"},
    };
    for (const auto& [id, text] : texts)
        EXPECT_EQ(qel::ModuleString(id), text) << id;
}

TEST(ModuleStrings, OtherNumbersHaveNoText)
{
    for (const unsigned int id : {0u, 14999u, 15005u, 15199u, 15214u, 0xFFFFFFFFu})
        EXPECT_EQ(qel::ModuleString(id), L"") << id;
}

/// A host's module with texts of its own under numbers of the library.
class HostModule : public testing::Test
{
public:
    ~HostModule() override { AfxTermExtensionModule(state); }

protected:
    HostModule()
    {
        AfxInitExtensionModule(state, handle);
        new CDynLinkLibrary(state);
    }

    static constexpr AFX_STRING_RESOURCE kTexts[] = {{15002, L"Jawohl"}, {15214, L"Moment"}};
    HINSTANCE handle = reinterpret_cast<HINSTANCE>(this);
    AFX_EXTENSION_MODULE state{kTexts, 2};
};

TEST_F(HostModule, IsNeverConsultedForTheLibrarysTexts)
{
    EXPECT_EQ(qel::ModuleString(15002), L"Yes");
    EXPECT_EQ(qel::ModuleString(15214), L"");
}

TEST_F(HostModule, KeepsItsResourceHandle)
{
    AfxSetResourceHandle(handle);
    qel::ModuleString(15002);
    EXPECT_EQ(AfxGetResourceHandle(), handle);
    AfxSetResourceHandle(nullptr);
}

TEST_F(HostModule, FindsTheLibrarysTextsThroughTheChain)
{
    CString text;
    EXPECT_NE(text.LoadString(15210), FALSE);
    EXPECT_STREQ(text.GetString(), L"Currency");
}

} // namespace
