#include "tests/end_to_end/Corpus.h"

#include "tests/oracle/OddNames.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

using Paths = std::vector<std::string>;

void expectMade(int result, const std::string& path) {
    EXPECT_EQ(result, 0) << path << ": " << std::strerror(errno);
}

} // namespace

Paths addKinds(const TemporaryFolder& folder) {
    const auto file = folder.file("regular.txt", "some words");
    Paths paths{
        file,
        folder.file("empty"),
        folder.folder("folder"),
        folder.folder("folder.with.dots"),
        folder.fifo("fifo"),
        folder.socket("socket"),
        folder.symlink("link to file", file),
        folder.symlink("relative link", "regular.txt"),
        folder.symlink("link to folder", "folder"),
        folder.symlink("link to fifo", "fifo"),
        folder.symlink("link to link", "link to file"),
        folder.symlink("dangling link", "nothing of that name"),
        folder.symlink("looping link", "looping link"),
        folder.symlink("link into nowhere", "regular.txt/below"),
        folder.symlink("long link", std::string(4'000, 'l')),
        "/dev/null",
        "/dev/zero",
        "/"};
    const auto hardLink = folder.path("hard link");
    expectMade(link(file.c_str(), hardLink.c_str()), hardLink);
    paths.push_back(hardLink);
    if (geteuid() == 0) {
        constexpr std::array kinds{
            std::pair{"block device", mode_t{S_IFBLK}}, std::pair{"character device", mode_t{S_IFCHR}}};
        for (const auto& [name, kind] : kinds) {
            const auto path = folder.path(name);
            // Containers may forbid devices even to root; the system's own have to do then.
            if (mknod(path.c_str(), kind | 0600U, makedev(300, 70'000)) == 0) {
                paths.push_back(path);
            }
        }
    }
    return paths;
}

Paths addPermissions(const TemporaryFolder& folder) {
    constexpr std::array<mode_t, 10> modes{0000, 0001, 0200, 0444, 0640, 0777, 04755, 02755, 01777, 07777};
    Paths paths;
    for (const mode_t mode : modes) {
        const auto name = std::to_string(mode);
        const auto file = folder.file("file " + name, "x");
        const auto subfolder = folder.folder("folder " + name);
        expectMade(chmod(file.c_str(), mode), file);
        expectMade(chmod(subfolder.c_str(), mode | S_IRWXU), subfolder);
        paths.insert(paths.end(), {file, subfolder});
    }
    if (geteuid() == 0) {
        // Accounts that there are, and some that there are hardly.
        for (const uid_t number : {1U, 65'534U, 123'456'789U, 4'294'967'294U}) {
            const auto file = folder.file("owned by " + std::to_string(number));
            expectMade(chown(file.c_str(), number, number - 1), file);
            paths.push_back(file);
        }
    }
    return paths;
}

Paths addContents(const TemporaryFolder& folder) {
    Paths paths{folder.file("one byte", "1"), folder.file("a page", std::string(4'096, 'p'))};
    // Sparse files, past what 32 bits count.
    for (const off_t size : {off_t{1} << 31, (off_t{1} << 32) + 5, off_t{1} << 40}) {
        const auto path = folder.file("sparse " + std::to_string(size));
        expectMade(truncate(path.c_str(), size), path);
        paths.push_back(path);
    }
    const auto linked = folder.file("linked");
    for (int i = 0; i < 20; ++i) {
        const auto name = folder.path("linked " + std::to_string(i));
        expectMade(link(linked.c_str(), name.c_str()), name);
    }
    const auto full = folder.folder("folder with folders");
    for (int i = 0; i < 5; ++i) {
        static_cast<void>(folder.folder("folder with folders/" + std::to_string(i)));
    }
    paths.insert(paths.end(), {linked, full});
    return paths;
}

Paths addDates(const TemporaryFolder& folder) {
    // The first and last seconds of calendars and counters, leap days, and fractions that rounding would
    // carry over.
    constexpr std::array<timespec, 12> dates{
        timespec{0, 0},
        {0, 1},
        {-1, 500'000'000},
        {-1, 999'999'999},
        {-2'147'483'648, 0},
        {951'782'400, 999'999'999},
        {978'307'199, 999'999'999},
        {978'307'200, 0},
        {1'709'164'800, 123'456'789},
        {2'147'483'648, 7},
        {4'107'542'400, 999'999'500},
        {15'032'385'535, 0}};
    Paths paths;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        const auto path = folder.file("date " + std::to_string(i));
        const std::array<timespec, 2> times{dates[i], dates[i]};
        expectMade(utimensat(AT_FDCWD, path.c_str(), times.data(), 0), path);
        paths.push_back(path);
    }
    return paths;
}

Paths namesOfEveryKind() {
    Paths names{
        " ", "  two  blanks  ", "line\nfeed", "\n", "tab\tand\rreturn", "bell\a and \x1b[31mred\x1b[0m",
        "\x7f", "-", "--", "--help", "--json", "--files0-from=x", "-h", "++", "[a,b]", "[]", "{}", "report",
        "name#0", "name#1", "%s%n%%", "%2F", "100%", "a=b", "\"quoted\"", "it's", "back\\slash", "\\n",
        "$HOME", "`x`", "*", "?", "~", "#", ";", "a&b", "a|b", "<>", "...", ".hidden", "trailing.", "CON",
        "Details for file x", "x\nPath: x\nvolfs path: ", "a\n\nDetails for file b\nPath: b\n",
        // Names that look the same.
        "caf\u00e9", "cafe\u0301", "caf\u00e9\u200B", "caf\u00e9 ", "\u65e5\u672c\u8a9e",
        "\u0440\u0443\u0441", "\u05d0\u05d1\u05d2", "abc\u202Egpj.exe",
        // Latin-1, KOI8-R, GB 18030, EUC-KR, and UTF-8 that is cut off or goes on too long.
        "caf\xe9", "\xd2\xd5\xd3", "\xd6\xd0\xce\xc4", "\xc7\xd1\xb1\xdb", "\x80", "ok\xc3", "\xe2\x28\xa1",
        "\xf0\x9f\x98\x80\x98"};
    for (const OddName& odd : oddNames()) {
        names.push_back(odd.longest());
    }
    return names;
}

Paths addOddNames(const TemporaryFolder& folder) {
    Paths paths;
    for (const auto& name : namesOfEveryKind()) {
        paths.push_back(folder.file(name, name));
    }
    return paths;
}

Paths addAttributes(const TemporaryFolder& folder, std::size_t largest) {
    Paths paths{folder.file("attributes"), folder.folder("folder with attributes")};
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    const std::vector<std::pair<std::string, std::string>> attributes{
        {"user.empty", ""},
        {"user.one", "1"},
        {"user.with blanks = and \"quotes\"", "value\n"},
        {"user.back\\slash", "\\"},
        {"user.line\nfeed\x1b[31m", "\x1b"},
        {"user.\u00e9\u65e5\U0001F600", "\u00e9"},
        {"user.\uFFFE after surrogates", std::string(3, '\0')},
        {"user.bytes", allBytes},
        {"user.com.apple.ResourceFork", "the resource fork"}};
    for (const auto& path : paths) {
        for (const auto& [name, value] : attributes) {
            if (!setExtendedAttribute(path, name, value)) {
                EXPECT_EQ(errno, ENOTSUP) << name << ": " << std::strerror(errno);
                return {};
            }
        }
    }
    paths.push_back(folder.symlink("link to attributes", "attributes"));

    paths.push_back(folder.file("large attributes"));
    std::size_t count = 0;
    for (const std::size_t size : {std::size_t{1'000}, std::size_t{1'024}, largest}) {
        const auto name = "user.large " + std::to_string(++count);
        EXPECT_TRUE(setExtendedAttribute(paths.back(), name, std::string(size, '\xab')))
            << std::strerror(errno);
    }
    paths.push_back(folder.file("many attributes"));
    for (int i = 0; i < 40; ++i) {
        EXPECT_TRUE(setExtendedAttribute(paths.back(), "user.number" + std::to_string(i), std::to_string(i)))
            << std::strerror(errno);
    }
    return paths;
}

UntouchedItems::UntouchedItems(const Paths& paths) {
    for (const auto& path : paths) {
        contents_[path] = contentsOf(path);
    }
    // An access date before the modification date moves with the next reading.
    constexpr std::array<timespec, 2> accessedBeforeModified{timespec{1'000'000, 0}, {2'000'000, 0}};
    for (const auto& path : paths) {
        expectMade(
            utimensat(AT_FDCWD, path.c_str(), accessedBeforeModified.data(), AT_SYMLINK_NOFOLLOW), path);
    }
    for (const auto& path : paths) {
        statuses_[path] = storedStatusOf(path);
    }
}

UntouchedItems::Status UntouchedItems::storedStatusOf(const std::string& path) {
    auto status = statusOf(path);
    if (S_ISLNK(status.st_mode)) {
        // Reading the target's attributes follows the link, which counts as access to it.
        status.st_atim = {};
    }
    return {status.st_atim.tv_sec, status.st_atim.tv_nsec, status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
            status.st_ctim.tv_sec, status.st_ctim.tv_nsec, status.st_size,        status.st_mode};
}

std::string UntouchedItems::contentsOf(const std::string& path) {
    constexpr off_t largestRead = 1'000'000; // less than the sparse files
    const auto status = statusOf(path);
    const bool isRead =
        S_ISREG(status.st_mode) && status.st_size < largestRead && access(path.c_str(), R_OK) == 0;
    return isRead ? contentsOfFile(path) : "";
}

void UntouchedItems::expectSameStatus() const {
    for (const auto& [path, status] : statuses_) {
        EXPECT_EQ(storedStatusOf(path), status) << path;
    }
}

void UntouchedItems::expectSameContents() const {
    for (const auto& [path, contents] : contents_) {
        EXPECT_EQ(contentsOf(path), contents) << path;
    }
}

} // namespace tolvane::tests
