#include "platform/model/AttributedString.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvane::platform {
namespace {

using Runs = std::vector<AttributedString::Run>;

const TextAttributes plain;
const TextAttributes colored{Color::textColor, {}};
const TextAttributes large{{}, Font::systemFontOfSize(20)};

AttributedString joined(const std::vector<AttributedString>& parts) {
    AttributedString text;
    for (const AttributedString& part : parts) {
        text.append(part);
    }
    return text;
}

TEST(AttributedString, hasOneRunOfBytesWhenMadeFromTextAndNoneWhenEmpty) {
    const AttributedString text("\u00E9x", colored);
    EXPECT_EQ(text.string(), "\u00E9x");
    EXPECT_EQ(text.runs(), (Runs{{3, colored}}));
    EXPECT_EQ(AttributedString().runs(), Runs{});
    EXPECT_EQ(AttributedString("", colored).runs(), Runs{});
    EXPECT_EQ(AttributedString("", colored), AttributedString());
}

TEST(AttributedString, joinsNeighboursThatAreAlike) {
    const AttributedString text =
        joined({{"ab", plain}, {"c", plain}, {"d", colored}, {"e", colored}, {"f", plain}});
    EXPECT_EQ(text.string(), "abcdef");
    EXPECT_EQ(text.runs(), (Runs{{3, plain}, {2, colored}, {1, plain}}));
}

TEST(AttributedString, keepsNeighboursApartThatDifferInAnything) {
    const TextAttributes larger{{}, Font::systemFontOfSize(21)};
    const AttributedString text =
        joined({{"a", large}, {"b", larger}, {"c", {Color::textColor, larger.font}}});
    EXPECT_EQ(text.runs().size(), 3U);
}

TEST(AttributedString, appendsEveryRunAndDoesNotChangeByNothing) {
    AttributedString text = joined({{"a", plain}, {"b", colored}});
    text.append(joined({{"cd", colored}, {"e", large}}));
    EXPECT_EQ(text.string(), "abcde");
    EXPECT_EQ(text.runs(), (Runs{{1, plain}, {3, colored}, {1, large}}));
    const AttributedString before = text;
    text.append(AttributedString());
    text.append(AttributedString("", plain));
    EXPECT_EQ(text, before);
}

TEST(AttributedString, canBeAppendedToItself) {
    AttributedString one("ab", colored);
    one.append(one);
    EXPECT_EQ(one, AttributedString("abab", colored));

    AttributedString empty;
    empty.append(empty);
    EXPECT_EQ(empty, AttributedString());

    AttributedString alikeAtBothEnds = joined({{"a", plain}, {"b", colored}, {"c", plain}});
    alikeAtBothEnds.append(alikeAtBothEnds);
    EXPECT_EQ(alikeAtBothEnds.string(), "abcabc");
    EXPECT_EQ(alikeAtBothEnds.runs(), (Runs{{1, plain}, {1, colored}, {2, plain}, {1, colored}, {1, plain}}));
}

} // namespace
} // namespace tolvane::platform
