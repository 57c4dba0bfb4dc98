#include "containers/Neighbour.h"

#include <gtest/gtest.h>

namespace tolvane::containers {
namespace {

TEST(Neighbour, namesTheSameItemHoweverItIsWritten) {
    for (const auto* const neighbour :
         {"/Applications/A B.app", "/Applications/A B.app/", "file:///Applications/A%20B.app/",
          "file://localhost/Applications/A%20B.app", "/System/Volumes/Data/Applications/A B.app"}) {
        EXPECT_EQ(namesAnotherItem("/Applications/A B.app", neighbour), false) << neighbour;
    }
    EXPECT_EQ(namesAnotherItem("/private/tmp/a", "/tmp/a"), false);
    EXPECT_EQ(namesAnotherItem("/", "file:///"), false);
}

TEST(Neighbour, namesAnotherItem) {
    EXPECT_EQ(namesAnotherItem("/Applications/A.app", "file:///Applications/B.app/"), true);
    EXPECT_EQ(namesAnotherItem("/Applications/A.app", "/Applications/A.app/Contents"), true);
    EXPECT_EQ(namesAnotherItem("/private/home/a", "/home/a"), true);
    EXPECT_EQ(namesAnotherItem("/a", "/A"), true);
}

TEST(Neighbour, isNotComparedWhereItNamesNoPath) {
    for (const auto* const neighbour :
         {"", "https://example.org/a", "a", "~/a", "file:///.file/id=6571367.2", "file://server/a"}) {
        EXPECT_EQ(namesAnotherItem("/a", neighbour), std::nullopt) << neighbour;
    }
}

TEST(Neighbour, isComparedPastAsciiInItsComposedForm) {
    const ComposedText composed = [](std::string_view text) -> std::optional<std::string> {
        if (text.contains('\xFF')) {
            return std::nullopt;
        }
        return text == "/cafe\u0301" ? "/caf\u00E9" : std::string(text);
    };
    EXPECT_EQ(namesAnotherItem("/caf\u00E9", "/cafe\u0301", composed), false);
    EXPECT_EQ(namesAnotherItem("/caf\u00E9", "/caf\u00E8", composed), true);
    EXPECT_EQ(namesAnotherItem("/caf\u00E9", "/cafe", composed), true);
    EXPECT_EQ(namesAnotherItem("/a\xFF", "/b", composed), std::nullopt);
}

TEST(Neighbour, isNotComparedPastAsciiWithoutOne) {
    EXPECT_EQ(namesAnotherItem("/caf\u00E9", "/cafe\u0301"), std::nullopt) << "two forms of one name";
    EXPECT_EQ(namesAnotherItem("/caf\u00E9", "/caf\u00E9/"), false);
}

} // namespace
} // namespace tolvane::containers
