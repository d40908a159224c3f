// type_names_test.cpp: the display names of types.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include <climits>

namespace {

std::wstring NameOf(int type)
{
    return CQelProperty::GetTypeName(static_cast<CQelProperty::EType>(type));
}

} // namespace

TEST(TypeNames, AreTheTextsOfTheStringTable)
{
    const wchar_t* const names[] = {L"Null",
                                    L"String",
                                    L"Signed Integer",
                                    L"Unsigned Integer",
                                    L"Signed Long Integer",
                                    L"Unsigned Long Integer",
                                    L"Double",
                                    L"Date",
                                    L"Time",
                                    L"Boolean",
                                    L"Currency",
                                    L"Hyperlink",
                                    L"Reference",
                                    L"Binary Object"};
    for (int type = 0; type < 14; ++type)
        EXPECT_EQ(NameOf(type), names[type]);
}

TEST(TypeNames, DateTimeHasNone)
{
    EXPECT_EQ(CQelProperty::GetTypeName(CQelProperty::eDateTime), L"");
}

TEST(TypeNames, UnknownTypesHaveNone)
{
    for (const int type : {15, 99, -1, -200, INT_MAX, INT_MIN})
        EXPECT_EQ(NameOf(type), L"");
}
