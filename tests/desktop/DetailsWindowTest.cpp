// Details windows, used with keys.
#include "platform/values/Utf8.h"
#include "tests/desktop/DesktopTest.h"

#include <string>
#include <utility>

namespace tolvane::tests {
namespace {

class DetailsWindow : public DesktopTest {
protected:
    /// Opens the file in the only window.
    std::string open(const std::string& path) {
        program = &startTolvane({path});
        EXPECT_TRUE(waitUntil([this] { return desktop().windows().size() == 1; }));
        desktop().settle();
        const auto windows = desktop().windows();
        return windows.empty() ? std::string() : windows.front().id;
    }

    Process* program = nullptr;
};

/// The report without its last line, which is when it was made.
std::string withoutDate(const std::string& report) {
    const auto date = report.rfind("\non ");
    EXPECT_NE(date, std::string::npos) << report;
    return report.substr(0, date);
}

TEST_F(DetailsWindow, hasAnIconWithoutBeingInstalled) {
    const auto [tolvane, letter] = startWith("letter");
    handOver({file("second")});
    for (const std::string& window : {letter, desktop().waitForWindow(titleOf("second"))}) {
        // xprop shows the first picture below a line with its size.
        EXPECT_TRUE(waitUntil([&] {
            return desktop().run({"xprop", "-id", window, "_NET_WM_ICON"}).out.contains("Icon (16 x 16)");
        }));
    }
    quit(letter, tolvane);
}

TEST_F(DetailsWindow, savesTheReportThatTheTerminalProgramPrints) {
    const std::string path = file("Übersicht 'a' \"b\".txt");
    const std::string window = open(path);
    desktop().press(window, {"ctrl+s"});
    const std::string destination = desktop().files().path("saved.text");
    answerPanel(savePanelTitle, destination);

    const std::string expected = withoutDate(printed({"report", path}));
    EXPECT_TRUE(expected.contains("Übersicht 'a' \"b\".txt"));
    static_cast<void>(waitUntil([&] { return contentsOfFile(destination).contains("\non "); }));
    const std::string saved = contentsOfFile(destination);
    EXPECT_EQ(withoutDate(saved), expected);
    EXPECT_TRUE(saved.starts_with("Details for file "));
    EXPECT_FALSE(saved.ends_with('\n'));
    EXPECT_TRUE(platform::isValidUtf8(saved));
    quit(window, *program);
}

TEST_F(DetailsWindow, copiesItsFieldsByTheirKeys) {
    const std::string path = file("a 'b' \"c\" ü 字\nd.txt");
    const auto expected = report(path);
    const std::string window = open(path);
    EXPECT_EQ(expected.at("pathTextbox"), path);
    for (const auto& [key, field] :
         {std::pair{"ctrl+shift+c", "pathTextbox"}, std::pair{"ctrl+shift+v", "volfsPathTextbox"},
          std::pair{"ctrl+shift+l", "frURLTextbox"}, std::pair{"ctrl+shift+p", "permsTextbox"},
          std::pair{"ctrl+shift+b", "bookmarkTextbox"}}) {
        EXPECT_EQ(desktop().copiedBy(window, {key}), expected.at(field)) << field;
    }
    quit(window, *program);
}

TEST_F(DetailsWindow, copiesTheExtendedAttributes) {
    const std::string path = file("attributes");
    if (!setExtendedAttribute(path, "user.tolvane.test", "grün\nline")) {
        GTEST_SKIP() << "There are no extended attributes here";
    }
    const auto expected = report(path);
    const std::string window = open(path);
    const std::string copied = desktop().copiedBy(window, {"ctrl+shift+x"});
    EXPECT_EQ(copied, expected.at("inodeText"));
    EXPECT_TRUE(copied.contains("tolvane.test")) << copied;
    quit(window, *program);
}

TEST_F(DetailsWindow, showsAndCopiesAttributesInWordsByKeysAlone) {
    const std::string path = file("words");
    if (!setExtendedAttribute(path, "user.xdg.origin.url", "https://example.org/")) {
        GTEST_SKIP() << "There are no extended attributes here";
    }
    const std::string window = open(path);
    desktop().press(window, {"alt+i"});
    // Tab reaches every field and button.
    constexpr int mostStops = 50;
    std::string copied;
    for (int i = 0; i < mostStops && !copied.contains("user.xdg.origin.url\n"); ++i) {
        desktop().press(window, {"Tab", "ctrl+a", "ctrl+c"});
        copied = desktop().clipboard();
    }
    EXPECT_TRUE(copied.contains("https://example.org/")) << copied;
    quit(window, *program);
}

} // namespace
} // namespace tolvane::tests
