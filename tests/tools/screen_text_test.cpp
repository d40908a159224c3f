// screen_text_test.cpp: how wide text is at a terminal, and what is shown of it.
#include "output/screen_text.h"

#include "support/row_name.h"

#include <gtest/gtest.h>

using namespace tool;

namespace {

struct SWidth
{
    const char* name;
    const char* text;
    std::size_t columns;
};

class ScreenWidth : public testing::TestWithParam<SWidth>
{};

TEST_P(ScreenWidth, IsThatOfATerminal)
{
    EXPECT_EQ(Columns(GetParam().text), GetParam().columns);
}

INSTANTIATE_TEST_SUITE_P(
    Of, ScreenWidth,
    testing::Values(SWidth{"Nothing", "", 0}, SWidth{"Latin", "Duett", 5}, SWidth{"Umlaut", "M\u00fcller", 6},
                    SWidth{"CombiningMark", "Mu\u0308ller", 6}, SWidth{"Ideographs", "\u65e5\u672c\u8a9e", 6},
                    SWidth{"FullWidthLatin", "\uff21\uff22", 4},
                    SWidth{"HalfWidthKatakana", "\uff76\uff85", 2},
                    SWidth{"HangulInParts", "\u1112\u1161\u11ab", 2},
                    SWidth{"Arabic", "\u0633\u064a\u0627\u0631\u0629", 5},
                    SWidth{"ThaiWithVowelsAbove", "\u0e17\u0e35\u0e48", 1}, SWidth{"Emoji", "\U0001F697", 2},
                    SWidth{"Family", "\U0001F468\u200D\U0001F469\u200D\U0001F467", 2},
                    SWidth{"SkinTone", "\U0001F44D\U0001F3FD", 2},
                    SWidth{"HeartAsPicture", "\u2764\uFE0F", 2}, SWidth{"Flag", "\U0001F1F8\U0001F1EA", 2},
                    SWidth{"ZeroWidthSpace", "a\u200Bb", 2}),
    qeltest::SRowName());

TEST(OneLine, ShowsWhatWouldTurnTheTextBehindIt)
{
    EXPECT_EQ(tool::OneLine(L"a\u202Eb\u2066c"), "a\uFFFDb\uFFFDc");
    EXPECT_EQ(tool::OneLine(L"\u05D0\u200E"), "\u05D0\u200E");
}

TEST(ScreenText, IsCutBetweenCharactersWithAMark)
{
    EXPECT_EQ(Cut("Amazon", 6), "Amazon");
    EXPECT_EQ(Cut("Amazon", 5), "Amaz\u2026");
    EXPECT_EQ(Cut("Amazon", 1), "\u2026");
    EXPECT_EQ(Cut("Amazon", 0), "");
    EXPECT_EQ(Cut("\u65e5\u672c\u8a9e", 5), "\u65e5\u672c\u2026");
    EXPECT_EQ(Cut("\u65e5\u672c\u8a9e", 4), "\u65e5\u2026"); // half of a wide character is none
    EXPECT_EQ(Cut("Mu\u0308ller", 3), "Mu\u0308\u2026");
}

TEST(ScreenText, IsFilledUpToItsWidth)
{
    EXPECT_EQ(Padded("\u65e5", 4, false), "\u65e5  ");
    EXPECT_EQ(Padded("12", 4, true), "  12");
    EXPECT_EQ(Padded("12345", 4, true), "12345");
}

TEST(ScreenText, ShowsControlCharactersInsteadOfObeyingThem)
{
    EXPECT_EQ(OneLine(L"a\nb\tc"), "a\u240ab\u2409c");
    EXPECT_EQ(OneLine(L"\x1b[31mred"), "\u241b[31mred");
    EXPECT_EQ(OneLine(L"\x7f"), "\u2421");
    EXPECT_EQ(OneLine(L"\x9b"), "\ufffd");
}

TEST(ScreenText, ShowsHalfAPairAsNoCharacter)
{
    EXPECT_EQ(OneLine(std::wstring(1, static_cast<wchar_t>(0xD83D)) + L"x"), "\ufffdx");
    EXPECT_EQ(OneLine(L"\U0001F697"), "\U0001F697");
}

} // namespace
