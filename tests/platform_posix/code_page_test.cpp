// code_page_test.cpp: bytes of code pages as wide text: lengths, buffers, refusals, odd bytes.
#include "support/environment.h"
#include "support/hex.h"
#include "support/row_name.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace qeltest;

std::wstring Decoded(UINT page, const std::string& bytes)
{
    wchar_t text[256];
    const int count = MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()), text, 256);
    return count > 0 ? std::wstring(text, static_cast<std::size_t>(count)) : L"FAIL";
}

struct SBytes
{
    const char* name;
    UINT page;
    const char* hex;
    const wchar_t* text;
};

class CodePageBytes : public testing::TestWithParam<SBytes>
{};

TEST_P(CodePageBytes, BecomeText)
{
    EXPECT_EQ(Decoded(GetParam().page, BytesOf(GetParam().hex)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Pages, CodePageBytes,
    testing::Values(
        SBytes{"Thai", 874, "a1 db fc", L"ก\uF8C1\uF8C5"}, SBytes{"Turkish", 1254, "dd fe 81", L"İş\u0081"},
        SBytes{"Hebrew", 1255, "e0 ca d9 ff", L"א\u05BA\uF88D\uF896"}, SBytes{"Arabic", 1256, "c7 80", L"ا€"},
        SBytes{"Baltic", 1257, "e0 a1", L"ą\uF8FC"}, SBytes{"Vietnamese", 1258, "d0 fe", L"Đ₫"},
        SBytes{"Korean", 949, "b0 a1 80 ff c9", L"가\u0080\uF8F7?"},
        SBytes{"TraditionalChinese", 950, "a4 a4 a4 e5 81", L"中文?"},
        SBytes{"Russian", 20866, "c1 d1", L"ая"}, SBytes{"Latin9", 28605, "a4", L"€"},
        SBytes{"JapaneseUnix", 51932, "c6 fc cb dc", L"日本"},
        SBytes{"FourByteChinese", 54936, "94 39 da 33", L"💩"}, SBytes{"Mainframe", 37, "c1 c2 f1", L"AB1"},
        SBytes{"ControlsOfThePc", 437, "1a 1c 7f", L"\x1A\x1C\x7F"},
        SBytes{"SurrogatesInUtf8", 65001, "ed a0 80", L"\uFFFD\uFFFD\uFFFD"}),
    SRowName());

TEST(CodePage, GivenLengthTakesNoTerminatorAndKeepsZeros)
{
    EXPECT_EQ(Decoded(1252, std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(Decoded(932, std::string("\x83\0a", 3)), std::wstring(L"・\0a", 3));
    EXPECT_EQ(Decoded(CP_UTF8, std::string("\xC3\0", 2)), std::wstring(L"\uFFFD\0", 2));
}

TEST(CodePage, NoCapacityAsksForTheRoomNeeded)
{
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xE2\x82\xAC", -1, nullptr, 0), 2);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xE2\x82\xAC", 3, nullptr, 0), 1);
}

TEST(CodePage, PageOfTheUserIsReadAfreshInEachCall)
{
    CLocaleEnvironment environment("en_US.UTF-8");
    EXPECT_EQ(Decoded(CP_ACP, "\xE6"), L"æ");
    environment.Set("LC_ALL", "ru_RU.UTF-8");
    EXPECT_EQ(Decoded(CP_ACP, "\xE6"), L"ж");
    environment.Set("LC_ALL", "hi_IN");
    EXPECT_EQ(Decoded(CP_ACP, "\xC3\xA6"), L"æ");
    environment.Set("LC_ALL", "");
    environment.Set("LC_CTYPE", "el_GR.ISO-8859-7");
    EXPECT_EQ(Decoded(CP_ACP, "\xE6"), L"ζ");
}

struct SRefusal
{
    const char* name;
    UINT page;
    DWORD flags;
    const char* bytes;
    int length;
    bool hasBuffer;
    int capacity;
    DWORD error;
};

class CodePageRefusals : public testing::TestWithParam<SRefusal>
{};

TEST_P(CodePageRefusals, GiveTheirError)
{
    const SRefusal& refusal = GetParam();
    wchar_t text[16];
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(refusal.page, refusal.flags, refusal.bytes, refusal.length,
                                  refusal.hasBuffer ? text : nullptr, refusal.capacity),
              0);
    EXPECT_EQ(GetLastError(), refusal.error);
}

INSTANTIATE_TEST_SUITE_P(Cases, CodePageRefusals,
                         testing::Values(SRefusal{"UnknownPage", 12345, 0, "a", 1, true, 16, 87},
                                         SRefusal{"PageOfTwoByteUnits", 1200, 0, "a", 1, true, 16, 87},
                                         SRefusal{"PageOfFourByteUnits", 12000, 0, "a", 1, true, 16, 87},
                                         SRefusal{"Utf8ByAnotherNumber", 1208, 0, "a", 1, true, 16, 87},
                                         SRefusal{"NoBytes", 1252, 0, nullptr, 1, true, 16, 87},
                                         SRefusal{"NoLength", 1252, 0, "a", 0, true, 16, 87},
                                         SRefusal{"NoBuffer", 1252, 0, "a", 1, false, 16, 87},
                                         SRefusal{"NegativeCapacity", 1252, 0, "a", 1, true, -1, 87},
                                         SRefusal{"UnknownFlags", 1252, 8, "a", 1, true, 16, 1004},
                                         SRefusal{"NoRoomForTheTerminator", 1252, 0, "abc", -1, true, 3,
                                                  122}),
                         SRowName());

} // namespace
