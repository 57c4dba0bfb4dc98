// What is installed for the desktop to find the program.
#include "tests/packaging/Help.h"
#include "tests/support/Process.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* mainEntry = "example.tolvane.tolvane.desktop";
constexpr const char* openWithEntry = "zz-tolvane-any-item.desktop";

std::string packaged(const std::string& file) {
    return contentsOfFile(sourcePath("packaging/" + file));
}

/// A line of a file of keys, without its key; empty when there is none.
std::string valueOf(const std::string& text, const std::string& key) {
    const std::size_t begin = ("\n" + text).find("\n" + key + "=");
    if (begin == std::string::npos) {
        return {};
    }
    const std::size_t value = begin + key.size() + 1;
    return text.substr(value, text.find('\n', value) - value);
}

void expectValid(const std::vector<std::string>& command) {
    if (!isInstalled(command.front())) {
        GTEST_SKIP() << command.front() << " is not installed";
    }
    const ProcessOutcome outcome = run({.command = command});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
}

TEST(DesktopFiles, areValidEntries) {
    expectValid(
        {"desktop-file-validate", sourcePath(std::string("packaging/") + mainEntry),
         sourcePath(std::string("packaging/") + openWithEntry)});
}

TEST(DesktopFiles, haveValidMetadata) {
    expectValid(
        {"appstreamcli", "validate", "--no-net",
         sourcePath("packaging/example.tolvane.tolvane.metainfo.xml")});
}

TEST(DesktopFiles, handFilesOverByTheirPaths) {
    EXPECT_EQ(valueOf(packaged(mainEntry), "Exec"), "tolvane %F");
    EXPECT_EQ(valueOf(packaged(openWithEntry), "Exec"), "tolvane %F");
}

TEST(DesktopFiles, areOfTheProgramsVersion) {
    const std::string version = versionOf("tolvane");
    EXPECT_THAT(
        packaged("example.tolvane.tolvane.metainfo.xml"), HasSubstr("<release version=\"" + version + "\""));
    EXPECT_THAT(packaged("debian/changelog"), StartsWith("tolvane (" + version + "-"));
}

/// What a desktop without preferences finds in the installed entries.
class OpenWith : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists("/usr/share/mime/types")) {
            GTEST_SKIP() << "there is no database of MIME types";
        }
        // Which type is a special case of which.
        data_.symlink("mime", "/usr/share/mime");
        for (const char* const program : {"update-desktop-database", "gio"}) {
            if (!isInstalled(program)) {
                GTEST_SKIP() << program << " is not installed";
            }
        }
        std::filesystem::create_directories(applications_);
        // An entry counts only if its program is there.
        std::filesystem::create_directories(data_.path("bin"));
        std::filesystem::copy_file(programPath("tolvane"), data_.path("bin/tolvane"));
        for (const char* const entry : {mainEntry, openWithEntry}) {
            std::filesystem::copy_file(
                sourcePath(std::string("packaging/") + entry), applications_ + "/" + entry);
        }
    }

    void install(const std::string& name, const std::string& kinds) {
        data_.file(
            "applications/" + name + ".desktop",
            "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=true %F\nMimeType=" + kinds + "\n");
    }

    /// What gio prints about the programs for a MIME type.
    std::string programsFor(const std::string& type) {
        printedBy({"update-desktop-database", applications_});
        ProcessSetup setup{.command = {"gio", "mime", type}};
        std::erase_if(
            setup.environment, [](const std::string& variable) { return variable.starts_with("PATH="); });
        setup.environment.insert(
            setup.environment.end(), {"PATH=" + data_.path("bin") + ":/usr/bin:/bin", "HOME=" + home_.path(),
                                      "XDG_DATA_HOME=" + home_.path("data"), "XDG_DATA_DIRS=" + data_.path(),
                                      "XDG_CONFIG_DIRS=" + home_.path("none")});
        const ProcessOutcome outcome = run(setup);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out;
    }

private:
    TemporaryFolder data_;
    TemporaryFolder home_;
    const std::string applications_ = data_.path("applications");
};

TEST_F(OpenWith, isOfferedForTheUsualTypesOfFilesAndOtherItems) {
    std::istringstream types(
        "text/plain text/x-c++src text/html image/png image/svg+xml audio/mpeg video/mp4 font/otf "
        "application/octet-stream application/pdf application/json application/msword application/postscript "
        "application/vnd.oasis.opendocument.text "
        "application/vnd.openxmlformats-officedocument.wordprocessingml.document "
        "application/x-compressed-tar application/java-archive application/x-cd-image "
        "inode/directory inode/mount-point inode/symlink inode/fifo inode/socket inode/chardevice "
        "inode/blockdevice");
    for (std::string type; types >> type;) {
        EXPECT_THAT(programsFor(type), HasSubstr(openWithEntry)) << type;
    }
}

TEST_F(OpenWith, namesOnlyKnownTypes) {
    const std::string known = contentsOfFile("/usr/share/mime/types");
    std::istringstream kinds(valueOf(packaged(openWithEntry), "MimeType"));
    for (std::string kind; std::getline(kinds, kind, ';');) {
        EXPECT_THAT(known, HasSubstr("\n" + kind + "\n"));
    }
}

TEST_F(OpenWith, isNoDefaultWhereAnotherProgramOpensTheType) {
    const std::map<std::string, std::string> others{
        {"inode/directory", "thunar"}, {"text/plain", "vim"}, {"application/octet-stream", "xhexeditor"}};
    for (const auto& [kind, name] : others) {
        install(name, kind + ";");
        EXPECT_THAT(
            programsFor(kind),
            AllOf(ContainsRegex("^Default.*: " + name + ".desktop"), HasSubstr(openWithEntry)))
            << kind;
    }
    // A program for all texts.
    EXPECT_THAT(programsFor("text/x-c++src"), ContainsRegex("^Default.*: vim.desktop"));
}

TEST_F(OpenWith, offersTheProgramOnceOnly) {
    EXPECT_THAT(programsFor("inode/directory"), Not(HasSubstr(mainEntry)));
}

} // namespace
} // namespace tolvane::tests
