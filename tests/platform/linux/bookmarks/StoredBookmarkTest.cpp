#include "platform/linux/bookmarks/StoredBookmark.h"

#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/bookmark/format/OldAliasRecord.h"
#include "platform/linux/files/FileDescriptor.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <ostream>
#include <span>
#include <string>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using namespace std::string_literals;
using namespace tests;

/// A file of the corpus of bookmarks.
std::string corpusPath(const std::string& name) {
    return TOLVANE_SOURCE_DIR "/tests/data/bookmarks/" + name;
}

std::string corpus(const std::string& name) {
    return contentsOfFile(corpusPath(name));
}

std::string storedIn(const std::string& path) {
    const auto bookmark = storedBookmark(URL::fileURLWithPath(path));
    if (!bookmark) {
        ADD_FAILURE() << path << ": " << bookmark.error().localizedDescription();
        return {};
    }
    return std::string(textOf(*bookmark));
}

struct Failure {
    std::int64_t code = 0;
    std::string sentence;

    friend bool operator==(const Failure&, const Failure&) = default;
    friend void PrintTo(const Failure& failure, std::ostream* out) {
        *out << failure.code << " " << failure.sentence;
    }
};

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
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(offset + i) = static_cast<char>(word >> (8 * i));
    }
    return bytes;
}

/// Gives the file a resource fork under this name; false where the file system keeps no attributes.
bool setFork(const std::string& path, const std::string& name, const Data& fork) {
    return setExtendedAttribute(path, name, textOf(fork));
}

// What holds one

TEST(StoredBookmark, isTheBareFormOfAnAliasFile) {
    EXPECT_EQ(storedIn(corpusPath("note.alias")), corpus("note.bookmark"));
    EXPECT_EQ(storedIn(corpusPath("share.alias")).substr(48), corpus("share.alias").substr(56));
}

TEST(StoredBookmark, isGivenByteForByteByAFileThatHoldsItBare) {
    for (const std::string name :
         {"note.bookmark", "alias-record.bookmark", "odd-security-scope-key.bookmark",
          "odd-long-header.bookmark", "odd-version-word.bookmark"}) {
        EXPECT_EQ(storedIn(corpusPath(name)), corpus(name)) << name;
    }
}

TEST(StoredBookmark, endsWhereItsHeaderSays) {
    const TemporaryFolder folder;
    const std::string more(100'000, 'x');
    EXPECT_EQ(storedIn(folder.file("a", corpus("note.alias") + more)), corpus("note.bookmark"));
    EXPECT_EQ(storedIn(folder.file("b", corpus("note.bookmark") + more)), corpus("note.bookmark"));
}

TEST(StoredBookmark, canBeLongerThanOneRead) {
    const TemporaryFolder folder;
    const Data bookmark = bookmarkOfAliasRecord(Data(1'000'000, std::byte{7}));
    EXPECT_EQ(storedIn(folder.file("a", textOf(bookmark))), textOf(bookmark));
}

TEST(StoredBookmark, isReadFromAFileOfAnotherUserToo) {
    const TemporaryFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const std::string path = folder.file("a", corpus("note.alias"));
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(
        answerOfUnprivilegedChild([&] { return storedBookmark(URL::fileURLWithPath(path)) ? 1 : 0; }), 1);
}

// Alias files from before there were bookmarks

TEST(StoredBookmark, isMadeOfTheAliasRecordInAResourceFork) {
    const TemporaryFolder folder;
    const Data record = aliasBytes(2, 0, "Disk");
    for (const std::string name :
         {"user.com.apple.ResourceFork", "osx.com.apple.ResourceFork", "user.org.netatalk.ResourceFork"}) {
        for (const char* const contents : {"", "no bookmark"}) {
            const std::string path = folder.file(name + contents, contents);
            if (!setFork(path, name, forkWith({{0, record}}))) {
                // The second name is one that few file systems take.
                continue;
            }
            const std::string bookmark = storedIn(path);
            const auto bytes = std::as_bytes(std::span(bookmark));
            const auto structure = readBookmark(bytes);
            ASSERT_TRUE(structure);
            EXPECT_EQ(structure->header.container, BookmarkContainer::bareAlias);
            EXPECT_EQ(
                BookmarkItems(*structure, table_identifier::target).value(bookmark_key::aliasRecord),
                Value(record));
            EXPECT_EQ(textOf(bookmarkBytes(*structure)), bookmark);
        }
    }
    if (!setFork(folder.file("any"), "user.com.apple.ResourceFork", {})) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
}

TEST(StoredBookmark, inTheDataComesBeforeThatInTheResourceFork) {
    const TemporaryFolder folder;
    const std::string sound = folder.file("a", corpus("note.alias"));
    const std::string damaged = folder.file("b", corpus("bad-record-past-end.bookmark"));
    for (const std::string& path : {sound, damaged}) {
        if (!setFork(path, "user.com.apple.ResourceFork", forkWith({{0, aliasBytes(2, 0, "Disk")}}))) {
            GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
        }
    }
    EXPECT_EQ(storedIn(sound), corpus("note.bookmark"));
    EXPECT_EQ(failureFor(damaged).code, 259);
}

TEST(StoredBookmark, isNotMadeOfAResourceForkWithoutAnAliasRecord) {
    const TemporaryFolder folder;
    Data noAlias = forkWith({{0, Data(150)}});
    const Data cut = [] {
        Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
        fork.pop_back();
        return fork;
    }();
    for (const Data& fork : {noAlias, cut, Data{}, Data(3)}) {
        const std::string path = folder.file("a");
        if (!setFork(path, "user.com.apple.ResourceFork", fork)) {
            GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
        }
        EXPECT_EQ(failureFor(path), (Failure{259, "The file holds no bookmark data."}));
    }
}

// What holds none

TEST(StoredBookmark, isNotFoundWhereThereIsNoFile) {
    const TemporaryFolder folder;
    const Failure expected{260, "The file was not found."};
    EXPECT_EQ(failureFor(folder.path("missing")), expected);
    EXPECT_EQ(failureFor(folder.file("file", corpus("note.alias")) + "/"), expected);
    EXPECT_EQ(failureFor(folder.path("file/below")), expected);
}

TEST(StoredBookmark, isNotFoundInOtherFiles) {
    const TemporaryFolder folder;
    const Failure expected{259, "The file holds no bookmark data."};
    for (const std::string& contents :
         {""s, "b"s, "boo"s, "plain text"s, "Book"s + std::string(100, '\0'), std::string(100'000, 'x'),
          "book\0\0"s, "book\0\0\0\0mark\0\0\0\0\x38"s}) {
        EXPECT_EQ(failureFor(folder.file("a", contents)), expected) << contents.size();
    }
}

TEST(StoredBookmark, isNotLookedForBehindALink) {
    const TemporaryFolder folder;
    folder.file("a", corpus("note.alias"));
    const auto expected = [](const std::string& target) {
        return Failure{
            259, "A symbolic link holds no bookmark data; it leads to “" + target + "” and is not followed."};
    };
    EXPECT_EQ(failureFor(folder.symlink("link", "a")), expected("a"));
    EXPECT_EQ(failureFor(folder.symlink("dangling", "nowhere")), expected("nowhere"));
    EXPECT_EQ(failureFor(folder.symlink("loop", "loop")), expected("loop"));
    EXPECT_EQ(failureFor(folder.symlink("unreadable", "\xFF")), expected("\uFFFD"));
    folder.folder("real");
    folder.file("real/b", corpus("note.alias"));
    folder.symlink("way", "real");
    EXPECT_EQ(storedIn(folder.path("way/b")), corpus("note.bookmark")) << "links on the way are no matter";
}

TEST(StoredBookmark, isNotLookedForInItemsThatAreNoFiles) {
    const TemporaryFolder folder;
    EXPECT_EQ(failureFor(folder.path()), (Failure{259, "A folder holds no bookmark data."}));
    EXPECT_EQ(failureFor(folder.fifo("fifo")), (Failure{259, "A FIFO holds no bookmark data."}));
    EXPECT_EQ(failureFor(folder.socket("socket")), (Failure{259, "A socket holds no bookmark data."}));
    EXPECT_EQ(failureFor("/dev/null"), (Failure{259, "A device holds no bookmark data."}));
    EXPECT_EQ(failureFor("/dev/zero"), (Failure{259, "A device holds no bookmark data."}));
}

/// Whether the item was opened while its bookmark was asked for.
bool isOpenedFor(const std::string& path) {
    const auto watch = FileDescriptor::owned(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    EXPECT_GE(inotify_add_watch(watch.number(), path.c_str(), IN_OPEN), 0) << std::strerror(errno);
    static_cast<void>(storedBookmark(URL::fileURLWithPath(path)));
    std::array<char, 4'096> events{};
    return read(watch.number(), events.data(), events.size()) > 0;
}

// Whoever waits at the other end of a FIFO goes on once it is opened, and some devices act on being opened.
TEST(StoredBookmark, isNotLookedForByOpeningWhatIsNoFile) {
    const TemporaryFolder folder;
    EXPECT_TRUE(isOpenedFor(folder.file("file", "text")));
    EXPECT_FALSE(isOpenedFor(folder.fifo("fifo")));
    EXPECT_FALSE(isOpenedFor(folder.folder("folder")));
    folder.symlink("link", "file");
    const std::string target = folder.path("file");
    const auto watch = FileDescriptor::owned(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    ASSERT_GE(inotify_add_watch(watch.number(), target.c_str(), IN_OPEN), 0);
    EXPECT_EQ(failureFor(folder.path("link")).code, 259);
    std::array<char, 4'096> events{};
    EXPECT_LT(read(watch.number(), events.data(), events.size()), 0) << "the target was opened";
}

TEST(StoredBookmark, cannotBeReadWithoutPermission) {
    const TemporaryFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const std::string unreadable = folder.file("a", corpus("note.alias"));
    ASSERT_EQ(chmod(unreadable.c_str(), 0), 0);
    folder.folder("closed");
    const std::string below = folder.file("closed/b", corpus("note.alias"));
    ASSERT_EQ(chmod(folder.path("closed").c_str(), 0), 0);
    for (const std::string& path : {unreadable, below}) {
        const int answer = answerOfUnprivilegedChild([&path] {
            const Failure expected{257, "Permission to read the file was denied."};
            return failureFor(path) == expected ? 0 : 1;
        });
        EXPECT_EQ(answer, 0) << path;
    }
    ASSERT_EQ(chmod(folder.path("closed").c_str(), 0755), 0);
}

TEST(StoredBookmark, isToldOfAnotherReasonInTheSystemsWords) {
    EXPECT_EQ(
        failureFor("/" + std::string(300, 'a')),
        (Failure{256, "The file cannot be read: File name too long."}));
    EXPECT_EQ(failureFor(*URL::fromText("http://host/a")), (Failure{256, "The URL does not name a file."}));
    EXPECT_EQ(failureFor(*URL::fromText("file:///a%00b")), (Failure{256, "The URL does not name a file."}));
}

// Damage

TEST(StoredBookmark, isRefusedWhenCutOff) {
    const TemporaryFolder folder;
    for (const std::string name : {"note.alias", "note.bookmark"}) {
        const std::string whole = corpus(name);
        for (std::size_t length = 56; length < whole.size(); length += 7) {
            const Failure failure = failureFor(folder.file("a", whole.substr(0, length)));
            EXPECT_EQ(failure.code, 259) << name << " " << length;
            EXPECT_TRUE(failure.sentence.starts_with("Not a readable bookmark: expected "))
                << failure.sentence;
        }
    }
    EXPECT_EQ(
        failureFor(folder.file("a", corpus("note.alias").substr(0, 655))).sentence,
        "Not a readable bookmark: expected a length of the data section within the bytes that are there at "
        "byte 24.");
}

TEST(StoredBookmark, isNotReadWhenItClaimsToBeHuge) {
    const TemporaryFolder folder;
    const std::string bare = folder.file("a", withWord(corpus("note.bookmark"), 4, UINT32_MAX));
    const std::string alias = folder.file("b", withWord(corpus("note.alias"), 24, UINT32_MAX - 55));
    const std::string most = folder.file("c", withWord(corpus("note.bookmark"), 4, (16U << 20U) + 1));
    const std::string less = folder.file("d", withWord(corpus("note.bookmark"), 4, 16U << 20U));
    // Holes: none of it is on the disk, and all of it could be read.
    for (const std::string& path : {bare, alias, most}) {
        ASSERT_EQ(truncate(path.c_str(), std::int64_t{5} << 30), 0) << std::strerror(errno);
    }
    const auto refusal = [](const std::string& count) {
        return Failure{
            259,
            "The file claims to hold " + count + " bytes of bookmark data; more than 16777216 are not read."};
    };
    EXPECT_EQ(failureFor(bare), refusal("4294967295"));
    EXPECT_EQ(failureFor(alias), refusal("4294967296"));
    EXPECT_EQ(failureFor(most), refusal("16777217"));
    EXPECT_TRUE(failureFor(less).sentence.starts_with("Not a readable bookmark: ")) << "as much is read";
}

} // namespace

} // namespace tolvane::platform
