#include "resolver/ComparisonRows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::Value;

TEST(ComparisonRows, haveAFactItsAgreementAndBothValuesAndMarkWhatDiffers) {
    const resolver::ComparisonRows rows({
        {"name", Value("a"), Value("b"), true},
        {"volumeName", Value("v"), Value("v"), false},
        {"mountPoint", std::nullopt, Value("/m")},
    });
    const std::vector<std::vector<std::string>> expected{
        {"Name", "differs", "a", "b"},
        {"Volume", "same", "v", "v"},
        {"Mount point", "not compared", "", "/m"}};
    ASSERT_EQ(rows.rowCount(), expected.size());
    ASSERT_EQ(rows.columns().size(), 4U);
    for (std::size_t row = 0; row < expected.size(); ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_EQ(rows.text(row, column), expected[row][column]);
            EXPECT_EQ(rows.isMarked(row, column), row == 0 && column > 0) << row << ", " << column;
        }
    }
}

} // namespace
} // namespace tolvane::tests
