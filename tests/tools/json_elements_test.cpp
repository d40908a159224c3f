// json_elements_test.cpp: the elements of a JSON array, and where they stand.
#include "exchange/json_elements.h"

#include "adaptor/failure.h"
#include "support/row_name.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace qeltest;

namespace {

/// "1<{...}> 2<{...}>": line and text of every element; "3: message" where reading fails.
std::string ElementsOf(const std::string& json)
{
    std::istringstream in(json);
    tool::CJsonElements elements(in);
    std::string shown;
    std::string text;
    unsigned long long line = 0;
    try {
        while (elements.Next(text, line))
            shown += (shown.empty() ? "" : " ") + std::to_string(line) + '<' + text + '>';
    } catch (const tool::SFailure& failure) {
        shown += (shown.empty() ? "" : " ") + std::to_string(failure.line) + ": " + failure.message;
    }
    return shown;
}

struct SJson
{
    const char* name;
    const char* json;
    const char* elements;
};

class JsonElements : public testing::TestWithParam<SJson>
{};

TEST_P(JsonElements, AreCutOutOfTheFile)
{
    EXPECT_EQ(ElementsOf(GetParam().json), GetParam().elements);
}

INSTANTIATE_TEST_SUITE_P(
    Of, JsonElements,
    testing::Values(SJson{"empty_array", "[]", ""}, SJson{"empty_array_with_blanks", " [ \n ] \n", ""},
                    SJson{"one", "[{\"a\":1}]", "1<{\"a\":1}>"},
                    SJson{"lines", "[{\"a\":1},\n {\"a\":2}\n]\n", "1<{\"a\":1}> 2<{\"a\":2}>"},
                    SJson{"single_object", "{\"a\":1}\n", "1<{\"a\":1}>"},
                    SJson{"over_many_lines", "[\n{\n\"a\":\n1},\n{}]", "2<{\n\"a\":\n1}> 5<{}>"},
                    SJson{"mark", "\xef\xbb\xbf[{}]", "1<{}>"},
                    SJson{"nested", "[{\"a\":{\"b\":[{}]}},{}]", "1<{\"a\":{\"b\":[{}]}}> 1<{}>"},
                    SJson{"brackets_in_texts", "[{\"a\":\"}]{[\"},{}]", "1<{\"a\":\"}]{[\"}> 1<{}>"},
                    SJson{"quotes_in_texts", "[{\"a\":\"x\\\"}]\"}]", "1<{\"a\":\"x\\\"}]\"}>"},
                    SJson{"backslash_at_the_end", "[{\"a\":\"x\\\\\"},{}]", "1<{\"a\":\"x\\\\\"}> 1<{}>"},
                    SJson{"no_objects", "[1, \"a,b\", null]", "1<1> 1<\"a,b\"> 1<null>"},
                    SJson{"nothing", "", "1: no array of JSON objects begins here"},
                    SJson{"no_array", "12", "1: no array of JSON objects begins here"},
                    SJson{"no_comma", "[{}\n{}]", "1<{}> 2: a comma or a closing bracket is missing here"},
                    SJson{"no_end", "[{},\n", "1<{}> 2: the file ends inside an object"},
                    SJson{"cut_in_an_object", "[{\"a\":1", "1: the file ends inside an object"},
                    SJson{"cut_in_a_text", "[{\"a\":\"x", "1: the file ends inside a text"},
                    SJson{"text_behind_the_end", "[{}]\n{}",
                          "1<{}> 2: something follows the end of the JSON text"},
                    SJson{"two_objects", "{}\n{}", "1<{}> 2: something follows the end of the JSON text"}),
    SRowName());

TEST(JsonElementsOf, AStreamCountBytes)
{
    std::istringstream in("[{}, {}]\n");
    tool::CJsonElements elements(in);
    std::string text;
    unsigned long long line = 0;
    while (elements.Next(text, line)) {
    }
    EXPECT_EQ(elements.BytesRead(), 9U);
}

} // namespace
