#include "tests/support/ResolverWindow.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

constexpr const char* salvageAction = "salvageButton:";

class SalvageButtonTest : public testing::Test {
protected:
    SalvageButtonTest() { resolver.open(); }

    bool isOffered() const { return resolver.controller().isActionEnabled(salvageAction); }
    void press() const { resolver.controller().actionForSelector(salvageAction)(nullptr); }

    void breakBookmarks() {
        resolver.properties.answer.reset();
        resolver.properties.failure = platform::cocoaError(259, "Not a readable bookmark.");
        resolver.salvaged = "Salvaged: 8 of 80 bytes";
    }

    ResolverWindow resolver;
};

TEST_F(SalvageButtonTest, showsWhatIsWholeOnlyWhenAskedTo) {
    breakBookmarks();
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
    EXPECT_TRUE(isOffered());
    press();
    EXPECT_EQ(resolver.outputText(), "Salvaged: 8 of 80 bytes");
    EXPECT_EQ(resolver.window().status(), "Not a readable bookmark.") << "what is shown is not all";
    EXPECT_EQ(resolver.pathText(), "");
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil") << "never by itself";
}

TEST_F(SalvageButtonTest, isNotOfferedForWhatCanBeReadOrHasNothingWhole) {
    EXPECT_FALSE(isOffered()) << "nothing was analysed";
    resolver.salvaged = "salvaged";
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_FALSE(isOffered());
    breakBookmarks();
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_TRUE(isOffered());
    resolver.analyse(ResolverWindow::garbage);
    EXPECT_FALSE(isOffered());
    resolver.salvaged.reset();
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_FALSE(isOffered());
}

TEST_F(SalvageButtonTest, readsTheBoxAnew) {
    breakBookmarks();
    resolver.resolve(ResolverWindow::bookmarkText);
    resolver.properties.failure.reset();
    resolver.properties.answer = platform::Dictionary{};
    press();
    EXPECT_EQ(resolver.outputText(), "Optional([:])\n\n\nOptional([:])") << "this one can be read";
    EXPECT_FALSE(isOffered());
    resolver.paste(ResolverWindow::garbage);
    press();
    EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.");
}

} // namespace
} // namespace tolvane::tests
