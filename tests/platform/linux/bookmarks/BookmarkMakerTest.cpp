#include "platform/linux/bookmarks/BookmarkMaker.h"

#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/services/URLResources.h"
#include "platform/values/Utf8.h"
#include "tests/support/MountNamespace.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::TemporaryFolder;
using Numbers = std::vector<std::optional<std::int64_t>>;

std::string realPathOf(const std::string& path) {
    std::array<char, PATH_MAX> buffer{};
    return realpath(path.c_str(), buffer.data()) != nullptr ? buffer.data() : "";
}

std::vector<std::string> componentsOf(const std::string& path) {
    std::vector<std::string> components;
    for (const auto& part : std::filesystem::path(path).relative_path()) {
        components.push_back(part.string());
    }
    return components;
}

// The numbers of the items along a real path, as lstat tells them.
Numbers numbersAlong(const std::string& path) {
    Numbers numbers;
    std::string text;
    for (const auto& component : componentsOf(path)) {
        text.append("/").append(component);
        struct stat status{};
        EXPECT_EQ(lstat(text.c_str(), &status), 0) << text;
        numbers.emplace_back(static_cast<std::int64_t>(status.st_ino));
    }
    return numbers;
}

std::uint64_t deviceOf(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_dev;
}

OwnAccount accountWithHome(const std::string& home) {
    return OwnAccount(
        4'000'000'000, [](std::uint32_t) { return std::optional<std::string>("demo"); },
        [home](std::uint32_t) { return std::optional(home); }, std::chrono::steady_clock::now);
}

class BookmarkMaking : public testing::Test {
protected:
    Result<Data> make(const URL& url) { return BookmarkMaker(mounts, volumes, account).bookmarkData(url); }
    Result<Data> make(const std::string& path) { return make(URL::fileURLWithPath(path)); }

    // What the bookmark of the item tells when it is read back.
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

    const TemporaryFolder folder;
    const std::string real = realPathOf(folder.path());
    CurrentMounts mounts;
    VolumeFacts volumes;
    OwnAccount account = accountWithHome("/nowhere");
};

// A path on another volume than "/", or nothing.
std::optional<std::string> otherVolume() {
    const std::string path = "/dev/shm";
    struct stat status{};
    const bool isThere = lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    return isThere && status.st_dev != deviceOf("/") && access(path.c_str(), W_OK) == 0 ? std::optional(path)
                                                                                        : std::nullopt;
}

} // namespace

TEST_F(BookmarkMaking, tellsTheRealPathAndItsNumbers) {
    folder.folder("a");
    folder.file("a/note.txt", "text");
    folder.symlink("link", "a");
    for (const auto* name : {"a/note.txt", "link/note.txt", "link/../a/./note.txt"}) {
        const auto told = contents(folder.path(name));
        EXPECT_EQ(told.pathComponents, componentsOf(real + "/a/note.txt")) << name;
        EXPECT_EQ(told.fileIDs, numbersAlong(real + "/a/note.txt")) << name;
        EXPECT_EQ(told.fileFlags, (BookmarkFlags{file_flag::regularFile, 0x0F, 0}));
        EXPECT_EQ(told.creationDate, statusOfItem(folder.path("a/note.txt"))->creationDate);
        EXPECT_EQ(told.options, 0x2000'0000U);
        EXPECT_EQ(told.fileName, std::nullopt);
        EXPECT_EQ(told.displayName, std::nullopt);
        EXPECT_FALSE(told.wasFileIDFormat);
    }
}

TEST_F(BookmarkMaking, tellsTheKindOfEachItem) {
    const std::vector<std::pair<std::string, std::uint64_t>> kinds{
        {folder.file("file"), file_flag::regularFile},
        {folder.folder("folder"), file_flag::directory},
        {folder.symlink("link", "file"), file_flag::symbolicLink},
        {folder.symlink("dangling", "nothing"), file_flag::symbolicLink},
        {folder.fifo("fifo"), 0},
        {folder.socket("socket"), 0},
        {"/dev/null", 0}};
    for (const auto& [path, kind] : kinds) {
        const auto told = contents(path);
        EXPECT_EQ(told.fileFlags, (BookmarkFlags{kind, 0x0F, 0})) << path;
        EXPECT_EQ(told.pathComponents->back(), path.substr(path.rfind('/') + 1));
        EXPECT_EQ(
            told.fileIDs,
            numbersAlong(realPathOf(path.substr(0, path.rfind('/'))) + path.substr(path.rfind('/'))));
    }
}

TEST_F(BookmarkMaking, tellsTheRootOfTheSystem) {
    const auto told = contents("/");
    EXPECT_THAT(told.pathComponents.value(), IsEmpty());
    EXPECT_EQ(told.fileIDs, std::nullopt);
    EXPECT_EQ(told.fileFlags->values, file_flag::directory | file_flag::volume);
    EXPECT_EQ(told.fileName, told.volume.name);
    EXPECT_EQ(told.volume.path, "/");
    EXPECT_EQ(told.volume.url, "file:///");
    EXPECT_TRUE(told.volume.wasBoot);
    EXPECT_EQ(told.rootVolume, std::nullopt);
    EXPECT_THAT(told.volumeDepths, IsEmpty());
    struct statvfs system{};
    ASSERT_EQ(statvfs("/", &system), 0);
    EXPECT_EQ(told.volume.capacity, static_cast<std::int64_t>(system.f_blocks * system.f_frsize));
    EXPECT_EQ(told.volume.creationDate, statusOfItem("/")->creationDate);
}

TEST_F(BookmarkMaking, tellsBothVolumesOfAnItemOnAnother) {
    const auto place = otherVolume();
    if (!place) {
        GTEST_SKIP() << "there is no other volume to write to";
    }
    const TemporaryFolder other(*place);
    const auto path = other.file("file");
    const auto told = contents(path);
    EXPECT_EQ(told.pathComponents, componentsOf(path));
    EXPECT_EQ(told.fileIDs, numbersAlong(path));
    EXPECT_EQ(told.volume.path, *place);
    EXPECT_EQ(told.volume.url, "file://" + *place + "/");
    EXPECT_FALSE(told.volume.wasBoot);
    ASSERT_TRUE(told.rootVolume);
    auto root = contents("/").volume;
    root.wasBoot = false;
    EXPECT_EQ(told.rootVolume, root);
    ASSERT_EQ(told.volumeDepths.size(), told.pathComponents->size() + 1);
    EXPECT_EQ(told.volumeDepths[0], table_identifier::rootVolume);
    EXPECT_EQ(told.volumeDepths[2], table_identifier::target);
    EXPECT_EQ(told.volumeDepths[3], 0U);
    EXPECT_EQ(told.volumeDepths[4], 0U);
}

TEST_F(BookmarkMaking, tellsTheRootOfAVolume) {
    const auto place = otherVolume();
    if (!place) {
        GTEST_SKIP() << "there is no other volume";
    }
    const auto told = contents(*place);
    EXPECT_EQ(told.fileFlags->values, file_flag::directory | file_flag::volume);
    EXPECT_EQ(told.fileName, told.volume.name);
    EXPECT_EQ(told.volume.path, *place);
    EXPECT_EQ(told.volumeDepths.back(), table_identifier::target);
    struct stat status{};
    ASSERT_EQ(lstat(place->c_str(), &status), 0);
    EXPECT_EQ(told.fileIDs->back(), static_cast<std::int64_t>(status.st_ino)) << "that of the mounted folder";
}

TEST_F(BookmarkMaking, tellsNoNumbersOfVolumesThatMakeThemUp) {
    const auto told = contents("/proc/version");
    ASSERT_TRUE(told.fileIDs);
    EXPECT_THAT(*told.fileIDs, ElementsAre(std::nullopt, std::nullopt));
    EXPECT_EQ(told.volume.path, "/proc");
}

TEST_F(BookmarkMaking, tellsWhoseHomeFolderTheItemIsIn) {
    folder.folder("home");
    folder.folder("home/documents");
    folder.file("home/documents/a.txt");
    folder.symlink("link to home", "home");
    folder.file("outside");
    for (const auto* home : {"home", "home/", "link to home"}) {
        account = accountWithHome(folder.path(home));
        const auto told = contents(folder.path("home/documents/a.txt"));
        EXPECT_EQ(told.componentsBelowHome, 2) << home;
        EXPECT_EQ(told.userName, "demo");
        EXPECT_EQ(told.userID, 4'000'000'000);
        EXPECT_EQ(contents(folder.path("home/documents")).componentsBelowHome, 1);
        for (const auto* outside : {"outside", "home", "link to home"}) {
            const auto other = contents(folder.path(outside));
            EXPECT_EQ(other.componentsBelowHome, std::nullopt) << outside;
            EXPECT_EQ(other.userName, std::nullopt);
            EXPECT_EQ(other.userID, std::nullopt);
        }
    }
}

TEST_F(BookmarkMaking, tellsAnythingToBeInAHomeFolderThatIsTheRoot) {
    account = accountWithHome("/");
    const auto path = folder.file("file");
    EXPECT_EQ(
        contents(path).componentsBelowHome, static_cast<std::int64_t>(componentsOf(real + "/file").size()));
    EXPECT_EQ(contents("/").componentsBelowHome, std::nullopt);
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
    // What matters is where the item is, not which way one came.
    folder.folder("text");
    folder.file("text/file");
    folder.symlink("\xfe", "text");
    EXPECT_EQ(errorOf(folder.path("\xfe/file")), 0);
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

TEST_F(BookmarkMaking, failsWhereTheWayMayNotBeSearched) {
    const auto closed = folder.folder("closed");
    const auto file = folder.file("closed/file");
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(closed.c_str(), 0), 0);
    const int answer = tests::answerOfUnprivilegedChild(
        [&] { return errorOf(file) == 257 && errorOf(closed) == 0 ? 0 : 1; });
    EXPECT_EQ(chmod(closed.c_str(), 0755), 0);
    EXPECT_EQ(answer, 0);
}

TEST_F(BookmarkMaking, needsNoPermissionToReadTheItem) {
    const auto file = folder.file("file", "secret");
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    EXPECT_EQ(tests::answerOfUnprivilegedChild([&] { return errorOf(file) == 0 ? 0 : 1; }), 0);
}

TEST_F(BookmarkMaking, makesNoBookmarkOfAnotherItemThanTheURLWasToldOf) {
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
    const std::string through = "/proc/self/fd/" + std::to_string(descriptor.number()) + "/file";
    EXPECT_EQ(contents(through).pathComponents, componentsOf(real + "/held/file"));
    ASSERT_EQ(rename(held.c_str(), folder.path("moved").c_str()), 0);
    folder.folder("held (deleted)");
    EXPECT_EQ(contents(through).pathComponents, componentsOf(real + "/moved/file"));
    ASSERT_EQ(unlink(folder.path("moved/file").c_str()), 0);
    ASSERT_EQ(rmdir(folder.path("moved").c_str()), 0);
    folder.folder("moved (deleted)");
    EXPECT_EQ(errorOf("/proc/self/fd/" + std::to_string(descriptor.number()) + "/"), 256);
}

TEST_F(BookmarkMaking, doesNotMindHowDeepAnItemLies) {
    std::string name = "d";
    static_cast<void>(folder.folder(name));
    for (int i = 0; i < 200; ++i) {
        name += "/d";
        static_cast<void>(folder.folder(name));
    }
    const auto told = contents(folder.path(name));
    EXPECT_EQ(told.fileIDs, numbersAlong(real + "/" + name));
}

// Thousands of files that nobody made for the test.
TEST_F(BookmarkMaking, agreesWithTheSystemAboutItsOwnFiles) {
    constexpr int enough = 5'000;
    const std::string tree = "/usr/share";
    int count = 0;
    std::error_code fault;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    std::filesystem::recursive_directory_iterator entry(tree, options, fault);
    const auto parent = realPathOf(tree);
    for (; !fault && entry != std::filesystem::recursive_directory_iterator() && count < enough;
         entry.increment(fault)) {
        const auto path = parent + entry->path().string().substr(tree.size());
        if (!isValidUtf8(path)) {
            continue;
        }
        const auto told = contents(path);
        ASSERT_EQ(told.pathComponents, componentsOf(path));
        ASSERT_EQ(told.fileIDs, numbersAlong(path)) << path;
        ASSERT_EQ(told.creationDate, statusOfItem(path)->creationDate) << path;
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace tolvane::platform
