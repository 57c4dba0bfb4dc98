#include "tests/resolver/OpenResolver.h"

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

class ResolveButtonTest : public OpenResolver {
protected:
    void setNumbers(const Value& device, const Value& inode) {
        fileManager.answer = Dictionary{{"NSFileSystemNumber", device}, {"NSFileSystemFileNumber", inode}};
    }
};

using ResolveButtonDeathTest = ResolveButtonTest;

TEST_F(ResolveButtonTest, showsThePathAndTheVolumePath) {
    analyse(garbage);
    EXPECT_NE(status(), "");
    resolve(" Ym9va21h\ncms=\t");
    EXPECT_EQ(inputText(), bookmarkText);
    EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(controller().bmURL(), url);
    EXPECT_EQ(bookmarks.resolvedFrom, bytesOf("bookmark"));
    EXPECT_EQ(status(), "") << "the earlier reason went";
}

TEST_F(ResolveButtonTest, analysesResolvesAndLooksInThatOrder) {
    resolve();
    EXPECT_THAT(
        log, testing::ElementsAre(
                 "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                 "bookmarkProperties NSURLBookmarkDetailedDescription", "resolve",
                 "attributesOfItemAtPath /data/notes.txt"));
}

TEST_F(ResolveButtonTest, reportsThatInvalidBase64CannotBeResolved) {
    controller().outputTextbox->setString("earlier");
    for (const char* text : {"no base-64", "Ym9va21hcms", "Ym9v\r\na21hcms="}) {
        setPathText("");
        resolve(text);
        EXPECT_EQ(pathText(), notResolved) << text;
    }
    EXPECT_EQ(outputText(), "earlier");
    EXPECT_EQ(inputText(), "Ym9v\ra21hcms=");
    EXPECT_EQ(status(), "Expected at character 5: a letter, a digit, '+', '/' or the padding '='.");
    EXPECT_EQ(controller().bmURL(), std::nullopt);
    EXPECT_TRUE(log.empty());
}

TEST_F(ResolveButtonTest, showsTheAnalysisEvenIfNothingIsFound) {
    for (const platform::Result<platform::ResolvedBookmark>& failure :
         {platform::Result<platform::ResolvedBookmark>(std::unexpected(platform::posixError(ENOENT))),
          platform::Result<platform::ResolvedBookmark>(platform::ResolvedBookmark{})}) {
        bookmarks.resolved = failure;
        setPathText("");
        controller().outputTextbox->setString("");
        resolve();
        EXPECT_EQ(pathText(), notResolved);
        EXPECT_EQ(status(), failure ? "" : "No such file or directory");
        EXPECT_EQ(outputText(), analysis);
        EXPECT_EQ(controller().bmURL(), std::nullopt);
        EXPECT_EQ(log.back(), "resolve") << "no attributes are asked for";
    }
}

TEST_F(ResolveButtonTest, showsTheAnalysisBeforeItResolves) {
    std::string pathWhenShown = "unset";
    std::size_t callsWhenShown = 0;
    const auto subscription = controller().outputTextbox->textStorage()->observe([&] {
        pathWhenShown = pathText();
        callsWhenShown = log.size();
    });
    resolve();
    EXPECT_EQ(pathWhenShown, "");
    EXPECT_EQ(callsWhenShown, 2U);
}

TEST_F(ResolveButtonTest, failsForBytesThatAreNotABookmark) {
    properties.answer.reset();
    bookmarks.resolved = std::unexpected(platform::posixError(EINVAL));
    resolve("");
    EXPECT_EQ(outputText(), "nil\n\n\nnil");
    EXPECT_EQ(pathText(), notResolved);
    EXPECT_EQ(bookmarks.resolvedFrom, platform::Data{});
}

TEST_F(ResolveButtonTest, resolvesWhatCannotBeAnalysed) {
    properties.answer.reset();
    resolve();
    EXPECT_EQ(outputText(), "nil\n\n\nnil");
    EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

TEST_F(ResolveButtonTest, keepsTheItemFoundLastWhenAnotherIsNotFound) {
    resolve();
    resolve(garbage);
    EXPECT_EQ(controller().bmURL(), url);
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    resolve("AAAA");
    EXPECT_EQ(pathText(), notResolved);
    EXPECT_EQ(controller().bmURL(), url);
    showAgain();
    EXPECT_EQ(controller().bmURL(), url);
}

TEST_F(ResolveButtonTest, replacesTheItemByTheOneFoundNextEvenIfItsAttributesCannotBeRead) {
    resolve();
    bookmarks.resolveTo("/next");
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolve();
    EXPECT_EQ(pathText(), notResolved);
    EXPECT_EQ(status(), "Permission denied");
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(controller().bmURL(), URL::fileURLWithPath("/next"));
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
        setPathText("");
        fileManager.answer = attributes;
        resolve();
        EXPECT_EQ(pathText(), "/data/notes.txt");
    }
}

TEST_F(ResolveButtonTest, showsNumbersUnsignedWhateverTheirWidth) {
    setNumbers(UINT64_MAX, UINT64_MAX);
    resolve();
    EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/18446744073709551615/18446744073709551615");
    setNumbers(std::int32_t{7}, std::uint8_t{255});
    resolve();
    EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/7/255");
}

TEST_F(ResolveButtonTest, quotesNothingInThePathAndReplacesWhatIsNotUtf8) {
    const std::string odd = "/a \"b\"\n%20\\é";
    for (const auto& [path, shown] : {std::pair{odd, odd}, {"/data/a\xFF", "/data/a\xEF\xBF\xBD"}}) {
        bookmarks.resolveTo(path);
        resolve();
        EXPECT_EQ(pathText(), shown + "\nvolfs path : /.vol/5/123");
        EXPECT_EQ(log.back(), "attributesOfItemAtPath " + path) << "the system gets the bytes";
    }
}

TEST_F(ResolveButtonTest, showsNothingOfStaleness) {
    for (const bool isStale : {false, true}) {
        for (const auto state : {platform::ButtonState::off, platform::ButtonState::on}) {
            bookmarks.resolved = platform::ResolvedBookmark{url, isStale};
            controller().refreshDataCheckbox->setState(state);
            setPathText("");
            log.clear();
            resolve();
            EXPECT_EQ(pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
            EXPECT_EQ(inputText(), bookmarkText);
            EXPECT_EQ(outputText(), analysis);
            EXPECT_EQ(controller().refreshDataCheckbox->state(), state);
            EXPECT_EQ(log.size(), 4U) << "no fresh bookmark is made";
        }
    }
}

TEST_F(ResolveButtonDeathTest, stopsAtANumberOfTheWrongKind) {
    const std::vector<Value> wrong{"5", std::int32_t{-1}, 5.0, true, platform::Data{}};
    const std::string wrongFileNumber =
        "^tolvane: fatal: attribute NSFileSystemFileNumber is of the wrong kind";
    for (const Value& value : wrong) {
        setNumbers(value, std::uint64_t{123});
        EXPECT_DEATH(resolve(), "^tolvane: fatal: attribute NSFileSystemNumber is of the wrong kind");
        setNumbers(std::uint64_t{5}, value);
        EXPECT_DEATH(resolve(), wrongFileNumber);
    }
    setNumbers(std::uint64_t{0}, "123");
    EXPECT_DEATH(resolve(), wrongFileNumber);
}

TEST_F(ResolveButtonDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = unconnected();
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
    input.setString(garbage);
    expectDeathOver("filePathTextbox");
}

class CompareButtonTest : public OpenResolver {
protected:
    CompareButtonTest() {
        bookmarks.made = bytesOf("made");
        comparedFacts = {{"name", Value("a"), Value("b"), true}};
    }

    bool isOffered() const { return OpenResolver::isOffered("compareButton:"); }
    void press() const { perform("compareButton:"); }
    const platform::TableRows* rows() const { return controller().comparisonTable->rows(); }
    const std::string& note() const { return controller().filePathTextbox->note(); }
};

TEST_F(CompareButtonTest, isOfferedWhileThePathFieldShowsAnItem) {
    EXPECT_FALSE(isOffered());
    resolve();
    EXPECT_TRUE(isOffered());
    analyse();
    EXPECT_TRUE(isOffered()) << "the path field stays";
    analyse(garbage);
    EXPECT_FALSE(isOffered());
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    resolve();
    EXPECT_FALSE(isOffered()) << "its attributes are not read";
}

TEST_F(CompareButtonTest, doesNothingWithoutAnItem) {
    press();
    EXPECT_EQ(rows(), nullptr);
    resolve();
    EXPECT_EQ(rows(), nullptr) << "nothing was asked for";
}

TEST_F(CompareButtonTest, showsAndHidesWhatIsStoredAndFound) {
    resolve();
    EXPECT_TRUE(comparedWith.empty()) << "nothing is compared before it is asked for";
    const std::string path = pathText();
    press();
    ASSERT_NE(rows(), nullptr);
    EXPECT_EQ(rows()->text(0, 3), "b");
    EXPECT_EQ(comparedWith.back(), std::pair(bytesOf("bookmark"), bytesOf("made")));
    EXPECT_TRUE(note().starts_with("The item is at the stored path.")) << note();
    EXPECT_EQ(pathText(), path);
    EXPECT_EQ(outputText(), analysis);
    press();
    EXPECT_EQ(rows(), nullptr);
    EXPECT_EQ(note(), "");
}

TEST_F(CompareButtonTest, followsThePathField) {
    resolve();
    press();
    bookmarks.resolved->match.item = platform::ItemMatch::search;
    comparedFacts.front().found = Value("c");
    resolve();
    EXPECT_EQ(rows()->text(0, 3), "c");
    EXPECT_TRUE(note().contains("moved"));

    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    resolve();
    EXPECT_EQ(rows(), nullptr);
    EXPECT_EQ(note(), "");
    bookmarks.resolved = platform::ResolvedBookmark{url, false};
    resolve();
    EXPECT_NE(rows(), nullptr) << "it was not hidden by the user";
}

TEST_F(CompareButtonTest, saysWhyTheItemIsNotCompared) {
    bookmarks.made = std::unexpected(platform::posixError(EACCES));
    resolve();
    press();
    EXPECT_NE(rows(), nullptr) << "what is stored is known";
    EXPECT_EQ(status(), "The facts of the item cannot be read: Permission denied.");
}

} // namespace
} // namespace tolvane::tests
