// code_page_text_test.cpp: the setter of text in a code page.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include "support/hex.h"
#include "support/row_name.h"
#include "support/sample_values.h"

using namespace qeltest;

namespace {

struct SPageRow
{
    const char* name;
    std::string bytes;
    unsigned int codePage;
    const char* buffer;
};

class CodePageText : public testing::TestWithParam<SPageRow>
{};

} // namespace

TEST_P(CodePageText, HasABufferForOneUnitPerByte)
{
    CQelProperty value = Int(5);
    value.SetString(GetParam().bytes, GetParam().codePage);
    EXPECT_EQ(value.GetType(), CQelProperty::eString);
    EXPECT_EQ(value.Data().nBufferSize, 2 * GetParam().bytes.size() + 2);
    EXPECT_EQ(HexOf(value.Data().pBuffer, value.Data().nBufferSize, "2"), GetParam().buffer);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CodePageText,
    testing::Values(SPageRow{"Western", "A\xE4\x80", 1252, "4100 e400 ac20 0000"},
                    SPageRow{"Utf8LeavesRoomBehindTheText", "\xC3\xA4\xE2\x82\xAC", 65001,
                             "e400 ac20 0000 0000 0000 0000"},
                    SPageRow{"Utf8OutsideTheBasicPlane", "\xF0\x9F\x98\x80", 65001,
                             "3dd8 00de 0000 0000 0000"},
                    SPageRow{"Japanese", "\x83\x41", 932, "a230 0000 0000"},
                    SPageRow{"Empty", "", 1252, "0000"},
                    SPageRow{"EndsAtAnEmbeddedZero", std::string("A\0B", 3), 1252, "4100 0000 0000 0000"},
                    SPageRow{"UnknownCodePageGivesAnEmptyText", "AB", 4242, "0000 0000 0000"}),
    SRowName());
