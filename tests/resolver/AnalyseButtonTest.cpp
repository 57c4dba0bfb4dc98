#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::Color;
using platform::Font;

class AnalyseButtonTest : public testing::Test {
protected:
    AnalyseButtonTest() { resolver.open(); }

    const AttributedString& input() const {
        return resolver.controller().inputTextbox->textStorage()->attributedString();
    }
    const AttributedString& output() const {
        return resolver.controller().outputTextbox->textStorage()->attributedString();
    }

    ResolverWindow resolver;
};

using AnalyseButtonDeathTest = AnalyseButtonTest;

TEST_F(AnalyseButtonTest, showsBothAnswersAndNothingElse) {
    resolver.controller().filePathTextbox->setStringValue("/earlier");
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.properties.readFrom, bytesOf("bookmark"));
    EXPECT_THAT(
        resolver.log, testing::ElementsAre(
                          "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                          "bookmarkProperties NSURLBookmarkDetailedDescription"))
        << "no file is looked at";
    EXPECT_EQ(resolver.pathText(), "/earlier") << "the path field is left as it was";
    EXPECT_EQ(resolver.controller().bmURL(), std::nullopt);
}

TEST_F(AnalyseButtonTest, cleansTheInputAndGivesTheSameTwice) {
    resolver.analyse("  Ym9v\na2\t1h\n\n\tcm s=\n");
    EXPECT_EQ(resolver.inputText(), ResolverWindow::bookmarkText);
    const AttributedString firstInput = input();
    const AttributedString firstOutput = output();
    EXPECT_EQ(firstOutput.string(), ResolverWindow::analysis);
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(input(), firstInput);
    EXPECT_EQ(output(), firstOutput);
}

TEST_F(AnalyseButtonTest, refusesInvalidBase64AndKeepsTheOutput) {
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.log.clear();
    for (const std::string text :
         {"not base-64!", "Ym9va21hcms", "Couldn't get Alias.", "Ym9v\r\na21hcms=\r\n"}) {
        resolver.controller().filePathTextbox->setStringValue("/earlier");
        resolver.analyse(text);
        EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.") << text;
        EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis) << text;
        EXPECT_FALSE(resolver.inputText().contains(' ')) << "it is cleaned all the same";
    }
    EXPECT_EQ(resolver.inputText(), "Ym9v\ra21hcms=\r") << "carriage returns are kept";
    EXPECT_TRUE(resolver.log.empty());
}

TEST_F(AnalyseButtonTest, decodesAnEmptyInputAsZeroBytes) {
    resolver.properties.answer.reset();
    for (const char* text : {"", " \n\t "}) {
        resolver.properties.readFrom = bytesOf("earlier");
        resolver.analyse(text);
        EXPECT_EQ(resolver.properties.readFrom, platform::Data{});
        EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
        EXPECT_EQ(resolver.inputText(), "");
        EXPECT_EQ(resolver.pathText(), "");
    }
}

TEST_F(AnalyseButtonTest, leavesTheCheckBoxAndTheFoundItemAlone) {
    resolver.resolve(ResolverWindow::bookmarkText);
    resolver.controller().refreshDataCheckbox->setState(platform::ButtonState::on);
    resolver.properties.answer.reset();
    resolver.analyse("AAAA");
    EXPECT_EQ(resolver.controller().refreshDataCheckbox->state(), platform::ButtonState::on);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

// Styles

TEST_F(AnalyseButtonTest, givesTheInputAColourAndNoFont) {
    resolver.controller().inputTextbox->textStorage()->setAttributedString(
        {"AA\nAA", {{}, Font::systemFontOfSize(40)}});
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(input(), AttributedString("AAAA", {Color::textColor, {}}));
}

TEST_F(AnalyseButtonTest, writesTheInputBackBeforeItIsDecoded) {
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

TEST_F(AnalyseButtonTest, stylesTheOutputAtTheCurrentSize) {
    resolver.controller().incFontSize(nullptr);
    resolver.analyse(ResolverWindow::bookmarkText);
    EXPECT_EQ(
        output(), AttributedString(ResolverWindow::analysis, {Color::textColor, Font::systemFontOfSize(13)}));
}

TEST_F(AnalyseButtonTest, rendersTheOutputAnewWithoutAnotherAnalysis) {
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

TEST_F(AnalyseButtonTest, showsNothingInViewsWithoutStorage) {
    resolver.controller().inputTextbox->removeTextStorage();
    resolver.controller().outputTextbox->removeTextStorage();
    EXPECT_EQ(resolver.controller().cleanInput(), "");
    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(resolver.properties.readFrom, platform::Data{});
    EXPECT_EQ(resolver.outputText(), "");
}

TEST_F(AnalyseButtonDeathTest, stopsAtAnUnconnectedOutlet) {
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
