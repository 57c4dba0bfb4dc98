// The bookmark verbs of the program itself, on real files.
#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>
#include <fcntl.h>

namespace tolvane::tests {
namespace {

using Texts = std::vector<std::string>;

class Bookmark : public testing::Test {
protected:
    /// What "bookmark show" prints with these arguments.
    static std::string shown(Texts arguments, const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"bookmark", "show"});
        return printed(arguments, input);
    }

    TemporaryFolder folder;
};

TEST_F(Bookmark, isShownTheSameInEveryFormOfInput) {
    const std::string bytes = corpusText("note.bookmark");
    std::string wrapped = base64Of(bytes);
    for (std::size_t place = 76; place < wrapped.size(); place += 77) {
        wrapped.insert(place, "\n");
    }
    const std::string expected = shown({base64Of(bytes)});
    EXPECT_THAT(
        expected, testing::StartsWith(
                      "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
                      "    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (\n        Users,\n"));
    EXPECT_TRUE(expected.ends_with("creationOptions:\"536870912\"])\n")) << expected;
    EXPECT_EQ(shown({}, wrapped), expected);
    EXPECT_EQ(shown({}, bytes), expected);
    for (const Texts& arguments :
         {Texts{wrapped}, Texts{"--", base64Of(bytes)}, Texts{"--file", corpusPath("note.bookmark")},
          Texts{"--file", folder.file("text", wrapped)}, Texts{"--file", corpusPath("note.alias")},
          Texts{"--file", folder.symlink("link", corpusPath("note.alias"))}}) {
        EXPECT_EQ(shown(arguments), expected) << arguments.back();
    }
}

TEST_F(Bookmark, canComeThroughAFifo) {
    const std::string fifo = folder.fifo("fifo");
    std::thread writer(
        [&fifo] { EXPECT_TRUE(platform::writeAll(openedFile(fifo, O_WRONLY), corpusText("note.alias"))); });
    const std::string text = shown({"--file", fifo});
    writer.join();
    EXPECT_EQ(text, shown({"--file", corpusPath("note.alias")}));
}

TEST_F(Bookmark, isReadFromAnAliasFileOfAnyName) {
    const std::string expected = base64Of(corpusText("note.bookmark")) + "\n";
    for (const std::string name : {"-x", "caf\xE9", "two\nlines", "-", "--help"}) {
        folder.file(name, corpusText("note.alias"));
        const auto outcome = run(tolvane({"bookmark", "read", "--", name}, {.folder = folder.path()}));
        EXPECT_EQ(outcome.out, expected) << name;
    }
}

TEST_F(Bookmark, isReadWithoutATrace) {
    const std::string path = folder.file("a", corpusText("note.alias"));
    const UntouchedItems items({path});
    printed({"bookmark", "read", path});
    items.expectSameStatus();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "nothing is left behind";
}

} // namespace
} // namespace tolvane::tests
