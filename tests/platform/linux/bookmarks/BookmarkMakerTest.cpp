#include "platform/linux/bookmarks/BookmarkMaker.h"

#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/services/URLResources.h"
#include "platform/values/Utf8.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Unprivileged.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::statusOf;
using tests::TemporaryFolder;
using Numbers = std::vector<std::optional<std::int64_t>>;

std::vector<std::string> componentsOf(const std::string& path) {
    std::vector<std::string> components;
    for (const auto& part : std::filesystem::path(path).relative_path()) {
        components.push_back(part.string());
    }
    return components;
}

// The numbers of the items along a real path, as lstat returns them.
Numbers numbersAlong(const std::string& path) {
    Numbers numbers;
    std::string text;
    for (const auto& component : componentsOf(path)) {
        text.append("/").append(component);
        numbers.emplace_back(statusOf(text).st_ino);
    }
    return numbers;
}

OwnAccount accountWithHome(const std::string& home) {
    return OwnAccount(
        4'000'000'000, [](std::uint32_t) { return std::optional<std::string>("demo"); },
        [home](std::uint32_t) { return std::optional(home); }, std::chrono::steady_clock::now);
}

class BookmarkMaking : public tests::FolderTest {
protected:
    Result<Data> make(const URL& url) {
        return BookmarkMaker(mounts, volumes, account, knownFolders).bookmarkData(url);
    }
    Result<Data> make(const std::string& path) { return make(URL::fileURLWithPath(path)); }

    BookmarkContents contents(const std::string& path) {
        const auto data = make(path);
        EXPECT_TRUE(data) << path << ": " << data.error().localizedDescription();
        const auto structure = data ? readBookmark(*data) : readBookmark({});
        EXPECT_TRUE(structure) << path;
        return structure ? bookmarkContents(*structure) : BookmarkContents();
    }

    std::int64_t errorOf(const URL& url) {
        const auto data = make(url);
        if (data) {
            return 0;
        }
        EXPECT_EQ(data.error().domain, NSCocoaErrorDomain);
        EXPECT_TRUE(data.error().localizedDescription().ends_with('.'));
        return data.error().code;
    }
    std::int64_t errorOf(const std::string& path) { return errorOf(URL::fileURLWithPath(path)); }

    CurrentMounts mounts;
    VolumeFacts volumes;
    std::chrono::steady_clock::time_point now;
    KnownFolders knownFolders{[this] { return now; }};
    OwnAccount account = accountWithHome("/nowhere");
};

// A path on another volume than "/" that may be written to, or nothing.
std::optional<std::string> otherVolume() {
    const std::string path = "/dev/shm";
    const bool isOther = std::filesystem::is_directory(path) && statusOf(path).st_dev != statusOf("/").st_dev;
    return isOther && access(path.c_str(), W_OK) == 0 ? std::optional(path) : std::nullopt;
}

TEST_F(BookmarkMaking, reportsTheRealPathAndItsNumbers) {
    folder.folder("a");
    folder.file("a/note.txt", "text");
    folder.symlink("link", "a");
    for (const auto* name : {"a/note.txt", "link/note.txt", "link/../a/./note.txt"}) {
        const auto bookmark = contents(folder.path(name));
        EXPECT_EQ(bookmark.pathComponents, componentsOf(real + "/a/note.txt")) << name;
        EXPECT_EQ(bookmark.fileIDs, numbersAlong(real + "/a/note.txt")) << name;
        EXPECT_EQ(bookmark.fileFlags, (BookmarkFlags{file_flag::regularFile, 0x0F, 0}));
        EXPECT_EQ(bookmark.creationDate, statusOfItem(folder.path("a/note.txt"))->creationDate);
        EXPECT_EQ(bookmark.options, 0x2000'0000U);
        EXPECT_EQ(bookmark.fileName, std::nullopt);
        EXPECT_EQ(bookmark.displayName, std::nullopt);
        EXPECT_FALSE(bookmark.wasFileIDFormat);
    }
}

TEST_F(BookmarkMaking, reportsTheKindOfEachItem) {
    const std::vector<std::pair<std::string, std::uint64_t>> kinds{
        {folder.file("file"), file_flag::regularFile},
        {folder.folder("folder"), file_flag::directory},
        {folder.symlink("link", "file"), file_flag::symbolicLink},
        {folder.symlink("dangling", "nothing"), file_flag::symbolicLink},
        {folder.fifo("fifo"), 0},
        {folder.socket("socket"), 0},
        {"/dev/null", 0}};
    for (const auto& [path, kind] : kinds) {
        const auto bookmark = contents(path);
        EXPECT_EQ(bookmark.fileFlags, (BookmarkFlags{kind, 0x0F, 0})) << path;
        EXPECT_EQ(bookmark.pathComponents->back(), path.substr(path.rfind('/') + 1));
        EXPECT_EQ(
            bookmark.fileIDs,
            numbersAlong(path.starts_with("/dev/") ? path : real + path.substr(path.rfind('/'))));
    }
}

TEST_F(BookmarkMaking, reportsTheRootOfTheSystem) {
    const auto bookmark = contents("/");
    EXPECT_THAT(bookmark.pathComponents.value(), IsEmpty());
    EXPECT_EQ(bookmark.fileIDs, std::nullopt);
    EXPECT_EQ(bookmark.fileFlags->values, file_flag::directory | file_flag::volume);
    EXPECT_EQ(bookmark.fileName, bookmark.volume.name);
    EXPECT_EQ(bookmark.volume.path, "/");
    EXPECT_EQ(bookmark.volume.url, "file:///");
    EXPECT_TRUE(bookmark.volume.wasBoot);
    EXPECT_EQ(bookmark.rootVolume, std::nullopt);
    EXPECT_THAT(bookmark.volumeDepths, IsEmpty());
    struct statvfs system{};
    ASSERT_EQ(statvfs("/", &system), 0);
    EXPECT_EQ(bookmark.volume.capacity, static_cast<std::int64_t>(system.f_blocks * system.f_frsize));
    EXPECT_EQ(bookmark.volume.creationDate, statusOfItem("/")->creationDate);
}

TEST_F(BookmarkMaking, reportsBothVolumesOfAnItemOnAnotherAndTheRootOfThatOne) {
    const auto place = otherVolume();
    if (!place) {
        GTEST_SKIP() << "there is no other volume to write to";
    }
    const TemporaryFolder other(*place);
    const auto path = other.file("file");
    const auto bookmark = contents(path);
    EXPECT_EQ(bookmark.pathComponents, componentsOf(path));
    EXPECT_EQ(bookmark.fileIDs, numbersAlong(path));
    EXPECT_EQ(bookmark.volume.path, *place);
    EXPECT_EQ(bookmark.volume.url, "file://" + *place + "/");
    EXPECT_FALSE(bookmark.volume.wasBoot);
    ASSERT_TRUE(bookmark.rootVolume);
    auto root = contents("/").volume;
    root.wasBoot = false;
    EXPECT_EQ(bookmark.rootVolume, root);
    EXPECT_THAT(
        bookmark.volumeDepths,
        ElementsAre(table_identifier::rootVolume, testing::_, table_identifier::target, 0, 0));
    const auto top = contents(*place);
    EXPECT_EQ(top.fileFlags->values, file_flag::directory | file_flag::volume);
    EXPECT_EQ(top.fileName, top.volume.name);
    EXPECT_EQ(top.volume.path, *place);
    EXPECT_EQ(top.volumeDepths.back(), table_identifier::target);
    EXPECT_EQ(top.fileIDs, numbersAlong(*place)) << "that of the mounted folder";
}

TEST_F(BookmarkMaking, reportsNoNumbersOfVolumesThatMakeThemUp) {
    const auto bookmark = contents("/proc/version");
    EXPECT_EQ(bookmark.fileIDs, (Numbers{std::nullopt, std::nullopt}));
    EXPECT_EQ(bookmark.volume.path, "/proc");
}

TEST_F(BookmarkMaking, reportsWhoseHomeFolderTheItemIsIn) {
    folder.folder("home");
    folder.folder("home/documents");
    folder.file("home/documents/a.txt");
    folder.symlink("link to home", "home");
    folder.file("outside");
    for (const char* const home : {"home", "home/", "link to home"}) {
        account = accountWithHome(folder.path(home));
        now += std::chrono::seconds(1);
        const auto bookmark = contents(folder.path("home/documents/a.txt"));
        EXPECT_EQ(bookmark.componentsBelowHome, 2) << home;
        EXPECT_EQ(bookmark.userName, "demo");
        EXPECT_EQ(bookmark.userID, 4'000'000'000);
        EXPECT_EQ(contents(folder.path("home/documents")).componentsBelowHome, 1);
        for (const auto* outside : {"outside", "home", "link to home"}) {
            const auto other = contents(folder.path(outside));
            EXPECT_EQ(other.componentsBelowHome, std::nullopt) << outside;
            EXPECT_EQ(other.userName, std::nullopt);
            EXPECT_EQ(other.userID, std::nullopt);
        }
    }
}

TEST_F(BookmarkMaking, reportsAnythingToBeInAHomeFolderThatIsTheRoot) {
    account = accountWithHome("/");
    const auto bookmark = contents(folder.file("file"));
    EXPECT_EQ(bookmark.componentsBelowHome, static_cast<std::int64_t>(componentsOf(real + "/file").size()));
    EXPECT_EQ(contents("/").componentsBelowHome, std::nullopt);
}

// The volume and the home folder are looked at for the first item of a folder, and again after a second.
TEST_F(BookmarkMaking, looksForTheHomeFolderOnceASecondForItemsOfOneFolder) {
    folder.folder("home");
    const auto file = real + "/home/file";
    folder.file("home/file");
    account = accountWithHome(real + "/home");
    EXPECT_EQ(contents(file).componentsBelowHome, 1);
    account = accountWithHome("/nowhere");
    now += std::chrono::milliseconds(999);
    EXPECT_EQ(contents(file).componentsBelowHome, 1);
    now += std::chrono::milliseconds(1);
    EXPECT_EQ(contents(file).componentsBelowHome, std::nullopt);
}

TEST_F(BookmarkMaking, tellsEachItemOfAFolderAsIfItWereTheOnlyOne) {
    folder.file("file");
    folder.folder("folder");
    folder.symlink("link", "file");
    folder.fifo("fifo");
    for (const std::string name : {"/file", "/folder", "/link", "/fifo", "/file"}) {
        const auto known = contents(real + name);
        now += std::chrono::seconds(1);
        EXPECT_EQ(contents(real + name), known) << name;
        EXPECT_EQ(known.fileIDs, numbersAlong(real + name));
    }
}

TEST_F(BookmarkMaking, looksAnewAtTheWayToAFolderThatWasReplaced) {
    const auto expectTrue = [this](const std::string& path, const std::string& where) {
        const auto bookmark = contents(path);
        EXPECT_EQ(bookmark.pathComponents, componentsOf(where));
        EXPECT_EQ(bookmark.fileIDs, numbersAlong(where));
    };
    std::filesystem::create_directories(real + "/a/b/c");
    for (const auto* name : {"one", "two"}) {
        folder.file(std::string("a/b/c/") + name);
    }
    expectTrue(real + "/a/b/c/one", real + "/a/b/c/one");

    // Another folder of the same name.
    std::filesystem::rename(real + "/a/b/c", real + "/a/b/former");
    std::filesystem::create_directory(real + "/a/b/c");
    folder.file("a/b/c/two");
    expectTrue(real + "/a/b/c/two", real + "/a/b/c/two");

    // The same folder in another one of the same name.
    std::filesystem::create_directory(real + "/a/new");
    std::filesystem::rename(real + "/a/b/c", real + "/a/new/c");
    std::filesystem::rename(real + "/a/b", real + "/a/former");
    std::filesystem::rename(real + "/a/new", real + "/a/b");
    expectTrue(real + "/a/b/c/two", real + "/a/b/c/two");

    // A link to it in place of a folder on the way.
    std::filesystem::rename(real + "/a/b", real + "/a/elsewhere");
    folder.symlink("a/b", "elsewhere");
    expectTrue(real + "/a/b/c/two", real + "/a/elsewhere/c/two");
}

TEST_F(BookmarkMaking, keepsNamesAsTheyAre) {
    for (const std::string name :
         {" ", "line\nfeed", "caf\u00e9", "cafe\u0301", "\U0001F469\u200D\U0001F680", "..."}) {
        EXPECT_EQ(contents(folder.file(name)).pathComponents->back(), name);
    }
}

TEST_F(BookmarkMaking, failsForNamesThatAreNoText) {
    EXPECT_EQ(errorOf(folder.file("caf\xe9")), 258);
    folder.folder("\xff");
    EXPECT_EQ(errorOf(folder.file("\xff/file")), 258);
    folder.symlink("\xfe", folder.folder("text"));
    EXPECT_EQ(errorOf(folder.file("\xfe/file")), 0) << "the way to an item does not matter";
}

TEST_F(BookmarkMaking, failsForWhatIsNotThere) {
    folder.symlink("loop", "loop");
    EXPECT_EQ(errorOf(folder.path("none")), 260);
    EXPECT_EQ(errorOf(folder.file("file") + "/below"), 260);
    EXPECT_EQ(errorOf(folder.file("file") + "/"), 260);
    EXPECT_EQ(errorOf(folder.path("loop/below")), 256);
    EXPECT_EQ(errorOf(folder.path(std::string(256, 'n'))), 258);
    EXPECT_EQ(errorOf(folder.path("a") + std::string(1, '\0')), 260);
    EXPECT_EQ(errorOf(URL::fromText("file://").value_or(URL::fileURLWithPath("/none"))), 260);
    EXPECT_EQ(errorOf(URL::fromText("https://example.com/").value()), 262);
}

TEST_F(BookmarkMaking, needsPermissionToSearchTheFoldersButNotToReadTheItem) {
    const auto unreadable = folder.file("unreadable", "secret");
    const auto closed = folder.folder("closed");
    const auto inClosed = folder.file("closed/file");
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(unreadable.c_str(), 0), 0);
    ASSERT_EQ(chmod(closed.c_str(), 0), 0);
    for (const auto& [path, code] : {std::pair(unreadable, 0), {closed, 0}, {inClosed, 257}}) {
        EXPECT_EQ(tests::answerOfUnprivilegedChild([&] { return errorOf(path) == code ? 1 : 0; }), 1) << path;
    }
    EXPECT_EQ(chmod(closed.c_str(), 0755), 0);
}

TEST_F(BookmarkMaking, makesNoBookmarkOfAnotherItemThanThatOfTheURL) {
    const auto file = folder.file("file");
    URL url = URL::fileURLWithPath(file);
    url.keepResourceValue(NSURLFileResourceIdentifierKey, resourceIdentifier(statusOfItem(file).value()));
    EXPECT_EQ(errorOf(url), 0);
    folder.file("other");
    ASSERT_EQ(rename(folder.path("other").c_str(), file.c_str()), 0);
    EXPECT_EQ(errorOf(url), 256);
    EXPECT_EQ(errorOf(file), 0);
    ASSERT_EQ(unlink(file.c_str()), 0);
    EXPECT_EQ(errorOf(url), 260);
}

// Some links of the kernel's own lead elsewhere than the path that they show.
TEST_F(BookmarkMaking, isNotLedAstrayByLinksThatDoNotMeanTheirText) {
    const auto held = folder.folder("held");
    folder.file("held/file");
    const auto descriptor = FileDescriptor::owned(open(held.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor.number()) + "/";
    EXPECT_EQ(contents(link + "file").pathComponents, componentsOf(real + "/held/file"));
    ASSERT_EQ(rename(held.c_str(), folder.path("moved").c_str()), 0);
    folder.folder("held (deleted)");
    EXPECT_EQ(contents(link + "file").pathComponents, componentsOf(real + "/moved/file"));
    ASSERT_EQ(unlink(folder.path("moved/file").c_str()), 0);
    ASSERT_EQ(rmdir(folder.path("moved").c_str()), 0);
    folder.folder("moved (deleted)");
    EXPECT_EQ(errorOf(link), 256);
}

TEST_F(BookmarkMaking, doesNotMindHowDeepAnItemLies) {
    std::string name;
    for (int i = 0; i <= 200; ++i) {
        name += "/d";
    }
    std::filesystem::create_directories(real + name);
    EXPECT_EQ(contents(real + name).fileIDs, numbersAlong(real + name));
}

TEST_F(BookmarkMaking, agreesWithTheSystemAboutItsOwnFiles) {
    constexpr int enough = 5'000;
    int count = 0;
    std::error_code fault;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    std::filesystem::recursive_directory_iterator entry(
        std::filesystem::canonical("/usr/share"), options, fault);
    for (const auto end = std::filesystem::end(entry); !fault && entry != end && count < enough;
         entry.increment(fault)) {
        const auto path = entry->path().string();
        if (!isValidUtf8(path)) {
            continue;
        }
        const auto bookmark = contents(path);
        ASSERT_EQ(bookmark.pathComponents, componentsOf(path));
        ASSERT_EQ(bookmark.fileIDs, numbersAlong(path)) << path;
        ASSERT_EQ(bookmark.creationDate, statusOfItem(path)->creationDate) << path;
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace
} // namespace tolvane::platform
