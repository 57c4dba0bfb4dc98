#include "platform/values/Pieces.h"

#include <gtest/gtest.h>

#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

TEST(Pieces, leavesOutEmptyOnesWhereverTheyAre) {
    using Pieces = std::vector<std::string_view>;
    const std::vector<std::pair<std::string_view, Pieces>> texts{
        {""sv, {}},
        {"\0"sv, {}},
        {"\0\0\0"sv, {}},
        {"a"sv, {"a"}},
        {"a\0"sv, {"a"}},
        {"a\0b"sv, {"a", "b"}},
        {"\0\0a\0\0\0b/\0\0"sv, {"a", "b/"}}};
    for (const auto& [text, pieces] : texts) {
        EXPECT_EQ(nonEmptyPieces(text, '\0'), pieces) << text;
    }
}

} // namespace
} // namespace tolvane::platform
