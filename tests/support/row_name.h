// row_name.h: names the rows of a table of cases.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace qeltest {

/// Last argument of INSTANTIATE_TEST_SUITE_P for rows that have a member `name` of letters and digits.
struct SRowName
{
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row>& row) const
    {
        return std::string(row.param.name);
    }
};

} // namespace qeltest
