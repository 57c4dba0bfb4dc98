// Details windows, used from outside.
#include "platform/values/Utf8.h"
#include "tests/desktop/DesktopTest.h"

#include <string>
#include <string_view>

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

TEST_F(DetailsWindow, isTitledWithTheFilesName) {
    Process& tolvane = startTolvane({file("Übersicht 2.txt")});
    const std::string window = desktop().waitForWindow(titleOf("Übersicht 2.txt"));
    EXPECT_EQ(desktop().windows().size(), 1U);
    quit(window, tolvane);
}

TEST_F(DetailsWindow, savesTheReportThatTheTerminalProgramPrints) {
    const std::string path = file("Übersicht 'a' \"b\".txt");
    const std::string window = open(path);
    desktop().press(window, {"ctrl+s"});
    const std::string panel = desktop().waitForWindow(savePanelTitle);
    desktop().press(panel, {"ctrl+a"});
    const std::string destination = desktop().files().path("saved.text");
    desktop().type(destination);
    desktop().press(panel, {"Return"});
    desktop().waitUntilGone(savePanelTitle);

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
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+c"}), path);
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+c"}), expected.at("pathTextbox"));
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+v"}), expected.at("volfsPathTextbox"));
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+l"}), expected.at("frURLTextbox"));
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+p"}), expected.at("permsTextbox"));
    EXPECT_EQ(desktop().copiedBy(window, {"ctrl+shift+b"}), expected.at("bookmarkTextbox"));
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

} // namespace

} // namespace tolvane::tests
