// The bookmark resolver, used with keys and the mouse.
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <filesystem>
#include <string>

namespace tolvane::tests {
namespace {

class Resolver : public DesktopTest {
protected:
    /// Starts the program and opens the resolver, which is then the only window.
    void openResolver() {
        program = &startTolvane({});
        desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+b"});
        window = desktop().waitForWindow(resolverTitle);
        desktop().waitUntilGone(startWindowTitle);
    }

    std::string bookmarkOf(const std::string& path) { return printedLine({"bookmark", "make", "--", path}); }

    /// Where the terminal program says that the bookmark leads.
    std::string target(const std::string& bookmark) {
        return printedLine({"bookmark", "resolve", "--", bookmark});
    }

    void focusInput() { desktop().click(window, 100, inputPlace); }

    /// What the fields hold, got by selecting and copying it all.
    std::string input() {
        focusInput();
        return desktop().copiedBy(window, {"ctrl+a", "ctrl+c"});
    }
    std::string path() {
        desktop().click(window, 100, pathPlace);
        return desktop().copiedBy(window, {"ctrl+a", "ctrl+c"});
    }

    /// The first line of the path field, which is a path when nothing went wrong.
    std::string leadsTo() {
        const std::string text = path();
        return text.substr(0, text.find('\n'));
    }

    /// Resolves the bookmark in the window and expects this path.
    void expectLeadsTo(const std::string& path, const std::string& bookmark) {
        paste(bookmark);
        desktop().press(window, {"ctrl+Return"});
        EXPECT_EQ(leadsTo(), path);
    }

    void paste(const std::string& text) {
        desktop().setClipboard(text);
        focusInput();
        desktop().press(window, {"ctrl+a", "ctrl+v"});
    }

    /// Well inside the input box, from above, and inside the path field, from below.
    static constexpr int inputPlace = 110;
    static constexpr int pathPlace = -50;

    Process* program = nullptr;
    std::string window;
};

TEST_F(Resolver, findsTheRenamedItemOfATypedBookmark) {
    const std::string bookmark = bookmarkOf(file("before"));
    const std::string item = desktop().files().path("Übersicht 'a' \"b\".txt");
    std::filesystem::rename(desktop().files().path("before"), item);
    openResolver();
    focusInput();
    desktop().type(bookmark);
    desktop().press(window, {"ctrl+Return"});
    EXPECT_EQ(path(), target(bookmark));
    EXPECT_EQ(leadsTo(), item);
    EXPECT_EQ(input(), bookmark);
    quit(window, *program);
}

TEST_F(Resolver, showsWhatABookmarkStores) {
    const std::string bookmark = bookmarkOf(file("stored"));
    openResolver();
    paste(bookmark);
    desktop().press(window, {"ctrl+shift+a"});
    // Between the two rows of buttons and the path.
    desktop().click(window, 100, 400);
    const std::string stored = desktop().copiedBy(window, {"ctrl+a", "ctrl+c"});
    EXPECT_EQ(stored + "\n", printed({"bookmark", "show", "--", bookmark}));
    quit(window, *program);
}

TEST_F(Resolver, takesNoCarriageReturnInABookmark) {
    std::string bookmark = bookmarkOf(file("item"));
    openResolver();
    // With line feeds it is taken.
    std::string broken = bookmark;
    broken.insert(60, "\n");
    paste(broken);
    desktop().press(window, {"ctrl+Return"});
    EXPECT_EQ(path(), target(bookmark));
    broken = bookmark;
    broken.insert(60, "\r");
    paste(broken);
    EXPECT_EQ(input(), broken);
    desktop().press(window, {"ctrl+shift+a"});
    EXPECT_EQ(path(), "Couldn't analyse Bookmark.");
    quit(window, *program);
}

TEST_F(Resolver, takesTheBookmarkOfAnAliasFile) {
    const std::string item = file("item");
    const std::string alias = file("alias", printed({"bookmark", "make", "--alias", "--", item}));
    openResolver();
    desktop().press(window, {"ctrl+shift+o"});
    answerPanel(openPanelTitle, alias);
    EXPECT_EQ(input(), printedLine({"bookmark", "read", "--", alias}));
    desktop().press(window, {"ctrl+Return"});
    EXPECT_EQ(leadsTo(), item);
    quit(window, *program);
}

TEST_F(Resolver, goesWithItsKeyAlone) {
    openResolver();
    desktop().press(window, {"ctrl+b"});
    EXPECT_TRUE(waitUntil([this] { return desktop().windowsTitled(resolverTitle).size() == 2; }));
    desktop().press(window, {"ctrl+shift+w"});
    EXPECT_TRUE(waitUntil([this] { return desktop().windowsTitled(resolverTitle).size() == 1; }));
    EXPECT_EQ(desktop().windowsTitled(resolverTitle).front(), window);
    quit(window, *program);
}

TEST_F(Resolver, previewsTheItemAndLeavesThePreviewWhenItIsClosed) {
    const std::string bookmark = bookmarkOf(file("to be seen.txt", "something to read\n"));
    const std::string previewTitle = titleOf("to be seen.txt — Preview");
    openResolver();
    expectLeadsTo(desktop().files().path("to be seen.txt"), bookmark);
    desktop().press(window, {"ctrl+shift+y"});
    desktop().press(desktop().waitForWindow(previewTitle), {"Escape"});
    desktop().waitUntilGone(previewTitle);
    EXPECT_TRUE(Desktop::isRunning(*program));
    desktop().press(window, {"ctrl+shift+y"});
    const std::string preview = desktop().waitForWindow(previewTitle);
    desktop().press(window, {"ctrl+shift+w"});
    desktop().waitUntilGone(resolverTitle);
    EXPECT_EQ(desktop().copiedBy(preview, {"ctrl+a", "ctrl+c"}), "something to read\n");
    EXPECT_TRUE(Desktop::isRunning(*program));
    desktop().press(preview, {"Escape"});
    expectGoodEnd(*program);
}

TEST_F(Resolver, takesItsPanelAlongWhenItIsClosed) {
    const auto [tolvane, details] = startWith("a");
    desktop().press(details, {"ctrl+b"});
    desktop().press(desktop().waitForWindow(resolverTitle), {"ctrl+shift+o"});
    desktop().waitForWindow(openPanelTitle);
    desktop().press(details, {"ctrl+shift+w"});
    desktop().waitUntilGone(resolverTitle);
    desktop().waitUntilGone(openPanelTitle);
    quit(details, tolvane);
}

class ResolverWithFileManager : public Resolver {
protected:
    void SetUp() override {
        if (!isInstalled("thunar")) {
            GTEST_SKIP() << "thunar is not installed";
        }
        Resolver::SetUp();
    }

    DesktopSetup setup() const override {
        return {
            .services = {{"org.freedesktop.FileManager1", "/usr/bin/thunar --gapplication-service"}},
            .variables = {"NO_AT_BRIDGE=1"}};
    }

    bool isFolderShown() {
        return std::ranges::any_of(desktop().windows(), [](const DesktopWindow& shown) {
            return shown.title.starts_with("the folder");
        });
    }
};

TEST_F(ResolverWithFileManager, revealsTheItem) {
    desktop().files().folder("the folder");
    const std::string bookmark = bookmarkOf(file("the folder/a ü"));
    openResolver();
    expectLeadsTo(desktop().files().path("the folder/a ü"), bookmark);
    EXPECT_FALSE(isFolderShown());
    desktop().press(window, {"ctrl+shift+r"});
    EXPECT_TRUE(waitUntil([this] { return isFolderShown(); }));
    quit(window, *program);
}

} // namespace
} // namespace tolvane::tests
