#include "tests/resolver/OpenResolver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::Color;
using platform::Font;

using AnalyseButtonTest = OpenResolver;
using AnalyseButtonDeathTest = AnalyseButtonTest;

TEST_F(AnalyseButtonTest, showsBothAnswersAndNothingElse) {
    setPathText("/earlier");
    analyse();
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(properties.readFrom, bytesOf("bookmark"));
    EXPECT_THAT(
        log, testing::ElementsAre(
                 "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                 "bookmarkProperties NSURLBookmarkDetailedDescription"))
        << "no file is looked at";
    EXPECT_EQ(pathText(), "/earlier") << "the path field is left as it was";
    EXPECT_EQ(controller().bmURL(), std::nullopt);
    EXPECT_EQ(status(), "");
}

TEST_F(AnalyseButtonTest, saysWhyDataIsNoBookmark) {
    properties.failure = platform::cocoaError(259, "Expected at byte 0: a bookmark.");
    analyse();
    EXPECT_EQ(pathText(), "") << "what was there stays";
    EXPECT_EQ(status(), "Expected at byte 0: a bookmark.");
    resolve();
    EXPECT_EQ(status(), "Expected at byte 0: a bookmark.") << "even if it was resolved";
    properties.failure.reset();
    analyse();
    EXPECT_EQ(status(), "");
}

TEST_F(AnalyseButtonTest, cleansTheInputAndGivesTheSameTwice) {
    analyse("  Ym9v\na2\t1h\n\n\tcm s=\n");
    EXPECT_EQ(inputText(), bookmarkText);
    const AttributedString firstInput = styledInput();
    const AttributedString firstOutput = styledOutput();
    EXPECT_EQ(firstOutput.string(), analysis);
    controller().analyseButton(nullptr);
    EXPECT_EQ(styledInput(), firstInput);
    EXPECT_EQ(styledOutput(), firstOutput);
}

TEST_F(AnalyseButtonTest, refusesInvalidBase64AndKeepsTheOutput) {
    analyse();
    log.clear();
    for (const std::string text :
         {"not base-64!", "Ym9va21hcms", "Couldn't get Alias.", "Ym9v\r\na21hcms=\r\n"}) {
        setPathText("/earlier");
        analyse(text);
        EXPECT_EQ(pathText(), "Couldn't analyse Bookmark.") << text;
        EXPECT_EQ(outputText(), analysis) << text;
        EXPECT_FALSE(inputText().contains(' ')) << "it is cleaned all the same";
    }
    EXPECT_EQ(inputText(), "Ym9v\ra21hcms=\r") << "carriage returns are kept";
    EXPECT_TRUE(log.empty());
    analyse("Ym9v 'a");
    EXPECT_EQ(status(), "Expected at character 5: a letter, a digit, '+', '/' or the padding '='.");
    analyse();
    EXPECT_EQ(status(), "");
}

TEST_F(AnalyseButtonTest, decodesAnEmptyInputAsZeroBytes) {
    properties.answer.reset();
    for (const char* text : {"", " \n\t "}) {
        properties.readFrom = bytesOf("earlier");
        analyse(text);
        EXPECT_EQ(properties.readFrom, platform::Data{});
        EXPECT_EQ(outputText(), "nil\n\n\nnil");
        EXPECT_EQ(inputText(), "");
        EXPECT_EQ(pathText(), "");
    }
}

TEST_F(AnalyseButtonTest, leavesTheCheckBoxAndTheFoundItemAlone) {
    resolve();
    controller().refreshDataCheckbox->setState(platform::ButtonState::on);
    properties.answer.reset();
    analyse("AAAA");
    EXPECT_EQ(controller().refreshDataCheckbox->state(), platform::ButtonState::on);
    EXPECT_EQ(controller().bmURL(), url);
    EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

// Styles

TEST_F(AnalyseButtonTest, writesTheInputBackInAColourAndNoFontBeforeItIsDecoded) {
    std::string pathWhenCleaned = "unset";
    const auto subscription = controller().inputTextbox->textStorage()->observe([&] {
        if (inputText() == "no!") {
            pathWhenCleaned = pathText();
        }
    });
    controller().inputTextbox->textStorage()->setAttributedString(
        {"n o\n!", {{}, Font::systemFontOfSize(40)}});
    controller().analyseButton(nullptr);
    EXPECT_EQ(pathWhenCleaned, "");
    EXPECT_EQ(pathText(), "Couldn't analyse Bookmark.");
    EXPECT_EQ(styledInput(), AttributedString("no!", {Color::textColor, {}}));
}

TEST_F(AnalyseButtonTest, stylesTheOutputAtTheCurrentSize) {
    controller().incFontSize(nullptr);
    analyse();
    EXPECT_EQ(styledOutput(), AttributedString(analysis, {Color::textColor, Font::systemFontOfSize(13)}));
}

TEST_F(AnalyseButtonTest, rendersTheOutputAnewWithoutAnotherAnalysis) {
    analyse();
    log.clear();
    const AttributedString inputBefore = styledInput();
    controller().outputTextbox->textStorage()->appendAttributedString({" and more", {}});
    controller().decFontSize(nullptr);
    EXPECT_EQ(
        styledOutput(),
        AttributedString(
            std::string(analysis) + " and more", {Color::textColor, Font::systemFontOfSize(11)}));
    EXPECT_EQ(styledInput(), inputBefore) << "the input never follows the text size";
    EXPECT_TRUE(log.empty());
}

TEST_F(AnalyseButtonTest, showsNothingInViewsWithoutStorage) {
    controller().inputTextbox->removeTextStorage();
    controller().outputTextbox->removeTextStorage();
    EXPECT_EQ(controller().cleanInput(), "");
    controller().analyseButton(nullptr);
    EXPECT_EQ(properties.readFrom, platform::Data{});
    EXPECT_EQ(outputText(), "");
}

TEST_F(AnalyseButtonDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = unconnected();
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet inputTextbox is not connected");
    EXPECT_DEATH(bare->cleanInput(), "^tolvane: fatal: outlet inputTextbox is not connected");
    EXPECT_DEATH(bare->showOutput("a"), "^tolvane: fatal: outlet outputTextbox is not connected");
    EXPECT_DEATH(bare->restyleOutput(), "^tolvane: fatal: outlet outputTextbox is not connected");

    platform::TextView box;
    bare->inputTextbox.connect(box);
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
    box.setString(garbage);
    EXPECT_DEATH(bare->analyseButton(nullptr), "^tolvane: fatal: outlet filePathTextbox is not connected");
}

class SalvageButtonTest : public OpenResolver {
protected:
    bool isOffered() const { return OpenResolver::isOffered("salvageButton:"); }
    void press() const { perform("salvageButton:"); }

    void breakBookmarks() {
        properties.answer.reset();
        properties.failure = platform::cocoaError(259, "Not a readable bookmark.");
        salvaged = "Salvaged: 8 of 80 bytes";
    }
};

TEST_F(SalvageButtonTest, showsWhatIsWholeOnlyWhenAskedTo) {
    breakBookmarks();
    analyse();
    EXPECT_EQ(outputText(), "nil\n\n\nnil");
    EXPECT_TRUE(isOffered());
    press();
    EXPECT_EQ(outputText(), "Salvaged: 8 of 80 bytes");
    EXPECT_EQ(status(), "Not a readable bookmark.") << "what is shown is not all";
    EXPECT_EQ(pathText(), "");
    analyse();
    EXPECT_EQ(outputText(), "nil\n\n\nnil") << "never by itself";
}

TEST_F(SalvageButtonTest, isNotOfferedForWhatCanBeReadOrHasNothingWhole) {
    EXPECT_FALSE(isOffered()) << "nothing was analysed";
    salvaged = "salvaged";
    analyse();
    EXPECT_FALSE(isOffered());
    breakBookmarks();
    analyse();
    EXPECT_TRUE(isOffered());
    analyse(garbage);
    EXPECT_FALSE(isOffered());
    salvaged.reset();
    analyse();
    EXPECT_FALSE(isOffered());
}

TEST_F(SalvageButtonTest, readsTheBoxAnew) {
    breakBookmarks();
    resolve();
    properties.failure.reset();
    properties.answer = platform::Dictionary{};
    press();
    EXPECT_EQ(outputText(), "Optional([:])\n\n\nOptional([:])") << "this one can be read";
    EXPECT_FALSE(isOffered());
    paste(garbage);
    press();
    EXPECT_EQ(pathText(), "Couldn't analyse Bookmark.");
}

} // namespace
} // namespace tolvane::tests
