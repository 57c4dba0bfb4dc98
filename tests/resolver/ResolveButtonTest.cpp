#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <string>

namespace tolvane::tests {
namespace {

using platform::Dictionary;
using platform::URL;
using platform::Value;

constexpr const char* notResolved = "Couldn't resolve Bookmark.";

class ResolveButtonTest : public testing::Test {
protected:
    ResolveButtonTest() { resolver.open(); }

    void resolveBookmark() { resolver.resolve(ResolverWindow::bookmarkText); }

    void setNumbers(const Value& device, const Value& inode) {
        resolver.fileManager.answer =
            Dictionary{{"NSFileSystemNumber", device}, {"NSFileSystemFileNumber", inode}};
    }

    ResolverWindow resolver;
};

using ResolveButtonDeathTest = ResolveButtonTest;

TEST_F(ResolveButtonTest, showsThePathAndTheVolumePath) {
    resolver.resolve(" Ym9va21h\ncms=\t");
    EXPECT_EQ(resolver.inputText(), ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    EXPECT_EQ(resolver.bookmarks.resolvedFrom, bytesOf("bookmark"));
}

TEST_F(ResolveButtonTest, analysesResolvesAndLooksInThatOrder) {
    resolveBookmark();
    EXPECT_THAT(
        resolver.log, testing::ElementsAre(
                          "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                          "bookmarkProperties NSURLBookmarkDetailedDescription", "resolve",
                          "attributesOfItemAtPath /data/notes.txt"));
}

TEST_F(ResolveButtonTest, reportsThatInvalidBase64CannotBeResolved) {
    resolver.controller().outputTextbox->setString("earlier");
    for (const char* text : {"no base-64", "Ym9va21hcms", "Ym9v\r\na21hcms="}) {
        resolver.controller().filePathTextbox->setStringValue("");
        resolver.resolve(text);
        EXPECT_EQ(resolver.pathText(), notResolved) << text;
    }
    EXPECT_EQ(resolver.outputText(), "earlier");
    EXPECT_EQ(resolver.inputText(), "Ym9v\ra21hcms=");
    EXPECT_EQ(resolver.controller().bmURL(), std::nullopt);
    EXPECT_TRUE(resolver.log.empty());
}

TEST_F(ResolveButtonTest, showsTheAnalysisEvenIfNothingIsFound) {
    for (const platform::Result<platform::ResolvedBookmark>& failure :
         {platform::Result<platform::ResolvedBookmark>(std::unexpected(platform::posixError(ENOENT))),
          platform::Result<platform::ResolvedBookmark>(platform::ResolvedBookmark{})}) {
        resolver.bookmarks.resolved = failure;
        resolver.controller().filePathTextbox->setStringValue("");
        resolver.controller().outputTextbox->setString("");
        resolveBookmark();
        EXPECT_EQ(resolver.pathText(), notResolved);
        EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
        EXPECT_EQ(resolver.controller().bmURL(), std::nullopt);
        EXPECT_EQ(resolver.log.back(), "resolve") << "no attributes are asked for";
    }
}

TEST_F(ResolveButtonTest, showsTheAnalysisBeforeItResolves) {
    std::string pathWhenShown = "unset";
    std::size_t callsWhenShown = 0;
    const auto subscription = resolver.controller().outputTextbox->textStorage()->observe([&] {
        pathWhenShown = resolver.pathText();
        callsWhenShown = resolver.log.size();
    });
    resolveBookmark();
    EXPECT_EQ(pathWhenShown, "");
    EXPECT_EQ(callsWhenShown, 2U);
}

TEST_F(ResolveButtonTest, failsForBytesThatAreNotABookmark) {
    resolver.properties.answer.reset();
    resolver.bookmarks.resolved = std::unexpected(platform::posixError(EINVAL));
    resolver.resolve("");
    EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
    EXPECT_EQ(resolver.pathText(), notResolved);
    EXPECT_EQ(resolver.bookmarks.resolvedFrom, platform::Data{});
}

TEST_F(ResolveButtonTest, resolvesWhatCannotBeAnalysed) {
    resolver.properties.answer.reset();
    resolveBookmark();
    EXPECT_EQ(resolver.outputText(), "nil\n\n\nnil");
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

TEST_F(ResolveButtonTest, keepsTheItemWhoseAttributesCannotBeRead) {
    resolver.fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolveBookmark();
    EXPECT_EQ(resolver.pathText(), notResolved);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
}

TEST_F(ResolveButtonTest, keepsTheItemFoundLastWhenAnotherIsNotFound) {
    resolveBookmark();
    resolver.resolve(ResolverWindow::garbage);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    resolver.bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    resolver.resolve("AAAA");
    EXPECT_EQ(resolver.pathText(), notResolved);
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    resolver.showAgain();
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
}

TEST_F(ResolveButtonTest, replacesTheItemByTheOneFoundNext) {
    resolveBookmark();
    const URL next = URL::fileURLWithPath("/next");
    resolver.bookmarks.resolved = platform::ResolvedBookmark{next, false};
    resolver.fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolveBookmark();
    EXPECT_EQ(resolver.controller().bmURL(), next);
}

TEST_F(ResolveButtonTest, showsThePathAloneWhenANumberIsZeroOrMissing) {
    const std::uint64_t device = 5;
    const std::uint64_t number = 123;
    const std::uint64_t zero = 0;
    for (const Dictionary& attributes : std::vector<Dictionary>{
             {},
             {{"NSFileSystemFileNumber", number}},
             {{"NSFileSystemNumber", device}},
             {{"NSFileSystemNumber", zero}, {"NSFileSystemFileNumber", number}},
             {{"NSFileSystemNumber", device}, {"NSFileSystemFileNumber", zero}},
             // A number without the other one is not read, so its type does not matter.
             {{"NSFileSystemNumber", "5"}},
             {{"NSFileSystemFileNumber", "123"}}}) {
        resolver.controller().filePathTextbox->setStringValue("");
        resolver.fileManager.answer = attributes;
        resolveBookmark();
        EXPECT_EQ(resolver.pathText(), "/data/notes.txt");
    }
}

TEST_F(ResolveButtonTest, showsNumbersUnsignedWhateverTheirWidth) {
    setNumbers(UINT64_MAX, UINT64_MAX);
    resolveBookmark();
    EXPECT_EQ(
        resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/18446744073709551615/18446744073709551615");
    setNumbers(std::int32_t{7}, std::uint8_t{255});
    resolveBookmark();
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/7/255");
}

TEST_F(ResolveButtonTest, insertsThePathWithoutQuoting) {
    resolver.bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/a \"b\"\n%20\\é"), false};
    resolveBookmark();
    EXPECT_EQ(resolver.pathText(), "/a \"b\"\n%20\\é\nvolfs path : /.vol/5/123");
}

TEST_F(ResolveButtonTest, showsAPathThatIsNotUtf8WithReplacementCharacters) {
    resolver.bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/data/a\xFF"), false};
    resolveBookmark();
    EXPECT_EQ(resolver.pathText(), "/data/a\xEF\xBF\xBD\nvolfs path : /.vol/5/123");
    EXPECT_EQ(resolver.log.back(), "attributesOfItemAtPath /data/a\xFF") << "the system gets the bytes";
}

TEST_F(ResolveButtonTest, showsNothingOfStaleness) {
    for (const bool stale : {false, true}) {
        for (const auto state : {platform::ButtonState::off, platform::ButtonState::on}) {
            ResolverWindow window;
            window.bookmarks.resolved = platform::ResolvedBookmark{window.url, stale};
            window.open();
            window.controller().refreshDataCheckbox->setState(state);
            window.resolve(ResolverWindow::bookmarkText);
            EXPECT_EQ(window.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
            EXPECT_EQ(window.inputText(), ResolverWindow::bookmarkText);
            EXPECT_EQ(window.outputText(), ResolverWindow::analysis);
            EXPECT_EQ(window.controller().refreshDataCheckbox->state(), state);
            EXPECT_EQ(window.log.size(), 4U) << "no fresh bookmark is made";
        }
    }
}

TEST_F(ResolveButtonDeathTest, stopsAtANumberOfTheWrongKind) {
    const std::vector<Value> wrong{"5", std::int32_t{-1}, 5.0, true, platform::Data{}};
    const std::string wrongFileNumber =
        "^tolvane: fatal: attribute NSFileSystemFileNumber is of the wrong kind";
    for (const Value& value : wrong) {
        setNumbers(value, std::uint64_t{123});
        EXPECT_DEATH(resolveBookmark(), "^tolvane: fatal: attribute NSFileSystemNumber is of the wrong kind");
        setNumbers(std::uint64_t{5}, value);
        EXPECT_DEATH(resolveBookmark(), wrongFileNumber);
    }
    setNumbers(std::uint64_t{0}, "123");
    EXPECT_DEATH(resolveBookmark(), wrongFileNumber);
}

TEST_F(ResolveButtonDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = resolver::TRViewController::initWithCoder({}, resolver.resolverSources());
    const auto expectDeathOver = [&bare](const std::string& outlet) {
        EXPECT_DEATH(bare->resolveButton(nullptr), "^tolvane: fatal: outlet " + outlet + " is not connected");
    };
    expectDeathOver("inputTextbox");
    platform::TextView input;
    bare->inputTextbox.connect(input);
    expectDeathOver("outputTextbox");
    platform::TextView output;
    bare->outputTextbox.connect(output);
    expectDeathOver("refreshDataCheckbox");
    platform::Button checkBox;
    bare->refreshDataCheckbox.connect(checkBox);
    expectDeathOver("filePathTextbox");
    input.setString(ResolverWindow::garbage);
    expectDeathOver("filePathTextbox");
}

} // namespace
} // namespace tolvane::tests
