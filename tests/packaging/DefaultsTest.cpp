// What desktops open files with once the package is installed: never this program, unless its user chose so.
#include "tests/packaging/Help.h"
#include "tests/packaging/InstalledDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::vector<std::string> kinds{
    "application/gzip",
    "application/java-archive",
    "application/javascript",
    "application/json",
    "application/msword",
    "application/octet-stream",
    "application/ogg",
    "application/pdf",
    "application/postscript",
    "application/rtf",
    "application/toml",
    "application/vnd.debian.binary-package",
    "application/vnd.oasis.opendocument.text",
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document",
    "application/vnd.rar",
    "application/vnd.sqlite3",
    "application/x-7z-compressed",
    "application/x-apple-diskimage",
    "application/x-awk",
    "application/x-cd-image",
    "application/x-compressed-tar",
    "application/x-core",
    "application/x-desktop",
    "application/x-executable",
    "application/x-ms-dos-executable",
    "application/x-object",
    "application/x-perl",
    "application/x-php",
    "application/x-ruby",
    "application/x-sharedlib",
    "application/x-shellscript",
    "application/x-tar",
    "application/x-zerosize",
    "application/xhtml+xml",
    "application/xml",
    "application/zip",
    "audio/flac",
    "audio/mpeg",
    "audio/x-wav",
    "font/otf",
    "font/ttf",
    "image/gif",
    "image/heif",
    "image/jpeg",
    "image/png",
    "image/svg+xml",
    "image/tiff",
    "image/vnd.adobe.photoshop",
    "image/webp",
    "image/x-canon-cr2",
    "image/x-dcraw",
    "image/x-nikon-nef",
    "inode/blockdevice",
    "inode/chardevice",
    "inode/directory",
    "inode/fifo",
    "inode/mount-point",
    "inode/socket",
    "inode/symlink",
    "text/html",
    "text/javascript",
    "text/markdown",
    "text/plain",
    "text/x-c++src",
    "text/x-lua",
    "text/x-python",
    "text/x-python3",
    "video/mp4",
    "video/webm",
    "video/x-matroska",
    "x-scheme-handler/file",
    "x-scheme-handler/https",
};

/// What is known of programs for one MIME type.
struct Programs {
    std::string byDefault;
    std::string all;
};

class Defaults : public InstalledDesktopTest {
protected:
    /// A line about GIO's programs for each of these types, and one about all programs.
    std::vector<std::string> toldByGio(const std::vector<std::string>& types) {
        std::vector<std::string> command{"/usr/bin/python3", sourcePath("tests/packaging/ask_gio.py")};
        command.insert(command.end(), types.begin(), types.end());
        const ProcessOutcome outcome = desktop().run(std::move(command));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return linesOf(outcome.out);
    }

    Programs programsFor(const std::string& type) {
        for (const std::string& line : toldByGio({type})) {
            if (line.starts_with(type + "\t")) {
                std::istringstream columns(line);
                Programs programs;
                std::string first;
                std::getline(columns, first, '\t');
                std::getline(columns, programs.byDefault, '\t');
                std::getline(columns, programs.all, '\t');
                return programs;
            }
        }
        ADD_FAILURE() << "nothing is told of " << type;
        return {};
    }

    std::string defaultOfXdg(const std::string& type) {
        return desktop().run({"xdg-mime", "query", "default", type}).out;
    }

    /// An editor, a viewer, an archiver, a player, a file manager and a browser.
    void installOthers() {
        desktop().addEntry("editor", "text/plain;");
        desktop().addEntry("viewer", "application/pdf;image/jpeg;image/png;image/tiff;");
        desktop().addEntry("archiver", "application/x-compressed-tar;application/x-tar;application/zip;");
        desktop().addEntry("player", "audio/flac;audio/mpeg;video/mp4;video/x-matroska;");
        desktop().addEntry("files", "inode/directory;");
        desktop().addEntry("browser", "text/html;x-scheme-handler/https;");
    }

    /// Expects that none of the types is opened by the program, nor offered to it; returns what GIO told.
    std::vector<std::string> expectNeverOurs() {
        std::vector<std::string> told = toldByGio(kinds);
        EXPECT_EQ(told.size(), kinds.size() + 1);
        if (!told.empty()) {
            told.pop_back();
        }
        EXPECT_THAT(told, Not(Contains(HasSubstr("tolvane"))));
        for (const std::string& kind : kinds) {
            EXPECT_THAT(defaultOfXdg(kind), Not(HasSubstr("tolvane"))) << kind;
        }
        return told;
    }

    /// Expects the same before and after every menu entry was used.
    void expectNeverOursWhateverIsUsed() {
        const std::vector<std::string> before = expectNeverOurs();
        desktop().home().folder("a folder");
        desktop().home().file("a.py");
        const std::vector<std::string> files{
            desktop().home().path("a folder"), desktop().home().path("a.py")};
        EXPECT_FALSE(desktop().useMenus(files).empty());
        EXPECT_EQ(expectNeverOurs(), before);
    }
};

TEST_F(Defaults, areTheOtherPrograms) {
    installOthers();
    expectNeverOursWhateverIsUsed();
    EXPECT_EQ(programsFor("inode/directory").byDefault, "files.desktop");
    EXPECT_EQ(programsFor("application/pdf").byDefault, "viewer.desktop");
    EXPECT_EQ(programsFor("video/mp4").byDefault, "player.desktop");
    // Somebody opens all texts.
    for (const char* const source : {"text/x-python", "application/x-shellscript", "text/x-lua"}) {
        EXPECT_EQ(programsFor(source).byDefault, "editor.desktop") << source;
    }
    EXPECT_EQ(defaultOfXdg("application/zip"), "archiver.desktop\n");
}

TEST_F(Defaults, areNoneWithoutOtherPrograms) {
    expectNeverOursWhateverIsUsed();
    EXPECT_EQ(programsFor("inode/directory").byDefault, "");
    EXPECT_EQ(programsFor("application/octet-stream").byDefault, "");
}

TEST_F(Defaults, wouldBeTheProgramIfAnEntryListedTypes) {
    installOthers();
    desktop().addEntry("a-tolvane", "text/plain;application/octet-stream;", "tolvane");
    EXPECT_EQ(programsFor("text/x-python").byDefault, "a-tolvane.desktop");
    EXPECT_EQ(programsFor("application/x-shellscript").byDefault, "a-tolvane.desktop");
    EXPECT_EQ(defaultOfXdg("application/octet-stream"), "a-tolvane.desktop\n");
}

TEST_F(Defaults, leaveTheProgramOnceInTheListOfAllApplications) {
    installOthers();
    const std::string all = toldByGio({}).at(0);
    const std::string ours = "example.tolvane.tolvane.desktop";
    const std::size_t at = all.find(ours);
    ASSERT_NE(at, std::string::npos) << all;
    EXPECT_EQ(all.substr(0, at).find("tolvane"), std::string::npos) << all;
    EXPECT_EQ(all.substr(at + ours.size()).find("tolvane"), std::string::npos) << all;
}

// Revealing a file ends with xdg-open for its folder if no file manager answers.
TEST_F(Defaults, leaveAFolderUnopenedWithoutAFileManager) {
    const std::string folder = desktop().home().folder("a folder");
    EXPECT_NE(desktop().run({"xdg-open", "file://" + desktop().home().path("a%20folder")}).status, 0);
    EXPECT_FALSE(desktop().wasStarted());

    desktop().addEntry("a-tolvane", "inode/directory;", "tolvane");
    EXPECT_EQ(desktop().run({"xdg-open", "file://" + desktop().home().path("a%20folder")}).status, 0);
    EXPECT_TRUE(desktop().wasStarted());
    EXPECT_EQ(contentsOfFile(desktop().home().path("record")), folder + '\0');
}

} // namespace

} // namespace tolvane::tests
