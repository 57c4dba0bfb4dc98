#include "tests/support/ResolverWindow.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using platform::Value;

constexpr const char* compareAction = "compareButton:";

class CompareButtonTest : public testing::Test {
protected:
    CompareButtonTest() {
        resolver.bookmarks.made = bytesOf("made");
        resolver.comparedFacts = {{"name", Value("a"), Value("b"), true}};
        resolver.open();
    }

    bool isOffered() const { return resolver.controller().isActionEnabled(compareAction); }
    void press() const { resolver.controller().actionForSelector(compareAction)(nullptr); }
    const platform::TableRows* rows() const { return resolver.controller().comparisonTable->rows(); }
    const std::string& note() const { return resolver.controller().filePathTextbox->note(); }

    ResolverWindow resolver;
};

TEST_F(CompareButtonTest, isOfferedWhileThePathFieldShowsAnItem) {
    EXPECT_FALSE(isOffered());
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_TRUE(isOffered());
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_TRUE(isOffered()) << "the path field stays";
    resolver.analyse(ResolverWindow::garbage);
    EXPECT_FALSE(isOffered());
}

TEST_F(CompareButtonTest, doesNothingWithoutAnItem) {
    press();
    EXPECT_EQ(rows(), nullptr);
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(rows(), nullptr) << "nothing was asked for";
}

TEST_F(CompareButtonTest, showsAndHidesWhatIsStoredAndFound) {
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_TRUE(resolver.comparedWith.empty()) << "nothing is compared before it is asked for";
    const std::string path = resolver.pathText();
    press();
    ASSERT_NE(rows(), nullptr);
    EXPECT_EQ(rows()->text(0, 3), "b");
    EXPECT_EQ(resolver.comparedWith.back(), std::pair(bytesOf("bookmark"), bytesOf("made")));
    EXPECT_TRUE(note().starts_with("The item is at the stored path.")) << note();
    EXPECT_EQ(resolver.pathText(), path);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    press();
    EXPECT_EQ(rows(), nullptr);
    EXPECT_EQ(note(), "");
}

TEST_F(CompareButtonTest, followsThePathField) {
    resolver.resolve(ResolverWindow::bookmarkText);
    press();
    resolver.bookmarks.resolved->match.item = platform::ItemMatch::search;
    resolver.comparedFacts.front().found = Value("c");
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(rows()->text(0, 3), "c");
    EXPECT_TRUE(note().contains("moved"));

    resolver.bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_EQ(rows(), nullptr);
    EXPECT_EQ(note(), "");
    resolver.bookmarks.resolved = platform::ResolvedBookmark{resolver.url, false};
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_NE(rows(), nullptr) << "it was not hidden by the user";
}

TEST_F(CompareButtonTest, isNotOfferedForAnItemWhoseAttributesAreNotRead) {
    resolver.fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_FALSE(isOffered());
}

TEST_F(CompareButtonTest, saysWhyTheItemIsNotCompared) {
    resolver.bookmarks.made = std::unexpected(platform::posixError(EACCES));
    resolver.resolve(ResolverWindow::bookmarkText);
    press();
    EXPECT_NE(rows(), nullptr) << "what is stored is known";
    EXPECT_EQ(resolver.window().status(), "The facts of the item cannot be read: Permission denied.");
}

} // namespace
} // namespace tolvane::tests
