#include "resolver/FindingsWork.h"

#include "tests/support/MemoryFileContents.h"
#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
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
    bookmarks.resolved = platform::ResolvedBookmark{platform::URL::fileURLWithPath("/a"), true};
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

TEST_F(FindingsWork, saysWhyAFileHasNoFindings) {
    CallLog attributeLog;
    const ScriptedExtendedAttributes attributes{attributeLog};
    const std::map<std::string, std::string> files{
        {"/folder/file", ""}, {"/picture", "\x89PNG\r\n\x1A\n" + std::string(3, '\0')}};
    const MemoryFileContents contents(files);
    const auto reason = [&](const std::string& path) {
        return resolver::findingsIn(path, {contents, attributes, containers::ComposedText()}).error();
    };
    EXPECT_EQ(reason("/folder"), "This is a folder. Bookmarks are found in one file at a time.");
    EXPECT_EQ(reason("/picture"), "This file is of no kind that contains bookmarks.");
    EXPECT_EQ(reason("/missing"), "The file cannot be searched: No such file or directory.");
}

} // namespace
} // namespace tolvane::tests
