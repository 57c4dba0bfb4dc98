#include "platform/linux/bookmarks/StoredBookmark.h"

#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <utility>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using namespace tests;

std::string storedIn(const std::string& path) {
    const auto bookmark = storedBookmark(URL::fileURLWithPath(path));
    if (!bookmark) {
        ADD_FAILURE() << path << ": " << bookmark.error().localizedDescription();
        return {};
    }
    return std::string(textOf(*bookmark));
}

using Failure = std::pair<std::int64_t, std::string>;

Failure failureFor(const URL& url) {
    const auto bookmark = storedBookmark(url);
    if (bookmark) {
        ADD_FAILURE() << url.absoluteString() << " gave a bookmark";
        return {};
    }
    EXPECT_EQ(bookmark.error().domain, NSCocoaErrorDomain);
    return {bookmark.error().code, bookmark.error().localizedDescription()};
}

Failure failureFor(const std::string& path) {
    return failureFor(URL::fileURLWithPath(path));
}

std::string withWord(std::string bytes, std::size_t offset, std::uint32_t word) {
    return bytes.replace(offset, 4, littleEndian(word, 4));
}

using StoredBookmarkTest = FolderTest;

/// Alias files from before there were bookmarks.
class StoredBookmarkInForkTest : public AttributeTest {
protected:
    std::string fileWithFork(std::string_view name, std::string_view contents, const Data& fork) const {
        const std::string path = folder.file(name, contents);
        setAttribute(path, "user.com.apple.ResourceFork", textOf(fork));
        return path;
    }
};

TEST_F(StoredBookmarkTest, isTheBareFormOfAnAliasFile) {
    EXPECT_EQ(storedIn(corpusPath("note.alias")), corpusText("note.bookmark"));
    EXPECT_EQ(storedIn(corpusPath("share.alias")).substr(48), corpusText("share.alias").substr(56));
}

TEST_F(StoredBookmarkTest, isGivenByteForByteByAFileThatHoldsItBare) {
    for (const std::string name :
         {"note.bookmark", "alias-record.bookmark", "odd-security-scope-key.bookmark",
          "odd-long-header.bookmark", "odd-version-word.bookmark"}) {
        EXPECT_EQ(storedIn(corpusPath(name)), corpusText(name)) << name;
    }
}

TEST_F(StoredBookmarkTest, endsWhereItsHeaderSaysAndCanBeLongerThanOneRead) {
    const Data bookmark = bookmarkOfAliasRecord(Data(1'000'000, std::byte{7}));
    EXPECT_EQ(storedIn(folder.file("long", textOf(bookmark))), textOf(bookmark));
    const std::string more(100'000, 'x');
    EXPECT_EQ(storedIn(folder.file("a", corpusText("note.alias") + more)), corpusText("note.bookmark"));
    EXPECT_EQ(storedIn(folder.file("b", corpusText("note.bookmark") + more)), corpusText("note.bookmark"));
}

TEST_F(StoredBookmarkTest, canBeAnAliasRecordThatIsAllOfTheFile) {
    for (const unsigned version : {2U, 3U}) {
        const Data record = writtenAlias(noteAlias(version));
        EXPECT_EQ(storedIn(folder.file("a", textOf(record))), textOf(bookmarkOfAliasRecord(record)));
        EXPECT_EQ(
            failureFor(folder.file("b", std::string(textOf(record)) + "x")),
            (Failure{259, "The file holds no bookmark data."}));
    }
}

TEST_F(StoredBookmarkTest, isReadFromAFileOfAnotherUserToo) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const std::string path = folder.file("a", corpusText("note.alias"));
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(
        answerOfUnprivilegedChild([&] { return storedBookmark(URL::fileURLWithPath(path)) ? 1 : 0; }), 1);
}

TEST_F(StoredBookmarkInForkTest, isMadeOfTheAliasRecord) {
    const Data record = aliasBytes(2, 0, "Disk");
    for (const std::string name :
         {"user.com.apple.ResourceFork", "osx.com.apple.ResourceFork", "user.org.netatalk.ResourceFork"}) {
        for (const char* const contents : {"", "no bookmark"}) {
            const std::string path = folder.file(name + contents, contents);
            if (!setExtendedAttribute(path, name, textOf(forkWith({{0, record}})))) {
                EXPECT_TRUE(name.starts_with("osx.")) << "other names are for file systems of their own";
                continue;
            }
            const std::string bookmark = storedIn(path);
            const auto structure = readBookmark(std::as_bytes(std::span(bookmark)));
            ASSERT_TRUE(structure);
            EXPECT_EQ(structure->header.container, BookmarkContainer::bareAlias);
            EXPECT_EQ(
                BookmarkItems(*structure, table_identifier::target).value(bookmark_key::aliasRecord),
                Value(record));
            EXPECT_EQ(textOf(bookmarkBytes(*structure)), bookmark);
        }
    }
}

TEST_F(StoredBookmarkInForkTest, comesAfterOneInTheData) {
    const Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    EXPECT_EQ(storedIn(fileWithFork("a", corpusText("note.alias"), fork)), corpusText("note.bookmark"));
    EXPECT_EQ(failureFor(fileWithFork("b", corpusText("bad-record-past-end.bookmark"), fork)).first, 259);
}

TEST_F(StoredBookmarkInForkTest, isNotMadeWithoutAnAliasRecord) {
    Data cut = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    cut.pop_back();
    for (const Data& fork : {forkWith({{0, Data(150)}}), cut, Data{}, Data(3)}) {
        EXPECT_EQ(
            failureFor(fileWithFork("a", "", fork)), (Failure{259, "The file holds no bookmark data."}));
    }
}

TEST_F(StoredBookmarkTest, isNotFoundWhereThereIsNoFile) {
    const Failure expected{260, "The file was not found."};
    EXPECT_EQ(failureFor(folder.path("missing")), expected);
    EXPECT_EQ(failureFor(folder.file("file", corpusText("note.alias")) + "/"), expected);
    EXPECT_EQ(failureFor(folder.path("file/below")), expected);
}

TEST_F(StoredBookmarkTest, isNotFoundInOtherFiles) {
    const Failure expected{259, "The file holds no bookmark data."};
    for (const std::string& contents :
         {""s, "b"s, "boo"s, "plain text"s, "Book"s + std::string(100, '\0'), std::string(100'000, 'x'),
          "book\0\0"s, "book\0\0\0\0mark\0\0\0\0\x38"s}) {
        EXPECT_EQ(failureFor(folder.file("a", contents)), expected) << contents.size();
    }
}

TEST_F(StoredBookmarkTest, isNotLookedForBehindALink) {
    folder.file("a", corpusText("note.alias"));
    const auto expected = [](const std::string& target) {
        return Failure{
            259, "A symbolic link holds no bookmark data; it leads to “" + target + "” and is not followed."};
    };
    EXPECT_EQ(failureFor(folder.symlink("link", "a")), expected("a"));
    EXPECT_EQ(failureFor(folder.symlink("dangling", "nowhere")), expected("nowhere"));
    EXPECT_EQ(failureFor(folder.symlink("loop", "loop")), expected("loop"));
    EXPECT_EQ(failureFor(folder.symlink("unreadable", "\xFF")), expected("\uFFFD"));
    folder.folder("real");
    folder.file("real/b", corpusText("note.alias"));
    EXPECT_EQ(storedIn(folder.symlink("way", "real") + "/b"), corpusText("note.bookmark"))
        << "links on the way do not matter";
}

TEST_F(StoredBookmarkTest, isNotLookedForInItemsThatAreNoFiles) {
    for (const auto& [path, kind] :
         {std::pair(folder.path(), "folder"),
          {folder.fifo("fifo"), "FIFO"},
          {folder.socket("socket"), "socket"},
          {"/dev/null"s, "device"},
          {"/dev/zero"s, "device"}}) {
        EXPECT_EQ(failureFor(path), Failure(259, "A "s + kind + " holds no bookmark data."));
    }
}

/// Whether the item is opened while the bookmark of the other is looked for.
bool isOpenedFor(const std::string& item, const std::string& path) {
    const auto watch = FileDescriptor::owned(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    EXPECT_GE(inotify_add_watch(watch.number(), item.c_str(), IN_OPEN), 0) << std::strerror(errno);
    static_cast<void>(storedBookmark(URL::fileURLWithPath(path)));
    std::array<char, 4'096> events{};
    return read(watch.number(), events.data(), events.size()) > 0;
}

// Opening a FIFO wakes the program at its other end, and some devices act on it.
TEST_F(StoredBookmarkTest, isNotLookedForByOpeningWhatIsNoFile) {
    const std::string file = folder.file("file", "text");
    EXPECT_TRUE(isOpenedFor(file, file));
    EXPECT_FALSE(isOpenedFor(folder.fifo("fifo"), folder.path("fifo")));
    EXPECT_FALSE(isOpenedFor(folder.folder("folder"), folder.path("folder")));
    EXPECT_FALSE(isOpenedFor(file, folder.symlink("link", "file"))) << "the target was opened";
}

TEST_F(StoredBookmarkTest, cannotBeReadWithoutPermission) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const std::string unreadable = folder.file("a", corpusText("note.alias"));
    ASSERT_EQ(chmod(unreadable.c_str(), 0), 0);
    folder.folder("closed");
    const std::string below = folder.file("closed/b", corpusText("note.alias"));
    ASSERT_EQ(chmod(folder.path("closed").c_str(), 0), 0);
    for (const std::string& path : {unreadable, below}) {
        const Failure expected{257, "Permission to read the file was denied."};
        EXPECT_EQ(answerOfUnprivilegedChild([&] { return failureFor(path) == expected ? 1 : 0; }), 1) << path;
    }
    ASSERT_EQ(chmod(folder.path("closed").c_str(), 0755), 0);
}

TEST_F(StoredBookmarkTest, cannotBeReadForReasonsOfTheSystem) {
    EXPECT_EQ(
        failureFor("/" + std::string(300, 'a')),
        (Failure{256, "The file cannot be read: File name too long."}));
    EXPECT_EQ(failureFor(*URL::fromText("http://host/a")), (Failure{256, "The URL does not name a file."}));
    EXPECT_EQ(failureFor(*URL::fromText("file:///a%00b")), (Failure{256, "The URL does not name a file."}));
}

TEST_F(StoredBookmarkTest, isRefusedWhenCutOff) {
    for (const std::string name : {"note.alias", "note.bookmark"}) {
        const std::string whole = corpusText(name);
        for (std::size_t length = 56; length < whole.size(); length += 7) {
            const auto [code, sentence] = failureFor(folder.file("a", whole.substr(0, length)));
            EXPECT_EQ(code, 259) << name << " " << length;
            EXPECT_TRUE(sentence.starts_with("Not a readable bookmark: expected ")) << sentence;
        }
    }
    EXPECT_EQ(
        failureFor(folder.file("a", corpusText("note.alias").substr(0, 655))).second,
        "Not a readable bookmark: expected a length of the data section within the bytes that are there at "
        "byte 24.");
}

TEST_F(StoredBookmarkTest, isNotReadWhenItClaimsToBeHuge) {
    const std::string bare = folder.file("a", withWord(corpusText("note.bookmark"), 4, UINT32_MAX));
    const std::string alias = folder.file("b", withWord(corpusText("note.alias"), 24, UINT32_MAX - 55));
    const std::string most = folder.file("c", withWord(corpusText("note.bookmark"), 4, (16U << 20U) + 1));
    const std::string less = folder.file("d", withWord(corpusText("note.bookmark"), 4, 16U << 20U));
    for (const std::string& path : {bare, alias, most}) {
        ASSERT_EQ(truncate(path.c_str(), std::int64_t{5} << 30), 0) << std::strerror(errno);
    }
    const auto refusal = [](const std::string& count) {
        const auto* const limit = " bytes of bookmark data; more than 16777216 are not read.";
        return Failure{259, "The file claims to hold " + count + limit};
    };
    EXPECT_EQ(failureFor(bare), refusal("4294967295"));
    EXPECT_EQ(failureFor(alias), refusal("4294967296"));
    EXPECT_EQ(failureFor(most), refusal("16777217"));
    EXPECT_TRUE(failureFor(less).second.starts_with("Not a readable bookmark: ")) << "as much is read";
}

} // namespace
} // namespace tolvane::platform
