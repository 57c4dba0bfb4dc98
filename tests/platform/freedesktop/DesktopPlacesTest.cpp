#include "platform/freedesktop/DesktopPlaces.h"

#include "tests/platform/freedesktop/BusTest.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::EnvironmentVariable;

std::vector<std::string> pathsOf(const std::vector<URL>& urls) {
    std::vector<std::string> paths;
    paths.reserve(urls.size());
    for (const URL& url : urls) {
        paths.push_back(url.path());
    }
    return paths;
}

TEST(DesktopPlaces, haveTheLocalBookmarksOfTheFileManager) {
    EXPECT_THAT(
        pathsOf(bookmarkedPlaces("file:///srv/a%20b A name of its own\n"
                                 "smb://server/share\n"
                                 "\n"
                                 "file:///srv/caf%E9\n"
                                 "nonsense\n"
                                 "file:///last")),
        ElementsAre("/srv/a b", "/srv/caf\xE9", "/last"));
    EXPECT_THAT(bookmarkedPlaces(""), IsEmpty());
}

TEST(DesktopPlaces, haveTheVolumesThatUsersMount) {
    EXPECT_THAT(
        pathsOf(placesOfVolumes(
            {"/", "/boot/efi", "/media/ada/STICK", "/run/media/ada/my disk", "/mnt/backup", "/mnt", "/media",
             "/media/.hidden", "/mediathek/a", "/run/user/1000/gvfs", "/var/lib/docker/overlay2/mnt/a"})),
        ElementsAre("/media/ada/STICK", "/run/media/ada/my disk", "/mnt/backup"));
}

TEST(DesktopPlaces, beginWithHomeAndItsFoldersAndHaveEachOnce) {
    const tests::TemporaryFolder home;
    const EnvironmentVariable homeVariable("HOME", home.path());
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", home.folder("config"));
    home.folder("Downloads");
    home.folder("Papiere");
    home.file("config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\nXDG_DESKTOP_DIR=\"$HOME\"\n");
    home.folder("config/gtk-3.0");
    home.file(
        "config/gtk-3.0/bookmarks",
        "file://" + home.path() + "/Papiere\nfile:///srv/data\nfile:///media/ada/STICK\n");
    EXPECT_THAT(
        pathsOf(desktopPlaces({"/", "/media/ada/STICK", "/media/ada/DISK"})),
        ElementsAre(
            home.path(), home.path("Papiere"), home.path("Downloads"), "/srv/data", "/media/ada/STICK",
            "/media/ada/DISK"));
}

TEST(DesktopPlaces, doWithoutAListOfBookmarks) {
    const tests::TemporaryFolder home;
    const EnvironmentVariable homeVariable("HOME", home.path());
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", home.path("config"));
    EXPECT_THAT(pathsOf(desktopPlaces({})), ElementsAre(home.path()));
    home.folder("config");
    home.folder("config/gtk-3.0");
    // Opening it would not come back.
    home.fifo("config/gtk-3.0/bookmarks");
    EXPECT_THAT(pathsOf(desktopPlaces({})), ElementsAre(home.path()));
}

} // namespace

} // namespace tolvane::platform
