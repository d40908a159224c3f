// main.cpp: the main function of every test program; notes in its report on what it ran.
#include <qelplat4/nls.h>
#include <qelplat4/utf16.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

std::string UserSetting(LCTYPE type)
{
    wchar_t text[128] = {};
    return GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 128) > 0 ? qel::ToUtf8(text) : std::string();
}

/// The widths that tell 32-bit Windows from other systems, and the regional settings that the user has here.
class CGround : public testing::Environment
{
    void SetUp() override
    {
        testing::Test::RecordProperty("sizeof_wchar_t", static_cast<int>(sizeof(wchar_t)));
        testing::Test::RecordProperty("sizeof_long", static_cast<int>(sizeof(long)));
        testing::Test::RecordProperty("decimal_separator", UserSetting(LOCALE_SDECIMAL));
        testing::Test::RecordProperty("short_date", UserSetting(LOCALE_SSHORTDATE));
    }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    testing::AddGlobalTestEnvironment(new CGround); // the framework's own from now on
    return RUN_ALL_TESTS();
}
