#include "platform/linux/session/LinuxProcessInfo.h"

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using Version = OperatingSystemVersion;

void expectVersion(const std::string& text, Version expected) {
    const Version version = versionInOsRelease(text);
    EXPECT_EQ(version, expected) << text << " gives " << version.majorVersion << '.' << version.minorVersion
                                 << '.' << version.patchVersion;
}

TEST(LinuxProcessInfo, readsUpToThreeNumbersAndQuotes) {
    expectVersion("VERSION_ID=12\n", {12, 0, 0});
    expectVersion("VERSION_ID=22.04\n", {22, 4, 0});
    expectVersion("VERSION_ID=10.13.6\n", {10, 13, 6});
    expectVersion("VERSION_ID=1.2.3.4\n", {1, 2, 3});
    expectVersion("VERSION_ID=\"15.5\"\n", {15, 5, 0});
    expectVersion("VERSION_ID='8.9'\n", {8, 9, 0});
    expectVersion("VERSION_ID=\"1\"'0'.1\\3\n", {10, 13, 0});
    expectVersion("VERSION_ID=\"7.1\n", {7, 1, 0});
}

TEST(LinuxProcessInfo, findsTheLineAmongOthers) {
    expectVersion(
        "NAME=\"Some System\"\n# VERSION_ID=1\nOLD_VERSION_ID=2\nVERSION_IDS=3\n  VERSION_ID=4.5  \r\n"
        "VERSION=\"6 (six)\"",
        {4, 5, 0});
    expectVersion("VERSION_ID=12", {12, 0, 0});
    expectVersion("VERSION_ID=1\nVERSION_ID=2\n", {2, 0, 0});
}

TEST(LinuxProcessInfo, takesZeroForWhatIsNoNumber) {
    for (const char* const text :
         {"", "\n\n", "NAME=x\n", "VERSION_ID=", "VERSION_ID=\"\"", "VERSION_ID=rolling", "VERSION_ID=-5",
          "VERSION_ID=.5", "VERSION_ID=99999999999999999999"}) {
        expectVersion(text, {0, 0, 0});
    }
    expectVersion("VERSION_ID=3.x.7", {3, 0, 0});
    expectVersion("VERSION_ID=3.-1", {3, 0, 0});
    expectVersion("VERSION_ID=3.99999999999999999999", {3, 0, 0});
    expectVersion("VERSION_ID=11rc2", {11, 0, 0});
    expectVersion("VERSION_ID=3.", {3, 0, 0});
}

TEST(LinuxProcessInfo, takesTheFirstFileThatCanBeRead) {
    const tests::TemporaryFolder folder;
    const std::string first = folder.file("first", "VERSION_ID=1\n");
    const std::string second = folder.file("second", "VERSION_ID=2\n");
    const auto version = [](std::vector<std::string> files) {
        return LinuxProcessInfo(std::move(files)).operatingSystemVersion();
    };
    EXPECT_EQ(version({first, second}), Version(1));
    EXPECT_EQ(version({folder.path("missing"), second}), Version(2));
    EXPECT_EQ(version({folder.path(), second}), Version(2)) << "a folder is no file to read";
    EXPECT_EQ(version({folder.file("silent", "NAME=x\n"), second}), Version()) << "it was read";
    EXPECT_EQ(version({folder.path("missing")}), Version());
    EXPECT_EQ(version({}), Version());
}

TEST(LinuxProcessInfo, agreesWithAShellAboutThisSystem) {
    const auto outcome = tests::run(
        {.command = {
             "/bin/sh", "-c",
             ". /etc/os-release 2>/dev/null || . /usr/lib/os-release; printf %s \"$VERSION_ID\""}});
    EXPECT_EQ(LinuxProcessInfo().operatingSystemVersion(), versionInOsRelease("VERSION_ID=" + outcome.out));
}

} // namespace
} // namespace tolvane::platform
