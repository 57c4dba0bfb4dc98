#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::HasSubstr;

class ReasonsTest : public testing::Test {
protected:
    ReasonsTest() { resolver.open(); }

    const std::string& status() const { return resolver.window().status(); }

    void drop(const std::vector<URL>& files) const {
        EXPECT_TRUE(resolver.controller().inputTextbox->performDragOperation(files));
    }

    ResolverWindow resolver;
};

TEST_F(ReasonsTest, areEmptyAtFirst) {
    EXPECT_EQ(status(), "");
}

TEST_F(ReasonsTest, tellWhereATextIsNotBase64) {
    resolver.analyse("Ym9v 'a");
    EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.");
    EXPECT_EQ(status(), "Expected at character 5: a letter, a digit, '+', '/' or the padding '='.");
    resolver.resolve("Ym9v 'a");
    EXPECT_EQ(resolver.pathText(), "Couldn't resolve Bookmark.");
    EXPECT_EQ(status(), "Expected at character 5: a letter, a digit, '+', '/' or the padding '='.");
}

TEST_F(ReasonsTest, tellWhyDataIsNoBookmark) {
    resolver.properties.failure = platform::cocoaError(259, "Expected at byte 0: a bookmark.");
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.pathText(), "") << "what was there stays";
    EXPECT_EQ(status(), "Expected at byte 0: a bookmark.");
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(status(), "Expected at byte 0: a bookmark.") << "even if it was resolved";
    resolver.properties.failure.reset();
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(status(), "");
}

TEST_F(ReasonsTest, tellWhyABookmarkIsNotResolved) {
    resolver.bookmarks.resolved = std::unexpected(platform::cocoaError(4, "The item was not found."));
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(status(), "The item was not found.");
}

TEST_F(ReasonsTest, tellWhyAttributesAreNotRead) {
    resolver.fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.pathText(), "Couldn't resolve Bookmark.");
    EXPECT_EQ(status(), "Permission denied");
}

TEST_F(ReasonsTest, goWithTheNextSuccess) {
    resolver.analyse(ResolverWindow::garbage);
    EXPECT_NE(status(), "");
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(status(), "");
    resolver.analyse(ResolverWindow::garbage);
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(status(), "");
}

TEST_F(ReasonsTest, tellWhyAChosenFileHoldsNoBookmark) {
    resolver.bookmarks.stored = std::unexpected(platform::cocoaError(259, "Expected at byte 4: more."));
    resolver.controller().openFileButton(nullptr);
    resolver.openPanels.newest()->inner.answer(platform::modalResponseOK, URL::fileURLWithPath("/data/a"));
    EXPECT_EQ(resolver.inputText(), "Couldn't get Alias.");
    EXPECT_EQ(resolver.pathText(), "");
    EXPECT_EQ(status(), "Expected at byte 4: more.");
}

TEST_F(ReasonsTest, ofADroppedFileAreThoseOfAChosenOne) {
    resolver.bookmarks.stored = std::unexpected(platform::cocoaError(259, "Expected at byte 4: more."));
    drop({URL::fileURLWithPath("/data/a")});
    EXPECT_EQ(resolver.inputText(), "Couldn't get Alias.");
    EXPECT_EQ(status(), "Expected at byte 4: more.");
}

TEST_F(ReasonsTest, areNoneForADroppedFileThatHoldsABookmark) {
    resolver.log.clear();
    drop({URL::fileURLWithPath("/data/\xFF")});
    EXPECT_EQ(resolver.inputText(), "c3RvcmVkIGJvb2ttYXJr");
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.pathText(), "");
    EXPECT_EQ(status(), "");
}

TEST_F(ReasonsTest, tellThatOneFileIsReadAtATime) {
    resolver.paste("kept");
    drop({URL::fileURLWithPath("/data/a"), URL::fileURLWithPath("/data/b")});
    EXPECT_EQ(resolver.inputText(), "kept");
    EXPECT_THAT(status(), HasSubstr("one file"));
}

} // namespace
} // namespace tolvane::tests
