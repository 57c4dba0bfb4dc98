#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::Color;
using platform::Font;
using testing::ElementsAre;

class AnalyseTest : public testing::Test {
protected:
    AnalyseTest() { resolver.open(); }

    const AttributedString& input() const {
        return resolver.controller().inputTextbox->textStorage()->attributedString();
    }
    const AttributedString& output() const {
        return resolver.controller().outputTextbox->textStorage()->attributedString();
    }

    ResolverWindow resolver;
};

using AnalyseDeathTest = AnalyseTest;

TEST_F(AnalyseTest, showsBothAnswersAndNothingElse) {
    resolver.controller().filePathTextbox->setStringValue("/earlier");
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.properties.askedOf, bytesOf("bookmark"));
    EXPECT_EQ(resolver.pathText(), "/earlier") << "the path field is left as it was";
    EXPECT_EQ(resolver.controller().bmURL(), std::nullopt);
}

TEST_F(AnalyseTest, asksTwiceForOneKeyAndTouchesNoFile) {
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_THAT(
        resolver.log, ElementsAre(
                          "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                          "bookmarkProperties NSURLBookmarkDetailedDescription"));
}

TEST_F(AnalyseTest, takesSpacesLineFeedsAndTabsOut) {
    resolver.analyse("  Ym9v\na2\t1h\n\n\tcm s=\n");
    EXPECT_EQ(resolver.inputText(), ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.properties.askedOf, bytesOf("bookmark"));
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
}

TEST_F(AnalyseTest, takesNoOtherCharacterOut) {
    const std::vector<std::string> others{
        "\r", "\v", "\f", "\u00A0", "\u2028", "\uFEFF", std::string(1, '\0')};
    for (const std::string& other : others) {
        resolver.analyse("Ym9va21h" + other + "\ncms=");
        EXPECT_EQ(resolver.inputText(), "Ym9va21h" + other + "cms=");
        EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.");
        resolver.controller().filePathTextbox->setStringValue("");
    }
    EXPECT_TRUE(resolver.log.empty());
}

TEST_F(AnalyseTest, failsWithCarriageReturns) {
    resolver.analyse("Ym9v\r\na21hcms=\r\n");
    EXPECT_EQ(resolver.inputText(), "Ym9v\ra21hcms=\r");
    EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.");
    EXPECT_EQ(resolver.outputText(), "");
}

TEST_F(AnalyseTest, saysWhatIsNoBase64AndKeepsTheOutput) {
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.log.clear();
    for (const std::string text : {"not base-64!", "Ym9va21hcms", "Couldn't get Alias."}) {
        resolver.controller().filePathTextbox->setStringValue("/earlier");
        resolver.analyse(text);
        EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.") << text;
        EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis) << text;
        EXPECT_FALSE(resolver.inputText().contains(' ')) << "it is cleaned all the same";
    }
    EXPECT_TRUE(resolver.log.empty());
}

TEST_F(AnalyseTest, saysNilTwiceForBytesThatAreNoBookmark) {
    resolver.properties.answer.reset();
    resolver.analyse("AAAA");
    EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
    EXPECT_EQ(resolver.pathText(), "");
}

TEST_F(AnalyseTest, takesAnEmptyInputForZeroBytes) {
    resolver.properties.answer.reset();
    for (const char* text : {"", " \n\t "}) {
        resolver.properties.askedOf = bytesOf("earlier");
        resolver.analyse(text);
        EXPECT_EQ(resolver.properties.askedOf, platform::Data{});
        EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
        EXPECT_EQ(resolver.inputText(), "");
        EXPECT_EQ(resolver.pathText(), "");
    }
}

TEST_F(AnalyseTest, givesTheSameTwice) {
    resolver.analyse(" Ym9va21h\ncms=");
    const AttributedString firstInput = input();
    const AttributedString firstOutput = output();
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(input(), firstInput);
    EXPECT_EQ(output(), firstOutput);
}

TEST_F(AnalyseTest, startsAgainFromTheInputEachTime) {
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.properties.answer = platform::Dictionary{};
    resolver.analyse("AAAA");
    EXPECT_EQ(resolver.outputText(), "Optional([:])\n\n\nOptional([:])");
    EXPECT_EQ(resolver.properties.askedOf, platform::Data(3));
}

TEST_F(AnalyseTest, leavesTheCheckBoxAndTheFoundItemAlone) {
    resolver.resolve(ResolverWindow::bookmarkText);
    resolver.controller().refreshDataCheckbox->setState(platform::ButtonState::on);
    resolver.properties.answer.reset();
    resolver.analyse("AAAA");
    EXPECT_EQ(resolver.controller().refreshDataCheckbox->state(), platform::ButtonState::on);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

// Styles

TEST_F(AnalyseTest, givesTheInputAColourAndNoFont) {
    resolver.controller().inputTextbox->textStorage()->setAttributedString(
        {"AA\nAA", {{}, Font::systemFontOfSize(40)}});
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(input(), AttributedString("AAAA", {Color::textColor, {}}));
}

TEST_F(AnalyseTest, writesTheInputBackBeforeItIsDecoded) {
    std::string pathWhenCleaned = "unset";
    const auto subscription = resolver.controller().inputTextbox->textStorage()->observe([&] {
        if (resolver.inputText() == "no!") {
            pathWhenCleaned = resolver.pathText();
        }
    });
    resolver.analyse("n o !");
    EXPECT_EQ(pathWhenCleaned, "");
    EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.");
    EXPECT_EQ(input(), AttributedString("no!", {Color::textColor, {}}));
}

TEST_F(AnalyseTest, stylesTheOutputAtTheCurrentSize) {
    resolver.controller().incFontSize(nullptr);
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(
        output(), AttributedString(ResolverWindow::analysis, {Color::textColor, Font::systemFontOfSize(13)}));
}

TEST_F(AnalyseTest, rendersTheOutputAnewWithoutAnotherAnalysis) {
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.log.clear();
    const AttributedString inputBefore = input();
    resolver.controller().outputTextbox->textStorage()->appendAttributedString({" and more", {}});
    resolver.controller().decFontSize(nullptr);
    EXPECT_EQ(
        output(), AttributedString(
                      std::string(ResolverWindow::analysis) + " and more",
                      {Color::textColor, Font::systemFontOfSize(11)}));
    EXPECT_EQ(input(), inputBefore) << "the input never follows the text size";
    EXPECT_TRUE(resolver.log.empty());
}

TEST_F(AnalyseTest, showsNothingInViewsWithoutStorage) {
    resolver.controller().inputTextbox->removeTextStorage();
    resolver.controller().outputTextbox->removeTextStorage();
    EXPECT_EQ(resolver.controller().cleanInput(), "");
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(resolver.properties.askedOf, platform::Data{});
    EXPECT_EQ(resolver.outputText(), "");
}

// What cannot happen

TEST_F(AnalyseDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = resolver::TRViewController::initWithCoder({}, resolver.resolverSources());
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet inputTextbox is not connected");
    EXPECT_DEATH(bare->cleanInput(), "^tolvane: fatal: outlet inputTextbox is not connected");
    EXPECT_DEATH(bare->showOutput("a"), "^tolvane: fatal: outlet outputTextbox is not connected");
    EXPECT_DEATH(bare->restyleOutput(), "^tolvane: fatal: outlet outputTextbox is not connected");

    platform::TextView box;
    bare->inputTextbox.connect(box);
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
    box.setString(ResolverWindow::garbage);
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet filePathTextbox is not connected");
}

} // namespace
} // namespace tolvane::tests
