#include "resolver/ComparisonRows.h"

#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::Value;

const resolver::ComparisonRows& comparisonRows() {
    static const resolver::ComparisonRows rows({
        {"name", Value("a"), Value("b"), true},
        {"volumeName", Value("v"), Value("v"), false},
        {"mountPoint", std::nullopt, Value("/m")},
    });
    return rows;
}

TEST(ComparisonRows, haveAFactItsAgreementAndBothValues) {
    const auto& rows = comparisonRows();
    EXPECT_EQ(rows.rowCount(), 3U);
    EXPECT_EQ(rows.columns().size(), 4U);
    EXPECT_EQ(rows.text(0, 0), "Name");
    EXPECT_EQ(rows.text(0, 1), "differs");
    EXPECT_EQ(rows.text(0, 2), "a");
    EXPECT_EQ(rows.text(0, 3), "b");
    EXPECT_EQ(rows.text(1, 1), "same");
    EXPECT_EQ(rows.text(2, 1), "not compared");
    EXPECT_EQ(rows.text(2, 2), "");
    EXPECT_EQ(rows.text(2, 3), "/m");
}

TEST(ComparisonRows, markWhatDiffersAndNothingElse) {
    const auto& rows = comparisonRows();
    for (std::size_t column = 0; column < 4; ++column) {
        EXPECT_EQ(rows.isMarked(0, column), column > 0);
        EXPECT_FALSE(rows.isMarked(1, column));
        EXPECT_FALSE(rows.isMarked(2, column));
    }
}

} // namespace
} // namespace tolvane::tests
