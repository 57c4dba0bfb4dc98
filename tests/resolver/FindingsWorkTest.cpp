#include "resolver/FindingsWork.h"

#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace tolvane::tests {
namespace {

class FindingsWork : public testing::Test {
protected:
    static containers::Finding readable() {
        containers::Finding finding;
        finding.bytes = bytesOf("bookmark");
        return finding;
    }

    resolver::Outcomes resolve(const std::vector<containers::Finding>& findings, int most = 100) {
        resolver::Outcomes outcomes;
        resolver::resolveFindings(
            findings, bookmarks, [&most] { return most-- == 0; },
            [&](resolver::Outcomes some) { std::ranges::move(some, std::back_inserter(outcomes)); });
        return outcomes;
    }

    CallLog log;
    ScriptedBookmarks bookmarks{log};
};

TEST_F(FindingsWork, resolvesWhatCanBeReadInItsOrder) {
    bookmarks.resolveTo("/a", true);
    containers::Finding broken = readable();
    broken.isReadable = false;
    const auto outcomes = resolve({readable(), broken, containers::Finding(), readable()});
    ASSERT_EQ(outcomes.size(), 2U);
    EXPECT_EQ(outcomes[0].first, 0U);
    EXPECT_EQ(outcomes[1].first, 3U);
    EXPECT_TRUE(outcomes[0].second.isFound);
    EXPECT_TRUE(outcomes[0].second.isStale);
    EXPECT_EQ(outcomes[0].second.text, "/a");
}

TEST_F(FindingsWork, deliversWhatWasResolvedBeforeItWasCancelled) {
    EXPECT_EQ(resolve({readable(), readable(), readable()}, 1).size(), 1U);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_TRUE(resolve({}).empty());
}

TEST_F(FindingsWork, saysWhyAnItemIsNotFound) {
    EXPECT_EQ(resolve({readable()})[0].second.text, "Input/output error");
    bookmarks.resolved = platform::ResolvedBookmark{};
    EXPECT_EQ(resolve({readable()})[0].second.text, "The bookmark names no item.");
}

} // namespace
} // namespace tolvane::tests
