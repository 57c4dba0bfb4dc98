// What is installed for the desktop to find the program.
#include "tests/packaging/Help.h"
#include "tests/support/Process.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* mainEntry = "example.tolvane.tolvane.desktop";

std::string packaged(const std::string& file) {
    return contentsOfFile(sourcePath("packaging/" + file));
}

void expectValid(const std::vector<std::string>& command) {
    if (!isInstalled(command.front())) {
        GTEST_SKIP() << command.front() << " is not installed";
    }
    const ProcessOutcome outcome = run({.command = command});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
}

TEST(DesktopFiles, areValidEntries) {
    // Those for other menus have types that only their file managers know.
    expectValid(
        {"desktop-file-validate", sourcePath(std::string("packaging/") + mainEntry),
         sourcePath("packaging/menus/thunar/example.tolvane.tolvane.facts.desktop"),
         sourcePath("packaging/menus/thunar/example.tolvane.tolvane.names.desktop")});
}

TEST(DesktopFiles, haveValidMetadata) {
    expectValid(
        {"appstreamcli", "validate", "--no-net",
         sourcePath("packaging/example.tolvane.tolvane.metainfo.xml")});
}

TEST(DesktopFiles, handFilesOverByTheirPaths) {
    EXPECT_THAT(packaged(mainEntry), HasSubstr("\nExec=tolvane %F\n"));
}

TEST(DesktopFiles, areOfTheProgramsVersion) {
    const std::string version = versionOf("tolvane");
    EXPECT_THAT(
        packaged("example.tolvane.tolvane.metainfo.xml"), HasSubstr("<release version=\"" + version + "\""));
    EXPECT_THAT(packaged("debian/changelog"), StartsWith("tolvane (" + version + "-"));
}

} // namespace
} // namespace tolvane::tests
