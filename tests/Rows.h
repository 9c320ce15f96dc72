#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <string>

/// The fixture of tests that run once for every row of a table.
template<class Fixture, class Row>
class WithRows : public Fixture, public testing::WithParamInterface<Row>
{
};

/// Names the tests of a table by a text member of its rows, behind their numbers: rowNames(&Row::file).
template<class Row, class Text>
auto rowNames(Text Row::*member)
{
    return [member](const testing::TestParamInfo<Row> &row) {
        std::string name = std::to_string(row.index) + '_' + row.param.*member;
        for (char &letter : name)
            letter = std::isalnum(static_cast<unsigned char>(letter)) ? letter : '_';
        return name;
    };
}
