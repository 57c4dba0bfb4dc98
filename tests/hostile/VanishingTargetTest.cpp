// A bookmark's target that vanishes between any two calls of the resolver window, from the analysis to the
// preview.
#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* found = "/data/notes.txt\nvolfs path : /.vol/5/123";
constexpr const char* notResolved = "Couldn't resolve Bookmark.";

/// What the user sees of one run through Resolve, Reveal and Preview.
struct Seen {
    std::string output;
    std::string path;
    bool isRevealed = false;
    bool isPreviewed = false;
    /// Whether Reveal and Preview have an item to work on.
    bool hasItem = false;

    friend bool operator==(const Seen&, const Seen&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Seen& seen) {
        return stream << seen.output << "\n"
                      << seen.path << "\nrevealed " << seen.isRevealed << ", previewed " << seen.isPreviewed
                      << ", has item " << seen.hasItem;
    }
};

/// Presses Resolve, Reveal and Preview.
Seen runThrough(ResolverWindow& window) {
    window.log.clear();
    window.previewPanels.panel() = {};
    window.resolve(ResolverWindow::bookmarkText);
    window.controller().revealButton(nullptr);
    window.controller().previewButton(nullptr);
    return {
        window.outputText(), window.pathText(),
        !window.appleScripts.failure && std::ranges::find(window.log, "execute") != window.log.end(),
        window.previewPanels.panel().isVisible(), window.controller().bmURL().has_value()};
}

const std::string analysis = ResolverWindow::analysis;
const std::string gap = "\n\n\n";
const std::string allProperties = analysis.substr(0, analysis.find(gap));
const std::string description = analysis.substr(analysis.find(gap) + gap.size());

struct Row {
    const char* call;
    void (*fail)(ResolverWindow& window);
    /// What is seen when this call fails and all others succeed.
    Seen once;
    /// What is seen when this call and all after it fail.
    Seen fromHereOn;

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) { return stream << row.call; }
};

/// In the order of the calls.
const std::array<Row, 7> rows{{
    {"bookmarkProperties NSURLBookmarkAllPropertiesKey",
     [](ResolverWindow& window) { window.properties.failingKeys.insert("NSURLBookmarkAllPropertiesKey"); },
     {"nil" + gap + description, found, true, true, true},
     {"nil" + gap + "nil", notResolved, false, false, false}},
    {"bookmarkProperties NSURLBookmarkDetailedDescription",
     [](ResolverWindow& window) { window.properties.failingKeys.insert("NSURLBookmarkDetailedDescription"); },
     {allProperties + gap + "nil", found, true, true, true},
     {allProperties + gap + "nil", notResolved, false, false, false}},
    {"resolve",
     [](ResolverWindow& window) {
         window.bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
     },
     {analysis, notResolved, false, false, false},
     {analysis, notResolved, false, false, false}},
    {"attributesOfItemAtPath",
     [](ResolverWindow& window) {
         window.fileManager.answer = std::unexpected(platform::posixError(ENOENT));
     },
     {analysis, notResolved, true, true, true},
     {analysis, notResolved, false, false, true}},
    {"initWithSource",
     [](ResolverWindow& window) { window.appleScripts.givesScripts = false; },
     {analysis, found, false, true, true},
     {analysis, found, false, false, true}},
    {"execute",
     [](ResolverWindow& window) { window.appleScripts.failure = platform::posixError(ENOENT); },
     {analysis, found, false, true, true},
     {analysis, found, false, false, true}},
    {"sharedPreviewPanel",
     [](ResolverWindow& window) { window.previewPanels.available = false; },
     {analysis, found, true, false, true},
     {analysis, found, true, false, true}},
}};

class VanishingTarget : public testing::TestWithParam<std::size_t> {
protected:
    VanishingTarget() { window.open(); }

    static const Row& row() { return rows.at(GetParam()); }

    ResolverWindow window;
};

TEST_P(VanishingTarget, isMissedByTheOneCallThatFails) {
    row().fail(window);
    EXPECT_EQ(runThrough(window), row().once) << row();
}

TEST_P(VanishingTarget, isMissedFromACallOn) {
    for (const Row& later : std::span(rows).subspan(GetParam())) {
        later.fail(window);
    }
    EXPECT_EQ(runThrough(window), row().fromHereOn) << row();
}

// The item found before stays the one that is revealed and previewed, whatever is not found now.
TEST_P(VanishingTarget, leavesTheItemFoundBefore) {
    window.bookmarks.resolved =
        platform::ResolvedBookmark{platform::URL::fileURLWithPath("/data/before"), false};
    window.resolve(ResolverWindow::bookmarkText);
    window.bookmarks.resolved = platform::ResolvedBookmark{window.url, false};
    row().fail(window);
    const Seen seen = runThrough(window);
    EXPECT_EQ(seen.output, row().once.output) << row();
    EXPECT_EQ(seen.path, row().once.path) << row();
    EXPECT_EQ(window.controller().bmURL()->path(), row().once.hasItem ? window.url.path() : "/data/before")
        << row();
}

INSTANTIATE_TEST_SUITE_P(AtCall, VanishingTarget, testing::Range<std::size_t>(0, rows.size()));

TEST(VanishingTarget, isLookedForByTheCallsOfTheTable) {
    ResolverWindow window;
    window.open();
    EXPECT_EQ(runThrough(window), (Seen{analysis, found, true, true, true}));
    std::vector<testing::Matcher<std::string>> calls;
    for (const Row& row : rows) {
        calls.push_back(StartsWith(row.call));
    }
    // What the panel is told then cannot fail.
    calls.insert(calls.end(), {"setDelegate", "setDataSource", "makeKeyAndOrderFront"});
    EXPECT_THAT(window.log, testing::ElementsAreArray(calls));
}

// The panel asks for its item whenever it likes, and shows itself whether the item still exists.
TEST(VanishingTarget, isPassedToThePanelWithoutAnotherCall) {
    ResolverWindow window;
    window.open();
    EXPECT_TRUE(runThrough(window).isPreviewed);
    window.log.clear();
    window.previewPanels.panel().askDataSource();
    EXPECT_EQ(window.previewPanels.panel().items(), std::vector{window.url});
    EXPECT_THAT(window.log, IsEmpty());
}

} // namespace
} // namespace tolvane::tests
