// resultcodes_test.cpp: the texts behind the result codes.
#include "../support/result_matchers.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(ResultText, EveryCodeHasOneOfItsOwn)
{
    std::set<std::wstring> texts;
    const unsigned int codes[] = {10001, 10002, 10003, 10007, 10011, 10012, 10013, 10014,
                                  10015, 10016, 10020, 10210, 17201, 17500, 17501, 17502,
                                  17503, 17504, 17505, 17506, 17507, 17508, 17509};
    for (const unsigned int code : codes) {
        EXPECT_EQ(qel::ResultText(code).find(std::to_wstring(code)), std::wstring::npos) << code;
        EXPECT_TRUE(texts.insert(qel::ResultText(code)).second) << code;
    }
}

TEST(ResultText, OfTheEngineNamesItsCode)
{
    EXPECT_EQ(qel::ResultText(17301), L"SQL engine error 1");
    EXPECT_EQ(qel::ResultText(17555), L"SQL engine error 255");
}

TEST(ResultText, OfAnUnknownCodeIsItsNumber)
{
    EXPECT_EQ(qel::ResultText(0), L"Result 0");
    EXPECT_EQ(qel::ResultText(4294967295u), L"Result 4294967295");
    EXPECT_EQ(qel::ResultText(17300), L"Result 17300");
}

TEST(ResultMatchers, TellCodesApart)
{
    EXPECT_THAT(10001u, qeltest::Succeeds());
    EXPECT_THAT(17500u, testing::Not(qeltest::Succeeds()));
    EXPECT_THAT(17500u, qeltest::Gives(17500));
    EXPECT_THAT(17501u, testing::Not(qeltest::Gives(17500)));
}

} // namespace
