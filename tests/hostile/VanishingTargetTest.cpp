// A bookmark's target that vanishes between any two questions of the resolver window, from the analysis to
// the preview.
#include "tests/hostile/FailingSources.h"
#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::IsEmpty;

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

class FailingResolver {
public:
    FailingResolver() {
        bundle_.storyboard("Main").addWindowScene(
            "Bookmark Resolver Window", [this](const platform::Coder& coder) {
                return resolver::TRViewController::initWithCoder(
                    coder, {bookmarks_, failingStoredProperties(scripted.properties.reader(), calls),
                            fileManager_, scripted.openPanels, scripts_, panels_, scripted.defaults});
            });
        window_ = std::dynamic_pointer_cast<platform::WindowController>(
            bundle_.storyboardWithName("Main")->instantiateControllerWithIdentifier(
                "Bookmark Resolver Window"));
        window_->showWindow();
    }

    resolver::TRViewController& controller() const {
        return dynamic_cast<resolver::TRViewController&>(*window_->contentViewController());
    }

    void resolve() const {
        controller().inputTextbox->setString(ResolverWindow::bookmarkText);
        controller().resolveButton(nullptr);
    }

    /// Presses Resolve, Reveal and Preview.
    Seen run() {
        scripted.log.clear();
        scripted.previewPanels.panel() = {};
        resolve();
        controller().revealButton(nullptr);
        controller().previewButton(nullptr);
        return {
            controller().outputTextbox->string(), controller().filePathTextbox->stringValue(),
            std::ranges::find(scripted.log, "execute") != scripted.log.end(),
            scripted.previewPanels.panel().isVisible(), controller().bmURL().has_value()};
    }

    ResolverWindow scripted;
    CallCounter calls;

private:
    FailingBookmarks bookmarks_{scripted.bookmarks, calls};
    FailingFileManager fileManager_{scripted.fileManager, calls};
    FailingAppleScripts scripts_{scripted.appleScripts, calls};
    FailingPreviewPanels panels_{scripted.previewPanels, calls};
    platform::MemoryBundle bundle_;
    std::shared_ptr<platform::WindowController> window_;
};

const std::string allProperties =
    "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
    "    NSURLNameKey = \"notes.txt\";\n"
    "}])";
const std::string description =
    "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkDetailedDescription): first line\nsecond line])";
const std::string gap = "\n\n\n";
const std::string analysis = allProperties + gap + description;

struct Row {
    const char* call;
    /// What is seen when this call fails and all others answer.
    Seen once;
    /// What is seen when this call and all after it fail.
    Seen fromHereOn;
};

const std::array<Row, 7>& rows() {
    static const std::array<Row, 7> table{{
        {"bookmarkProperties NSURLBookmarkAllPropertiesKey",
         {"nil" + gap + description, found, true, true, true},
         {"nil" + gap + "nil", notResolved, false, false, false}},
        {"bookmarkProperties NSURLBookmarkDetailedDescription",
         {allProperties + gap + "nil", found, true, true, true},
         {allProperties + gap + "nil", notResolved, false, false, false}},
        {"URLByResolvingBookmarkData",
         {analysis, notResolved, false, false, false},
         {analysis, notResolved, false, false, false}},
        {"attributesOfItemAtPath",
         {analysis, notResolved, true, true, true},
         {analysis, notResolved, false, false, true}},
        {"initWithSource", {analysis, found, false, true, true}, {analysis, found, false, false, true}},
        {"execute", {analysis, found, false, true, true}, {analysis, found, false, false, true}},
        {"sharedPreviewPanel", {analysis, found, true, false, true}, {analysis, found, true, false, true}},
    }};
    return table;
}

class VanishingTarget : public testing::TestWithParam<std::size_t> {
protected:
    static std::size_t number() { return GetParam(); }
    static const Row& row() { return rows().at(number() - 1); }

    FailingResolver window;
};

TEST_P(VanishingTarget, isMissedByTheOneCallThatFails) {
    window.calls.fails = [](std::size_t call) { return call == number(); };
    EXPECT_EQ(window.run(), row().once);
}

TEST_P(VanishingTarget, isMissedFromACallOn) {
    window.calls.fails = [](std::size_t call) { return call >= number(); };
    EXPECT_EQ(window.run(), row().fromHereOn);
}

// The item found before stays the one that is revealed and previewed, whatever is not found now.
TEST_P(VanishingTarget, leavesTheItemFoundBefore) {
    window.scripted.bookmarks.resolved =
        platform::ResolvedBookmark{platform::URL::fileURLWithPath("/data/before"), false};
    window.resolve();
    window.scripted.bookmarks.resolved = platform::ResolvedBookmark{window.scripted.url, false};
    window.calls.restart();
    window.calls.fails = [](std::size_t call) { return call == number(); };
    const bool isFound = row().once.hasItem;
    const Seen seen = window.run();
    EXPECT_EQ(seen.output, row().once.output);
    EXPECT_EQ(seen.path, row().once.path);
    EXPECT_EQ(window.controller().bmURL()->path(), isFound ? window.scripted.url.path() : "/data/before");
}

INSTANTIATE_TEST_SUITE_P(AtCall, VanishingTarget, testing::Range<std::size_t>(1, 8));

TEST(VanishingTarget, isAskedAboutByTheCallsOfTheTable) {
    FailingResolver window;
    EXPECT_EQ(window.run(), (Seen{analysis, found, true, true, true}));
    std::vector<std::string> calls;
    for (const Row& row : rows()) {
        calls.emplace_back(row.call);
    }
    EXPECT_EQ(window.calls.names(), calls);
}

TEST(VanishingTarget, isNeverAskedAboutByTheAnalysis) {
    FailingResolver window;
    window.controller().inputTextbox->setString(ResolverWindow::bookmarkText);
    window.controller().analyseButton(nullptr);
    EXPECT_THAT(window.calls.names(), testing::ElementsAre(rows().at(0).call, rows().at(1).call));
}

// An alias file that vanishes after it was chosen.
TEST(VanishingAliasFile, isToldInTheInputBoxAlone) {
    FailingResolver window;
    const Seen before = window.run();
    window.calls.restart();
    window.calls.fails = [](std::size_t) { return true; };
    window.controller().openFileButton(nullptr);
    window.scripted.openPanels.newest()->inner.answer(platform::modalResponseOK, window.scripted.url);
    EXPECT_THAT(window.calls.names(), testing::ElementsAre("bookmarkDataWithContentsOfURL"));
    EXPECT_EQ(window.controller().inputTextbox->string(), "Couldn't get Alias.");
    EXPECT_EQ(window.controller().outputTextbox->string(), before.output);
    EXPECT_EQ(window.controller().filePathTextbox->stringValue(), before.path);
    window.controller().analyseButton(nullptr);
    EXPECT_EQ(window.controller().filePathTextbox->stringValue(), "Couldn't analyse Bookmark.");
}

// The panel asks for its item when it likes; the item being gone by then is the panel's to show.
TEST(VanishingTarget, isHandedToThePanelAllTheSame) {
    FailingResolver window;
    EXPECT_TRUE(window.run().isPreviewed);
    window.calls.restart();
    window.calls.fails = [](std::size_t) { return true; };
    auto& panel = window.scripted.previewPanels.panel();
    panel.askDataSource();
    EXPECT_EQ(panel.items(), std::vector{window.scripted.url});
    EXPECT_THAT(window.calls.names(), IsEmpty());
}

} // namespace
} // namespace tolvane::tests
