#include "tests/oracle/BookmarkOracle.h"

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Base64.h"
#include "tests/oracle/ProgramsOnPaths.h"
#include "tests/oracle/ReportText.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <system_error>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

using Texts = std::vector<std::string>;
using User = std::optional<std::uint32_t>;

// A double holds a date of our time to less than a microsecond.
constexpr double dateTolerance = 1e-6;
constexpr double secondsFrom1970To2001 = 978'307'200;

// From a birth date in words, "-" for none, and in seconds.
std::optional<double> dateIn(const std::string& words, const std::string& seconds) {
    return words == "-" ? std::nullopt : std::optional(std::strtod(seconds.c_str(), nullptr));
}

std::string realPathOf(const std::string& path) {
    std::error_code fault;
    const auto slash = path.rfind('/');
    const auto parent = std::filesystem::canonical(path.substr(0, std::max<std::size_t>(slash, 1)), fault);
    if (fault || path == "/") {
        return path;
    }
    return (parent == "/" ? "" : parent.string()) + path.substr(slash);
}

Texts componentsOf(const std::string& path) {
    Texts components;
    std::istringstream rest(path);
    for (std::string component; std::getline(rest, component, '/');) {
        if (!component.empty()) {
            components.push_back(component);
        }
    }
    return components;
}

// The path itself and all folders above it but "/".
Texts stepsTo(const std::string& path) {
    Texts steps;
    for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        steps.push_back(path.substr(0, end));
    }
    if (path != "/") {
        steps.push_back(path);
    }
    return steps;
}

std::optional<bool> keepsNumbers(const std::string& type) {
    static const std::set<std::string> lasting{"ext2/ext3", "xfs",       "btrfs", "tmpfs",
                                               "f2fs",      "overlayfs", "zfs",   "squashfs"};
    static const std::set<std::string> changing{"msdos", "exfat", "nfs", "cifs", "smb2", "v9fs", "proc"};
    if (lasting.contains(type)) {
        return true;
    }
    return changing.contains(type) ? std::optional(false) : std::nullopt;
}

std::map<std::string, VolumeFacts> volumesAt(const Texts& mountPoints, const User& user) {
    const auto capacities = statOf({"stat", "-f"}, {"%T", "%b", "%S"}, mountPoints, user);
    const auto dates = statOf({"stat"}, {"%w", "%.9W"}, mountPoints, user);
    std::map<std::string, VolumeFacts> volumes;
    for (const auto& [mountPoint, texts] : capacities) {
        VolumeFacts& volume = volumes[mountPoint];
        volume.mountPoint = mountPoint;
        volume.hasLastingNumbers = keepsNumbers(texts[0]);
        volume.capacity = static_cast<std::int64_t>(numberIn(texts[1]) * numberIn(texts[2]));
        const auto date = dates.find(mountPoint);
        volume.created = date != dates.end() ? dateIn(date->second[0], date->second[1]) : std::nullopt;
    }
    return volumes;
}

struct Home {
    std::string userName;
    std::uint32_t userID = 0;
    std::string folder; // the real path
};

std::optional<Home> homeOf(const User& user) {
    const std::uint32_t id = user.value_or(geteuid());
    std::array<std::string, 6> fields;
    std::istringstream line(run({.command = {"getent", "passwd", std::to_string(id)}}).out);
    for (std::string& field : fields) {
        std::getline(line, field, ':');
    }
    std::error_code fault;
    const auto folder = std::filesystem::canonical(fields[5], fault);
    return fault ? std::nullopt : std::optional(Home{fields[0], id, folder.string()});
}

void addHome(PlaceFacts& place, const std::string& realPath, const Home& home) {
    const std::string below = home.folder == "/" ? "/" : home.folder + "/";
    if (realPath.starts_with(below) && realPath != "/") {
        place.componentsBelowHome = std::ranges::count(realPath.substr(below.size() - 1), '/');
        place.userName = home.userName;
        place.userID = home.userID;
    }
}

void expectDate(const std::optional<platform::Date>& date, const std::optional<double>& expected) {
    EXPECT_EQ(date.has_value(), expected.has_value());
    if (date && expected) {
        const double difference = date->timeIntervalSinceReferenceDate() + secondsFrom1970To2001 - *expected;
        EXPECT_LT(std::abs(difference), dateTolerance);
    }
}

void expectVolume(const platform::BookmarkVolume& volume, const VolumeFacts& facts) {
    EXPECT_EQ(volume.path, facts.mountPoint);
    EXPECT_EQ(volume.url.value_or("").ends_with('/'), true);
    EXPECT_EQ(volume.capacity.value_or(0), facts.capacity);
    EXPECT_NE(volume.name.value_or(""), "");
    EXPECT_EQ(volume.wasBoot, facts.mountPoint == "/");
    if (volume.uuid) {
        EXPECT_EQ(volume.uuid->size(), 36U);
    }
    expectDate(volume.creationDate, facts.created);
}

void expectNumbers(const platform::BookmarkContents& contents, const PlaceFacts& place) {
    const std::size_t count = place.components.size();
    ASSERT_EQ(contents.fileIDs ? contents.fileIDs->size() : 0, count);
    const std::size_t onVolume =
        place.volume.mountPoint == "/" ? 0 : componentsOf(place.volume.mountPoint).size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = (*contents.fileIDs)[i];
        if (i + 1 >= onVolume && place.volume.hasLastingNumbers) {
            EXPECT_EQ(number.has_value(), *place.volume.hasLastingNumbers);
        }
        if (number) {
            EXPECT_EQ(static_cast<std::uint64_t>(*number), place.numbers[i]);
        }
    }
}

std::uint64_t flagsFor(std::uint64_t mode, bool isVolume) {
    const std::uint64_t kind = S_ISREG(mode) ? 1 : S_ISDIR(mode) ? 2 : S_ISLNK(mode) ? 4 : 0;
    return kind == 2 && isVolume ? 10 : kind;
}

} // namespace

std::map<std::string, PlaceFacts> placesOf(const Texts& paths, User user) {
    std::map<std::string, std::string> realPaths;
    std::set<std::string> items;
    std::set<std::string> steps;
    for (const auto& path : paths) {
        const auto& real = realPaths[path] = realPathOf(path);
        items.insert(real);
        for (auto& step : stepsTo(real)) {
            steps.insert(std::move(step));
        }
    }
    const auto numbers = statOf({"stat"}, {"%i"}, {steps.begin(), steps.end()}, user);
    // Not as the user, who may not be allowed to enter a folder, as stat does to find its mount point.
    const auto looks = statOf({"stat"}, {"%m", "%w", "%.9W"}, {items.begin(), items.end()}, {});
    std::set<std::string> mountPoints;
    for (const auto& [path, texts] : looks) {
        mountPoints.insert(texts[0]);
    }
    const auto volumes = volumesAt({mountPoints.begin(), mountPoints.end()}, user);
    const auto home = homeOf(user);
    std::map<std::string, PlaceFacts> places;
    for (const auto& [path, real] : realPaths) {
        const auto look = looks.find(real);
        if (look == looks.end()) {
            continue;
        }
        PlaceFacts place;
        place.components = componentsOf(real);
        place.isText = readableText(real) == real;
        place.created = dateIn(look->second[1], look->second[2]);
        for (const auto& step : stepsTo(real)) {
            const auto number = numbers.find(step);
            place.numbers.push_back(number != numbers.end() ? numberIn(number->second[0]) : 0);
        }
        const auto volume = volumes.find(look->second[0]);
        place.volume = volume != volumes.end() ? volume->second : VolumeFacts();
        if (home) {
            addHome(place, real, *home);
        }
        places.emplace(path, std::move(place));
    }
    return places;
}

std::string homeFolder() {
    const auto home = homeOf({});
    return home ? home->folder : "";
}

std::string linesOfItem(const std::string& path, const std::string& numbered) {
    const auto status = statusOf(numbered);
    return path + "\nvolfs path : /.vol/" + std::to_string(status.st_dev) + "/"
           + std::to_string(status.st_ino) + "\n";
}

bool keepsCreationDate(const std::string& path) {
    struct statx status{};
    return statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &status) == 0
           && (status.stx_mask & STATX_BTIME) != 0;
}

std::string expectedBookmarkPath(const PlaceFacts& place) {
    if (!place.isText) {
        return "(couldn't get bookmark)";
    }
    std::string path;
    for (const std::string& component : place.components) {
        path += "/" + component;
    }
    return path.empty() ? "/" : path;
}

void expectBookmark(const std::string& base64, const PlaceFacts& place, std::uint64_t mode) {
    if (!place.isText) {
        EXPECT_EQ(base64, "");
        return;
    }
    const auto data = platform::base64DecodedData(base64);
    const auto structure = platform::readBookmark(data.value_or(platform::Data()));
    ASSERT_TRUE(structure) << structure.error().expected << ": " << base64;
    EXPECT_TRUE(structure->warnings.empty());
    const auto contents = platform::bookmarkContents(*structure);
    EXPECT_EQ(contents.pathComponents, place.components);
    expectNumbers(contents, place);
    expectDate(contents.creationDate, place.created);
    const bool isVolume = componentsOf(place.volume.mountPoint) == place.components;
    EXPECT_EQ(contents.fileFlags.value_or(platform::BookmarkFlags()).values, flagsFor(mode, isVolume));
    EXPECT_EQ(contents.fileFlags.value_or(platform::BookmarkFlags()).valid, 0x0FU);
    expectVolume(contents.volume, place.volume);
    EXPECT_EQ(contents.rootVolume.has_value(), place.volume.mountPoint != "/");
    EXPECT_EQ(contents.componentsBelowHome, place.componentsBelowHome);
    if (place.componentsBelowHome) {
        EXPECT_EQ(contents.userName, place.userName);
        EXPECT_EQ(contents.userID, place.userID);
    }
    EXPECT_EQ(contents.options, 0x2000'0000U);
}

} // namespace tolvane::tests
